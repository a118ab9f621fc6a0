#pragma once

namespace app {

/// From now on a person at a terminal is told, on standard error and once, when a command waits for another
/// process that uses its project.
void tellWaiting();

} // namespace app
