#pragma once

#include "model/entity.h"
#include "model/enumeration.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <QHash>
#include <QJSEngine>
#include <QJSValue>
#include <QObject>
#include <QSet>

#include <memory>
#include <type_traits>
#include <vector>

namespace tools {

class script_object;

/// The model as one script engine sees it.
///
/// A model object has one script object as long as the script can reach it, so `===` works; the script's
/// garbage collector frees it. Script objects hold their model object weakly: once that is gone they answer
/// with null, false, 0 and empty texts.
class script_model
{
public:
    explicit script_model(QJSEngine & engine) : m_engine(engine) {}
    /// To be called when the engine is gone: frees the script objects that it left over.
    ~script_model();
    script_model(const script_model &) = delete;
    script_model & operator=(const script_model &) = delete;

    [[nodiscard]] QJSEngine & engine() const { return m_engine; }

    /// The script object of `object`, null for none.
    template <typename T>
    QJSValue wrap(const std::shared_ptr<T> & object);
    /// The script object of an object that the caller may own in any way. When no shared pointer owns it, its
    /// script object answers until the next endCall() only.
    template <typename T>
    QJSValue wrapCallers(T * object);
    /// A JavaScript array of the script objects of a list, empty without a list.
    template <typename List>
    QJSValue wrapList(const std::shared_ptr<List> & list);

    /// Between two calls into the script: lets go what the script can no longer reach, when that is much.
    void beginCall();
    void endCall() { m_callersObjects.clear(); }

private:
    friend class script_object;

    QJSEngine & m_engine;
    QHash<const void *, script_object *> m_byObject;
    QSet<script_object *> m_all;
    qsizetype m_iCollectAbove = 0;
    std::vector<std::shared_ptr<void>> m_callersObjects;
};

/// Base of all script objects: what the persistent objects have in common is asked through `persistable()`.
class script_object : public QObject
{
    Q_OBJECT

public:
    ~script_object() override;

    /// What the script's console shows for the object.
    Q_INVOKABLE virtual QString toString() const = 0;
    [[nodiscard]] virtual bool isGone() const = 0;

protected:
    script_object(script_model & model, const void * object);
    [[nodiscard]] script_model & scriptModel() const { return m_model; }

private:
    script_model & m_model;
    const void * m_pKey;
};

/// A script object of the model class `T`.
template <typename T>
class script_object_of : public script_object
{
public:
    script_object_of(script_model & model, const std::shared_ptr<T> & object)
        : script_object(model, object.get()), m_pObject(object)
    {
    }

    /// Answers for `object`, which lies where the former object lay.
    void follow(const std::shared_ptr<T> & object) { m_pObject = object; }
    [[nodiscard]] bool isGone() const override { return m_pObject.expired(); }

protected:
    /// The answer of `question`, called with the model object; an empty one when that is gone.
    template <typename Question>
    auto ask(Question question) const -> std::decay_t<std::invoke_result_t<Question, const T &>>
    {
        const std::shared_ptr<T> object = m_pObject.lock();
        return object ? std::invoke(question, std::as_const(*object))
                      : std::decay_t<std::invoke_result_t<Question, const T &>>();
    }
    template <typename Question>
    QJSValue askObject(Question question) const
    {
        return scriptModel().wrap(ask(question));
    }
    template <typename Question>
    QJSValue askList(Question question) const
    {
        return scriptModel().wrapList(ask(question));
    }
    QJSValue askMetaData(const QString & key) const
    {
        const QVariant value = ask([&key](const T & object) { return object.getMetaData(key); });
        return value.isValid() ? scriptModel().engine().toScriptValue(value) : QJSValue();
    }
    QVariantMap askAllMetaData() const
    {
        QVariantMap result;
        const QHash<QString, QVariant> values = ask(&T::getAllMetaData);
        for (auto it = values.constBegin(); it != values.constEnd(); ++it) {
            result.insert(it.key(), it.value());
        }
        return result;
    }

private:
    std::weak_ptr<T> m_pObject;
};

class script_project final : public script_object_of<model::project>
{
    Q_OBJECT

public:
    using script_object_of::script_object_of;

    QString toString() const override;
    Q_INVOKABLE qlonglong getId() const;
    Q_INVOKABLE QJSValue getMetaData(const QString & key) const;
    Q_INVOKABLE QVariantMap getAllMetaData() const;
    Q_INVOKABLE QString getName() const;
    Q_INVOKABLE QString getLocation() const;
    Q_INVOKABLE QString getFileName() const;
    Q_INVOKABLE QJSValue getThis() const;
    Q_INVOKABLE QJSValue getListOfAllEntities() const;
    Q_INVOKABLE QJSValue getEntityById(double id) const;
    Q_INVOKABLE QJSValue getListOfEnumeration() const;
    Q_INVOKABLE QJSValue getEnumerationById(double id) const;
};

class script_entity final : public script_object_of<model::entity>
{
    Q_OBJECT

public:
    using script_object_of::script_object_of;

    QString toString() const override;
    Q_INVOKABLE qlonglong getId() const;
    Q_INVOKABLE QJSValue getMetaData(const QString & key) const;
    Q_INVOKABLE QVariantMap getAllMetaData() const;
    Q_INVOKABLE QString getKey() const;
    Q_INVOKABLE QString getExplicitKey() const;
    Q_INVOKABLE QString getName() const;
    Q_INVOKABLE QString getTableName() const;
    Q_INVOKABLE qlonglong getVersion() const;
    Q_INVOKABLE QString getSoftDeleteColumn() const;
    Q_INVOKABLE QJSValue getPropertyId(bool b = true) const;
    Q_INVOKABLE QJSValue getPropertyById(double id) const;
    Q_INVOKABLE QJSValue getListOfProperty(bool withIdentifier = true, bool withTransient = true,
                                           bool b = false) const;
    Q_INVOKABLE QJSValue getListOfRelation() const;
    Q_INVOKABLE QJSValue getProject() const;
};

class script_property final : public script_object_of<model::property>
{
    Q_OBJECT

public:
    using script_object_of::script_object_of;

    QString toString() const override;
    Q_INVOKABLE qlonglong getId() const;
    Q_INVOKABLE QJSValue getMetaData(const QString & key) const;
    Q_INVOKABLE QVariantMap getAllMetaData() const;
    Q_INVOKABLE QString getKey() const;
    Q_INVOKABLE QString getExplicitKey() const;
    Q_INVOKABLE QString getName() const;
    Q_INVOKABLE QString getColumnName(int index = -1) const;
    Q_INVOKABLE int getColumnNameCount() const;
    Q_INVOKABLE qlonglong getEntityId() const;
    Q_INVOKABLE QJSValue getEntity() const;
    Q_INVOKABLE QJSValue getType() const;
    Q_INVOKABLE QString getForceSqlType() const;
    Q_INVOKABLE QString getExplicitForceSqlType() const;
    Q_INVOKABLE bool isIdentifier() const;
    Q_INVOKABLE bool getAllowNull() const;
    Q_INVOKABLE bool getUnique() const;
    Q_INVOKABLE bool isIndex() const;
    Q_INVOKABLE bool isTransient() const;
    Q_INVOKABLE QJSValue getAutoIncrement() const;
    Q_INVOKABLE bool hasRelationship() const;
    Q_INVOKABLE QJSValue getRelation() const;
    Q_INVOKABLE bool isNumber(bool b = true, int index = -1) const;
    Q_INVOKABLE bool isString(bool b = true, int index = -1) const;
};

class script_property_type final : public script_object_of<model::property_type>
{
    Q_OBJECT

public:
    using script_object_of::script_object_of;

    QString toString() const override;
    Q_INVOKABLE QString getPrimitiveType(int index = -1) const;
    Q_INVOKABLE QJSValue getEnumeration() const;
    Q_INVOKABLE QJSValue getCppTypes() const;
};

class script_relationship final : public script_object_of<model::relationship>
{
    Q_OBJECT

public:
    using script_object_of::script_object_of;

    QString toString() const override;
    Q_INVOKABLE qlonglong getId() const;
    Q_INVOKABLE QJSValue getMetaData(const QString & key) const;
    Q_INVOKABLE QVariantMap getAllMetaData() const;
    Q_INVOKABLE int getType() const;
    Q_INVOKABLE QJSValue getProperty() const;
    Q_INVOKABLE QJSValue getInverse() const;
    Q_INVOKABLE qlonglong getInverseId() const;
    Q_INVOKABLE QJSValue getEntityTarget() const;
    Q_INVOKABLE qlonglong getEntityTargetId() const;
    Q_INVOKABLE QString getExtraTable() const;
    Q_INVOKABLE QString getForeignKey() const;
    Q_INVOKABLE QString getForeignKeyOwner() const;
    Q_INVOKABLE int getColumnNameCount() const;
    Q_INVOKABLE QString getColumnName(int index) const;
    Q_INVOKABLE bool hasColumns() const;
    Q_INVOKABLE QJSValue getKeyProperty() const;
};

class script_enumeration final : public script_object_of<model::enumeration>
{
    Q_OBJECT

public:
    using script_object_of::script_object_of;

    QString toString() const override;
    Q_INVOKABLE qlonglong getId() const;
    Q_INVOKABLE QJSValue getMetaData(const QString & key) const;
    Q_INVOKABLE QVariantMap getAllMetaData() const;
    Q_INVOKABLE QString getName() const;
    Q_INVOKABLE QJSValue getValues() const;
};

// clang-format off
template <typename T> struct script_class_of;
template <> struct script_class_of<model::project> { using type = script_project; };
template <> struct script_class_of<model::entity> { using type = script_entity; };
template <> struct script_class_of<model::property> { using type = script_property; };
template <> struct script_class_of<model::property_type> { using type = script_property_type; };
template <> struct script_class_of<model::relationship> { using type = script_relationship; };
template <> struct script_class_of<model::enumeration> { using type = script_enumeration; };
// clang-format on

template <typename T>
QJSValue script_model::wrap(const std::shared_ptr<T> & object)
{
    if (!object) {
        return QJSValue(QJSValue::NullValue);
    }
    if (script_object * const known = m_byObject.value(object.get()); known && !known->isGone()) {
        // Null tells that the garbage collector has given the script object up.
        if (const QJSValue value = m_engine.newQObject(known); !value.isNull()) {
            return value;
        }
    }
    return m_engine.newQObject(new typename script_class_of<T>::type(*this, object));
}

template <typename T>
QJSValue script_model::wrapCallers(T * object)
{
    if (!object) {
        return QJSValue(QJSValue::NullValue);
    }
    if constexpr (requires { object->weak_from_this(); }) {
        if (const std::shared_ptr<T> owned = object->weak_from_this().lock()) {
            return wrap(owned);
        }
    }
    const std::shared_ptr<T> untilEnd(object, [](T *) {});
    m_callersObjects.push_back(untilEnd);
    using script_class = typename script_class_of<T>::type;
    if (auto * const known = dynamic_cast<script_class *>(m_byObject.value(object));
        known && known->isGone()) {
        known->follow(untilEnd);
    }
    return wrap(untilEnd);
}

template <typename List>
QJSValue script_model::wrapList(const std::shared_ptr<List> & list)
{
    const auto objects = list ? list->values() : decltype(list->values())();
    QJSValue array = m_engine.newArray(static_cast<uint>(objects.size()));
    for (quint32 i = 0; i < objects.size(); ++i) {
        array.setProperty(i, wrap(objects[i]));
    }
    return array;
}

} // namespace tools
