#pragma once

#include <QMutex>

namespace zeltools
{

/// Held while libsystemd reads the environment, and while WindowsTools changes it. libsystemd may
/// hold it for long, since it waits for the service manager after it has read.
inline QMutex& environmentLock()
{
    static auto* const lock = new QMutex; // a message may be under way when the process ends
    return *lock;
}

} // namespace zeltools
