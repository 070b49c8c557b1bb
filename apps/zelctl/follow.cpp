#include "follow.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

namespace
{

volatile sig_atomic_t s_isEnded = 0;

} // namespace

Follow::Follow()
{
    struct sigaction action = {};
    action.sa_handler = [](int) { s_isEnded = 1; };
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool Follow::isInterrupted() const
{
    return s_isEnded != 0;
}

bool Follow::wait() const
{
    constexpr int interval_ms = 100;
    return !isInterrupted() && !isReaderGone(interval_ms) && !isInterrupted();
}

// A poll for no event reports only that the reader has gone.
bool isReaderGone(int patience_ms)
{
    pollfd output{STDOUT_FILENO, 0, 0};
    return poll(&output, 1, patience_ms) > 0;
}
