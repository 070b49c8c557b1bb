#!/bin/sh
# repack.sh FOLDER PACKAGE...: puts packages as CPack has made them into the folder, in the form of Debian's
# own: sorted, with the time SOURCE_DATE_EPOCH of each file, so that equal builds give equal packages.
# CPack 3.25 makes packages of debug symbols with wrong paths in their sums, executable files and no
# documents, and calls ldconfig itself where dpkg's triggers do.
set -eu
folder=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"

for package in "$@"; do
    tree=$work/$(basename "$package")
    dpkg-deb -R "$package" "$tree"
    rm -f "$tree/DEBIAN/postinst" "$tree/DEBIAN/postrm"
    name=$(dpkg-deb -f "$package" Package)
    case $name in
    *-dbgsym)
        find "$tree/usr" -type f -exec chmod 644 {} +
        mkdir -p "$tree/usr/share/doc"
        ln -s "${name%-dbgsym}" "$tree/usr/share/doc/$name"
        ;;
    esac
    (cd "$tree" && find usr -type f | LC_ALL=C sort | xargs md5sum > DEBIAN/md5sums)
    find "$tree" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
    dpkg-deb -Zxz -z3 --threads-max=1 --root-owner-group -b "$tree" "$folder" > /dev/null
    rm -r "$tree"
done
