// A test that is linked to this file can be run as on a machine without a library: HIDDEN_LIBRARY
// is the beginning of its name. The first search takes a second, as on slow storage.

#include "interpose.h"

#include <cstdlib>
#include <cstring>

#include <unistd.h>

INTERPOSED void* dlopen(const char* file, int mode)
{
    static auto* const own = original<void*(const char*, int)>("dlopen");
    const char* const hidden = std::getenv("HIDDEN_LIBRARY");
    if (file != nullptr && hidden != nullptr && std::strncmp(file, hidden, strlen(hidden)) == 0) {
        [[maybe_unused]] static const unsigned int rest_s = sleep(1);
        return nullptr;
    }
    return own(file, mode);
}
