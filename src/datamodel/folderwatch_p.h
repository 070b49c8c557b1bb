#pragma once

#include "datamodel/folderlisting_p.h"

#include <QFileSystemWatcher>
#include <QSet>

namespace tools::datamodel
{

/// Tells that a folder or some of its files may have changed.
class FolderWatch : public QObject
{
    Q_OBJECT

public:
    FolderWatch();

    /// Follows what was listed from now on, and nothing else. A folder that cannot be read is
    /// waited for at the nearest one above it. True when something is followed that was not before:
    /// what happened to it since it was looked at is not known, so look again.
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
