#include "statemachine/eventgrouphandler.h"

#include <QPointer>

#include <algorithm>
#include <limits>

namespace tools
{

namespace
{

// One for all handlers on purpose; see the class comment.
std::weak_ptr<QMetaObject::Connection>& lastConnection()
{
    static std::weak_ptr<QMetaObject::Connection> connection;
    return connection;
}

// What a QTimer can count: 24 days at the most.
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
    connect(&m_timer, &QTimer::timeout, this, &EventGroupHandler::tryRetrigger);
}

EventGroupHandler::~EventGroupHandler() = default;

void EventGroupHandler::addEvent(const EventSteps& steps)
{
    addEvent(Event{steps, m_defaultAttempts, m_defaultTimeout});
}

void EventGroupHandler::addEvent(const Event& event)
{
    m_events.push_back(event);
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
    m_timer.stop();
    if (const auto connection = lastConnection().lock())
        QObject::disconnect(*connection);
    if (m_events.empty()) {
        m_running = false;
        m_phase = Phase::Idle;
        clear();
        Q_EMIT success();
        return;
    }

    // A copy, since a callable may clear the queue that it is in.
    const Event event = m_events.front();
    const QPointer<EventGroupHandler> self(this);
    m_phase = Phase::Connecting;
    lastConnection() = event.connect(this);
    if (!self || m_phase != Phase::Connecting)
        return;
    m_phase = Phase::Waiting;
    event.trigger();
    // The answer may be in already, and the timer run for the event that came next.
    if (self && m_phase == Phase::Waiting && !m_timer.isActive())
        m_timer.start(interval(event.timeout));
}

void EventGroupHandler::checkResult(const QVariant& result)
{
    if (m_phase != Phase::Waiting)
        return;
    m_timer.stop();
    if (m_events.empty()) { // cleared meanwhile
        nextEvent();
        return;
    }

    const auto check = m_events.front().check;
    const QPointer<EventGroupHandler> self(this);
    m_phase = Phase::Judging;
    const bool isGood = check(result);
    if (!self)
        return;
    if (m_phase == Phase::Judging && !isGood) {
        tryRetrigger();
    } else if (m_phase == Phase::Judging) {
        m_events.pop_front();
        nextEvent();
    } else if (m_phase == Phase::Idle && m_running) { // the check has cleared the queue
        nextEvent();
    }
}

void EventGroupHandler::tryRetrigger()
{
    if (!m_events.empty() && m_events.front().attempts-- == 1)
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
    m_events.clear();
    if (m_phase == Phase::Judging)
        m_phase = Phase::Idle;
}

} // namespace tools
