#pragma once

#include <QMetaType>

/// Holder of the levels of a log line.
struct LogLevel
{
    /// Debug to Critical are severities, where Event marks a line of the machine's event history.
    /// Grinder, Capsule and M4 are no severities: they send a line to a file of its own.
    enum Level : quint32 { Debug, Info, Event, Warning, Error, Critical, Grinder, Capsule, M4 };
};

Q_DECLARE_METATYPE(LogLevel)
Q_DECLARE_METATYPE(LogLevel::Level)
