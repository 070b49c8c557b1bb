#pragma once

#include <zeltools/envvar/envvarbool.h>
#include <zeltools/envvar/envvarstring.h>

/// The switches of the machine software, constructed when the library is loaded, in this order;
/// `description()` says what each is for, and so does its row in envvarstable.h. The platform,
/// the operating system, the encryption of the databases and the model come from the build; the
/// environment may say otherwise, which is how a desktop build behaves as another model.
///
///     if (EnvVars::CanBusSimulation())
namespace zeltools::envvar::EnvVars
{

#define ZELTOOLS_SWITCH(object, variable, type, category, flags, description)                      \
    extern ZELTOOLS_EXPORT EnvVar##type object;
#include <zeltools/envvar/envvarstable.h>

} // namespace zeltools::envvar::EnvVars
