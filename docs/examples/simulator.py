#!/usr/bin/env python3
"""A simulator's end of a link: simulator.py TYPE/IP/PORT [MESSAGE...]

TYPE is this end's: a machine that is configured with tcpserver/0.0.0.0/8133 is reached by

    simulator.py tcpclient/127.0.0.1/8133 "2024/03/01 08:30:00"

and one with tcpclient/127.0.0.1/8133 by the same with tcpserver. Sends the messages, then prints
what the machine sends until it hangs up. Port 0 listens on a free port; the first line says which.
"""

import socket
import struct
import sys


def frame(payload):
    return struct.pack(">BH", 0x51, len(payload)) + payload


def messages(connection):
    received = b""
    while chunk := connection.recv(65536):
        received += chunk
        while len(received) >= 3:
            start, length = struct.unpack_from(">BH", received)
            if start != 0x51:
                sys.exit("not a frame")
            if len(received) < 3 + length:
                break
            yield received[3:3 + length]
            received = received[3 + length:]


kind, host, port = sys.argv[1].split("/")
if kind == "tcpserver":
    listener = socket.create_server((host, int(port)))
    print("listening on", listener.getsockname()[1], flush=True)
    link = listener.accept()[0]
else:
    link = socket.create_connection((host, int(port)))
link.sendall(b"".join(frame(text.encode("latin-1")) for text in sys.argv[2:]))
for message in messages(link):
    print(message.decode("latin-1"), flush=True)
