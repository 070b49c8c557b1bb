#pragma once

#include <QFile>
#include <QString>
#include <QtGlobal>

#include <sys/statvfs.h>

namespace zeltools::quick
{

/// The size of the file system that contains a path, and how much of it a process may still write;
/// both are 0 if the path does not exist.
struct DiskSpace
{
    qint64 total_B = 0;
    qint64 available_B = 0;
};

inline DiskSpace diskSpace(const QString& path)
{
    struct statvfs disk = {};
    if (::statvfs(QFile::encodeName(path).constData(), &disk) != 0)
        return {};
    const auto block_B = static_cast<qint64>(disk.f_frsize);
    return {static_cast<qint64>(disk.f_blocks) * block_B,
            static_cast<qint64>(disk.f_bavail) * block_B};
}

} // namespace zeltools::quick
