#!/bin/sh
# check.sh BUILD_DIR COMPILER [WITH_SUPPORT]: installs the library into an empty prefix and builds and runs a host
# against it, found by CMake's package and by pkg-config.
set -eu
build=$1
compiler=$2
support=${3-OFF}
source=$(dirname "$0")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" > /dev/null
"$work/prefix/share/zeltools/zelsim.py" --help > /dev/null
cmake -S "$source" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
      -DCMAKE_CXX_COMPILER="$compiler" -DWITH_SUPPORT="$support" > /dev/null
cmake --build "$work/cmake" > /dev/null
mkdir -p "$work/a/opt/bin" "$work/b/opt/bin"
"$work/cmake/consumer" "$work/a/opt/bin"

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zeltools.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046
"$compiler" -std=c++17 -fPIC "$source/main.cpp" -o "$work/consumer" \
    $(pkg-config --cflags --libs zeltools) "-Wl,-rpath,$(pkg-config --variable=libdir zeltools)"
"$work/consumer" "$work/b/opt/bin"

if ldd "$work/consumer" "$work/cmake/consumer" | grep -E 'libarchive|ToolsSimulator'; then
    echo "a host links what it does not use" >&2
    exit 1
fi
"$work/cmake/simulatorconsumer"
# shellcheck disable=SC2046
"$compiler" -std=c++17 -fPIC "$source/simulator.cpp" -o "$work/simulatorconsumer" \
    $(pkg-config --cflags --libs zeltools-simulator) \
    "-Wl,-rpath,$(pkg-config --variable=libdir zeltools-simulator)"
"$work/simulatorconsumer"
if [ "$support" = ON ]; then
    "$work/cmake/supportconsumer" "$work/note.tar.zst"
    # shellcheck disable=SC2046
    "$compiler" -std=c++17 -fPIC "$source/support.cpp" -o "$work/supportconsumer" \
        $(pkg-config --cflags --libs zeltools-support) \
        "-Wl,-rpath,$(pkg-config --variable=libdir zeltools-support)"
    "$work/supportconsumer" "$work/note.tar.gz"
fi

for includes in "-I$source/names $(pkg-config --cflags zeltools)" \
                "$(pkg-config --cflags zeltools) -I$source/names"; do
    # shellcheck disable=SC2046,SC2086
    "$compiler" -std=c++17 -fPIC $includes "$source/names.cpp" -o "$work/names" \
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
