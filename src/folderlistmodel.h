#pragma once

#include <zeltools/zeltools_export.h>

#include <QAbstractListModel>
#include <QExplicitlySharedDataPointer>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <memory>

namespace tools::datamodel
{

struct FolderEntry;
struct FolderQuery;
struct RowChanges;
class FolderListing;
class FolderWatch;

/// The files and folders of one folder, for QML, kept up to date.
///
/// The folder is read by another thread, so that neither a large folder nor a disk that does not
/// answer holds up the caller or the end of the program; the rows follow in the event loop. Changes
/// on disk, and of the properties below `folder`, become the fewest inserted, removed, moved and
/// changed rows, so that a view keeps its place. See docs/models.md for what is followed.
///
/// Folders come first, in any order. Names that begin with "." are left out, and so are names that
/// QFile cannot lead back to their file (those that are not valid UTF-8, in a UTF-8 locale), with a
/// Warning. What is neither a folder nor a link to one counts as a file; a link that leads nowhere
/// has the time of the link and no size. Logged under Log::Datamodel.
///
/// Belongs to one thread. Its properties may be set in any of its signals; delete it later there.
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
    /// In QML `name`, `path`, `baseName`, `suffix`, `size`, `modified` and `isFolder`.
    enum Role {
        NameRole = Qt::UserRole, ///< the display role gives the same
        PathRole,
        BaseNameRole, ///< what is before the last "." of the name; all of it for a folder
        SuffixRole,   ///< what is behind it
        SizeRole,     ///< in bytes; 0 for a folder
        ModifiedRole, ///< QDateTime
        IsFolderRole
    };
    /// Names are compared without regard to case; what is otherwise equal is in their order.
    enum SortField { SortByName, SortByTime, SortBySize, SortBySuffix };
    Q_ENUM(SortField)
    enum Status {
        NoFolder,  ///< none is set
        Listing,   ///< it is being read for the first time
        Ready,     ///< and is followed
        Unreadable ///< does not exist, is no folder or may not be read; followed, too
    };
    Q_ENUM(Status)

    explicit FolderListModel(QObject* parent = nullptr);
    /// Does not wait for a listing that is under way.
    ~FolderListModel() override;

    /// An absolute path, as the members of Path are: what is set may be relative to the current
    /// folder, or a local URL ("file:///media/usb"), as QML makes of a `url`. Empty for none. Each
    /// ".." stays in the path, since behind a symbolic link only the kernel knows where it leads.
    /// The rows of the old folder are gone at once.
    QString folder() const;
    void setFolder(const QString& folder);
    /// Patterns ("*.log", "m[0-9].txt") for the names of files, one of which must match, in any
    /// case of letters; none lets all through, one that is not valid ("[a") nothing. Folders are
    /// not filtered.
    QStringList nameFilters() const;
    void setNameFilters(const QStringList& filters);
    bool showFolders() const;
    void setShowFolders(bool on);
    bool showFiles() const;
    void setShowFiles(bool on);
    SortField sortField() const;
    void setSortField(SortField field);
    bool sortReversed() const;
    void setSortReversed(bool on);

    int count() const { return m_rows.size(); }
    Status status() const { return m_status; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

public Q_SLOTS:
    /// Looks again, soon: for what cannot be followed.
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
    void change(Value& member, const Value& value, Signal signal);
    void schedule(int delay_ms);
    void list();
    void finish(int serial);
    void logProblems(const FolderListing& listing);
    void setStatus(Status status);
    void apply(const FolderListing& listing);
    void applyMoves(const RowChanges& changes);
    void clearRows();

    const std::unique_ptr<FolderQuery> m_query;
    const std::unique_ptr<FolderWatch> m_watch;
    std::shared_ptr<FolderListing> m_listing; // under way
    int m_serial = 0;                         // of that listing, or of the one that comes next
    Rows m_rows;
    QString m_prefix; // of the paths of the rows
    Status m_status = NoFolder;
    QTimer m_timer{this};
    int m_pause_ms = 0; // between two listings
    int m_unspeakableNames = 0;
    bool m_isStale = false;    // a listing was asked for while none could begin
    bool m_isApplying = false; // rows are being changed
};

} // namespace tools::datamodel
