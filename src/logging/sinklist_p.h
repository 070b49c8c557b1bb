#pragma once

#include "logging/logsink.h"
#include "qtversion.h"

#include <QVector>

#include <atomic>
#include <memory>

/// The sinks of the log manager. Any thread may call the functions, LogSink::write() too.
class SinkList
{
public:
    void add(LogSink* sink);
    /// Returns when no other thread calls the sink any more.
    void remove(LogSink* sink);
    bool isEmpty() const { return m_isEmpty; }
    /// Whether a sink is writing in this thread. What it logs is not for the sinks.
    static bool isWritingHere() { return s_isWritingHere; }
    void write(const LogRecord& record);
    /// Forgets the sinks in a child process, in which another thread's lock is never released.
    void forgetInChild();

private:
    std::unique_ptr<zeltools::RecursiveMutex> m_mutex =
        std::make_unique<zeltools::RecursiveMutex>();
    QVector<LogSink*> m_sinks;
    static thread_local bool s_isWritingHere; // only while its thread holds the lock
    std::atomic<bool> m_isEmpty = true;
};
