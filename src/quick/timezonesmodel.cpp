#include "quick/timezonesmodel.h"

#include "quick/systemclock_p.h"
#include "system/datetimemanager.h"

#include <QDateTime>
#include <QTimeZone>

namespace zeltools::quick
{

namespace
{

QString readable(QString name)
{
    return name.replace(QLatin1Char('_'), QLatin1Char(' '));
}

QString areaOf(const QString& zone)
{
    return zone.section(QLatin1Char('/'), 0, 0);
}

int offsetMinutes(const QString& zone)
{
    constexpr int minute_s = 60;
    return QTimeZone(zone.toUtf8()).offsetFromUtc(QDateTime::currentDateTimeUtc()) / minute_s;
}

} // namespace

TimeZonesModel::TimeZonesModel(QObject* parent)
    : CountedModel(parent)
    , m_zones(system::TimeZoneHelper::timeZones())
    , m_currentZone(systemClock()->timeZoneHelper()->currentTimeZone())
{
    connect(systemClock()->timeZoneHelper(), &system::TimeZoneHelper::currentTimeZoneChanged, this,
            [this] {
                m_currentZone = systemClock()->timeZoneHelper()->currentTimeZone();
                if (!m_rows.isEmpty())
                    Q_EMIT dataChanged(index(0), index(count() - 1), {IsCurrentRole});
            });
    fill();
}

TimeZonesModel::~TimeZonesModel() = default;

void TimeZonesModel::setArea(const QString& area)
{
    if (area == m_area)
        return;
    m_area = area;
    fill();
    Q_EMIT areaChanged();
}

void TimeZonesModel::setFilter(const QString& filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    fill();
    Q_EMIT filterChanged();
}

QStringList TimeZonesModel::wantedRows() const
{
    QStringList rows;
    for (const QString& zone : m_zones) {
        const QString area = areaOf(zone);
        if (hasAreas() && (rows.isEmpty() || rows.last() != area))
            rows.append(area);
        else if (!hasAreas() && (m_area.isEmpty() || area == m_area) &&
                 readable(zone).contains(readable(m_filter), Qt::CaseInsensitive))
            rows.append(zone);
    }
    return rows;
}

void TimeZonesModel::fill()
{
    beginResetModel(); // Another area or filter is another list.
    m_rows = wantedRows();
    endResetModel();
}

int TimeZonesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant TimeZonesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QString& row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return readable(m_area.isEmpty() ? row : row.mid(m_area.size() + 1));
    case ZoneRole:
        return hasAreas() ? QString() : row;
    case OffsetMinutesRole:
        return hasAreas() ? 0 : offsetMinutes(row);
    case IsCurrentRole:
        return row == (hasAreas() ? areaOf(m_currentZone) : m_currentZone);
    default:
        return {};
    }
}

QHash<int, QByteArray> TimeZonesModel::roleNames() const
{
    return {{NameRole, "name"},
            {ZoneRole, "zone"},
            {OffsetMinutesRole, "offsetMinutes"},
            {IsCurrentRole, "isCurrent"}};
}

} // namespace zeltools::quick
