#include "kmsgselection.h"

#include "words.h"

using dmesg::KmsgRecord;

namespace
{

constexpr int s_lastFacility = 23;

} // namespace

QStringList KmsgSelection::levelNames()
{
    QStringList names;
    for (int level = KmsgRecord::Emergency; level <= KmsgRecord::Debug; ++level)
        names.append(KmsgRecord::levelName(static_cast<KmsgRecord::Level>(level)));
    return names;
}

QStringList KmsgSelection::facilityNames()
{
    QStringList names;
    for (quint32 facility = 0; facility <= s_lastFacility; ++facility)
        names.append(KmsgRecord::facilityName(facility));
    return names;
}

QString KmsgSelection::setLevel(const QString& name)
{
    const QStringList wholeNames{QStringLiteral("emergency"), QStringLiteral("alert"),
                                 QStringLiteral("critical"),  QStringLiteral("error"),
                                 QStringLiteral("warning"),   QStringLiteral("notice"),
                                 QStringLiteral("info"),      QStringLiteral("debug")};
    const QStringList names = levelNames();
    for (int level = KmsgRecord::Emergency; level <= KmsgRecord::Debug; ++level) {
        if (name.toLower() != names[level] && name.toLower() != wholeNames[level])
            continue;
        worstLevel = level;
        return {};
    }
    return Zelctl::tr("unknown level \"%1\"; the levels are %2")
        .arg(name, names.join(QStringLiteral(", ")));
}

QString KmsgSelection::setFacilities(const QStringList& names)
{
    const QStringList known = facilityNames();
    for (const QString& name : names)
        facilities.append(name.toLower());
    for (const QString& facility : qAsConst(facilities)) {
        if (!known.contains(facility))
            return Zelctl::tr("unknown facility \"%1\"; the facilities are %2")
                .arg(facility, known.join(QStringLiteral(", ")));
    }
    return {};
}

bool KmsgSelection::matches(const KmsgRecord& record) const
{
    return record.level <= worstLevel &&
           (facilities.isEmpty() || facilities.contains(KmsgRecord::facilityName(record.facility)));
}
