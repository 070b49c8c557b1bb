#include "rinsecycle.h"

#include "board.h"

RinseCycle::RinseCycle(Board& board, int rounds)
    : m_board(board)
    , m_roundsLeft(rounds)
{
    connect(&board, &Board::tankFull, this, qOverload<>(&StateMachine::handleSignal));
    connect(&board, &Board::tankEmpty, this, qOverload<>(&StateMachine::handleSignal));
    connect(this, &StateMachine::stateEnter, this, &RinseCycle::beginState);
    setInitialState(Filling);
}

QString RinseCycle::stateToString(int state) const
{
    switch (state) {
    case Filling:
        return QStringLiteral("Filling");
    case Draining:
        return QStringLiteral("Draining");
    case Done:
        return QStringLiteral("Done");
    default:
        return StateMachine::stateToString(state);
    }
}

void RinseCycle::beginState()
{
    m_journal.append(stateToString(currentState()));
    if (currentState() == Filling)
        m_board.fill();
    else if (currentState() == Done)
        Q_EMIT finished();
}

void RinseCycle::onSignal(const QObject*, const QMetaMethod& signal, bool receivedDuringTransition)
{
    m_journal.append(QString::fromLatin1(signal.name()) +
                     (receivedDuringTransition ? QLatin1String(" (waited)") : QLatin1String()));
    if (currentState() == Filling && signal == QMetaMethod::fromSignal(&Board::tankFull)) {
        setState(Draining);
        m_board.drain(); // tankEmpty() is emitted before Draining is entered and waits for it.
    } else if (currentState() == Draining) {
        --m_roundsLeft;
        setState(m_roundsLeft > 0 ? Filling : Done);
    }
}
