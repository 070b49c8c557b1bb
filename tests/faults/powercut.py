#!/usr/bin/env python3
# Files on a machine that fails while they are written: powercut.py EXPERIMENT PROGRAM [--short]. The
# environment file, which `zelctl env` writes, must always be the old or the new one. The log files
# of `logwriter` must have every line that was written early enough.

import fcntl
import os
import random
import re
import shutil
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from contextlib import suppress

from experiment import (EXPERIMENT, OPTIONS, PROGRAM, filled, main, mounted, need_strace, numbered,
                        private_mounts, require, skip_unless)
from faults import Writer

NAME = "CORVID_FORCED_DEVICE_ID"
# The content has a few blocks, and pieces that an edit must not change.
TEMPLATE = f"# \xe9dit with care\r\n\n{NAME}=%s\nUNKNOWN= x \n" + 400 * "# filler\n"


def command(file, value):
    return [PROGRAM, "env", file, "set", NAME, value]


def content(value):
    return (TEMPLATE % value).encode()


def edit(file, value):
    subprocess.run(command(file, value), check=True)
    require(set(os.listdir(file.parent)) <= {file.name, "lost+found", "neighbour"}, "a leftover")


# SIGKILL stops an edit at each of its system calls for files. The file is new, exists, or has the
# leftover of an earlier kill beside it.
def edit_killed(root):
    need_strace()
    folder, log, outcomes = root / "folder", root / "calls", set()
    file = folder / "env"
    strace = ["strace", "-f", "-qq", "-o", log, "-e", "trace=%file,%desc"]

    def prepare(files):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        for name, data in files.items():
            (folder / name).write_bytes(data)

    old = {"env": content("old")}
    for files in ({}, old, {**old, ".env.new": b"half a f"}):
        new = content("new") if files else f"{NAME}=new\n".encode()
        prepare(files)
        subprocess.run([*strace, *command(file, "new")], check=True)
        calls = re.findall(r"(?m)^(?:\d+ +)?(\w+)\((.*)", log.read_text(errors="replace"))
        names = [name for name, _ in calls]
        first = [name != "execve" and str(folder) in words for name, words in calls].index(True)
        # The content is on the storage before the name, and the name before zelctl ends.
        require(re.search("write .*fsync .*renameat .*fsync", " ".join(names[first:])), names)
        for name, n in numbered(names, first):
            prepare(files)
            kill = f"inject={name}:signal=KILL:when={n}"
            killed = subprocess.run([*strace, "-e", kill, *command(file, "new")])
            require(killed.returncode == -9, f"{kill} was not reached")
            found = file.read_bytes() if file.exists() else None
            require(found in (files.get("env"), new), f"{kill}: {found}")
            outcomes.add(found == new)
            edit(file, "next")
            require(file.read_bytes() == new.replace(b"new", b"next"), "the next edit is wrong")
    require(outcomes == {False, True}, "no change of state seen")


def zelctl_set(file, value):
    result = subprocess.run(command(file, value), stderr=subprocess.PIPE)
    require(result.returncode == result.stderr.count(b"\n") <= 1, result)
    if result.returncode == 1:
        raise OSError


def truncating_write(file, value, has_sync=False):
    with open(file, "wb", buffering=0) as stream:
        stream.write(content(value))
        if has_sync:
            os.fsync(stream.fileno())


def until_it_fails(step):
    deadline = time.monotonic() + 30
    with suppress(OSError):
        while time.monotonic() < deadline:
            step()


# Stops the file system at some moment, or during an edit if `is_aimed`.
def cut(folder, is_aimed):
    end = time.monotonic() + random.uniform(0, 0.1)
    while time.monotonic() < end and not (is_aimed and (folder / ".env.new").exists()):
        time.sleep(random.uniform(0, 0.0005))
    cut_now(folder)


# Nothing reaches the storage afterwards, not even the content of the journal.
def cut_now(folder):
    shutdown, without_flush = 0x8004587d, (2).to_bytes(4, sys.byteorder)
    descriptor = os.open(folder, os.O_RDONLY)
    fcntl.ioctl(descriptor, shutdown, without_flush)
    os.close(descriptor)


# Creates a file system in an image and returns the options that mount it.
def journalled(image, folder):
    folder.mkdir(parents=True)
    subprocess.run(["mkfs.ext4", "-q", image, "8M"], check=True, capture_output=True)
    # This option makes ext4 repair the omissions of a careless writer as little as others do.
    options = ["-o", "loop,noauto_da_alloc", image]
    skip_unless(subprocess.run(["mount", *options, folder]).returncode == 0, "loop devices")
    subprocess.run(["umount", folder], check=True)
    return options


# Cuts the supply of a file system while `write` runs on it. Returns how often the file was wrong
# afterwards, and how often it was not even whole.
def cuts(root, write, rounds):
    folder, file = root / "disk", root / "disk/env"
    options = journalled(root / "image", folder)
    started = acknowledged = wrong = mixed = 0

    def step():
        nonlocal acknowledged, started
        started += 1
        write(file, str(started))
        acknowledged = started

    for turn in range(rounds):
        with mounted(folder, *options, umount=["umount"]), ThreadPoolExecutor() as pool:
            edit(file, "after the cut before")
            started = acknowledged = started + 1
            truncating_write(file, str(started), has_sync=True)
            # The second step is another program, which commits the journal during edits.
            steps = [step, lambda: truncating_write(folder / "neighbour", "", has_sync=True)]
            cutting = pool.submit(cut, folder, turn & 2)
            list(pool.map(until_it_fails, steps[:1 + turn % 2]))
            cutting.result()
        with mounted(folder, *options, umount=["umount"]):
            found = file.read_bytes()
        number = re.search(rb"ID=(\d+)\n", found)
        is_whole = number and found == content(number[1].decode())
        mixed += not is_whole
        wrong += not is_whole or not acknowledged <= int(number[1]) <= started
    return wrong, mixed


# The supply is cut while zelctl edits the file. A control, in which the file is written as usual,
# shows that the experiment finds damaged files.
def edit_power_cut(root):
    private_mounts()
    rounds = 16 if "--short" in OPTIONS else 500
    require(cuts(root / "zelctl", zelctl_set, rounds) == (0, 0), "not the old or the new file")
    require(cuts(root / "control", truncating_write, rounds)[1] > 0, "the control has passed")


# The disk is full when the file is edited and when it is created.
def edit_full_disk(root):
    private_mounts()
    file = root / "disk/env"
    with mounted(file.parent, "-t", "tmpfs", "-o", "size=64k", "none"):
        file.write_bytes(content("old"))
        for path in (file, file.with_name("other")):
            with filled(file.parent):
                result = subprocess.run(command(path, "new"), stderr=subprocess.PIPE)
                require(set(os.listdir(file.parent)) == {"env", "filler"}, "something left behind")
            require(re.fullmatch(rb".*No space left.*\n", result.stderr), result)
            require(result.returncode == 1 and file.read_bytes() == content("old"), result)
        edit(file, "new")


# A program that another thread is starting may still have a file of the mounted system open.
UNMOUNT = ["sh", "-c", 'umount "$0" || { sleep 1; umount "$0"; }']


# Logs lines, a few with the level, rotates often, syncs another file on the machine's own storage to
# see how busy that is, and cuts the supply. Returns the number of lines that were written at each
# moment, the moment of the cut, and the lines in the files.
def log_until_cut(root, level, delivery):
    disk, history = root / "share", []
    options = journalled(root / "image", disk)
    with mounted(disk, *options, umount=UNMOUNT):
        writer = Writer(root, 30000, 60, env={**os.environ, "LOG_DELIVERY": delivery})
        writer.log_until_killed(threads=1, length=100, pause_us=1000, level=level)
        end = time.monotonic() + random.uniform(6.5, 12)
        while time.monotonic() < end:
            written, = writer.counts()
            history.append((time.monotonic(), written))
            time.sleep(0.05)
            truncating_write(root / "probe", "", has_sync=True)
        end = time.monotonic()
        cut_now(disk)
        writer.kill()
        writer.communicate()
    with mounted(disk, *options, umount=UNMOUNT):
        contents = b"\n".join(file.read_bytes() for file in disk.rglob("zel_*.log*"))
    numbers = re.findall(rb"(?m)^.{23}\| \w+ *\| +0 (\d{8}) x+\.$", contents)
    return history, end, [int(number) for number in numbers]


# The supply is cut while lines are logged. Each line that was written earlier before the cut than
# the promised time, and a time for the storage, is in the files. This time is half a second, and
# three times what the machine's own storage has taken at most.
def log_power_cut(root):
    private_mounts()
    for folder in ("/run", "/dev/shm"):  # the memory, which the cut ends too
        subprocess.run(["mount", "-t", "tmpfs", "none", folder], check=True)
    levels = info, event, error = 1, 2, 4

    def lost(turn):
        level = levels[turn % len(levels)]
        delivery = ("immediate", "buffered")[turn // len(levels) % 2]
        history, end, found = log_until_cut(root / str(turn), level, delivery)
        require(history[-1][1] > 1000, "too few lines were written")
        require(len(set(found)) == len(found), "a line is there twice")
        moments = [moment for moment, _ in history] + [end]
        storage = 0.5 + 3 * max(after - before for before, after in zip(moments, moments[1:]))
        for delay, step in ((5, 1), (5, 1) if level == info else (0.2, 700)):
            early = end - delay - storage
            written = max((count for moment, count in history if moment <= early), default=0)
            missing = sorted(set(range(0, written, step)) - set(found))
            require(not missing, f"{delivery}, level {level}, {delay} + {storage} s: {missing}")
        return history[-1][1] - len(found)

    with ThreadPoolExecutor(6) as pool:
        losses = list(pool.map(lost, range(6 if "--short" in OPTIONS else 100)))
    require(max(losses) > 0, "no cut has lost the last lines")


if __name__ == "__main__":
    main(globals()[EXPERIMENT])
