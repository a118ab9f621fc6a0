#include "app/export_run.h"

#include "app/output.h"

#include "plugin/export_details.h"
#include "plugin/export_interface.h"

#include <QCoreApplication>

#include <algorithm>

namespace app {

namespace {

/// Why an export failed, unless one of the errors that were told says it already.
QString untoldReason(const zk::ZkBool & result, const QStringList & toldErrors)
{
    const QString reason =
        result.getDesc().isEmpty()
            ? QCoreApplication::translate("app::export_run", "The export failed; the plug-in gave no reason")
            : oneLine(result.getDesc());
    // A message may say more than the result does.
    const bool isTold = std::any_of(toldErrors.cbegin(), toldErrors.cend(),
                                    [&reason](const QString & told) { return told.startsWith(reason); });
    return isTold ? QString() : reason;
}

} // namespace

export_report runPlugin(plugin::export_interface & plugin, model::project & project,
                        const export_listener & listener)
{
    export_report report;
    QStringList toldErrors;
    zk::ZkBool result;
    {
        const QObject during; // so long the connections last
        QObject::connect(&plugin, &plugin::base_interface::onMessage, &during,
                         [&](const QString & text, int type) {
                             if (type == plugin::ErrorMessage) {
                                 toldErrors.append(oneLine(text));
                             }
                             if (listener.message) {
                                 listener.message(text, type);
                             }
                         });
        if (listener.progress) {
            QObject::connect(&plugin, &plugin::base_interface::onProgress, &during, listener.progress);
        }
        QObject::connect(&plugin, &plugin::base_interface::onFileWritten, &during, [&](const QString & file) {
            report.files.removeAll(file);
            report.files.append(file);
        });
        result = plugin.exportProject(project);
    }
    report.ok = result.getValue();
    if (!report.ok) {
        report.untoldReason = untoldReason(result, toldErrors);
    } else if (const auto * const details = qobject_cast<plugin::export_details *>(&plugin);
               details && report.files.isEmpty()) {
        report.reasonForNoFile = details->getReasonForNoFile();
        report.isVersionMissing = details->isVersionMissing();
    }
    return report;
}

} // namespace app
