#pragma once

#include <QtGlobal>

namespace monitored_threads
{

/// Lets through at most one log line per minute.
class LineLimit
{
public:
    bool isDue(qint64 now_ms)
    {
        constexpr qint64 pause_ms = 60000;
        if (now_ms < m_due_ms)
            return false;
        m_due_ms = now_ms + pause_ms;
        return true;
    }

private:
    qint64 m_due_ms = 0;
};

} // namespace monitored_threads
