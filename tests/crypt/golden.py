#!/usr/bin/env python3
# `golden.py check` compares the files in golden/ with what docs/examples/cryptformat.py makes of their
# cases, and `golden.py write` writes them again.

import json
import sys
from pathlib import Path

FOLDER = Path(__file__).parent
sys.path.insert(0, str(FOLDER.parent.parent / "docs/examples"))
import cryptformat  # noqa: E402

for case in json.loads((FOLDER / "golden/cases.json").read_text()):
    path = FOLDER / "golden" / (case.pop("name") + ".crypt")
    text, key = case.pop("text").encode() * case.pop("times"), int(case.pop("key"), 16)
    data = cryptformat.encrypt(text, key, **case)
    if sys.argv[1] == "write":
        path.write_bytes(data)
    if path.read_bytes() != data or cryptformat.decrypt(data, key) != text:
        sys.exit(f"{path.name} is not what the format says")
