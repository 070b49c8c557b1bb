#include "timedprocess.h"

#include <signal.h>

namespace zeltools
{

TimedProcess::TimedProcess(void (*prepare)(), QObject* parent)
    : ChildProcess(prepare, parent)
{
    const auto killIfOverdue = [this] {
        if (m_deadline.hasExpired())
            killGroup();
    };
    connect(this, &QProcess::readyReadStandardOutput, this, killIfOverdue);
    connect(this, &QProcess::readyReadStandardError, this, killIfOverdue);
}

TimedProcess::~TimedProcess() = default;

QString TimedProcess::waitForEnd(std::chrono::milliseconds timeLimit)
{
    m_isOverdue = false;
    m_deadline = QDeadlineTimer(timeLimit);
    waitForFinished(static_cast<int>(timeLimit.count()));
    if (state() != NotRunning) {
        killGroup();
        waitForFinished();
    }
    m_deadline = QDeadlineTimer(QDeadlineTimer::Forever);
    if (m_isOverdue)
        return QStringLiteral("Process operation timed out");
    return error() == FailedToStart ? errorString() : QString();
}

void TimedProcess::killGroup()
{
    if (m_isOverdue)
        return; // it is dying already
    m_isOverdue = true;
    Q_EMIT overdue();
    const auto group = static_cast<pid_t>(processId());
    if (group > 0)
        ::kill(-group, SIGKILL);
    kill(); // also a process that leads no group or has changed it
}

} // namespace zeltools
