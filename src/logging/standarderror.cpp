#include "logging/standarderror_p.h"

#include "writewhole.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>

#include <pthread.h>
#include <signal.h>
#include <stdio_ext.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <time.h>

namespace
{

enum class Kind { File, Pipe, Socket };

// While an object of this class lives, no write of this thread ends the process. A write to a pipe
// without a reader sends SIGPIPE to the writing thread. The guard blocks the signal and removes it
// at the end.
class SigpipeGuard
{
public:
    SigpipeGuard()
    {
        sigemptyset(&m_sigpipe);
        sigaddset(&m_sigpipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &m_sigpipe, &m_kept);
        // A SIGPIPE that is pending already belongs to the host, which has blocked it.
        sigset_t pending;
        m_isHosts = sigismember(&m_kept, SIGPIPE) == 1 && sigpending(&pending) == 0 &&
                    sigismember(&pending, SIGPIPE) == 1;
    }
    ~SigpipeGuard()
    {
        const timespec noTime = {};
        if (m_isSent && !m_isHosts)
            sigtimedwait(&m_sigpipe, nullptr, &noTime);
        pthread_sigmask(SIG_SETMASK, &m_kept, nullptr);
    }
    SigpipeGuard(const SigpipeGuard&) = delete;
    SigpipeGuard& operator=(const SigpipeGuard&) = delete;

    void setSent() { m_isSent = true; }

private:
    sigset_t m_sigpipe;
    sigset_t m_kept;
    bool m_isHosts;
    bool m_isSent = false;
};

Kind lookUpKind(int descriptor)
{
    struct stat status;
    if (fstat(descriptor, &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)))
        return Kind::File;
    return S_ISSOCK(status.st_mode) ? Kind::Socket : Kind::Pipe;
}

Kind kindOf(int descriptor)
{
    static std::atomic<Kind> kind{Kind::File};
    static std::atomic<int64_t> nextLook_ms{0};
    constexpr int64_t interval_ms = 10;
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    const int64_t now_ms = int64_t(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
    if (now_ms >= nextLook_ms) {
        kind = lookUpKind(descriptor);
        nextLook_ms = now_ms + interval_ms;
    }
    return kind;
}

void writeGuarded(int descriptor, const char* data, size_t size)
{
    SigpipeGuard guard;
    errno = 0;
    std::fflush(stderr);
    zeltools::writeWhole(descriptor, data, size);
    if (errno == EPIPE)
        guard.setSent();
}

} // namespace

void writeToStandardError(const char* data, size_t size)
{
    const int descriptor = fileno(stderr);
    const Kind kind = kindOf(descriptor);
    const bool isHostsFirst = __fpending(stderr) != 0;
    if (kind == Kind::File) {
        if (isHostsFirst)
            std::fflush(stderr);
        zeltools::writeWhole(descriptor, data, size);
        return;
    }
    if (kind == Kind::Socket && !isHostsFirst) {
        const ssize_t sent = send(descriptor, data, size, MSG_NOSIGNAL);
        if (sent == ssize_t(size) || (sent < 0 && errno == EPIPE))
            return;
        data += sent > 0 ? sent : 0;
        size -= sent > 0 ? size_t(sent) : 0;
    }
    writeGuarded(descriptor, data, size);
}
