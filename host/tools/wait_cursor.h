#pragma once

#include "korvane_global.h"

namespace tools {

/// Shows the busy cursor for its lifetime; guards may be nested. Does nothing in a program without windows.
class KORVANE_EXPORT wait_cursor
{
public:
    wait_cursor();
    ~wait_cursor();
    wait_cursor(const wait_cursor &) = delete;
    wait_cursor & operator=(const wait_cursor &) = delete;

private:
    bool m_bShown = false;
};

} // namespace tools
