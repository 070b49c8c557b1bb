# The machine's processor.
set(cross_name arm64)
set(cross_processor aarch64)
set(cross_triplet aarch64-linux-gnu)
set(cross_emulator qemu-aarch64-static)
set(cross_elf_machine 183)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
