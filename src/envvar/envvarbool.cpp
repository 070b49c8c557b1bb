#include "envvar/envvarbool.h"

namespace zeltools::envvar
{

EnvVarBool::EnvVarBool(const char* name, const char* description, Category category, Flags flags,
                       const char* definedValue)
    : EnvVar(name, description, category, flags, Boolean)
    , m_trueText(QStringLiteral("1"))
    , m_falseText(QStringLiteral("0"))
{
    readOrUnregister(definedValue);
}

EnvVarBool::~EnvVarBool() = default;

bool EnvVarBool::isStringValueValid(const QString& value) const
{
    return value == m_trueText || value == m_falseText;
}

void EnvVarBool::set(bool on)
{
    setStringValueOpt(Env, on ? m_trueText : m_falseText);
}

void EnvVarBool::conditionallyEnableIfUnset(bool condition)
{
    if (condition && !stringValueOpt())
        set(true);
}

} // namespace zeltools::envvar
