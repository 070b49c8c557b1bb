#pragma once

#include <cerrno>
#include <cstddef>

#include <unistd.h>

/// write(2) until all is written, nothing more can be, or the system refuses: a line leaves the
/// process in one piece wherever that is possible. Returns the number of bytes written.
inline ssize_t writeWhole(int descriptor, const char* data, size_t length)
{
    size_t written = 0;
    while (written < length) {
        const ssize_t count = ::write(descriptor, data + written, length - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        written += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(written);
}
