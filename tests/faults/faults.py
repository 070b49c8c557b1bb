#!/usr/bin/env python3
# Log lines on a machine that fails: faults.py EXPERIMENT LOGWRITER [--short] [--sanitized]
# [--buffered]. Each experiment runs `logwriter`, breaks something and accounts for every logged line
# in the files. --sanitized skips the check of the memory use, --buffered logs through a ring.

import os
import random
import re
import shutil
import subprocess
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from experiment import (EXPERIMENT, OPTIONS, PROGRAM, filled, main, mounted, need_strace, numbered,
                        private_mounts, require)

LENGTH = 60  # of a line with its line feed; it does not divide a page
LIMIT = 1024 * LENGTH  # of a file
LINE = re.compile(rb"\d\d/\d\d/\d{4} \d\d:\d\d:\d\d:\d{3}\| Info     \| (\d) (\d{8}) x*\.")
REPORT = rb".{23}\| Warning  \| (\d+) lines are missing here since "
HEALTH = re.compile(REPORT + rb"|.{23}\| Warning  \| Log file ")


# Returns the thread and the number of every line but the ones on the state of the file.
def parse(data, length=LENGTH):
    *lines, rest = data.split(b"\n")
    require(not rest, "half a line at the end")
    lines = [line for line in lines if not HEALTH.match(line)]
    matches = [len(line) + 1 == length and LINE.fullmatch(line) for line in lines]
    require(all(matches), "a line is torn or joined to another one")
    return [(int(match[1]), int(match[2])) for match in matches]


def require_sequence(data, first, end):
    require(parse(data) == [(0, i) for i in range(first, end)], f"not lines {first} to {end}")


class Writer(subprocess.Popen):
    def __init__(self, root, limit=LIMIT, predecessors=1, ring=(), stderr=None, **options):
        self.folder = root / "share/zel/logs/debug"
        self.live = self.folder / "zel_logs.log"
        self.predecessor = self.folder / "zel_logs.log.1"
        self.printed, self.counter = root / "stderr", root / "counter"
        self.written = 0
        (root / "app/bin").mkdir(parents=True, exist_ok=True)
        if "--buffered" in OPTIONS:
            ring = (root,)
        with open(self.printed, "wb") as printed:
            super().__init__([PROGRAM, root, str(limit), str(predecessors), *ring],
                             stderr=stderr or printed, stdin=subprocess.PIPE,
                             stdout=subprocess.PIPE, **options)
        self.write(0)  # returns when the files are open

    def __exit__(self, *error):
        super().__exit__(*error)
        require(self.returncode == 0, f"the application ended with {self.returncode}")

    # Returns when the lines are written.
    def write(self, count, threads=1):
        self.stdin.write(f"write {threads} {self.written} {count} {LENGTH}\n".encode())
        self.stdin.flush()
        require(self.stdout.readline() == b"done\n", "no answer")
        self.written += count

    # Threads log until the process is killed or sends itself the signal.
    def log_until_killed(self, threads=8, length=LENGTH, pause_us=0, fatal_signal=0, last=0,
                         level=1):
        self.counter.write_bytes(bytes(4 * threads))
        words = self.counter, threads, length, pause_us, int(fatal_signal), last, level
        self.stdin.write(f"forever {' '.join(map(str, words))}\n".encode())
        self.stdin.flush()

    # The number of lines of each thread.
    def counts(self):
        return memoryview(self.counter.read_bytes()).cast("i").tolist()

    def wait_for_lines(self, count):
        while min(self.counts()) < count and self.poll() is None:
            time.sleep(0.001)

    # The predecessor and the live file.
    def content(self):
        return b"".join(p.read_bytes() for p in (self.predecessor, self.live) if p.is_file())

    def memory_KiB(self):
        return int(subprocess.check_output(["ps", "-o", "rss=", str(self.pid)]))


# Eight threads log while the file rotates.
def threads(root):
    count = 5000 if "--short" in OPTIONS else 50000
    limit = 8 * count * LENGTH // 40
    with Writer(root, limit, predecessors=60) as writer:
        for _ in range(count // 2500):  # which a ring has room for
            writer.write(2500, threads=8)
    paths = [writer.folder / f"zel_logs.log.{i}" for i in range(60, 0, -1)] + [writer.live]
    contents = [path.read_bytes() for path in paths if path.exists()]
    require(len(contents) >= 40 and max(map(len, contents)) <= limit,
            "wrong file sizes")
    for files in (contents, [writer.printed.read_bytes()]):
        found = [line for data in files for line in parse(data)]
        found.sort(key=lambda line: line[0])  # which leaves the lines of a thread in their order
        require(found == [(t, i) for t in range(8) for i in range(count)], "lines lost or doubled")


# kill -9 at any moment.
def kill(root):
    for turn in range(25 if "--short" in OPTIONS else 200):
        # Only a line of many pages can be torn by a signal.
        length, limit = ((LENGTH, 10 * LENGTH), (200000, 700000))[turn % 2]
        folder = root / str(turn)
        writer = Writer(folder, limit)
        writer.log_until_killed(threads=1, length=length)
        writer.wait_for_lines(1)
        time.sleep(random.uniform(0, 0.03))
        writer.kill()
        writer.communicate()
        acknowledged, = writer.counts()
        names = set(os.listdir(writer.folder))
        require(names <= {"zel_logs.log", "zel_logs.log.1", "m4_ab.log"}, f"left behind: {names}")

        whole, torn = re.fullmatch(rb"(?s)(.*\n)?(.*)", writer.content()).groups()
        found = parse(whole, length)
        first, end = found[0][1], found[-1][1] + 1
        require(found == [(0, number) for number in range(first, end)], "lines lost or doubled")
        require(0 < acknowledged <= end <= acknowledged + (not torn), f"{acknowledged}, {end}")
        oldest = writer.predecessor if writer.predecessor.exists() else writer.live
        is_full = oldest.stat().st_size // length == limit // length
        require(first == 0 or first % (limit // length) == 0 and is_full, "lines lost too early")

        shutil.rmtree(folder)


# The disk is full at a start after a power cut, and at three times while lines are written: early,
# when a rotation is due, and when there is a predecessor.
def full_disk(root):
    private_mounts()
    live = root / "share/zel/logs/debug/zel_logs.log"
    with mounted(live.parent, "-t", "tmpfs", "-o", "size=256k", "none"):
        live.write_bytes(b"x" * 4096)  # the rest found no free block
        with filled(live.parent):
            writer = Writer(root)
        with writer:
            writer.write(2)
        require_sequence(re.sub(rb"^x{4095}x?\n", b"", live.read_bytes()), 0, 2)
        live.unlink()

        with Writer(root) as writer:
            for live_lines in (100, LIMIT // LENGTH, 500):
                writer.write(live_lines - len(parse(live.read_bytes())))
                before = set(parse(writer.content()))
                with filled(live.parent):
                    writer.write(1000)
                    start_KiB = writer.memory_KiB()
                    for _ in range(7):
                        writer.write(10000)
                    growth_KiB = writer.memory_KiB() - start_KiB
                    require(len(set(parse(writer.content())) - before) < 1000, "no full disk")
                require(growth_KiB < 1024 or "--sanitized" in OPTIONS, f"+{growth_KiB} KiB memory")
                writer.write(10)
                content = writer.content()
                # A report may fit where the line behind it does not; then another one follows.
                *_, (last, reports, next) = re.findall(
                    rb" (\d{8}) x+\.\n((?:.*are missing here.*\n)+).* (\d{8}) x", content)
                missing = sum(map(int, re.findall(REPORT, reports)))
                require(int(last) + missing + 1 == int(next), "a wrong number is missing")
                found = parse(content)
                require(found == sorted(before | set(found)), "lines lost, doubled or out of order")
                require(found[-10][1] == writer.written - 10, "logging has not resumed at once")
            require_sequence(writer.printed.read_bytes(), 0, writer.written)


# The log folder is deleted and created again later.
def vanished_folder(root):
    with Writer(root) as writer:
        writer.write(100)
        shutil.rmtree(writer.folder)
        writer.write(20000)
        hidden_B = sum(fd.stat().st_size for fd in Path(f"/proc/{writer.pid}/fd").iterdir()
                       if os.readlink(fd).endswith("zel_logs.log (deleted)"))
        require(hidden_B <= 2 * LIMIT, f"the deleted file takes {hidden_B} B of the disk")
        writer.folder.mkdir()
        time.sleep(0.2)
        writer.write(1500)
        require_sequence(writer.content(), 20100, 21600)
        printed = writer.printed.read_bytes()
        require_sequence(printed, 0, 21600)
        require(printed.count(b"| Log file ") == 2, "not one Warning at the begin and at the end")


# Each system call of a rotation fails once, three times or always, or the process is killed before
# it. Only the lines that find no room in the predecessors are lost.
def rotation(root):
    need_strace()
    for predecessors in (1, 3):
        end = 10 * (predecessors + 1)
        template = root / f"full{predecessors}"
        with Writer(template, 10 * LENGTH, predecessors) as writer:
            writer.write(end)

        def require_lines(writer, end, first):
            suffixes = [*(f".{i}" for i in range(predecessors, 0, -1)), ""]
            paths = [writer.live.with_name(writer.live.name + suffix) for suffix in suffixes]
            data = b"".join(path.read_bytes() for path in paths if path.exists())
            found = parse(data)[0][1]
            require_sequence(data, found, end)
            require(found <= first, f"all before line {found} are lost")

        # Writes 12 lines to full files and returns the system calls.
        def run(fault="trace=none"):
            folder = root / f"{predecessors}{fault}"
            shutil.copytree(template, folder)
            writer = Writer(folder, 10 * LENGTH, predecessors)
            # strace is attached before the writing thread starts and counts all its calls.
            strace = ["strace", "-f", "-p", str(writer.pid), "-o", folder / "calls",
                      "-e", "trace=%file,%desc", "-e", fault]
            with subprocess.Popen(strace, stderr=subprocess.PIPE) as tracer:
                require(b"attached" in tracer.stderr.readline(), "strace is not attached")
                writer.communicate(f"write 1 {end} 12 {LENGTH}\n".encode())
            if "KILL" in fault:
                require(writer.returncode == -9, "not killed")
                require_lines(writer, end, 10)
                with Writer(folder, 10 * LENGTH, predecessors) as writer:
                    writer.written = end
                    writer.write(12)
                require(not (writer.folder / "zel_logs.log.rotating").exists(), "a leftover")
            require(writer.returncode == 0, f"the application ended with {writer.returncode}")
            has_no_rotation = re.search("rename.*[+]", fault)
            require_lines(writer, end + 12, 10 if has_no_rotation else 21)
            return (folder / "calls").read_text(errors="replace")

        calls = re.findall(r"(?m)^(\d+) +(\w+)\((\w*)", run("trace=%file,%desc"))
        thread = next(thread for thread, name, _ in calls if name == "rename")
        calls = [call for call in calls if call[0] == thread]
        names = [name for _, name, _ in calls]
        printed = calls.index((thread, "write", "2"))
        faults = [f"inject={name}:{fault}"
                  for name, n in numbered(names, printed + 1, names.index("write", printed + 1))
                  if name != "mmap" for fault in (
                      f"error=EIO:when={n}", f"error=EIO:when={n}..{n + 2}",
                      f"error=EIO:when={n}+", f"signal=KILL:when={n}")]
        require(len(faults) > 40, faults)
        with ThreadPoolExecutor(4) as pool:
            list(pool.map(run, faults))


if __name__ == "__main__":
    main(globals()[EXPERIMENT])
