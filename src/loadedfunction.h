#pragma once

#include <atomic>

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

/// Keeps the result of loadedFunction(), also null, for a static object. No lock is held meanwhile:
/// threads that need the function at the same time all load it.
template <typename Function>
class KeptFunction
{
public:
    /// Both texts must outlive the object.
    constexpr KeptFunction(const char* library, const char* name)
        : m_library(library)
        , m_name(name)
    {
    }
    /// Returns the function, or null if the library or the function is missing.
    Function* get()
    {
        if (!m_isLoaded) {
            m_function = loadedFunction<Function>(m_library, m_name);
            m_isLoaded = true;
        }
        return m_function;
    }

private:
    const char* const m_library;
    const char* const m_name;
    std::atomic<Function*> m_function = nullptr;
    std::atomic<bool> m_isLoaded = false;
};

} // namespace zeltools
