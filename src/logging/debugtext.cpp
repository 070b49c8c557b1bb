#include "logging/debugtext_p.h"

#include <algorithm>
#include <cmath>

namespace debugtext
{

bool isPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char(' ') && c < QChar(0x7f) && c != QLatin1Char('"') &&
               c != QLatin1Char('\\');
    });
}

bool isBeyondHalves(double value)
{
    constexpr double twoTo52 = 4503599627370496;
    return std::fabs(value) >= twoTo52;
}

double awayFromMiddle(double value)
{
    constexpr double smallestMiddle = 0.0001;
    const bool mayBeMiddle =
        std::fabs(value) >= smallestMiddle &&
        (double(static_cast<float>(value)) == value || std::trunc(value) == value);
    return mayBeMiddle ? std::nextafter(value, 2 * value) : value;
}

} // namespace debugtext
