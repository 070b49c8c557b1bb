#!/usr/bin/env python3
# A process that hangs, without a systemd and with one: watchdogfaults.py EXPERIMENT TST_WATCHDOG.

import ctypes
import os
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from experiment import EXPERIMENT, OPTIONS, PROGRAM, main, mounted, private_mounts, require, skip_unless

UNIT = (Path(__file__).parents[2] / "docs/examples/machine.service").read_text()
PERIOD = 4


def happens(condition, limit=20):
    deadline = time.monotonic() + limit
    while not condition():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.005)
    return True


# systemd-analyze finds no fault in the unit.
def watchdog_unit(root):
    skip_unless(shutil.which("systemd-analyze"), "systemd-analyze")
    unit = root / "machine.service"
    unit.write_text(UNIT.replace("/opt/zel/bin/machine", "/bin/true"))
    checked = subprocess.run(["systemd-analyze", "verify", "--man=no", unit], capture_output=True, text=True)
    complaints = [line for line in checked.stderr.splitlines() if "machine.service" in line]
    require(checked.returncode == 0 and not complaints, checked.stderr)


# The experiment is the manager, which would end the process at the trigger.
def watchdog_socket(root):
    with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as manager:
        manager.bind(str(root / "notify"))
        manager.settimeout(20)
        os.environ.update(NOTIFY_SOCKET=str(root / "notify"), WATCHDOG_USEC=str(PERIOD * 1000000))
        in_time(lambda: stall_until_trigger(manager, "--stall"))
        in_time(lambda: stall_until_trigger(manager, "--stall-in-log"))


# Nobody reads the standard error of the process.
def stall_until_trigger(manager, how):
    told = []
    with subprocess.Popen([PROGRAM, how], stdout=subprocess.PIPE, stderr=subprocess.PIPE) as child:
        while not told or told[-1] != b"WATCHDOG=trigger":
            told.append(manager.recv(4096))
        taken = time_since(child.stdout.readline())
        child.kill()
    require(b"STATUS=Main thread is late" in told, told)
    require(b"WATCHDOG=1" not in told[told.index(b"STATUS=Main thread has stalled"):], told)
    return taken


# On a machine with other work the end may come late. It never comes early, and one of three times
# must be right.
def in_time(stall):
    for _ in range(3):
        taken = stall()
        print(f"ended {taken:.3f} s after the stall, with a period of {PERIOD} s", flush=True)
        require(PERIOD * 0.9 <= taken, "too early")
        if taken <= PERIOD * 1.1:
            return
    require(False, "too late")


def time_since(stalled):
    return time.monotonic() - int(stalled) / 1000


# systemd takes the root of its control groups for its own and moves all that runs there, so it gets a
# group, a process namespace and a mount of its own.
def watchdog_kill(root):
    mounts = re.findall(r"^\S+ (\S+) cgroup2 ", Path("/proc/self/mounts").read_text(), re.M)
    skip_unless(os.geteuid() == 0 and mounts and os.access(mounts[0], os.W_OK), "root and cgroup2")
    namespaces = ["unshare", "--pid", "--fork", "--kill-child", "--mount-proc"]
    skip_unless(subprocess.run([*namespaces, "true"]).returncode == 0, "namespaces")
    skip_unless(shutil.which("systemd"), "systemd")
    group = tempfile.mkdtemp(prefix="zeltools-", dir=mounts[0])
    try:
        inside = [sys.executable, __file__, "inside", PROGRAM, group, root, *OPTIONS]
        ended = subprocess.run([*namespaces, *inside])
    finally:
        for folder, _, _ in os.walk(group, topdown=False):
            require(happens(lambda: not Path(folder, "cgroup.procs").read_text()), "processes are left")
            os.rmdir(folder)
    if ended.returncode == 77:
        sys.exit(77)
    require(ended.returncode == 0, f"exit status {ended.returncode}")


def inside(_):
    group, root = OPTIONS[0], Path(OPTIONS[1])
    Path(group, "cgroup.procs").write_text("0")
    new_cgroup_namespace = 0x02000000
    skip_unless(ctypes.CDLL(None).unshare(new_cgroup_namespace) == 0, "cgroup namespaces")
    private_mounts()
    subprocess.run(["umount", "--recursive", "--lazy", "/sys/fs/cgroup"], check=True)
    with (mounted(Path("/sys/fs/cgroup"), "-t", "cgroup2", "none"),
          mounted(Path("/run"), "-t", "tmpfs", "none")):
        members = Path("/sys/fs/cgroup/cgroup.procs").read_text().split()
        require(members == [str(os.getpid())], f"others in the group: {members}")
        os.makedirs("/run/systemd/system")  # else systemd does not start
        os.environ["XDG_RUNTIME_DIR"] = "/run"
        under_systemd(root)


def stall_until_killed(command, output):
    output.unlink(missing_ok=True)
    told = subprocess.run(command, capture_output=True, text=True).stderr
    require(output.exists() and "Finished with result: watchdog" in told, told)
    return time_since(output.read_text())


def under_systemd(root):
    output = root / "output"
    settings = re.findall("^(?:Type|TimeoutAbortSec)=.*", UNIT, re.M)
    settings += [f"WatchdogSec={PERIOD}", "LimitCORE=0", f"StandardOutput=append:{output}",
                 "StandardError=null"]
    options = [option for setting in settings for option in ("--property", setting)]
    systemd = subprocess.Popen(["systemd", "--user"])
    try:
        answers = ["systemctl", "--user", "--quiet", "is-active", "basic.target"]
        started = happens(lambda: subprocess.run(answers, stderr=subprocess.DEVNULL).returncode == 0)
        skip_unless(started, "a systemd that starts")
        command = ["systemd-run", "--user", "--wait", *options, PROGRAM, "--stall"]
        in_time(lambda: stall_until_killed(command, output))
    finally:
        systemd.kill()
        systemd.wait()


if __name__ == "__main__":
    main(globals()[EXPERIMENT])
