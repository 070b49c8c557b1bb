#!/usr/bin/env python3
"""Prints the layout file of Doxygen: the tree of pages has the sections of docs/index.md."""

import re
from pathlib import Path
from xml.sax.saxutils import quoteattr

from pages import page_name

INDEX = Path(__file__).resolve().parents[1] / "index.md"
REFERENCE = (("classlist", "Classes"), ("hierarchy", "Inheritance"), ("classmembers", "Members"),
             ("namespacelist", "Namespaces"), ("namespacemembers", "Functions and others"))


def tab(kind, title, url="", inside=""):
    place = f" url={quoteattr(url)}" if url else ""
    return f'<tab type="{kind}" visible="yes" title={quoteattr(title)}{place}>{inside}</tab>\n'


def entries(text):
    """Yields (title, file) of the pages in a list: "- Coming from [A](a.md), [B](b.md)" has two."""
    for entry in re.split(r"^- ", text, flags=re.MULTILINE)[1:]:
        before, _, _ = entry.partition("[")
        pages = re.findall(r"\[([^\]]+)\]\(([^)#]+\.md)\)", entry)
        for title, file in pages if before else pages[:1]:
            yield before + title.replace("`", ""), file


def sections():
    """Yields the title of each section of the index and its entries."""
    parts = re.split(r"^\*\*(.+)\*\*$", INDEX.read_text(encoding="utf-8"), flags=re.MULTILINE)
    for title, text in zip(parts[1::2], parts[2::2]):
        yield title, entries(text)


print("<doxygenlayout version=\"1.0\"><navindex>")
print(tab("user", "All documents", "@ref documents"))
for section, pages in sections():
    print(tab("usergroup", section, "[none]",
              "".join(tab("user", title, f"@ref {page_name(INDEX.parent / file)}")
                      for title, file in pages)))
print(tab("usergroup", "Reference", "[none]", "".join(tab(*entry) for entry in REFERENCE)))
print("</navindex></doxygenlayout>")
