# Another processor than that of this computer: the toolchain files arm64.cmake and armhf.cmake name it
# and include this one. The compiler is Debian's; the libraries lie below ZELTOOLS_CROSS_ROOT, with an
# emulator for the programs. `./dev test --arm64` and `./dev test --armhf` fill that folder.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${cross_processor})
set(CMAKE_CXX_COMPILER ${cross_triplet}-g++)

set(ZELTOOLS_CROSS_ROOT ${CMAKE_CURRENT_LIST_DIR}/../build/${cross_name} CACHE PATH
    "Holds root/ and the emulator")
get_filename_component(ZELTOOLS_CROSS_ROOT ${ZELTOOLS_CROSS_ROOT} ABSOLUTE)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZELTOOLS_CROSS_ROOT)
set(CMAKE_SYSROOT ${ZELTOOLS_CROSS_ROOT}/root)
set(CMAKE_LIBRARY_ARCHITECTURE ${cross_triplet})
set(ZELTOOLS_EMULATOR ${ZELTOOLS_CROSS_ROOT}/${cross_emulator})
set(ZELTOOLS_ELF_MACHINE ${cross_elf_machine}) # the number in the header of its programs
# In this emulator Qt may take for a child's number what is none: a test that ends its child would then end
# every process that it is allowed to. So each one gets a process namespace of its own, which no signal
# leaves.
set(CMAKE_CROSSCOMPILING_EMULATOR
    unshare --user --map-current-user --mount --pid --fork --kill-child --mount-proc
    ${ZELTOOLS_EMULATOR} -L ${CMAKE_SYSROOT})

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
