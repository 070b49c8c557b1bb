#!/usr/bin/env python3
"""run.py [--update] SESSION FOLDER...: runs the commands of a session and compares their output.

A session is what a terminal shows: lines that begin with "$ " are commands, and the lines behind a
command are what it prints. The commands find their programs in the folders, and run beside the
folders of the steps. Instead of /tmp/machine the commands get an empty folder, and free ports
instead of 8140 and 8141. A command that ends with "&" runs until the end; the lines behind it are
awaited. One that fails has a last line with the signal or the exit status. Lines that begin with
"#! " mark pieces for the documents.
--update writes what has been printed to the session.
"""

import contextlib
import os
import pathlib
import re
import signal
import socket
import subprocess
import sys
import tempfile

MACHINE = "/tmp/machine"
PORTS = ("8140", "8141")
# What differs from run to run: times, names of reports and numbers of processes.
VARYING = re.compile(r"\d\d/\d\d/\d{4} \d\d:\d\d:\d\d(:\d{3})?|crash-[\d-]+|process \d+")


def free_ports(count):
    """Different ports, since all are held until the last one is known."""
    with contextlib.ExitStack() as stack:
        servers = [stack.enter_context(socket.socket()) for _ in range(count)]
        for server in servers:
            server.bind(("127.0.0.1", 0))
        return [str(server.getsockname()[1]) for server in servers]


def commands(session):
    """Pairs of a command, or a mark, and the number of lines that it has printed."""
    found = []
    for line in session.splitlines():
        if line.startswith(("$ ", "#! ")):
            found.append([line, 0])
        else:
            found[-1][1] += 1
    return found


def play(session, replacements, environment):
    """Yields the lines of the session as they are now."""
    running = []
    try:
        for line, line_count in commands(session):
            yield line
            if line.startswith("#"):
                continue
            command = line[2:]
            for shown, real in replacements:
                command = command.replace(shown, real)
            is_background = command.endswith("&")
            process = subprocess.Popen(
                "exec env " + command.rstrip("& "), shell=True, env=environment, text=True,
                cwd=pathlib.Path(__file__).parent, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            running.append(process)
            lines = process.stdout
            if is_background:
                lines = (process.stdout.readline() for _ in range(line_count))
            for line in lines:
                for shown, real in replacements:
                    line = line.replace(real, shown)
                yield line.rstrip("\n")
            if not is_background and process.wait() != 0:
                status = process.returncode
                yield signal.strsignal(-status) if status < 0 else f"(exit status {status})"
    finally:
        for process in running:
            process.terminate()
            process.wait()
            process.stdout.close()


def main():
    arguments = sys.argv[1:]
    is_update = arguments[0] == "--update"
    session_file = pathlib.Path(arguments[is_update])
    session = session_file.read_text()
    folders = [os.path.abspath(folder) for folder in arguments[is_update + 1:]]
    environment = dict(os.environ, LC_ALL="C.UTF-8", TZ="UTC",
                       PATH=os.pathsep.join([*folders, os.environ["PATH"]]))
    with tempfile.TemporaryDirectory() as folder:
        environment["XDG_RUNTIME_DIR"] = folder
        replacements = [(MACHINE, folder), *zip(PORTS, free_ports(len(PORTS)))]
        played = "\n".join(play(session, replacements, environment)) + "\n"
    if is_update:
        session_file.write_text(played)
    elif VARYING.sub("*", played) != VARYING.sub("*", session):
        sys.exit(f"{session_file} has other lines than these:\n{played}")


main()
