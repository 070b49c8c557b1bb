#!/usr/bin/env python3
"""Checks the links of the documents without the network; exit status 1 if one leads nowhere.

    links.py               the Markdown pages of the checkout
    links.py --html DIR    the pages that Doxygen made

A page's relative links, anchors, pictures and paths in code spans must exist. Each page must be
reachable from docs/index.md, and each other file of docs/ must be used by a page or by the build.
"""

import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote

from pages import slug

ROOT = Path(__file__).resolve().parents[2]
INDEX = ROOT / "docs/index.md"
LINK = re.compile(r"\]\(<?([^)\s>]+)>?(?: \"[^\"]*\")?\)|^\[[^\]]+\]: (\S+)|(?:src|href)=\"([^\"]+)\"")
SNIPPET = re.compile(r"<!-- snippet: (\S+)")
PATH = re.compile(r"(?:apps|benchmarks|cmake|docs|fuzz|packaging|qml|src|tests|tools)/[\w./-]*\w/?")
CODE = re.compile(r"(`+)(.+?)\1")
ELSEWHERE = re.compile(r"[a-z]+:|//")


def prose(path):
    """Yields (line number, line) outside of blocks of code."""
    fence = None
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n"), 1):
        mark = re.match(r"\s*(```+|~~~+)", line)
        if mark and (fence is None or mark[1].startswith(fence)):
            fence = mark[1] if fence is None else None
        elif fence is None and not line.startswith("    "):
            yield number, line


def anchors(path):
    found = {}
    for _, line in prose(path):
        if heading := re.match(r"#{1,6} (.*)", line):
            name = slug(heading[1])
            found[name] = found.get(name, -1) + 1
        for anchor in re.findall(r"<a (?:id|name)=\"([^\"]+)\"", line):
            found[anchor] = 0
    return {name if not number else f"{name}-{number}"
            for name, most in found.items() for number in range(most + 1)}


def targets(path):
    """Yields (line number, target) of the links of a page and of the paths that it names."""
    for number, line in prose(path):
        for name in SNIPPET.findall(line):
            yield number, "/" + name
        for _, span in CODE.findall(line):
            if PATH.fullmatch(span):
                yield number, "/" + span
        for groups in LINK.findall(CODE.sub("", line)):
            target = next(filter(None, groups))
            if not ELSEWHERE.match(target):
                yield number, target


def check_page(path):
    """The files that a page leads to, and the faults of its links."""
    files, faults = set(), []
    for number, target in targets(path):
        name, _, anchor = unquote(target).partition("#")
        place = ROOT / name[1:] if name.startswith("/") else path.parent / name if name else path
        file = place.resolve()
        where = f"{path.relative_to(ROOT)}:{number}: {target}"
        if not file.exists():
            faults.append(f"{where}: there is no such file")
        elif anchor and (file.suffix != ".md" or anchor not in anchors(file)):
            faults.append(f"{where}: there is no such heading")
        else:
            files.add(file)
    return files, faults


def checkout():
    """The files of the checkout, without those of builds."""
    return sorted(file for top in ROOT.iterdir() if top.name != "build" and top.name[0] != "."
                  for file in (top.rglob("*") if top.is_dir() else [top])
                  if file.is_file() and file.parent.name != "__pycache__")


def is_used(file, build):
    """Whether a build file names the file; that of its own folder may leave out the suffix."""
    own = build.get(file.parent, "")
    return any(file.name in text for text in build.values()) or re.search(rf"\b{file.stem}\b", own)


def markdown_faults():
    files = checkout()
    links, faults = {}, []
    for page in files:
        if page.suffix == ".md":
            links[page], found = check_page(page)
            faults += found
    reached, waiting = set(), [INDEX]
    while waiting:
        page = waiting.pop()
        if page not in reached:
            reached.add(page)
            waiting += links.get(page, ())
    faults += [f"{page.relative_to(ROOT)}: no page leads here from docs/index.md"
               for page in sorted(set(links) - reached)]
    build = {file.parent if file.name == "CMakeLists.txt" else file: file.read_text(encoding="utf-8")
             for file in files if file.name in ("dev", "CMakeLists.txt", "Doxyfile")}
    faults += [f"{file.relative_to(ROOT)}: nothing uses this file" for file in files
               if ROOT / "docs" in file.parents and file.suffix != ".md"
               and not reached & {file, *file.parents} and not is_used(file, build)]
    return faults, len(links)


class Page(HTMLParser):
    """The links and the anchors of a page of HTML, and markup that Doxygen has not understood."""

    def __init__(self, path):
        super().__init__()
        self.anchors, self.links, self.leftovers, self.code = set(), [], [], None
        self.feed(path.read_text(encoding="utf-8"))

    def handle_endtag(self, tag):
        if tag == self.code:
            self.code = None

    def handle_data(self, data):
        if self.code is None:
            self.leftovers += re.findall(r"\S*(?:\]\(|(?<!\w)%[A-Z]|```)\S*", data)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        is_code = tag in ("code", "pre", "script", "style") or values.get("class") == "line"
        if self.code is None and is_code:
            self.code = tag
        self.anchors |= {values[key] for key in ("id", "name") if values.get(key)}
        for key in ("href", "src", "data"):
            link = values.get(key)
            if link and not ELSEWHERE.match(link) and link != "#":
                self.links.append(unquote(link))


def html_faults(folder):
    pages = {path.name: Page(path) for path in sorted(folder.glob("*.html"))}
    faults = []
    for name, page in pages.items():
        faults += [f"{name}: {text} is markup that was not understood" for text in page.leftovers]
        for link in page.links:
            file, _, anchor = link.partition("#")
            target = pages.get(file or name)
            if not (folder / (file or name)).exists() or (
                    anchor and target and anchor not in target.anchors):
                faults.append(f"{name}: {link} leads nowhere")
    tree = (folder / "navtreedata.js").read_text(encoding="utf-8")
    faults += [f"The tree of pages: {link} leads nowhere"
               for link in re.findall(r'"(\w+\.html)(?:#\w*)?"', tree) if link not in pages]
    return faults, len(pages)


found, count = html_faults(Path(sys.argv[2])) if "--html" in sys.argv[1:2] else markdown_faults()
print("\n".join(found) or f"All links of {count} pages lead somewhere.")
sys.exit(1 if found or not count else 0)
