#!/bin/sh
# check.sh BUILD_DIR COMPILER [WITH_SUPPORT [WITH_QUICK]]: installs the library into an empty prefix and builds and runs a host
# against it, found by CMake's package and by pkg-config.
set -eu
build=$1
compiler=$2
support=${3-OFF}
quick=${4-OFF}
source=$(dirname "$0")
work=$(mktemp -d)
manifest=$build/install_manifest.txt # The user may have one.
[ ! -e "$manifest" ] || mv "$manifest" "$work/manifest"
trap 'rm -f "$manifest"; [ ! -e "$work/manifest" ] || mv "$work/manifest" "$manifest"; rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" > /dev/null
"$work/prefix/share/zeltools/zelsim.py" --help > /dev/null
cmake -S "$source" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
      -DCMAKE_CXX_COMPILER="$compiler" -DWITH_SUPPORT="$support" \
      -DWITH_QUICK="$quick" -DWITH_ZELCTL=ON > /dev/null
cmake --build "$work/cmake" > /dev/null
mkdir -p "$work/a/opt/bin" "$work/b/opt/bin"
"$work/cmake/consumer" "$work/a/opt/bin"

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zeltools.pc)")
export PKG_CONFIG_PATH
# The loader does not know this prefix.
# shellcheck disable=SC2046
"$compiler" -std=c++17 "$source/main.cpp" -o "$work/consumer" $(pkg-config --cflags --libs zeltools)
libdir=$(pkg-config --variable=libdir zeltools)
LD_LIBRARY_PATH=$libdir "$work/consumer" "$work/b/opt/bin"

if LD_LIBRARY_PATH=$libdir ldd "$work/consumer" "$work/cmake/consumer" | grep -E 'libarchive|ToolsSimulator|Quick'; then
    echo "a host links what it does not use" >&2
    exit 1
fi
"$work/cmake/simulatorconsumer"
# shellcheck disable=SC2046
"$compiler" -std=c++17 "$source/simulator.cpp" -o "$work/simulatorconsumer" \
    $(pkg-config --cflags --libs zeltools-simulator) \
    "-Wl,-rpath,$(pkg-config --variable=libdir zeltools-simulator)"
"$work/simulatorconsumer"
if [ "$support" = ON ]; then
    "$work/cmake/supportconsumer" "$work/note.tar.zst"
    # shellcheck disable=SC2046
    "$compiler" -std=c++17 "$source/support.cpp" -o "$work/supportconsumer" \
        $(pkg-config --cflags --libs zeltools-support) \
        "-Wl,-rpath,$(pkg-config --variable=libdir zeltools-support)"
    "$work/supportconsumer" "$work/note.tar.gz"
fi
if [ "$quick" = ON ]; then
    export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software XDG_CACHE_HOME="$work/cache"
    qmldir=$(pkg-config --variable=qmldir zeltools-quick)
    "$work/cmake/quickconsumer" "$work/a/opt/bin" "$qmldir"
    # shellcheck disable=SC2046
    "$compiler" -std=c++17 "$source/quick.cpp" -o "$work/quickconsumer" \
        $(pkg-config --cflags --libs zeltools-quick) \
        "-Wl,-rpath,$(pkg-config --variable=libdir zeltools-quick)"
    "$work/quickconsumer" "$work/b/opt/bin" "$qmldir"
fi

for includes in "-I$source/names $(pkg-config --cflags zeltools)" \
                "$(pkg-config --cflags zeltools) -I$source/names"; do
    # shellcheck disable=SC2046,SC2086
    "$compiler" -std=c++17 $includes "$source/names.cpp" -o "$work/names" \
        $(pkg-config --libs zeltools) "-Wl,-rpath,$(pkg-config --variable=libdir zeltools)"
    status=0
    "$work/names" "$work/saved" > "$work/output" || status=$?
    test "$status" -eq 1
    grep -q 'path is not defined' "$work/output"
done

if find "$work/prefix" -name '*_p.h' | grep .; then
    echo "private headers were installed" >&2
    exit 1
fi

# A host without a screen needs no QML modules; one with a screen is told which file is missing.
if [ "$quick" = ON ]; then
    rm "$libdir"/libZelToolsQuick.so.*
    cmake "$work/cmake" -DWITH_QUICK=OFF > /dev/null
    if cmake "$work/cmake" -DWITH_QUICK=ON > /dev/null 2> "$work/errors"; then
        echo "a library that is missing is not noticed" >&2
        exit 1
    fi
    tr -s '\n ' ' ' < "$work/errors" | grep -q 'libZelToolsQuick.so is missing'
fi

cmake --build "$build" --target uninstall > /dev/null
if find "$work/prefix" ! -type d -o -iname '*zeltools*' | grep .; then
    echo "the target uninstall left these" >&2
    exit 1
fi
