#pragma once

#include "crashreports/crash_p.h"

namespace zeltools
{

/// Writes the call stack of the thread that has crashed, which calls this function.
/// Async-signal-safe after StackRequest::prepare().
void writeCrashedStack(const Crash& crash, CrashReportWriter& writer);

/// Writes the call stacks of all threads but one; those that have not answered after half a second
/// get a line that says so. Takes at most 2.5 seconds, and then writes how many are missing.
/// Async-signal-safe after StackRequest::prepare(); only one thread may call it.
void writeOtherStacks(pid_t crashedThread, CrashReportWriter& writer);

} // namespace zeltools
