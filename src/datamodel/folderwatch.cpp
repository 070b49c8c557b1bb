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
    // Something is mounted there now, or the folder has another name: the watch is on that one.
    const bool isOther = std::exchange(m_folderId, listing.folderId()) != listing.folderId();
    QSet<QString> outdated;
    for (const QString& path : m_watcher.files() + m_watcher.directories()) {
        // A file that was replaced under its name is another one now; the watch is on the old one
        // for as long as somebody has it open.
        if (isOther || !wanted.contains(path) || m_changedFiles.contains(path))
            outdated.insert(path);
        else
            wanted.remove(path);
    }
    m_changedFiles.clear();
    if (!outdated.isEmpty())
        m_watcher.removePaths(outdated.values());
    // Of those that cannot be followed no change is known either.
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
