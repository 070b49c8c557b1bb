#pragma once

#include "logging/linequeue_p.h"
#include "logging/logmanager.h"
#include "logging/repeatfolding_p.h"
#include "logging/ringfile_p.h"

#include <QDateTime>

#include <atomic>

class SinkList;

/// Takes each line of LogManager to where it belongs: the standard error stream, one of the five
/// files, the sinks, and the manager's signal for its kind. In buffered delivery it only puts the
/// line into the ring. Any thread may call the functions unless they say otherwise.
class LogRouter
{
public:
    LogRouter(LogManager& manager, LogFileSet& files, SinkList& sinks);

    /// Sets whether lines of other threads are queued to the manager's thread.
    void setQueueing(bool isQueueing) { m_isQueueing = isQueueing; }
    /// Sets whether general lines go to their file.
    void setGeneralFileEnabled(bool isEnabled) { m_isGeneralFileEnabled = isEnabled; }
    bool isGeneralFileEnabled() const { return m_isGeneralFileEnabled; }

    /// The folding of general lines.
    RepeatFolding& folding() { return m_folding; }

    /// Writes the line, or queues it. LogManager::log() describes the parameters.
    void log(LogLevel::Level level, const LogModules& modules, const QString& message);
    /// Writes all queued lines. Call it in the manager's thread.
    void writeQueuedLines();

    void writeGeneral(LogLevel::Level level, const QString& message, const LogModules& modules);
    /// These take a finished line, as the functions of LogManager do.
    void writeGeneralLine(const QString& line);
    void writeFailure(const QString& line) { writeFailure(line, route(LogLevel::Error)); }
    void writeEvent(const QString& line) { writeEvent(line, route(LogLevel::Event)); }
    void writeGrinder(const QString& line) { writeGrinder(line, route(LogLevel::Grinder)); }
    /// Writes the capsule or M4 line to its file only.
    void writeToFile(LogManager::LogFileId id, const QString& line)
    {
        writeToFile(id, line, route(LogLevel::Info));
    }
    /// Writes the unchanged bytes to the file only.
    void writeBytes(LogManager::LogFileId id, const QByteArray& bytes);

private:
    static RingLine route(LogLevel::Level level,
                          qint64 time_ms = QDateTime::currentMSecsSinceEpoch());

    void postWriteNext();
    void writeUnfolded(LogLevel::Level level, const QString& message, const LogModules& modules);
    void writeNow(LogLevel::Level level, const LogModules& modules, const QString& message);
    void writeFailure(const QString& line, RingLine route);
    void writeEvent(const QString& line, RingLine route);
    void writeGrinder(const QString& line, RingLine route);
    void writeToFile(LogManager::LogFileId id, const QString& line, RingLine route);
    void writeAndAnnounce(const QString& line, RingLine route,
                          void (LogManager::*announce)(const QString&));
    void deliver(const RingLine& route, const char* bytes, int size);
    void deliverUnkept(const RingLine& route, const char* bytes, int size);
    void writeToPlaces(const RingLine& route, const char* bytes, int size);
    void writeToSinks(const RingLine& route, const char* bytes, int size);
    qint16 generalFile() const { return m_isGeneralFileEnabled ? LogManager::General : -1; }

    LogManager& m_manager;
    LogFileSet& m_files;
    SinkList& m_sinks;
    LineQueue m_queue;
    RepeatFolding m_folding;
    std::atomic<bool> m_isQueueing = false;
    std::atomic<bool> m_isGeneralFileEnabled = false;
};
