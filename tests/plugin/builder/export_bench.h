#pragma once

#include "opened_builder.h"
#include "support/model_builder.h"

#include "context/ctx_project.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStringList>
#include <QTemporaryDir>

/// A plug-in with a folder to export into, a builder of it, and what the builder says.
class export_bench
{
public:
    explicit export_bench(plugin::ddl_export::database_type db = plugin::ddl_export::db_default,
                          plugin::ddl_export::export_db_schema schema = plugin::ddl_export::full)
        : m_builder(db, &plugin), m_spy(&m_builder.builder(), &plugin::ddl_export_builder::onMessage)
    {
        plugin.setDatabaseType(db);
        plugin.setExportDatabaseSchema(schema);
        plugin.setDDLExportPath(m_folder.path());
    }
    ~export_bench() { context::ctx_project::getSingleton().setProject(nullptr); }
    export_bench(const export_bench &) = delete;
    export_bench & operator=(const export_bench &) = delete;

    opened_builder & builder() { return m_builder; }
    [[nodiscard]] QString path(const QString & name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    [[nodiscard]] QString content(const QString & name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                              : QStringLiteral("(no such file)");
    }
    /// All messages so far, each as "type/timeout/text".
    [[nodiscard]] QStringList messages() const
    {
        QStringList result;
        for (const QList<QVariant> & message : m_spy) {
            result.append(message.at(1).toString() + QLatin1Char('/') + message.at(2).toString() +
                          QLatin1Char('/') + message.at(0).toString());
        }
        return result;
    }
    void forgetMessages() { m_spy.clear(); }

    plugin::ddl_export plugin;

private:
    QTemporaryDir m_folder;
    opened_builder m_builder;
    QSignalSpy m_spy;
};

/// "type/timeout/text" of progress messages.
inline QStringList progress(const QStringList & texts)
{
    QStringList result;
    for (const QString & text : texts) {
        result.append(QStringLiteral("1/10000/") + text);
    }
    return result;
}
