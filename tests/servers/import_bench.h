#pragma once

#include "servers/server_of_somebody.h"

#include "support/program.h"
#include "support/project_support.h"

#include <QTemporaryDir>
#include <QTest>

namespace servers {

/// Servers with databases to import, and a project to import them into.
class import_bench : public QObject
{
protected:
    /// The servers run until the tests have ended. Without one of them the tests are skipped.
    void startServers()
    {
        QString why;
        m_postgresql = startPostgreSqlOfSomebody(why);
        m_mariadb = m_postgresql ? startMariaDbOfSomebody(why) : nullptr;
        if (!m_mariadb) {
            QSKIP(qPrintable(why));
        }
    }
    void beginAnew()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = path("shop.korv");
    }

    static void addServers()
    {
        QTest::addColumn<int>("unused");
        QTest::newRow("postgresql") << 0;
        QTest::newRow("mariadb") << 1;
    }
    /// That of the row, when no key is given.
    [[nodiscard]] server_of_somebody & chosen(const QByteArray & key = QTest::currentDataTag()) const
    {
        return key == "postgresql" ? *m_postgresql : *m_mariadb;
    }

    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }

    static void execute(const server_of_somebody & server, const QString & database,
                        const QStringList & statements)
    {
        const auto connection = server.connect(database);
        for (const QString & each : statements) {
            QString error;
            QVERIFY2(connection->execute(each, error), qPrintable(each + ": " + error));
        }
    }
    static void createDatabase(const server_of_somebody & server, const QString & name)
    {
        execute(server, server.firstDatabase(), {"CREATE DATABASE " + name});
    }

    /// What an import prints; the reason when it fails.
    [[nodiscard]] QByteArray importFrom(const server_of_somebody & server, const QString & database,
                                        const QStringList & options = {}) const
    {
        const support::program_result result = support::runProgram(
            QStringList{"import", server.url(server.owner(), database), m_project} + options);
        return result.status == 0 && result.errors.isEmpty() ? result.output : "failed: " + result.errors;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;

private:
    std::unique_ptr<server_of_somebody> m_postgresql;
    std::unique_ptr<server_of_somebody> m_mariadb;
};

} // namespace servers
