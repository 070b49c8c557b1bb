#!/usr/bin/env python3
"""completiontest.py SHELL ZELCTL SCRIPT: lets a real shell complete command lines of zelctl by a
script, and compares with what the help lists. A stub in place of zelctl gets the completed words,
so that wrongly quoted ones are seen. Exits with 77 if the shell is not installed."""
import json
import os
import pathlib
import pty
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time

from helptext import Help

shell, zelctl, script = sys.argv[1:]
if shutil.which(shell) is None:
    print(f"skipped: {shell} is not installed")
    sys.exit(77)
helps = Help(zelctl)
work = pathlib.Path(tempfile.mkdtemp())

# Both begin an interactive shell whose key insert_all puts all completions into the line.
STARTS = {
    "bash": (["bash", "--norc", "--noprofile", "-i"], "\033*", ""),
    "zsh": (["zsh", "-f", "-i"], "\x18a",
            "autoload -Uz compinit; compinit -D -u; zle -C all complete-word _generic; "
            "bindkey '^Xa' all; zstyle ':completion:all:*' completer _all_matches _complete; "
            "zstyle ':completion:*' insert yes; setopt no_list_beep; "),
}


class LineShell:
    """bash or zsh on a terminal."""

    def __init__(self, loading):
        command, self.insert_all, setup = STARTS[shell]
        environment = {"PATH": os.environ["PATH"], "TERM": "dumb", "HOME": str(work), "PS1": "> ",
                       "XDG_DATA_HOME": str(work)}
        pid, self.terminal = pty.fork()
        if pid == 0:
            os.chdir(work / "folder")
            os.execvpe(command[0], command, environment)
        threading.Thread(target=self.drain, daemon=True).start()
        self.send(setup + f"{loading}; zelctl() {{ printf '%s\\0' \"$@\" > ../new; "
                  "mv ../new ../words; }; zelctl ready\n")
        assert self.words() == ["ready"]

    def drain(self):
        self.shown = b""
        try:
            while data := os.read(self.terminal, 4096):
                self.shown += data
        except OSError:
            pass

    def send(self, text):
        os.write(self.terminal, text.encode())

    def words(self):
        path = work / "words"
        end = time.monotonic() + 60
        while not path.exists():
            assert time.monotonic() < end, self.shown.decode(errors="replace")[-2000:]
            time.sleep(0.01)
        words = path.read_text().split("\0")[:-1]
        path.unlink()
        return words

    def complete(self, line):
        """The words that may stand at the end of the line, in place of its last one."""
        self.send(f"zelctl {line}{self.insert_all}\n")
        words = self.words()
        typed = re.split(r"(?<!\\) ", line)
        return set(words[len(typed) - 1:]) - {typed[-1]}


class Fish:
    def complete(self, line):
        run = subprocess.run(["fish", "--no-config", "-c", 'source $argv[1]; complete -C $argv[2]',
                              script, "zelctl " + line], stdout=subprocess.PIPE, text=True,
                             check=True, cwd=work / "folder", env=os.environ | {"HOME": str(work)})
        words = {row.split("\t")[0] for row in run.stdout.splitlines()}
        # fish shows names of files with the escapes that it will insert.
        return {re.sub(r"\\(.)", r"\1", word) for word in words}


folder = work / "folder"
(folder / "logs dir").mkdir(parents=True)
files = {"a b.env", "c$(touch hacked)'d;\"e", "-f"}
for name in files:
    (folder / name).touch()
completer = Fish() if shell == "fish" else LineShell(f"source '{script}'")


def check(line, expected):
    found = {word.rstrip("/") for word in completer.complete(line)}
    assert found == expected, f"{shell}: {line!r} gives {sorted(found)}, not {sorted(expected)}"


catalogue = json.loads(subprocess.check_output([zelctl, "env", "catalogue", "--json"]))
switches = {row["name"] for row in catalogue["switches"]}
commands = helps.commands()
check("", {name for name in commands if " " not in name})
for command in commands:
    check(f"{command} --", set(helps.options(command)))
    for option, words in helps.options(command).items():
        if words:
            check(f"{command} {option} ", set(words))
check("help ", set(commands))
check("completion ", {"bash", "zsh", "fish"})
check("env ", files | {"catalogue", "logs dir"})
check("env a\\ ", {"a b.env"})
check("env x ", {"list", "get", "set", "unset"})
for line in ["env --json x get ", "env x set --force "]:
    found = completer.complete(line)
    assert switches <= found, f"{line}: {switches - found}"
check("env x set LAB_TEST ", set())
check("env x list ", set())
check("log ", {"recover", "logs dir"})
check("log recover ", {"logs dir"})
check("log --from 1 x --level W", {"Warning"})
check("crash show --symbols x --json l", {"logs dir"})
check("crash --symbols ", {"logs dir"})
check("crypt --key-file a", {"a b.env"})
check("crypt encrypt - a", {"a b.env"})
check("log --level=Wa", {"--level=Warning"})
# Installed, a script is found by the name of the program when it is first needed.
folders = pathlib.Path(script).parent
loading = {"zsh": f"fpath=('{folders}' $fpath); compinit -D -u"}
bash_completion = pathlib.Path("/usr/share/bash-completion/bash_completion")
if bash_completion.exists():
    shutil.copytree(folders, work / "bash-completion/completions")
    loading["bash"] = f"source {bash_completion}"
if shell in loading:
    completer = LineShell(loading[shell])
    check("completion ", {"bash", "zsh", "fish"})
    check("log --level=Wa", {"--level=Warning"})
    check("env a\\ ", {"a b.env"})
assert not (folder / "hacked").exists()
shutil.rmtree(work)
