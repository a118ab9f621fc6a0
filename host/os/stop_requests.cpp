#include "os/stop_requests.h"

#include <atomic>

namespace os {

namespace {

// Read by threads that the signal does not come to.
std::atomic<int> noted = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler writes it");

void note(int signal)
{
    noted = signal;
}

} // namespace

stop_requests::stop_requests() : m_former{{SIGINT, {}}, {SIGTERM, {}}, {SIGHUP, {}}}
{
    noted = 0;
    for (former & each : m_former) {
        struct sigaction action = {};
        action.sa_handler = note;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(each.signal, nullptr, &each.action);
        // What is ignored, as under nohup, stays so.
        if (each.action.sa_handler != SIG_IGN) {
            sigaction(each.signal, &action, nullptr);
        }
    }
}

stop_requests::~stop_requests()
{
    for (const former & each : m_former) {
        sigaction(each.signal, &each.action, nullptr);
    }
    if (isRequested()) {
        std::raise(noted);
    }
}

bool stop_requests::isRequested()
{
    return noted != 0;
}

} // namespace os
