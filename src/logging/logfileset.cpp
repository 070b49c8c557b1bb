#include "logging/logfileset_p.h"

#include "logging/logrotation_p.h"
#include "logging/primarywriter_p.h"
#include "logging/urgentlevel_p.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include <unistd.h>

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
        if (m_files[i] == nullptr)
            makeFile(i);
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

void LogFileSet::makeFile(size_t index)
{
    auto file = std::make_unique<RotatingLogFile>(RotatingLogFileConfiguration{2.5F, 1, false});
    file->m_writer->shareWarning(&m_isSharingWarned);
    file->m_writer->setSync(&m_sync);
    m_watches[index] = std::make_unique<LogFileWatch>(LogManager::LogFileId(index), *file,
                                                      *file->m_writer, m_healthChanged);
    m_files[index] = std::move(file);
}

void LogFileSet::close()
{
    renewIfInherited();
    if (!m_isOpen.exchange(false))
        return;
    for (const auto& watch : m_watches)
        watch->close();
    m_sync.stop();
}

void LogFileSet::sync()
{
    renewIfInherited();
    if (!m_isOpen)
        return;
    for (const auto& log : m_files)
        log->sync();
}

// One thread of the child opens the files, the others wait. The parent's files are never destroyed
// and their mutexes never locked; only the descriptors are closed, which share the parent's locks.
void LogFileSet::renewIfInherited()
{
    Inheritance state = Inheritance::Inherited;
    if (m_inheritance == Inheritance::None)
        return;
    while (!m_inheritance.compare_exchange_weak(state, Inheritance::Renewing)) {
        if (state == Inheritance::None)
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        state = Inheritance::Inherited;
    }
    for (size_t i = 0; i < m_files.size() && m_files[i] != nullptr; ++i) {
        m_inheritedWatches.push_back(std::move(m_watches[i]));
        RotatingLogFile& parents = *m_inherited.emplace_back(std::move(m_files[i]));
        makeFile(i);
        m_files[i]->setPrimaryFilename(parents.m_rotation->primary());
        m_files[i]->m_rotation->copyLimits(*parents.m_rotation);
        m_files[i]->m_deletedFilesStorage = parents.m_deletedFilesStorage;
        if (parents.file.isOpen())
            ::close(parents.file.handle());
        m_watches[i]->open();
    }
    m_inheritance = Inheritance::None;
}

RotatingLogFile* LogFileSet::file(LogManager::LogFileId id)
{
    renewIfInherited();
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
    return isUrgentLevel(quint8(level)) ? Urgency::Urgent : Urgency::Normal;
}

zeltools::RecursiveMutex* LogFileSet::mutex(LogManager::LogFileId id)
{
    const RotatingLogFile* log = file(id);
    return log != nullptr ? log->mutex() : nullptr;
}

LogFileHealth LogFileSet::health(LogManager::LogFileId id)
{
    renewIfInherited();
    const auto index = static_cast<size_t>(id);
    const bool isWatched = index < m_watches.size() && m_watches[index] != nullptr;
    return isWatched ? m_watches[index]->health() : LogFileHealth();
}

bool LogFileSet::isHealthy() const
{
    return std::all_of(m_watches.begin(), m_watches.end(),
                       [](const auto& watch) { return watch == nullptr || watch->isHealthy(); });
}

QString LogFileSet::totalContent(LogManager::LogFileId id)
{
    const RotatingLogFile* log = file(id);
    return log != nullptr ? log->totalContent(RotatingLogFile::OldestFirst) : QString();
}
