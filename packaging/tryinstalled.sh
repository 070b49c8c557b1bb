#!/usr/bin/env bash
# Runs in a clean root that cleanroot.sh has made: installs the packages of /packages with apt, tries
# them as an ordinary user, and removes them. It leaves two lists in /results: "left" has the files that
# are there afterwards, "others" the packages that came with ours. With --reference only these others
# are installed, and the list of the files is "reference".
# shellcheck disable=SC2046
set -Eeuo pipefail
trap 'echo "tryinstalled.sh: line $LINENO fails: $BASH_COMMAND" >&2' ERR

repository=/tmp/repository
work=/tmp/work

add() {
    apt-get install -qq -y --no-install-recommends "$@" > /tmp/apt.log 2>&1 \
        || { cat /tmp/apt.log >&2; return 1; }
}

# All files but the records and caches of the system itself.
list_files() {
    find / -xdev '(' -path /proc -o -path /tmp -o -path /run -o -path /var/log -o -path /var/cache \
        -o -path /var/lib/apt -o -path /var/lib/dpkg ')' -prune -o -print | LC_ALL=C sort
}

# as_user COMMAND...: without root's rights, in a home of its own.
as_user() {
    HOME=$work setpriv --reuid=1000 --regid=1000 --clear-groups "$@"
}

# runs COMMAND...: by a user; shows what the command prints if it fails.
runs() {
    as_user "$@" > "$work/output" 2>&1 || { cat "$work/output" >&2; return 1; }
}

# silent COMMAND...: as above; fails if the command prints an error or a warning, too.
silent() {
    as_user "$@" > "$work/output" 2> "$work/warnings" || { cat "$work/warnings" >&2; return 1; }
    [ ! -s "$work/warnings" ] || { cat "$work/warnings" >&2; return 1; }
}

# prints TEXT COMMAND...: silently, too; the output must contain the text.
prints() {
    silent "${@:2}"
    grep -F -e "$1" "$work/output" > /dev/null || { echo "${*:2} does not print \"$1\"" >&2; return 1; }
}

# The field of all our packages.
fields() { sed -n "s/^$1: //p" "$repository/Packages"; }

# named PATTERN: our package of this name, without its symbols. The names tell the builds apart.
named() { fields Package | grep -v -e -dbgsym | grep -m 1 -x -e "$1"; }

# further FIELD PACKAGE: what the package does not need itself, but names in the field.
further() { dpkg-query -W -f "\${$1}" "$2" | tr -d ,; }

make_repository() {
    mkdir "$repository"
    cp /packages/*.deb "$repository"
    (cd "$repository" && dpkg-scanpackages --multiversion . > Packages 2> /tmp/scan.log)
    echo "deb [trusted=yes] file:$repository ./" > /etc/apt/sources.list.d/zeltools.list
    apt-get update -qq
}

# The packages of the libraries that ours load when they are needed.
try_recommended() {
    local library package
    for library in libcrypto.so.3 libsystemd.so.0; do
        package=$(dpkg-query -S "*/$library" | sed -n '1s/:.*//p')
        further Recommends "$(named 'libzeltools0.*')" | grep -w -e "$package" > /dev/null
    done
}

try_program() {
    local version page share=/usr/share
    version=$(fields Version | head -n 1 | sed 's/-.*//')
    prints "zelctl $version" zelctl --version
    prints "$version" zelctl version
    prints 'Usage: zelctl' zelctl help
    prints NAME man zelctl
    dpkg -L "$tools" | grep '/man/.*\.gz$' > /tmp/pages
    while read -r page; do
        prints SYNOPSIS man --warnings --encoding=UTF-8 --local-file "$page"
    done < /tmp/pages
    prints zelctl bash -c ". $share/bash-completion/completions/zelctl && complete -p zelctl"
    prints '#compdef zelctl' head -n 1 $share/zsh/vendor-completions/_zelctl
    prints 'zelctl' grep complete $share/fish/vendor_completions.d/zelctl.fish
    prints serve $share/zeltools/zelsim.py --help
    silent env PYTHONPATH=$share/zeltools python3 -B -c 'import zelsim; zelsim.frame(b"status?")'
    prints '"regex"' python3 -m json.tool $share/zeltools/lnav/zeltools.json
}

# The hosts that the tests build against a prefix of their own, which here find the library by themselves.
# The QML modules are not installed.
try_hosts() {
    local consumer=/checkout/tests/consumer
    as_user mkdir -p machine/opt/bin
    silent cmake -S $consumer -B cmake -DWITH_SUPPORT=ON
    silent cmake --build cmake -j "$(nproc)" --target consumer simulatorconsumer supportconsumer
    runs cmake/consumer machine/opt/bin # Its log lines go to standard error.
    runs cmake/simulatorconsumer
    runs cmake/supportconsumer note.tar.zst
    silent g++ -std=c++17 $consumer/main.cpp -o host $(pkg-config --cflags --libs zeltools)
    runs ./host machine/opt/bin
    silent g++ -std=c++17 $consumer/simulator.cpp -o host $(pkg-config --cflags --libs zeltools-simulator)
    runs ./host
    silent g++ -std=c++17 $consumer/support.cpp -o host $(pkg-config --cflags --libs zeltools-support)
    runs ./host note.tar.gz
    # A package of such a host depends on those of this very interface.
    mkdir -p /tmp/host/debian/host/usr/bin
    touch /tmp/host/debian/control
    cp cmake/consumer /tmp/host/debian/host/usr/bin
    (cd /tmp/host && dpkg-shlibdeps -O debian/host/usr/bin/consumer) > /tmp/host/depends
    grep -E '(libzeltools0[a-z0-9-]*) \(>= [0-9.]+\), \1 \(<< [0-9.]+~\)' /tmp/host/depends > /dev/null
}

# The modules of Qt Quick are found where the package has put them: the host's own import path is empty.
try_screen() {
    local host consumer=/checkout/tests/consumer
    as_user mkdir nothing
    silent cmake -S $consumer -B cmake -DWITH_QUICK=ON
    silent cmake --build cmake --target quickconsumer
    silent g++ -std=c++17 $consumer/quick.cpp -o host $(pkg-config --cflags --libs zeltools-quick)
    for host in cmake/quickconsumer ./host; do
        silent env QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software XDG_RUNTIME_DIR="$work" \
            "$host" machine/opt/bin nothing
    done
}

# The first host of the documents, whose command line is taken letter for letter.
try_documented_line() {
    local line
    line=$(grep -m 1 '^g++ .*$(pkg-config --cflags --libs zeltools)' /checkout/docs/install.md)
    as_user mkdir documented
    cd documented
    as_user cp -r /checkout/docs/examples/firsthost .
    as_user mkdir -p machine/software/host
    silent sh -c "$line"
    runs machine/software/host/firsthost
    grep 'Inserted 50 cents' "$work/output" > /dev/null
    cd "$work"
}

remove_ours() {
    local name names
    mapfile -t names < <(fields Package)
    apt-get purge -qq -y "${names[@]}" > /tmp/apt.log 2>&1
    rm /etc/apt/sources.list.d/zeltools.list
    for name in "${names[@]}"; do
        if dpkg-query -s "$name" > /tmp/query.log 2>&1; then
            echo "$name is still known to dpkg" >&2
            return 1
        fi
    done
}

if [ "${1-}" = --reference ]; then
    apt-get update -qq
    mapfile -t others < /results/others
    add "${others[@]}"
    list_files > /results/reference
    exit
fi

install -d -m 700 -o 1000 -g 1000 "$work"
make_repository
cd "$work"
tools=$(named 'zeltools-tools.*')
echo "== $tools"
add "$tools"
try_recommended
add $(further Recommends "$tools")
try_program
development=$(named 'libzeltools.*-dev')
echo "== $development"
add "$development"
try_documented_line
try_hosts
echo "== $(named 'qml.*')"
add $(further Suggests "$development")
try_screen
echo "== all, and none"
mapfile -t names < <(fields Package)
add "${names[@]}"
remove_ours
dpkg-query -W -f '${Package}=${Version}\n' > /results/others
list_files > /results/left
