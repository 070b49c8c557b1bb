#pragma once

#include "datamodel/folderlisting_p.h"

#include <QFileSystemWatcher>
#include <QSet>

namespace tools::datamodel
{

/// Watches a folder and some of its files, and emits a signal when they may have changed.
class FolderWatch : public QObject
{
    Q_OBJECT

public:
    FolderWatch();

    /// Watches the listed folder and files and nothing else. For a folder that cannot be read, it
    /// watches the nearest readable folder above it. Returns true if a new path is watched: the
    /// caller must list the folder again, since changes between the listing and this call are
    /// unknown.
    bool follow(const FolderListing& listing);
    void stop();

Q_SIGNALS:
    void changed();

private:
    QFileSystemWatcher m_watcher;
    FolderId m_folderId;
    QSet<QString> m_changedFiles; // since the last follow()
};

} // namespace tools::datamodel
