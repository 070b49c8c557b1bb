#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>
#include <QStringList>

class QFile;

/// Checks files and folders, and forces data from memory to storage. The sync functions work on the
/// board only, where the power may fail at any moment, and block until the data is on the storage.
/// All functions may be called from any thread.
class ZELTOOLS_EXPORT System
{
public:
    System() = delete;

    /// Calls syncFileSystem() at the end of a scope.
    class ZELTOOLS_EXPORT FileSystemSyncer
    {
    public:
        FileSystemSyncer() = default;
        /// Calls syncFileSystem().
        ~FileSystemSyncer();
        Q_DISABLE_COPY(FileSystemSyncer)
    };

    /// A program and its arguments, as QProcess takes them.
    struct Command
    {
        QString program;       ///< A name, which is looked up in PATH, or a path.
        QStringList arguments; ///< One element for each argument; no shell splits them.

        bool operator==(const Command& other) const
        {
            return program == other.program && arguments == other.arguments;
        }
    };

    /// Forces the written data of the file to storage. An open file stays open. A closed file is
    /// opened read-write for the sync, which creates a missing file. A file that cannot be opened
    /// or synced is an Error line.
    static void syncFile(QFile& file);
    static void syncFile(const QString& path);
    static void syncFile(int fileDescriptor);
    /// Forces the data of all file systems to storage.
    static void syncFileSystem();
    /// Syncs all file systems, then drops the page cache of the kernel. Without root privileges the
    /// second step is silently skipped.
    static void clearRAMmemory();

    /// Whether the path exists and is a file or a folder, respectively; links are followed.
    static bool fileExists(const QString& path);
    /// Whether the path is an existing folder; links are followed.
    static bool folderExists(const QString& path);
    /// Whether the folder has a file of this name, as fileExists() sees it.
    static bool filenameAlreadyExists(const QString& fileName, const QString& folder);
};
