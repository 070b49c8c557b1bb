#pragma once

#include <QString>

#include <chrono>

namespace zeltools::quick
{

/// The two largest units of a time in the language and the digits of the screen, for example
/// "20 ms", "5 s", "3 min 20 s", "3 min", "2 h 5 min" or "4 d 1 h".
QString durationText(std::chrono::milliseconds duration);

} // namespace zeltools::quick
