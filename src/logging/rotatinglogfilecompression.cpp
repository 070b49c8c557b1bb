// Compressed predecessors of a RotatingLogFile.

#include "logging/rotatinglogfile.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/renamefile_p.h"
#include "windowstools.h"

#include <QFileInfo>
#include <QThread>

#include <fcntl.h>

namespace
{

// The file whose own worker this thread is.
thread_local const RotatingLogFile* s_packedFile = nullptr;

QString quotedForShell(QString text)
{
    return text.replace(QLatin1Char('\''), QLatin1String("'\\''"));
}

// Of a file or a folder; a file system that can't sync a folder says EINVAL. In every build, since
// what is synced here is all that is left of the lines.
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

void RotatingLogFile::packPredecessor()
{
    const QString source = filename(1);
    if (m_isCompressing || m_size_B < m_nextPacking_B || !QFile::exists(source) || !file.hasName())
        return;
    m_isCompressing = true;
    m_compressor.start([this, source] {
        QThread::msleep(2UL * s_checkInterval_ms); // another writer may still append to P.1
        s_packedFile = this;
        compressFile(source, this);
        s_packedFile = nullptr;
    });
}

void RotatingLogFile::compressFile(const QString& source, RotatingLogFile* target)
{
    const QFileInfo info(source);
    const QString archive = target->filename(0) + QLatin1String(".1.tar.gz");
    const QString part = archive + QLatin1String(".part");
    const QString command = QStringLiteral("tar -C '%1' -zcvf '%2' '%3'")
                                .arg(quotedForShell(info.path()), quotedForShell(part),
                                     quotedForShell(info.fileName()));
    const auto publish = [&] {
        const QMutexLocker locker(target->mutex());
        return renameFile(part, archive);
    };
    QFile::remove(part); // left by a power cut
    if (WindowsTools::runCommands({command}) && forceToStorage(part) && publish() &&
        forceToStorage(QFileInfo(archive).path())) {
        Q_EMIT target->workCompleted(source);
        return;
    }
    QFile::remove(part); // the half that tar leaves on a full disk
    Q_EMIT target->workCompleted(QString());
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "static void RotatingLogFile::compressFile(const QString&, RotatingLogFile*)"
        << "Failed to compress " << source;
}

// The owner's compressions are completed in the thread of this object. The file's own are completed
// in their worker: the thread of this object may run no event loop, and in a queued call the source
// could be the next P.1 already.
void RotatingLogFile::completeWork(const QString& name)
{
    if (s_packedFile != this) {
        QMetaObject::invokeMethod(this, [this, name] { onWorkCompleted(name); });
        return;
    }
    onWorkCompleted(name);
    const QMutexLocker locker(&m_mutex);
    m_isCompressing = false;
    // What is still there is tried again when P has grown by its limit.
    m_nextPacking_B = QFile::exists(filename(1)) ? m_size_B + m_maximumSize_B : 0;
}

void RotatingLogFile::onWorkCompleted(const QString& name)
{
    if (!name.isEmpty() && !deleteFileByName(name)) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void RotatingLogFile::onWorkCompleted(const QString&)"
            << "Failed to delete file after compression" << name;
    }
}
