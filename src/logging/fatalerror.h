#pragma once

#include <zeltools/zeltools_export.h>

namespace zeltools
{

/// How a process ends after a fatal error.
enum class FatalEnd {
    Abort, ///< By abort(), whose signal a handler may see.
    Exit   ///< By exit() or _Exit(), without a signal.
};

/// Receives the reason, in UTF-8, immediately before the process ends.
using FatalErrorHandler = void (*)(const char* reason, FatalEnd end);

/// Sets the handler; null for none. CrashReports::install() sets its own.
ZELTOOLS_EXPORT void setFatalErrorHandler(FatalErrorHandler handler);

/// Calls the handler. Does not end the process; the caller does that next. Any thread may call it.
ZELTOOLS_EXPORT void announceFatalError(const char* reason, FatalEnd end);

} // namespace zeltools
