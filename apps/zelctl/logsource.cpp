#include "logsource.h"

#include "command.h"
#include "words.h"
#include <zeltools/samefile.h>

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <unistd.h>

namespace
{

QString cannotRead(const QString& path, const QString& reason)
{
    return Zelctl::tr("cannot read %1: %2").arg(path, reason);
}

bool isNewer(const timespec& time, const timespec& than)
{
    return std::make_pair(time.tv_sec, time.tv_nsec) > std::make_pair(than.tv_sec, than.tv_nsec);
}

bool isOpenFile(const struct stat& status, const OpenLog& log)
{
    struct stat mine = {};
    return fstat(log.descriptor, &mine) == 0 && zeltools::isSameFile(status, mine);
}

/// How many bytes are behind those that were read; negative if the file has become shorter.
qint64 unread_B(const OpenLog& log)
{
    struct stat status = {};
    return fstat(log.descriptor, &status) == 0 ? status.st_size - lseek(log.descriptor, 0, SEEK_CUR)
                                               : 0;
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

void LogSource::open()
{
    keepError(openLogs(m_series, m_logs));
    startArchive();
}

void LogSource::openAtEnd()
{
    keepError(openLogs(m_series, m_logs));
    m_index = m_logs.empty() ? 0 : m_logs.size() - 1;
    if (!m_logs.empty())
        lseek(m_logs[m_index].descriptor, 0, SEEK_END);
}

const OpenLog* LogSource::current() const
{
    return m_index < m_logs.size() ? &m_logs[m_index] : nullptr;
}

bool LogSource::isAtEnd() const
{
    struct stat live = {};
    if (stat(QFile::encodeName(m_series.path).constData(), &live) != 0)
        return true;
    const OpenLog* const log = current();
    return log != nullptr && isOpenFile(live, *log) && unread_B(*log) == 0;
}

QString LogSource::path() const
{
    const OpenLog* const log = current();
    return log != nullptr ? log->path : m_series.path;
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
        if (count <= 0 && !m_archive->error().isEmpty())
            keepError(cannotRead(path(), m_archive->error()));
        return std::max<qint64>(count, 0);
    }
    ssize_t count = -1;
    do {
        count = ::read(log->descriptor, to, size_t(size));
    } while (count < 0 && errno == EINTR);
    if (count < 0)
        keepError(cannotRead(path(), systemError()));
    return std::max<ssize_t>(count, 0);
}

void LogSource::keepError(const QString& error)
{
    if (m_error.isEmpty())
        m_error = error;
}

bool LogSource::openNext()
{
    if (m_index + 1 >= m_logs.size())
        return false;
    ++m_index;
    startArchive();
    return true;
}

// A second writer of the machine appends to the old file until it has noticed the rotation. Those
// lines are read whenever they come, before the next ones of the new file.
bool LogSource::openSuccessors()
{
    struct stat live = {};
    if (stat(QFile::encodeName(m_series.path).constData(), &live) != 0)
        return false; // there is none between two steps of a rotation
    const OpenLog last = m_index < m_logs.size() ? m_logs[m_index] : OpenLog();
    if (isOpenFile(live, last)) {
        if (unread_B(last) < 0)
            lseek(last.descriptor, 0, SEEK_SET); // it was truncated
        return unread_B(m_former) > 0 && startWith({m_former, last});
    }
    std::vector<OpenLog> logs;
    keepError(openLogs(m_series, logs));
    keepSuccessors(logs, last);
    if (!logs.empty() && last.descriptor >= 0 && !last.isArchive) {
        m_former = last;
        logs.insert(logs.begin(), last);
    }
    return startWith(logs);
}

bool LogSource::startWith(const std::vector<OpenLog>& logs)
{
    if (logs.empty())
        return false;
    m_logs = logs;
    m_index = 0;
    startArchive();
    return true;
}
