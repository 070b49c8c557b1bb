#pragma once

#include <zeltools/envvar/envvar.h>

namespace zeltools::envvar
{

/// A switch whose value is a decimal int. White space around it is allowed, as for
/// QString::toInt().
class ZELTOOLS_EXPORT EnvVarInt : public EnvVar
{
    Q_OBJECT

public:
    /// Throws like the constructor of EnvVarBool.
    EnvVarInt(const char* name, const char* description, Category category, Flags flags,
              const char* definedValue);
    ~EnvVarInt() override;

    /// Always Integer.
    Type type() const override { return Integer; }
    bool isStringValueValid(const QString& value) const override;

    /// The effective value, or 0 without one. Any thread may call it.
    int operator()() const { return number(); }
    /// Sets the value from the environment.
    void set(int value);
};

} // namespace zeltools::envvar
