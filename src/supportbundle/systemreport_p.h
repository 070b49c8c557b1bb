#pragma once

#include <QByteArray>
#include <QString>

namespace zeltools
{

/// A text about the running system, as it goes into a bundle.
struct SystemReport
{
    QByteArray name;
    QByteArray content;
    QString fault; ///< Why there is no content, or only a part; empty if it is complete.
};

/// The number of reports.
int systemReportsCount();
/// Makes one of the reports; the parts take time, so that a bundle can be cancelled between them.
/// A program that a report needs is killed after a few seconds.
SystemReport systemReport(int index);

} // namespace zeltools
