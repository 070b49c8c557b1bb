// Debian's Qt is built without the thread sanitizer, which therefore does not know that a QMutex
// orders the threads that take it, nor that a thread of a pool begins after its work was handed
// over. These definitions come before Qt's own in every test program, call them, and tell the
// sanitizer.

#include <functional>
#include <utility>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace
{

template <typename Function>
Function* real(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" __attribute__((visibility("default"))) void _ZN6QMutex4lockEv(void* mutex)
{
    static const auto lock = real<void(void*)>("_ZN6QMutex4lockEv");
    lock(mutex);
    __tsan_acquire(mutex);
}

extern "C" __attribute__((visibility("default"))) bool _ZN6QMutex7tryLockEi(void* mutex,
                                                                            int timeout)
{
    static const auto tryLock = real<bool(void*, int)>("_ZN6QMutex7tryLockEi");
    const bool isLocked = tryLock(mutex, timeout);
    if (isLocked)
        __tsan_acquire(mutex);
    return isLocked;
}

extern "C" __attribute__((visibility("default"))) void _ZN6QMutex6unlockEv(void* mutex)
{
    static const auto unlock = real<void(void*)>("_ZN6QMutex6unlockEv");
    __tsan_release(mutex);
    unlock(mutex);
}

using Work = std::function<void()>;
// An argument of a class with a destructor is passed as its address.
extern "C" __attribute__((visibility("default"))) void
_ZN11QThreadPool5startESt8functionIFvvEEi(void* pool, Work* work, int priority)
{
    static const auto start =
        real<void(void*, Work*, int)>("_ZN11QThreadPool5startESt8functionIFvvEEi");
    __tsan_release(pool);
    Work told = [pool, inner = std::move(*work)] {
        __tsan_acquire(pool);
        inner();
    };
    start(pool, &told, priority);
}
