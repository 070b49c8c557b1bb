#pragma once

#include <dlfcn.h>

/// Introduces a definition that the whole process uses in place of a library's own.
#define INTERPOSED extern "C" __attribute__((visibility("default")))

/// Returns the library's own function.
template <typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
