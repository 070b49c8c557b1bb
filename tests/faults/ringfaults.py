#!/usr/bin/env python3
# Buffered delivery on a machine that fails: ringfaults.py EXPERIMENT LOGWRITER [--short]
# [--sanitized]. Each experiment accounts for every logged line in the files or among the lost ones.
# --sanitized logs less.

import collections
import fcntl
import os
import random
import re
import shutil
import signal
import subprocess
import time
from contextlib import contextmanager

from experiment import (EXPERIMENT, OPTIONS, PROGRAM, main, mounted, need_strace, numbered,
                        private_mounts, require, skip_unless)
from faults import LENGTH, Writer

SHORT, SANITIZED = "--short" in OPTIONS, "--sanitized" in OPTIONS
LIMIT, PREDECESSORS = 1000000, 99
TIME = rb"\d\d/\d\d/\d{4} \d\d:\d\d:\d\d:\d{3}\|"
LINE = re.compile(TIME + rb"(?: (?:Info |Error)    \| )?(\d) (\d{8}) x*\.")
WARNING = TIME + rb" Warning  \| "
LOST = re.compile(WARNING + rb"\d+ lines were lost \((\d+) since the start of process (\d+)\): .*")
RECOVERED = re.compile(WARNING + rb"Recovered (\d+) lines of process (\d+), which .*")


# The lines in a log folder.
class Account:
    def __init__(self, folder):
        self.numbers = collections.defaultdict(list)  # of each thread
        self.lost, self.recovered, self.whole = {}, collections.defaultdict(list), 0
        for name in ("zel_logs.log", "trace.log"):
            live = folder / "share/zel/logs/debug" / name
            paths = [live.with_name(f"{name}.{i}") for i in range(PREDECESSORS, 0, -1)] + [live]
            require(not paths[0].exists(), "too many lines for the files")
            data = b"".join(path.read_bytes() for path in paths if path.exists())
            *lines, self.rest = data.split(b"\n")
            self.whole += len(lines)
            for line in lines:
                self.add(line)

    def add(self, line):
        if match := LINE.fullmatch(line):
            self.numbers[int(match[1])].append(int(match[2]))
        elif match := LOST.fullmatch(line):
            self.lost[int(match[2])] = int(match[1])
        elif match := RECOVERED.fullmatch(line):
            self.recovered[int(match[2])].append(int(match[1]))
        else:
            require(re.match(WARNING, line), f"a torn line: {line[:200]}")

    # `counts` are the acknowledged lines of each thread.
    def require_all(self, process, counts):
        found, lost = 0, self.lost.get(process, 0)
        for thread, count in enumerate(counts):
            numbers = self.numbers[thread]
            require(all(a < b for a, b in zip(numbers, numbers[1:])),
                    f"thread {thread}: lines doubled or out of order")
            require(not numbers or numbers[-1] <= count, f"a line after {count} was not logged")
            require(lost or count <= len(numbers), f"{count - len(numbers)} lines of {thread} lost")
            found += len(numbers)
        require(sum(counts) <= found + lost <= sum(counts) + len(counts),
                f"{sum(counts)} logged, {found} found, {lost} told as lost")
        require(not self.rest, "half a line at the end")
        return lost


class RingWriter(Writer):
    def __init__(self, folder, rings, stderr=None, is_late=False):
        rings.mkdir(parents=True, exist_ok=True)
        super().__init__(folder, LIMIT, PREDECESSORS, (rings, *["late"] * is_late), stderr)
        self.root = folder

    def end(self):
        if self.poll() is None:
            self.kill()
        self.communicate()


# A start, which recovers, and its end. It returns what was printed and the account.
def restart(folder, rings, is_late=False):
    with RingWriter(folder, rings, is_late=is_late) as writer:
        writer.write(0)
    return writer.printed.read_text(errors="replace"), Account(folder)


def require_recovered(writer, before, after):
    told = after.recovered[writer.pid]
    new = after.whole - before.whole
    own = len(told) + (after.lost != before.lost)  # lines that the recovery may have added
    require(len(told) == (new > own) and (not told or new - own <= told[0] <= new - len(told)),
            f"{new} lines recovered, {told} told")


# The process is killed at any moment, or a thread ends it. In each third turn the recovery is
# killed, too.
def ring_killed(root):
    rings, recovered, lost, interrupted = root / "rings", 0, 0, 0
    for turn in range(1000 if not SHORT else 6 if SANITIZED else 15):
        folder = root / "machine"
        writer = RingWriter(folder, rings)
        is_long = turn % 5 == 4
        fatal_signal = (0, 0, signal.SIGSEGV, signal.SIGABRT)[turn % 4]
        writer.log_until_killed(length=5000 if is_long else LENGTH,
                                pause_us=1000 if is_long else turn % 2 * 100,
                                fatal_signal=fatal_signal,
                                last=random.randrange(2000 if not is_long else 100))
        writer.wait_for_lines(1)
        if fatal_signal:
            writer.wait(60)
        time.sleep(random.uniform(0, 0.2))
        writer.end()
        before = Account(folder)
        for _ in range(3 if turn % 3 == 0 else 0):
            recovery = subprocess.Popen([PROGRAM, folder, str(LIMIT), str(PREDECESSORS), rings],
                                        stdin=subprocess.PIPE, stderr=subprocess.DEVNULL)
            time.sleep(random.uniform(0, 0.1 if SANITIZED else 0.04))
            recovery.kill()
            recovery.communicate()
            interrupted += before.whole < Account(folder).whole
        _, after = restart(folder, rings, is_late=turn % 4 < 2)
        lost += after.require_all(writer.pid, writer.counts())
        require_recovered(writer, before, after)
        recovered += sum(after.recovered[writer.pid])
        require(not list(rings.glob(f"*-{writer.pid}-*")), "the ring is left behind")
        shutil.rmtree(folder)
    require(recovered > 0, "no kill has left lines in a ring")
    print(f"{recovered} lines recovered, {lost} told as lost, {interrupted} recoveries interrupted")


# Leaves a ring with many lines: standard error is a pipe that nobody reads.
def leave_ring(folder, rings):
    writer = RingWriter(folder, rings, stderr=subprocess.PIPE)
    writer.log_until_killed(pause_us=50)
    writer.wait_for_lines(200)
    writer.end()
    return writer, next(rings.glob(f"*-{writer.pid}-*"))


# Copies the folders to a template, or back from it.
def copy_folders(source, target, *names):
    for name in names:
        shutil.rmtree(target / name, ignore_errors=True)
        shutil.copytree(source / name, target / name)


# The recovery is killed at each of its system calls for files.
def recovery_killed(root):
    need_strace()
    folder, rings, template, log = (root / name for name in ("machine", "rings", "kept", "calls"))
    folder.mkdir()
    writer, _ = leave_ring(folder, rings)
    before = Account(folder)
    copy_folders(root, template, "machine", "rings")

    def run(*options):
        copy_folders(template, root, "machine", "rings")
        subprocess.run(["strace", "-f", "-qq", "-o", log, "-e", "trace=%file,%desc", *options,
                        PROGRAM, folder, str(LIMIT), str(PREDECESSORS), rings],
                       stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return log.read_text(errors="replace")

    calls = re.findall(r"(?m)^\d+ +(\w+)\((.*)", run())
    first = next(i for i, (_, words) in enumerate(calls) if ".ring" in words)
    end = calls.index(next(call for call in calls if call[0] == "unlink" and ".ring" in call[1]))
    calls = numbered([name for name, _ in calls], first, end + 2)
    for name, n in calls[::len(calls) // 30 if SHORT else 1]:
        run("-e", f"inject={name}:signal=KILL:when={n}")
        _, after = restart(folder, rings)
        after.require_all(writer.pid, writer.counts())
        require_recovered(writer, before, after)


# A ring that is damaged does not hinder the start, and a good one beside it is recovered.
def ring_damaged(root):
    folder, rings, template = root / "machine", root / "rings", root / "kept"
    folder.mkdir()
    _, bad = leave_ring(folder, root / "bad")
    good_writer, good = leave_ring(folder, rings)
    copy_folders(root, template, "machine", "rings")
    data, header = bad.read_bytes(), 65536
    damages = {
        "cut": [data[:size] for size in (0, 1, 4096, header, header + 1000, len(data) - 1)],
        "random": [os.urandom(len(data)), data[:header] + os.urandom(len(data) - header),
                   os.urandom(header) + data[header:]],
        "another version": [b"ZELRING2" + data[8:]],
        "another user": [data] if os.geteuid() == 0 else [],
    }
    for what, content in ((what, content) for what in damages for content in damages[what]):
        copy_folders(template, root, "machine", "rings")
        (rings / bad.name).write_bytes(content)
        if what == "another user":
            os.chown(rings / bad.name, 65534, 65534)
        printed, after = restart(folder, rings)
        told = [line for line in printed.splitlines() if "cannot be recovered" in line]
        require(len(told) == 1 and bad.name in told[0], f"{what}: {told}")
        require(good_writer.pid in after.recovered, f"{what}: the good ring is not recovered")
        require(not good.exists(), f"{what}: the good ring is left behind")
        printed, _ = restart(folder, rings)
        require(("cannot be recovered" in printed) == (what == "another user"), printed)


# There is no room for a ring, or no right to create one. Lines are then delivered immediately.
def ring_refused(root):
    private_mounts()
    for options in ("size=1m", "ro"):
        folder, rings = root / options, root / f"rings-{options}"
        with mounted(rings, "-t", "tmpfs", "-o", options, "none"):
            with RingWriter(folder, rings) as writer:
                writer.write(1000)
        printed = writer.printed.read_text()
        require(printed.count("Buffered delivery of log lines is impossible") == 1, printed[-2000:])
        after = Account(folder)
        require(after.numbers[0] == list(range(1000)), "lines lost or doubled")


# Ten processes have their rings in one folder, and their log files in one folder or in folders of
# their own. Half of them are killed, and recovered while the others run on.
def ring_together(root):
    rings = root / "rings"
    for is_shared in (False, True):
        writers = []
        for i in range(10):
            writers.append(RingWriter(root / f"{is_shared}{i * (not is_shared)}", rings))
            writers[i].counter = root / f"counter{i}"
            writers[i].log_until_killed(pause_us=10000)
        for writer in writers:
            writer.wait_for_lines(20)
        for writer in writers[::2]:
            writer.end()
        for i in range(0, 10, 2):
            restart(writers[i].root, rings)
            expected = {w.pid for w in writers[1::2] + writers[i + 2::2] * (not is_shared)}
            found = {int(path.name.split("-")[2]) for path in rings.iterdir()}
            gone = {w.pid for w in writers[:i + 1:2]}
            require(expected <= found and not found & gone, "wrong rings are recovered")
        for writer in writers[1::2]:
            writer.wait_for_lines(min(writer.counts()) + 20)
            require(writer.poll() is None, "a running process has ended")
            writer.end()
        for group in [writers] if is_shared else [[writer] for writer in writers]:
            _, account = restart(group[0].root, rings)
            for thread in range(8):
                found = collections.Counter(account.numbers[thread])
                counts = [writer.counts()[thread] for writer in group]
                for number in range(max(counts) + 1):
                    least = sum(number < count for count in counts)
                    most = sum(number <= count for count in counts)
                    require(least <= found[number] <= most,
                            f"line {number} of {thread} is there {found[number]} times")


# Stops all writing to the file system for a time. A process thaws it whatever happens to this one.
@contextmanager
def frozen(folder, seconds):
    freeze, thaw = 0xc0045877, 0xc0045878
    descriptor = os.open(folder, os.O_RDONLY)
    watchdog = os.fork()
    if watchdog == 0:
        os.setsid()
        signal.signal(signal.SIGTERM, signal.SIG_IGN)
        time.sleep(seconds)
        fcntl.ioctl(descriptor, thaw, 0)
        os._exit(0)
    try:
        fcntl.ioctl(descriptor, freeze, 0)
        yield
    finally:
        os.waitpid(watchdog, 0)
        os.close(descriptor)


# Logs for two seconds or more. The callers must not wait longer than the bound. Returns the numbers
# of lines that were sent and lost.
def log_steadily(writer, seconds):
    rate = 600 if SANITIZED else 6250  # of each of eight threads
    writer.stdin.write(f"steadily 8 {rate} {rate * seconds} {LENGTH}\n".encode())
    writer.stdin.flush()
    sent, lost, urgent_us, other_us = map(int, writer.stdout.readline().split())
    print(f"{sent} sent, {lost} lost; an error waited {urgent_us} us, others {other_us} us")
    margin_us = 1500000 if SANITIZED else 500000  # for the scheduler of a loaded machine
    require(urgent_us <= 100000 + margin_us and other_us <= margin_us, "a caller has waited")
    return sent, lost


def require_told(account, writer, sent, lost):
    found, told = sum(map(len, account.numbers.values())), account.lost.get(writer.pid, 0)
    require(found + lost == sent and told == lost,
            f"{sent} sent, {found} found, {lost} lost, {told} told as lost")


# The storage stands still while lines are logged.
def ring_frozen(root):
    private_mounts()
    image, folder, seconds = root / "image", root / "machine", 2 if SHORT else 10
    subprocess.run(["mkfs.ext4", "-q", image, "128M"], check=True, capture_output=True)
    skip_unless(subprocess.run(["losetup", "--find"], capture_output=True).returncode == 0,
                "loop devices")
    with mounted(folder, "-o", "loop", image, umount=["umount"]):
        with RingWriter(folder, root / "rings") as writer:
            with frozen(folder, seconds + 0.5):
                sent, lost = log_steadily(writer, seconds)
            require(writer.stdout.readline() == b"done\n", "no answer")
            writer.write(0)
        require_told(Account(folder), writer, sent, lost)


# Nobody reads standard error. The next start writes what the process could not.
def ring_unread(root):
    folder, rings = root / "machine", root / "rings"
    folder.mkdir()
    writer = RingWriter(folder, rings, stderr=subprocess.PIPE)
    sent, lost = log_steadily(writer, 2)
    writer.end()
    require(SANITIZED or lost > 0, "the ring was never full")
    require_told(restart(folder, rings)[1], writer, sent, lost)


if __name__ == "__main__":
    main(globals()[EXPERIMENT])
