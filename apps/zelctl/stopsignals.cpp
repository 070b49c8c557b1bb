#include "stopsignals.h"

#include <QSocketNotifier>

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace
{

int openSignals()
{
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGINT);
    sigaddset(&stops, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stops, nullptr);
    return signalfd(-1, &stops, SFD_NONBLOCK | SFD_CLOEXEC);
}

} // namespace

StopSignals::StopSignals()
    : m_descriptor(openSignals())
{
    auto* const notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo signal{};
        if (read(m_descriptor, &signal, sizeof signal) > 0)
            Q_EMIT stopped();
    });
}

StopSignals::~StopSignals()
{
    close(m_descriptor);
}
