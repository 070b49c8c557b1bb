#include "quick/systemclock_p.h"

#include "system/datetimemanager.h"

namespace zeltools::quick
{

system::DateTimeManager* systemClock()
{
    static auto* const clock = new system::DateTimeManager;
    return clock;
}

} // namespace zeltools::quick
