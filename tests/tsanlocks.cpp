// Debian's Qt is built without the thread sanitizer, which therefore does not know that a QMutex
// orders the threads that take it. These definitions come before Qt's own in every test program,
// call them, and tell the sanitizer.

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
