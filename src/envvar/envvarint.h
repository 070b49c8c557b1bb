#pragma once

#include <zeltools/envvar/envvar.h>

namespace zeltools::envvar
{

/// A switch whose value is a decimal int; white space around it is allowed, as QString::toInt() has
/// it.
class ZELTOOLS_EXPORT EnvVarInt : public EnvVar
{
    Q_OBJECT

public:
    /// Throws as EnvVarBool.
    EnvVarInt(const char* name, const char* description, Category category, Flags flags,
              const char* definedValue);
    ~EnvVarInt() override;

    Type type() const override { return Integer; }
    bool isStringValueValid(const QString& value) const override;

    /// The value in force, 0 when there is none. May be called from any thread.
    int operator()() const { return number(); }
    void set(int value);
};

} // namespace zeltools::envvar
