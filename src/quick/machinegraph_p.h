#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>
#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QCoreApplication>

#include <chrono>
#include <vector>

namespace zeltools::quick
{

/// The names and the structure of a description, for the screen. It has none of the actions,
/// guards and objects, which the host may destroy before the screen is closed. The states and
/// transitions have the numbers of DeclarativeStateMachine::currentStateNumbers() and
/// transitionFired().
struct MachineGraph
{
    Q_DECLARE_TR_FUNCTIONS(zeltools::quick::MachineGraph)

public:
    static constexpr int maximumStates = 2000;
    static constexpr int maximumTransitions = 6000;

    using Description = declarativestatemachine::StateMachineDescription;
    using Kind = declarativestatemachine::StateDescription::Kind;
    using Type = declarativestatemachine::TransitionDescription::Type;

    struct State
    {
        QString name;                                        ///< as DisplayText::name() makes it
        declarativestatemachine::MachineRecording::State id; ///< in recordings
        Kind kind;
        int parent;       ///< -1 for a state of the machine itself
        int end;          ///< its descendants have the numbers between its own and this one
        int initialChild; ///< -1 if there is none

        bool isHistory() const { return kind == Kind::ShallowHistory || kind == Kind::DeepHistory; }
    };
    struct Transition
    {
        int source;
        int target; ///< -1 for one that leads nowhere
        Type type;
        QString description; ///< as DisplayText::name() makes it, as the other texts
        QString signal;      ///< its name without arguments
        std::chrono::milliseconds timeout;
        bool isGuarded;
        QString missingTarget; ///< the name of a target that is not a state

        /// The description or, without one, the trigger in the language of the screen; empty for a
        /// direct transition without a description.
        QString text() const;
    };

    explicit MachineGraph(const Description& description);

    bool isTooLarge() const { return stateCount > int(states.size()); }
    bool contains(int outer, int inner) const
    {
        return outer <= inner && inner < states[size_t(outer)].end;
    }

    std::vector<State> states;           ///< empty if there are too many
    std::vector<Transition> transitions; ///< empty as well
    int initialState = -1;
    int stateCount = 0;

private:
    void addStates(const Description& description);
    void addRelations();
    void addTransitions(const declarativestatemachine::StateDescription& state, int number,
                        const QHash<QString, int>& numbers);
};

/// The characters of a name that are kept.
constexpr int maximumName = 200;

} // namespace zeltools::quick
