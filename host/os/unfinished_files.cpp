#include "os/unfinished_files.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <unistd.h>

namespace os {

namespace {

// A signal handler may neither allocate nor lock, so the table is there from the start.
constexpr int EntryCount = 64;
constexpr int LongestPath = 4096;

enum entry_state
{
    unused,
    changing,
    holds_file,
    holds_folder
};

struct entry
{
    std::atomic<int> state;
    std::array<char, LongestPath> path;
};

std::array<entry, EntryCount> entries;

// The number of ending_held objects; Ending once the end has begun, which nothing stops.
constexpr unsigned Ending = 0x80000000U;
std::atomic<unsigned> holds;
std::atomic<int> waitingSignal;

static_assert(std::atomic<int>::is_always_lock_free && std::atomic<unsigned>::is_always_lock_free);

int addEntry(const QByteArray & path, entry_state kind)
{
    if (path.size() >= LongestPath) {
        return -1;
    }
    for (int i = 0; i < EntryCount; ++i) {
        entry & e = entries[static_cast<size_t>(i)];
        int expected = unused;
        if (e.state.compare_exchange_strong(expected, changing)) {
            std::memcpy(e.path.data(), path.constData(), static_cast<size_t>(path.size()) + 1);
            e.state = kind;
            return i;
        }
    }
    return -1;
}

void removeEntries(entry_state kind, int (*removal)(const char *)) noexcept
{
    for (entry & e : entries) {
        if (e.state == kind) {
            removal(e.path.data());
        }
    }
}

[[noreturn]] void endBy(int signal)
{
    removeUnfinishedFiles();
    std::signal(signal, SIG_DFL);
    sigset_t mask;
    sigemptyset(&mask);
    sigaddset(&mask, signal);
    pthread_sigmask(SIG_UNBLOCK, &mask, nullptr);
    raise(signal);
    _exit(128 + signal);
}

void endWhenNothingHolds()
{
    unsigned none = 0;
    if (waitingSignal != 0 && holds.compare_exchange_strong(none, Ending)) {
        endBy(waitingSignal);
    }
}

void onSignal(int signal)
{
    waitingSignal = signal;
    endWhenNothingHolds();
}

} // namespace

unfinished_file::~unfinished_file()
{
    remove();
    keep();
}

bool unfinished_file::remove()
{
    if (m_path.isEmpty()) {
        return true;
    }
    const int result = m_kind == folder ? ::rmdir(m_path.constData()) : ::unlink(m_path.constData());
    if (result != 0 && errno != ENOENT) {
        return false;
    }
    keep();
    return true;
}

void unfinished_file::note(const QString & path, what kind)
{
    keep();
    m_path = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    m_kind = kind;
    m_iEntry = addEntry(m_path, kind == folder ? holds_folder : holds_file);
}

void unfinished_file::keep()
{
    if (m_iEntry >= 0) {
        entries[static_cast<size_t>(m_iEntry)].state = unused;
    }
    m_iEntry = -1;
    m_path.clear();
}

ending_held::ending_held()
{
    if ((holds.fetch_add(1) & Ending) != 0) {
        for (;;) {
            // Another thread is ending the program.
            ::pause();
        }
    }
}

ending_held::~ending_held()
{
    holds.fetch_sub(1);
    endWhenNothingHolds();
}

void removeUnfinishedOnSignals()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) {
            continue;
        }
        action = {};
        action.sa_handler = onSignal;
        action.sa_flags = SA_RESTART;
        for (const int other : {SIGINT, SIGTERM, SIGHUP}) {
            sigaddset(&action.sa_mask, other);
        }
        sigaction(signal, &action, nullptr);
    }
}

void removeUnfinishedFiles() noexcept
{
    // A folder can go once its files are gone.
    removeEntries(holds_file, ::unlink);
    removeEntries(holds_folder, ::rmdir);
}

} // namespace os
