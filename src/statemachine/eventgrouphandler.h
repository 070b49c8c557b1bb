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
/// std::bad_function_call when its turn comes. Each event has callables of its own, which may keep
/// state from one call to the next.
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
/// A device may answer before the callable that connects it or sends the request has returned; the
/// event that is due then is fired after that return, so no number of them takes more stack than
/// one. (A callable that runs an event loop meanwhile sees the group go on in there.) An answer
/// inside `connect` is judged like any other, and the request is then not sent.
///
/// Events may be added while the group runs. Belongs to one thread. The handler may be destroyed in
/// its signals and in the callables of its events, which may also clear, fail or refill the group.
///
/// A callable's exception reaches the caller of the operation that called it. The group then still
/// runs: unless the answer was in already it waits for that, with the time that was left when a
/// check threw and without a timeout when another callable did. It can be answered, failed or fired
/// again by nextEvent().
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

    /// The attempts and the timeout of events that are added without their own.
    EventGroupHandler(unsigned int attempts, const std::chrono::seconds& timeout);
    ~EventGroupHandler() override;

    void addEvent(const EventSteps& steps);
    void addEvent(const Event& event);

    /// Does nothing while the group runs. An empty group succeeds at once.
    void start();
    bool isRunning() const { return m_running; }

    /// Cuts the remembered connection and fires the first event of the queue; ends the group with
    /// success() when there is none. Called while a `connect`, a `trigger` or a receiver of
    /// success() runs, it fires when that has returned.
    void nextEvent();
    /// Judges an answer to the event that was fired. An answer that nobody waits for, since the
    /// group has ended or the one before it is being judged, does nothing.
    void checkResult(QVariant result);
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
    // Callables may call the handler; the phase tells what they left behind.
    enum class Phase { Idle, Due, Waiting, Judging };

    void fireDueEvents();
    void fire();

    // The first one is in progress. A callable that is running keeps its event when the queue is
    // cleared.
    std::deque<std::shared_ptr<Event>> m_events;
    QTimer m_timer{this};
    bool m_running = false;
    unsigned int m_defaultAttempts;
    std::chrono::seconds m_defaultTimeout;
    Phase m_phase = Phase::Idle;
    bool m_isFiring = false;
    quint64 m_firings = 0; // tells a firing from a later one of the same event
};

} // namespace tools
