#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <atomic>
#include <chrono>

namespace dmesg
{

/// Decides when a follower of the kernel log that has ended is started again: after a delay that
/// doubles from one second to a minute, and is one second again when the follower has run for a
/// minute. Each end is one Warning under `Log::Global`.
///
/// An object belongs to one thread; isActive() may be called by any.
class Restarter : public QObject
{
    Q_OBJECT

public:
    /// All times are multiples of the first delay.
    Restarter(std::chrono::milliseconds firstDelay, QObject* parent);

    void begin();
    /// From now on nothing is started again.
    void stop();
    bool isActive() const { return m_isActive; }

    /// Tells that the follower is started now.
    void onStart() { m_running.start(); }
    /// Tells that the follower has ended or could not be started. Only an active object acts.
    void onEnd(const QString& reason);

Q_SIGNALS:
    /// Announces that the follower is to be started now.
    void due();

private:
    const std::chrono::milliseconds m_first;
    const std::chrono::milliseconds m_longest;
    std::chrono::milliseconds m_next;
    QElapsedTimer m_running;
    QTimer m_delay;
    std::atomic<bool> m_isActive{false};
};

} // namespace dmesg
