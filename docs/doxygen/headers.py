#!/usr/bin/env python3
"""Prints a header as Doxygen reads it: with the comments that the conventions of the headers imply.

A setter, an overload or a property has the comment of the function that it belongs to. Functions that Qt
or C++ defines, such as overridden functions of Qt and copying, get a few words here instead of in each
header, and Doxygen does not see deleted ones. All other public declarations need a comment of their own,
or Doxygen fails. Everything is added to the line of the declaration, so that warnings name the right line.
"""
import re
import sys

OF_QT = set("""canFetchMore childEvent close columnCount componentComplete connectNotify customEvent data
    disconnectNotify event eventFilter eventTest fetchMore flags geometryChange geometryChanged
    headerData index itemChange mapFromSource onEntry onExit onTransition open paint parent readData
    releaseResources roleNames rowCount run setData sort timerEvent updatePaintNode writeData what
    """.split())
DECLARATION = re.compile(r"[\w:<>,&*\s~]*?(~?\w+|operator\W{1,2})\(")


def joined(comment):
    """The lines of a comment in one line, with its paragraphs."""
    text = " ".join(line.strip()[3:].strip() or "<br>" for line in comment)
    return text.replace("*/", "").strip()


def property_of(getter):
    """The name of the property that a getter reads: isPaused() reads "paused"."""
    match = re.match(r"(is|has|are)([A-Z].*)", getter)
    return (match.group(2) if match else getter).lower()


def belongs(name, documented):
    setter = re.match(r"set([A-Z].*)", name)
    return name == documented or (
        setter is not None and setter.group(1).lower() == property_of(documented))


def implied(name, declaration, classes, structs, notifiers):
    """The comment of a declaration that needs none in the header, or None."""
    if name in notifiers:
        *others, last = [f"`{shared}`" for shared in notifiers[name]]
        return "Emitted when " + (f"one of the properties {', '.join(others)} and {last} changes."
                                  if others else f"the property {last} changes.")
    if name.startswith("~"):
        return "The destructor."
    if name in classes and re.search(r"\(QObject\* parent( = nullptr)?\)", declaration):
        return "The parent owns the object, as with every QObject."
    if re.search(rf"\b(operator=|{'|'.join(classes) or 'operator='})\((const )?\w+&&?( other)?\)",
                 declaration) and "operator" not in name.replace("operator=", ""):
        return "Copies or moves the value."
    if name == "operator==" and re.search(rf"\((const )?({'|'.join(structs) or name})&", declaration):
        return "Whether all members are equal."
    if re.match(r"operator(==|!=|<|>|<=|>=)$", name):
        return "Compares the values, in the way that the comment of the class describes."
    if " override" in declaration and name in OF_QT:
        return "Implements the virtual function of Qt."
    return None


def declarations(lines):
    """Yields (line number, comment above, name, whole text) of what looks like a function."""
    comment = []
    for number, line in enumerate(lines):
        text = line.strip()
        if text.startswith("///") and not text.startswith("///<"):
            comment.append(text)
            continue
        found = DECLARATION.match(text)
        if found and not text.startswith(("Q_", "return", "if", "QML_", "#", "//", ":")) or (
                text.startswith("Q_INVOKABLE") and (found := DECLARATION.match(text))):
            whole = " ".join(part.strip() for part in lines[number:number + 4])
            yield number, comment, found.group(1), re.split(r"[;{]", whole)[0]
        comment = []


def read_properties(lines):
    """The properties by the number of their line: (name, getter, notifier, own comment)."""
    found, comment = {}, []
    for number, line in enumerate(lines):
        text = line.strip()
        if text.startswith("Q_PROPERTY("):
            whole = " ".join(lines[number:number + 3]).split(")")[0]
            parts = {key: re.search(rf"{key} (\w+)", whole) for key in ("READ", "NOTIFY")}
            name = re.search(r"(\w+) (?:READ|MEMBER|CONSTANT)", whole).group(1)
            found[number] = (name, *(part and part.group(1) for part in parts.values()),
                             joined(comment))
        comment = [*comment, text] if text.startswith("///") else []
    return found


def main(path):
    with open(path, encoding="utf-8") as file:
        lines = file.read().split("\n")
    classes = re.findall(r"^\s*(?:class|struct)\s+(?:ZELTOOLS\w*\s+)?(\w+)\b[^;]*$", "\n".join(lines),
                         re.MULTILINE)
    structs = re.findall(r"^\s*struct (?:ZELTOOLS\w* )?(\w+)", "\n".join(lines), re.MULTILINE)
    properties = read_properties(lines)
    notifiers = {}
    for name, _, notifier, _ in properties.values():
        notifiers.setdefault(notifier, []).append(name)
    comments = {getter: comment for _, getter, _, comment in properties.values() if getter and comment}
    added = {}
    documented, last = None, -2
    for number, comment, name, declaration in declarations(lines):
        if declaration.endswith("= delete"):
            lines[number] = ""
        elif comment:
            documented, last = name, number
            comments.setdefault(name, joined(comment))
        elif documented and belongs(name, documented) and all(
                lines[between].strip() for between in range(last, number)):
            added[number], last = comments[documented], number
        elif name in comments and name in {getter for _, getter, _, _ in properties.values()}:
            added[number], documented, last = comments[name], name, number
        elif text := implied(name, declaration, classes, structs, notifiers):
            added[number] = text
    for number, (_, getter, _, comment) in properties.items():
        if getter in comments and not comment:
            added[number] = comments[getter]
    # Doxygen counts the parentheses in the texts of nested macros, some of which lack one.
    lines = [re.sub(r'QT_TRANSLATE_NOOP\("Switches", (".*")\)\)$', r"\1)", line) for line in lines]
    lines[0] = f"/** @file */ {lines[0]}"  # without it, Doxygen leaves out all that is in no class
    for number, line in enumerate(lines):
        if line.startswith("#define ZELTOOLS_SWITCH("):
            lines[number] = f"/** Expands to something for each switch in a table of the library. */ {line}"
    for number, text in added.items():
        lines[number] = f"/** {text} */ {lines[number]}"
    text = re.sub(r"(?<=\s)docs/([\w-]+)\.md", r"[docs/\1.md](@ref \1)", "\n".join(lines))
    print(text, end="")


main(sys.argv[1])
