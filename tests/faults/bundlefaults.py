#!/usr/bin/env python3
# Runs `zelctl bundle` on sticks that fail and on bundles that are forged: bundlefaults.py EXPERIMENT
# ZELCTL [--short] [--sanitized]. Exit status as in experiment.py.

import gzip
import io
import os
import random
import re
import signal
import subprocess
import tarfile
import threading
import time

from experiment import (EXPERIMENT, OPTIONS, PROGRAM, filled, main, mounted, need_strace,
                        private_mounts, require, skip_unless)

MIB = 2**20
KEY = "0123456789abcdef"
os.environ["ZEL_KEY"] = KEY


def bundle(*words, prefix=(), **options):
    return subprocess.run([*prefix, PROGRAM, "bundle", *map(str, words)], capture_output=True,
                          **options)


def machine(root, size=3 * MIB):
    logs = root / "machine/logs/debug"
    logs.mkdir(parents=True)
    (logs / "zel_logs.log").write_bytes(random.randbytes(size))
    return root / "machine"


# A refused run prints one line and leaves the folder of the output as it was.
def refused(message, out, run):
    before = {file.name: file.read_bytes() for file in out.parent.iterdir() if file.name != "filler"}
    result = run()
    lines = result.stderr.decode().splitlines()
    require(result.returncode != 0 and lines and re.match(f"zelctl: .*(?:{message})", lines[-1]),
            f"{message}: {result}")
    after = {file.name: file.read_bytes() for file in out.parent.iterdir() if file.name != "filler"}
    require(after == before, f"{message}: {before.keys()} became {after.keys()}")


# FAT32 is the file system of sticks, but not every kernel can mount it.
def bundle_refused(root):
    private_mounts()
    folder = machine(root)
    image = root / "image"
    image.touch()
    os.truncate(image, 64 * MIB)
    with open("/proc/filesystems") as file:
        has_fat = "vfat" in file.read().split()
    if has_fat:
        subprocess.run(["mkfs.vfat", "-F", "32", image], check=True, stdout=subprocess.DEVNULL)
    stick = ["-o", "loop", image] if has_fat else ["-t", "tmpfs", "-o", "size=64m", "none"]
    with mounted(root / "stick", *stick, umount=("umount",)):
        for name in ("out.tar.zst", "out.tar.gz.crypt"):
            refuse_on(folder, root / "stick" / name)


def refuse_on(folder, out):
    limit = ["prlimit", f"--fsize={MIB}"]  # says what the 4 GiB limit of FAT32 says
    with filled(out.parent):
        refused("cannot write .*: No space left", out, lambda: bundle(folder, out))
    refused("File too large", out, lambda: bundle(folder, out, prefix=limit))
    require(bundle(folder, out).returncode == 0, "a good stick")
    refused("File too large", out, lambda: bundle(folder, out, prefix=limit))
    require(bundle("verify", out).returncode == 0, "the old bundle is damaged")
    subprocess.run(["mount", "-o", "remount,ro", out.parent], check=True)
    refused("Read-only file system", out, lambda: bundle(folder, out))
    subprocess.run(["mount", "-o", "remount,rw", out.parent], check=True)


# The stick is pulled out at some write, or before the data is forced to it.
def bundle_pulled_out(root):
    need_strace()
    folder = machine(root)
    out = root / "stick/out.tar.gz"
    out.parent.mkdir()
    for fault in ("write:error=EIO:when=2+", "fsync:error=EIO:when=1", "renameat:error=EIO:when=1"):
        call = fault.split(":")[0]
        strace = ["strace", "-f", "-qqq", "-o", "/dev/null", "-P", out.parent / ".out.tar.gz.new",
                  "-P", out.parent, "-e", f"trace={call}", "-e", f"inject={fault}"]
        refused("cannot .*: Input/output error", out, lambda: bundle(folder, out, prefix=strace))
    # A disk of the machine that fails is no reason to lose the rest.
    log = folder / "logs/debug/zel_logs.log"
    strace = ["strace", "-f", "-qqq", "-o", "/dev/null", "-P", log, "-e", "trace=read", "-e",
              "inject=read:error=EIO:when=2+"]
    (folder / "logs/debug/zel_logs.log.1").write_bytes(b"former")
    result = bundle(folder, out, prefix=strace)
    require(result.returncode == 0 and b"zeros: Input/output error" in result.stderr, result)
    require(bundle("verify", out).returncode == 0, "a bundle with zeros is refused")
    strace = ["strace", "-f", "-qqq", "-o", "/dev/null", "-P", log, "-e", "inject=?lstat,newfstatat:error=EIO"]
    result = bundle(folder, out, prefix=strace)
    require(b"not in the bundle: logs/debug/zel_logs.log: Input/output error" in result.stderr, result)
    # Descriptors that run out make no file unreadable.
    for number in range(60):
        (folder / f"logs/debug/{number}.log").touch()
    result = bundle(folder, out, prefix=["prlimit", "--nofile=40"])
    require(result.returncode == 0 and b"Too many" not in result.stderr, result)


def bundle_ended(root):
    folder = machine(root, 64 * MIB)
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        for name in ("out.tar.zst", "out.tar.gz.crypt"):
            process = subprocess.Popen([PROGRAM, "bundle", folder, root / name],
                                       stdout=subprocess.DEVNULL)
            hidden = root / f".{name}.new"
            while process.poll() is None and not (hidden.exists() and hidden.stat().st_size > 0):
                time.sleep(0.001)
            process.send_signal(number)
            require(process.wait() == -number, f"{number} did not end it")
            require([file.name for file in root.iterdir()] == ["machine"], "something is left")


def bundle_forged(root):
    out = root / "a.tar.gz"

    def forge(member, content=b"", mode="w:gz"):
        with tarfile.open(out, mode) as archive:
            member.size = len(content)
            archive.addfile(member, io.BytesIO(content))

    for kind in (tarfile.SYMTYPE, tarfile.LNKTYPE, tarfile.CHRTYPE, tarfile.FIFOTYPE,
                 tarfile.DIRTYPE):
        member = tarfile.TarInfo("a")
        member.type = kind
        member.linkname = "/etc/passwd"
        forge(member)
        refused("not a plain file|name \"a/", out, lambda: bundle("verify", out))
    forge(tarfile.TarInfo("../a"), mode="w")
    refused("compressed once", out, lambda: bundle("verify", out))
    forge(tarfile.TarInfo("a"))
    out.write_bytes(gzip.compress(out.read_bytes()))
    refused("compressed once", out, lambda: bundle("verify", out))
    # 3 GiB of zeros, and a file that claims to hold eight exbibytes.
    zeros = root / "zeros"
    zeros.touch()
    os.truncate(zeros, 3 * 2**30)
    subprocess.run(f"tar -C {root} -cf - zeros | zstd -1 -q > {root}/b.tar.zst", shell=True,
                   check=True)
    refused("unpacks to far more", out, lambda: bundle("verify", root / "b.tar.zst"))
    member = tarfile.TarInfo("a")
    member.size = 2**62
    with open(root / "c.tar", "wb") as file:
        file.write(member.tobuf(tarfile.GNU_FORMAT) + bytes(MIB))
    subprocess.run(["zstd", "-q", root / "c.tar"], check=True)
    refused("Truncated|ends inside", out, lambda: bundle("list", root / "c.tar.zst"))


# Packing and checking large logs takes at most 32 MiB more than an empty command.
def bundle_memory(root):
    skip_unless("--sanitized" not in OPTIONS, "a build without sanitizers")
    folder = machine(root)
    block = random.randbytes(MIB)
    with open(folder / "logs/debug/zel_logs.log.1", "wb") as file:
        for _ in range(128 if "--short" in OPTIONS else 1024):
            file.write(block)

    # The peak of the program alone: the kernel counts the process that started it to the one that
    # wait4() reports.
    def peak(process):
        highest = 0
        while process.poll() is None:
            with open(f"/proc/{process.pid}/status") as file:
                found = re.search(r"VmHWM:\s+(\d+)", file.read())
            highest = max(highest, int(found[1]) * 1024 if found else 0)
            time.sleep(0.002)
        require(process.returncode == 0, process.args)
        return highest

    def started(*words, **options):
        return subprocess.Popen([PROGRAM, *map(str, words)], stdout=subprocess.DEVNULL, **options)

    idle = started("crypt", "encrypt", "-", "-", stdin=subprocess.PIPE)  # waits for its input
    time.sleep(1)
    idle.stdin.write(b"x")
    threading.Timer(1, idle.stdin.close).start()
    start = peak(idle)
    for name in ("out.tar.zst", "out.tar.gz", "out.tar.zst.crypt"):
        for words in ((folder, root / name), ("verify", root / name)):
            grown = peak(started("bundle", *words)) - start
            print(f"{words[0]} {name}: {grown / MIB:.1f} MiB")
            require(grown <= 32 * MIB, f"{words}: {grown} bytes")


if __name__ == "__main__":
    main(globals()[EXPERIMENT])
