#pragma once

#include "logging/linequeue_p.h"
#include "logging/logmanager.h"

#include <atomic>

/// Takes each line of LogManager to where it belongs: the standard error stream, one of the five
/// files, and the manager's signal for its kind. Any thread may call
/// the functions unless they say otherwise.
class LogRouter
{
public:
    LogRouter(LogManager& manager, LogFileSet& files);

    /// Sets whether lines of other threads are queued to the manager's thread.
    void setQueueing(bool isQueueing) { m_isQueueing = isQueueing; }
    /// Sets whether general lines go to their file.
    void setGeneralFileEnabled(bool isEnabled) { m_isGeneralFileEnabled = isEnabled; }

    /// Writes the line, or queues it. LogManager::log() describes the parameters.
    void log(LogLevel::Level level, const LogModules& modules, const QString& message);
    /// Writes all queued lines. Call it in the manager's thread.
    void writeQueuedLines();

    void writeGeneral(const LogLine& line);
    void writeFailure(const QString& line);
    void writeEvent(const QString& line);
    void writeGrinder(const QString& line);
    /// Writes the line to the file only.
    void write(LogManager::LogFileId id, const QString& line);

private:
    void postWriteNext();
    void writeNow(LogLevel::Level level, const LogModules& modules, const QString& message);
    void writeAndAnnounce(LogManager::LogFileId id, const QString& line,
                          void (LogManager::*announce)(const QString&));

    LogManager& m_manager;
    LogFileSet& m_files;
    LineQueue m_queue;
    std::atomic<bool> m_isQueueing = false;
    std::atomic<bool> m_isGeneralFileEnabled = false;
};
