#pragma once

#include <zeltools/envvar/envvar.h>

namespace zeltools::envvar
{

/// A switch that is on or off; its only valid texts are "1" and "0".
class ZELTOOLS_EXPORT EnvVarBool : public EnvVar
{
    Q_OBJECT

public:
    /// Throws std::invalid_argument if the name is taken or if the value from the build or the
    /// environment is malformed. For a static variable this ends the program at start-up.
    EnvVarBool(const char* name, const char* description, Category category, Flags flags,
               const char* definedValue);
    ~EnvVarBool() override;

    /// Always Boolean.
    Type type() const override { return Boolean; }
    bool isStringValueValid(const QString& value) const override;

    /// Whether the effective value is "1". The call is suitable for hot paths in any thread.
    bool operator()() const { return number() == 1; }
    /// Sets the value from the environment to "1" or "0".
    void set(bool on);

    /// Switches on unless either source has a value: an explicit "0" stays.
    void enableIfUnset() { conditionallyEnableIfUnset(true); }
    /// Calls enableIfUnset() if the condition holds.
    void conditionallyEnableIfUnset(bool condition);

private:
    QString m_trueText;
    QString m_falseText;
};

} // namespace zeltools::envvar
