#pragma once

#include <zeltools/stacksignal.h>

#include <QtGlobal>

#include <pthread.h>
#include <signal.h>

namespace zeltools
{

/// Blocks the signals of the calling thread while the object lives, apart from those of its own
/// faults and the request for its call stack. A thread that it starts meanwhile blocks them
/// forever: signals of the host are handled by the threads of the host.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        for (const int open : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, stackSignal()})
            sigdelset(&all, open);
        pthread_sigmask(SIG_SETMASK, &all, &m_kept);
    }
    /// Restores the signal mask from before.
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_kept, nullptr); }
    Q_DISABLE_COPY(SignalsBlocked)

private:
    sigset_t m_kept;
};

} // namespace zeltools
