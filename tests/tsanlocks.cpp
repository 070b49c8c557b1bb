// Debian's Qt is built without the thread sanitizer. The sanitizer therefore does not see that a
// QMutex orders the threads that lock it, nor that a thread of a pool begins after start() was
// called. These definitions replace Qt's own in every test program, call them and inform the
// sanitizer.

#include "interpose.h"

#include <cstdarg>
#include <functional>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include <sanitizer/tsan_interface.h>

INTERPOSED void _ZN6QMutex4lockEv(void* mutex)
{
    static const auto lock = original<void(void*)>("_ZN6QMutex4lockEv");
    lock(mutex);
    __tsan_acquire(mutex);
}

INTERPOSED bool _ZN6QMutex7tryLockEi(void* mutex, int timeout)
{
    static const auto tryLock = original<bool(void*, int)>("_ZN6QMutex7tryLockEi");
    const bool isLocked = tryLock(mutex, timeout);
    if (isLocked)
        __tsan_acquire(mutex);
    return isLocked;
}

INTERPOSED void _ZN6QMutex6unlockEv(void* mutex)
{
    static const auto unlock = original<void(void*)>("_ZN6QMutex6unlockEv");
    __tsan_release(mutex);
    unlock(mutex);
}

using Work = std::function<void()>;
// A call passes the address of an argument whose class has a destructor.
INTERPOSED void _ZN11QThreadPool5startESt8functionIFvvEEi(void* pool, Work* work, int priority)
{
    static const auto start =
        original<void(void*, Work*, int)>("_ZN11QThreadPool5startESt8functionIFvvEEi");
    auto* const own = new Work(std::move(*work));
    __tsan_release(own);
    // A single pointer is kept in what Qt allocates; the sanitizer sees no thread write it.
    Work told = [own] {
        __tsan_acquire(own);
        (*own)();
        delete own;
    };
    start(pool, &told, priority);
}

// The sanitizer does not see descriptors that fcntl() makes and fails itself when it reports about
// one. It sees dup3(), which here replaces the new descriptor by the same.
INTERPOSED int fcntl(int descriptor, int command, ...)
{
    static const auto control = original<int(int, int, void*)>("fcntl");
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    const int result = control(descriptor, command, argument);
    if (command == F_DUPFD_CLOEXEC && result >= 0)
        dup3(descriptor, result, O_CLOEXEC);
    return result;
}
