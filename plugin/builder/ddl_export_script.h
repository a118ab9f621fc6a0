#pragma once

#include "tools/unfinished_files.h"
#include "zk/zk_bool.h"

#include <QFile>
#include <QHash>
#include <QLatin1String>
#include <QString>
#include <QTextStream>
#include <QVariant>

#include <memory>

namespace model {
class project;
class entity;
class property;
} // namespace model

namespace tools {
class custom_javascript;
}

namespace plugin {

class ddl_export_builder;

/// Names of the steps, as the custom script receives them.
namespace ddl_action {
inline constexpr QLatin1String Begin("DDL_EXPORT_BEGIN");
inline constexpr QLatin1String CreateTable("CREATE_TABLE");
inline constexpr QLatin1String CreateExtraTable("CREATE_EXTRA_TABLE");
inline constexpr QLatin1String CreateIndex("CREATE_INDEX");
inline constexpr QLatin1String AddForeignKey("ADD_FOREIGN_KEY");
inline constexpr QLatin1String DropTable("DROP_TABLE");
inline constexpr QLatin1String RenameTable("RENAME_TABLE");
inline constexpr QLatin1String DropColumn("DROP_COLUMN");
inline constexpr QLatin1String AddColumn("ADD_COLUMN");
inline constexpr QLatin1String RenameColumn("RENAME_COLUMN");
inline constexpr QLatin1String DropIndex("DROP_INDEX");
inline constexpr QLatin1String DropForeignKey("DROP_FOREIGN_KEY");
inline constexpr QLatin1String End("DDL_EXPORT_END");
} // namespace ddl_action

/// One script file while it is written, statement by statement.
///
/// Every operation that fails gives the failure that ends the script, and tells it by a message, with the
/// reason. What was written until then stays on disk, and a second message names the file. When the program
/// itself ends before the script does, a file that is new goes; one that was there stays incomplete, which
/// the last line of the program tells unless a signal ends it.
class ddl_export_script
{
public:
    /// What the custom script learns about the script file, besides its name.
    struct origin
    {
        model::project * project = nullptr;
        QString pluginName;
        QString outputLocation;
        std::shared_ptr<tools::custom_javascript> customScript; ///< empty without one
    };
    /// What a statement is about; null where it does not apply.
    struct subject
    {
        model::entity * entity = nullptr;
        model::property * property = nullptr;
    };

    /// @param builder whose signal carries the messages
    /// @param title what the messages call this kind of script
    ddl_export_script(ddl_export_builder & builder, const QString & fileName, const QString & title,
                      const origin & from);

    [[nodiscard]] QString fileName() const { return m_sFileName; }
    [[nodiscard]] QString title() const { return m_sTitle; }

    zk::ZkBool open();
    /// The step that every statement takes: the custom script may replace `sql`, the result is written as a
    /// line, `message` tells of it.
    zk::ZkBool write(QLatin1String action, const QString & sql, const QString & message,
                     const subject & about);
    /// Sends a progress message.
    void report(const QString & message);
    /// Closes the file; a success means that all of it is on disk.
    zk::ZkBool close();

private:
    bool openFile(QString & reason);
    [[nodiscard]] QString incompleteText() const;
    [[nodiscard]] zk::ZkBool writeFailure();
    [[nodiscard]] zk::ZkBool failure(const QString & text, const QString & reason);

    ddl_export_builder & m_builder;
    QString m_sFileName;
    QString m_sTitle;
    origin m_origin;
    tools::unfinished_file m_new; ///< the file, when there was none before
    QFile m_file;
    QTextStream m_stream;
    bool m_bOpened = false;
    QHash<QString, QVariant> m_parameters;
};

} // namespace plugin
