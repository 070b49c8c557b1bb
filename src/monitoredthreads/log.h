#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>

/// Functions that log lines about the watched threads under `Log::Global`.
namespace monitored_threads::log
{

/// @{
/// Writes a line of the level in the name under `Log::Global`.
ZELTOOLS_EXPORT void debug(const QString& text);
ZELTOOLS_EXPORT void info(const QString& text);
ZELTOOLS_EXPORT void warning(const QString& text);
/// @}

} // namespace monitored_threads::log
