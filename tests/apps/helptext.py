"""Reads the help of zelctl, which is the yardstick for its completions and man pages."""
import functools
import re
import subprocess


class Help:
    def __init__(self, zelctl):
        self.zelctl = zelctl

    @functools.cache
    def text(self, *words):
        return subprocess.check_output([self.zelctl, *words, "--help"], text=True)

    def rows(self, title, *words):
        """The names and texts of a section, with the lines of a text joined."""
        section = re.search(rf"^{title}:\n(.*?)(\n\n|\Z)", self.text(*words), re.S | re.M)
        rows = re.split(r"\n?^  (?! )", section[1] if section else "", flags=re.M)[1:]
        return dict(re.split(r"\s{2,}", row, maxsplit=1) for row in rows)

    def commands(self):
        return list(self.rows("Commands"))

    def options(self, command):
        """The options, each with the words that its value may have."""
        values = self.rows("Values", *command.split())
        options = {}
        for name in self.rows("Options", *command.split()):
            option, _, value = name.removeprefix("-h, ").partition(" ")
            words = value.split("|") if "|" in value else re.findall(
                r"[^\s,]+", values.get(value, "").rstrip(".").partition(": ")[2])
            options[option] = words
        return options
