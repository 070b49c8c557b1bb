#pragma once

#include "logging/loglevel.h"
#include "logging/logmodules.h"

/// Where a line goes once it is to be printed.
enum class LogRoute {
    General, ///< Standard error and the general file.
    Failure, ///< The same, twice on standard error, and announced.
    Events,
    Grinder,
    Capsule,
    M4ActuatorBoard
};

/// A line of exactly the module Failure is a failure whatever its level; otherwise the level tells.
LogRoute logRoute(LogLevel::Level level, const LogModules& modules);
