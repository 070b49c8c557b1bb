#include "quick/durationtext_p.h"

#include "quick/language_p.h"
#include "quick/library.h"

#include <algorithm>

namespace zeltools::quick
{

QString durationText(std::chrono::milliseconds duration)
{
    const qint64 time_ms = std::max<qint64>(duration.count(), 0);
    const qint64 time_s = time_ms / 1000;
    const qint64 time_min = time_s / 60;
    const qint64 time_h = time_min / 60;
    const auto text = [](const QString& pattern, qint64 large, qint64 small = 0) {
        const QLocale locale = Language::instance()->locale();
        const QString first = locale.toString(large);
        return pattern.contains(QLatin1String("%2")) ? pattern.arg(first, locale.toString(small))
                                                     : pattern.arg(first);
    };
    if (time_ms > 0 && (time_s == 0 || (time_s < 10 && time_ms % 1000 != 0)))
        return text(Library::tr("%1 ms"), time_ms);
    if (time_min == 0)
        return text(Library::tr("%1 s"), time_s);
    if (time_h == 0 && time_s % 60 == 0)
        return text(Library::tr("%1 min"), time_min);
    if (time_h == 0)
        return text(Library::tr("%1 min %2 s"), time_min, time_s % 60);
    if (time_h < 24)
        return text(Library::tr("%1 h %2 min"), time_h, time_min % 60);
    return text(Library::tr("%1 d %2 h"), time_h / 24, time_h % 24);
}

} // namespace zeltools::quick
