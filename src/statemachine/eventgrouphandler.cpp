#include "statemachine/eventgrouphandler.h"

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <limits>
#include <utility>

namespace tools
{

namespace
{

// All handlers share one connection on purpose; see the class comment.
std::weak_ptr<QMetaObject::Connection>& lastConnection()
{
    static std::weak_ptr<QMetaObject::Connection> connection;
    return connection;
}

// The longest interval of a QTimer is 24 days.
std::chrono::milliseconds interval(std::chrono::seconds timeout)
{
    using std::chrono::seconds;
    return std::clamp(timeout, seconds(0), seconds(std::numeric_limits<int>::max() / 1000));
}

} // namespace

EventGroupHandler::EventGroupHandler(unsigned int attempts, const std::chrono::seconds& timeout)
    : m_defaultAttempts(attempts)
    , m_defaultTimeout(timeout)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_phase == Phase::Due)
            fireDueEvents();
        else
            tryRetrigger();
    });
}

EventGroupHandler::~EventGroupHandler() = default;

void EventGroupHandler::addEvent(const EventSteps& steps)
{
    addEvent(Event{steps, m_defaultAttempts, m_defaultTimeout});
}

void EventGroupHandler::addEvent(const Event& event)
{
    m_events.push_back(std::make_shared<Event>(event));
}

void EventGroupHandler::start()
{
    if (m_running)
        return;
    m_running = true;
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
//     Waiting | timeout with attempts left             | Due
//     Waiting | answer after clear()                   | Due
//     Judging | answer accepted, or attempts left      | Due
//     Judging | the check throws                       | Waiting
//     Due     | no events left: success()              | Idle
//     any     | attempts used up, failEvents()         | Idle
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
    if (const auto connection = lastConnection().lock())
        QObject::disconnect(*connection);
    if (m_events.empty()) {
        m_running = false;
        m_phase = Phase::Idle;
        Q_EMIT success();
        return;
    }

    const std::shared_ptr<Event> event = m_events.front(); // A callable may clear the queue.
    const QPointer<EventGroupHandler> self(this);
    const quint64 firing = ++m_firings;
    const auto isUnanswered = [&] {
        return self && m_firings == firing && m_phase == Phase::Waiting;
    };
    m_phase = Phase::Waiting;
    lastConnection() = event->connect(this);
    if (!isUnanswered())
        return;
    event->trigger();
    if (isUnanswered())
        m_timer.start(interval(event->timeout));
}

void EventGroupHandler::checkResult(QVariant result)
{
    if (m_phase != Phase::Waiting)
        return;
    if (m_events.empty()) { // A callable has cleared the queue.
        nextEvent();
        return;
    }
    const std::shared_ptr<Event> event = m_events.front();
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
        tryRetrigger();
    } else {
        if (isQueued)
            m_events.pop_front();
        nextEvent();
    }
}

void EventGroupHandler::tryRetrigger()
{
    if (!m_events.empty() && m_events.front()->attempts-- == 1)
        failEvents();
    else if (!m_events.empty() || m_running)
        nextEvent();
}

void EventGroupHandler::failEvents()
{
    m_running = false;
    m_phase = Phase::Idle;
    m_timer.stop();
    clear();
    Q_EMIT failure();
}

void EventGroupHandler::clear()
{
    // The queue is empty before the callables are destroyed: objects that they own may call the
    // handler in their destructors.
    const auto dropped = std::exchange(m_events, {});
}

} // namespace tools
