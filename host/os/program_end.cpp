#include "os/program_end.h"

#include "os/memory_in_use.h"
#include "os/texts.h"
#include "os/unfinished_files.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace os {

const char * const OutOfMemory =
    QT_TRANSLATE_NOOP("os", "Out of memory; the command was not completed. "
                            "Close other programs or raise the limit of memory (ulimit -v), and try again");

QString outOfMemoryText()
{
    return texts::tr(OutOfMemory);
}

namespace {

constexpr std::array CrashSignals = {SIGSEGV, SIGBUS, SIGABRT, SIGILL, SIGTRAP};
std::array<struct sigaction, CrashSignals.size()> formerActions;

// Where the stack itself found no memory to grow, a handler needs one of its own.
alignas(16) std::array<char, 65536> crashStack;

// The end may come on any thread, so the room for it is never given back. The last byte stays 0.
std::array<char, 8192> loss;
std::atomic<bool> hasLoss;

/// How an end without memory goes.
struct last_words
{
    const char * line;
    int status;
};

const last_words Failure{OutOfMemory, 1};
last_words remark{nullptr, 0};
std::atomic<const last_words *> withoutMemory = &Failure;

void writeLine(const char * line) noexcept
{
    // Nothing is left to be done about a standard error that takes nothing.
    if (::write(STDERR_FILENO, line, std::strlen(line)) >= 0 && ::write(STDERR_FILENO, "\n", 1) >= 0) {
    }
}

/// Whether as much memory as there is in use is not to be had again: what grows doubles its room.
bool isMemoryShort() noexcept
{
    constexpr size_t moderate = size_t(64) * 1024 * 1024;
    const size_t inUse = memoryInUse();
    const size_t piece = inUse > moderate ? inUse : moderate;
    void * const tried = ::mmap(nullptr, piece, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (tried == MAP_FAILED) {
        return true;
    }
    ::munmap(tried, piece);
    return false;
}

[[noreturn]] void end(const last_words & words) noexcept
{
    removeUnfinishedFiles();
    writeLine(words.line);
    if (hasLoss) {
        writeLine(loss.data());
    }
    _exit(words.status);
}

void onCrash(int signal, siginfo_t * info, void *)
{
    if (isMemoryShort()) {
        endWithoutMemory();
    }
    removeUnfinishedFiles();
    for (size_t i = 0; i < CrashSignals.size(); ++i) {
        if (CrashSignals[i] == signal) {
            sigaction(signal, &formerActions[i], nullptr);
        }
    }
    if (info->si_code <= 0) {
        // It was sent; what faulted is run again after this, and meets the former action.
        raise(signal);
    }
}

[[noreturn]] void onTerminate() noexcept
{
    try {
        if (const std::exception_ptr current = std::current_exception()) {
            std::rethrow_exception(current);
        }
    } catch (const std::bad_alloc &) {
        endWithoutMemory();
    } catch (...) {
        // An error of the program itself, which a crash tells best.
        std::abort();
    }
    std::abort();
}

} // namespace

void noteLossAtEnd(const QString & line)
{
    hasLoss = false;
    if (line.isEmpty()) {
        return;
    }
    const QByteArray text = line.toLocal8Bit();
    const size_t length = std::min(static_cast<size_t>(text.size()), loss.size() - 1);
    std::memcpy(loss.data(), text.constData(), length);
    loss.at(length) = '\0';
    hasLoss = true;
}

remark_in_work::remark_in_work(const char * line)
{
    remark.line = line;
    withoutMemory = &remark;
}

remark_in_work::~remark_in_work()
{
    withoutMemory = &Failure;
}

void endProgram(const char * line) noexcept
{
    end({line, 1});
}

void endWithoutMemory() noexcept
{
    end(*withoutMemory);
}

void endOrderlyWithoutMemory()
{
    std::set_terminate(onTerminate);
    stack_t stack = {};
    stack.ss_sp = crashStack.data();
    stack.ss_size = crashStack.size();
    sigaltstack(&stack, nullptr);
    struct sigaction action = {};
    action.sa_sigaction = onCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    for (size_t i = 0; i < CrashSignals.size(); ++i) {
        sigaction(CrashSignals[i], &action, &formerActions[i]);
    }
}

} // namespace os
