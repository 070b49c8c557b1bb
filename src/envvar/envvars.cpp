#include "envvar/envvars.h"

// The text of what a symbol stands for: "1" when the build defines it so, its own name when not.
#define TEXT(symbol) #symbol
#define ZELTOOLS_SWITCH(object, variable, type, category, flags, description)                      \
    EnvVar##type object(#variable, description, category, Flags(QFlag(flags)), TEXT(variable));

namespace zeltools::envvar::EnvVars
{

#include "envvar/envvarstable.h"

} // namespace zeltools::envvar::EnvVars
