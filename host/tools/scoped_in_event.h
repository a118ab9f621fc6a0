#pragma once

namespace tools {

/// Sets a re-entrancy flag for its lifetime and gives it its former value back at the end.
class scoped_in_event
{
public:
    /// The last argument only tells this constructor from others; its value means nothing.
    scoped_in_event(bool & flag, bool value, int) : m_flag(flag), m_bFormer(flag) { m_flag = value; }
    ~scoped_in_event() { m_flag = m_bFormer; }
    scoped_in_event(const scoped_in_event &) = delete;
    scoped_in_event & operator=(const scoped_in_event &) = delete;

private:
    bool & m_flag;
    bool m_bFormer;
};

} // namespace tools
