#pragma once

#include "app/window/export/message_list.h"

#include "check/finding/finding.h"

#include <QMetaType>
#include <QString>

namespace app {

/// What a finding leads to.
struct finding_target
{
    QString script; ///< file name without its folder; empty for none
    int line = 0;   ///< of the script, from 1
    long entity = 0;
    long property = 0; ///< 0 for none
};

/// What `finding` leads to.
[[nodiscard]] finding_target targetOf(const check::finding & finding);
/// What it is as a line of the messages.
[[nodiscard]] message_kind kindOf(const check::finding & finding);
/// How many findings there are of each severity, in short.
[[nodiscard]] QString countsOf(const check::report & report);

} // namespace app

Q_DECLARE_METATYPE(app::finding_target)
