#!/bin/sh
# The code of docs/install.md: install.sh BUILD SOURCE installs the library from a build folder into a
# prefix of its own, and builds and runs the first host from its source.
set -eu
manifest=$1/install_manifest.txt # The user may have one.
[ ! -e "$manifest" ] || mv "$manifest" manifest
trap 'rm -f "$manifest"; [ ! -e manifest ] || mv manifest "$manifest"' EXIT
HOME=$PWD
export HOME
mkdir build
ln -s "$1" build/install
cp -r "$2" firsthost

#! [install]
cmake --install build/install --prefix ~/zeltools
#! [install]

#! [cmake]
cmake -S firsthost -B machine/software/host -DCMAKE_PREFIX_PATH="$HOME/zeltools"
cmake --build machine/software/host
machine/software/host/firsthost
#! [cmake]

rm machine/software/host/firsthost
# shellcheck disable=SC2046
{
    #! [pkgconfig]
    export PKG_CONFIG_PATH="$HOME/zeltools/lib/pkgconfig"
    g++ firsthost/main.cpp $(pkg-config --cflags --libs zeltools) -o machine/software/host/firsthost
    export LD_LIBRARY_PATH="$(pkg-config --variable=libdir zeltools)"
    machine/software/host/firsthost
    #! [pkgconfig]
    rm machine/software/host/firsthost
    #! [rpath]
    g++ firsthost/main.cpp $(pkg-config --cflags --libs zeltools) \
        -Wl,-rpath,"$(pkg-config --variable=libdir zeltools)" -o machine/software/host/firsthost
    #! [rpath]
}
unset LD_LIBRARY_PATH
machine/software/host/firsthost

#! [zelctl]
~/zeltools/bin/zelctl log machine/share/zel/logs
~/zeltools/bin/zelctl events machine/share/zel/logs/events
find machine/share -type d | sort
#! [zelctl]
