#pragma once

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

    /// Follows these from now on, and nothing else. A folder that cannot be read is waited for at
    /// the nearest one above it. True when something is followed that was not before: what happened
    /// to it since it was looked at is not known, so look again.
    bool follow(const QString& folder, bool isReadable, const QStringList& files);
    void stop();

Q_SIGNALS:
    void changed();

private:
    QFileSystemWatcher m_watcher;
    QSet<QString> m_changedFiles; // since the last follow()
};

} // namespace tools::datamodel
