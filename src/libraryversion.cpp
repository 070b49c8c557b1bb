#include "libraryversion.h"

VersionApp zeltools::libraryVersion()
{
    return {ZELTOOLS_VERSION_MAJOR, ZELTOOLS_VERSION_MINOR, ZELTOOLS_VERSION_PATCH};
}
