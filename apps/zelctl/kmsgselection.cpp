#include "kmsgselection.h"

using dmesg::KmsgRecord;

namespace
{

constexpr int s_lastFacility = 23;

} // namespace

QString KmsgSelection::setLevel(const QString& name)
{
    const QStringList wholeNames{QStringLiteral("emergency"), QStringLiteral("alert"),
                                 QStringLiteral("critical"),  QStringLiteral("error"),
                                 QStringLiteral("warning"),   QStringLiteral("notice"),
                                 QStringLiteral("info"),      QStringLiteral("debug")};
    QStringList names;
    for (int level = KmsgRecord::Emergency; level <= KmsgRecord::Debug; ++level) {
        names.append(KmsgRecord::levelName(static_cast<KmsgRecord::Level>(level)));
        if (name.toLower() != names.last() && name.toLower() != wholeNames[level])
            continue;
        worstLevel = level;
        return {};
    }
    return QStringLiteral("unknown level \"%1\"; the levels are %2")
        .arg(name, names.join(QStringLiteral(", ")));
}

QString KmsgSelection::setFacilities(const QString& names)
{
    QStringList known;
    for (quint32 facility = 0; facility <= s_lastFacility; ++facility)
        known.append(KmsgRecord::facilityName(facility));
    facilities = names.toLower().split(QLatin1Char(','));
    for (const QString& facility : qAsConst(facilities)) {
        if (!known.contains(facility))
            return QStringLiteral("unknown facility \"%1\"; the facilities are %2")
                .arg(facility, known.join(QStringLiteral(", ")));
    }
    return {};
}

bool KmsgSelection::matches(const KmsgRecord& record) const
{
    return record.level <= worstLevel &&
           (facilities.isEmpty() || facilities.contains(KmsgRecord::facilityName(record.facility)));
}
