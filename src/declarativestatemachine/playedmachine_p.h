#pragma once

#include "declarativestatemachine/innermachine_p.h"

namespace zeltools::declarativestatemachine
{

/// A machine of a description whose events come from a recording: its transitions wait neither for
/// objects nor for timers.
class PlayedMachine : public InnerMachine
{
public:
    /// An empty guard calls those of the description.
    using Guard = std::function<bool(int transition)>;

    PlayedMachine(const StateMachineDescription& description, Guard guard);
    ~PlayedMachine() override;

    /// Handles one event in which this transition fires or asks its guard. So do all others that
    /// wait for the same: the same signal, the entry of the same state, or a timeout of a state in
    /// which no timeout has a guard.
    void happen(int transition, const QVariantList& arguments);
    /// These return when the machine has handled all its events.
    void startNow();
    void stopNow();
    /// Starts with exactly these states active. Returns false if the machine cannot be in them
    /// together.
    bool startIn(const std::vector<int>& active);

    QAbstractTransition* makeTransition(const TransitionDescription& description, int number,
                                        QState* source) override;
    void statesBuilt(const std::vector<QAbstractState*>& states) override { m_states = states; }

protected:
    bool askGuards(int transition, QEvent* event) override;

private:
    class Event;
    class Played;
    class Jump;

    int causeOf(int transition);
    void findCauses();
    void handleEvents();

    const Guard m_guard;
    std::vector<QAbstractState*> m_states;
    std::vector<int> m_causes; // of each transition: the first one that waits for the same
};

} // namespace zeltools::declarativestatemachine
