#pragma once

#include <zeltools/logging/logmodules.h>

#include <QMutex>

/// The modules whose debug lines are printed: one set for the process, which LogManager switches
/// and LogNode asks before the text of a line is formed; DebugSwitch has a copy of its bits. Safe
/// to call from any thread, and without a lock in the usual case of a predefined module.
class ZELTOOLS_EXPORT DebugModules
{
public:
    /// Lives until the process ends, since lines are written until then.
    static DebugModules& shared();

    /// Switches the debug lines of the module on.
    void add(const LogModule& module);
    /// Switches the debug lines of the module off.
    void remove(const LogModule& module);
    /// LogModules::updateFromEnvVars() on this set.
    QStringList updateFromEnvVars();
    /// Whether debug lines of at least one of the modules are printed.
    bool containsOneOf(const LogModules& modules) const;

private:
    void publish();

    mutable QMutex m_mutex;
    LogModules m_modules;
};
