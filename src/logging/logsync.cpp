#include "logging/logsync_p.h"

#include "logging/logdelivery.h"
#include "logging/syncthread_p.h"

#include <utility>

LogSync::LogSync()
    : m_thread(std::make_shared<SyncThread>())
{
    const LogDelivery defaults;
    setDelays(defaults.syncInterval, defaults.urgentSyncDelay);
}

LogSync::~LogSync()
{
    stop();
}

void LogSync::setDelays(Milliseconds interval, Milliseconds urgentDelay)
{
    m_thread->setDelays(interval, urgentDelay);
}

void LogSync::start()
{
    if (!m_thread->isOfThisProcess()) {
        const std::shared_ptr<SyncThread> parents =
            std::exchange(m_thread, std::make_shared<SyncThread>());
        m_thread->setDelaysOf(*parents);
    }
    SyncThread::start(m_thread);
}

void LogSync::stop()
{
    if (m_thread->isOfThisProcess())
        m_thread->stop(stopLimit);
}

void LogSync::add(std::shared_ptr<UnsyncedFile> file)
{
    if (m_thread->isOfThisProcess())
        m_thread->add(std::move(file));
}

void LogSync::hurry()
{
    if (m_thread->isOfThisProcess())
        m_thread->hurry();
}
