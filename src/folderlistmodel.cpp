#include "folderlistmodel.h"

#include "datamodel/folderlisting_p.h"
#include "datamodel/folderwatch_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QThreadPool>
#include <QUrl>

namespace tools::datamodel
{

namespace
{

constexpr int s_shortestPause_ms = 100; // what happens in that time is read at once
constexpr int s_mostReaders = 16;       // more than there are disks that hang
constexpr int s_longestEnd_ms = 1000;

// For what hangs: the threads of the application are left to others, and it waits for them when it
// ends, as a pool does that is deleted.
QThreadPool& readers()
{
    static QThreadPool* const pool = [] {
        auto* const threads = new QThreadPool;
        threads->setMaxThreadCount(s_mostReaders);
        // What does not hang ends before the static objects that it uses.
        qAddPostRoutine([] { readers().waitForDone(s_longestEnd_ms); });
        return threads;
    }();
    return *pool;
}

QString absolutePath(const QString& folder)
{
    if (folder.isEmpty())
        return {};
    const bool isUrl = folder.startsWith(QLatin1String("file:"));
    const QString path = isUrl ? QUrl(folder).toLocalFile() : folder;
    const bool isAbsolute = path.startsWith(QLatin1Char('/'));
    QStringList names = QString(isAbsolute ? path : QDir::currentPath() + '/' + path)
                            .split(QLatin1Char('/'), Qt::SkipEmptyParts);
    names.removeAll(QStringLiteral(".")); // but no "..": that of a linked folder is not the text's
    return '/' + names.join(QLatin1Char('/'));
}

} // namespace

FolderListModel::FolderListModel(QObject* parent)
    : QAbstractListModel(parent)
    , m_query(std::make_unique<FolderQuery>())
    , m_watch(std::make_unique<FolderWatch>())
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &FolderListModel::list);
    connect(m_watch.get(), &FolderWatch::changed, this, [this] { schedule(m_pause_ms); });
}

FolderListModel::~FolderListModel()
{
    if (m_listing)
        m_listing->abandon();
}

QString FolderListModel::folder() const
{
    return m_query->folder;
}

void FolderListModel::setFolder(const QString& folder)
{
    const QString path = absolutePath(folder);
    if (path == m_query->folder)
        return;
    if (m_listing)
        m_listing->abandon();
    m_listing.reset();
    ++m_serial; // what that one has told already comes too late
    m_watch->stop();
    m_query->folder = path;
    if (!m_isApplying)
        clearRows();
    setStatus(m_query->folder.isEmpty() ? NoFolder : Listing);
    schedule(0);
    Q_EMIT folderChanged();
}

QStringList FolderListModel::nameFilters() const
{
    return m_query->nameFilters;
}

void FolderListModel::setNameFilters(const QStringList& filters)
{
    change(m_query->nameFilters, filters, &FolderListModel::nameFiltersChanged);
}

bool FolderListModel::showFolders() const
{
    return m_query->showFolders;
}

void FolderListModel::setShowFolders(bool on)
{
    change(m_query->showFolders, on, &FolderListModel::showFoldersChanged);
}

bool FolderListModel::showFiles() const
{
    return m_query->showFiles;
}

void FolderListModel::setShowFiles(bool on)
{
    change(m_query->showFiles, on, &FolderListModel::showFilesChanged);
}

FolderListModel::SortField FolderListModel::sortField() const
{
    return m_query->sortField;
}

void FolderListModel::setSortField(SortField field)
{
    change(m_query->sortField, field, &FolderListModel::sortFieldChanged);
}

bool FolderListModel::sortReversed() const
{
    return m_query->sortReversed;
}

void FolderListModel::setSortReversed(bool on)
{
    change(m_query->sortReversed, on, &FolderListModel::sortReversedChanged);
}

template <typename Value, typename Signal>
void FolderListModel::change(Value& member, const Value& value, Signal signal)
{
    if (member == value)
        return;
    member = value;
    if (m_listing)
        m_listing->cancel(); // the next one begins when it has ended: one thread is enough to hang
    schedule(0);
    Q_EMIT(this->*signal)();
}

int FolderListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant FolderListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const FolderEntry& entry = *m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return entry.name;
    case PathRole:
        return QString(m_prefix + entry.name);
    case BaseNameRole:
        return entry.baseName().toString();
    case SuffixRole:
        return entry.suffix().toString();
    case SizeRole:
        return entry.size_B;
    case ModifiedRole:
        return QDateTime::fromMSecsSinceEpoch(entry.modified_ms);
    case IsFolderRole:
        return entry.isFolder;
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderListModel::roleNames() const
{
    return {{NameRole, "name"},        {PathRole, "path"}, {BaseNameRole, "baseName"},
            {SuffixRole, "suffix"},    {SizeRole, "size"}, {ModifiedRole, "modified"},
            {IsFolderRole, "isFolder"}};
}

void FolderListModel::refresh()
{
    schedule(0);
}

// Earlier than before, if need be, but never later: else an unending flood would put it off for
// ever.
void FolderListModel::schedule(int delay_ms)
{
    if (!m_timer.isActive() || m_timer.remainingTime() > delay_ms)
        m_timer.start(delay_ms);
}

void FolderListModel::list()
{
    if (m_query->folder.isEmpty())
        return;
    if (m_isApplying || m_listing) {
        m_isStale = true;
        return;
    }
    m_isStale = false;
    m_listing = std::make_shared<FolderListing>(++m_serial, *m_query, m_rows);
    connect(m_listing.get(), &FolderListing::finished, this, &FolderListModel::finish,
            Qt::QueuedConnection);
    readers().start([listing = m_listing] { listing->run(); });
}

void FolderListModel::finish(int serial)
{
    if (serial != m_serial)
        return;
    const std::shared_ptr<FolderListing> listing = std::move(m_listing);
    if (listing->isCanceled()) {
        list();
        return;
    }
    m_pause_ms =
        qMax(s_shortestPause_ms, 4 * listing->duration_ms()); // a fifth of the time at most
    apply(*listing);
    if (m_isStale)
        schedule(m_pause_ms);
    if (serial != m_serial)
        return; // another folder was set meanwhile
    logProblems(*listing);
    if (m_watch->follow(*listing))
        schedule(m_pause_ms);
    setStatus(listing->isReadable() ? Ready : Unreadable);
}

// Once for each problem, not each time that the folder is read.
void FolderListModel::logProblems(const FolderListing& listing)
{
    const auto warn = [this](const QString& problem) {
        LogFormatter(LogLevel::Warning).log(Log::Datamodel).noquote()
            << "void tools::datamodel::FolderListModel::finish(int)" << problem << m_query->folder;
    };
    if (!listing.isReadable() && m_status != Unreadable)
        warn(QLatin1String("Cannot read: ") + qt_error_string(listing.error()));
    if (listing.unspeakableNames() > m_unspeakableNames)
        warn(QStringLiteral("%1 names left out, since they are no text")
                 .arg(listing.unspeakableNames()));
    m_unspeakableNames = listing.unspeakableNames();
}

void FolderListModel::setStatus(Status status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

void FolderListModel::apply(const FolderListing& listing)
{
    const FolderRows& rows = listing.rows();
    const RowChanges& changes = listing.changes();
    const int oldCount = m_rows.size();
    m_isApplying = true;
    for (const auto& [first, count] : changes.removed) {
        beginRemoveRows({}, first, first + count - 1);
        m_rows.remove(first, count);
        endRemoveRows();
    }
    applyMoves(changes);
    for (const auto& [first, count] : changes.inserted) {
        beginInsertRows({}, first, first + count - 1);
        m_rows.insert(first, count, {});
        std::copy_n(rows.begin() + first, count, m_rows.begin() + first);
        endInsertRows();
    }
    for (const auto& [first, count, roles] : changes.changed) {
        std::copy_n(rows.begin() + first, count, m_rows.begin() + first);
        Q_EMIT dataChanged(index(first), index(first + count - 1), roles);
    }
    m_isApplying = false;
    if (listing.query().folder != m_query->folder)
        clearRows(); // before others may begin to list into them
    if (m_rows.size() != oldCount)
        Q_EMIT countChanged();
}

void FolderListModel::applyMoves(const RowChanges& changes)
{
    for (const RowChanges::Move& move : changes.moved) {
        beginMoveRows({}, move.first, move.first + move.count - 1, {}, move.before);
        rotateRows(m_rows, move);
        endMoveRows();
    }
    const QVector<int>& order = changes.order;
    if (order.isEmpty())
        return;
    // Views take this hint as "the same rows", and keep what they can.
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    FolderRows rows(m_rows.size());
    for (int row = 0; row < rows.size(); ++row)
        rows[order[row]] = m_rows[row];
    m_rows.swap(rows);
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    for (const QModelIndex& old : from)
        to.append(index(order[old.row()]));
    changePersistentIndexList(from, to);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void FolderListModel::clearRows()
{
    m_prefix = pathPrefix(m_query->folder);
    m_unspeakableNames = 0;
    if (m_rows.isEmpty())
        return;
    beginResetModel();
    m_rows.clear();
    endResetModel();
    Q_EMIT countChanged();
}

} // namespace tools::datamodel
