#!/usr/bin/env python3
"""A simulator's end of a link: simulator.py TYPE/IP/PORT [MESSAGE...]

TYPE is this end's: a machine that is configured with tcpserver/0.0.0.0/8133 is reached by

    simulator.py tcpclient/127.0.0.1/8133 "2024/03/01 08:30:00"

and one with tcpclient/127.0.0.1/8133 by the same with tcpserver. Waits for the machine, sends the
messages, then prints each message of the machine until the machine hangs up. Port 0 listens on a
free port; the first line says which.
"""

import sys
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "tools"))  # installed: share/zeltools
import zelsim  # noqa: E402


def send_messages(link: zelsim.Link) -> None:
    for text in sys.argv[2:]:
        link.answer(text.encode("latin-1"))


def print_message(link: zelsim.Link, message: bytes) -> None:
    print(message.decode("latin-1"), flush=True)


simulator = zelsim.Simulator(print_message, sys.argv[1], connected=send_messages, once=True)
if simulator.listens:
    print("listening on", simulator.port, flush=True)
simulator.run()
