#include "folderlistmodel.h"

#include "datamodel/folderreader_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"

#include <QDateTime>
#include <QDir>
#include <QUrl>

namespace tools::datamodel
{

namespace
{

QString absolutePath(const QString& folder)
{
    if (folder.isEmpty())
        return {};
    const QLatin1Char slash('/');
    const bool isUrl = folder.startsWith(QLatin1String("file:"));
    const QString path = isUrl ? QUrl(folder).toLocalFile() : folder;
    const QString start = path.startsWith(slash) ? QString() : QDir::currentPath() + slash;
    QStringList names = QString(start + path).split(slash, Qt::SkipEmptyParts);
    names.removeAll(QStringLiteral(".")); // Only the kernel resolves ".." behind a link.
    return slash + names.join(slash);
}

} // namespace

FolderListModel::FolderListModel(QObject* parent)
    : QAbstractListModel(parent)
    , m_reader(std::make_unique<FolderReader>(m_rows))
{
    m_reader->setParent(this); // It follows the model to another thread.
    connect(m_reader.get(), &FolderReader::listed, this, &FolderListModel::apply);
    connect(m_reader.get(), &FolderReader::followed, this, &FolderListModel::finish);
}

FolderListModel::~FolderListModel() = default;

QString FolderListModel::folder() const
{
    return m_reader->query().folder;
}

void FolderListModel::setFolder(const QString& folder)
{
    const QString path = absolutePath(folder);
    if (path == this->folder())
        return;
    m_reader->setFolder(path);
    if (!m_reader->isPaused())
        clearRows();
    setStatus(path.isEmpty() ? NoFolder : Listing);
    m_reader->refresh(); // Only now, since a receiver of these signals may run an event loop.
    Q_EMIT folderChanged();
}

QStringList FolderListModel::nameFilters() const
{
    return m_reader->query().nameFilters;
}

void FolderListModel::setNameFilters(const QStringList& filters)
{
    change(&FolderQuery::nameFilters, filters, &FolderListModel::nameFiltersChanged);
}

bool FolderListModel::showFolders() const
{
    return m_reader->query().showFolders;
}

void FolderListModel::setShowFolders(bool on)
{
    change(&FolderQuery::showFolders, on, &FolderListModel::showFoldersChanged);
}

bool FolderListModel::showFiles() const
{
    return m_reader->query().showFiles;
}

void FolderListModel::setShowFiles(bool on)
{
    change(&FolderQuery::showFiles, on, &FolderListModel::showFilesChanged);
}

FolderListModel::SortField FolderListModel::sortField() const
{
    return m_reader->query().sortField;
}

void FolderListModel::setSortField(SortField field)
{
    change(&FolderQuery::sortField, field, &FolderListModel::sortFieldChanged);
}

bool FolderListModel::sortReversed() const
{
    return m_reader->query().sortReversed;
}

void FolderListModel::setSortReversed(bool on)
{
    change(&FolderQuery::sortReversed, on, &FolderListModel::sortReversedChanged);
}

template <typename Value, typename Signal>
void FolderListModel::change(Value FolderQuery::*member, const Value& value, Signal signal)
{
    if (m_reader->set(member, value))
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
    m_reader->refresh();
}

void FolderListModel::finish(const FolderListing& listing)
{
    logProblems(listing);
    setStatus(listing.isReadable() ? Ready : Unreadable);
}

// Logs a problem once, and not each time that the folder is read.
void FolderListModel::logProblems(const FolderListing& listing)
{
    const auto warn = [this](const QString& problem) {
        LogFormatter(LogLevel::Warning).log(Log::Datamodel).noquote()
            << "void tools::datamodel::FolderListModel::finish(int)" << problem << folder();
    };
    if (!listing.isReadable() && m_status != Unreadable)
        warn(QLatin1String("Cannot read: ") + qt_error_string(listing.error()));
    if (listing.undecodableNames() > m_undecodableNames)
        warn(QStringLiteral("%1 names cannot be decoded and are left out:")
                 .arg(listing.undecodableNames()));
    m_undecodableNames = listing.undecodableNames();
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
    m_reader->pause();
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
    m_reader->resume();
    if (listing.query().folder != folder())
        clearRows(); // before the next listing is compared with them
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
    // With this hint views keep what belongs to a row.
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
    m_prefix = pathPrefix(folder());
    m_undecodableNames = 0;
    if (m_rows.isEmpty())
        return;
    beginResetModel();
    m_rows.clear();
    endResetModel();
    Q_EMIT countChanged();
}

} // namespace tools::datamodel
