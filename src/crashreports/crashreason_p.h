#pragma once

#include <sys/types.h>

namespace zeltools
{

/// The reason that a thread gives before it aborts the process.
class CrashReason
{
public:
    CrashReason() = delete;

    /// Keeps the first 500 bytes of the text, for the calling thread.
    static void note(const char* text);
    /// Keeps the type and the text of the exception that the calling thread has not caught.
    static void noteException();
    /// The text that this thread has noted last, or an empty one if another thread has noted one
    /// since. Async-signal-safe.
    static const char* of(pid_t thread);
};

} // namespace zeltools
