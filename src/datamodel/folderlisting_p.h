#pragma once

#include "datamodel/rowchanges_p.h"
#include "folderlistmodel.h"

#include <QMutex>
#include <QPair>
#include <QRegularExpression>
#include <QSet>

#include <atomic>

#include <sys/types.h>

namespace tools::datamodel
{

struct FolderQuery
{
    QString folder;
    QStringList nameFilters;
    bool showFolders = true;
    bool showFiles = true;
    FolderListModel::SortField sortField = FolderListModel::SortByName;
    bool sortReversed = false;
};

using FolderId = QPair<dev_t, ino_t>;

/// Reads a folder once, in any thread, and finds the changes that lead from the previous rows to
/// the new ones.
class FolderListing : public QObject
{
    Q_OBJECT

public:
    /// Older kernels have 8192 watches for all programs.
    static constexpr int maximumFilesToFollow = 256;

    FolderListing(int serial, FolderQuery query, FolderRows before);

    void run();
    /// Lets run() end early, with incomplete results. Any thread may call it.
    void cancel() { m_isCanceled = true; }
    /// Cancels the listing and disconnects all receivers. The function waits until a running
    /// emission has returned: Qt leaks memory if the receiver is deleted during it.
    void abandon();
    bool isCanceled() const { return m_isCanceled; }

    const FolderQuery& query() const { return m_query; }
    // The results, which are valid after finished():
    bool isReadable() const { return m_error == 0; }
    int error() const { return m_error; } ///< errno
    /// The folder to which the path led.
    FolderId folderId() const { return m_folderId; }
    int undecodableNames() const { return m_undecodableNames; }
    int duration_ms() const { return m_duration_ms; }
    const FolderRows& rows() const { return m_rows; }
    const RowChanges& changes() const { return m_changes; }
    /// The readable files; none if there are more than maximumFilesToFollow.
    const QStringList& filesToFollow() const { return m_filesToFollow; }

Q_SIGNALS:
    void finished(int serial);

private:
    void list();
    void compileFilters();
    void read();
    void addEntry(int folder, const char* name, unsigned char type);
    bool matches(const QString& name) const;
    void chooseFilesToFollow();
    bool isBefore(const FolderEntry& left, const FolderEntry& right) const;

    const int m_serial;
    const FolderQuery m_query;
    const FolderRows m_before;
    std::atomic<bool> m_isCanceled{false};
    QMutex m_finishMutex;
    QVector<QRegularExpression> m_filters;
    FolderId m_folderId;
    int m_error = 0;
    int m_undecodableNames = 0;
    int m_duration_ms = 0;
    QSet<QString> m_names; // of the rows
    FolderRows m_rows;
    RowChanges m_changes;
    QStringList m_filesToFollow;
};

} // namespace tools::datamodel
