#!/usr/bin/env python3
# Crash reports: crashfaults.py EXPERIMENT CRASHER [--short] [--sanitized]. Each crash leaves exactly
# one complete report of what has happened, and the process ends as it does without reports.

import collections
import os
import re
import signal
import subprocess
import time

from experiment import EXPERIMENT, OPTIONS, PROGRAM, main, require

SHORT, SANITIZED = "--short" in OPTIONS, "--sanitized" in OPTIONS
SEGV, ABRT = signal.SIGSEGV, signal.SIGABRT
Kind = collections.namedtuple("Kind", "signal function reason", defaults=(None, ""))
KINDS = {
    "null_read": Kind(SEGV), "null_call": Kind(SEGV), "stack_overflow": Kind(SEGV),
    "overflow_in_thread": Kind(SEGV, "stack_overflow"),
    "heap_corruption": Kind(ABRT, reason="free(): invalid"),
    "in_signal": Kind(SEGV, "null_read"),
    "static_destructor": Kind(SEGV, "in_destructor"), "held_lock": Kind(SEGV),
    "eight_threads": Kind(SEGV, "null_read"),
    "out_of_memory": Kind(ABRT, reason="std::bad_alloc: std::bad_alloc"),
    "exception": Kind(ABRT, reason="std::runtime_error: no milk"),
    "qfatal": Kind(ABRT, reason="no water"),
    "assertion": Kind(None, reason="RELEASE ASSERT failure: Failed creating simulation interface"),
    "division": Kind(signal.SIGFPE), "cut_file": Kind(signal.SIGBUS), "wild_read": Kind(SEGV),
    "without_descriptors": Kind(SEGV, "null_read"), "at_exit": Kind(SEGV, "null_read"),
}
if SANITIZED:  # The sanitizers find this one themselves, and need more than the limit for memory.
    del KINDS["heap_corruption"], KINDS["out_of_memory"]
with open(PROGRAM, "rb") as program:
    # That sanitizer may hold a lock of its own when the stack ends, and runs the handlers of the
    # application with all signals blocked.
    if b"__tsan_init" in program.read():
        del KINDS["stack_overflow"], KINDS["overflow_in_thread"], KINDS["in_signal"]
        del KINDS["without_descriptors"]  # It ends the process itself then.
COLLECTED = re.compile(r"\| Critical \| The program crashed at \S+ \S+ \((.*)\); report: (.*)")


# The first address and the end of each function "crash_...".
def functions():
    lines = subprocess.run(["nm", "--print-size", PROGRAM], capture_output=True, text=True,
                           check=True).stdout.splitlines()
    words = [line.split() for line in lines if " crash_" in line]
    return {name[6:]: (int(begin, 16), int(begin, 16) + int(size, 16))
            for begin, size, _, name in words}


class Report:
    def __init__(self, path):
        text = path.read_bytes().decode()
        require(text.startswith("ZelTools crash report 1\n[process]\n"), f"begins {text[:100]}")
        require(text.endswith("\n[end]\n"), f"incomplete, ends {text[-300:]}")
        self.sections = {}
        for part in re.split(r"(?m)^\[", text)[1:]:
            heading, _, body = part.partition("]\n")
            require(heading not in self.sections, f"two sections {heading}")
            self.sections[heading] = body.splitlines()

    def value(self, section, key):
        found = [line for line in self.sections[section] if line.startswith(key + " ")]
        return found[0][len(key) + 1:] if found else ""

    # The calls as addresses in the file of the program.
    def calls(self):
        heading = next(name for name in self.sections if name.endswith(" crashed"))
        require(heading.startswith(f"stack {self.value('crash', 'thread')} "), heading)
        modules = [line.split(" ", 3) for line in self.sections["modules"]]
        base, end = next((int(base, 16), int(end, 16)) for base, end, _, path in modules
                         if path == os.path.realpath(PROGRAM))
        calls = [int(line, 16) for line in self.sections[heading]]
        return [call - base for call in calls if base <= call < end], heading


def start(folder, kind, *options):
    began = time.monotonic()
    run = subprocess.run([PROGRAM, folder, kind, *options], stdin=subprocess.DEVNULL, timeout=60,
                         capture_output=True, text=True, errors="replace")
    duration = time.monotonic() - began
    require(duration < (60 if SANITIZED else 10), f"{kind} took {duration:.1f} s")
    return run.returncode, run.stderr, duration


def require_report(report, kind, bounds):
    number = KINDS[kind].signal
    expected = f"{int(number)} {number.name}" if number else ""
    require(report.value("crash", "signal") == expected, report.sections["crash"])
    reason = report.value("crash", "reason")
    require(reason.startswith(KINDS[kind].reason), f"reason {reason}")
    hasNoAddress = number in (ABRT, None) or kind == "wild_read"
    require((report.value("crash", "address") == "") == hasNoAddress, "the address")
    log = report.sections["log"]
    last = [line for line in log if "Last words" in line]
    require(len(log) == 200 and last, f"{len(log)} lines, the last one is {log[-1:]}")
    begin, end = bounds[KINDS[kind].function or kind]
    calls, heading = report.calls()
    require(any(begin <= call <= end for call in calls), f"{kind} is not in {calls}")
    stacks = {name: lines for name, lines in report.sections.items() if name.startswith("stack ")}
    for thread in ("Grinder", "Pump"):
        lines = next(lines for name, lines in stacks.items() if name.endswith(thread))
        require(SANITIZED or len(lines) > 1, f"{thread}: {lines}")  # It may have just begun.
    require(number is None or len(report.sections["registers"]) > 10, "no registers")
    program = next(line for line in report.sections["modules"] if PROGRAM in line)
    require(re.search(r" [0-9a-f]{40} ", program), f"no build id: {program}")
    require(report.sections["section tank"] == ["water 17"], "the section of the application")
    require(report.value("process", "application") == "4.2.1", "version")


def crash_kinds(root):
    bounds, folder = functions(), root / "machine"
    crashes, times = folder / "crashes", []
    plain = {kind: start(root / "plain", kind, "plain")[0] for kind in KINDS}
    before = None
    for turn in range((2 if SHORT else 32) * len(KINDS)):
        kind = list(KINDS)[turn % len(KINDS)]
        status, printed, duration = start(folder, kind)
        times.append(duration)
        require(status == plain[kind], f"{kind}: status {status}, without reports {plain[kind]}")
        reports = list(crashes.glob("*.open"))
        require(len(reports) == 1, f"{kind}: reports {reports}")
        require_report(Report(reports[0]), kind, bounds)
        require(printed.count("Fatal signal: SIGFPE") == (kind == "division"), "other handlers")
        told = COLLECTED.findall(printed)
        require([words for words, _ in told] == [before] * (before is not None),
                f"{told} instead of {before}")
        report = Report(reports[0])
        number, reason = report.value("crash", "signal"), report.value("crash", "reason")
        before = ", ".join(["signal " + number] * bool(number) + [reason] * bool(reason))
    start(folder, "nothing")
    require(not list(crashes.glob("*.open")), "a good end leaves a report")
    require(len(list(crashes.glob("*.report"))) == 10, "the limit of reports")
    events = (folder / "share/zel/logs/events/zel_events.log").read_text()
    require(events.count("| WarningEvent| Crash (") == len(times), "an event for each crash")
    longest = max(range(len(times)), key=times.__getitem__)
    print(f"{len(times)} crashes, the longest run took {times[longest]:.2f} s: "
          f"{list(KINDS)[longest % len(KINDS)]}")


# A section of the application crashes or hangs, and the rest of the report stays; or handlers are
# installed a second time.
def crash_cut(root):
    ends = {"second_fault": (SEGV, 0), "second_read": (SEGV, 0), "too_long": (signal.SIGALRM, 5),
            "wrapped": (SEGV, 0), "in_child": (ABRT, 0), "mute_threads": (ABRT, 2)}
    for kind, (number, least) in ends.items():
        status, _, duration = start(root / kind, kind)
        require(status == -number and duration >= least, f"{kind}: {status} after {duration} s")
        report = next((root / kind / "crashes").glob("*.open")).read_text()
        require("Last words" in report and " crashed]\n0x" in report, f"{kind}: {report}")
        isWhole = kind in ("wrapped", "in_child", "mute_threads")
        require(("[end]" in report) == isWhole, f"{kind}: the end")
        require((" other threads" in report) == (kind == "mute_threads"), "missing stacks")
        require("SIGTRAP" not in report, "a report of an ignored signal")
        require(COLLECTED.findall(start(root / kind, "nothing")[1]), f"{kind}: not collected")


# A killed run leaves no report, and the next start says so.
def crash_killed(root):
    require(start(root, "killed")[0] == -signal.SIGKILL, "the status of a killed run")
    _, printed, _ = start(root, "nothing")
    require(printed.count("without a crash report: it was killed") == 1, printed[-2000:])
    if "in_signal" in KINDS:
        require(start(root, "exit_in_handler")[0] == signal.SIGUSR1, "exit() in a handler")
    require(not list((root / "crashes").iterdir()), "a killed run leaves a file")


main(globals()[EXPERIMENT])
