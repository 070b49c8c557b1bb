#pragma once

#include <zeltools/dmesg/kmsgrecord.h>

#include <QStringList>

/// Selects the records of the kernel log that are printed.
struct KmsgSelection
{
    int worstLevel = dmesg::KmsgRecord::Debug; ///< This level and more severe ones.
    QStringList facilities;                    ///< Empty for all.

    /// The names of all levels, the most severe one first, as dmesg(1) has them.
    static QStringList levelNames();
    static QStringList facilityNames();

    /// Reads a level by its name in dmesg(1) or its whole name, in upper or lower case. Returns the
    /// problem, or an empty text.
    QString setLevel(const QString& name);
    /// Reads the names of facilities. Returns the problem, or an empty text.
    QString setFacilities(const QStringList& names);

    bool matches(const dmesg::KmsgRecord& record) const;
};
