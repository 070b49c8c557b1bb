#!/usr/bin/env python3
"""Compares the symbols that the libraries export with the list of them.

symbols.py [--update VERSION] LIST LIBRARY...

LIST has the form of deb-symbols(5) and tells from which version on each symbol exists; CMake writes
the version of the libraries into it for the package. A library belongs to the part whose name is the same before ".so".
With --update, LIST gets the symbols of the libraries, the new ones with VERSION.
"""

import pathlib
import re
import subprocess
import sys


def exported(library):
    output = subprocess.run(["nm", "-D", "--defined-only", library], check=True, text=True,
                            capture_output=True).stdout
    return {line.split()[-1] for line in output.splitlines()}


def read(text):
    """The parts of the list: the lines of the head, and the version of each symbol."""
    parts = {}
    for line in text.splitlines():
        if not line.startswith((" ", "*", "|")):
            head, versions = [], {}
            parts[line.split(".so", 1)[0]] = (head, versions)
        if line.startswith(" "):
            symbol, version = line.split()
            versions[symbol.removesuffix("@Base")] = version
        else:
            head.append(line)
    return parts


def written(parts):
    lines = []
    for head, versions in parts.values():
        lines += head
        lines += [f" {symbol}@Base {version}" for symbol, version in sorted(versions.items())]
    return "\n".join(lines) + "\n"


def names(symbols):
    """The names in C++, which the variants of a constructor share: compilers emit different ones."""
    text = subprocess.run(["c++filt"], input="\n".join(symbols), text=True, check=True,
                          capture_output=True).stdout
    return set(text.splitlines())


def tell(problem, difference):
    if difference:
        print(problem, *sorted(difference), sep="\n    ")
    return not difference


def main(arguments):
    version = None
    if arguments[0] == "--update":
        version = re.sub(r"^(\d+\.\d+)\.0$", r"\1", arguments[1])
        del arguments[:2]
    listed = pathlib.Path(arguments[0])
    parts = read(listed.read_text())
    is_same = True
    for library in arguments[1:]:
        name = pathlib.Path(library).name.split(".so", 1)[0]
        head, versions = parts[name]
        symbols = exported(library)
        parts[name] = (head, {symbol: versions.get(symbol, version) for symbol in symbols})
        old, new = names(versions), names(symbols)
        is_same &= tell(f"{name} no longer exports:", old - new)
        is_same &= tell(f"{name} exports what {listed.name} does not list:", new - old)
    if version:
        listed.write_text(written(parts))
    elif not is_same:
        print("Hosts that use a symbol which is gone no longer start. If the changes are meant,"
              " ./dev abi --update writes them to the list.")
    return 0 if is_same or version else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
