#pragma once

#include "zk/zk_bool.h"

#include <QString>

/// The ways to a first project.
namespace app {

/// Writes a small model into the text file `text` and makes the project `project` of it, both new. The model
/// is called by the name of the file. A failure is one line.
[[nodiscard]] zk::ZkBool beginProject(const QString & text, const QString & project);

/// Copies the sample project, with its history, to `project`, a new file. A failure is one line.
[[nodiscard]] zk::ZkBool copySample(const QString & project);

} // namespace app
