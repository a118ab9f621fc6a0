#pragma once

#include "korvane_global.h"

/// Ends of the program that run no destructors, and what they owe to the person and to the disk.
namespace tools {

/// What is said when memory runs out, wherever that is noticed.
extern KORVANE_EXPORT const char * const OutOfMemory;

/// Removes the unfinished files, writes `line` to standard error and ends the program with status 1. Safe in
/// a signal handler and on any thread.
[[noreturn]] KORVANE_EXPORT void endProgram(const char * line) noexcept;

/// From now on a lack of memory that nobody could catch (an exception that leaves Qt's event loop, a library
/// that gives up) ends the program by endProgram() with OutOfMemory. Any other crash stays a crash, but the
/// unfinished files are removed before it.
KORVANE_EXPORT void endOrderlyWithoutMemory();

} // namespace tools
