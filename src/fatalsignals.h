#pragma once

#include <algorithm>
#include <iterator>

#include <signal.h>

namespace zeltools
{

/// A signal that reports a fatal error in the program.
struct FatalSignal
{
    int number;       ///< The number of the system.
    const char* name; ///< The name of the number.
};

/// All of these signals end the process unless it handles them.
inline constexpr FatalSignal fatalSignals[]{
    {SIGSEGV, "SIGSEGV"}, {SIGBUS, "SIGBUS"}, {SIGFPE, "SIGFPE"},  {SIGILL, "SIGILL"},
    {SIGABRT, "SIGABRT"}, {SIGSYS, "SIGSYS"}, {SIGTRAP, "SIGTRAP"}};

/// The entry of that signal, which must be one of them. Async-signal-safe.
inline const FatalSignal& fatalSignal(int number)
{
    return *std::find_if(std::begin(fatalSignals), std::end(fatalSignals),
                         [number](const FatalSignal& each) { return each.number == number; });
}

} // namespace zeltools
