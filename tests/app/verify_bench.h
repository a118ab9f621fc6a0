#pragma once

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

/// What tests of the command verify share: a project with a history, and what is told of it.
class verify_bench
{
public:
    [[nodiscard]] QString path(const QString & name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString project() const { return path(QStringLiteral("shop.korv")); }
    [[nodiscard]] const QTemporaryDir & folder() const { return m_folder; }

    /// The text form of a model with these entities, in which "ID" stands for a counted key's fields.
    static QByteArray text(const char * entities)
    {
        return support::textOf(
            support::json(entities).replace("ID", support::json("'type': 'long', 'identifier': true")));
    }

    /// Makes the project; each version but the last one is tagged.
    void history(const QList<const char *> & versions) const
    {
        for (const char * const entities : versions) {
            if (entities != versions.constFirst()) {
                QCOMPARE(support::runProgram({"tag", project()}).status, 0);
            }
            QVERIFY(support::writeBytes(path("shop.json"), text(entities)));
            QCOMPARE(support::runProgram({"import", path("shop.json"), project()}).status, 0);
        }
    }

    /// Has each statement of the action `action` replaced by `statements`, which is an expression of
    /// JavaScript; gives the option that says so.
    [[nodiscard]] QStringList ownScript(const char * action, const char * statements) const
    {
        const QByteArray script =
            QByteArray("function exportStep(project, entity, property, enumeration, p) {"
                       " return p.action === '") +
            action + "' ? " + statements + " : undefined; }\n";
        return support::writeBytes(path("own.js"), script) ? QStringList{"--custom-script", path("own.js")}
                                                           : QStringList();
    }

    /// What is told of the first database; nothing when the form is not valid.
    [[nodiscard]] QJsonObject runOf(const QStringList & options) const
    {
        const support::program_result result =
            support::runProgram(QStringList{"verify", project(), "--json"} + options);
        support::writeBytes(path("verify.json"), result.output);
        const QByteArray errors = support::schemaErrors("verify.schema.json", {path("verify.json")});
        if (!errors.isEmpty()) {
            qWarning("%s", errors.constData());
            return {};
        }
        return QJsonDocument::fromJson(result.output)["runs"][0].toObject();
    }

    /// The cases that failed, with why.
    static QStringList failuresIn(const QByteArray & junit)
    {
        QXmlStreamReader xml(junit);
        QString name;
        QStringList failures;
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement) {
                if (xml.name() == QLatin1String("testcase")) {
                    name = xml.attributes().value("name").toString();
                } else if (xml.name() == QLatin1String("failure")) {
                    failures << name + ": " + xml.readElementText();
                }
            }
        }
        return failures;
    }

private:
    QTemporaryDir m_folder;
};
