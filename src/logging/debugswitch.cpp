#include "logging/debugswitch.h"

namespace zeltools
{

// Both are initialised by the compiler, so they may be read before any constructor has run.
std::atomic<quint64> DebugSwitch::s_audience{DebugSwitch::Unknown};
std::atomic<quint64> DebugSwitch::s_moduleBits{0};

} // namespace zeltools
