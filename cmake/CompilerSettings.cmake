# Language level, visibility, warnings and sanitizers for everything below.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT ZELTOOLS_BUILD MATCHES "^(desktop|board)$")
    message(FATAL_ERROR "ZELTOOLS_BUILD is \"${ZELTOOLS_BUILD}\"; it must be desktop or board")
endif()
if(NOT ZELTOOLS_MODEL MATCHES "^(ARIETTA|CADENZA|SONATA|VIVO)$")
    message(FATAL_ERROR
            "ZELTOOLS_MODEL is \"${ZELTOOLS_MODEL}\"; it must be ARIETTA, CADENZA, SONATA or VIVO")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Wcast-align -Wnull-dereference -Wimplicit-fallthrough)
# A 32-bit board reads and writes files of more than 2 GiB, too. The files of Qt have 64 bits anyway.
add_compile_definitions(_FILE_OFFSET_BITS=64)
# No path of the machine that builds gets into the binaries, so that each machine builds the same.
# The last option that matches counts.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
                    -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
if(ZELTOOLS_WERROR)
    add_compile_options(-Werror)
endif()
if(ZELTOOLS_SANITIZE)
    add_compile_options(-fsanitize=${ZELTOOLS_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZELTOOLS_SANITIZE})
    if(ZELTOOLS_SANITIZE MATCHES undefined)
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()
if(ZELTOOLS_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link) # the library tells which of its ways are taken
endif()
