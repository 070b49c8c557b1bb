#pragma once

#include "crashsymbols.h"

/// The name of the signal, such as "SIGSEGV"; "no signal" if there was none.
QString crashSignal(const zeltools::CrashReport& report);
/// The time in this machine's zone, in the form of the log lines; "-" if it is unknown.
QString crashTime(qint64 time_ms);

/// The report for people. Control characters are masked.
QString crashText(const zeltools::CrashReport& report, const CrashSymbols& symbols);
