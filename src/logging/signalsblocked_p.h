#pragma once

#include <QtGlobal>

#include <pthread.h>
#include <signal.h>

/// Blocks all signals of this thread during its life. A thread that it starts meanwhile blocks them
/// for ever: signals of the host are handled by the threads of the host.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_kept);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_kept, nullptr); }
    Q_DISABLE_COPY(SignalsBlocked)

private:
    sigset_t m_kept;
};
