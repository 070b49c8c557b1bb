#pragma once

#include "logging/zelassert.h"

#include <cstdlib>

namespace dmesg
{

/// Ends the process if the condition does not hold, without running destructors: the destructor of
/// the capture would wait for the thread that may have failed.
inline void releaseAssert(bool isTrue, const char* condition, const char* message, const char* file,
                          int line)
{
    if (isTrue)
        return;
    printFatalAssertMsg(condition, message, file, line);
    std::_Exit(1);
}

} // namespace dmesg
