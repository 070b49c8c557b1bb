"""lint.py QMLLINT IMPORT_PATH: runs the linter of Qt 6 on all files of the QML modules below the path.

Every warning is a failure, but for two that Qt 5 leaves no way to avoid: a delegate that names an id of
its own file (only Qt 6.5 can bind it to the file), and an id inside a control's content, which only
makes the content be created at once.
"""
import json
import pathlib
import re
import subprocess
import sys

linter, path = sys.argv[1:]
files = sorted(str(file) for file in pathlib.Path(path).rglob("*.qml") if file.exists())
report = subprocess.run([linter, "-I", path, "--deferred-property-id", "disable", "--json", "-", *files],
                        stdout=subprocess.PIPE, check=False).stdout
faults = 0
linted = json.loads(report)["files"]
for file in linted:
    text = pathlib.Path(file["filename"]).read_text(encoding="utf-8")
    ids = re.findall(r"\bid: (\w+)", text)
    for warning in file["warnings"]:
        start = warning.get("charOffset", 0)
        named = text[start : start + warning.get("length", 0)]
        if warning["message"] == "Unqualified access" and named in ids:
            continue
        faults += 1
        print(f'{file["filename"]}:{warning.get("line")}: {warning["message"]}: {named}')
print(f"{len(linted)} files, {faults} warnings")
sys.exit(faults > 0 or len(linted) != len(files) or not files)
