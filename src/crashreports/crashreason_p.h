#pragma once

#include <sys/types.h>

namespace zeltools
{

/// The reason that a thread gives before it aborts the process.
class CrashReason
{
public:
    CrashReason() = delete;

    /// Finds the messages of the C library. Call it before the others.
    static void prepare();
    /// Keeps the first 500 bytes of the text, for the calling thread.
    static void note(const char* text);
    /// Keeps the type and the text of the exception that the calling thread has not caught.
    static void noteException();
    /// The text that this thread has noted last. If another thread has noted one since, or none
    /// has, the message of the C library, which may be empty. Async-signal-safe; only one thread
    /// may call it.
    static const char* of(pid_t thread);
};

} // namespace zeltools
