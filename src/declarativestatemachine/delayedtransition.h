#pragma once

#include <zeltools/zeltools_export.h>

#include <QAbstractTransition>
#include <QTimer>

#include <chrono>

class QState;

namespace zeltools::declarativestatemachine
{

/// Leaves its state when that has been active for a time, never earlier. A state that is left, or
/// whose machine is stopped, takes its timeout along: it does not reach a state entered later.
///
/// Timeouts are one kind of event (1000, `QEvent::User`) for all delayed transitions: of two in one
/// state the first timer that fires triggers the first transition. The machine's host must not post
/// events of that type itself.
class ZELTOOLS_EXPORT DelayedTransition : public QAbstractTransition
{
    Q_OBJECT

public:
    /// Belongs to the state.
    DelayedTransition(QState* source, std::chrono::milliseconds delay);
    ~DelayedTransition() override;

protected:
    bool eventTest(QEvent* e) override;
    void onTransition(QEvent* e) override;

private:
    class TimeoutEvent;

    void postTimeout();
    void cancel();

    QTimer m_timer{this};
    TimeoutEvent* m_posted = nullptr; // belongs to the machine's queue
};

} // namespace zeltools::declarativestatemachine
