#include "crashreports/crashfile_p.h"

#include "crashreports/bootid_p.h"
#include "crashreports/crashhandler_p.h"
#include "crashreports/crashreportwriter.h"
#include "filedescriptor.h"
#include "libraryversion.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <limits.h>
#include <pthread.h>
#include <sys/file.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

// Plain memory, since Qt may have gone when the library is unloaded.
char s_path[PATH_MAX];
int s_file = -1;

void writeHeader(int file, qint64 started_ms)
{
    const auto line = [](CrashReportWriter& writer, const char* key, const QString& value) {
        writer.text(key).text(" ").text(value.toUtf8().constData()).endLine();
    };
    CrashReportWriter writer(file);
    writer.text("ZelTools crash report 1").endLine();
    writer.beginHeading().text("process").endHeading();
    writer.text("pid ").number(getpid()).endLine();
    line(writer, "program", QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    line(writer, "library", libraryVersion().toString());
    line(writer, "application", QCoreApplication::applicationVersion());
    line(writer, "boot", bootId());
    writer.text("started ").number(started_ms).endLine();
}

// A full disk later takes nothing from the report. A file system that cannot do that does no harm.
void reserveSpace(int file)
{
    constexpr off_t size_B = off_t(512) * 1024;
    const int result = fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size_B);
    Q_UNUSED(result)
}

void forceToStorage(int file, const QString& folder)
{
    fsync(file);
    const FileDescriptor directory(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    fsync(directory);
}

// Static objects of the program are destroyed before this function runs.
[[gnu::destructor]] void closeAtEnd()
{
    CrashFile::close();
}

} // namespace

// The file gets its name when it is locked, so that a start of another program in this folder never
// takes it for one that has been left behind.
int CrashFile::create(const QString& folder)
{
    const qint64 started_ms = QDateTime::currentMSecsSinceEpoch();
    const QString name = QStringLiteral("crash-%1-%2").arg(getpid()).arg(started_ms);
    const QByteArray hidden = QFile::encodeName(folder + QStringLiteral("/.%1.new").arg(name));
    const QByteArray path = QFile::encodeName(folder + QStringLiteral("/%1.open").arg(name));
    if (path.size() >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return -1;
    }
    const int file = ::open(hidden.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC,
                            S_IRUSR | S_IWUSR | S_IRGRP);
    if (file < 0)
        return -1;
    if (flock(file, LOCK_EX | LOCK_NB) != 0 ||
        std::rename(hidden.constData(), path.constData()) != 0) {
        const int error = errno;
        unlink(hidden.constData());
        ::close(file);
        errno = error;
        return -1;
    }
    writeHeader(file, started_ms);
    reserveSpace(file);
    forceToStorage(file, folder);
    std::copy(path.begin(), path.end() + 1, s_path);
    s_file = file;
    static const int isPrepared = pthread_atfork(nullptr, nullptr, forgetInChild);
    Q_UNUSED(isPrepared)
    return file;
}

void CrashFile::close()
{
    if (s_file >= 0)
        CrashHandler::waitForReport();
    CrashHandler::uninstall(); // in a forked child too, whose handlers are those of its parent
    if (s_file < 0)
        return;
    if (!CrashHandler::hasBegun())
        unlink(s_path);
    ::close(s_file);
    s_file = -1;
}

// The child must neither remove the file nor hold its lock.
void CrashFile::forgetInChild()
{
    CrashHandler::forgetInChild();
    if (s_file >= 0)
        ::close(s_file);
    s_file = -1;
}

} // namespace zeltools
