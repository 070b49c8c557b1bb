#pragma once

#include <QtGlobal>

#include <cstddef>

#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace zeltools
{

/// Copies memory of this process that may not be there: the kernel does it, and returns an error
/// where a plain read would crash. Returns whether all of it was copied. Async-signal-safe.
inline bool readOwnMemory(quintptr address, void* target, size_t size)
{
    const iovec to{target, size};
    const iovec from{reinterpret_cast<void*>(address), size};
    return syscall(SYS_process_vm_readv, getpid(), &to, 1, &from, 1, 0) == long(size);
}

} // namespace zeltools
