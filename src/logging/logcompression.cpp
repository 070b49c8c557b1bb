#include "logging/logcompression_p.h"

#include "logging/primarywriter_p.h"
#include "logging/renamefile_p.h"
#include "logging/rotatinglogfile.h"
#include "windowstools.h"

#include <QFileInfo>
#include <QThread>

#include <fcntl.h>

namespace
{

// The compression that runs in this thread.
thread_local const LogCompression* s_running = nullptr;

QString quotedForShell(QString text)
{
    return text.replace(QLatin1Char('\''), QLatin1String("'\\''"));
}

// Syncs a file or a folder. A file system that cannot sync a folder sets EINVAL. This is done in
// every build, since the synced file is the only copy of the lines afterwards.
bool forceToStorage(const QString& path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool isDone = fsync(descriptor) == 0 || errno == EINVAL;
    ::close(descriptor);
    return isDone;
}

} // namespace

LogCompression::LogCompression(RotatingLogFile* log)
    : m_log(log)
{
}

bool LogCompression::mayReplacePredecessor(qint64 size_B, qint64 total_B) const
{
    if (m_isRunning)
        return false;
    const bool hasFailed = m_nextAttempt_B > 0;
    return !QFile::exists(m_log->filename(1)) || (hasFailed && size_B > total_B);
}

void LogCompression::start(qint64 size_B)
{
    const QString source = m_log->filename(1);
    if (m_isRunning || size_B < m_nextAttempt_B || !QFile::exists(source) || !m_log->file.hasName())
        return;
    m_isRunning = true;
    if (!m_worker) {
        m_worker = std::make_unique<QThreadPool>();
        m_worker->setMaxThreadCount(1);
    }
    m_worker->start([this, source] {
        // Another writer may append to P.1 until its next check.
        QThread::msleep(2UL * PrimaryWriter::checkInterval_ms);
        s_running = this;
        RotatingLogFile::compressFile(source, m_log);
        s_running = nullptr;
    });
}

void LogCompression::end(qint64 retry_B)
{
    m_isRunning = false;
    m_nextAttempt_B = QFile::exists(m_log->filename(1)) ? retry_B : 0;
}

void LogCompression::wait()
{
    if (m_worker)
        m_worker->waitForDone();
}

bool LogCompression::isInWorker() const
{
    return s_running == this;
}

bool LogCompression::pack(const QString& source, const QString& archive, const RotatingLogFile& log)
{
    const QFileInfo info(source);
    const QString part = archive + QLatin1String(".part");
    const QString command = QStringLiteral("tar -C '%1' -zcvf '%2' '%3'")
                                .arg(quotedForShell(info.path()), quotedForShell(part),
                                     quotedForShell(info.fileName()));
    const auto publish = [&] {
        const QMutexLocker locker(log.mutex());
        return renameFile(part, archive);
    };
    QFile::remove(part); // left by a power cut
    if (WindowsTools::runCommands({command}) && forceToStorage(part) && publish() &&
        forceToStorage(QFileInfo(archive).path()))
        return true;
    QFile::remove(part); // left by tar on a full disk
    return false;
}
