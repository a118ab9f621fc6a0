#include "app/window/export/finding_target.h"

#include "app/window/export/message_panel.h"

#include <QLocale>

namespace app {

namespace {

QString counted(int count, const QString & one, const QString & many)
{
    return count == 1 ? one : many.arg(QLocale().toString(count));
}

} // namespace

message_kind kindOf(const check::finding & finding)
{
    if (finding.accepted) {
        return message_kind::accepted;
    }
    switch (finding.weight) {
    case check::severity::error:
        return message_kind::error;
    case check::severity::warning:
        return message_kind::warning;
    case check::severity::note:
        break;
    }
    return message_kind::note;
}

finding_target targetOf(const check::finding & finding)
{
    finding_target target;
    if (finding.statement) {
        target.script = finding.statement->script;
        target.line = finding.statement->line;
    }
    for (const check::object & object : finding.objects) {
        if (object.kind == model::object_kind::entity) {
            target.entity = object.id;
        } else if (object.kind == model::object_kind::property) {
            target.property = object.id;
        }
    }
    return target;
}

QString countsOf(const check::report & report)
{
    const check::summary sum = check::summaryOf(report);
    if (sum.errors + sum.warnings + sum.notes + sum.accepted == 0) {
        return message_panel::tr("No findings");
    }
    QStringList parts{counted(sum.errors, message_panel::tr("1 error"), message_panel::tr("%1 errors")),
                      counted(sum.warnings, message_panel::tr("1 warning"), message_panel::tr("%1 warnings")),
                      counted(sum.notes, message_panel::tr("1 note"), message_panel::tr("%1 notes"))};
    if (sum.accepted > 0) {
        parts << message_panel::tr("%1 accepted").arg(QLocale().toString(sum.accepted));
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace app
