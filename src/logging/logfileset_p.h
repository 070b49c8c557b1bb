#pragma once

#include "logging/logfilewatch_p.h"
#include "logging/logmanager.h"
#include "logging/logsync_p.h"
#include "logging/rotatinglogfile.h"

#include <array>
#include <atomic>
#include <memory>
#include <vector>

/// The five files of the log manager. Their objects live as long as the set, so that a thread that
/// writes a line at shutdown finds its file closed, but not destroyed. One thread opens and closes
/// the set; any thread may call the other functions.
class LogFileSet
{
public:
    static constexpr int count = LogManager::M4ActuatorBoard + 1;
    using Settings = std::array<LogManager::LogFileSettings, count>;
    /// How soon a line is forced to the storage.
    enum class Urgency { Normal, Urgent };

    /// `healthChanged` is called in the thread that has noticed it when a file begins or ceases to
    /// fail. It must not log.
    explicit LogFileSet(std::function<void()> healthChanged = [] {});
    ~LogFileSet();

    /// The names and limits of the files in the two folders, whose paths end with "/".
    static Settings settings(const QString& debugDir, const QString& eventsDir);

    /// Opens all files for appending, after it has closed those that are open. A file that cannot
    /// be opened is tried again as lines come for any file, see LogFileWatch.
    void open(const Settings& settings);
    /// Closes the files when all lines are on the storage, or after LogSync::stopLimit.
    void close();
    void sync();
    /// Sets the times of LogSync for the lines that follow.
    void setSyncDelays(LogSync::Milliseconds interval, LogSync::Milliseconds urgentDelay);

    /// The file; null while the set is closed, and for an unknown id.
    RotatingLogFile* file(LogManager::LogFileId id);
    /// Writes the text, or drops it if file() is null. The lines of the events file are always
    /// urgent.
    void write(LogManager::LogFileId id, const char* text, qint64 length,
               Urgency urgency = Urgency::Normal);
    /// The urgency of lines of this level: Event, Error and Critical lines are urgent.
    static Urgency urgencyOf(LogLevel::Level level);

    /// Makes the set open files of its own at the next use, in the child process of a fork, where
    /// the mutexes of the files may be locked by threads that the child does not have.
    void renewInChild() { m_inheritance = Inheritance::Inherited; }

    /// The mutex of the file, or null if file() is null.
    zeltools::RecursiveMutex* mutex(LogManager::LogFileId id);
    /// The content of the file and its predecessor, which is empty if file() is null.
    QString totalContent(LogManager::LogFileId id);

    /// The state of the file, which is that of a healthy one before the first open().
    LogFileHealth health(LogManager::LogFileId id);
    bool isHealthy() const;

private:
    enum class Inheritance { None, Inherited, Renewing };

    void renewIfInherited();
    void makeFile(size_t index);

    std::atomic<Inheritance> m_inheritance = Inheritance::None;
    std::function<void()> m_healthChanged;
    LogSync m_sync;
    std::atomic<bool> m_isSharingWarned = false; // one Warning for all files
    std::array<std::unique_ptr<RotatingLogFile>, count> m_files;
    std::array<std::unique_ptr<LogFileWatch>, count> m_watches;
    std::vector<std::unique_ptr<RotatingLogFile>> m_inherited; // of the parent process
    std::vector<std::unique_ptr<LogFileWatch>> m_inheritedWatches;
    std::atomic<bool> m_isOpen = false;
};
