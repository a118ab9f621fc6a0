#pragma once

#include "context/ctx_project.h"
#include "model/project.h"
#include "storage/project_file.h"
#include "storage/text_form.h"
#include "zk/zk_sql_database.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

namespace support {

/// A project in a real project file of a temporary folder, current for the lifetime of this object.
class stored_project
{
public:
    /// @param text the project's text form; an empty project "shop" when nothing is given
    explicit stored_project(
        const QByteArray & text =
            R"({"format": "korvane-project", "formatVersion": 1, "name": "shop", "entities": []})")
    {
        m_file = m_folder.filePath(QStringLiteral("shop.korv"));
        replaceModel(text);
    }
    ~stored_project()
    {
        context::ctx_project::getSingleton().setProject(nullptr);
        zk::ZkSqlDatabase::clearAllDatabases();
    }
    stored_project(const stored_project &) = delete;
    stored_project & operator=(const stored_project &) = delete;

    /// Stores the model of `text`, keeping settings and history, and makes the project as stored current.
    void replaceModel(const QByteArray & text)
    {
        model::project parsed(1);
        if (const zk::ZkBool read =
                storage::text_form::read(text, QStringLiteral("test"), m_project.get(), parsed);
            !read) {
            throw std::runtime_error(read.getDesc().toStdString());
        }
        if (const QSqlError error = storage::project_file::write(m_file, parsed); error.isValid()) {
            throw std::runtime_error(error.text().toStdString());
        }
        reload();
    }

    void reload()
    {
        m_project = std::make_shared<model::project>(1);
        m_project->setFileName(m_file);
        if (const QSqlError error = m_project->load(); error.isValid()) {
            throw std::runtime_error(error.text().toStdString());
        }
        context::ctx_project::getSingleton().setProject(m_project);
    }

    [[nodiscard]] model::project & project() const { return *m_project; }
    [[nodiscard]] std::shared_ptr<model::project> shared() const { return m_project; }
    [[nodiscard]] QString file() const { return m_file; }
    /// Absolute name of `name` in the project's folder.
    [[nodiscard]] QString path(const QString & name = QString()) const
    {
        return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
    }
    [[nodiscard]] QString content(const QString & name) const
    {
        QFile f(path(name));
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll())
                                           : QStringLiteral("(no such file)");
    }

private:
    QTemporaryDir m_folder;
    QString m_file;
    std::shared_ptr<model::project> m_project;
};

} // namespace support
