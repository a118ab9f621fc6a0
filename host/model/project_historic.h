#pragma once

#include "korvane_global.h"

#include <QByteArray>
#include <QDateTime>
#include <QSqlError>
#include <QString>
#include <QStringList>
#include <QVariant>

class QSqlDatabase;
class QSqlQuery;

namespace model {

/// A tagged version of a project: a row of the project database's table "t_project_historic".
///
/// A record that was fetched reads its project file from the database when it is asked for it, so that a list
/// of many versions stays small.
class KORVANE_EXPORT project_historic
{
public:
    [[nodiscard]] QDateTime getCreationTime() const { return m_dtCreation; }
    void setCreationTime(const QDateTime & time) { m_dtCreation = time; }
    /// The version's project file, compressed in the format of qCompress; empty when it cannot be read.
    [[nodiscard]] QByteArray getProjectFile() const;
    /// The same, with the reason when it cannot be read.
    [[nodiscard]] QSqlError readProjectFile(QByteArray & compressed) const;
    /// The same for a record that was fetched, through the connection `database` to its file.
    [[nodiscard]] QSqlError readProjectFile(const QSqlDatabase & database, QByteArray & compressed) const;
    void setProjectFile(const QByteArray & compressed)
    {
        m_projectFile = compressed;
        m_sDatabaseFile.clear();
    }

    static QString zkTable() { return QStringLiteral("t_project_historic"); }
    static QStringList zkColumns();
    static QStringList zkFetchColumns();
    void zkRead(const QSqlQuery & row, const QSqlDatabase & database);
    [[nodiscard]] QVariantList zkBind() const;

private:
    QDateTime m_dtCreation;
    QByteArray m_projectFile;
    QString m_sDatabaseFile;
    qlonglong m_iRow = 0;
};

} // namespace model
