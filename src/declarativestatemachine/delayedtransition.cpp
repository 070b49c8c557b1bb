#include "declarativestatemachine/delayedtransition.h"

#include <QEvent>
#include <QPointer>
#include <QState>
#include <QStateMachine>

#include <algorithm>
#include <limits>

namespace zeltools::declarativestatemachine
{

// A timeout in the machine's queue. An event before it may end the state. The timeout cannot be
// removed from the queue then, but revoke() gives it a type to which no transition reacts.
class DelayedTransition::TimeoutEvent : public QEvent
{
public:
    explicit TimeoutEvent(DelayedTransition* owner)
        : QEvent(QEvent::User)
        , m_owner(owner)
    {
    }
    ~TimeoutEvent() override
    {
        DelayedTransition* const owner = m_owner;
        if (owner != nullptr && owner->m_posted == this)
            owner->m_posted = nullptr;
    }
    void revoke() { t = QEvent::None; }
    const DelayedTransition* owner() const { return m_owner; }

private:
    QPointer<DelayedTransition> m_owner;
};

DelayedTransition::DelayedTransition(QState* source, std::chrono::milliseconds delay)
    : QAbstractTransition(source)
{
    using std::chrono::milliseconds;
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer); // Other types may be early.
    m_timer.setInterval(
        std::clamp(delay, milliseconds(0), milliseconds(std::numeric_limits<int>::max())));
    connect(source, &QState::entered, &m_timer, qOverload<>(&QTimer::start));
    connect(source, &QState::exited, this, &DelayedTransition::cancel);
    connect(&m_timer, &QTimer::timeout, this, &DelayedTransition::postTimeout);
}

DelayedTransition::~DelayedTransition()
{
    cancel();
}

bool DelayedTransition::eventTest(QEvent* e)
{
    return e->type() == QEvent::User;
}

void DelayedTransition::onTransition(QEvent*) {}

bool DelayedTransition::isOfSameState(const QEvent* e) const
{
    const auto* const timeout = dynamic_cast<const TimeoutEvent*>(e);
    return timeout != nullptr && timeout->owner() != nullptr &&
           timeout->owner()->sourceState() == sourceState();
}

bool DelayedTransition::isOwn(const QEvent* e) const
{
    const auto* const timeout = dynamic_cast<const TimeoutEvent*>(e);
    return timeout != nullptr && timeout->owner() == this;
}

void DelayedTransition::postTimeout()
{
    // A machine that is stopped does not exit its states, so the timer may belong to an earlier
    // run.
    QStateMachine* const runner = machine();
    if (runner == nullptr || !runner->isRunning() ||
        !runner->configuration().contains(sourceState()))
        return;
    m_posted = new TimeoutEvent(this);
    runner->postEvent(m_posted);
}

void DelayedTransition::cancel()
{
    m_timer.stop();
    if (m_posted != nullptr)
        m_posted->revoke();
    m_posted = nullptr;
}

} // namespace zeltools::declarativestatemachine
