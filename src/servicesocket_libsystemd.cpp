#include "servicesocket_p.h"

#include "environmentlock_p.h"
#include "loadedfunction.h"
#include "signalsblocked.h"

#include <QMutex>

#include <algorithm>
#include <cerrno>
#include <future>
#include <system_error>
#include <thread>

#include <systemd/sd-daemon.h>

namespace
{

// sd_notify() waits without a limit while the socket is full, and so does the loader for slow
// storage or for another thread that loads a library. Both therefore run in a thread of its own. At
// most one such thread exists: the next message waits for the end of the last one.
struct LastMessage
{
    QMutex mutex;
    std::shared_future<int> result;
};

// The object is never destroyed, since a message may be under way when the process ends.
LastMessage& lastMessage()
{
    static auto* const last = new LastMessage;
    return *last;
}

int sendNow(const QByteArray& socketName, const QByteArray& message,
            std::chrono::milliseconds patience)
{
    static zeltools::KeptFunction<decltype(sd_notify)> kept("libsystemd.so.0", "sd_notify");
    auto* const notify = kept.get();
    if (notify == nullptr)
        return servicesocket::sendDatagram(socketName, message, patience);
    const QMutexLocker environment(&zeltools::environmentLock());
    return std::max(0, -notify(0, message.constData()));
}

} // namespace

int servicesocket::send(const QByteArray& socketName, const QByteArray& message,
                        std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    if (!lastMessage().mutex.tryLock(static_cast<int>(patience.count())))
        return EAGAIN;
    const std::lock_guard<QMutex> locker(lastMessage().mutex, std::adopt_lock);
    std::shared_future<int>& result = lastMessage().result;
    if (result.valid() && result.wait_until(end) != std::future_status::ready)
        return EAGAIN;
    std::packaged_task<int()> task(
        [socketName, message, patience] { return sendNow(socketName, message, patience); });
    result = task.get_future().share();
    const zeltools::SignalsBlocked blocked;
    try {
        std::thread(std::move(task)).detach();
    } catch (const std::system_error& error) {
        result = {};
        return error.code().value();
    }
    if (result.wait_until(end) != std::future_status::ready)
        return EAGAIN;
    return result.get();
}
