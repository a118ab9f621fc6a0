#include "tools/program_end.h"

#include "tools/unfinished_files.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

#include <sys/mman.h>
#include <unistd.h>

namespace tools {

const char * const OutOfMemory =
    "Out of memory; the command was not completed. Close other programs or raise "
    "the limit of memory (ulimit -v), and try again";

namespace {

constexpr std::array CrashSignals = {SIGSEGV, SIGBUS, SIGABRT, SIGILL, SIGTRAP};
std::array<struct sigaction, CrashSignals.size()> formerActions;

// Where the stack itself found no memory to grow, a handler needs one of its own.
alignas(16) std::array<char, 65536> crashStack;

/// Whether not even a moderate piece of memory is to be had.
bool isMemoryShort() noexcept
{
    constexpr size_t piece = size_t(64) * 1024 * 1024;
    void * const tried = ::mmap(nullptr, piece, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (tried == MAP_FAILED) {
        return true;
    }
    ::munmap(tried, piece);
    return false;
}

void onCrash(int signal, siginfo_t * info, void *)
{
    if (isMemoryShort()) {
        endProgram(OutOfMemory);
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
        endProgram(OutOfMemory);
    } catch (...) {
        // An error of the program itself, which a crash tells best.
        std::abort();
    }
    std::abort();
}

} // namespace

void endProgram(const char * line) noexcept
{
    removeUnfinishedFiles();
    // Nothing is left to be done about a standard error that takes nothing.
    if (::write(STDERR_FILENO, line, std::strlen(line)) >= 0 && ::write(STDERR_FILENO, "\n", 1) >= 0) {
    }
    _exit(1);
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

} // namespace tools
