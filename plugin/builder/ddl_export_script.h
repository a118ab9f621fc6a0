#pragma once

#include "plugin/builder/statement_sink.h"

#include "zk/zk_bool.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

namespace model {
class project;
class entity;
class property;
class relationship;
} // namespace model

namespace tools {
class custom_javascript;
}

namespace plugin {

class ddl_export_builder;

/// One script while it is written, statement by statement: here is the step that every statement takes.
///
/// Every operation that fails gives the failure that ends the script, and tells it by a message, with the
/// reason. A second message tells what that leaves behind.
class ddl_export_script
{
public:
    /// What the custom script learns about the script, besides its name.
    struct origin
    {
        model::project * project = nullptr;
        QString pluginName;
        QString outputLocation;
        std::shared_ptr<tools::custom_javascript> customScript; ///< empty without one
        std::function<bool()> isStopWanted;                     ///< whether the script is to end here
    };
    /// What a statement is about; null where it does not apply.
    struct subject
    {
        model::entity * entity = nullptr;
        model::property * property = nullptr;
        model::relationship * relationship = nullptr;
    };

    /// @param builder whose signal carries the messages
    /// @param sink where the statements go
    /// @param fileName absolute name of the script, for messages and the custom script
    /// @param title what the messages call this kind of script
    ddl_export_script(ddl_export_builder & builder, std::unique_ptr<statement_sink> sink,
                      const QString & fileName, const QString & title, const origin & from);

    [[nodiscard]] QString fileName() const { return m_sFileName; }
    [[nodiscard]] QString title() const { return m_sTitle; }

    zk::ZkBool open();
    /// The step: the custom script may replace `sql`, the result goes into the sink, `message` tells of it.
    zk::ZkBool write(statement_action action, const QString & sql, const QString & message,
                     const subject & about);
    /// Sends a progress message.
    void report(const QString & message);
    /// Ends the script; a success means that all of it is where it goes.
    zk::ZkBool close();

private:
    [[nodiscard]] zk::ZkBool writeFailure();
    [[nodiscard]] zk::ZkBool stopped();
    [[nodiscard]] zk::ZkBool failure(const QString & text, const QString & reason);

    ddl_export_builder & m_builder;
    std::unique_ptr<statement_sink> m_pSink;
    QString m_sFileName;
    QString m_sTitle;
    origin m_origin;
    QHash<QString, QVariant> m_parameters;
};

} // namespace plugin
