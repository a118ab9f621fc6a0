#pragma once

#include "check/finding/finding.h"
#include "check/view/script.h"
#include "plugin/statement_source.h"
#include "zk/zk_bool.h"

namespace check {
class checker;
}

namespace app {

/// Has `statements` make the full script of `full.now`, and `with` judge it meanwhile. What was made before a
/// failure, which is one of making the statements, is judged as well.
/// @param options of the export, its database included
/// @param told as for check::checker::run()
[[nodiscard]] zk::ZkBool judgeFullScript(plugin::statement_source & statements,
                                         const plugin::friendly_settings & options, check::checker & with,
                                         check::script & full, check::report * told);

/// The same of the script that leads from the version `from`, or 0, to `to`; the models are those of `step`.
/// Where versions lie between, the statements are about the names that `with` knows the database to hold.
[[nodiscard]] zk::ZkBool judgeStepScript(plugin::statement_source & statements,
                                         const plugin::friendly_settings & options, check::checker & with,
                                         check::script & step, int from, int to, check::report * told);

} // namespace app
