#include "support/random_models.h"

#include "storage/history.h"
#include "storage/project_file.h"

#include <algorithm>

namespace support {

namespace {

const char * const Types[] = {"int",     "long",  "QString", "bool",       "double",  "QDate",
                              "quint64", "qint8", "QUuid",   "QByteArray", "unknown", "std::string"};

} // namespace

random_model::random_model(unsigned seed) : m_random(seed)
{
    const int entities = 3 + below(5);
    for (int i = 0; i < entities; ++i) {
        addEntity();
    }
    for (int i = 0; i < entities; ++i) {
        addRelationship();
    }
}

/// Never used before; some are words of SQL, are long, or need more than ASCII.
QString random_model::newName()
{
    static const char * const Words[] = {
        "order", "name", "größe", "Select", "an_exceedingly_long_name_for_a_thing_of_little_use", "t", "x"};
    return QString::fromUtf8(Words[below(std::size(Words))]) + QLatin1Char('_') + QString::number(newId());
}

draft_property random_model::newKey()
{
    draft_property key;
    key.id = newId();
    key.name = newName();
    key.isKey = true;
    key.types = {QString::fromLatin1(Types[below(3)])};
    if (oneIn(4)) {
        key.types.append(QStringLiteral("QString"));
        key.columns = numbered(key.name, 2).join(QLatin1Char('|'));
    }
    return key;
}

draft_property random_model::newColumn()
{
    draft_property column;
    column.id = newId();
    column.name = newName();
    column.types = {QString::fromLatin1(Types[below(std::size(Types))])};
    column.columns = oneIn(3) ? newName() : QString();
    column.forced = oneIn(8) ? QStringLiteral("NUMERIC(10, 2)") : QString();
    column.isNullable = !oneIn(3);
    column.isUnique = oneIn(5);
    column.isIndex = oneIn(3);
    column.isTransient = oneIn(8);
    return column;
}

void random_model::addEntity()
{
    draft_entity entity;
    entity.id = newId();
    entity.name = newName();
    entity.table = oneIn(2) ? QStringLiteral("t_") + entity.name : QString();
    entity.softDelete = oneIn(5) ? QStringLiteral("gone") : QString();
    entity.hasTable = !oneIn(8);
    entity.properties.push_back(newKey());
    const int columns = below(6);
    for (int i = 0; i < columns; ++i) {
        entity.properties.push_back(newColumn());
    }
    m_entities.push_back(entity);
}

int random_model::keyColumns(const draft_entity & entity)
{
    return static_cast<int>(entity.properties.front().types.size());
}

void random_model::addRelationship()
{
    draft_entity & owner = m_entities[below(static_cast<int>(m_entities.size()))];
    draft_entity & target = m_entities[below(static_cast<int>(m_entities.size()))];
    draft_property here;
    here.id = newId();
    here.name = newName();
    here.relationId = newId();
    here.relation = static_cast<model::relationship::type_relation>(below(4));
    here.target = target.id;
    here.isIndex = oneIn(3);
    here.columns = numbered(here.name + QStringLiteral("_of"), keyColumns(target)).join(QLatin1Char('|'));
    if (here.relation == model::relationship::one_to_one) {
        // Its columns are those that the table has.
        here.columns = owner.properties.front().columns;
    }
    if (here.relation == model::relationship::many_to_many && &owner != &target) {
        draft_property there = here;
        there.id = newId();
        there.name = newName();
        there.relationId = newId();
        there.target = owner.id;
        there.inverse = here.id;
        here.inverse = there.id;
        here.linkTable = there.linkTable = QStringLiteral("link_%1").arg(newId());
        const auto columns = [](const char * side, const draft_entity & entity) {
            return numbered(QString::fromLatin1(side), keyColumns(entity)).join(QLatin1Char('|'));
        };
        here.linkColumns = columns("own", owner);
        here.inverseColumns = columns("other", target);
        there.linkColumns = columns("own", target);
        there.inverseColumns = columns("other", owner);
        target.properties.push_back(there);
        ++target.version;
    }
    owner.properties.push_back(here);
    ++owner.version;
}

/// Takes the relationships of the others that lead there as well.
void random_model::dropEntity(std::size_t index)
{
    const long id = m_entities[index].id;
    m_entities.erase(m_entities.begin() + static_cast<std::ptrdiff_t>(index));
    for (draft_entity & entity : m_entities) {
        const std::size_t dropped = std::erase_if(entity.properties, [id](const draft_property & p) {
            return p.relationId != 0 && p.target == id;
        });
        entity.version += dropped > 0 ? 1 : 0;
    }
}

void random_model::changeProperty(draft_property & property)
{
    switch (below(6)) {
    case 0:
        property.name = newName();
        break;
    case 1:
        property.columns =
            property.types.size() > 1 || property.relationId != 0 ? property.columns : newName();
        break;
    case 2:
        property.isIndex = !property.isIndex;
        break;
    case 3:
        property.isTransient = !property.isTransient && !property.isKey;
        break;
    case 4:
        property.isNullable = !property.isNullable;
        break;
    default:
        if (!property.isKey && property.relationId == 0) {
            property.types = {QString::fromLatin1(Types[below(std::size(Types))])};
        }
    }
}

void random_model::changeEntity(draft_entity & entity)
{
    ++entity.version;
    if (oneIn(4)) {
        entity.name = newName();
    }
    if (oneIn(4)) {
        entity.table = oneIn(3) ? QString() : newName();
    }
    if (oneIn(8)) {
        entity.hasTable = !entity.hasTable;
    }
    const int steps = 1 + below(5);
    for (int i = 0; i < steps; ++i) {
        const int index = below(static_cast<int>(entity.properties.size()));
        if (oneIn(3)) {
            entity.properties.push_back(newColumn());
        } else if (oneIn(4) && index > 0 && entity.properties[static_cast<std::size_t>(index)].inverse == 0) {
            entity.properties.erase(entity.properties.begin() + index);
        } else {
            changeProperty(entity.properties[static_cast<std::size_t>(index)]);
        }
    }
}

void random_model::change()
{
    for (draft_entity & entity : m_entities) {
        if (!oneIn(3)) {
            changeEntity(entity);
        }
    }
    if (oneIn(2)) {
        addEntity();
        addRelationship();
        addRelationship();
    }
    if (m_entities.size() > 2 && oneIn(3)) {
        dropEntity(static_cast<std::size_t>(below(static_cast<int>(m_entities.size()))));
    }
    if (oneIn(2)) {
        addRelationship();
    }
    if (oneIn(4)) {
        std::swap(m_entities.front(), m_entities.back());
    }
}

std::shared_ptr<model::project> random_model::project() const
{
    return projectOf(m_entities);
}

QSqlError writeHistory(const QString & file, unsigned seed)
{
    constexpr int Versions = 3;
    random_model model(seed);
    QSqlError error;
    for (int version = 1; version <= Versions && !error.isValid(); ++version) {
        int number = 0;
        error = storage::project_file::write(file, *model.project());
        if (!error.isValid()) {
            error = storage::history::tag(file, QString(), number);
        }
        model.change();
    }
    return error.isValid() ? error : storage::project_file::write(file, *model.project());
}

} // namespace support
