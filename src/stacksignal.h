#pragma once

#include <signal.h>

namespace zeltools
{

/// The signal by which a thread is asked for its call stack (ThreadStack). An application must
/// neither use nor block it.
inline int stackSignal()
{
    return SIGRTMAX - 3;
}

} // namespace zeltools
