#include "envvar/envvarstring.h"

namespace zeltools::envvar
{

EnvVarString::EnvVarString(const char* name, const char* description, Category category,
                           Flags flags, const char* definedValue)
    : EnvVar(name, description, category, flags, String)
{
    readOrUnregister(definedValue);
}

EnvVarString::~EnvVarString() = default;

void EnvVarString::set(const QString& value)
{
    setStringValueOpt(Env, value);
}

} // namespace zeltools::envvar
