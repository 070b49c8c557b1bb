#pragma once

#include <zeltools/zeltools_export.h>

#include <QtGlobal>

#include <atomic>

/// The last lines of the log in memory that is set aside from the start, for a crash report. The
/// log manager adds each line before it is delivered, in the thread that delivers it, as long as
/// the tail is enabled. With LOG_FROM_MAIN_THREAD=1 the lines of other threads are missing until
/// the main thread takes them. Any thread may call the functions; none of them waits.
class ZELTOOLS_EXPORT LogTail
{
public:
    LogTail() = delete;

    static constexpr int mostLines = 200;     ///< An older line makes room for a new one.
    static constexpr int longestLine_B = 500; ///< The rest of a longer line is cut off.

    /// Switches the tail on or off; it is off until crash reports are installed.
    static void setEnabled(bool isEnabled) { s_isEnabled = isEnabled; }
    /// Whether lines are added.
    static bool isEnabled() { return s_isEnabled.load(std::memory_order_relaxed); }
    /// Adds a line in UTF-8; line feeds at its end are left out.
    static void add(const char* line, int size);

    /// The function that receives the lines.
    using Reader = void (*)(void* argument, const char* line, int size);
    /// Calls the function with each line, the oldest first. A line that is just being added is
    /// missing. Async-signal-safe.
    static void read(Reader reader, void* argument);

private:
    static std::atomic<bool> s_isEnabled;
};
