#pragma once

#include "envvar/envvarstore.h"

#include <stdexcept>

/// A variable that leaves the store when it goes.
template <typename Variable>
class TestVariable : public Variable
{
public:
    explicit TestVariable(const char* name, const char* definedValue = nullptr)
        : Variable(name, "A variable of this test", zeltools::envvar::Test, {}, definedValue)
    {
    }
    ~TestVariable() override { zeltools::envvar::EnvVarStore::instance().removeEnvVar(this); }
};

/// The text of the std::invalid_argument that the call throws.
template <typename Call>
QString thrownBy(Call&& call)
{
    try {
        call();
    } catch (const std::invalid_argument& error) {
        return QString::fromUtf8(error.what());
    }
    return QStringLiteral("nothing was thrown");
}
