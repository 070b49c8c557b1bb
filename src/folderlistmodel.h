#pragma once

#include <zeltools/zeltools_export.h>

#include <QAbstractListModel>
#include <QExplicitlySharedDataPointer>
#include <QStringList>
#include <QVector>

#include <memory>

namespace tools::datamodel
{

struct FolderEntry;
struct FolderQuery;
struct RowChanges;
class FolderListing;
class FolderReader;

/// A model of the files and folders in one folder for QML, which follows changes on disk.
///
/// Another thread reads the folder, so that neither a large folder nor a disk that does not answer
/// blocks the caller or the end of the program. The event loop updates the rows. Changes on disk,
/// and of all properties except `folder`, insert, remove, move and change as few rows as possible,
/// so that a view keeps its position. docs/models.md lists the changes that the model detects.
///
/// Folders come first in every order. The model leaves out names that begin with ".", and, with a
/// Warning, names that QFile cannot convert back (in a UTF-8 locale, names that are not valid
/// UTF-8). Everything but folders and links to them counts as a file. A broken link has its own
/// time and no size. The model logs under Log::Datamodel.
///
/// A model belongs to one thread. Its properties may be set in any of its signals; use
/// deleteLater() to delete it there.
class ZELTOOLS_EXPORT FolderListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QString folder READ folder WRITE setFolder NOTIFY folderChanged)
    Q_PROPERTY(
        QStringList nameFilters READ nameFilters WRITE setNameFilters NOTIFY nameFiltersChanged)
    Q_PROPERTY(bool showFolders READ showFolders WRITE setShowFolders NOTIFY showFoldersChanged)
    Q_PROPERTY(bool showFiles READ showFiles WRITE setShowFiles NOTIFY showFilesChanged)
    Q_PROPERTY(SortField sortField READ sortField WRITE setSortField NOTIFY sortFieldChanged)
    Q_PROPERTY(bool sortReversed READ sortReversed WRITE setSortReversed NOTIFY sortReversedChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)

public:
    /// The roles `name`, `path`, `baseName`, `suffix`, `size`, `modified` and `isFolder` of QML.
    enum Role {
        NameRole = Qt::UserRole, ///< The same as the display role.
        PathRole,
        BaseNameRole, ///< The name up to its last "."; the whole name for a folder.
        SuffixRole,   ///< The name after its last ".".
        SizeRole,     ///< The size in bytes; 0 for a folder.
        ModifiedRole, ///< QDateTime
        IsFolderRole
    };
    /// The order of the rows. Names are compared without regard to case; equal entries are sorted
    /// by name.
    enum SortField { SortByName, SortByTime, SortBySize, SortBySuffix };
    Q_ENUM(SortField)
    /// The state of the list.
    enum Status {
        NoFolder,  ///< No folder is set.
        Listing,   ///< The folder is being read for the first time.
        Ready,     ///< The rows are there, and the model follows changes.
        Unreadable ///< The folder does not exist, is not a folder or may not be read; the model
                   ///< fills when that changes.
    };
    Q_ENUM(Status)

    explicit FolderListModel(QObject* parent = nullptr);
    /// Does not wait for a running listing.
    ~FolderListModel() override;

    /// The folder as an absolute path, like the members of Path; empty for none. The setter also
    /// accepts a path relative to the current folder and a local URL ("file:///media/usb"), to
    /// which QML converts a `url`. Each ".." stays in the path, since only the kernel can resolve
    /// it after a symbolic link. The rows of the old folder are removed immediately.
    QString folder() const;
    void setFolder(const QString& folder);
    /// Patterns ("*.log", "m[0-9].txt") for the names of files, of which one must match without
    /// regard to case. An empty list accepts all files, and an invalid pattern ("[a") matches none.
    /// Folders are not filtered.
    QStringList nameFilters() const;
    void setNameFilters(const QStringList& filters);
    /// Whether folders are rows.
    bool showFolders() const;
    void setShowFolders(bool on);
    /// Whether files are rows.
    bool showFiles() const;
    void setShowFiles(bool on);
    /// The property by which the rows are sorted.
    SortField sortField() const;
    void setSortField(SortField field);
    /// Whether the order is reversed.
    bool sortReversed() const;
    void setSortReversed(bool on);

    /// The number of rows.
    int count() const { return m_rows.size(); }
    /// Whether the rows are those of the folder.
    Status status() const { return m_status; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

public Q_SLOTS:
    /// Lists the folder again soon, for changes that the model cannot detect.
    void refresh();

Q_SIGNALS:
    void folderChanged();
    void nameFiltersChanged();
    void showFoldersChanged();
    void showFilesChanged();
    void sortFieldChanged();
    void sortReversedChanged();
    void countChanged();
    void statusChanged();

private:
    using Rows = QVector<QExplicitlySharedDataPointer<const FolderEntry>>;

    template <typename Value, typename Signal>
    void change(Value FolderQuery::*member, const Value& value, Signal signal);
    void apply(const FolderListing& listing);
    void applyMoves(const RowChanges& changes);
    void finish(const FolderListing& listing);
    void logProblems(const FolderListing& listing);
    void setStatus(Status status);
    void clearRows();

    Rows m_rows;
    const std::unique_ptr<FolderReader> m_reader;
    QString m_prefix; // of the paths of the rows
    Status m_status = NoFolder;
    int m_undecodableNames = 0;
};

} // namespace tools::datamodel
