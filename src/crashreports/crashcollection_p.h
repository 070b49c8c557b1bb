#pragma once

#include "crashreports/crashreports.h"

namespace zeltools
{

/// The files that earlier runs have left in the folder of crash reports.
class CrashCollection
{
public:
    explicit CrashCollection(const QString& folder);

    /// Gives each report of a run that has ended its final name, and logs it. Removes the files of
    /// runs that have ended without a report, and logs a Warning for each. A file that cannot be
    /// handled stays, with a Warning.
    void collect();
    /// Removes the oldest reports until the others are within the limits. The collected ones are
    /// the newest whatever the clock was at the crash.
    void limit(CrashReports::Limits limits) const;
    /// The paths of the reports, the newest first by their names.
    QStringList reports() const;

private:
    void collect(const QString& name);
    void keep(int file, const QString& path, const QByteArray& content);
    void removeUnfinished() const;
    QString freePath(const QByteArray& content) const;

    const QString m_folder;
    QStringList m_collected;
};

} // namespace zeltools
