#include "tools/script_objects.h"

#include <functional>
#include <utility>

namespace tools {

namespace {

/// Number of script objects below which nothing is collected. Every collection of the engine, its own ones
/// too, looks at all of them: with many the collections cost more than the script, with few they are too
/// frequent.
constexpr qsizetype KeptAtLeast = 512;

/// The id that a script gave: any number, while ids are whole ones from 1 on; 0 belongs to no object.
long toId(double number)
{
    constexpr double LargestExact = 9007199254740992.0;
    return number >= 1 && number <= LargestExact ? static_cast<long>(number) : 0;
}

} // namespace

script_model::~script_model()
{
    const QSet<script_object *> left = std::exchange(m_all, {});
    qDeleteAll(left);
}

void script_model::beginCall()
{
    if (m_all.size() <= qMax(KeptAtLeast, m_iCollectAbove)) {
        return;
    }
    // The collector counts only what lies in its own heap, so a script object weighs next to nothing for it,
    // and what it gives up would wait for an event loop that does not run during an export.
    m_engine.collectGarbage();
    const QSet<script_object *> all = m_all;
    for (script_object * const object : all) {
        if (m_engine.newQObject(object).isNull()) {
            delete object;
        }
    }
    m_iCollectAbove = 2 * m_all.size();
}

script_object::script_object(script_model & model, const void * object) : m_model(model), m_pKey(object)
{
    m_model.m_byObject.insert(m_pKey, this);
    m_model.m_all.insert(this);
}

script_object::~script_object()
{
    m_model.m_all.remove(this);
    if (m_model.m_byObject.value(m_pKey) == this) {
        m_model.m_byObject.remove(m_pKey);
    }
}

// --- project
QString script_project::toString() const
{
    return QStringLiteral("project ") + getName();
}
qlonglong script_project::getId() const
{
    return ask(&model::project::getId);
}
QJSValue script_project::getMetaData(const QString & key) const
{
    return askMetaData(key);
}
QVariantMap script_project::getAllMetaData() const
{
    return askAllMetaData();
}
QString script_project::getName() const
{
    return ask(&model::project::getName);
}
QString script_project::getLocation() const
{
    return ask(&model::project::getLocation);
}
QString script_project::getFileName() const
{
    return ask(&model::project::getFileName);
}
QJSValue script_project::getThis() const
{
    return isGone() ? QJSValue(QJSValue::NullValue)
                    : scriptModel().engine().newQObject(const_cast<script_project *>(this));
}
QJSValue script_project::getListOfAllEntities() const
{
    return askList(&model::project::getListOfAllEntities);
}
QJSValue script_project::getEntityById(double id) const
{
    return askObject([id](const model::project & p) { return p.getEntityById(toId(id)); });
}
QJSValue script_project::getListOfEnumeration() const
{
    return askList(&model::project::getListOfEnumeration);
}
QJSValue script_project::getEnumerationById(double id) const
{
    return askObject([id](const model::project & p) { return p.getEnumerationById(toId(id)); });
}

// --- entity
QString script_entity::toString() const
{
    return QStringLiteral("entity ") + getName();
}
qlonglong script_entity::getId() const
{
    return ask(&model::entity::getId);
}
QJSValue script_entity::getMetaData(const QString & key) const
{
    return askMetaData(key);
}
QVariantMap script_entity::getAllMetaData() const
{
    return askAllMetaData();
}
QString script_entity::getKey() const
{
    return ask(&model::entity::getKey);
}
QString script_entity::getExplicitKey() const
{
    return ask(&model::entity::getExplicitKey);
}
QString script_entity::getName() const
{
    return ask(&model::entity::getName);
}
QString script_entity::getTableName() const
{
    return ask(&model::entity::getTableName);
}
qlonglong script_entity::getVersion() const
{
    return ask(&model::entity::getVersion);
}
QString script_entity::getSoftDeleteColumn() const
{
    return ask(&model::entity::getSoftDeleteColumn);
}
QJSValue script_entity::getPropertyId(bool b) const
{
    return askObject([b](const model::entity & e) { return e.getPropertyId(b); });
}
QJSValue script_entity::getPropertyById(double id) const
{
    return askObject([id](const model::entity & e) { return e.getPropertyById(toId(id)); });
}
QJSValue script_entity::getListOfProperty(bool withIdentifier, bool withTransient, bool b) const
{
    return askList(
        [=](const model::entity & e) { return e.getListOfProperty(withIdentifier, withTransient, b); });
}
QJSValue script_entity::getListOfRelation() const
{
    return askList(&model::entity::getListOfRelation);
}
QJSValue script_entity::getProject() const
{
    return scriptModel().wrapCallers(ask(&model::entity::getProject));
}

// --- property
QString script_property::toString() const
{
    return QStringLiteral("property ") + getKey();
}
qlonglong script_property::getId() const
{
    return ask(&model::property::getId);
}
QJSValue script_property::getMetaData(const QString & key) const
{
    return askMetaData(key);
}
QVariantMap script_property::getAllMetaData() const
{
    return askAllMetaData();
}
QString script_property::getKey() const
{
    return ask(&model::property::getKey);
}
QString script_property::getExplicitKey() const
{
    return ask(&model::property::getExplicitKey);
}
QString script_property::getName() const
{
    return ask(&model::property::getName);
}
QString script_property::getColumnName(int index) const
{
    return ask([index](const model::property & p) { return p.getColumnName(index); });
}
int script_property::getColumnNameCount() const
{
    return ask(&model::property::getColumnNameCount);
}
qlonglong script_property::getEntityId() const
{
    return ask(&model::property::getEntityId);
}
QJSValue script_property::getEntity() const
{
    return askObject(&model::property::getEntity);
}
QJSValue script_property::getType() const
{
    return askObject(&model::property::getType);
}
QString script_property::getForceSqlType() const
{
    return ask(&model::property::getForceSqlType);
}
QString script_property::getExplicitForceSqlType() const
{
    return ask(&model::property::getExplicitForceSqlType);
}
bool script_property::isIdentifier() const
{
    return ask(&model::property::isIdentifier);
}
bool script_property::getAllowNull() const
{
    return ask(&model::property::getAllowNull);
}
bool script_property::getUnique() const
{
    return ask(&model::property::getUnique);
}
bool script_property::isIndex() const
{
    return ask(&model::property::isIndex);
}
bool script_property::isTransient() const
{
    return ask(&model::property::isTransient);
}
QJSValue script_property::getAutoIncrement() const
{
    const std::optional<bool> given = ask(&model::property::getAutoIncrement);
    return given ? QJSValue(*given) : QJSValue(QJSValue::NullValue);
}
bool script_property::hasRelationship() const
{
    return ask(&model::property::hasRelationship);
}
QJSValue script_property::getRelation() const
{
    return askObject(&model::property::getRelation);
}
bool script_property::isNumber(bool b, int index) const
{
    return ask([=](const model::property & p) { return p.isNumber(b, index); });
}
bool script_property::isString(bool b, int index) const
{
    return ask([=](const model::property & p) { return p.isString(b, index); });
}

// --- property type
QString script_property_type::toString() const
{
    return QStringLiteral("property type ") + getPrimitiveType();
}
QString script_property_type::getPrimitiveType(int index) const
{
    return ask([index](const model::property_type & t) { return t.getPrimitiveType(index); });
}
QJSValue script_property_type::getEnumeration() const
{
    return askObject(&model::property_type::getEnumeration);
}
QJSValue script_property_type::getCppTypes() const
{
    return scriptModel().engine().toScriptValue(ask(&model::property_type::getCppTypes));
}

// --- relationship
QString script_relationship::toString() const
{
    const std::shared_ptr<model::property> holder = ask(&model::relationship::getProperty);
    return QStringLiteral("relationship ") + (holder ? holder->getKey() : QString());
}
qlonglong script_relationship::getId() const
{
    return ask(&model::relationship::getId);
}
QJSValue script_relationship::getMetaData(const QString & key) const
{
    return askMetaData(key);
}
QVariantMap script_relationship::getAllMetaData() const
{
    return askAllMetaData();
}
int script_relationship::getType() const
{
    return ask(&model::relationship::getType);
}
QJSValue script_relationship::getProperty() const
{
    return askObject(&model::relationship::getProperty);
}
QJSValue script_relationship::getInverse() const
{
    return askObject(&model::relationship::getInverse);
}
qlonglong script_relationship::getInverseId() const
{
    return ask(&model::relationship::getInverseId);
}
QJSValue script_relationship::getEntityTarget() const
{
    return askObject(&model::relationship::getEntityTarget);
}
qlonglong script_relationship::getEntityTargetId() const
{
    return ask(&model::relationship::getEntityTargetId);
}
QString script_relationship::getExtraTable() const
{
    return ask(&model::relationship::getExtraTable);
}
QString script_relationship::getForeignKey() const
{
    return ask(&model::relationship::getForeignKey);
}
QString script_relationship::getForeignKeyOwner() const
{
    return ask(&model::relationship::getForeignKeyOwner);
}
int script_relationship::getColumnNameCount() const
{
    return ask(&model::relationship::getColumnNameCount);
}
QString script_relationship::getColumnName(int index) const
{
    return ask([index](const model::relationship & r) { return r.getColumnName(index); });
}
bool script_relationship::hasColumns() const
{
    return ask(&model::relationship::hasColumns);
}
QJSValue script_relationship::getKeyProperty() const
{
    return askObject(&model::relationship::getKeyProperty);
}

// --- enumeration
QString script_enumeration::toString() const
{
    return QStringLiteral("enumeration ") + getName();
}
qlonglong script_enumeration::getId() const
{
    return ask(&model::enumeration::getId);
}
QJSValue script_enumeration::getMetaData(const QString & key) const
{
    return askMetaData(key);
}
QVariantMap script_enumeration::getAllMetaData() const
{
    return askAllMetaData();
}
QString script_enumeration::getName() const
{
    return ask(&model::enumeration::getName);
}
QJSValue script_enumeration::getValues() const
{
    const QList<model::enumeration::value> values = ask(&model::enumeration::getValues);
    QJSEngine & engine = scriptModel().engine();
    QJSValue array = engine.newArray(static_cast<uint>(values.size()));
    for (quint32 i = 0; i < values.size(); ++i) {
        QJSValue value = engine.newObject();
        value.setProperty(QStringLiteral("name"), values[i].name);
        value.setProperty(QStringLiteral("number"), static_cast<double>(values[i].number));
        array.setProperty(i, value);
    }
    return array;
}

} // namespace tools
