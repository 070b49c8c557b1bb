#!/usr/bin/env python3
"""Takes the code of the documents from files that are built and run.

    snippets.py             compares the blocks with their files; exit status 1 if one differs
    snippets.py --update    writes the blocks anew

The line before a block names its file by the path from the root of the checkout, and may name a piece:

    <!-- snippet: docs/examples/values.cpp versions -->

A line with only `//! [versions]`, or `#! [versions]` in CMake, Python and shell, begins and ends the piece
in the file. A piece loses the indentation that all its lines have; several of one name are joined by an
empty line.

A block of code that is longer than two lines and names no file is a fault. Text and settings need no file. A block
of them counts as code if a line ends like one of C++ or QML, and an indented block also if a line is a command.
"""

import re
import sys
import textwrap
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
REFERENCE = re.compile(r"<!-- snippet: (\S+)(?: (\S+))? -->")
FENCE = re.compile(r"( *)```(\w*)")
TEXTS = {"console", "ini", "json", "text"}
CODE = re.compile(r".*[;{]$")
COMMAND = re.compile(r" {4,}(?:\./dev|apt|cmake|g\+\+|journalctl|mkdir|pkg-config|sudo|zelctl) ")
MARK = re.compile(r"\s*(?://|#)! \[(\S+)\]")


def is_code(block: list[str], language: str | None) -> bool:
    """Whether the block, which is indented if it has no language, has to come from a file."""
    if language is None and any(map(COMMAND.match, block)):
        return True
    if language is not None and language not in TEXTS:
        return True
    return language != "json" and any(map(CODE.match, block))


def snippet(path: str, name: str | None) -> list[str]:
    """The lines of a file, or of its pieces with this name, without marks."""
    pieces: list[list[str]] = [] if name else [[]]
    is_inside = name is None
    for line in (ROOT / path).read_text().splitlines():
        mark = MARK.fullmatch(line)
        if mark and mark[1] == name:
            is_inside = not is_inside
            if is_inside:
                pieces.append([])
        elif is_inside and not mark:
            pieces[-1].append(line)
    if not pieces or (is_inside and name):
        raise ValueError(f"{path} has no complete piece [{name}]")
    texts = [textwrap.dedent("\n".join(piece)).strip("\n") for piece in pieces]
    return "\n\n".join(texts).split("\n")


def process(lines: list[str]) -> tuple[list[str], list[tuple[int, str]]]:
    """The lines of a document with the code of the files, and each fault with the number of its line."""
    result: list[str] = []
    faults: list[tuple[int, str]] = []
    position = 0
    while position < len(lines):
        fence = FENCE.fullmatch(lines[position])
        begin = position + 1 if fence else position
        is_end = FENCE.fullmatch if fence else lambda line: not line.startswith("    ")
        end = begin
        while end < len(lines) and not is_end(lines[end]):
            end += 1
        block = lines[begin:end]
        reference = REFERENCE.fullmatch(lines[position - 1]) if fence and position > 0 else None
        if reference:
            code = snippet(reference[1], reference[2])
            if code != block:
                faults.append((begin, f"differs from {reference[1]}: run docs/snippets.py --update"))
            block = code
        elif len(block) > 2 and is_code(block, fence[2] if fence else None):
            faults.append((begin, "this code is not taken from a file that is built and run"))
        result += lines[position:begin] + block + lines[end:end + 1]
        position = end + 1
    return result, faults


def documents() -> list[Path]:
    return [path for path in sorted(ROOT.rglob("*.md"))
            if not {"build", ".git"} & set(path.relative_to(ROOT).parts)]


def main() -> int:
    is_update = sys.argv[1:] == ["--update"]
    status = 0
    for path in documents():
        text = path.read_text()
        try:
            lines, faults = process(text.splitlines())
        except (OSError, ValueError) as error:
            sys.exit(f"{path.relative_to(ROOT)}: {error}")
        if is_update and lines != text.splitlines():
            path.write_text("\n".join(lines) + "\n")
            faults = process(lines)[1]
        for line, fault in faults:
            print(f"{path.relative_to(ROOT)}:{line}: {fault}", file=sys.stderr)
            status = 1
    return status


sys.exit(main())
