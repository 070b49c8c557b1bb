#pragma once

#include <zeltools/versionapp.h>

namespace zeltools
{

/// That of the library which the process has loaded, whatever it was compiled against.
ZELTOOLS_EXPORT VersionApp libraryVersion();

} // namespace zeltools
