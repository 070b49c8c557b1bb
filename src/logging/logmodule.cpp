#include "logging/logmodule.h"

#include "logging/logmodules.h"

namespace
{

// The first module that registers creates it, so it is destroyed after the last static module.
QVector<LogModule*>& registry()
{
    static QVector<LogModule*> modules;
    return modules;
}

} // namespace

LogModule::LogModule(const QString& name, bool hasEnvVar)
    : m_id(static_cast<quint32>(registry().size()))
    , m_name(name)
    , m_hasEnvVar(hasEnvVar)
{
    registry().append(this);
}

LogModule::LogModule(const LogModule& other)
    : m_id(other.m_id)
    , m_name(other.m_name)
    , m_hasEnvVar(true)
{
}

LogModule::~LogModule()
{
    registry().removeAll(this);
}

const QVector<LogModule*>& LogModule::registeredModulesConst()
{
    return registry();
}

QString LogModule::debugEnvVarName() const
{
    return m_hasEnvVar ? QStringLiteral("ZEL_DEBUG_") + m_name.toUpper() : QString();
}

LogModules LogModule::operator|(const LogModule& other) const
{
    return LogModules(*this) | other;
}
