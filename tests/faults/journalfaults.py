#!/usr/bin/env python3
# Log lines on their way through the journal to a server: journalfaults.py EXPERIMENT LOGWRITER. The
# programs of systemd run in namespaces of their own, with the settings of docs/fleet.md.

import json
import os
import re
import signal
import subprocess
import time
from contextlib import ExitStack
from pathlib import Path

from experiment import EXPERIMENT, main, mounted, private_mounts, require, skip_unless
from faults import Writer

COUNT = 10000
DOCUMENT = Path(__file__).parents[2] / "docs/fleet.md"


class Service:
    def __init__(self, stack, name, *options):
        self.command = [f"/lib/systemd/systemd-{name}", *options]
        skip_unless(os.path.exists(self.command[0]), self.command[0])
        self.process = None
        stack.callback(self.kill)

    # Starts the program unless it runs.
    def keep(self):
        if self.process is None or self.process.poll() is not None:
            self.process = subprocess.Popen(self.command, stderr=subprocess.DEVNULL)

    def kill(self):
        if self.process is not None:
            self.process.kill()
            self.process.wait()


# Returns the entries of the application by what identifies them on every machine.
def entries(folder):
    command = ["journalctl", "-D", folder, "-o", "json", "-t", "logwriter"]
    found = map(json.loads, subprocess.check_output(command).splitlines())
    return {entry["__CURSOR"].split(";", 2)[2]: entry for entry in found}


# First there is no receiver, then it is killed three times while lines arrive. No caller waits for
# a journal that stands still.
def fleet(root):
    with ExitStack() as stack:
        address, received = "127.0.0.1:19532", "/var/log/received"  # in memory
        journal = Service(stack, "journald")
        upload = Service(stack, "journal-upload", f"--url=http://{address}",
                         "--save-state=/var/log/state")
        remote = Service(stack, "journal-remote", f"--listen-http={address}",
                         f"--output={received}")
        private_mounts(and_network=True)
        for folder in ("/run", "/var/log", "/etc/systemd"):
            stack.enter_context(mounted(Path(folder), "-t", "tmpfs", "none"))
        for folder in ("/run/systemd/journal", "/var/log/journal", received):
            os.makedirs(folder)
        Path("/run/systemd/journal/flushed").touch()  # /var/log is there
        settings = re.search("# /etc/systemd/journald.*\n([^`]*)```", DOCUMENT.read_text())[1]
        Path("/etc/systemd/journald.conf").write_text(settings + "ReadKMsg=no\nAudit=\n")

        journal.keep()
        while not Path("/run/systemd/journal/socket").exists():
            time.sleep(0.01)
        os.environ.update(LOGWRITER_JOURNAL="1", LOG_DELIVERY="buffered")
        with Writer(root, 10 << 20) as writer:
            journal.process.send_signal(signal.SIGSTOP)
            writer.write(COUNT)
            journal.process.send_signal(signal.SIGCONT)
            upload.keep()
            require(upload.process.wait() != 0, "lines are sent without a receiver")
            deadline = time.monotonic() + 80
            under_way = 0
            for turn in range(3):
                arrived = 0
                while arrived <= 2000 * turn:
                    require(time.monotonic() < deadline, f"only {arrived} lines have arrived")
                    remote.keep()
                    upload.keep()
                    upload.process.send_signal(signal.SIGCONT)
                    time.sleep(0.01)
                    upload.process.send_signal(signal.SIGSTOP)
                    arrived = len(entries(received))
                under_way += arrived < COUNT
                remote.kill()
                upload.process.send_signal(signal.SIGCONT)
            require(under_way > 0, "the receiver was never killed while lines were under way")
            found = []
            while len(found) < COUNT and time.monotonic() < deadline:
                remote.keep()
                upload.keep()
                time.sleep(0.2)
                found = entries(received).values()
    require(sorted(entry["MESSAGE"] for entry in found)
            == [f"0 {number:08} xxxxxxxxxxx." for number in range(COUNT)], f"{len(found)} lines")
    fields = {"PRIORITY": "6", "ZEL_LEVEL": "Info", "ZEL_MODULE": "Global"}
    require(all(fields.items() <= entry.items() for entry in found), "wrong fields")


if __name__ == "__main__":
    main(globals()[EXPERIMENT])
