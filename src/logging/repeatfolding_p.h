#pragma once

#include "logging/loglevel.h"
#include "logging/logmodules.h"

#include <QMutex>
#include <QString>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <functional>

/// Counts general lines that repeat the line before instead of writing them, see
/// LogManager::setRepeatFolding(). It is created in the thread of the manager; any thread may call
/// the functions.
///
/// No call waits for another one: a line that comes while another thread compares its own is
/// written without a comparison. The lock is never held while a line is written.
class RepeatFolding
{
public:
    using Write = std::function<void(LogLevel::Level, const QString&, const LogModules&)>;

    /// `write` takes the lines to write. A count is written when `longest` has passed.
    explicit RepeatFolding(Write write,
                           std::chrono::milliseconds longest = std::chrono::minutes(1));

    /// Ending it writes the count.
    void setEnabled(bool isEnabled);
    bool isEnabled() const { return m_isEnabled.load(std::memory_order_relaxed); }

    /// Writes the line or counts it.
    void write(LogLevel::Level level, const QString& message, const LogModules& modules);
    /// Writes the count of the repeats so far, if there are any.
    void writeCount();

private:
    using Clock = std::chrono::steady_clock;

    struct Line
    {
        LogLevel::Level level;
        QString message;
        LogModules modules;
        int repeats;
    };

    static Line none() { return {LogLevel::Critical, {}, {}, 0}; } // which no line repeats
    bool isRepeat(LogLevel::Level level, const QString& message, const LogModules& modules) const;
    bool countRepeat();
    Line takeRepeats();
    void writeRepeats(const Line& line);
    void startTimer();

    const Write m_write;
    const std::chrono::milliseconds m_longest;
    std::atomic<bool> m_isEnabled = false;
    QMutex m_mutex;
    Line m_last = none();
    Clock::time_point m_firstRepeat;
    qint64 m_process = 0; // of the first repeat
    QTimer m_timer;
    std::atomic<bool> m_isTimerPosted = false;
};
