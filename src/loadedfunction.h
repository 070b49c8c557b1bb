#pragma once

#include <dlfcn.h>

namespace zeltools
{

/// Returns a C function of a shared library that the process loads now, unless it has done so
/// before, and never unloads; null if there is no such library or function. The name of the library
/// is the one that programs are linked to, such as "libsystemd.so.0". Functions that few programs
/// need are found in this way, since a library costs each program time at its start. Any thread may
/// call it, but not while it holds a lock, including that of a static object's initialization: the
/// function waits for other threads that load a library, and the code of that library may want the
/// lock.
template <typename Function>
Function* loadedFunction(const char* library, const char* name)
{
    void* const handle = ::dlopen(library, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    return handle != nullptr ? reinterpret_cast<Function*>(::dlsym(handle, name)) : nullptr;
}

} // namespace zeltools
