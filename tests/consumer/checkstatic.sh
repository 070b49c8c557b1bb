#!/bin/sh
# checkstatic.sh BUILD_DIR COMPILER WITH_SUPPORT: installs the static libraries into an empty prefix and
# builds and runs hosts against them, found by CMake's package and by pkg-config.
set -eu
build=$1
compiler=$2
support=$3
source=$(dirname "$0")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/a/opt/bin"

cmake --install "$build" --prefix "$work/prefix" --component development > /dev/null
cmake -S "$source" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
      -DCMAKE_CXX_COMPILER="$compiler" -DWITH_SUPPORT="$support" > /dev/null
cmake --build "$work/cmake" > /dev/null
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zeltools.pc)")
export PKG_CONFIG_PATH
# host NAME SOURCE PACKAGE ARGUMENT: runs the program of CMake and that of pkg-config.
host() {
    "$work/cmake/$1" "$4"
    # shellcheck disable=SC2046
    "$compiler" -std=c++17 "$source/$2" -o "$work/$1" $(pkg-config --cflags --libs "$3")
    "$work/$1" "$4"
    if ldd "$work/$1" "$work/cmake/$1" | grep libZelTools; then
        echo "a static host needs a shared library" >&2
        exit 1
    fi
}
host consumer main.cpp zeltools "$work/a/opt/bin"
host simulatorconsumer simulator.cpp zeltools-simulator ""
[ "$support" = OFF ] || host supportconsumer support.cpp zeltools-support "$work/note.tar.gz"
