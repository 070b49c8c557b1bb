#pragma once

#include <zeltools/zeltools_export.h>

#include <QSignalTransition>

#include <functional>

namespace zeltools::declarativestatemachine
{

/// Leaves its state when an object emits a signal and the guard returns true at that moment. An
/// empty guard accepts every signal. When an object is destroyed, its signals that the machine has
/// not yet processed are lost, except its last signal, destroyed(). (For destroyed(),
/// senderObject() is the transition itself.)
class ZELTOOLS_EXPORT GuardedSignalTransition : public QSignalTransition
{
    Q_OBJECT

public:
    /// Constructs a transition that belongs to the state. The object must belong to the same thread
    /// or outlive the transition.
    GuardedSignalTransition(const QObject* obj, const char* signal, QState* source,
                            std::function<bool()> guard = {});
    ~GuardedSignalTransition() override;

Q_SIGNALS:
    /// Stands in for destroyed() of the object.
    void emitterDestroyed();

protected:
    bool eventTest(QEvent* e) override;

private:
    const std::function<bool()> m_guard;
};

} // namespace zeltools::declarativestatemachine
