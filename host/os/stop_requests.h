#pragma once

#include "korvane_global.h"

#include <csignal>

namespace os {

/// As long as one lives, SIGINT, SIGTERM and SIGHUP do not end the program at once: they are noted, so that
/// work that leaves something behind can end in order. When it goes, the program ends by a signal that was
/// noted. There is one at a time.
class KORVANE_EXPORT stop_requests
{
public:
    stop_requests();
    ~stop_requests();
    stop_requests(const stop_requests &) = delete;
    stop_requests & operator=(const stop_requests &) = delete;

    /// Whether a signal was noted.
    [[nodiscard]] static bool isRequested();

private:
    struct former
    {
        int signal;
        struct sigaction action;
    };
    former m_former[3];
};

} // namespace os
