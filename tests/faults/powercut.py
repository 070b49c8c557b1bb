#!/usr/bin/env python3
"""What becomes of the environment file when the machine fails while `zelctl env` writes it.

Exit status 0: it is the old or the new one, every time; 1: it is not; 77: cannot run here.
"""

import fcntl
import itertools
import os
import random
import re
import shutil
import struct
import subprocess
import threading
import time
from contextlib import contextmanager, nullcontext

from faults import OPTIONS, Skip, filled, main, mounted, private_mounts, require

NAME = "CORVID_FORCED_DEVICE_ID"
# A few blocks, with what an edit has to keep.
TEMPLATE = ("# \xe9dit with care\r\n\n" + f"{NAME}=%s\n" + "UNKNOWN= x \n" + 400 * "# filler\n").encode()
ENVIRONMENT = {**os.environ, "ASAN_OPTIONS": "detect_leaks=0"}  # which strace makes impossible


def command(file, value):
    return [OPTIONS.program, "env", file, "set", NAME, value]


def content(value):
    return TEMPLATE.replace(b"%s", value.encode())


def require_alone(file):
    names = set(os.listdir(file.parent)) - {"lost+found", "neighbour"}
    require(names == {file.name}, f"left behind: {names}")


def edit(file, value):
    result = subprocess.run(command(file, value), stderr=subprocess.PIPE)
    require(result.returncode == 0, f"an edit failed: {result.stderr}")
    require_alone(file)


def system_calls(log, file):
    """(name, how many of that name until then) of each call since the first that names the folder
    of the file."""
    calls, counts, is_edit = [], {}, False
    for line in log.read_text(errors="replace").splitlines():
        call = re.match(r"(?:\d+ +)?(\w+)\((.*)", line)
        if not call:
            continue
        name = call[1]
        counts[name] = counts.get(name, 0) + 1
        is_edit = is_edit or str(file.parent) in call[2] and name != "execve"
        if is_edit:
            calls.append((name, counts[name]))
    return calls


def edit_killed(root):
    """SIGKILL at each system call of an edit that touches files: of a new file, of one that is
    there, and of one beside the leftover of an earlier kill."""
    if not shutil.which("strace"):
        raise Skip("needs strace")
    folder = root / "folder"
    folder.mkdir()
    file, leftover = folder / "env", folder / ".env.zelctl"
    strace = ["strace", "-f", "-qq", "-o", root / "calls", "-e", "trace=%file,%desc"]
    kills, outcomes = 0, {"old": 0, "new": 0}

    def prepare(old, has_leftover):
        for path in folder.iterdir():
            path.unlink()
        if old is not None:
            file.write_bytes(old)
        if has_leftover:
            leftover.write_bytes(b"half a f")

    for old, has_leftover in ((None, False), (content("old"), False), (content("old"), True)):
        new = content("new") if old else f"{NAME}=new\n".encode()
        prepare(old, has_leftover)
        subprocess.run([*strace, *command(file, "new")], env=ENVIRONMENT, check=True)
        require(file.read_bytes() == new, "the edit without a kill is wrong")
        calls = system_calls(root / "calls", file)
        require({"renameat", "fsync", "write"} <= {name for name, _ in calls}, f"calls: {calls}")
        for name, count in calls:
            prepare(old, has_leftover)
            killed = subprocess.run(
                [*strace, "-e", f"inject={name}:signal=KILL:when={count}", *command(file, "new")],
                env=ENVIRONMENT, stderr=subprocess.DEVNULL)
            require(killed.returncode == -9, f"{name} {count} was not reached")
            found = file.read_bytes() if file.exists() else None
            require(found in (old, new), f"killed at {name} {count}: {found}")
            outcomes["new" if found == new else "old"] += 1
            edit(file, "next")
            require(file.read_bytes() == new.replace(b"new", b"next"), "the next edit is wrong")
            kills += 1
    require(all(outcomes.values()), f"no change of state seen: {outcomes}")
    return f"{kills} kills, the file was {outcomes['old']} times the old, {outcomes['new']} times " \
           "the new one, and the next edit left nothing else"


@contextmanager
def attached(image, folder):
    """The file system in the image, mounted; on leaving it is gone from the machine. It is not to
    mend what a careless writer forgets, since others would not."""
    subprocess.run(["mount", "-o", "loop,noauto_da_alloc", image, folder], check=True)
    try:
        yield
    finally:
        subprocess.run(["umount", folder], check=True)


def cut(folder):
    """From now on nothing reaches the storage, not even what the journal holds."""
    shutdown, without_flush = 0x8004587d, struct.pack("I", 2)
    descriptor = os.open(folder, os.O_RDONLY)
    fcntl.ioctl(descriptor, shutdown, without_flush)
    os.close(descriptor)


class Looping:
    """Calls `step` again and again in a thread, until it fails or the block is left."""

    def __init__(self, step):
        self.step, self.failure, self.is_over = step, None, False
        self.thread = threading.Thread(target=self.run)

    def run(self):
        try:
            while not self.is_over:
                self.step()
        except (OSError, subprocess.CalledProcessError) as failure:
            self.failure = failure

    def __enter__(self):
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.is_over = True
        self.thread.join()


def zelctl_set(file, value):
    subprocess.run(command(file, value), check=True, capture_output=True)


def truncating_write(file, value, has_sync=False):
    with open(file, "wb") as stream:
        stream.write(content(value))
        if has_sync:
            stream.flush()
            os.fsync(stream.fileno())


def wait_for_edit(leftover, deadline_s=1):
    end = time.monotonic() + deadline_s
    while not leftover.exists() and time.monotonic() < end:
        pass


def cuts(root, write, rounds):
    """Cuts the supply of a file system while `write` runs on it. How often each fault was found, and
    how often the cut was between the first and the last change of an edit."""
    image, folder = root / "image", root / "disk"
    file, neighbour, leftover = folder / "env", folder / "neighbour", folder / ".env.zelctl"
    folder.mkdir(parents=True)
    with open(image, "wb") as stream:
        stream.truncate(8 * 2**20)
    subprocess.run(["mkfs.ext4", "-q", image], check=True)
    try:
        with attached(image, folder):
            truncating_write(file, "0", has_sync=True)
    except subprocess.CalledProcessError as failure:
        raise Skip("needs a loop device with ext4") from failure
    numbers, faults, amid = itertools.count(1), {"lost": 0, "empty or mixed": 0}, 0
    acknowledged = started = 0

    def step():
        nonlocal acknowledged, started
        started = next(numbers)
        write(file, str(started))
        acknowledged = started

    def sync_neighbour():
        """What else runs on a machine: it commits the journal at any moment of an edit."""
        truncating_write(neighbour, "", has_sync=True)

    for turn in range(rounds):
        with attached(image, folder):
            acknowledged = started = next(numbers)
            edit(file, "after the cut before")
            truncating_write(file, str(started), has_sync=True)
            has_neighbour, is_aimed = turn & 1, turn & 2
            with (Looping(sync_neighbour) if has_neighbour else nullcontext(),
                  Looping(step) as writer):
                time.sleep(random.uniform(0, 0.1))
                if is_aimed and write == zelctl_set:  # most of its time a program only starts
                    wait_for_edit(leftover)
                    time.sleep(random.uniform(0, 0.003))
                cut(folder)
            if isinstance(writer.failure, subprocess.CalledProcessError):
                message = writer.failure.stderr
                require(writer.failure.returncode == 1 and message.count(b"\n") == 1,
                        f"status {writer.failure.returncode} after the cut: {message}")
        with attached(image, folder):
            found = file.read_bytes()
            amid += leftover.exists() or found == content(str(acknowledged + 1))
        if found in [content(str(value)) for value in range(acknowledged, started + 1)]:
            continue
        number = re.search(f"{NAME}=(\\d+)\n".encode(), found)
        whole = number and found == content(number[1].decode())
        faults["lost" if whole else "empty or mixed"] += 1
    return faults, amid


def edit_power_cut(root):
    """The supply is cut while zelctl edits the file; then, to see that this experiment finds what it
    looks for, while the file is written as programs usually do."""
    private_mounts()
    rounds = 16 if OPTIONS.short else 500
    faults, amid = cuts(root / "zelctl", zelctl_set, rounds)
    require(not any(faults.values()), f"{rounds} cuts: {faults}")
    control, _ = cuts(root / "control", truncating_write, rounds)
    require(control["empty or mixed"], f"a truncating write has passed {rounds} cuts: {control}")
    return (f"{rounds} of {rounds} cuts left the old or the new file, {amid} of them amid an edit; "
            f"a truncating write: {control} in {rounds}")


def edit_full_disk(root):
    """The disk is full when the file is edited, and when it is made."""
    private_mounts()
    folder = root / "disk"
    with mounted(folder, ["-t", "tmpfs", "-o", "size=64k", "none"]):
        file = folder / "env"
        file.write_bytes(content("old"))
        for path, old in ((file, content("old")), (folder / "other", None)):
            with filled(folder):
                result = subprocess.run(command(path, "new"), capture_output=True)
                names = {entry.name for entry in folder.iterdir()}
            require(result.returncode == 1 and result.stderr.count(b"\n") == 1,
                    f"status {result.returncode}: {result.stderr}")
            require(b"No space left" in result.stderr, result.stderr)
            require(names == {"env", "filler"}, f"left behind: {names}")
            require(old is None or path.read_bytes() == old, "the old file has changed")
        edit(file, "new")
    return "one line, status 1, the old file whole"


if __name__ == "__main__":
    main(__doc__, edit_killed, edit_power_cut, edit_full_disk)
