#pragma once

#include "crashreports/crashreports.h"

namespace zeltools
{

/// The sections that the application and the library add to the report of this process.
class CrashSections
{
public:
    /// As CrashReports::addSection().
    static bool add(const char* name, CrashReports::Section write);
    /// Writes all sections in the order in which they were added. Async-signal-safe if they are.
    static void write(CrashReportWriter& writer);
};

} // namespace zeltools
