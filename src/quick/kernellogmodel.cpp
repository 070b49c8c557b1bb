#include "quick/kernellogmodel.h"

#include "dmesg/dmesg.h"
#include "quick/displaytext_p.h"
#include "quick/frameupdates_p.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <iterator>

namespace zeltools::quick
{

namespace
{

// A line such as "[Sun Nov 22 16:21:36 2026] usb 1-1: new device".
constexpr int s_timeLength = 26; // with the brackets

bool hasTime(const QString& line)
{
    return line.startsWith(QLatin1Char('[')) && line.size() >= s_timeLength &&
           line[s_timeLength - 1] == QLatin1Char(']');
}

// Asked for the visible rows only, since reading a date takes long.
QDateTime timeOf(const QString& line)
{
    if (!hasTime(line))
        return {};
    return QLocale::c().toDateTime(line.mid(1, s_timeLength - 2).simplified(),
                                   QStringLiteral("ddd MMM d HH:mm:ss yyyy"));
}

DisplayText textOf(const QString& line)
{
    const bool isDated = timeOf(line).isValid();
    return DisplayText(isDated ? line.mid(s_timeLength).trimmed() : line);
}

} // namespace

KernelLogModel::KernelLogModel(QObject* parent)
    : KernelLogModel(*dmesg::Dmesg::instance(), parent)
{
}

KernelLogModel::KernelLogModel(dmesg::Dmesg& kernelLog, QObject* parent)
    : CountedModel(parent)
    , m_kernelLog(kernelLog)
    , m_updates(std::make_unique<FrameUpdates>([this] { takeNewLines(); }))
{
    // A direct connection would be called while this thread destroys the receiver.
    connect(&kernelLog, &dmesg::Dmesg::changed, m_updates.get(), &FrameUpdates::request,
            Qt::QueuedConnection);
    connect(&kernelLog, &dmesg::Dmesg::runningChanged, this, &KernelLogModel::updateRunning,
            Qt::QueuedConnection);
    takeNewLines();
    updateRunning();
}

KernelLogModel::~KernelLogModel() = default;

bool KernelLogModel::isRestricted() const
{
    return dmesg::Dmesg::isDmesgRestricted();
}

void KernelLogModel::updateRunning()
{
    const bool isRunning = m_kernelLog.isRunning();
    if (isRunning == m_isRunning)
        return;
    m_isRunning = isRunning;
    Q_EMIT isRunningChanged();
}

void KernelLogModel::takeNewLines()
{
    const QStringList lines = m_kernelLog.linesAfter(m_number, m_maximumRows);
    quint64 number = m_number - static_cast<quint64>(lines.size());
    Rows rows;
    for (const QString& line : lines) {
        rows.push_back({++number, line});
        m_characters += line.size();
    }
    m_kept.insert(m_kept.end(), rows.begin(), rows.end());
    const Update update(*this);
    append(matching(rows));
    limit();
}

void KernelLogModel::append(const Rows& newRows)
{
    if (newRows.empty())
        return;
    beginInsertRows({}, count(), count() + static_cast<int>(newRows.size()) - 1);
    m_rows.insert(m_rows.end(), newRows.begin(), newRows.end());
    endInsertRows();
}

// Removes the oldest lines, and the rows that show them.
void KernelLogModel::limit()
{
    quint64 last = 0;
    while (m_kept.size() > static_cast<size_t>(m_maximumRows) || m_characters > mostCharacters) {
        last = m_kept.front().number;
        m_characters -= m_kept.front().line.size();
        m_kept.pop_front();
    }
    const auto kept = std::find_if(m_rows.begin(), m_rows.end(),
                                   [last](const Row& row) { return row.number > last; });
    if (kept == m_rows.begin())
        return;
    beginRemoveRows({}, 0, static_cast<int>(kept - m_rows.begin()) - 1);
    m_rows.erase(m_rows.begin(), kept);
    endRemoveRows();
}

KernelLogModel::Rows KernelLogModel::matching(const Rows& rows) const
{
    Rows found;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found), [this](const Row& row) {
        return row.line.contains(m_filter, Qt::CaseInsensitive);
    });
    return found;
}

void KernelLogModel::setFilter(const QString& filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    beginResetModel();
    m_rows = matching(m_kept);
    endResetModel();
    Q_EMIT filterChanged();
}

void KernelLogModel::setMaximumRows(int count)
{
    count = std::max(count, 1);
    if (count == m_maximumRows)
        return;
    m_maximumRows = count;
    limit();
    Q_EMIT maximumRowsChanged();
}

int KernelLogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant KernelLogModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const QString& line = m_rows[static_cast<size_t>(index.row())].line;
    switch (role) {
    case TimeRole:
        return timeOf(line);
    case Qt::DisplayRole:
    case TextRole:
        return textOf(line).text;
    case IsCutRole:
        return textOf(line).isCut;
    case FullTextRole:
        return DisplayText::lines(line);
    default:
        return {};
    }
}

QHash<int, QByteArray> KernelLogModel::roleNames() const
{
    return {
        {TimeRole, "time"}, {TextRole, "text"}, {IsCutRole, "isCut"}, {FullTextRole, "fullText"}};
}

} // namespace zeltools::quick
