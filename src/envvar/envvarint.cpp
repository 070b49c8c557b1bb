#include "envvar/envvarint.h"

namespace zeltools::envvar
{

EnvVarInt::EnvVarInt(const char* name, const char* description, Category category, Flags flags,
                     const char* definedValue)
    : EnvVar(name, description, category, flags, Integer)
{
    readOrUnregister(definedValue);
}

EnvVarInt::~EnvVarInt() = default;

bool EnvVarInt::isStringValueValid(const QString& value) const
{
    bool ok = false;
    value.toInt(&ok);
    return ok;
}

void EnvVarInt::set(int value)
{
    setStringValueOpt(Env, QString::number(value));
}

} // namespace zeltools::envvar
