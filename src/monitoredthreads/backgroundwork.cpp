#include "monitoredthreads/backgroundwork_p.h"

#include "signalsblocked.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <pthread.h>

namespace monitored_threads
{

struct BackgroundWork::State
{
    void run();

    std::mutex mutex; // never held while a task runs
    std::condition_variable changed;
    std::deque<Task> tasks;
    bool isRunning = false;
    bool isEnding = false;
};

void BackgroundWork::State::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (!isEnding || !tasks.empty()) {
        if (tasks.empty()) {
            changed.wait(lock);
            continue;
        }
        {
            const Task task = std::move(tasks.front());
            tasks.pop_front();
            lock.unlock();
            task();
        } // destroyed without the lock, like all that it owns
        lock.lock();
    }
    isRunning = false;
    changed.notify_all();
}

BackgroundWork::BackgroundWork(const char* threadName)
    : m_threadName(threadName)
    , m_state(std::make_shared<State>())
{
}

BackgroundWork::~BackgroundWork()
{
    end(std::chrono::milliseconds(0));
}

bool BackgroundWork::start()
{
    const zeltools::SignalsBlocked blocked;
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    if (m_state->isRunning)
        return true;
    try {
        std::thread thread([state = m_state] { state->run(); });
        pthread_setname_np(thread.native_handle(), m_threadName);
        thread.detach();
    } catch (const std::system_error&) {
        return false;
    }
    return m_state->isRunning = true;
}

void BackgroundWork::post(Task task)
{
    constexpr size_t mostTasks = 1000;
    if (m_process != getpid())
        return;
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    if (!m_state->isRunning || m_state->isEnding || m_state->tasks.size() >= mostTasks)
        return;
    m_state->tasks.push_back(std::move(task));
    m_state->changed.notify_all();
}

bool BackgroundWork::end(std::chrono::milliseconds patience)
{
    if (m_process != getpid())
        return true;
    std::unique_lock<std::mutex> lock(m_state->mutex);
    m_state->isEnding = true;
    m_state->changed.notify_all();
    return m_state->changed.wait_for(lock, patience, [this] { return !m_state->isRunning; });
}

} // namespace monitored_threads
