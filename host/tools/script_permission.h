#pragma once

#include "korvane_global.h"

#include <QString>

#include <functional>

/// A custom script runs code of whoever wrote it: the host has a say before it does.
namespace tools {

enum class script_permission
{
    run,
    leave_out, ///< the export goes on without it
    cancel     ///< no export
};

/// @param file absolute name of the script
/// @param isStored whether only the project's stored settings name it, not the person at this program
using script_guard = std::function<script_permission(const QString & file, bool isStored)>;

/// Lets a guard decide for as long as this object lives; without one every script runs.
class KORVANE_EXPORT script_guard_scope
{
public:
    explicit script_guard_scope(const script_guard & guard);
    ~script_guard_scope();
    script_guard_scope(const script_guard_scope &) = delete;
    script_guard_scope & operator=(const script_guard_scope &) = delete;

private:
    script_guard m_former;
};

/// What the guard says about a script that is about to run.
[[nodiscard]] KORVANE_EXPORT script_permission askScriptGuard(const QString & file, bool isStored);

/// Notes that the person at this program has chosen the script `file` (an absolute name) by hand.
KORVANE_EXPORT void noteChosenScript(const QString & file);
[[nodiscard]] KORVANE_EXPORT bool isChosenScript(const QString & file);

} // namespace tools
