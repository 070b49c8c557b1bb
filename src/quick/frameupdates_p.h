#pragma once

#include <QElapsedTimer>
#include <QMutex>
#include <QObject>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

namespace zeltools::quick
{

/// Calls a function of a model in its own thread after changes, but at most once per frame of the
/// screen, however many changes are reported.
class FrameUpdates : public QObject
{
public:
    static constexpr int frame_ms = 16;

    explicit FrameUpdates(std::function<void()> update);
    ~FrameUpdates() override;

    /// Any thread may call it while the object lives. All calls but the first before an update
    /// cost a few instructions.
    void request();
    /// A function that calls request(). Any thread may call it at any time, also after the end of
    /// the object.
    std::function<void()> trigger() const;
    /// Sets the time between two updates, which is never shorter than a frame, also for an update
    /// that is already due.
    void setInterval(qint64 interval_ms);

private:
    struct Shared
    {
        QMutex mutex;
        FrameUpdates* receiver = nullptr; // null after its end
        std::atomic<bool> isRequested = false;
    };

    void schedule();
    void update();

    const std::function<void()> m_update;
    const std::shared_ptr<Shared> m_shared = std::make_shared<Shared>();
    qint64 m_interval_ms = frame_ms;
    QElapsedTimer m_sinceUpdate;
    QTimer m_timer{this};
};

} // namespace zeltools::quick
