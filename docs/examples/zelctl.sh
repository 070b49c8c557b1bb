#!/bin/sh
# The shell examples of the documents: zelctl.sh FIRSTHOST, with zelctl in the PATH, runs them on the files
# of the first host.
set -eu
mkdir -p machine/software/host
cp "$1" machine/software/host/firsthost

#! [machine]
machine/software/host/firsthost
mkdir -p machine/launcher
touch machine/launcher/environment
umask 077                                            # the key is for nobody else
od -An -N8 -tx1 /dev/urandom | tr -d ' \n' > key     # 16 hexadecimal digits
#! [machine]

#! [tour]
zelctl log machine/share/zel/logs --level info --from 01/11/2026
zelctl log machine/share/zel/logs --grep 'cents' --last 20
zelctl events machine/share/zel/logs/events --kind ApplicationStartEvent

zelctl env machine/launcher/environment set CANBUS_SIMULATION 1
zelctl env machine/launcher/environment list

#! [crypt]
zelctl crypt encrypt machine/launcher/environment backup --key-file key --metadata "machine 4711"
zelctl crypt info backup
zelctl crypt decrypt backup restored --key-file key --require sha1
#! [crypt]

#! [bundle]
zelctl bundle machine/share/zel machine-4711.tar.zst --environment machine/launcher/environment
zelctl bundle verify machine-4711.tar.zst
zelctl bundle list machine-4711.tar.zst
#! [bundle]

zelctl hex 0xde:ad-beef                  # DE-AD-BE-EF
zelctl version 2.9 2.10                  # <
#! [tour]

#! [hex]
zelctl hex 0xde:ad-beef --prefix 0x      # 0xDE-AD-BE-EF
printf '0a-0b\nde:ad\n' > frames.txt
zelctl hex - < frames.txt                # each line, or the number of the line that is wrong
zelctl hex --to-bytes de:ad-beef > frame.bin
zelctl hex --from-bytes - < frame.bin    # the text for a file, at most 64 MiB
#! [hex]

cmp machine/launcher/environment restored
