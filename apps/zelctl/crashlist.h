#pragma once

#include "command.h"

#include <zeltools/crashreports/crashreport.h>

/// Reads the report in a file. Returns nothing, and path and reason in `error`, if it has none.
std::optional<zeltools::CrashReport> readCrashReport(const QString& path, QString& error);

/// Prints a line for each report in the folder, the newest first, as a table() of that width.
/// Fails, after the list, if one cannot be read.
ExitStatus printCrashList(const QString& folder, bool isJson, int width);
