#pragma once

#include "korvane_global.h"

#include <QByteArray>
#include <QString>

namespace os {

/// A file, or a folder that is empty by then, that must not outlive the program before it is finished. It is
/// removed when this object goes, and also when a signal or a lack of memory ends the program meanwhile.
///
/// What is made and what is noted must not be told apart by a signal: both belong under one ending_held.
class KORVANE_EXPORT unfinished_file
{
public:
    enum what
    {
        file,
        folder
    };

    unfinished_file() = default;
    ~unfinished_file();
    unfinished_file(const unfinished_file &) = delete;
    unfinished_file & operator=(const unfinished_file &) = delete;

    /// Notes `path`, which this program has made, in place of what was noted before (which then stays).
    void note(const QString & path, what kind = file);
    /// The path is whole, or gone: it is not removed any more.
    void keep();
    /// Removes the path at once; false when it cannot be removed, and then it is tried again when this object
    /// goes. True when there is nothing noted.
    bool remove();

private:
    QByteArray m_path; ///< absolute, as the system spells it
    what m_kind = file;
    int m_iEntry = -1; ///< where a signal finds it
};

/// As long as one lives, a signal that ends the program waits.
class KORVANE_EXPORT ending_held
{
public:
    ending_held();
    ~ending_held();
    ending_held(const ending_held &) = delete;
    ending_held & operator=(const ending_held &) = delete;
};

/// From now on SIGINT, SIGTERM and SIGHUP remove the unfinished files before they end the program, by that
/// signal. One that is ignored, as under nohup, stays ignored.
KORVANE_EXPORT void removeUnfinishedOnSignals();

/// Removes the unfinished files at once, for an end of the program that runs no destructors. Safe in a signal
/// handler and on any thread.
KORVANE_EXPORT void removeUnfinishedFiles() noexcept;

} // namespace os
