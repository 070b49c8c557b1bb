#pragma once

#include <zeltools/envvar/envvarbool.h>
#include <zeltools/envvar/envvarstring.h>

/// The switches of the machine software, constructed when the library is loaded, in this order;
/// `description()` and the row in envvarstable.h give the purpose of each. The platform, the
/// operating system, the encryption of the databases and the model come from the build; the
/// environment can override them, so that a desktop build behaves like another model.
///
///     if (EnvVars::CanBusSimulation())
namespace zeltools::envvar::EnvVars
{

#define ZELTOOLS_SWITCH(object, variable, type, category, flags, description)                      \
    extern ZELTOOLS_EXPORT EnvVar##type object;
#include <zeltools/envvar/envvarstable.h>

} // namespace zeltools::envvar::EnvVars
