#pragma once

#include <QDateTime>

/// The clocks of this process, which stand still for pictures and only go on when they are told to:
/// the time of day, the time since the computer has started, and in the main thread the clock by
/// which timers and state machines measure. The other threads wait as long as ever.
namespace fixedclock
{

/// From now on it is this time for the process. Timers of the main thread then end when the clock
/// is advanced, so that it must not wait for one in an event loop.
void set(const QDateTime& time);
/// Adds to the time.
void advance(qint64 milliseconds);

} // namespace fixedclock
