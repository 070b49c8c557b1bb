#pragma once

#include <cerrno>
#include <cstddef>

#include <poll.h>
#include <unistd.h>

namespace zeltools
{

/// Calls write(2) until all bytes are written or the system refuses, so that a line leaves the
/// process in one piece wherever that is possible. The reader of a non-blocking pipe gets a tenth
/// of a second to make room. Returns the number of bytes written.
inline ssize_t writeWhole(int descriptor, const char* data, size_t length)
{
    size_t written = 0;
    while (written < length) {
        const ssize_t count = ::write(descriptor, data + written, length - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && errno == EAGAIN) {
            constexpr int patience_ms = 100;
            pollfd room = {descriptor, POLLOUT, 0};
            if (poll(&room, 1, patience_ms) > 0)
                continue;
        }
        if (count <= 0)
            break;
        written += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(written);
}

} // namespace zeltools
