#!/usr/bin/env bash
# cleanroot.sh DEBS_FOLDER: installs the packages of the folder in a clean Debian 12, tries them there
# (tryinstalled.sh), removes them, and fails if a file is left. Needs root or sudo, debootstrap and the network.
#
# The clean root is made once, below build/cleanroot. Each run works on layers above it, which lie in
# memory, in namespaces of its own: this computer stays as it is, and no service starts.
set -euo pipefail

checkout=$(cd "$(dirname "$0")/.." && pwd)
place=$checkout/build/cleanroot
tools=g++,cmake,make,pkg-config,dpkg-dev,man-db,ca-certificates

# The lists of Debian's packages that this computer uses, without those of others.
debian_lists() {
    # shellcheck disable=SC2016
    apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' "Architecture: $(dpkg --print-architecture)"
}

make_clean_root() {
    [ ! -e "$place/complete" ] || return 0
    echo "Making a clean root, which later runs use again"
    rm -rf "$place"
    mkdir -p "$place/archives/partial" "$place/work"
    local mirror
    [ -n "$(debian_lists)" ] || apt-get update -qq # Images of computers come without the lists.
    mirror=$(debian_lists | awk '/ bookworm main$/ { print $2 }')
    [ -n "$mirror" ] || { echo "This computer knows no mirror of Debian 12 (bookworm)." >&2; return 1; }
    debootstrap --variant=minbase --include="$tools" bookworm "$place/base" "$mirror" \
        > "$place/debootstrap.log" || { tail "$place/debootstrap.log" >&2; return 1; }
    debian_lists > "$place/base/etc/apt/sources.list"
    printf '#!/bin/sh\nexit 101\n' > "$place/base/usr/sbin/policy-rc.d" # No service may start.
    chmod +x "$place/base/usr/sbin/policy-rc.d"
    touch "$place/complete"
}

# in_layer NAME COMMAND...: runs the command in a new layer above the clean root, which sees the
# packages in /packages, the checkout in /checkout and leaves its results in /results.
in_layer() {
    local layer=$place/work/$1 root=$place/work/$1/root
    shift
    mkdir -p "$layer"/{changes,overlay,root}
    mount -t overlay overlay "$root" \
        -o "lowerdir=$place/base,upperdir=$layer/changes,workdir=$layer/overlay"
    mkdir "$root"/{packages,checkout,results}
    mount --bind -o ro "$packages" "$root/packages"
    mount --bind -o ro "$checkout" "$root/checkout"
    mount --bind "$place/work/results" "$root/results"
    mount --bind "$place/archives" "$root/var/cache/apt/archives"
    mount -t proc proc "$root/proc"
    cp -L /etc/resolv.conf "$root/etc/"
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        chroot "$root" "$@"
}

# Inside the namespaces: everything below is undone when they end.
if [ "${1-}" = --inside ]; then
    packages=$2
    make_clean_root
    mount -t tmpfs tmpfs "$place/work"
    mkdir "$place/work/results"
    in_layer tried /checkout/packaging/tryinstalled.sh
    # Other packages make files that belong to no package, such as caches. A second layer with the same
    # packages, which never had ours, tells these from what ours leave.
    in_layer reference /checkout/packaging/tryinstalled.sh --reference
    LC_ALL=C comm -13 "$place/work/results/reference" "$place/work/results/left" > "$place/left"
    if [ -s "$place/left" ]; then
        echo "The packages leave behind:" >&2
        cat "$place/left" >&2
        exit 1
    fi
    echo "The packages install, work and leave nothing behind."
    exit
fi

folder=$(cd "${1:?DEBS_FOLDER is missing}" && pwd)
root=()
[ "$(id -u)" -eq 0 ] || root=(sudo)
exec "${root[@]}" unshare --mount --pid --ipc --uts --fork --kill-child --mount-proc "$0" --inside "$folder"
