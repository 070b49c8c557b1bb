#pragma once

#include <sys/types.h>
#include <ucontext.h>

#include <signal.h>

namespace zeltools
{

class CrashReportWriter;

/// The end of a process, as the handler sees it.
struct Crash
{
    pid_t thread;            ///< the thread that has crashed
    const char* reason;      ///< a text of the program, possibly empty
    const siginfo_t* signal; ///< null if the program ends itself without a signal
    ucontext_t* context;     ///< the interrupted instruction; null without a signal
    const void* caller;      ///< without a signal: the first call that matters
    timespec started;        ///< by CLOCK_BOOTTIME
};

/// Writes the part of the report that begins with "[crash]", from the part that needs least to the
/// one that needs most of the process. Each part is in the file when it is written. The context is
/// changed meanwhile. Async-signal-safe; only one thread may call it.
void writeCrash(const Crash& crash, CrashReportWriter& writer);

} // namespace zeltools
