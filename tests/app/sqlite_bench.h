#pragma once

#include "database/server/sql_connection.h"

#include "support/program.h"

#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QTest>

namespace support {

/// A SQLite file to import, and a project to import it into.
class sqlite_bench : public QObject
{
protected:
    void beginAnew()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = path("shop.korv");
        m_url = "sqlite:" + path("shop.db");
    }
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }

    /// Runs statements on the file, which is made when it is not there.
    void make(const QStringList & statements) const
    {
        const database::server::sql_connection connection(
            "QSQLITE", [this](QSqlDatabase & db) { db.setDatabaseName(path("shop.db")); });
        for (const QString & each : statements) {
            QString error;
            QVERIFY2(connection.execute(each, error), qPrintable(error));
        }
    }

    [[nodiscard]] program_result run(const QStringList & options = {}) const
    {
        return runProgram(QStringList{"import", m_url, m_project} + options);
    }
    /// What an import prints; the reason when it fails.
    QByteArray imported(const QStringList & options = {}) const
    {
        const program_result result = run(options);
        return result.status == 0 && result.errors.isEmpty() ? result.output : result.errors;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
    QString m_url;
};

} // namespace support
