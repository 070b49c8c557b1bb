#pragma once

#include <QtGlobal>

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

namespace zeltools
{

/// Lets SIGALRM end the process if the object lives longer than the limit. Async-signal-safe.
class TimeLimit
{
public:
    /// Begins the time. Another use of alarm() in this process ends meanwhile.
    explicit TimeLimit(unsigned limit_s)
    {
        struct sigaction action = {};
        action.sa_handler = SIG_DFL;
        sigaction(SIGALRM, &action, &m_actionBefore);
        sigset_t alarmOnly;
        sigemptyset(&alarmOnly);
        sigaddset(&alarmOnly, SIGALRM);
        pthread_sigmask(SIG_UNBLOCK, &alarmOnly, &m_maskBefore);
        alarm(limit_s);
    }
    /// Ends the time, and restores the handling of SIGALRM.
    ~TimeLimit()
    {
        alarm(0);
        sigaction(SIGALRM, &m_actionBefore, nullptr);
        pthread_sigmask(SIG_SETMASK, &m_maskBefore, nullptr);
    }
    Q_DISABLE_COPY(TimeLimit)

private:
    struct sigaction m_actionBefore;
    sigset_t m_maskBefore;
};

} // namespace zeltools
