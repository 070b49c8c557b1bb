#include "system.h"

#include "machine.h"
#include "storage_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{

constexpr zeltools::Storage s_storage(platform::isBoard);

} // namespace

System::FileSystemSyncer::~FileSystemSyncer()
{
    syncFileSystem();
}

void System::syncFile(QFile& file)
{
    s_storage.sync(file);
}

void System::syncFile(const QString& path)
{
    QFile file(path);
    syncFile(file);
}

void System::syncFile(int fileDescriptor)
{
    s_storage.sync(fileDescriptor);
}

void System::syncFileSystem()
{
    s_storage.syncAll();
}

void System::clearRAMmemory()
{
    s_storage.dropPageCache(zeltools::Machine().dropCachesFile);
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
