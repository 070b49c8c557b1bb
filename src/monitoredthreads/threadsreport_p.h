#pragma once

namespace zeltools
{
class CrashReportWriter;
}

namespace monitored_threads
{

/// Writes the section "threads" of a crash report, a line NAME|TID|STATE|MS for each registered
/// thread and item: its name, in which "/" takes the place of "|", the kernel's id of the thread or
/// 0, the state as of the last check, and the time since the last tick. Async-signal-safe.
void writeMonitoredThreads(zeltools::CrashReportWriter& writer);

} // namespace monitored_threads
