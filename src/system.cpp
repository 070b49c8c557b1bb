#include "system.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include <zeltools/platform.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

System::FileSystemSyncer::~FileSystemSyncer()
{
    syncFileSystem();
}

void System::syncFile(QFile& file)
{
    if (file.isOpen()) {
        file.flush(); // what QFile itself holds back is not yet behind the handle
        syncFile(file.handle());
        return;
    }
    if (!file.open(QIODevice::ReadWrite)) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void System::syncFile(QFile&)"
            << "Failed to open file" << file.fileName() << "for sync";
        return;
    }
    syncFile(file.handle());
    file.close();
}

void System::syncFile(const QString& path)
{
    QFile file(path);
    syncFile(file);
}

void System::syncFile(int fileDescriptor)
{
    if constexpr (platform::isBoard)
        ::fsync(fileDescriptor);
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
