#include "quick/crashreportsmodel.h"

#include "crashreports/crashreports.h"
#include "quick/access.h"
#include "quick/crashsummary_p.h"
#include "quick/displaytext_p.h"
#include "quick/readingpool_p.h"
#include "quick/rowsupdate_p.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QThreadPool>

#include <utility>

namespace zeltools::quick
{

CrashReportsModel::CrashReportsModel(QObject* parent)
    : CountedModel(parent)
{
    connect(&m_files, &FolderListModel::folderChanged, this, &CrashReportsModel::folderChanged);
    connect(&m_files, &FolderListModel::statusChanged, this, [this] {
        Q_EMIT isReadableChanged();
        updateLoading();
    });
    connect(&m_files, &QAbstractItemModel::modelReset, this, &CrashReportsModel::read);
    connect(&m_files, &QAbstractItemModel::rowsInserted, this, &CrashReportsModel::read);
    connect(&m_files, &QAbstractItemModel::rowsRemoved, this, &CrashReportsModel::read);
    connect(&m_files, &QAbstractItemModel::rowsMoved, this, &CrashReportsModel::read);
    connect(&m_files, &QAbstractItemModel::dataChanged, this, &CrashReportsModel::read);
    followLanguage();
    connect(this, &CountedModel::languageChanged, this, &CrashReportsModel::newestChanged);
    m_files.setShowFolders(false);
    m_files.setNameFilters({QStringLiteral("crash-*.report")});
    m_files.setSortReversed(true); // the names begin with the time
    m_files.setFolder(CrashReports::folder());
}

CrashReportsModel::~CrashReportsModel() = default;

void CrashReportsModel::setFolder(const QString& folder)
{
    m_files.setFolder(folder);
}

CrashReportsModel::Rows CrashReportsModel::files() const
{
    Rows files;
    for (int row = 0; row < m_files.count(); ++row) {
        const QModelIndex file = m_files.index(row);
        CrashSummary summary;
        summary.path = file.data(FolderListModel::PathRole).toString();
        summary.size_B = file.data(FolderListModel::SizeRole).toLongLong();
        summary.modified = file.data(FolderListModel::ModifiedRole).toDateTime();
        files.append(summary);
    }
    return files;
}

// Files that are shown already are not read again. The results of an earlier reader are dropped.
void CrashReportsModel::read()
{
    QHash<QString, CrashSummary> shown;
    for (const CrashSummary& row : std::as_const(m_rows))
        shown.insert(row.path, row);
    Rows wanted = files();
    Rows unknown;
    QVector<int> unknownRows;
    for (int row = 0; row < wanted.size(); ++row) {
        const CrashSummary known = shown.value(wanted[row].path);
        if (known.isOfSameFile(wanted[row])) {
            wanted[row] = known;
        } else {
            unknown.append(wanted[row]);
            unknownRows.append(row);
        }
    }
    m_reader.reset();
    ++m_serial;
    if (unknown.isEmpty()) {
        show(wanted);
        updateLoading();
        return;
    }
    m_reader = std::make_shared<CrashSummaryReader>(unknown);
    connect(
        m_reader.get(), &CrashSummaryReader::finished, this,
        [this, wanted, unknownRows, serial = m_serial]() mutable {
            if (serial != m_serial)
                return;
            const std::shared_ptr<CrashSummaryReader> reader = std::move(m_reader);
            for (int i = 0; i < unknownRows.size(); ++i)
                wanted[unknownRows[i]] = reader->summaries()[i];
            show(wanted);
            updateLoading();
        },
        Qt::QueuedConnection);
    readingPool(Reading::CrashReports).start([reader = m_reader] { reader->run(); });
    updateLoading();
}

void CrashReportsModel::updateLoading()
{
    const bool isLoading = m_reader != nullptr || m_files.status() == FolderListModel::Listing;
    if (std::exchange(m_isLoading, isLoading) != isLoading)
        Q_EMIT isLoadingChanged();
}

void CrashReportsModel::show(const Rows& rows)
{
    const CrashSummary newest = m_rows.value(0);
    RowsUpdate::apply(*this, m_rows, rows, [](const CrashSummary& row) { return row.path; });
    if (!(newest == m_rows.value(0)))
        Q_EMIT newestChanged();
}

QString CrashReportsModel::newest() const
{
    return m_rows.isEmpty() ? QString() : data(index(0), ReasonRole).toString();
}

QDateTime CrashReportsModel::newestTime() const
{
    return m_rows.isEmpty() ? QDateTime() : m_rows.first().time;
}

QString CrashReportsModel::report(int row) const
{
    if (row < 0 || row >= count())
        return {};
    return crashReportText(m_rows[row].path);
}

QString CrashReportsModel::remove(int row)
{
    QString refusal = Access::instance()->refusal(Access::Technician);
    if (!refusal.isEmpty())
        return refusal;
    if (row < 0 || row >= count())
        return tr("The file is no longer there.");
    QFile file(m_rows[row].path);
    if (!file.remove())
        return tr("The report cannot be deleted: %1").arg(file.errorString());
    Access::instance()->recordChange(
        QStringLiteral("Crash report %1 deleted").arg(QFileInfo(file.fileName()).fileName()));
    m_files.refresh();
    return {};
}

int CrashReportsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant CrashReportsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const CrashSummary& row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case FileNameRole:
        return DisplayText(QFileInfo(row.path).fileName()).text;
    case PathRole:
        return row.path;
    case SizeRole:
        return row.size_B;
    case TimeRole:
        return row.time;
    case ReasonRole:
        if (row.fault == CrashSummary::None && row.reason.isEmpty())
            return tr("The report does not tell the reason.");
        return DisplayText(row.fault == CrashSummary::None ? row.reason : row.faultText()).text;
    case ThreadRole:
        return row.thread;
    case IsCompleteRole:
        return row.isComplete;
    default:
        return {};
    }
}

QHash<int, QByteArray> CrashReportsModel::roleNames() const
{
    return {{FileNameRole, "fileName"},
            {PathRole, "path"},
            {SizeRole, "size"},
            {TimeRole, "time"},
            {ReasonRole, "reason"},
            {ThreadRole, "thread"},
            {IsCompleteRole, "isComplete"}};
}

} // namespace zeltools::quick
