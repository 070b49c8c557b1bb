#pragma once

#include <QMetaType>

/// The levels of log lines.
struct LogLevel
{
    /// The levels from Debug to Critical are severities, except that Event marks a line of the
    /// machine's event history. Grinder, Capsule and M4 select a separate file for the line.
    enum Level : quint32 { Debug, Info, Event, Warning, Error, Critical, Grinder, Capsule, M4 };
};

Q_DECLARE_METATYPE(LogLevel)
Q_DECLARE_METATYPE(LogLevel::Level)
