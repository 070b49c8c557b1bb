#pragma once

#include "filedescriptor.h"

#include <cstddef>

#include <sys/types.h>

namespace zeltools
{

/// The threads of this process, read from the kernel one after the other. Async-signal-safe.
class ThreadList
{
public:
    ThreadList();

    /// The kernel's id of the next thread; 0 after the last one.
    pid_t next();

private:
    const FileDescriptor m_folder;
    size_t m_place = 0;
    size_t m_size = 0;
    alignas(8) char m_entries[4096];
};

/// The name of a thread of this process, for the longest name of the kernel; empty if the thread
/// has ended. Async-signal-safe.
struct ThreadName
{
    explicit ThreadName(pid_t thread);

    char text[16] = {};
};

} // namespace zeltools
