#include "envvar/envvars.h"

// The expansion of a symbol as text: "1" if the build defines it so, its own name if undefined.
#define TEXT(symbol) #symbol
#define ZELTOOLS_SWITCH(object, variable, type, category, flags, description)                      \
    EnvVar##type object(#variable, description, category, Flags(QFlag(flags)), TEXT(variable));

namespace zeltools::envvar::EnvVars
{

#include "envvar/envvarstable.h"

} // namespace zeltools::envvar::EnvVars
