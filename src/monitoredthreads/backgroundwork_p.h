#pragma once

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <memory>

#include <unistd.h>

namespace monitored_threads
{

/// A thread for tasks that may block, such as log lines. The threads that hand tasks over never
/// wait for one; the tasks run in their order. While 1000 tasks wait, further ones are dropped.
///
/// Any thread may call post(). In a forked child process nothing is done.
class BackgroundWork
{
public:
    using Task = std::function<void()>;

    /// The name is a literal of at most 15 characters.
    explicit BackgroundWork(const char* threadName);
    /// Calls end() and does not wait. A task that still runs or waits then must own all it uses.
    ~BackgroundWork();
    Q_DISABLE_COPY(BackgroundWork)

    /// Returns false if the system has no further thread. A second call does nothing.
    bool start();
    /// Drops the task before start() and after end().
    void post(Task task);
    /// Ends the thread after the tasks that wait. Returns whether it ended within that time.
    bool end(std::chrono::milliseconds patience);

private:
    struct State;

    const char* const m_threadName;
    const pid_t m_process = getpid();
    const std::shared_ptr<State> m_state; // the thread shares it
};

} // namespace monitored_threads
