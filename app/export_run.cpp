#include "app/export_run.h"

#include "app/output.h"

#include "plugin/export_details.h"
#include "plugin/export_interface.h"

#include <QCoreApplication>

#include <algorithm>

namespace app {

namespace {

/// Connections that last for one export.
class connections
{
public:
    ~connections()
    {
        for (const QMetaObject::Connection & connection : m_connections) {
            QObject::disconnect(connection);
        }
    }
    template <class Signal, class Receiver>
    void add(plugin::export_interface & plugin, Signal signal, const Receiver & receiver)
    {
        m_connections.append(QObject::connect(&plugin, signal, &plugin, receiver));
    }

private:
    QList<QMetaObject::Connection> m_connections;
};

} // namespace

export_report runPlugin(plugin::export_interface & plugin, model::project & project,
                        const export_listener & listener)
{
    export_report report;
    QStringList toldErrors;
    zk::ZkBool result;
    {
        connections during;
        during.add(plugin, &plugin::base_interface::onMessage, [&](const QString & text, int type, int) {
            if (type == plugin::ErrorMessage) {
                toldErrors.append(oneLine(text));
            }
            if (listener.message) {
                listener.message(text, type);
            }
        });
        during.add(plugin, &plugin::base_interface::onProgress, [&](int done, int total) {
            if (listener.progress) {
                listener.progress(done, total);
            }
        });
        during.add(plugin, &plugin::base_interface::onFileWritten, [&](const QString & file) {
            report.files.removeAll(file);
            report.files.append(file);
        });
        result = plugin.exportProject(project);
    }
    report.ok = result.getValue();
    if (const auto * const details = qobject_cast<plugin::export_details *>(&plugin);
        details && report.ok && report.files.isEmpty()) {
        report.reasonForNoFile = details->getReasonForNoFile();
        report.isVersionMissing = details->isVersionMissing();
    }
    if (!report.ok) {
        const QString reason = result.getDesc().isEmpty()
                                   ? QCoreApplication::translate(
                                         "app::export_run", "The export failed; the plug-in gave no reason")
                                   : oneLine(result.getDesc());
        // A message may say more than the result does.
        const bool isTold = std::any_of(toldErrors.cbegin(), toldErrors.cend(),
                                        [&reason](const QString & told) { return told.startsWith(reason); });
        report.untoldReason = isTold ? QString() : reason;
    }
    return report;
}

} // namespace app
