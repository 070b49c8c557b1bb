#include "datamodel/folderwatch_p.h"

#include <QFileInfo>

#include <utility>

namespace tools::datamodel
{

namespace
{

QString nearestReadableAbove(QString folder)
{
    QFileInfo info;
    do {
        folder = QFileInfo(folder).path();
        info.setFile(folder);
    } while (!info.isRoot() && !(info.isDir() && info.isReadable()));
    return folder;
}

} // namespace

FolderWatch::FolderWatch()
{
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FolderWatch::changed);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this](const QString& file) {
        m_changedFiles.insert(file);
        Q_EMIT changed();
    });
}

bool FolderWatch::follow(const FolderListing& listing)
{
    const QString& folder = listing.query().folder;
    const QStringList& files = listing.filesToFollow();
    QSet<QString> wanted(files.cbegin(), files.cend());
    wanted.insert(listing.isReadable() ? folder : nearestReadableAbove(folder));
    // After a mount or a rename the watches belong to the folder that had this path before.
    const bool isOther = std::exchange(m_folderId, listing.folderId()) != listing.folderId();
    QSet<QString> outdated;
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    for (const QString& path : watched) {
        // If another file has got this name, the watch stays with the old file as long as a process
        // has it open.
        if (isOther || !wanted.contains(path) || m_changedFiles.contains(path))
            outdated.insert(path);
        else
            wanted.remove(path);
    }
    m_changedFiles.clear();
    if (!outdated.isEmpty())
        m_watcher.removePaths(outdated.values());
    // Paths that cannot be watched count as not followed.
    return !wanted.isEmpty() && m_watcher.addPaths(wanted.values()).size() < wanted.size();
}

void FolderWatch::stop()
{
    const QStringList paths = m_watcher.files() + m_watcher.directories();
    if (!paths.isEmpty())
        m_watcher.removePaths(paths);
    m_changedFiles.clear();
}

} // namespace tools::datamodel
