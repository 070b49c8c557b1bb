#pragma once

#include "crashsymbols.h"

#include <QJsonObject>

/// The time in UTC, in the form of ISO 8601; null if it is unknown.
QJsonValue crashIsoTime(qint64 time_ms);

/// The report for scripts. Addresses are texts, since numbers of JSON have only 53 bits.
QJsonObject crashJson(const zeltools::CrashReport& report, const CrashSymbols& symbols);
