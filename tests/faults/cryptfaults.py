#!/usr/bin/env python3
# Compares `zelctl crypt` with the same format in another language, and runs it on machines that
# fail: cryptfaults.py EXPERIMENT ZELCTL [--short] [--sanitized]. The exit status is 0 if every
# check passed, 77 if the experiment cannot run here, and another one if a check failed.

import json
import os
import random
import re
import resource
import signal
import subprocess
import sys
import time
from pathlib import Path

from faults import EXPERIMENT, OPTIONS, PROGRAM, filled, main, mounted, private_mounts, require

sys.path.insert(0, str(Path(__file__).parent.parent.parent / "docs/examples"))
import cryptformat  # noqa: E402

CHUNK = 2**20
KEY = 0x0123456789ABCDEF
os.environ["ZEL_KEY"] = f"{KEY:016x}"


def command(action, *words):
    return [PROGRAM, "crypt", action, *map(str, words)]


def run(action, *words, **options):
    return subprocess.run(command(action, *words), capture_output=True, **options)


def text_of(size):
    return random.choice([random.randbytes, lambda n: (b"espresso " * n)[:n]])(size)


# Each side reads what the other one writes, from files and pipes.
def crypt_exchange(root):
    plain, encrypted, back = root / "plain", root / "encrypted", root / "back"
    edges = [CHUNK, CHUNK + 1, CHUNK + 21, CHUNK + 22]  # encryptFileSmart() loses tails here
    for size in edges + [random.randint(0, 300) for _ in range(20 if "--short" in OPTIONS else 500)]:
        text, lead = text_of(size), random.randint(0, 127)
        plain.write_bytes(text)
        options = {"protection": random.choice(["off", "checksum", "sha1"]),
                   "compression": random.choice(["off", "off", "smaller", "forced"]),
                   "metadata": random.choice(["", "machine 4711"])}
        words = [f"--{name}={value}" for name, value in options.items()]
        if random.random() < 0.5:
            words.append("--plain")
            options["plain"] = True
        require(run("encrypt", plain, encrypted, *words).returncode == 0, words)
        found = encrypted.read_bytes()
        info = json.loads(run("info", encrypted, "--json").stdout)
        require(info == cryptformat.info(found), f"{info}, {words}")
        require(cryptformat.decrypt(found, KEY) == text, f"{size} bytes, {words}")
        piped = run("encrypt", "-", "-", "--fixed-lead", *words, input=text).stdout
        require(piped == cryptformat.encrypt(text, KEY, **options), f"{size} bytes, {words}")
        encrypted.write_bytes(cryptformat.encrypt(text, KEY, lead=lead, **options))
        require(run("decrypt", encrypted, back).returncode == 0, words)
        require(back.read_bytes() == text, f"{size} bytes, {words}")
        require(run("decrypt", encrypted, "-").stdout == text, f"{size} bytes, {words}")


# A refused run prints one line, exits with status 1 and changes no file.
def crypt_refused(root):
    private_mounts()
    folder = root / "disk"
    with mounted(folder, "-t", "tmpfs", "-o", "size=16m", "none"):
        plain, good, out = folder / "plain", folder / "good", folder / "out"
        text = text_of(2 * CHUNK)
        data = cryptformat.encrypt(text, KEY)
        files = {}

        def put(name, content):
            files[name] = content
            (folder / name).write_bytes(content)

        def refused(message, *words, status=1):
            result = run(*words)
            line = re.fullmatch(rb"zelctl: (.*)\n", result.stderr)
            require(line and re.search(message, line[1].decode()), f"{words}: {result.stderr}")
            require(result.returncode == status and not result.stdout, f"{words}: {result}")
            left = {name: (folder / name).read_bytes() for name in os.listdir(folder)}
            left.pop("filler", None)
            require(left == files, f"{words}: a file has changed")

        for name, content in {
                "plain": text, "good": data, "out": b"kept", "empty": b"", "cut": data[:-1],
                "short": data[:22], "flipped": data[:-9] + b"\0" * 9,
                "lost": cryptformat.encrypt(text[:CHUNK + 9], KEY)[:CHUNK + 23],
                "bomb": b"\4\x11\0\x7f\xff\xff\xf0" + 30 * b"x",
                "flagless": b"\4\0" + data[2:]}.items():
            put(name, content)
        for target in (out, folder / "new"):
            for name in ("cut", "short", "flipped", "lost", "empty", "bomb"):
                refused("damaged, or the key", "decrypt", folder / name, target)
            refused("not a cyphertext", "decrypt", plain, target)
            refused("no SHA-1", "decrypt", folder / "flagless", target, "--require", "sha1")
            refused("No such file", "encrypt", folder / "missing", target)
            refused("No such file", "info", folder / "missing")
            refused("not a file", "encrypt", folder, target)
            refused("Input/output error", "encrypt", "/proc/self/mem", target)
            with filled(folder):
                refused("No space left", "encrypt", plain, target)
                refused("No space left", "encrypt", plain, target, "--whole-file")
                refused("No space left", "decrypt", good, target)
        put("key", os.environ["ZEL_KEY"].encode())
        os.link(plain, folder / ".new.new")  # the leftover of a killed run
        files[".new.new"] = text
        for words in ((plain, folder / ".." / "disk" / "plain"),
                      (folder / ".new.new", folder / "new"),
                      (plain, folder / "key", "--key-file", folder / "key")):
            refused("would lose", "encrypt", *words)
        require(run("decrypt", good, "-", "--key-file", folder / "key").returncode == 0, "no key")
        require(b"nothing was" in run("decrypt", folder / "flagless", "-").stderr, "no warning")
        put("key", b"\3\x0c" + 60 * b"x")  # version 3 has no metadata
        require(b" none" in run("info", folder / "key").stdout, "version 3")
        refused("is a folder; give", "encrypt", plain, folder)
        refused("not a file", "encrypt", plain, "/dev/full")
        refused("No such file", "encrypt", plain, folder / "missing" / "out")
        sparse = root / "sparse"  # its metadata have the 2 GiB that it states
        sparse.write_bytes(b"\4\x0c\xd0\xff\xff\x7f\x2f\0\0\x80")
        os.truncate(sparse, 2**31 + 4095)
        require(b"is damaged" in run("info", sparse).stderr, "forged metadata")
        refused("not a cyphertext", "info", plain)
        refused("checksum or sha1", "decrypt", good, out, "--require", "off", status=2)
        refused("only valid with", "encrypt", plain, out, "--json", status=2)
        refused("--help", "decrypt", plain, status=2)
        refused("ASCII", "encrypt", plain, out, "--metadata", "\u00e9", status=2)
        refused("no key of 16", "encrypt", plain, out, "--key-file", plain)
        os.environ["ZEL_KEY"] = "1"
        refused("ZEL_KEY holds no key", "decrypt", good, out)
        os.environ["ZEL_KEY"] = "0123456789abcdee"
        refused("another one", "decrypt", good, out)


# After SIGKILL at any moment, the output is the old or the new one, and the next run succeeds.
def crypt_killed(root):
    plain, out = root / "plain", root / "out"
    plain.write_bytes(text_of(8 * CHUNK))
    new = run("encrypt", plain, "-", "--fixed-lead").stdout
    start = time.monotonic()
    run("encrypt", plain, out)
    length_s, killed = time.monotonic() - start, 0
    out.write_bytes(b"old")
    for _ in range(20 if "--short" in OPTIONS else 300):
        process = subprocess.Popen(command("encrypt", plain, out, "--fixed-lead"))
        time.sleep(random.uniform(0, length_s))
        process.kill()
        killed += process.wait() != 0
        require(out.read_bytes() in (b"old", new), "neither the old nor the new output")
        require(set(os.listdir(root)) <= {"plain", "out", ".out.new"}, "something left behind")
    require(killed > 2, "it was too fast for this experiment")
    require(run("encrypt", plain, out, "--fixed-lead").returncode == 0, "it has not recovered")
    require(set(os.listdir(root)) == {"plain", "out"} and out.read_bytes() == new, "a leftover")


# When six runs write the same output, it always exists and is complete.
def crypt_together(root):
    out, outputs = root / "out", []
    for i in range(6):
        (root / f"in{i}").write_bytes(text_of((5, 200, CHUNK)[i % 3]))
        outputs.append(run("encrypt", root / f"in{i}", "-", "--fixed-lead").stdout)
    out.write_bytes(outputs[0])
    for _ in range(10 if "--short" in OPTIONS else 300):
        processes = [subprocess.Popen(command("encrypt", root / f"in{i}", out, "--fixed-lead"),
                                      stderr=subprocess.PIPE) for i in range(6)]
        while any(process.poll() is None for process in processes):
            require(out.read_bytes() in outputs, "half an output")
        for process in processes:
            printed = process.communicate()[1]
            require(not process.returncode or b"another process" in printed, printed)
        require(any(not process.returncode for process in processes), "nobody has succeeded")
    require(len(os.listdir(root)) == 7, os.listdir(root))


# A run that is ended by a signal removes its unfinished output.
def crypt_ended(root):
    plain, out = root / "plain", root / "out"
    plain.touch()
    os.truncate(plain, 512 * CHUNK)
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        with subprocess.Popen(command("encrypt", plain, out)) as process:
            while not (root / ".out.new").exists():
                require(process.poll() is None, "it was too fast for this experiment")
            process.send_signal(number)
        require(process.returncode == -number and os.listdir(root) == ["plain"], number)


# Only a compressed file is held in memory as a whole. If that fails, the old output is kept.
def crypt_memory(root):
    if "--sanitized" in OPTIONS:  # sanitizers reserve all addresses
        sys.exit(77)
    plain, encrypted = root / "plain", root / "encrypted"

    def run_in_128_MiB(*words):
        return run(*words, preexec_fn=lambda: resource.setrlimit(
            resource.RLIMIT_AS, (128 * CHUNK, 128 * CHUNK)))

    plain.touch()
    os.truncate(plain, (256 if "--short" in OPTIONS else 4096) * CHUNK + 5)
    for words in (("encrypt", plain, encrypted), ("decrypt", encrypted, plain)):
        require(run_in_128_MiB(*words).returncode == 0, words)
    encrypted.write_bytes(cryptformat.encrypt(bytes(200 * CHUNK), KEY, compression="forced"))
    plain.write_bytes(b"kept")
    result = run_in_128_MiB("decrypt", encrypted, plain)
    require(result.returncode == 1 and b"Cannot allocate memory" in result.stderr, result)
    require(plain.read_bytes() == b"kept", "the old output is lost")


if __name__ == "__main__":
    main(globals()[EXPERIMENT])
