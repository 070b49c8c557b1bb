# The frame of the fault experiments: SCRIPT EXPERIMENT PROGRAM [OPTIONS]. Exit status 0: every check
# passed; 77: the experiment cannot run here; any other: a check failed.

import ctypes
import os
import shutil
import signal
import subprocess
import sys
import tempfile
from contextlib import contextmanager
from pathlib import Path

EXPERIMENT, PROGRAM, *OPTIONS = sys.argv[1:]


def require(condition, what):
    if not condition:
        raise AssertionError(what)


def skip_unless(condition, need):
    if not condition:
        print("skipped: needs", need)
        sys.exit(77)


def need_strace():
    skip_unless(shutil.which("strace"), "strace")
    os.environ["ASAN_OPTIONS"] = "detect_leaks=0"  # the leak check does not work under strace


# The names of system calls from `first` on, each with the count of this name so far.
def numbered(names, first, end=None):
    return [(name, names[:i + 1].count(name)) for i, name in enumerate(names)][first:end]


def private_mounts(and_network=False):
    new_namespaces = 0x00020000 | (0x40000000 if and_network else 0)
    skip_unless(os.geteuid() == 0 and ctypes.CDLL(None).unshare(new_namespaces) == 0
                and subprocess.run(["mount", "--make-rprivate", "/"]).returncode == 0,
                "root and namespaces of its own")
    if and_network:
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)


@contextmanager
def mounted(folder, *options, umount=("umount", "--lazy")):
    folder.mkdir(parents=True, exist_ok=True)
    subprocess.run(["mount", *options, folder], check=True)
    try:
        yield
    finally:
        subprocess.run([*umount, folder], check=True)


# Fills the file system of the folder.
@contextmanager
def filled(folder):
    filler = folder / "filler"
    subprocess.run(["dd", "if=/dev/zero", f"of={filler}", "bs=4k"], stderr=subprocess.DEVNULL)
    require(shutil.disk_usage(folder).free == 0, "the disk is not full")
    yield
    filler.unlink()


def main(experiment):
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # removes the temporary folder
    with tempfile.TemporaryDirectory() as root:
        experiment(Path(root))
    print(f"{EXPERIMENT}: every check passed")
