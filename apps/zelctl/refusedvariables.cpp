#include "refusedvariables.h"

#include <cstddef>
#include <cstdlib>

namespace
{

#define NAME_Bool(name) name,
#define NAME_Int(name) name,
#define NAME_String(name) // accepts every value
#define ZELTOOLS_SWITCH(object, variable, type, category, flags, description) NAME_##type(#variable)
constexpr const char* s_names[]{
#include <zeltools/envvar/envvarstable.h>
};

char* s_setAside[sizeof s_names / sizeof *s_names]; // "NAME=value", in the memory of the process
size_t s_setAsideCount = 0;

// At this time neither the C library nor the run-time libraries of the sanitizers may be used.
#define EARLY                                                                                      \
    __attribute__((no_sanitize("address"), no_sanitize("thread"), no_sanitize("undefined")))

/// The value if the entry belongs to that variable, otherwise null.
EARLY const char* valueOf(const char* entry, const char* name)
{
    while (*name != '\0' && *entry == *name) {
        ++entry;
        ++name;
    }
    return *name == '\0' && *entry == '=' ? entry + 1 : nullptr;
}

EARLY bool isRefused(const char* entry)
{
    for (const char* name : s_names) {
        if (const char* value = valueOf(entry, name))
            return (value[0] != '0' && value[0] != '1') || value[1] != '\0';
    }
    return false;
}

EARLY void setRefusedVariablesAside(int, char**, char** environment)
{
    char** kept = environment;
    for (char** entry = environment; *entry != nullptr; ++entry) {
        if (s_setAsideCount < sizeof s_setAside / sizeof *s_setAside && isRefused(*entry))
            s_setAside[s_setAsideCount++] = *entry;
        else
            *kept++ = *entry;
    }
    *kept = nullptr;
}

// The loader calls only these functions before the constructors of the shared libraries.
[[gnu::section(".preinit_array"),
  gnu::used]] void (*s_beforeLibraries)(int, char**, char**) = setRefusedVariablesAside;

} // namespace

void putRefusedVariablesBack()
{
    for (size_t i = 0; i < s_setAsideCount; ++i)
        putenv(s_setAside[i]);
}
