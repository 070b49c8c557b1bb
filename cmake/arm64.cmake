# The machine's processor, from a desktop: the compiler of Debian's g++-aarch64-linux-gnu, what it links
# with below ARM64_ROOT, and an emulator for what it has built. `./dev test --arm64` fills that folder.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)

set(ARM64_ROOT ${CMAKE_CURRENT_LIST_DIR}/../build/arm64 CACHE PATH "Holds root/ and qemu-aarch64-static")
get_filename_component(ARM64_ROOT ${ARM64_ROOT} ABSOLUTE)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ARM64_ROOT)
set(CMAKE_SYSROOT ${ARM64_ROOT}/root)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
# In this emulator Qt may take for a child's number what is none: a test that ends its child would then end
# every process that it is allowed to. So each one gets a process namespace of its own, which no signal
# leaves.
set(CMAKE_CROSSCOMPILING_EMULATOR
    unshare --user --map-current-user --mount --pid --fork --kill-child --mount-proc
    ${ARM64_ROOT}/qemu-aarch64-static -L ${CMAKE_SYSROOT})

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
