# A processor of 32 bits, as in older machines.
set(cross_name armhf)
set(cross_processor armv7l)
set(cross_triplet arm-linux-gnueabihf)
set(cross_emulator qemu-arm-static)
set(cross_elf_machine 40)
# GCC would tell at each call that version 7.1 changed how arguments are passed.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
