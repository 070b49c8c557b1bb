// Under qemu-user, Qt cannot start processes: the emulator does not implement the process
// descriptors on which Qt waits, and the kernel cannot execute programs of the machine's processor.
// These definitions replace those of the C library: Qt does without such descriptors, and starts
// the machine's programs in the emulator.

#include "interpose.h"

#include <cerrno>
#include <cstdarg>
#include <fstream>
#include <vector>

#include <sys/syscall.h>
#include <unistd.h>

namespace
{

bool isForTheMachine(const char* path)
{
    char header[20] = {};
    return std::ifstream(path, std::ios::binary).read(header, sizeof header) && header[0] == 0x7f &&
           header[1] == 'E' && static_cast<unsigned char>(header[18]) == ELF_MACHINE;
}

} // namespace

INTERPOSED long syscall(long number, ...) noexcept
{
    long arguments[6];
    va_list list;
    va_start(list, number);
    for (long& argument : arguments)
        argument = va_arg(list, long);
    va_end(list);
    constexpr long processDescriptor = 3; // P_PIDFD
    if (number == SYS_waitid && arguments[0] == processDescriptor) {
        errno = ENOSYS;
        return -1;
    }
    static auto* const next = original<long(long, ...)>("syscall");
    return next(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
                arguments[5]);
}

INTERPOSED int execve(const char* path, char* const arguments[], char* const environment[]) noexcept
{
    static auto* const next =
        original<int(const char*, const char* const*, char* const*)>("execve");
    if (!isForTheMachine(path))
        return next(path, arguments, environment);
    std::vector<const char*> emulated{EMULATOR, "-L", SYSROOT, path};
    for (char* const* argument = arguments + 1; *argument != nullptr; ++argument)
        emulated.push_back(*argument);
    emulated.push_back(nullptr);
    return next(EMULATOR, emulated.data(), environment);
}

INTERPOSED int execv(const char* path, char* const arguments[]) noexcept
{
    return execve(path, arguments, environ);
}
