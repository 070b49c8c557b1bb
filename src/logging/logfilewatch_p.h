#pragma once

#include "logging/logfilefault_p.h"
#include "logging/logfilehealth.h"
#include "logging/logmanager.h"
#include "logging/rotatinglogfile.h"

#include <QMutex>

#include <atomic>
#include <functional>

class PrimaryWriter;

/// Writes to one of the manager's files and keeps account of its failures. It tries to open a
/// closed file again as lines come, at most once in retryInterval_ms. When a failure has ended, the
/// next line in the file follows a line that tells how many are missing at this place, since when,
/// and why.
///
/// Standard error gets one Warning when a failure begins and one when it ends, but not more than
/// one such pair in warningInterval_ms. Any thread may call the functions.
class LogFileWatch
{
public:
    static constexpr int retryInterval_ms = 100;
    static constexpr int warningInterval_ms = 10000;

    /// `changed` is called, under the mutex of the file, when a failure has begun or ended.
    LogFileWatch(LogManager::LogFileId id, RotatingLogFile& file, PrimaryWriter& writer,
                 std::function<void()> changed);

    /// Opens the closed file for appending.
    void open();
    /// Closes the file. Lines that come later are dropped.
    void close();
    /// Writes the lines as a whole, or counts them as not written.
    void write(const char* text, qint64 length);
    /// Tries a file that fails again although no line has come for it, unless another thread uses
    /// it now. The calling thread may have the mutex of another file.
    void retry();

    bool isHealthy() const { return !m_isFailing; }
    LogFileHealth health() const;

private:
    bool tryToOpen();
    void writeLocked(const char* text, qint64 length);
    void judge(bool isKept, qint64 linesCount);
    void begin(qint64 now_ms);
    void end();
    void warn(const QString& text) const;
    QByteArray report() const;

    const LogManager::LogFileId m_id;
    RotatingLogFile& m_file;
    PrimaryWriter& m_writer;
    const std::function<void()> m_changed;
    std::atomic<bool> m_isFailing = false;
    mutable QMutex m_healthMutex; // nobody waits for a file to read its state
    LogFileHealth m_health;

    // These members are guarded by the mutex of the file.
    bool m_isOpened = false; // by open(), even if the file cannot be opened
    LogFileFault m_fault;
    QString m_since;
    qint64 m_missing = 0; // lines that the next report tells
    qint64 m_nextOpening_ms = 0;
    qint64 m_nextRetry_ms = 0;
    qint64 m_nextWarning_ms = 0;
    bool m_isWarned = false;
};
