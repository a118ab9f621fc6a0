// Text forms from anywhere: refused with one line, or taken and then stored, read and dumped without a
// difference.

#include "fuzz_support.h"

#include "storage/text_places.h"

#include <QCoreApplication>

namespace {

const char Existing[] =
    R"json({"format": "korvane-project", "formatVersion": 1, "name": "shop", "enumerations": [
 {"id": 1, "name": "state", "values": [{"name": "open", "value": 0}]}], "entities": [
 {"id": 10, "name": "customer", "version": 3, "properties": [{"id": 100, "name": "id", "type": "long", "identifier": true},
 {"id": 101, "name": "tags", "relationship": {"id": 500, "type": "many-to-many", "target": 11, "inverse": 110}}]},
 {"id": 11, "name": "tag", "version": 1, "properties": [{"id": 110, "name": "customers"}]}]})json";

std::shared_ptr<model::project> existingProject()
{
    const auto project = std::make_shared<model::project>(1);
    const zk::ZkBool read =
        storage::text_form::read(QByteArray(Existing), QStringLiteral("existing.json"), nullptr, *project);
    fuzz::promise(bool(read), "the stored project is taken", read.getDesc());
    return project;
}

void promiseStored(const model::project & project, const QByteArray & text)
{
    const QString file = fuzz::folder() + QStringLiteral("/stored.korv");
    const QSqlError written = storage::project_file::write(file, project);
    fuzz::promise(!written.isValid(), "what was taken can be stored:", written.text());
    model::project stored(1);
    const QSqlError read = storage::project_file::read(file, stored);
    fuzz::promise(!read.isValid(), "what was stored can be read:", read.text());
    fuzz::promise(storage::text_form::write(stored) == text, "what was stored is what was taken");
    QFile::remove(file);
}

/// Each object of what was taken begins at the place in the text that is told of it.
void promisePlaces(const model::project & project, const QByteArray & text)
{
    using model::object_kind;
    const storage::text_places places(text, project);
    const QList<QByteArray> lines = text.split('\n');
    const auto promiseAt = [&](object_kind kind, long id) {
        const auto place = places.find(kind, id);
        fuzz::promise(place && place->line <= lines.size(), "an object has a place in its text");
        const QString line = QString::fromUtf8(lines.at(place->line - 1));
        fuzz::promise(line.mid(place->column - 1, 1) == QLatin1String("{"), "an object begins at its place");
    };
    for (const auto & enumeration : project.getListOfEnumeration()->values()) {
        promiseAt(object_kind::enumeration, enumeration->getId());
    }
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        promiseAt(object_kind::entity, entity->getId());
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            promiseAt(object_kind::property, property->getId());
            if (property->hasRelationship()) {
                promiseAt(object_kind::relationship, property->getRelation()->getId());
            }
        }
    }
}

void readText(const QByteArray & text, const model::project * existing)
{
    model::project project(1);
    const QString name = QStringLiteral("fuzz.json");
    if (const zk::ZkBool read = storage::text_form::read(text, name, existing, project); !read) {
        fuzz::promiseLine(read.getDesc(), name);
        return;
    }
    promisePlaces(project, text);
    const QByteArray dumped = fuzz::promiseRoundTrip(project);
    if (!existing) {
        promiseStored(project, dumped);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t * data, size_t size)
{
    static int argumentCount = 1;
    static char programName[] = "fuzz_text";
    static char * arguments[] = {programName, nullptr};
    static const QCoreApplication application(argumentCount, arguments);
    static const std::shared_ptr<model::project> existing = existingProject();
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    readText(text, nullptr);
    readText(text, existing.get());
    fuzz::promiseNothingElse({});
    return 0;
}
