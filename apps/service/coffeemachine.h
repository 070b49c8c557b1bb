#pragma once

#include "../demo/board.h"

#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <chrono>

/// The state machine of an imaginary coffee machine, which makes one espresso after the other: it
/// heats, grinds until the dose is large enough, brews, and vents and brews again if no water
/// flows. After each third drink it rinses. It logs as a real one does, and offers itself to the
/// screen.
class CoffeeMachine : public QObject
{
    Q_OBJECT

public:
    /// The pace is about the time of one step.
    explicit CoffeeMachine(std::chrono::milliseconds pace);
    ~CoffeeMachine() override;

    void start();
    /// Makes the machine wait in the state "Brewing" of its fourth drink. Call it before start().
    void holdInBrewing() { m_isHeld = true; }
    /// Whether the machine waits there.
    bool isHeld() const { return m_isHeld && m_drinks == drinksBeforeHold && m_isBrewing; }

Q_SIGNALS:
    void switchedOff();

private:
    using State = zeltools::declarativestatemachine::StateDescription;

    static constexpr int drinksBeforeHold = 3;

    zeltools::declarativestatemachine::StateMachineDescription describe();
    State describeGrinding();
    State describeBrewing();
    State describePouring();
    void brew();
    void serve();

    const std::chrono::milliseconds m_pace;
    Board m_board;
    int m_drinks = 0; // that are served
    bool m_isHeld = false;
    bool m_isBrewing = false;
    zeltools::declarativestatemachine::DeclarativeStateMachine m_machine;
};
