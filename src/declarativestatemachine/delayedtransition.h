#pragma once

#include <zeltools/zeltools_export.h>

#include <QAbstractTransition>
#include <QTimer>

#include <chrono>

class QState;

namespace zeltools::declarativestatemachine
{

/// Leaves its state when the state has been active for a given time, never earlier. If the state is
/// left or its machine is stopped, the timeout is cancelled, so that it does not reach a later
/// state.
///
/// All delayed transitions share one event type (1000, `QEvent::User`): with two of them in one
/// state, the first timer that fires triggers the first transition. The host must not post events
/// of that type to the machine.
class ZELTOOLS_EXPORT DelayedTransition : public QAbstractTransition
{
    Q_OBJECT

public:
    /// Constructs a transition that belongs to the state.
    DelayedTransition(QState* source, std::chrono::milliseconds delay);
    /// Cancels a running timeout.
    ~DelayedTransition() override;

protected:
    bool eventTest(QEvent* e) override;
    void onTransition(QEvent* e) override;

    /// Returns whether the event is the timeout of a delayed transition of the same state.
    bool isOfSameState(const QEvent* e) const;
    /// Returns whether the event is the timeout of this transition.
    bool isOwn(const QEvent* e) const;

private:
    class TimeoutEvent;

    void postTimeout();
    void cancel();

    QTimer m_timer{this};
    TimeoutEvent* m_posted = nullptr; // belongs to the machine's queue
};

} // namespace zeltools::declarativestatemachine
