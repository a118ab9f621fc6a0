#include "servers/model_history.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <functional>

namespace servers {

namespace {

// Above every id of the models that the tests use.
constexpr int NewEntity = 9000;
constexpr int NewProperty = 9100;
constexpr int NewRelationship = 9200;

using change = std::function<void(QJsonObject & entity)>;

void changeEntity(QJsonObject & project, int index, const change & apply)
{
    QJsonArray entities = project[QStringLiteral("entities")].toArray();
    QJsonObject entity = entities[index].toObject();
    apply(entity);
    entity[QStringLiteral("version")] = entity[QStringLiteral("version")].toInt() + 1;
    entities[index] = entity;
    project[QStringLiteral("entities")] = entities;
}

void changeProperty(QJsonObject & entity, int index, const change & apply)
{
    QJsonArray properties = entity[QStringLiteral("properties")].toArray();
    QJsonObject property = properties[index].toObject();
    apply(property);
    properties[index] = property;
    entity[QStringLiteral("properties")] = properties;
}

QJsonObject newEntity(int target)
{
    const QJsonObject relationship{{QStringLiteral("id"), NewRelationship},
                                   {QStringLiteral("type"), QStringLiteral("many-to-one")},
                                   {QStringLiteral("target"), target}};
    const QJsonArray properties{QJsonObject{{QStringLiteral("id"), NewProperty + 1},
                                            {QStringLiteral("name"), QStringLiteral("note_id")},
                                            {QStringLiteral("type"), QStringLiteral("long")},
                                            {QStringLiteral("identifier"), true}},
                                QJsonObject{{QStringLiteral("id"), NewProperty + 2},
                                            {QStringLiteral("name"), QStringLiteral("subject")},
                                            {QStringLiteral("columnName"), QStringLiteral("subject_id")},
                                            {QStringLiteral("index"), true},
                                            {QStringLiteral("relationship"), relationship}}};
    return {{QStringLiteral("id"), NewEntity},
            {QStringLiteral("name"), QStringLiteral("note")},
            {QStringLiteral("version"), 1},
            {QStringLiteral("properties"), properties}};
}

} // namespace

QStringList historyOf(const QByteArray & text, bool canRenameColumns)
{
    if (text.isEmpty()) {
        return {};
    }
    QJsonObject project = QJsonDocument::fromJson(text).object();
    QStringList versions;
    const auto keep = [&versions, &project] {
        versions.append(QString::fromUtf8(QJsonDocument(project).toJson()));
    };
    keep();
    changeEntity(project, 0, [](QJsonObject & entity) {
        QJsonArray properties = entity[QStringLiteral("properties")].toArray();
        properties.append(QJsonObject{{QStringLiteral("id"), NewProperty},
                                      {QStringLiteral("name"), QStringLiteral("remark")},
                                      {QStringLiteral("type"), QStringLiteral("QString")}});
        entity[QStringLiteral("properties")] = properties;
    });
    QJsonArray entities = project[QStringLiteral("entities")].toArray();
    entities.append(newEntity(entities[0].toObject()[QStringLiteral("id")].toInt()));
    project[QStringLiteral("entities")] = entities;
    keep();
    changeEntity(project, 1, [](QJsonObject & entity) {
        entity[QStringLiteral("tableName")] =
            entity[QStringLiteral("name")].toString() + QStringLiteral("_renamed");
    });
    keep();
    changeEntity(project, 0, [](QJsonObject & entity) {
        changeProperty(entity, 1, [](QJsonObject & property) { property[QStringLiteral("index")] = true; });
    });
    if (canRenameColumns) {
        changeEntity(project, 2, [](QJsonObject & entity) {
            changeProperty(entity, 1, [](QJsonObject & property) {
                property[QStringLiteral("columnName")] = QStringLiteral("new_name");
            });
        });
    }
    keep();
    return versions;
}

} // namespace servers
