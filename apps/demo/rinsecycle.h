#pragma once

#include <zeltools/statemachine/statemachine.h>

#include <QStringList>

class Board;

/// Fills and drains the tank a number of times.
class RinseCycle : public StateMachine
{
    Q_OBJECT

public:
    enum State { Filling, Draining, Done };

    RinseCycle(Board& board, int rounds);

    QString stateToString(int state) const override;
    /// The entered states and the handled signals.
    const QStringList& journal() const { return m_journal; }

Q_SIGNALS:
    void finished();

protected:
    void onSignal(const QObject* sender, const QMetaMethod& signal,
                  bool receivedDuringTransition) override;

private:
    void beginState();

    Board& m_board;
    int m_roundsLeft;
    QStringList m_journal;
};
