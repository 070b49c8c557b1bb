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
# No path of the machine that builds gets into the binaries, so that each machine builds the same.
# The last option that matches counts.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
                    -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_compile_definitions(_FILE_OFFSET_BITS=64) # for files of 2 GiB and more
endif()
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
if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES ccache) # It cannot keep what was compiled with them.
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

# zel_precompile(TARGET): compiles what most sources include only once, which takes a third of the time
# off each. It is for those who build the tests; with Qt 6, as in packages, each source is
# compiled alone, so that an include that is missing is found.
function(zel_precompile target)
    if(BUILD_TESTING AND PROJECT_IS_TOP_LEVEL AND ZELTOOLS_QT EQUAL 5)
        target_precompile_headers(${target} PRIVATE
            <QCoreApplication> <QDateTime> <QDir> <QFile> <QHash> <QJsonObject> <QMap> <QMutex> <QThread>
            <QTimer> <QVariant> <QVector> <algorithm> <array> <atomic> <chrono> <functional> <memory>
            <optional> <string> <vector>)
    endif()
endfunction()
