#pragma once

#include "logging/loglevel.h"

#include <QLatin1String>

/// The eight-character text of a level, see LogRenderer::levelToString().
QLatin1String logLevelText(LogLevel::Level level);

/// Whether the prefix of such a line names the level: events name their kind instead, grinder and
/// capsule lines nothing.
constexpr bool isLevelNamed(LogLevel::Level level)
{
    return level != LogLevel::Event && level != LogLevel::Grinder && level != LogLevel::Capsule;
}

/// Passes the pieces of LogRenderer::pattern() to `append` one after the other, so that a line can
/// be put together in any kind of buffer.
template <typename Append>
void appendLogPrefix(LogLevel::Level level, QLatin1String timestamp, Append&& append)
{
    append(timestamp);
    if (isLevelNamed(level)) {
        append(QLatin1String("| "));
        append(logLevelText(level));
        append(QLatin1String(" | "));
    } else {
        append(QLatin1String("|"));
    }
}
