#include "declarativestatemachine/playedmachine_p.h"

#include "declarativestatemachine/describedtransition_p.h"
#include "logging/log.h"

#include <QAbstractTransition>
#include <QCoreApplication>
#include <QState>

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace zeltools::declarativestatemachine
{

// An event with the arguments of a signal, also if it stands for a timeout or the entry of a state.
class PlayedMachine::Event : public QStateMachine::SignalEvent
{
public:
    Event(int cause, const QVariantList& arguments)
        : SignalEvent(nullptr, -1, arguments)
        , m_cause(cause)
    {
    }
    int cause() const { return m_cause; }

private:
    const int m_cause;
};

class PlayedMachine::Played : public QAbstractTransition
{
public:
    Played(int cause, QState* source)
        : QAbstractTransition(source)
        , m_cause(cause)
    {
    }

protected:
    bool eventTest(QEvent* event) override
    {
        const auto* const played = dynamic_cast<Event*>(event);
        return played != nullptr && played->cause() == m_cause;
    }
    void onTransition(QEvent*) override {}

private:
    const int m_cause;
};

// Leads from a state that the description does not have into several at once.
class PlayedMachine::Jump : public QAbstractTransition
{
public:
    using QAbstractTransition::QAbstractTransition;

protected:
    bool eventTest(QEvent*) override { return true; }
    void onTransition(QEvent*) override {}
};

PlayedMachine::PlayedMachine(const StateMachineDescription& description, Guard guard)
    : InnerMachine(Log::StateMachine)
    , m_guard(std::move(guard))
{
    build(description);
}

PlayedMachine::~PlayedMachine() = default;

void PlayedMachine::happen(int transition, const QVariantList& arguments)
{
    postEvent(new Event(causeOf(transition), arguments));
    handleEvents();
}

void PlayedMachine::startNow()
{
    start();
    handleEvents();
}

void PlayedMachine::stopNow()
{
    stop();
    handleEvents();
}

bool PlayedMachine::startIn(const std::vector<int>& active)
{
    QList<QAbstractState*> targets;
    std::vector<bool> hasActiveChild(m_states.size());
    for (int number : active) {
        if (index().state(number).parent >= 0)
            hasActiveChild[size_t(index().state(number).parent)] = true;
    }
    for (int number : active) {
        if (!hasActiveChild[size_t(number)])
            targets.append(m_states[size_t(number)]);
    }
    if (targets.isEmpty() || targets.contains(nullptr))
        return false;
    QAbstractState* const initial = initialState();
    auto* const begin = new QState(this);
    (new Jump(begin))->setTargetStates(targets);
    setInitialState(begin);
    startNow();
    setInitialState(initial);
    std::vector<int> sorted = active;
    std::sort(sorted.begin(), sorted.end());
    return activeStates() == sorted;
}

QAbstractTransition* PlayedMachine::makeTransition(const TransitionDescription& description,
                                                   int number, QState* source)
{
    if (!description.isOfKnownType())
        return nullptr;
    return new DescribedTransition<Played>(*this, number, causeOf(number), source);
}

bool PlayedMachine::askGuards(int transition, QEvent* event)
{
    return m_guard ? m_guard(transition) : InnerMachine::askGuards(transition, event);
}

int PlayedMachine::causeOf(int transition)
{
    if (m_causes.empty())
        findCauses();
    return m_causes[size_t(transition)];
}

void PlayedMachine::findCauses()
{
    std::map<std::tuple<int, const void*, QByteArray>, int> firstOnes;
    for (const DescriptionIndex::Transition& transition : index().transitions()) {
        const TransitionDescription& description = *transition.description;
        const DescriptionIndex::State& source = index().state(transition.source);
        const void* origin = source.description;
        QByteArray signature;
        if (description.type == TransitionDescription::Signal) {
            origin = description.obj;
            signature = QMetaObject::normalizedSignature(description.signal);
        } else if (description.type == TransitionDescription::Timeout && source.hasGuardedTimeout) {
            origin = &description;
        }
        const auto [first, isNew] = firstOnes.insert(
            {{description.type, origin, signature}, static_cast<int>(m_causes.size())});
        m_causes.push_back(first->second);
    }
}

// The machine posts its events to itself, so that no event loop has to run.
void PlayedMachine::handleEvents()
{
    QCoreApplication::sendPostedEvents(this);
}

} // namespace zeltools::declarativestatemachine
