#pragma once

#include "check/finding/acceptance.h"
#include "zk/zk_bool.h"

#include <QString>

namespace app {

class source;

/// Reads the findings that a person accepts: those of the file `given`, else those of korvane-check.json
/// beside the project `of`, when there is one.
[[nodiscard]] zk::ZkBool readAccepted(const source & of, const QString & given,
                                      check::accepted_findings & accepted);

} // namespace app
