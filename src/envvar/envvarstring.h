#pragma once

#include <zeltools/envvar/envvar.h>

namespace zeltools::envvar
{

/// A switch that holds any text.
class ZELTOOLS_EXPORT EnvVarString : public EnvVar
{
    Q_OBJECT

public:
    /// Throws std::invalid_argument if the name is taken.
    EnvVarString(const char* name, const char* description, Category category, Flags flags,
                 const char* definedValue);
    ~EnvVarString() override;

    /// Always String.
    Type type() const override { return String; }
    bool isStringValueValid(const QString&) const override { return true; }

    /// The effective value, or a null string without one. Do not call it while another thread
    /// writes.
    QString operator()() const { return stringValueOpt().value_or(QString()); }
    /// Sets the value from the environment.
    void set(const QString& value);
};

} // namespace zeltools::envvar
