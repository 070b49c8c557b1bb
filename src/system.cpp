#include "system.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include <zeltools/platform.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <unistd.h>

namespace
{

// Empty when the data is on the storage, or where there is no storage behind the descriptor (a
// pipe,
// "/dev/null").
QString forceToStorage(int fileDescriptor)
{
    if constexpr (platform::isBoard) {
        if (::fsync(fileDescriptor) != 0 && errno != EINVAL)
            return qt_error_string();
    }
    return {};
}

void syncOpenFile(QFile& file)
{
    // What QFile itself holds back is not yet behind the handle.
    const QString error = file.flush() ? forceToStorage(file.handle()) : file.errorString();
    if (!error.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void System::syncFile(QFile&)"
            << "Failed to sync" << file.fileName() << error;
}

} // namespace

System::FileSystemSyncer::~FileSystemSyncer()
{
    syncFileSystem();
}

void System::syncFile(QFile& file)
{
    if (file.isOpen()) {
        syncOpenFile(file);
        return;
    }
    if (!file.open(QIODevice::ReadWrite)) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void System::syncFile(QFile&)"
            << "Failed to open file" << file.fileName() << "for sync";
        return;
    }
    syncOpenFile(file);
    file.close();
}

void System::syncFile(const QString& path)
{
    QFile file(path);
    syncFile(file);
}

void System::syncFile(int fileDescriptor)
{
    const QString error = forceToStorage(fileDescriptor);
    if (!error.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void System::syncFile(int)"
            << "Failed to sync descriptor" << fileDescriptor << error;
}

void System::syncFileSystem()
{
    if constexpr (platform::isBoard)
        ::sync();
}

void System::clearRAMmemory()
{
    if constexpr (platform::isBoard) {
        ::sync(); // only clean pages can be dropped
        QFile dropCaches(QStringLiteral("/proc/sys/vm/drop_caches"));
        if (dropCaches.open(QIODevice::WriteOnly))
            dropCaches.write("1"); // the page cache alone
    }
}

bool System::fileExists(const QString& path)
{
    return QFileInfo(path).isFile();
}

bool System::folderExists(const QString& path)
{
    return QFileInfo(path).isDir();
}

bool System::filenameAlreadyExists(const QString& fileName, const QString& folder)
{
    return fileExists(folder + QDir::separator() + fileName);
}
