"""qmltypes.py QMLPLUGINDUMP IMPORT_PATH: compares what plugins.qmltypes says about the types of the
module ZelTools with what they are in the plugin: properties, signals and methods, with their types.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

MEMBER = re.compile(r"^ {8}(Property|Signal|Method) \{(?: ([^\n]*) \}|\n(.*?)^ {8}\})$", re.M | re.S)
DETAIL = re.compile(r'(?:name|type): "[^"]*"|isReadonly: true|isPointer: true|isList: true')


def types(text):
    """The members of each exported type of the description."""
    result = {}
    for component in text.split("\n    Component {\n")[1:]:
        exported = re.search(r'exports: \["([^"]+)"', component)
        if exported:
            members = {f"{kind} {DETAIL.findall(line or block)}" for kind, line, block in MEMBER.findall(component)}
            members.add(re.search("isCreatable: false|$", component).group())
            result[exported.group(1)] = members
    return result


dumper, path = sys.argv[1:]
with tempfile.NamedTemporaryFile("w", suffix=".json") as dependencies:
    dependencies.write("[]")  # The other modules below the path are none of this one's.
    dependencies.flush()
    dump = subprocess.run([dumper, "-noinstantiate", "-nonrelocatable", "-dependencies", dependencies.name,
                           "ZelTools", "1.0", path], stdout=subprocess.PIPE, check=True, text=True).stdout
built = types(dump)
described = types(pathlib.Path(path, "ZelTools/plugins.qmltypes").read_text(encoding="utf-8"))
faults = 0
for name in sorted(built.keys() | described.keys()):
    for member in sorted(built.get(name, set()) ^ described.get(name, set())):
        faults += 1
        print(f"{name}: {member} is only in {'the plugin' if member in built.get(name, ()) else 'plugins.qmltypes'}")
print(f"{len(built)} types, {faults} differences")
sys.exit(faults > 0 or "ZelTools/Library 1.0" not in built)
