#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QTimer>
#include <QVariant>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>

namespace tools
{

class EventGroupHandler;

/// What a request and its answer consist of. A callable that is missing throws
/// std::bad_function_call when its turn comes.
struct EventSteps
{
    /// Sends the request.
    std::function<void()> trigger;
    /// Connects the source of the answer so that the answer ends in
    /// EventGroupHandler::checkResult(). The handler does not keep the connection: who wants it to
    /// be cut when the answer is in, keeps the pointer until then.
    std::function<std::shared_ptr<QMetaObject::Connection>(EventGroupHandler*)> connect;
    /// Whether an answer is good.
    std::function<bool(QVariant)> check;
};

/// Fires a queue of requests one after another, each when the one before it has its good answer. A
/// wrong answer, or none within the timeout, fires the request again until its attempts run out:
/// then the group has failed. When the queue runs empty the group has succeeded. Every started
/// group ends in one signal, and the handler can then be filled and started again.
///
/// A device that answers inside its trigger nests the calls: a thousand such requests in a row are
/// fine, twenty thousand are more than a stack holds.
///
/// Events may be added while the group runs. Belongs to one thread. The handler may be destroyed in
/// its signals and in the callables of its events.
///
/// The connection made last is remembered once for the process, not for each handler: two handlers
/// that run at the same time cut each other's connections. Let one end before the other starts.
class ZELTOOLS_EXPORT EventGroupHandler : public QObject
{
    Q_OBJECT

public:
    struct Event : EventSteps
    {
        Event() = default;
        Event(const EventSteps& steps, unsigned int eventAttempts,
              const std::chrono::seconds& eventTimeout)
            : EventSteps(steps)
            , attempts(eventAttempts)
            , timeout(eventTimeout)
        {
        }

        /// How many times the request may be fired; with 0 it is repeated without end.
        unsigned int attempts = 1;
        std::chrono::seconds timeout{0};
    };

    /// The attempts and the timeout of events that are added without their own.
    EventGroupHandler(unsigned int attempts, const std::chrono::seconds& timeout);
    ~EventGroupHandler() override;

    void addEvent(const EventSteps& steps);
    void addEvent(const Event& event);

    /// Does nothing while the group runs. An empty group succeeds at once.
    void start();
    bool isRunning() const { return m_running; }

    /// Cuts the remembered connection and fires the first event of the queue; ends the group with
    /// success() when there is none. When a missing callable throws, the group still runs:
    /// failEvents() ends it.
    void nextEvent();
    /// Judges an answer to the event that was fired. An answer that nobody waits for, since the
    /// group has ended or the one before it is being judged, does nothing.
    void checkResult(const QVariant& result);
    /// Spends an attempt of the first event: fires it again, or fails the group.
    void tryRetrigger();
    /// Ends the group with failure().
    void failEvents();
    /// Drops all events. A group that runs succeeds at the answer or the timeout that it waits for.
    void clear();

Q_SIGNALS:
    void success();
    void failure();

private:
    // Callables may call the handler; what they left behind is told by the phase.
    enum class Phase { Idle, Connecting, Waiting, Judging };

    std::deque<Event> m_events; // the first one is in progress
    QTimer m_timer{this};
    bool m_running = false;
    unsigned int m_defaultAttempts;
    std::chrono::seconds m_defaultTimeout;
    Phase m_phase = Phase::Idle;
};

} // namespace tools
