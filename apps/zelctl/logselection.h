#pragma once

#include "linepattern.h"
#include "logentry.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

/// The lines that are to be shown.
struct LogSelection
{
    LogLevel::Level level = LogLevel::Debug; ///< this severity and worse
    /// Only lines of these files, and event lines of these kinds, " MenuAccess" with the blank that
    /// stands before it. All lines if there is none of either.
    std::vector<LogKind> kinds;
    std::vector<std::string> eventFields;
    LogTime from = 0;
    LogTime to = std::numeric_limits<LogTime>::max();
    LinePattern pattern;

    /// Whether all but the pattern selects the line.
    bool accepts(const LogEntry& entry) const;

private:
    bool isWanted(const LogEntry& entry) const;
};

/// Reads a time "dd/MM/yyyy", "dd/MM/yyyy hh:mm" or "dd/MM/yyyy hh:mm:ss". Its last millisecond is
/// meant if it `isEnd`, otherwise its first. Empty for another text.
std::optional<LogTime> readLogTime(const QString& text, bool isEnd);
