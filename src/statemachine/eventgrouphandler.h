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

/// The callables of a request and its answer. A missing callable throws std::bad_function_call when
/// it would be called. Each event has callables of its own, which may keep state between calls.
struct EventSteps
{
    /// Sends the request.
    std::function<void()> trigger;
    /// Connects the source of the answer so that the answer reaches
    /// EventGroupHandler::checkResult(). The handler does not own the connection: a caller keeps
    /// the pointer until the answer arrives if the connection is to be cut then.
    std::function<std::shared_ptr<QMetaObject::Connection>(EventGroupHandler*)> connect;
    /// Whether an answer is accepted.
    std::function<bool(QVariant)> check;
};

/// Fires a queue of requests one after another, each when the one before it has an accepted answer.
/// After a rejected answer or a timeout, the request is fired again until its attempts run out and
/// the group fails. The group succeeds when the queue is empty. Every started group ends with one
/// signal; the handler can then be filled and started again.
///
/// A device may answer before the callable that connects it or sends the request has returned. The
/// next event is then fired after that return, so that any number of such events takes no more
/// stack than one. (If the callable runs an event loop, the group continues inside that event
/// loop.) An answer inside `connect` is checked like any other, and the request is not sent.
///
/// Events may be added while the group runs. A handler belongs to one thread. It may be destroyed
/// in its signals and in the callables of its events, which may also clear, fail or refill the
/// group.
///
/// The exception of a callable reaches the caller of the operation that called it. The group then
/// still runs. Unless the answer has already arrived, it waits for the answer: for the remaining
/// time if a check threw, and without a timeout if another callable did. It can be answered, failed
/// or fired again by nextEvent().
///
/// The last connection is remembered once for the process, not for each handler: two handlers
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
        Event(const decltype(trigger)& eventTrigger, const decltype(connect)& eventConnect,
              const decltype(check)& eventCheck, unsigned int eventAttempts,
              const std::chrono::seconds& eventTimeout)
            : Event({eventTrigger, eventConnect, eventCheck}, eventAttempts, eventTimeout)
        {
        }

        /// How many times the request may be fired; with 0 it is repeated without end.
        unsigned int attempts = 1;
        std::chrono::seconds timeout{0};
    };

    /// Constructs a handler with the default attempts and timeout of events.
    EventGroupHandler(unsigned int attempts, const std::chrono::seconds& timeout);
    ~EventGroupHandler() override;

    void addEvent(const EventSteps& steps);
    void addEvent(const Event& event);

    /// Starts the group; does nothing while it runs. An empty group succeeds immediately.
    void start();
    bool isRunning() const { return m_running; }

    /// Cuts the remembered connection and fires the first event of the queue, or ends the group
    /// with success() if there is none. If a `connect`, a `trigger` or a receiver of success() is
    /// running, it fires after their return.
    void nextEvent();
    /// Checks an answer to the fired event. An answer is ignored if the group has ended or is still
    /// checking the one before it.
    void checkResult(QVariant result);
    /// Uses an attempt of the first event: fires it again, or fails the group.
    void tryRetrigger();
    /// Ends the group with failure().
    void failEvents();
    /// Drops all events. A running group then succeeds at the next answer or timeout.
    void clear();

Q_SIGNALS:
    void success();
    void failure();

private:
    // Callables may call the handler; the phase shows the state in which they left it.
    enum class Phase { Idle, Due, Waiting, Judging };

    void fireDueEvents();
    void fire();

    // The first event is in progress. A running callable keeps its event alive when the queue is
    // cleared.
    std::deque<std::shared_ptr<Event>> m_events;
    QTimer m_timer{this};
    bool m_running = false;
    unsigned int m_defaultAttempts;
    std::chrono::seconds m_defaultTimeout;
    Phase m_phase = Phase::Idle;
    bool m_isFiring = false;
    quint64 m_firings = 0; // distinguishes a firing from a later one of the same event
};

} // namespace tools
