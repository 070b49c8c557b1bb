#include "monitoredthreads/statelines_p.h"

#include "monitoredthreads/log.h"

namespace monitored_threads
{

using State = Monitor::State;

namespace
{

QString described(const StallDetector::Change& change)
{
    return (change.thread == 0 ? QStringLiteral("Item \"%1\" ") : QStringLiteral("Thread \"%1\" "))
        .arg(change.name);
}

} // namespace

void logStateChange(const StallDetector::Change& change, const QStringList& callStack)
{
    const QString time = QStringLiteral("%1 ms").arg(change.sinceTick.count());
    if (change.after == State::Late)
        log::warning(described(change) + QStringLiteral("is late: no tick for ") + time);
    else if (change.after == State::Stalled)
        log::warning(described(change) + QStringLiteral("has stalled: no tick for ") + time);
    else
        log::info(described(change) + QStringLiteral("has recovered after ") + time);
    for (int i = 0; i < callStack.size(); ++i)
        log::warning(QStringLiteral("#%1 %2").arg(i).arg(callStack[i]));
}

} // namespace monitored_threads
