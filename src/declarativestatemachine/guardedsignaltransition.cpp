#include "declarativestatemachine/guardedsignaltransition.h"

#include <QMetaMethod>

#include <utility>

namespace zeltools::declarativestatemachine
{

namespace
{

bool isDestruction(const QObject* obj, const char* signal)
{
    QByteArray signature = QMetaObject::normalizedSignature(signal);
    if (signature.startsWith('2')) // The code that SIGNAL() adds.
        signature.remove(0, 1);
    const QMetaObject* const meta = obj->metaObject();
    const QMetaMethod method = meta->method(meta->indexOfSignal(signature));
    return method.enclosingMetaObject() == &QObject::staticMetaObject &&
           method.name() == "destroyed";
}

} // namespace

GuardedSignalTransition::GuardedSignalTransition(const QObject* obj, const char* signal,
                                                 QState* source, std::function<bool()> guard)
    : QSignalTransition(obj, signal, source)
    , m_guard(std::move(guard))
{
    if (obj == nullptr)
        return;
    if (isDestruction(obj, signal)) {
        // The machine may process the signal later, when its sender no longer exists.
        connect(obj, &QObject::destroyed, this, &GuardedSignalTransition::emitterDestroyed);
        setSenderObject(this);
        setSignal(SIGNAL(emitterDestroyed()));
    } else {
        // The base class would use the object whenever the state is entered or left.
        connect(obj, &QObject::destroyed, this, [this] { setSenderObject(nullptr); });
    }
}

GuardedSignalTransition::~GuardedSignalTransition() = default;

bool GuardedSignalTransition::eventTest(QEvent* e)
{
    return QSignalTransition::eventTest(e) && (!m_guard || m_guard());
}

} // namespace zeltools::declarativestatemachine
