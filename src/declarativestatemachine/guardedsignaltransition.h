#pragma once

#include <zeltools/zeltools_export.h>

#include <QSignalTransition>

#include <functional>

namespace zeltools::declarativestatemachine
{

/// Leaves its state when an object emits a signal and the guard returns true at that moment. An
/// empty guard lets every signal through. What an object has emitted and the machine has not yet
/// taken up is lost when the object is destroyed; its last signal, destroyed(), is not. (For that
/// one senderObject() is the transition itself.)
class ZELTOOLS_EXPORT GuardedSignalTransition : public QSignalTransition
{
    Q_OBJECT

public:
    /// Belongs to the state. The object must be of the same thread, or outlive the transition.
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
