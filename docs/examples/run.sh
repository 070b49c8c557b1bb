#!/bin/sh
# run.sh TEXT COMMAND...: runs an example in a temporary folder, where software/host is the folder of the
# application. The test passes if the example succeeds and its output contains the text that its page
# quotes.
set -eu
text=$1
shift
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/software/host"
cd "$folder"
"$@" > output 2>&1 || { cat output; exit 1; }
cat output
grep -qF -e "$text" output
