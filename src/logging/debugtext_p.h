#pragma once

#include <QString>

/// Helpers of LogFormatter, which appends common items with the text of QDebug but without a
/// QDebug.
namespace debugtext
{

/// Whether QDebug puts the text between quotes without escaping any of it.
bool isPlain(const QString& text);

/// Whether every double of this size is an integer.
bool isBeyondHalves(double value);

/// The value whose six digits by std::to_chars() are those of `value` in QDebug. The value must not
/// be beyond halves.
///
/// QDebug rounds the exact middle between two numbers of six digits away from zero (20.03125 gives
/// 20.0313), and std::to_chars() rounds it to the even one. A middle has seven decimal digits. If
/// it has a fraction too, it is at least 0.0001 and its binary digits fit into a float. So only
/// such values and integers are moved by the smallest step away from zero. No other value crosses a
/// middle by this step, because the next middle is farther away.
double awayFromMiddle(double value);

} // namespace debugtext
