#pragma once

#include "korvane_global.h"

#include <QString>

/// Ends of the program that run no destructors, and what they owe to the person and to the disk.
namespace os {

/// What is said when memory runs out, wherever that is noticed. In English, for whoever cannot ask for
/// memory.
extern KORVANE_EXPORT const char * const OutOfMemory;
/// The same in the language of the window.
[[nodiscard]] KORVANE_EXPORT QString outOfMemoryText();

/// Notes what the person loses when endProgram() ends the program from now on, in one line. It takes the
/// place of what was noted before; an empty one says that there is nothing to lose. Of a line of more than 8
/// kB the beginning is kept.
KORVANE_EXPORT void noteLossAtEnd(const QString & line);

/// Removes the unfinished files, writes `line` and the noted loss to standard error and ends the program with
/// status 1. Safe in a signal handler and on any thread.
[[noreturn]] KORVANE_EXPORT void endProgram(const char * line) noexcept;

/// Ends the program since there is no memory: by endProgram() with OutOfMemory, or as the remark in work
/// says.
[[noreturn]] KORVANE_EXPORT void endWithoutMemory() noexcept;

/// Work on a mere remark about what is done already, as long as it lives: if memory runs out, `line` is said
/// in the place of OutOfMemory, and the program ends with status 0. What was printed has to be written
/// before.
class KORVANE_EXPORT remark_in_work
{
public:
    /// @param line has to stay for ever
    explicit remark_in_work(const char * line);
    ~remark_in_work();
    remark_in_work(const remark_in_work &) = delete;
    remark_in_work & operator=(const remark_in_work &) = delete;
};

/// From now on a lack of memory that nobody could catch (an exception that leaves Qt's event loop, a library
/// that gives up) ends the program by endWithoutMemory(). Any other crash stays a crash, but the
/// unfinished files are removed before it.
KORVANE_EXPORT void endOrderlyWithoutMemory();

} // namespace os
