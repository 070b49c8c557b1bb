#include "declarativestatemachine/guardedsignaltransition.h"

#include <utility>

namespace zeltools::declarativestatemachine
{

GuardedSignalTransition::GuardedSignalTransition(const QObject* obj, const char* signal,
                                                 QState* source, std::function<bool()> guard)
    : QSignalTransition(obj, signal, source)
    , m_guard(std::move(guard))
{
    // The base class would go on using the object whenever the state is entered or left.
    connect(obj, &QObject::destroyed, this, [this] { setSenderObject(nullptr); });
}

GuardedSignalTransition::~GuardedSignalTransition() = default;

bool GuardedSignalTransition::eventTest(QEvent* e)
{
    return QSignalTransition::eventTest(e) && (!m_guard || m_guard());
}

} // namespace zeltools::declarativestatemachine
