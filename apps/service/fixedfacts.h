#pragma once

/// The facts of a fixed computer. They replace those that the process reads from the system, so
/// that pictures are the same everywhere.
namespace fixedfacts
{

/// From now on, uname(), statvfs() and the files of the kernel that the pages read describe that
/// machine, which has no removable media. Call it before the process has threads.
void use();

} // namespace fixedfacts
