#!/usr/bin/env python3
"""manpagetest.py ZELCTL: holds the man pages against the help and against the linters of man(7)
that are installed."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from helptext import Help

zelctl = sys.argv[1]
helps = Help(zelctl)


def write_pages(folder, zone):
    environment = os.environ | {"SOURCE_DATE_EPOCH": "86399", "TZ": zone}
    subprocess.run([zelctl, "help", "--man", folder], env=environment, check=True)
    return {path.name: path.read_text() for path in pathlib.Path(folder).iterdir()}


def linted(*command):
    if shutil.which(command[0]) is None:
        return print(f"skipped: {command[0]} is not installed")
    is_viewer = command[0] == "man"  # it also shows the page
    run = subprocess.run(command, stdout=subprocess.DEVNULL if is_viewer else subprocess.PIPE,
                         stderr=subprocess.PIPE, text=True,
                         env=os.environ | {"LC_ALL": "C.UTF-8", "MANWIDTH": "80"})
    assert run.returncode == 0 and not run.stdout and not run.stderr, run


commands = helps.commands()
with tempfile.TemporaryDirectory() as first, tempfile.TemporaryDirectory() as second:
    pages = write_pages(first, "Pacific/Auckland")
    assert pages == write_pages(second, "America/New_York"), "the pages depend on the time zone"
    names = {f"zelctl-{command.replace(' ', '-')}.1": command for command in commands}
    assert set(pages) == set(names) | {"zelctl.1"}
    for name, page in pages.items():
        assert "1970-01-01" in page.splitlines()[1], f"{name} has another date"
        linted("mandoc", "-Tlint", f"{first}/{name}")
        linted("man", "--warnings", "-l", f"{first}/{name}")
    for name, command in names.items():
        shown = pages[name].replace("\\-", "-").replace("\\fR", "")
        rows = [*helps.options(command), *helps.rows("Exit status", *command.split())]
        missing = [row for row in rows if f"\\fB{row}\n" not in shown
                   and f"\\fB{row} \\f" not in shown]
        assert not missing, f"{name} lacks {missing}"
full = subprocess.run([zelctl, "help", "--man", "/nowhere"], stderr=subprocess.PIPE, text=True)
assert full.returncode == 1 and "cannot open /nowhere: " in full.stderr, full
