#include "logging/debugmodules.h"

#include "logging/debugswitch.h"

using zeltools::DebugSwitch;

DebugModules& DebugModules::shared()
{
    static auto* modules = new DebugModules;
    return *modules;
}

void DebugModules::add(const LogModule& module)
{
    const QMutexLocker locker(&m_mutex);
    m_modules.add(module);
    publish();
}

void DebugModules::remove(const LogModule& module)
{
    const QMutexLocker locker(&m_mutex);
    m_modules.remove(module);
    publish();
}

QStringList DebugModules::updateFromEnvVars()
{
    const QMutexLocker locker(&m_mutex);
    QStringList added = m_modules.updateFromEnvVars();
    publish();
    return added;
}

bool DebugModules::containsOneOf(const LogModules& modules) const
{
    if ((DebugSwitch::s_moduleBits.load(std::memory_order_relaxed) & modules.m_bits) != 0)
        return true;
    if (modules.m_others.isEmpty())
        return false;
    const QMutexLocker locker(&m_mutex);
    return m_modules.containsOneOf(modules);
}

void DebugModules::publish()
{
    DebugSwitch::s_moduleBits.store(m_modules.m_bits, std::memory_order_relaxed);
}
