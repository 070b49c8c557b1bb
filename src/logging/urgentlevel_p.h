#pragma once

#include "logging/loglevel.h"

#include <QtGlobal>

/// Whether lines of the level wait for space in a full ring and are forced to the storage soon.
constexpr bool isUrgentLevel(quint8 level)
{
    return level == LogLevel::Event || level == LogLevel::Error || level == LogLevel::Critical;
}
