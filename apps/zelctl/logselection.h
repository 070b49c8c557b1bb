#pragma once

#include "linepattern.h"
#include "logentry.h"

#include <limits>
#include <optional>

/// The lines that are to be shown.
struct LogSelection
{
    LogLevel::Level level = LogLevel::Debug; ///< this severity and worse
    std::optional<LogKind> kind;             ///< only lines of this file
    /// Only event lines of this kind, " MenuAccess" with the blank that stands before it.
    std::string eventField;
    LogTime from = 0;
    LogTime to = std::numeric_limits<LogTime>::max();
    LinePattern pattern;

    /// Whether all but the pattern selects the line.
    bool accepts(const LogEntry& entry) const;
};

/// Reads a time "dd/MM/yyyy", "dd/MM/yyyy hh:mm" or "dd/MM/yyyy hh:mm:ss". Its last millisecond is
/// meant if it `isEnd`, otherwise its first. Empty for another text.
std::optional<LogTime> readLogTime(const QString& text, bool isEnd);
