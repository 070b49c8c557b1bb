#include "system/zonedatabase_p.h"

#include "machine.h"
#include "system.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTimeZone>

namespace zeltools::system
{

namespace
{

// The locations that Qt knows in each area.
QMap<QString, QSet<QString>> knownLocations()
{
    QMap<QString, QSet<QString>> known;
    const QList<QByteArray> ids = QTimeZone::availableTimeZoneIds();
    for (const QByteArray& id : ids) {
        const QStringList parts = QString::fromUtf8(id).split(QDir::separator());
        if (parts.size() >= 2)
            known[parts[0]].insert(parts[1]);
    }
    return known;
}

// The path without links above its last name.
QString placeOf(const QFileInfo& file)
{
    return QFileInfo(file.path()).canonicalFilePath() + QLatin1Char('/') + file.fileName();
}

// Whether the path of a file is this place, or is a link that leads through it.
bool leadsThrough(const QString& path, const QString& place)
{
    if (!System::fileExists(path)) // A circle of links would have no end.
        return false;
    const QString wanted = placeOf(QFileInfo(place));
    QFileInfo file(placeOf(QFileInfo(path)));
    while (file.isSymLink() && file.filePath() != wanted)
        file.setFile(placeOf(QFileInfo(file.symLinkTarget())));
    return file.filePath() == wanted;
}

} // namespace

ZoneDatabase::ZoneDatabase(const Machine& machine)
    : m_zoneInfoDir(machine.zoneInfoDir)
    , m_localTimeFile(machine.localTimeFile)
    , m_timeZoneFile(machine.timeZoneFile)
{
}

QStringList ZoneDatabase::timeZones() const
{
    const QMap<QString, QSet<QString>> known = knownLocations();
    QStringList zones;
    for (auto area = known.cbegin(); area != known.cend(); ++area) {
        const QStringList files = QDir(file(area.key())).entryList(QDir::Files, QDir::Unsorted);
        for (const QString& file : files) {
            if (area->contains(file))
                zones.append(area.key().isEmpty() ? file : area.key() + QDir::separator() + file);
        }
    }
    zones.sort();
    return zones;
}

QString ZoneDatabase::file(const QString& timeZone) const
{
    return m_zoneInfoDir + QLatin1Char('/') + timeZone;
}

bool ZoneDatabase::contains(const QString& timeZone) const
{
    // The name becomes part of a shell command and of a path that must not leave the database.
    static const QRegularExpression form(QStringLiteral(R"(\A[\w+-]+(/[\w+-]+)*\z)"));
    const QString path = file(timeZone);
    return form.match(timeZone).hasMatch() && System::fileExists(path) &&
           !leadsThrough(path, m_localTimeFile);
}

bool ZoneDatabase::isCurrent(const QString& timeZone) const
{
    return leadsThrough(m_localTimeFile, file(timeZone));
}

QStringList ZoneDatabase::switchCommands(const QString& timeZone, bool hasTimeSync) const
{
    if (hasTimeSync)
        return {QStringLiteral("timedatectl set-timezone %1").arg(timeZone)};
    return {QStringLiteral("ln -fs %1 %2").arg(file(timeZone), m_localTimeFile),
            QStringLiteral("echo \"%1\" > %2").arg(timeZone, m_timeZoneFile)};
}

} // namespace zeltools::system
