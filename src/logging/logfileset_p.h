#pragma once

#include "logging/logmanager.h"
#include "logging/rotatinglogfile.h"

#include <array>
#include <atomic>
#include <memory>

/// The five files of the log manager. Once made, their objects stay until the set goes: a thread
/// that is writing a line at shutdown finds its file closed, not destroyed. Opening and closing
/// belong to one thread; everything else may be called from any.
class LogFileSet
{
public:
    static constexpr int count = LogManager::M4ActuatorBoard + 1;
    using Settings = std::array<LogManager::LogFileSettings, count>;

    LogFileSet();
    ~LogFileSet();

    /// Names, limits and order of the files in the two folders, both ending with "/".
    static Settings settings(const QString& debugDir, const QString& eventsDir);

    /// Opens all files for appending, again when they are open already. A file that cannot be
    /// opened stays closed, and what is written to it is dropped.
    void open(const Settings& settings);
    void close();
    void sync();

    /// Null while the set is closed, and for an id that names no file.
    RotatingLogFile* file(LogManager::LogFileId id) const;
    /// Drops the text where file() is null.
    void write(LogManager::LogFileId id, const char* text, qint64 length);

    /// The mutex of the file, or null where file() is null.
    zeltools::RecursiveMutex* mutex(LogManager::LogFileId id) const;
    /// The content of the file and its predecessor, which is empty where file() is null.
    QString totalContent(LogManager::LogFileId id) const;

private:
    std::atomic<bool> m_isSharingWarned = false; // one Warning for all files
    std::array<std::unique_ptr<RotatingLogFile>, count> m_files;
    std::atomic<bool> m_isOpen = false;
};
