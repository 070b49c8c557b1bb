#include "quick/frameupdates_p.h"

#include <algorithm>
#include <utility>

namespace zeltools::quick
{

FrameUpdates::FrameUpdates(std::function<void()> update)
    : m_update(std::move(update))
{
    m_shared->receiver = this;
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &FrameUpdates::update);
}

FrameUpdates::~FrameUpdates()
{
    const QMutexLocker locker(&m_shared->mutex);
    m_shared->receiver = nullptr;
}

void FrameUpdates::request()
{
    std::atomic<bool>& isRequested = m_shared->isRequested;
    if (isRequested.load(std::memory_order_relaxed) || isRequested.exchange(true))
        return;
    QMetaObject::invokeMethod(
        this, [this] { schedule(); }, Qt::QueuedConnection);
}

std::function<void()> FrameUpdates::trigger() const
{
    return [shared = m_shared] {
        if (shared->isRequested.load(std::memory_order_relaxed))
            return;
        const QMutexLocker locker(&shared->mutex);
        if (shared->receiver != nullptr)
            shared->receiver->request();
    };
}

void FrameUpdates::setInterval(qint64 interval_ms)
{
    m_interval_ms = std::max<qint64>(interval_ms, frame_ms);
    if (m_timer.isActive())
        schedule();
}

void FrameUpdates::schedule()
{
    const qint64 passed_ms = m_sinceUpdate.isValid() ? m_sinceUpdate.elapsed() : m_interval_ms;
    m_timer.start(int(std::max<qint64>(m_interval_ms - passed_ms, 0)));
}

// A change during the update asks for another one.
void FrameUpdates::update()
{
    m_shared->isRequested = false;
    m_sinceUpdate.start();
    m_update();
}

} // namespace zeltools::quick
