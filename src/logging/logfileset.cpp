#include "logging/logfileset_p.h"

#include "logging/primarywriter_p.h"

#include <algorithm>
#include <utility>

LogFileSet::LogFileSet(std::function<void()> healthChanged)
    : m_healthChanged(std::move(healthChanged))
{
}

LogFileSet::~LogFileSet()
{
    close();
}

LogFileSet::Settings LogFileSet::settings(const QString& debugDir, const QString& eventsDir)
{
    return {{{debugDir + QLatin1String("zel_logs.log"), 1, false},
             {eventsDir + QLatin1String("zel_events.log"), 1, true},
             {eventsDir + QLatin1String("zel_grinder.log"), 5, false},
             {eventsDir + QLatin1String("zel_capsule.log"), 1, false},
             {debugDir + QLatin1String("m4_ab.log"), 1, false}}};
}

void LogFileSet::open(const Settings& settings)
{
    m_sync.start();
    for (size_t i = 0; i < settings.size(); ++i) {
        if (m_files[i] == nullptr) {
            m_files[i] =
                std::make_unique<RotatingLogFile>(RotatingLogFileConfiguration{2.5F, 1, false});
            m_files[i]->m_writer->shareWarning(&m_isSharingWarned);
            m_files[i]->m_writer->setSync(&m_sync);
            m_watches[i] = std::make_unique<LogFileWatch>(LogManager::LogFileId(i), *m_files[i],
                                                          *m_files[i]->m_writer, m_healthChanged);
        }
        RotatingLogFile& log = *m_files[i];
        const QMutexLocker locker(log.mutex());
        log.file.close();
        log.setPrimaryFilename(settings[i].path);
        log.setMaximumSizeMiB(settings[i].maximumSizeMiB);
        log.enableDeletedFilesStorage(settings[i].deletedFilesStorage);
        log.setSecondaryFilesCount(1);
        m_watches[i]->open();
    }
    m_isOpen = true;
}

void LogFileSet::close()
{
    if (!m_isOpen.exchange(false))
        return;
    for (const auto& watch : m_watches)
        watch->close();
    m_sync.stop();
}

void LogFileSet::sync()
{
    if (!m_isOpen)
        return;
    for (const auto& log : m_files)
        log->sync();
}

RotatingLogFile* LogFileSet::file(LogManager::LogFileId id) const
{
    const auto index = static_cast<size_t>(id);
    return m_isOpen && index < m_files.size() ? m_files[index].get() : nullptr;
}

void LogFileSet::setSyncDelays(LogSync::Milliseconds interval, LogSync::Milliseconds urgentDelay)
{
    m_sync.setDelays(interval, urgentDelay);
}

void LogFileSet::write(LogManager::LogFileId id, const char* text, qint64 length, Urgency urgency)
{
    if (file(id) == nullptr)
        return;
    m_watches[size_t(id)]->write(text, length);
    if (!isHealthy()) {
        for (const auto& watch : m_watches)
            watch->retry();
    }
    if (urgency == Urgency::Urgent || id == LogManager::Events)
        m_sync.hurry();
}

LogFileSet::Urgency LogFileSet::urgencyOf(LogLevel::Level level)
{
    const bool isUrgent =
        level == LogLevel::Event || level == LogLevel::Error || level == LogLevel::Critical;
    return isUrgent ? Urgency::Urgent : Urgency::Normal;
}

zeltools::RecursiveMutex* LogFileSet::mutex(LogManager::LogFileId id) const
{
    const RotatingLogFile* log = file(id);
    return log != nullptr ? log->mutex() : nullptr;
}

LogFileHealth LogFileSet::health(LogManager::LogFileId id) const
{
    const auto index = static_cast<size_t>(id);
    const bool isWatched = index < m_watches.size() && m_watches[index] != nullptr;
    return isWatched ? m_watches[index]->health() : LogFileHealth();
}

bool LogFileSet::isHealthy() const
{
    return std::all_of(m_watches.begin(), m_watches.end(),
                       [](const auto& watch) { return watch == nullptr || watch->isHealthy(); });
}

QString LogFileSet::totalContent(LogManager::LogFileId id) const
{
    const RotatingLogFile* log = file(id);
    return log != nullptr ? log->totalContent(RotatingLogFile::OldestFirst) : QString();
}
