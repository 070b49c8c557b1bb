#pragma once

#include <zeltools/qtversion.h>
#include <zeltools/zeltools_export.h>

#include <QDeadlineTimer>

#include <chrono>

namespace zeltools
{

/// A child process that is killed at a time limit. The limit also holds for a process that prints
/// without a pause, for which the waits of QProcess never end.
///
/// Like QProcess, an object belongs to one thread.
class ZELTOOLS_EXPORT TimedProcess : public ChildProcess
{
    Q_OBJECT

public:
    /// The function runs in the child between fork() and exec(), as for ChildProcess.
    explicit TimedProcess(void (*prepare)(), QObject* parent = nullptr);
    ~TimedProcess() override;

    /// Waits until the started process has ended, and kills it when the time limit has passed. The
    /// signals of QProcess are emitted meanwhile, but no events are processed. Returns an empty
    /// text, or the reason if the process was killed or could not be started.
    QString waitForEnd(std::chrono::milliseconds timeLimit);
    /// Whether the last call of waitForEnd() has killed the process.
    bool isOverdue() const { return m_isOverdue; }

Q_SIGNALS:
    /// Announces that the time limit has passed and that the process is killed now, together with
    /// its process group if it leads one.
    void overdue();

private:
    void killGroup();

    QDeadlineTimer m_deadline{QDeadlineTimer::Forever};
    bool m_isOverdue = false;
};

} // namespace zeltools
