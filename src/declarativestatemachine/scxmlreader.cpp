#include "declarativestatemachine/scxmlreader.h"

#include "declarativestatemachine/historyreturn_p.h"
#include "declarativestatemachine/scxmlevents_p.h"
#include "declarativestatemachine/scxmlstructure_p.h"
#include "declarativestatemachine/signalutils.h"

namespace zeltools::declarativestatemachine
{

namespace
{

/// Makes a description from a document whose states have been arranged.
class ScxmlResolver
{
public:
    ScxmlResolver(const ScxmlDocument& document, const ScxmlStructure& structure,
                  const ScxmlBindings& bindings, QString& error)
        : m_states(document.states)
        , m_bindings(bindings)
        , m_error(error)
        , m_structure(structure)
        , m_events(document, error)
    {
    }

    int parentOf(int number) const { return state(number).parent; }
    bool isParallel(int number) const { return state(number).kind == StateDescription::Parallel; }
    bool contains(int outer, int inner) const
    {
        while (inner > outer) // A state has a higher number than those around it.
            inner = parentOf(inner);
        return inner == outer;
    }

    std::optional<StateMachineDescription> resolve()
    {
        std::vector<StateDescription> described(m_states.size());
        bool isGood = m_events.collect();
        for (size_t i = 0; i < m_states.size() && isGood; ++i)
            isGood = describe(int(i), described[i]);
        if (!isGood || !m_events.areAllReceived())
            return std::nullopt;
        const std::vector<int>& top = m_structure.children[0];
        if (top.size() > 1) // The last state is final by its place.
            described[size_t(top.back())].kind = StateDescription::Ordinary;
        // The children of a state have higher numbers, so they are complete.
        for (size_t i = m_states.size(); i-- > 0;) {
            for (const int child : m_structure.children[i])
                described[i].states.push_back(std::move(described[size_t(child)]));
        }
        return StateMachineDescription{std::move(described[0].states), m_states[0].name};
    }

private:
    using Transition = ScxmlDocument::Transition;
    using State = ScxmlDocument::State;

    const State& state(int number) const { return m_states[size_t(number)]; }

    bool fail(const Transition& transition, const QString& reason)
    {
        m_error = QStringLiteral("line %1: ").arg(transition.line) + reason;
        return false;
    }

    bool describe(int number, StateDescription& described)
    {
        described.name = state(number).name;
        described.kind = state(number).kind;
        described.timeLimit = state(number).timeLimit;
        int timeouts = 0;
        bool hasGuardedTimeout = false;
        for (const Transition& transition : state(number).transitions) {
            TransitionDescription made;
            if (!make(number, transition, made))
                return false;
            if (made.type == TransitionDescription::Timeout) {
                ++timeouts;
                hasGuardedTimeout = hasGuardedTimeout || made.hasGuard();
            }
            if (!transition.isImplied)
                described.transitions.push_back(std::move(made));
        }
        return timeouts < 2 || hasGuardedTimeout || refuseTimeouts(number);
    }

    // Of such timeouts in a description, the first to end triggers the first transition.
    bool refuseTimeouts(int number)
    {
        m_error = QStringLiteral("line %1: the state has several <send>, but none of their "
                                 "transitions has a condition")
                      .arg(state(number).line);
        return false;
    }

    bool make(int source, const Transition& transition, TransitionDescription& made)
    {
        made.description = transition.label;
        return setTarget(transition, made) && isLookedUpInTime(source, transition) &&
               (state(source).isHistory() ? isDefault(source, transition)
                                          : setTrigger(source, transition, made)) &&
               setGuard(transition, made);
    }

    bool setTarget(const Transition& transition, TransitionDescription& made)
    {
        made.isTargetless = transition.target.isNull();
        if (made.isTargetless)
            return true;
        const int target = m_structure.numbers.value(transition.target, -1);
        if (target < 0)
            return fail(transition,
                        QStringLiteral("\"%1\" is not the id of one state").arg(transition.target));
        made.targetState = state(target).name;
        return m_structure.lastOfName.value(made.targetState) == target ||
               fail(transition, QStringLiteral("\"%1\" is also the name of a later state")
                                    .arg(made.targetState));
    }

    bool isLookedUpInTime(int source, const Transition& transition)
    {
        const int target = m_structure.numbers.value(transition.target, -1);
        return target < 0 || state(source).isHistory() || !state(target).isHistory() ||
               !leavesParentOfHistory(*this, source, target) ||
               fail(transition, QStringLiteral("the transition leaves the parent of the history "
                                               "\"%1\" itself")
                                    .arg(transition.target));
    }

    bool isDefault(int history, const Transition& transition)
    {
        const bool isOne = state(history).transitions.size() == 1 && transition.event.isNull() &&
                           transition.condition.isNull() && !transition.target.isNull();
        return isOne ||
               fail(transition, QStringLiteral("a history has one transition, with only a target"));
    }

    bool setTrigger(int source, const Transition& transition, TransitionDescription& made)
    {
        if (transition.event.isNull())
            return isDirect(source, transition);
        const ScxmlEvents::Sender* sender = nullptr;
        if (!m_events.receive(source, transition, sender))
            return false;
        if (sender == nullptr)
            return setSignal(transition, made);
        const bool isTimeout = sender->delay.has_value();
        made.type = isTimeout ? TransitionDescription::Timeout : TransitionDescription::Direct;
        made.timeout = sender->delay.value_or(std::chrono::milliseconds(0));
        return true;
    }

    // A description tries a direct transition once, when the state is entered, and those of the
    // states around it first; a document tries a transition without an event after each event.
    bool isDirect(int source, const Transition& transition)
    {
        bool isOnce = !transition.target.isNull() && transition.condition.isNull() &&
                      m_structure.children[size_t(source)].empty();
        for (int i = source; i > 0; i = state(i).parent)
            isOnce = isOnce && !m_events.raises(i) && state(i).kind != StateDescription::Parallel;
        return isOnce ||
               fail(transition, QStringLiteral("a transition without an event would be tried "
                                               "more than once; <raise> one in <onentry>"));
    }

    bool setSignal(const Transition& transition, TransitionDescription& made)
    {
        const ExpectedSignal bound =
            m_bindings.signal ? m_bindings.signal(transition.event) : ExpectedSignal();
        made.type = TransitionDescription::Signal;
        made.obj = bound.obj;
        made.signal = bound.signal;
        return signalutils::classContainsSignal(bound.obj, bound.signal) ||
               fail(transition,
                    QStringLiteral("no signal is bound to the event \"%1\"").arg(transition.event));
    }

    bool setGuard(const Transition& transition, TransitionDescription& made)
    {
        if (transition.condition.isNull())
            return true;
        if (m_bindings.guard)
            made.guard = m_bindings.guard(transition.condition);
        return made.guard ||
               fail(transition, QStringLiteral("no guard is bound to the condition \"%1\"")
                                    .arg(transition.condition));
    }

    const std::vector<State>& m_states;
    const ScxmlBindings& m_bindings;
    QString& m_error;
    const ScxmlStructure& m_structure;
    ScxmlEvents m_events;
};

} // namespace

std::optional<StateMachineDescription> fromScxml(const QByteArray& document,
                                                 const ScxmlBindings& bindings, QString& error)
{
    error.clear();
    const std::optional<ScxmlDocument> read = ScxmlDocument::read(document, error);
    if (!read)
        return std::nullopt;
    const std::optional<ScxmlStructure> structure = ScxmlStructure::of(*read, error);
    if (!structure)
        return std::nullopt;
    return ScxmlResolver(*read, *structure, bindings, error).resolve();
}

} // namespace zeltools::declarativestatemachine
