#!/usr/bin/env python3
"""What becomes of log lines when the machine fails beneath them.

Each experiment runs `logwriter`, breaks something and compares the files with what was logged.
Exit status 0: every line is accounted for; 1: one is not; 77: cannot run here.
"""

import argparse
import ctypes
import errno
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from contextlib import contextmanager
from pathlib import Path

LENGTH = 60  # of a line, line feed included; no divisor of a page
LIMIT = 1024 * LENGTH  # of a file
LINE = re.compile(rb"\d\d/\d\d/\d{4} \d\d:\d\d:\d\d:\d{3}\| Info     \| (\d) (\d{8}) x*\.")
OPTIONS = argparse.Namespace()  # of the command line


class Fault(Exception):
    pass


class Skip(Exception):
    pass


def require(condition, what):
    if not condition:
        raise Fault(what)


def parse(data, length=LENGTH):
    """(thread, number) of every line."""
    require(not data or data.endswith(b"\n"), f"half a line at the end: {data[-80:]!r}")
    found = []
    for line in data.split(b"\n")[:-1]:
        match = LINE.fullmatch(line)
        require(match and len(line) + 1 == length, f"torn or joined line: {line[:200]!r}")
        found.append((int(match[1]), int(match[2])))
    return found


def require_sequence(data, first, end, where, length=LENGTH):
    numbers = [number for _, number in parse(data, length)]
    if numbers != list(range(first, end)):
        wrong = sorted(set(range(first, end)) ^ set(numbers))[:5]
        raise Fault(f"{where}: {len(numbers)} lines in place of {first} to {end - 1}; "
                    f"missing or too many: {wrong or 'none, but doubled or out of order'}")


class Writer:
    def __init__(self, root, limit=LIMIT, predecessors=1):
        self.folder = root / "share/zel/logs/debug"
        self.live = self.folder / "zel_logs.log"
        self.predecessor = self.folder / "zel_logs.log.1"
        self.stderr = root / "stderr"
        self.written = 0
        (root / "app/bin").mkdir(parents=True, exist_ok=True)
        with open(self.stderr, "wb") as stderr:
            self.process = subprocess.Popen(
                [OPTIONS.program, root, str(limit), str(predecessors)],
                stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=stderr)
        self.write(0)  # returns when the files are open

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        if kind is not None:
            self.process.kill()
        self.process.stdin.close()
        status = self.process.wait()
        require(kind is not None or status == 0, f"the application ended with {status}")

    def tell(self, *words):
        self.process.stdin.write((" ".join(map(str, words)) + "\n").encode())
        self.process.stdin.flush()

    def ask(self, *words):
        self.tell(*words)
        size = self.process.stdout.readline()
        require(size, f"the application died: {self.stderr.read_bytes()[-2000:].decode()}")
        return self.process.stdout.read(int(size))

    def write(self, count):
        self.ask("write", 1, self.written, count, LENGTH)
        self.written += count

    def content(self):
        """The predecessor and the live file."""
        return b"".join(p.read_bytes() for p in (self.predecessor, self.live) if p.is_file())

    def require_printed(self):
        require_sequence(self.stderr.read_bytes(), 0, self.written, "standard error")

    def memory_KiB(self):
        status = Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status)[1])


def private_mounts():
    if os.geteuid() != 0:
        raise Skip("needs root to mount")
    new_mount_namespace = 0x00020000
    if (ctypes.CDLL(None).unshare(new_mount_namespace) != 0
            or subprocess.run(["mount", "--make-rprivate", "/"]).returncode != 0):
        raise Skip("needs a mount namespace of its own")


@contextmanager
def mounted(folder, *steps):
    folder.mkdir(parents=True, exist_ok=True)
    for step in steps:
        subprocess.run(["mount", *step, folder], check=True)
    try:
        yield
    finally:
        subprocess.run(["umount", "--lazy", folder], check=True)


def threads(root):
    """Eight threads log while the file rotates."""
    count = 5000 if OPTIONS.short else 50000
    limit = 8 * count * LENGTH // 40
    with Writer(root, limit, predecessors=60) as writer:
        writer.ask("write", 8, 0, count, LENGTH)
    paths = [writer.folder / f"zel_logs.log.{i}" for i in range(60, 0, -1)] + [writer.live]
    contents = [path.read_bytes() for path in paths if path.exists()]
    require(len(contents) >= 40, f"only {len(contents)} files")
    require(max(map(len, contents)) <= limit, "a file beyond its limit")
    for where, pieces in (("files", contents), ("standard error", [writer.stderr.read_bytes()])):
        found = [line for piece in pieces for line in parse(piece)]
        for thread in range(8):
            numbers = [number for t, number in found if t == thread]
            require(numbers == list(range(count)),
                    f"{where}: lines of thread {thread} missing, doubled or out of order")
        require(len(found) == 8 * count, f"{where}: {len(found)} lines")
    return f"8 x {count} lines once and in order, in {len(contents)} files and on standard error"


def kill(root):
    """kill -9 at any moment, then a power cut that tears the last line, then a restart."""
    rounds, lines, torn_lines, amid_rotation, joints = 25 if OPTIONS.short else 200, 0, 0, 0, 0
    for turn in range(rounds):
        # Only a line of many pages can be torn by a signal.
        length, limit = ((LENGTH, 10 * LENGTH), (200000, 700000))[turn % 2]
        folder = root / str(turn)
        folder.mkdir()
        counter = folder / "counter"
        counter.touch()
        writer = Writer(folder, limit)
        writer.tell("forever", counter, length)
        deadline = time.monotonic() + 60
        while counter.stat().st_size == 0 and time.monotonic() < deadline:
            time.sleep(0.001)
        time.sleep(random.uniform(0, 0.03))
        writer.process.kill()
        writer.process.communicate()
        acknowledged = int.from_bytes(counter.read_bytes(), sys.byteorder)
        require(acknowledged > 0, "nothing was written")
        names = set(os.listdir(writer.folder))
        require(names <= {"zel_logs.log", "zel_logs.log.1", "m4_ab.log"}, f"left behind: {names}")

        whole, torn = re.fullmatch(rb"(?s)(.*\n)?(.*)", writer.content()).groups()
        found = parse(whole, length)
        first, end = found[0][1], found[-1][1] + 1
        require_sequence(whole, first, end, "files", length)
        require(acknowledged <= end <= acknowledged + (not torn),
                f"{acknowledged} writes returned, the files end with line {end - 1}")
        full_file = limit // length
        is_rotated = writer.predecessor.exists()
        full = (writer.predecessor if is_rotated else writer.live).stat().st_size // length
        require(first == 0 and not is_rotated or first % full_file == 0 and full == full_file,
                f"lines before {first} lost before their time")
        lines += end
        torn_lines += bool(torn)
        amid_rotation += not writer.live.exists() or first > 0 and not is_rotated

        kept = writer.live.read_bytes() if writer.live.exists() else b""
        kept = kept[:random.randint(0, len(kept))]
        writer.live.write_bytes(kept)
        with Writer(folder, 10 * limit) as writer:
            writer.write(3)
        joint = b"\n" if kept and not kept.endswith(b"\n") else b""
        joints += len(joint)
        now = writer.live.read_bytes()
        require(now.startswith(kept + joint), "the restart changed earlier lines")
        require_sequence(now[len(kept + joint):], 0, 3, "after the restart")
        shutil.rmtree(folder)
    return (f"{rounds} kills ({amid_rotation} amid a rotation), {lines} lines accounted for, "
            f"{torn_lines} torn by the kill; {joints} half lines ended by the restart")


@contextmanager
def filled(folder):
    filler = folder / "filler"
    with open(filler, "wb", buffering=0) as file:
        try:
            while True:
                file.write(bytes(4096))
        except OSError as error:
            require(error.errno == errno.ENOSPC, error)
    yield
    filler.unlink()


def full_disk(root):
    """The disk is full at a start after a power cut, and three times while lines come: early, when
    a rotation is due, and with a predecessor there."""
    private_mounts()
    folder = root / "share/zel/logs/debug"
    count, growth_KiB = 70000, 0
    with mounted(folder, ["-t", "tmpfs", "-o", "size=256k", "none"]):
        live = folder / "zel_logs.log"
        live.write_bytes(b"x" * 4096)  # torn where the disk had no further block
        with filled(folder):
            writer = Writer(root)
        with writer:
            writer.write(2)
        parted = re.fullmatch(rb"(?s)x{4095}x?\n(.*)", live.read_bytes())
        require(parted, "the first line is joined to the torn one")
        require_sequence(parted[1], 0, 2, "file after the start")
        live.unlink()

        with Writer(root) as writer:
            for live_lines in (100, LIMIT // LENGTH, 500):
                writer.write(live_lines - len(parse(live.read_bytes())))
                before = set(parse(writer.content()))
                with filled(folder):
                    writer.write(1000)
                    start_KiB = writer.memory_KiB()
                    writer.write(count)
                    growth_KiB = max(growth_KiB, writer.memory_KiB() - start_KiB)
                    require((0, writer.written - 1) not in parse(writer.content()),
                            "the disk was not full")
                writer.write(10)
                found = parse(writer.content())
                require(found == sorted(set(found)), "lines doubled or out of order")
                require(before <= set(found), "lines from before the full disk are lost")
                require(found[-10:] == [(0, writer.written - 10 + i) for i in range(10)],
                        f"logging has not resumed at once: {found[-10:]}")
            require(OPTIONS.sanitized or growth_KiB < 1024, f"memory grew by {growth_KiB} KiB")
            writer.require_printed()
    return (f"3 x {count} lines on a full disk: all printed, memory +{growth_KiB} KiB, "
            "no line torn, the next ones in the file")


def vanished_folder(root):
    """The log folder is deleted, and made again later."""
    with Writer(root) as writer:
        writer.write(100)
        shutil.rmtree(writer.folder)
        writer.write(20000)
        hidden_B = sum(fd.stat().st_size for fd in Path(f"/proc/{writer.process.pid}/fd").iterdir()
                       if os.readlink(fd).endswith("zel_logs.log (deleted)"))
        require(hidden_B <= 2 * LIMIT, f"the deleted file takes {hidden_B} B of the disk, unseen")
        writer.folder.mkdir()
        time.sleep(0.2)
        first = writer.written
        writer.write(1500)
        require_sequence(writer.content(), first, writer.written, "files")
        writer.require_printed()
    return (f"{writer.written} lines printed, {hidden_B} B in the deleted file, "
            "1500 of 1500 in the new folder")


def without_rotation(root, fault):
    """No line is lost while `fault` makes rotations impossible, and they resume after it."""
    with Writer(root) as writer:
        writer.write(900)
        with fault(writer):
            writer.write(5000)
            require_sequence(writer.content(), 0, writer.written, "files with the fault")
            largest = max(path.stat().st_size for path in writer.folder.glob("zel*"))
            require(largest > 4 * LIMIT, "the fault does not hinder rotations")
        writer.write(1000)
        require_sequence(writer.content(), 0, writer.written, "files afterwards")
        writer.write(1024)
        require_sequence(writer.content(), 5900, writer.written, "files after a rotation")
        require(writer.predecessor.stat().st_size <= LIMIT, "no rotation afterwards")
        writer.require_printed()
    return f"no line of {writer.written} lost, a file grew to {largest} B, rotation resumed"


def readonly_folder(root):
    """The log folder becomes read-only while the file is open."""
    private_mounts()
    return without_rotation(root, lambda writer: mounted(
        writer.folder, ["--bind", writer.folder], ["-o", "remount,bind,ro"]))


def descriptors(root):
    """The application has no file descriptor left."""
    @contextmanager
    def fault(writer):
        reason = int(writer.ask("take"))
        require(reason == errno.EMFILE, os.strerror(reason))
        yield
        writer.ask("release")
    return without_rotation(root, fault)


def rename(root):
    """A folder with something in it has the name of the predecessor."""
    @contextmanager
    def fault(writer):
        (writer.predecessor / "something").mkdir(parents=True)
        yield
        shutil.rmtree(writer.predecessor)
    return without_rotation(root, fault)


def hostile_content(root):
    """Files with anything in them are read back."""
    random.seed(1)
    days = ["14/02/2031", "15/02/2031"]

    def good_lines(file, count):
        return [f"{days[i * 2 // count]} 10:00:00:000| MenuAccess| {file} {i}" for i in range(count)]

    def junk():
        half = good_lines("half", 9)[0].encode()
        return random.choice([
            bytes(random.randint(1, 5000)), b"\n" * random.randint(1, 9) + b"\0\n",
            half[:random.randrange(1, len(half) - 9)] + b"\0", b"\xff\xfe\xc3\n", b"\xc3\0",
            b"x" * 2**20 + b"\n", b"| MenuAccess|" * 90000 + b"\0", b"99/99/9999 \xe2\x82|\r\n",
            random.randbytes(3000) + b"\n"])

    files = {"new": good_lines("new", 60), "old": good_lines("old", 60)}
    good = set(files["new"] + files["old"])

    def require_good(text, expected, what):
        found = [line for line in text.decode().split("\n") if line in good]
        require(found == expected, f"{what}: {len(found)} of {len(expected)} good lines")

    oldest_first = files["old"] + files["new"]
    orders = [files["new"][::-1] + files["old"][::-1], files["new"] + files["old"]]
    with Writer(root) as writer:
        events = writer.folder.parent / "events/zel_events.log"
        for name, lines in files.items():
            path = events.with_suffix(".log.1") if name == "old" else events
            # The last line of a file has no line feed.
            path.write_bytes(b"\n".join(junk() + line.encode() for line in lines))
        total = writer.ask("total")
        require_good(total, files["new"] + files["old"], "all lines")
        for order, expected in enumerate(orders):
            pages = [writer.ask("page", events, order, i, i + 499)
                     for i in range(0, total.count(b"\n"), 500)]
            require_good(b"\n".join(pages), expected, f"pages in order {order}")
        access = 1
        for kind in (0, access):
            first_day = [line for line in oldest_first if line.startswith(days[0])]
            require_good(writer.ask("history", kind, days[0], days[0], 0, 10**6), first_day,
                         "history of a day")
            require_good(writer.ask("history", kind, *days, 0, 10**6), oldest_first, "history")
        pages = [writer.ask("history", access, *days, page, 7) for page in range(40)]
        require_good(b"\n".join(pages[::-1]), oldest_first, "pages of the history")
        size = sum(path.stat().st_size for path in events.parent.iterdir())
    return f"{len(good)} good lines read from {size} B of rubbish, whole, by page and as history"


def main(description, *experiments):
    names = {experiment.__name__: experiment for experiment in experiments}
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("experiment", choices=names)
    parser.add_argument("program")
    parser.add_argument("--short", action="store_true")
    parser.add_argument("--sanitized", action="store_true", help="memory is not judged")
    parser.parse_args(namespace=OPTIONS)
    name = OPTIONS.experiment
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # leaves nothing behind then
    try:
        with tempfile.TemporaryDirectory() as root:
            print(f"{name}: {names[name](Path(root))}")
    except Skip as reason:
        print(f"{name}: skipped, {reason}")
        sys.exit(77)
    except (Fault, OSError, subprocess.SubprocessError) as fault:
        print(f"{name}: FAILED, {fault}")
        sys.exit(1)


if __name__ == "__main__":
    main(__doc__, threads, kill, full_disk, vanished_folder, readonly_folder, descriptors, rename,
         hostile_content)
