#pragma once

#include <zeltools/declarativestatemachine/descriptionindex_p.h>

#include <QSet>

namespace zeltools::declarativestatemachine
{

/// Which states and transitions of a description a State Chart XML document has, and under which
/// names. The index must outlive the plan.
class ScxmlPlan
{
public:
    struct State
    {
        QString id;
        bool isWritten = false;
        bool isHistory = false;
        int initialChild = -1; ///< the first child that is not a history
        /// The internal event that the state sends to itself when it is entered, for its direct
        /// transitions; empty if these need no event.
        QString enteredEvent = {};
    };
    struct Transition
    {
        bool isWritten = false;
        QString event = {}; ///< empty for a transition that is taken at once
        QString guard = {};
        QString target = {}; ///< the identifier; null without a target
    };

    explicit ScxmlPlan(const DescriptionIndex& index);

    const State& state(int number) const { return m_states[size_t(number)]; }
    const Transition& transition(int number) const { return m_transitions[size_t(number)]; }
    /// The identifier of the initial state of the machine, empty if there is none.
    QString initial() const { return m_initial < 0 ? QString() : state(m_initial).id; }

    /// The text with "_" for each character that an identifier cannot have.
    static QString identifier(const QString& text);

private:
    /// Makes each name that it returns unique by a suffix.
    class Names
    {
    public:
        QString take(const QString& wanted);

    private:
        QHash<QString, int> m_counts;
        QSet<QString> m_taken;
    };

    void addState(int number);
    void findWrittenStates();
    void addTransition(int number);
    void addEnteredEvent(int number);
    QString eventOf(int transition);
    QString signalEventOf(const TransitionDescription& transition);

    const DescriptionIndex& m_index;
    std::vector<State> m_states;
    std::vector<Transition> m_transitions;
    int m_initial = -1;
    int m_guardCount = 0;
    Names m_ids;
    Names m_events;
    QHash<std::pair<QObject*, QString>, QString> m_signalEvents;
};

} // namespace zeltools::declarativestatemachine
