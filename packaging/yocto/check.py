#!/usr/bin/env python3
"""Checks the recipe of this layer as far as that is possible without bitbake.

    check.py BUILD

BUILD is a build of the library with all its parts. The checks: the checksum of the licence is right,
CMake knows each option that the recipe gives it, with every PACKAGECONFIG on and off, each installed
file falls into a package, and each pattern of the recipe has a file.
"""

from __future__ import annotations

import fnmatch
import hashlib
import os
import pathlib
import re
import subprocess
import sys
import tempfile

LAYER = pathlib.Path(__file__).resolve().parent / "meta-zeltools"
CHECKOUT = LAYER.parents[2]
# The values that bitbake.conf gives these variables. A package takes the files that its patterns
# name unless one before it in the list has taken them.
DEFAULTS = {
    "PN": "zeltools",
    "bindir": "/usr/bin",
    "datadir": "/usr/share",
    "includedir": "/usr/include",
    "SOLIBS": ".so.*",
    "baselib": "lib",
    "STAGING_DATADIR": "/usr/share",
    "FILES:zeltools-dbg": "",
    "FILES:zeltools-dev": "${includedir} ${libdir}/lib*.so ${libdir}/pkgconfig ${libdir}/cmake",
    "FILES:zeltools-doc": "${datadir}/doc ${datadir}/man",
    "FILES:zeltools": "${bindir}/* ${libdir}/lib*${SOLIBS} ${datadir}/zeltools",
}


def assignments(recipe: pathlib.Path) -> dict[str, str]:
    """The variables of the recipe; the value of PACKAGECONFIG[x] stands under that name."""
    values = dict(DEFAULTS)
    text = recipe.read_text().replace("\\\n", " ")
    for name, operator, value in re.findall(r'^([\w:${}\[\]-]+) *(\?{0,2}=|\+=) *"(.*)"$', text, re.M):
        name = name.replace("${PN}", "zeltools")
        values[name] = f"{values[name]} {value}" if operator == "+=" else value
    return values


def expanded(value: str, values: dict[str, str]) -> str:
    """Variables are replaced by their values; of Python in ${@...}, only the branch for Qt 5 counts."""
    value = re.sub(r"\$\{@'[^']*' if [^}]* else '([^']*)'\}", r"\1", value)
    while match := re.search(r"\$\{(\w+)\}", value):
        value = value[: match.start()] + values[match[1]] + value[match.end() :]
    return value


def licence_faults(values: dict[str, str]) -> list[str]:
    file, checksum = re.match(r"file://(.*);md5=(\w+)", values["LIC_FILES_CHKSUM"]).groups()
    found = hashlib.md5((CHECKOUT / file).read_bytes()).hexdigest()
    return [] if found == checksum else [f"the checksum of {file} is {found}, not {checksum}"]


def option_faults(values: dict[str, str], choice: int) -> list[str]:
    """Configures with each PACKAGECONFIG on (choice 0) or off (choice 1)."""
    options = values["EXTRA_OECMAKE"].split()
    for name, value in values.items():
        if name.startswith("PACKAGECONFIG["):
            options += value.split(",")[choice].split()
    with tempfile.TemporaryDirectory() as build:
        options = [expanded(option, values) for option in options]
        run = subprocess.run(
            ["cmake", "-S", CHECKOUT, "-B", build, "-G", "Ninja", *options], capture_output=True, text=True
        )
    if run.returncode != 0:
        return [run.stderr]
    return re.findall(r"Manually-specified variables were not used by the project:\s+(.*)", run.stderr, re.S)


def matches(file: str, pattern: str) -> bool:
    return fnmatch.fnmatchcase(file, pattern) or file.startswith(pattern.rstrip("/") + "/")


def file_faults(values: dict[str, str], files: list[str]) -> list[str]:
    before = values["PACKAGE_BEFORE_PN"].replace("${PN}", "zeltools").split()
    packages = ["zeltools-dbg", "zeltools-dev", "zeltools-doc", *before, "zeltools"]
    faults, used = [], set()
    for file in files:
        taken = [
            (package, pattern)
            for package in packages
            for pattern in expanded(values["FILES:" + package], values).split()
            if matches(file, pattern)
        ]
        if taken:
            used.add(taken[0])
        else:
            faults.append(f"no package takes {file}")
    for package in packages:
        if package not in {taken for taken, _ in used}:
            faults.append(f"{package} is empty")
    for name in before:
        for pattern in expanded(values["FILES:" + name], values).split():
            if (name, pattern) not in used:
                faults.append(f"{name} has no file for {pattern}")
    return faults


def installed(build: str) -> list[str]:
    manifest, saved = (pathlib.Path(build, f"install_manifest.txt{end}") for end in ("", ".saved"))
    with tempfile.TemporaryDirectory() as root:
        environment = {**os.environ, "DESTDIR": root}
        if manifest.exists():
            manifest.rename(saved)
        subprocess.run(
            ["cmake", "--install", build, "--prefix", "/usr"], env=environment, check=True, capture_output=True
        )
        manifest.unlink()  # It names the files of the system itself, which uninstall must not remove.
        if saved.exists():
            saved.rename(manifest)
        return ["/" + str(file.relative_to(root)) for file in pathlib.Path(root).rglob("*") if not file.is_dir()]


def main(build: str) -> int:
    (recipe,) = LAYER.glob("recipes-*/*/*.bb")
    values = assignments(recipe)
    cache = dict(re.findall(r"^(\w+):\w+=(.*)$", pathlib.Path(build, "CMakeCache.txt").read_text(), re.M))
    values["libdir"] = "/usr/" + cache["CMAKE_INSTALL_LIBDIR"]
    values["ZELTOOLS_QML_DIR"] = "/usr/" + cache["ZELTOOLS_INSTALL_QML_DIR"]
    values["ZELTOOLS_ICON_FONT"] = cache["ZELTOOLS_ICON_FONT"]
    faults = licence_faults(values) + file_faults(values, installed(build))
    faults += option_faults(values, 0) + option_faults(values, 1)
    if recipe.stem != "zeltools_" + cache["CMAKE_PROJECT_VERSION"]:
        faults.append(f"{recipe.name} is not for version {cache['CMAKE_PROJECT_VERSION']}")
    for fault in faults:
        print(f"{recipe.name}: {fault}", file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
