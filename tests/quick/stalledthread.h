#pragma once

#include "monitoredthreads/monitor.h"

#include <QSemaphore>
#include <QThread>

/// A thread that the monitor watches, and that waits without a tick until it is destroyed.
class StalledThread : public QThread
{
public:
    ~StalledThread() override
    {
        m_end.release();
        wait();
    }

private:
    void run() override
    {
        monitored_threads::Monitor::instance()->registerCurrentThread("Boiler");
        m_end.acquire();
    }

    QSemaphore m_end;
};
