#pragma once

#include <QDateTime>
#include <QString>

namespace zeltools::quick
{

/// The parts of a line `15/11/2026 03:37:40:123| MenuAccess| text` of the events file.
struct EventLine
{
    /// A line of another form is only text.
    explicit EventLine(const QString& line);

    QDateTime time;
    QString kind; ///< as in the file
    QString text;
};

} // namespace zeltools::quick
