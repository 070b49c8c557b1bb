#pragma once

#include <zeltools/versionapp.h>

namespace zeltools
{

/// The version of the library that this process has loaded, which may differ from the version that
/// the program was compiled with.
ZELTOOLS_EXPORT VersionApp libraryVersion();

} // namespace zeltools
