#pragma once

#include <zeltools/logging/logrecord.h>
#include <zeltools/zeltools_export.h>

/// A place for log lines beside standard error and the five files, see LogManager::addSink(). Every
/// line that is printed or written to a file goes to every sink, once and in order. When the
/// process is killed, sinks may miss the last lines that its files have, up to 4 KiB.
///
/// In immediate delivery write() runs in the thread that logs, in buffered delivery in the writer
/// thread, and a recovery calls it in the thread that initializes the manager. The calls never
/// overlap. A line that write() logs itself does not come back to the sinks.
class ZELTOOLS_EXPORT LogSink
{
public:
    virtual ~LogSink();

    /// Takes the line. It must not throw.
    virtual void write(const LogRecord& record) = 0;
};
