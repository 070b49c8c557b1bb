#pragma once

#include <zeltools/logging/logeventmodule.h>
#include <zeltools/logging/loglevel.h>

#include <QLatin1String>
#include <QString>

/// Formats log lines. A line has one of these forms:
///
///     15/11/2026 03:37:40:123| Warning  | text        ordinary levels
///     15/11/2026 03:37:40:123| MenuAccess| text       events, whose message begins " MenuAccess| "
///     15/11/2026 03:37:40:123|text                    grinder and capsule lines
///
/// All functions may be called from any thread.
class ZELTOOLS_EXPORT LogRenderer
{
public:
    /// The name of the level, padded with blanks to eight characters; "Capsule" and "M4" are not
    /// padded. Empty for an unknown level.
    static QString levelToString(LogLevel::Level level);
    static QLatin1String levelText(LogLevel::Level level); ///< The same text without a copy.
    /// The text before the message: the current local time and, for ordinary levels and M4, the
    /// level.
    static QString pattern(LogLevel::Level level);
    /// Passes the pieces of pattern() to `append(QLatin1String)` one after the other, so that a
    /// line can be put together in a buffer of any kind. The time stamp is one of logTimestamp().
    template <typename Append>
    static void appendPattern(LogLevel::Level level, QLatin1String timestamp, Append&& append);
    /// pattern() and the message.
    static QString formattedMessage(LogLevel::Level level, const QString& message);

    /// The translated name of the kind, as in the events file. "Undefined" for an unknown kind.
    static QString eventToString(LogEventModule::EventModule event);
    /// The kinds of a set in the order of their bits, joined by ",".
    static QString eventToString(LogEventModule::EventModules events);
};

template <typename Append>
void LogRenderer::appendPattern(LogLevel::Level level, QLatin1String timestamp, Append&& append)
{
    append(timestamp);
    // Events name their kind instead of the level, grinder and capsule lines nothing.
    if (level == LogLevel::Event || level == LogLevel::Grinder || level == LogLevel::Capsule) {
        append(QLatin1String("|"));
        return;
    }
    append(QLatin1String("| "));
    append(levelText(level));
    append(QLatin1String(" | "));
}
