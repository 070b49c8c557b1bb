#include "declarativestatemachine/signalutils.h"

#include <QMetaObject>

namespace zeltools::signalutils
{

namespace
{

const char* withoutCode(const char* signal)
{
    return signal != nullptr && *signal == '2' ? signal + 1 : signal;
}

} // namespace

bool classContainsSignal(QObject* obj, const char* signal)
{
    if (obj == nullptr || signal == nullptr)
        return false;
    return obj->metaObject()->indexOfSignal(withoutCode(signal)) != -1;
}

QString classAndSignalName(QObject* obj, const char* signal, bool withArguments)
{
    QString name = QString::fromLatin1(withoutCode(signal));
    if (!withArguments)
        name = name.section(QLatin1Char('('), 0, 0);
    if (obj == nullptr)
        return name;
    return QStringLiteral("%1::%2").arg(QLatin1String(obj->metaObject()->className()), name);
}

} // namespace zeltools::signalutils
