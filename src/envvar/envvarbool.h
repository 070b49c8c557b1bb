#pragma once

#include <zeltools/envvar/envvar.h>

namespace zeltools::envvar
{

/// A switch that is on or off; its texts are "1" and "0", and nothing else.
class ZELTOOLS_EXPORT EnvVarBool : public EnvVar
{
    Q_OBJECT

public:
    /// Throws std::invalid_argument for a name that is taken and for a malformed value of the build
    /// or the environment; in a static variable this ends the program at start-up.
    EnvVarBool(const char* name, const char* description, Category category, Flags flags,
               const char* definedValue);
    ~EnvVarBool() override;

    Type type() const override { return Boolean; }
    bool isStringValueValid(const QString& value) const override;

    /// Whether the value in force is "1". Meant for hot paths, in any thread.
    bool operator()() const { return number() == 1; }
    void set(bool on);

    /// Switches on, unless a value is there from either source: an explicit "0" stays.
    void enableIfUnset() { conditionallyEnableIfUnset(true); }
    void conditionallyEnableIfUnset(bool condition);

private:
    QString m_trueText;
    QString m_falseText;
};

} // namespace zeltools::envvar
