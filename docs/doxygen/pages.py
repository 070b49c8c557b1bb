#!/usr/bin/env python3
"""Prints a Markdown page as Doxygen reads it, so that it needs no markup of Doxygen.

Pages and headings get names that their links use. A link to a file that is not a page becomes the path of
the file in the checkout, since the HTML is read without one.
"""

import html
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LINK = re.compile(r"(?<!!)\[((?:`[^`]*`|[^\]])*)\]\((?![a-z]+:|#)([^)#\s]+)(?:#([^)\s]+))?\)")
OWN_HEADING = re.compile(r"\]\(#([^)\s]+)\)")
PARSED = {"cpp": ".cpp", "python": ".py", "py": ".py", "qml": ".js", "js": ".js", "json": ".js"}


def page_name(path):
    """The name of the page, which is that of the file of HTML, too."""
    parts = path.resolve().relative_to(ROOT).with_suffix("").parts
    if parts == ("README",):
        return "index"
    if parts[-1] == "index":
        return "documents" if len(parts) == 2 else parts[-2]
    return parts[-1].lower() if len(parts) < 3 else f"{parts[-2]}-{parts[-1].lower()}"


def slug(heading):
    """The anchor that a heading gets on the usual hosts of Markdown."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).replace("`", "").strip().lower()
    return re.sub(r"[^\w\- ]", "", text).replace(" ", "-")


def plain_classes():
    """The classes and namespaces whose names are English words, which are not links in sentences."""
    names = set()
    public = (path for path in (ROOT / "src").rglob("*.h") if not path.name.endswith("_p.h"))
    for header in public:
        names.update(re.findall(r"^ *(?:class|struct|namespace|enum class) (?:ZELTOOLS_EXPORT )?"
                                r"([A-Z][a-z]+)\b", header.read_text(encoding="utf-8"), re.MULTILINE))
    return re.compile(rf"(?<![\w:/.%-])(?=(?:{'|'.join(sorted(names))})(?![\w:/(]))")


def without_links(line, words):
    """The line with a "%" in front of the words, which Doxygen takes for: no link."""
    parts = re.split(r"(`[^`]*`|\"[^\"]*\"|!?\[[^\]]*\]\([^)]*\))", line)
    return "".join(words.sub("%", part) if not number % 2 else part
                   for number, part in enumerate(parts))


def link(page, match):
    text, name, anchor = match.groups()
    target = (page.parent / name).resolve()
    if target.suffix == ".md":
        name = page_name(target) + (f"-{anchor}" if anchor else "")
        return f"[{text}](@ref {name})"
    place = f"`{target.relative_to(ROOT)}`"
    return place if text.strip("`") in place else f"{text} ({place})"


def heading(page, line, words):
    marks, text = line.split(" ", 1)
    if marks == "#":
        line = without_links(line, words)
        label = page_name(page)
        return line if label == "index" else f"{line} {{#{label}}}\n\n[TOC]"
    return f"{line} {{#{page_name(page)}-{slug(text)}}}"


def with_bars(match):
    """A span of code in a table. In backticks Doxygen would show the backslash before a bar."""
    return f"<code>{html.escape(match[1], quote=False)}</code>"


def printed(page, lines):
    fence, words = False, plain_classes()
    for line in lines:
        mark = re.match(r"\s*```(\w*)", line)
        if mark:
            fence = not fence
            yield line[:mark.start(1)] + (f"{{{PARSED.get(mark[1], '.unparsed')}}}" if fence else "")
        elif fence or line.startswith("    "):
            yield line
        elif re.match(r"#{1,6} ", line):
            yield heading(page, line, words)
        else:
            line = re.sub(r"`([^`]*\\\|[^`]*)`", with_bars, line)
            line = OWN_HEADING.sub(rf"](@ref {page_name(page)}-\1)", line)
            yield without_links(LINK.sub(lambda match: link(page, match), line), words)


def main(path):
    page = Path(path).resolve()
    # A link whose text is broken over several lines is joined, so that it is found.
    text = re.sub(r"\[[^\[\]`]*\]\(", lambda match: re.sub(r"\s+", " ", match[0]),
                  page.read_text(encoding="utf-8"))
    print("\n".join(printed(page, text.split("\n"))), end="")


if __name__ == "__main__":
    main(sys.argv[1])
