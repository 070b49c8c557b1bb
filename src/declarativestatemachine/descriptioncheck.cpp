#include "declarativestatemachine/descriptioncheck.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/entrygraph_p.h"
#include "declarativestatemachine/transitioncheck_p.h"
#include "declarativestatemachine/triggerkey_p.h"

#include <set>

namespace zeltools::declarativestatemachine
{

namespace
{

std::vector<bool> findUsable(const DescriptionIndex& index)
{
    std::vector<bool> isUsable;
    for (const DescriptionIndex::Transition& transition : index.transitions())
        isUsable.push_back(transitioncheck::faultOf(transition).isEmpty());
    return isUsable;
}

class DescriptionCheck
{
public:
    explicit DescriptionCheck(const StateMachineDescription& description)
        : m_description(description)
        , m_index(description)
        , m_isUsable(findUsable(m_index))
        , m_graph(m_index, m_isUsable)
    {
    }

    QStringList findAll()
    {
        nameCircles(m_graph.endlessCircles(), QStringLiteral("never ends"));
        nameCircles(m_graph.guardedCircles(), QStringLiteral("may never end"));
        for (int i = 0; i < int(m_index.states().size()); ++i) {
            m_state = i;
            checkState();
        }
        checkExpectedSignals();
        return m_lines;
    }

private:
    void add(const QString& problem)
    {
        m_lines.append(QStringLiteral("State \"%1\" %2").arg(m_index.nameOf(m_state), problem));
    }

    void add(const QStringList& problems)
    {
        for (const QString& problem : problems)
            add(problem);
    }

    void checkState()
    {
        const StateDescription& state = *m_index.state(m_state).description;
        if (m_index.indexOf(state.name) != m_state)
            add(QStringLiteral("has a name that a later state has too"));
        if (state.kind < StateDescription::Ordinary || state.kind > StateDescription::Final)
            add(QStringLiteral("is of unknown kind %1").arg(state.kind));
        if (m_index.state(m_state).isFinal)
            checkFinal(state);
        else if (state.isHistory())
            checkHistory(state);
        else
            checkOrdinary(state);
        if (!m_graph.canBeReached(m_state))
            add(QStringLiteral("cannot be reached"));
    }

    void checkFinal(const StateDescription& state)
    {
        if (!state.transitions.empty())
            add(QStringLiteral("is final, but has transitions"));
        if (!state.states.empty())
            add(QStringLiteral("is final, but has child states"));
    }

    void checkHistory(const StateDescription& state)
    {
        if (!state.states.empty())
            add(QStringLiteral("is a history, but has child states"));
        if (state.action || state.exitAction || state.timeLimit.count() != 0)
            add(QStringLiteral("is a history, but has an action or a time limit"));
        add(transitioncheck::problemsOfHistory(m_index, m_state));
    }

    void checkOrdinary(const StateDescription& state)
    {
        add(transitioncheck::problemsOfTransitions(m_index, m_state));
        if (!state.states.empty() && m_index.initialChildOf(m_state) < 0)
            add(QStringLiteral("has no child state that can be entered"));
        if (!m_graph.canBeLeft(m_state) && !isLeftWithParent())
            add(QStringLiteral("cannot be left"));
        add(transitioncheck::problemsOfTimes(state));
        if (m_circles.contains(m_state))
            add(m_circles.value(m_state));
    }

    // The children of a parallel state, and a child without siblings.
    bool isLeftWithParent() const
    {
        const int parent = m_index.state(m_state).parent;
        return parent >= 0 &&
               (m_index.state(parent).description->kind == StateDescription::Parallel ||
                (m_index.initialChildOf(parent) == m_state &&
                 m_index.state(parent).end == m_index.state(m_state).end));
    }

    // The first state of a circle names all of them.
    void nameCircles(const std::vector<EntryGraph::States>& circles, const QString& howItEnds)
    {
        constexpr int s_mostNames = 10;
        for (const EntryGraph::States& circle : circles) {
            QStringList names;
            for (const int state : circle) {
                if (names.size() == s_mostNames) {
                    names << QStringLiteral("...");
                    break;
                }
                names << QLatin1Char('"') + m_index.nameOf(state) + QLatin1Char('"');
            }
            m_circles.insert(circle.front(),
                             QStringLiteral("is in a circle of direct transitions that %1: %2")
                                 .arg(howItEnds, names.join(QStringLiteral(", "))));
        }
    }

    void checkExpectedSignals()
    {
        std::set<TriggerKey> taken;
        for (const DescriptionIndex::Transition& transition : m_index.transitions()) {
            const DescriptionIndex::State& source = m_index.state(transition.source);
            if (!source.isFinal && !source.description->isHistory())
                taken.insert(triggerKey(*transition.description));
        }
        for (const ExpectedSignal& expected : m_description.expectedSignals) {
            const QString name =
                signalutils::classAndSignalName(expected.obj, expected.signal, true);
            if (!signalutils::classContainsSignal(expected.obj, expected.signal))
                m_lines << QStringLiteral("The expected signal %1 does not exist").arg(name);
            else if (taken.count(signalKey(expected.obj, expected.signal)) == 0)
                m_lines << QStringLiteral("No state takes %1").arg(name);
        }
    }

    const StateMachineDescription& m_description;
    const DescriptionIndex m_index;
    const std::vector<bool> m_isUsable;
    const EntryGraph m_graph;
    QHash<int, QString> m_circles; // by their first states
    QStringList m_lines;
    int m_state = 0; // that is checked
};

} // namespace

QStringList findProblems(const StateMachineDescription& description)
{
    if (description.states.empty())
        return {QStringLiteral("There are no states")};
    return DescriptionCheck(description).findAll();
}

} // namespace zeltools::declarativestatemachine
