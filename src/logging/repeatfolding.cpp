#include "logging/repeatfolding_p.h"

#include <utility>

#include <unistd.h>

namespace
{

// A thread that holds the lock releases it at once, unless it is a thread of the parent process.
constexpr int s_lockPatience_ms = 100;

} // namespace

RepeatFolding::RepeatFolding(Write write, std::chrono::milliseconds longest)
    : m_write(std::move(write))
    , m_longest(longest)
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { writeCount(); });
}

void RepeatFolding::setEnabled(bool isEnabled)
{
    if (m_isEnabled.exchange(isEnabled) == isEnabled)
        return;
    if (!m_mutex.tryLock(s_lockPatience_ms))
        return;
    const Line repeated = takeRepeats();
    m_last = none();
    m_mutex.unlock();
    writeRepeats(repeated);
}

void RepeatFolding::write(LogLevel::Level level, const QString& message, const LogModules& modules)
{
    Line repeated = {};
    bool isNew = true;
    if (level != LogLevel::Critical && m_mutex.tryLock()) {
        isNew = !isRepeat(level, message, modules);
        if (isNew || countRepeat())
            repeated = takeRepeats();
        if (isNew)
            m_last = {level, message, modules, 0};
        m_mutex.unlock();
    }
    writeRepeats(repeated);
    if (isNew)
        m_write(level, message, modules);
}

void RepeatFolding::writeCount()
{
    if (!m_mutex.tryLock(s_lockPatience_ms))
        return;
    const Line repeated = takeRepeats();
    m_mutex.unlock();
    writeRepeats(repeated);
}

bool RepeatFolding::isRepeat(LogLevel::Level level, const QString& message,
                             const LogModules& modules) const
{
    return level == m_last.level && modules == m_last.modules && message == m_last.message;
}

// Returns whether the repeats have been counted for so long that they must be written.
bool RepeatFolding::countRepeat()
{
    const Clock::time_point now = Clock::now();
    if (m_last.repeats++ == 0) {
        m_firstRepeat = now;
        m_process = getpid();
        startTimer();
    }
    return now - m_firstRepeat >= m_longest;
}

// A forked child leaves the repeats of its parent to the parent.
RepeatFolding::Line RepeatFolding::takeRepeats()
{
    Line line = m_last;
    m_last.repeats = 0;
    if (line.repeats > 0 && m_process != getpid())
        line.repeats = 0;
    return line;
}

// The line contains the text, since other lines may stand between the first one and this one.
void RepeatFolding::writeRepeats(const Line& line)
{
    if (line.repeats == 0)
        return;
    const QString text = QStringLiteral("repeated %1 times: ").arg(line.repeats) + line.message;
    m_write(line.level, text, line.modules);
}

// At most one call is posted at a time, because a host may have no event loop.
void RepeatFolding::startTimer()
{
    if (m_isTimerPosted.exchange(true))
        return;
    const auto start = [this] {
        m_isTimerPosted = false;
        m_timer.start(m_longest);
    };
    QMetaObject::invokeMethod(&m_timer, start, Qt::QueuedConnection);
}
