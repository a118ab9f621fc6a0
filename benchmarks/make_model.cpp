// Writes the text form of a model of any size to standard output.
//
// usage: make_model ENTITIES [STEP]
// Every entity has 20 properties and two many-to-one relationships besides; every fourth has a link table to
// its successor. STEP (default 0) varies the model as a project would from version to version: every tenth
// entity, another tenth for each step, gets one column more, and its version number rises.

#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace {

const char * const Types[] = {"QString", "int",       "double", "QDateTime",
                              "bool",    "long long", "QDate",  "QByteArray"};
constexpr int PropertiesPerEntity = 20;
constexpr long IdsPerEntity = 100;

/// How often entity `e` was changed by the first `step` steps.
int changes(long e, int step)
{
    int n = 0;
    for (int s = 1; s <= step; ++s) {
        n += e % 10 == s % 10;
    }
    return n;
}

void printProperties(long e, int step)
{
    const long base = e * IdsPerEntity;
    std::printf("    {\"id\": %ld, \"name\": \"id\", \"type\": \"long\", \"identifier\": true}", base);
    for (int i = 1; i < PropertiesPerEntity; ++i) {
        const char * const type = Types[static_cast<std::size_t>(i) % std::size(Types)];
        std::printf(
            ",\n    {\"id\": %ld, \"name\": \"property_%d\", \"columnName\": \"c_%d\", \"type\": \"%s\"%s%s}",
            base + i, i, i, type, i % 3 == 0 ? ", \"allowNull\": false" : "",
            i % 9 == 1 ? ", \"index\": true" : "");
    }
    for (int i = 0; i < changes(e, step); ++i) {
        std::printf(",\n    {\"id\": %ld, \"name\": \"added_%d\", \"type\": \"int\"}", base + 50 + i, i);
    }
}

void printManyToOne(long e, int n, long target)
{
    const long id = e * IdsPerEntity + PropertiesPerEntity + n;
    std::printf(
        ",\n    {\"id\": %ld, \"name\": \"parent_%d\", \"columnName\": \"parent_%d_id\", \"relationship\": "
        "{\"id\": %ld, \"type\": \"many-to-one\", \"target\": %ld}}",
        id, n, n, id, target);
}

void printManyToMany(long e, int n, long target, long left, const char * mine, const char * theirs)
{
    const long id = e * IdsPerEntity + PropertiesPerEntity + n;
    const long inverse = target * IdsPerEntity + PropertiesPerEntity + (n == 3 ? 4 : 3);
    std::printf(",\n    {\"id\": %ld, \"name\": \"linked_%d\", \"relationship\": {\"id\": %ld, \"type\": "
                "\"many-to-many\", \"target\": %ld, \"inverse\": %ld, \"extraTable\": \"link_%ld\", "
                "\"foreignKey\": \"%s\", \"foreignKeyOwner\": \"%s\"}}",
                id, n, id, target, inverse, left, mine, theirs);
}

} // namespace

int main(int argc, char ** argv)
{
    const long entities = argc > 1 ? std::atol(argv[1]) : 0;
    const int step = argc > 2 ? std::atoi(argv[2]) : 0;
    if (entities < 1 || step < 0) {
        std::fprintf(stderr, "usage: make_model ENTITIES [STEP]\n");
        return 2;
    }
    std::printf(
        "{\"format\": \"korvane-project\", \"formatVersion\": 1, \"name\": \"bench\", \"entities\": [\n");
    for (long e = 1; e <= entities; ++e) {
        std::printf(
            "  {\"id\": %ld, \"name\": \"entity_%ld\", \"tableName\": \"t_entity_%ld\", \"version\": %d, "
            "\"properties\": [\n",
            e, e, e, 1 + changes(e, step));
        printProperties(e, step);
        printManyToOne(e, 1, 1 + e * 7 % entities);
        printManyToOne(e, 2, 1 + e * 13 % entities);
        if (e % 4 == 0 && e < entities) {
            printManyToMany(e, 3, e + 1, e, "left_id", "right_id");
        }
        if (e % 4 == 1 && e > 1) {
            printManyToMany(e, 4, e - 1, e - 1, "right_id", "left_id");
        }
        std::printf("]}%s\n", e < entities ? "," : "");
    }
    std::printf("]}\n");
    return 0;
}
