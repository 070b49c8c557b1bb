#pragma once

#include <zeltools/statemachine/backoff.h>
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
    /// EventGroupHandler::checkResult(). Unless its connection scope is Handler, the handler does
    /// not own the connection: a caller keeps the pointer until the answer arrives if the
    /// connection is to be cut then.
    std::function<std::shared_ptr<QMetaObject::Connection>(EventGroupHandler*)> connect;
    /// Whether an answer is accepted.
    std::function<bool(QVariant)> check;
};

/// Fires a queue of requests one after another, each when the one before it has an accepted answer.
/// After a rejected answer or a timeout, the request is fired again until its attempts run out and
/// the group fails. The group succeeds when the queue is empty. Every started group ends with one
/// of the signals success(), failure() and canceled(); the handler can then be filled and started
/// again.
///
/// A device may answer before the callable that connects it or sends the request has returned. The
/// next event is then fired after that return, so that any number of such events takes no more
/// stack than one. (If the callable runs an event loop, the group continues inside that event
/// loop.) An answer inside `connect` is checked like any other, and the request is not sent.
///
/// Events may be added while the group runs. A handler belongs to one thread. It may be destroyed
/// in its signals and in the callables of its events, which may also clear, fail, cancel or refill
/// the group.
///
/// The exception of a callable reaches the caller of the operation that called it. The group then
/// still runs. Unless the answer has already arrived, it waits for the answer: for the remaining
/// time if a check threw, and without a timeout if another callable did. It can be answered, failed
/// or fired again by nextEvent().
///
/// The last connection is by default remembered once for the process, not for each handler: two
/// handlers that run at the same time cut each other's connections. Let one end before the other
/// starts, or give both the connection scope Handler.
class ZELTOOLS_EXPORT EventGroupHandler : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    // The fields of progress() and lastFailure(), for QML.
    Q_PROPERTY(int step READ step NOTIFY progressChanged)
    Q_PROPERTY(int stepCount READ stepCount NOTIFY progressChanged)
    Q_PROPERTY(int attempt READ attempt NOTIFY progressChanged)
    Q_PROPERTY(tools::EventGroupHandler::FailureReason failureReason READ failureReason NOTIFY
                   runningChanged)
    Q_PROPERTY(int failedStep READ failedStep NOTIFY runningChanged)

public:
    /// A request, its answer, and how often and how long the handler tries.
    struct Event : EventSteps
    {
        Event() = default;
        /// Constructs an event with a timeout in whole seconds.
        Event(const EventSteps& steps, unsigned int eventAttempts,
              const std::chrono::seconds& eventTimeout, const BackOff& eventBackOff = {})
            : EventSteps(steps)
            , attempts(eventAttempts)
            , timeout(eventTimeout)
            , backOff(eventBackOff)
        {
        }
        /// Constructs an event with a timeout in milliseconds.
        template <typename Count>
        Event(const EventSteps& steps, unsigned int eventAttempts,
              const std::chrono::duration<Count, std::milli>& eventTimeout,
              const BackOff& eventBackOff = {})
            : Event(steps, eventAttempts,
                    std::chrono::duration_cast<std::chrono::seconds>(eventTimeout), eventBackOff)
        {
            timeoutRest =
                std::chrono::duration_cast<std::chrono::milliseconds>(eventTimeout - timeout);
        }
        /// Constructs an event from its three callables.
        Event(const decltype(trigger)& eventTrigger, const decltype(connect)& eventConnect,
              const decltype(check)& eventCheck, unsigned int eventAttempts,
              const std::chrono::seconds& eventTimeout)
            : Event({eventTrigger, eventConnect, eventCheck}, eventAttempts, eventTimeout)
        {
        }

        /// How many times the request may be fired; with 0 it is repeated without end.
        unsigned int attempts = 1;
        /// How long an attempt waits for its answer.
        std::chrono::seconds timeout{0};
        /// A time that is added to the timeout.
        std::chrono::milliseconds timeoutRest{0};
        /// The pauses between a rejected answer or a timeout and the next attempt.
        BackOff backOff;
    };

    /// The reason why a group has ended without success.
    enum class FailureReason {
        None,
        Timeout,        ///< No answer to the last attempt of an event arrived in time.
        WrongAnswer,    ///< The answer to the last attempt of an event was rejected.
        Canceled,       ///< cancel()
        FailedByCaller, ///< failEvents(), or tryRetrigger() at the last attempt
        Exception,      ///< A callable has thrown. Only EventRecipeRunner reports this reason.
    };
    Q_ENUM(FailureReason)

    /// The end of a group without success.
    struct Failure
    {
        /// None while a group runs and after a success.
        FailureReason reason = FailureReason::None;
        int step = 0; ///< The event, as in Progress.
    };

    /// The position in the group.
    struct Progress
    {
        int step = 0;      ///< The event that was last fired: 1 for the first event of the group.
        int stepCount = 0; ///< The number of events when it was fired.
        unsigned int attempt = 0; ///< 1 for the first time that the event was fired.
    };

    /// The owner of the last connection, who cuts it when the next event is fired.
    enum class ConnectionScope {
        Process, ///< The process, for all handlers with this scope.
        Handler, ///< The handler, which owns the connection and also cuts it when the group ends.
    };

    /// Constructs a handler with the default attempts and timeout of events.
    EventGroupHandler(unsigned int attempts, const std::chrono::seconds& timeout);
    template <typename Count>
    EventGroupHandler(unsigned int attempts,
                      const std::chrono::duration<Count, std::milli>& timeout)
        : EventGroupHandler(Event(EventSteps(), attempts, timeout))
    {
    }
    /// Constructs a handler with the default attempts, timeout and pauses of events. The callables
    /// of `defaults` are not used.
    explicit EventGroupHandler(const Event& defaults);
    ~EventGroupHandler() override;

    /// Sets who remembers the connections of the events; call it before start().
    void setConnectionScope(ConnectionScope scope) { m_connectionScope = scope; }

    /// Appends an event with the attempts and the timeout of the constructor.
    void addEvent(const EventSteps& steps);
    /// Appends an event with attempts and a timeout of its own.
    void addEvent(const Event& event);

    /// Starts the group; does nothing while it runs. An empty group succeeds immediately. If a
    /// receiver of runningChanged() ends the group, nothing is fired.
    void start();
    /// Whether a group has begun and not ended.
    bool isRunning() const { return m_running; }

    /// Cuts the remembered connection and fires the first event of the queue, or ends the group
    /// with success() if there is none. If a `connect`, a `trigger` or a receiver of success() is
    /// running, it fires after their return.
    void nextEvent();
    /// Checks an answer to the fired event. An answer is ignored if the group has ended, is still
    /// checking the one before it or pauses before the next attempt.
    void checkResult(QVariant result);
    /// Uses an attempt of the first event: fires it again after the pause, or fails the group.
    void tryRetrigger();
    /// Ends the group with failure().
    void failEvents();
    /// Drops all events and ends the group with canceled(). Does nothing if the group does not run.
    void cancel();
    /// Drops all events. A running group then succeeds at the next answer or timeout.
    void clear();

    /// The progress at the last firing since start(), also after the group has ended.
    Progress progress() const { return m_progress; }
    /// Why the last group has ended without success. The reason is None while a group runs and
    /// after its success.
    Failure lastFailure() const { return m_lastFailure; }

    /// The position of Progress::step, for QML.
    int step() const { return m_progress.step; }
    /// The number of Progress::stepCount, for QML.
    int stepCount() const { return m_progress.stepCount; }
    /// The number of Progress::attempt, for QML.
    int attempt() const { return static_cast<int>(m_progress.attempt); }
    /// The reason of lastFailure(), for QML.
    FailureReason failureReason() const { return m_lastFailure.reason; }
    /// The event of lastFailure(), for QML.
    int failedStep() const { return m_lastFailure.step; }

Q_SIGNALS:
    /// Emitted when the answer to the last event was accepted, or no event is left.
    void success();
    /// Emitted when the group has failed; lastFailure() has the reason.
    void failure();
    /// Emitted by cancel().
    void canceled();
    /// Is emitted each time before an event is fired.
    void progressChanged();
    /// Announces the start of a group, and after one of the first three signals its end.
    void runningChanged();

private:
    // Callables may call the handler; the phase shows the state in which they left it.
    enum class Phase { Idle, Due, Waiting, Judging, Pausing };
    struct QueuedEvent;

    void fireDueEvents();
    void fire();
    void retry(FailureReason reason);
    void end(FailureReason reason);
    void cutConnection();

    // The first event is in progress. A running callable keeps its event alive when the queue is
    // cleared.
    std::deque<std::shared_ptr<QueuedEvent>> m_events;
    QTimer m_timer{this};
    bool m_running = false;
    Event m_defaults;
    ConnectionScope m_connectionScope = ConnectionScope::Process;
    std::shared_ptr<QMetaObject::Connection> m_connection; // with the scope Handler
    Progress m_progress;
    Failure m_lastFailure;
    int m_acceptedEvents = 0;
    Phase m_phase = Phase::Idle;
    bool m_isFiring = false;
    quint64 m_firings = 0; // distinguishes a firing from a later one of the same event
};

} // namespace tools
