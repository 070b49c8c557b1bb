#include "quick/eventline_p.h"

namespace zeltools::quick
{

EventLine::EventLine(const QString& line)
    : text(line)
{
    constexpr int timeLength = 23;
    const auto kindEnd = line.indexOf(QLatin1Char('|'), timeLength + 1);
    if (kindEnd < 0 || line.at(timeLength) != QLatin1Char('|'))
        return;
    time = QDateTime::fromString(line.left(timeLength), QStringLiteral("dd/MM/yyyy hh:mm:ss:zzz"));
    if (!time.isValid())
        return;
    kind = line.mid(timeLength + 1, kindEnd - timeLength - 1).trimmed();
    text = line.mid(kindEnd + 1);
    if (text.startsWith(QLatin1Char(' ')))
        text.remove(0, 1);
}

} // namespace zeltools::quick
