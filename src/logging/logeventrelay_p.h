#pragma once

#include "logging/logeventmodule.h"

#include <QString>

/// Announces an event line through the log manager, which defines this function: the one call from
/// the lines up to their sink.
void relayLogEvent(LogEventModule::EventModule event, const QString& message);
