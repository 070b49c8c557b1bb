#pragma once

#include <zeltools/quick/countedmodel.h>

#include <QStringList>
#include <qqml.h>

namespace zeltools::quick
{

/// The time zones of the machine, to choose from in two steps: first an area such as "Europe", then
/// a zone in it. A machine without time zone files has no rows.
///
/// Use it in the thread of the QML engine.
class ZELTOOLS_EXPORT TimeZonesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TimeZonesModel)
    /// The area whose zones are the rows. If it is empty, the rows are the areas or, with a filter,
    /// the zones of all areas that match it.
    Q_PROPERTY(QString area READ area WRITE setArea NOTIFY areaChanged)
    /// Only zones whose names contain this text are rows, whatever the case; a blank also finds the
    /// "_" of the names.
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)

public:
    /// The roles, whose names in QML are given beside them.
    enum Role {
        NameRole =
            Qt::UserRole,  ///< `name`: "Europe", "New York" in an area, else "America/New York"
        ZoneRole,          ///< `zone`: "America/New_York"; empty for an area
        OffsetMinutesRole, ///< `offsetMinutes`: the present offset from UTC; 0 for an area
        IsCurrentRole      ///< `isCurrent`: the zone of the system, or the area of that zone
    };

    explicit TimeZonesModel(QObject* parent = nullptr);
    ~TimeZonesModel() override;

    QString area() const { return m_area; }
    void setArea(const QString& area);
    QString filter() const { return m_filter; }
    void setFilter(const QString& filter);

    int rowCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void areaChanged();
    void filterChanged();

private:
    bool hasAreas() const { return m_area.isEmpty() && m_filter.isEmpty(); }
    QStringList wantedRows() const;
    void fill();

    const QStringList m_zones;
    QString m_currentZone;
    QString m_area;
    QString m_filter;
    QStringList m_rows; // names of areas or of zones
};

} // namespace zeltools::quick
