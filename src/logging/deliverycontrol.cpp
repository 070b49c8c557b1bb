#include "logging/deliverycontrol_p.h"

#include "logging/log.h"
#include "logging/logbuffer_p.h"
#include "logging/logmanager.h"
#include "logging/ringrecovery_p.h"

#include <QFileInfo>

#include <algorithm>

#include <linux/magic.h>
#include <sys/vfs.h>

namespace
{

constexpr std::chrono::seconds s_endPatience{2};

bool isMemoryBacked(const QString& folder)
{
    struct statfs system;
    if (statfs(QFile::encodeName(folder).constData(), &system) != 0)
        return false;
    const auto type = quint32(system.f_type); // Its sign and size depend on the processor.
    return type == TMPFS_MAGIC || type == RAMFS_MAGIC;
}

void warn(const char* text, const QString& reason)
{
    // LogNode may not be connected yet.
    LogManager::instance()->log(LogLevel::Warning, Log::Global,
                                QLatin1String(text) + QLatin1Char(' ') + reason);
}

void tell(const QStringList& problems)
{
    for (const QString& problem : problems)
        warn("A ring of log lines cannot be recovered:", problem);
}

} // namespace

DeliveryControl::DeliveryControl(LogFileSet& files, SinkList& sinks)
    : m_files(files)
    , m_sinks(sinks)
{
}

bool DeliveryControl::set(const LogDelivery& delivery)
{
    const bool hasNewFolder = delivery.ringFolder != m_delivery.ringFolder;
    m_delivery = delivery;
    m_files.setSyncDelays(delivery.syncInterval, delivery.urgentSyncDelay);
    if (m_files.file(LogManager::General) == nullptr)
        return true;
    if (hasNewFolder)
        tell(ringrecovery::recover(m_debugFolder, ringFolders(), m_sinks, &m_files).problems);
    return begin();
}

void DeliveryControl::openFiles(const LogFileSet::Settings& settings)
{
    m_debugFolder = QFileInfo(settings[LogManager::General].path).path();
    QStringList problems;
    if (m_files.file(LogManager::General) == nullptr) // otherwise everything is recovered already
        problems = ringrecovery::recover(m_debugFolder, ringFolders(), m_sinks).problems;
    if (LogBuffer* const buffer = LogBuffer::current())
        buffer->flush(s_endPatience);
    m_files.open(settings);
    tell(problems);
    begin();
}

void DeliveryControl::closeFiles()
{
    if (LogBuffer::stop(s_endPatience))
        m_files.close();
}

bool DeliveryControl::begin()
{
    LogBuffer* const buffer = LogBuffer::current();
    if (!isBufferedWanted()) {
        LogBuffer::stop(s_endPatience);
        return true;
    }
    if (buffer != nullptr) {
        buffer->places().describeSet();
        return true;
    }
    QString error;
    if (LogBuffer::start(m_delivery, ringFolders(), m_files, m_sinks, error))
        return true;
    warn("Buffered delivery of log lines is impossible, they are written immediately:", error);
    return false;
}

// Where there is no memory-backed folder, the ring is a plain file, which survives the end of the
// process as well.
QStringList DeliveryControl::ringFolders() const
{
    if (!m_delivery.ringFolder.isEmpty())
        return {m_delivery.ringFolder};
    QStringList folders = ringrecovery::memoryFolders();
    const auto end = std::remove_if(folders.begin(), folders.end(),
                                    [](const QString& folder) { return !isMemoryBacked(folder); });
    folders.erase(end, folders.end());
    return folders.isEmpty() ? QStringList(m_debugFolder) : folders;
}

bool DeliveryControl::isBufferedWanted() const
{
    const QByteArray variable = qgetenv("LOG_DELIVERY");
    if (variable == "buffered" || variable == "immediate")
        return variable == "buffered";
    return m_delivery.mode == LogDelivery::Buffered;
}
