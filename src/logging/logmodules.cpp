#include "logging/logmodules.h"

#include <QProcessEnvironment>

namespace
{

constexpr quint64 bit(quint32 id)
{
    return quint64(1) << id;
}

} // namespace

void LogModules::add(const LogModule& module)
{
    if (module.id() < s_bitCount)
        m_bits |= bit(module.id());
    else
        m_others.insert(module.id());
}

void LogModules::remove(const LogModule& module)
{
    if (module.id() < s_bitCount)
        m_bits &= ~bit(module.id());
    else
        m_others.remove(module.id());
}

LogModules LogModules::operator|(const LogModule& module)
{
    LogModules result(*this);
    result.add(module);
    return result;
}

bool LogModules::contains(const LogModule& module) const
{
    return module.id() < s_bitCount ? (m_bits & bit(module.id())) != 0
                                    : m_others.contains(module.id());
}

bool LogModules::containsOneOf(const LogModules& other) const
{
    return (m_bits & other.m_bits) != 0 || m_others.intersects(other.m_others);
}

bool LogModules::operator==(const LogModule& module) const
{
    if (module.id() < s_bitCount)
        return m_bits == bit(module.id()) && m_others.isEmpty();
    return m_bits == 0 && m_others.size() == 1 && m_others.contains(module.id());
}

LogModules LogModules::fromBits(quint64 bits)
{
    LogModules modules;
    modules.m_bits = bits;
    return modules;
}

QStringList LogModules::getEnvVars()
{
    QStringList names;
    for (const LogModule* module : LogModule::registeredModulesConst()) {
        if (module->hasEnvVar())
            names.append(module->debugEnvVarName());
    }
    return names;
}

QStringList LogModules::updateFromEnvVars()
{
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const bool all = environment.value(QStringLiteral("ZEL_DEBUG_ALL"), QStringLiteral("0")) ==
                     QLatin1String("1");
    // All modules are looked at before the set changes, so that modules that share an id are
    // treated alike.
    QVector<const LogModule*> removed;
    QVector<const LogModule*> added;
    for (const LogModule* module : LogModule::registeredModulesConst()) {
        if (!module->hasEnvVar())
            continue;
        const QString value =
            all ? QStringLiteral("1") : environment.value(module->debugEnvVarName());
        if (value == QLatin1String("0") && contains(*module))
            removed.append(module);
        else if (value == QLatin1String("1") && !contains(*module))
            added.append(module);
    }
    QStringList names;
    for (const LogModule* module : removed)
        remove(*module);
    for (const LogModule* module : added) {
        add(*module);
        names.append(module->name());
    }
    return names;
}
