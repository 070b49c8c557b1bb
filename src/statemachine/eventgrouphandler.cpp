#include "statemachine/eventgrouphandler.h"

#include "statemachine/timerinterval_p.h"

#include <QPointer>
#include <QScopeGuard>

#include <utility>

namespace tools
{

namespace
{

// All handlers with the scope Process share one connection on purpose; see the class comment.
std::weak_ptr<QMetaObject::Connection>& lastConnection()
{
    static std::weak_ptr<QMetaObject::Connection> connection;
    return connection;
}

std::chrono::milliseconds interval(const EventGroupHandler::Event& event)
{
    using std::chrono::seconds;
    const seconds longest(std::numeric_limits<int>::max() / 1000);
    return timerInterval(std::clamp(event.timeout, -longest, longest) +
                         timerInterval(event.timeoutRest));
}

} // namespace

struct EventGroupHandler::QueuedEvent : Event
{
    unsigned int firings = 0;
};

EventGroupHandler::EventGroupHandler(unsigned int attempts, const std::chrono::seconds& timeout)
    : EventGroupHandler(Event(EventSteps(), attempts, timeout))
{
}

EventGroupHandler::EventGroupHandler(const Event& defaults)
    : m_defaults(defaults)
{
    static_cast<EventSteps&>(m_defaults) = {};
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_phase == Phase::Due || m_phase == Phase::Pausing) {
            m_phase = Phase::Due;
            fireDueEvents();
        } else {
            retry(FailureReason::Timeout);
        }
    });
}

EventGroupHandler::~EventGroupHandler()
{
    if (m_connection)
        disconnect(*m_connection);
}

void EventGroupHandler::addEvent(const EventSteps& steps)
{
    Event event = m_defaults;
    static_cast<EventSteps&>(event) = steps;
    addEvent(event);
}

void EventGroupHandler::addEvent(const Event& event)
{
    m_events.push_back(std::make_shared<QueuedEvent>(QueuedEvent{event}));
}

void EventGroupHandler::start()
{
    if (m_running)
        return;
    m_running = true;
    m_progress = {};
    m_lastFailure = {};
    m_phase = Phase::Idle;
    const QPointer<EventGroupHandler> self(this);
    Q_EMIT runningChanged();
    // A receiver may have ended the group, and even started the next one.
    if (self && m_running && m_phase == Phase::Idle)
        nextEvent();
}

void EventGroupHandler::nextEvent()
{
    m_phase = Phase::Due;
    if (!m_isFiring) {
        fireDueEvents();
        return;
    }
    // The loop of fireDueEvents() fires the event when the running callable returns. The timer does
    // so if the callable throws or runs an event loop; a callable that only processes events until
    // its answer arrives has the time to return.
    constexpr int returnTime_ms = 1;
    m_timer.start(returnTime_ms);
}

// Fires events for as long as they are answered before their callables return. The phases:
//
//     Idle --start()--> Due --fire()--> Waiting --checkResult()--> Judging
//
//     from    | event                                  | to
//     Waiting | timeout with attempts left             | Due, or Pausing before it
//     Waiting | answer after clear()                   | Due
//     Judging | answer accepted                        | Due
//     Judging | answer rejected with attempts left     | Due, or Pausing before it
//     Pausing | end of the pause                       | Due
//     Judging | the check throws                       | Waiting
//     Due     | no events left: success()              | Idle
//     any     | attempts used up, failEvents, cancel   | Idle
//
// A callable can call any method of the handler and so change the phase. After each call, the phase
// and m_firings therefore show whether the call was the last step of this firing. A nested call
// only sets Due and returns to the loop below, so that answered events take no stack.
void EventGroupHandler::fireDueEvents()
{
    const QPointer<EventGroupHandler> self(this);
    const bool wasFiring = std::exchange(m_isFiring, true);
    const auto leave = qScopeGuard([&] {
        if (self)
            m_isFiring = wasFiring;
    });
    while (self && m_phase == Phase::Due)
        fire();
}

void EventGroupHandler::fire()
{
    m_timer.stop();
    cutConnection();
    if (m_events.empty()) {
        end(FailureReason::None);
        return;
    }

    const std::shared_ptr<QueuedEvent> event = m_events.front(); // A callable may clear the queue.
    const QPointer<EventGroupHandler> self(this);
    const quint64 firing = ++m_firings;
    const auto isUnanswered = [&] {
        return self && m_firings == firing && m_phase == Phase::Waiting;
    };
    m_phase = Phase::Waiting;
    m_progress = {m_acceptedEvents + 1, m_acceptedEvents + static_cast<int>(m_events.size()),
                  ++event->firings};
    Q_EMIT progressChanged();
    if (!isUnanswered())
        return;
    const bool isShared = m_connectionScope == ConnectionScope::Process;
    const auto connection = event->connect(this);
    if (isShared)
        lastConnection() = connection;
    else if (isUnanswered())
        m_connection = connection;
    else if (connection)
        disconnect(*connection);
    if (!isUnanswered())
        return;
    event->trigger();
    if (isUnanswered())
        m_timer.start(interval(*event));
}

void EventGroupHandler::cutConnection()
{
    auto connection = std::exchange(m_connection, nullptr);
    if (m_connectionScope == ConnectionScope::Process)
        connection = lastConnection().lock();
    if (connection)
        disconnect(*connection);
}

void EventGroupHandler::checkResult(QVariant result)
{
    if (m_phase != Phase::Waiting)
        return;
    if (m_events.empty()) { // A callable has cleared the queue.
        nextEvent();
        return;
    }
    const std::shared_ptr<QueuedEvent> event = m_events.front();
    const QPointer<EventGroupHandler> self(this);
    const int timeLeft_ms = m_timer.remainingTime(); // -1 if the trigger has not returned yet
    m_timer.stop();
    m_phase = Phase::Judging;
    auto waitOn = qScopeGuard([&] { // The check has thrown.
        if (!self || m_phase != Phase::Judging)
            return;
        m_phase = Phase::Waiting;
        if (timeLeft_ms >= 0)
            m_timer.start(timeLeft_ms);
    });
    const bool isGood = event->check(std::move(result));
    waitOn.dismiss();
    if (!self || m_phase != Phase::Judging)
        return;
    const bool isQueued = !m_events.empty() && m_events.front() == event;
    if (isQueued && !isGood) {
        retry(FailureReason::WrongAnswer);
    } else {
        if (isQueued) {
            m_events.pop_front();
            ++m_acceptedEvents;
        }
        nextEvent();
    }
}

void EventGroupHandler::tryRetrigger()
{
    retry(FailureReason::FailedByCaller);
}

void EventGroupHandler::retry(FailureReason reason)
{
    if (m_events.empty()) {
        if (m_running)
            nextEvent();
        return;
    }
    QueuedEvent& event = *m_events.front();
    if (event.attempts-- == 1) {
        end(reason);
        return;
    }
    const std::chrono::milliseconds pause = event.backOff.pauseAfter(event.firings);
    if (pause.count() == 0) {
        nextEvent();
        return;
    }
    m_phase = Phase::Pausing;
    m_timer.start(timerInterval(pause));
}

void EventGroupHandler::failEvents()
{
    end(FailureReason::FailedByCaller);
}

void EventGroupHandler::cancel()
{
    if (m_running || m_phase != Phase::Idle)
        end(FailureReason::Canceled);
}

void EventGroupHandler::end(FailureReason reason)
{
    m_running = false;
    m_phase = Phase::Idle;
    m_timer.stop();
    m_acceptedEvents = 0;
    m_lastFailure = {reason, reason == FailureReason::None ? 0 : m_progress.step};
    if (m_connectionScope == ConnectionScope::Handler)
        cutConnection();
    clear();
    const QPointer<EventGroupHandler> self(this);
    if (reason == FailureReason::None)
        Q_EMIT success();
    else if (reason == FailureReason::Canceled)
        Q_EMIT canceled();
    else
        Q_EMIT failure();
    if (self)
        Q_EMIT runningChanged();
}

void EventGroupHandler::clear()
{
    // The queue is empty before the callables are destroyed: objects that they own may call the
    // handler in their destructors.
    const auto dropped = std::exchange(m_events, {});
}

} // namespace tools
