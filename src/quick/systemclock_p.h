#pragma once

namespace zeltools::system
{
class DateTimeManager;
}

namespace zeltools::quick
{

/// The clock of the system, for types that have no other one. The first call creates it; it is
/// never destroyed and belongs to the thread of the QML engine.
system::DateTimeManager* systemClock();

} // namespace zeltools::quick
