#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>
#include <QStringList>

class QFile;

/// Checks of the file system, and writing out what the kernel still keeps in memory. The syncs work
/// on the board only, where the supply may fail at any moment, and block until the data is on the
/// storage. Safe to call from any thread.
class ZELTOOLS_EXPORT System
{
public:
    System() = delete;

    /// Calls syncFileSystem() at the end of a scope.
    class ZELTOOLS_EXPORT FileSystemSyncer
    {
    public:
        FileSystemSyncer() = default;
        ~FileSystemSyncer();
        Q_DISABLE_COPY(FileSystemSyncer)
    };

    /// A program and its arguments, as QProcess takes them.
    struct Command
    {
        QString program;
        QStringList arguments;

        bool operator==(const Command& other) const
        {
            return program == other.program && arguments == other.arguments;
        }
    };

    /// Forces what was written to the file to storage. An open file stays open; one that is not is
    /// opened read-write for the purpose, which creates a missing file. A file that cannot be
    /// opened, and data that does not reach the storage, is an Error line.
    static void syncFile(QFile& file);
    static void syncFile(const QString& path);
    static void syncFile(int fileDescriptor);
    static void syncFileSystem();
    /// Writes out all file systems, then drops the kernel's page cache. The drop needs root and is
    /// left out silently without.
    static void clearRAMmemory();

    /// Whether the path, links followed, is a file or a folder.
    static bool fileExists(const QString& path);
    static bool folderExists(const QString& path);
    static bool filenameAlreadyExists(const QString& fileName, const QString& folder);
};
