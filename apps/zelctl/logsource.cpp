#include "logsource.h"

#include "command.h"
#include <zeltools/samefile.h>

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <unistd.h>

namespace
{

bool isNewer(const timespec& time, const timespec& than)
{
    return std::make_pair(time.tv_sec, time.tv_nsec) > std::make_pair(than.tv_sec, than.tv_nsec);
}

/// Keeps the logs that came after the given one. When that no longer has a name, they are those
/// that were changed after it, since all its predecessors were complete before it.
void keepSuccessors(std::vector<OpenLog>& logs, const OpenLog& log)
{
    struct stat last = {};
    fstat(log.descriptor, &last);
    const auto self = std::find_if(logs.begin(), logs.end(), [&last](const OpenLog& other) {
        return zeltools::isSameFile(other.status, last);
    });
    if (self != logs.end()) {
        logs.erase(logs.begin(), self + 1);
        return;
    }
    const auto isRead = [&last](const OpenLog& other) {
        return other.isArchive ||
               (other.number > 0 && !isNewer(other.status.st_mtim, last.st_mtim));
    };
    logs.erase(std::remove_if(logs.begin(), logs.end(), isRead), logs.end());
}

} // namespace

LogSource::LogSource(const LogSeries& series)
    : m_series(series)
{
}

QString LogSource::open()
{
    QString obstacle = openLogs(m_series, m_logs);
    startArchive();
    return obstacle;
}

QString LogSource::openAtEnd()
{
    QString obstacle = openLogs(m_series, m_logs);
    m_index = m_logs.empty() ? 0 : m_logs.size() - 1;
    if (!m_logs.empty())
        lseek(m_logs[m_index].descriptor, 0, SEEK_END);
    return obstacle;
}

const OpenLog* LogSource::current() const
{
    return m_index < m_logs.size() ? &m_logs[m_index] : nullptr;
}

bool LogSource::isAtEnd() const
{
    struct stat live = {};
    struct stat mine = {};
    const bool exists = stat(QFile::encodeName(m_series.path).constData(), &live) == 0;
    if (!exists)
        return true;
    return current() != nullptr && fstat(current()->descriptor, &mine) == 0 &&
           zeltools::isSameFile(live, mine) &&
           lseek(current()->descriptor, 0, SEEK_CUR) == live.st_size;
}

QString LogSource::path() const
{
    return current() != nullptr ? current()->path : m_series.path;
}

void LogSource::startArchive()
{
    m_archive.reset();
    const OpenLog* const log = current();
    if (log != nullptr && log->isArchive)
        m_archive = std::make_unique<LogArchive>(log->descriptor);
}

qint64 LogSource::read(char* to, qint64 size)
{
    const OpenLog* const log = current();
    if (log == nullptr)
        return 0;
    if (m_archive) {
        const qint64 count = m_archive->read(to, size);
        if (count <= 0)
            keepError(m_archive->error());
        return std::max<qint64>(count, 0);
    }
    ssize_t count = -1;
    do {
        count = ::read(log->descriptor, to, size_t(size));
    } while (count < 0 && errno == EINTR);
    if (count < 0)
        keepError(systemError());
    return std::max<ssize_t>(count, 0);
}

void LogSource::keepError(const QString& reason)
{
    if (m_error.isEmpty() && !reason.isEmpty())
        m_error = QStringLiteral("cannot read %1: %2").arg(path(), reason);
}

bool LogSource::openNext()
{
    if (m_index + 1 >= m_logs.size())
        return false;
    ++m_index;
    startArchive();
    return true;
}

// A second writer of the machine may append to the old file until it has noticed the rotation. So
// the old file is read once more, a tenth of a second later, before it is left.
bool LogSource::openSuccessors()
{
    struct stat live = {};
    struct stat mine = {};
    const OpenLog* const log = current();
    if (stat(QFile::encodeName(m_series.path).constData(), &live) != 0)
        return false; // there is none between two steps of a rotation
    if (log != nullptr && fstat(log->descriptor, &mine) == 0 && zeltools::isSameFile(live, mine)) {
        if (live.st_size < lseek(log->descriptor, 0, SEEK_CUR))
            lseek(log->descriptor, 0, SEEK_SET); // it was truncated
        return false;
    }
    if (!std::exchange(m_isReplaced, true) && log != nullptr)
        return false;
    std::vector<OpenLog> logs;
    const QString obstacle = openLogs(m_series, logs);
    keepError(obstacle);
    if (!obstacle.isEmpty())
        return false;
    if (log != nullptr)
        keepSuccessors(logs, *log);
    m_isReplaced = false;
    if (logs.empty())
        return false;
    m_logs = logs;
    m_index = 0;
    startArchive();
    return true;
}
