#pragma once

#include <sys/stat.h>

namespace zeltools
{

/// Whether two results of stat(2) belong to one file, whatever the paths that led to it.
inline bool isSameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace zeltools
