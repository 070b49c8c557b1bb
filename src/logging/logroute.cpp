#include "logging/logroute_p.h"

#include "logging/log.h"

LogRoute logRoute(LogLevel::Level level, const LogModules& modules)
{
    if (modules == Log::Failure)
        return LogRoute::Failure;
    switch (level) {
    case LogLevel::Event:
        return LogRoute::Events;
    case LogLevel::Grinder:
        return LogRoute::Grinder;
    case LogLevel::Capsule:
        return LogRoute::Capsule;
    case LogLevel::M4:
        return LogRoute::M4ActuatorBoard;
    default:
        return LogRoute::General;
    }
}
