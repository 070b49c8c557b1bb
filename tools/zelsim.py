#!/usr/bin/env python3
"""Simulators for machines: serves scripts, records the traffic of a link, replays recordings.

    zelsim.py serve SCRIPT [ADDRESS] [--once]
    zelsim.py record ADDRESS FILE [--machine ADDRESS]
    zelsim.py replay FILE ADDRESS [--as simulator|machine] [--in-time] [--timeout TIME]

This is the command line of `zelctl sim` without --json. In a Python test, a simulator runs in a
thread of its own inside of a `with` block:

    with zelsim.Simulator(zelsim.Script.load("grinder.zelsim")) as simulator:
        start_machine(simulator.address)            # "tcpserver/127.0.0.1/40123"
        simulator.wait_for(b"status?", timeout=5)

An address is the one of this end of the link, TYPE/IP/PORT or TYPE/PATH: a simulator at
tcpserver/127.0.0.1/0 listens on a free port, for a machine at tcpclient/127.0.0.1/PORT.
docs/format-simulator.md describes scripts and recordings, docs/format-simulation.md the links.
"""

from __future__ import annotations

import argparse
import asyncio
import errno
import heapq
import itertools
import logging
import os
import re
import signal
import socket
import stat
import struct
import sys
import threading
import time
import unicodedata
import weakref
from collections import deque
from concurrent.futures import Future, ThreadPoolExecutor
from contextlib import suppress
from dataclasses import dataclass, field
from fractions import Fraction
from functools import partial
from types import SimpleNamespace
from typing import Any, Callable, Iterator, NoReturn, Union

LONGEST_TEXT = 65535
LARGEST_SCRIPT_B = 16 << 20
LARGEST_RECORDING_B = 256 << 20
MOST_ROWS = 4_000_000
MOST_KEPT_B = 16 << 20
LONGEST_LINE = 300_000
MOST_WAITING = 10_000
READ_SIZE = 65536
RETRY_S = 0.2
CHECK_S = 1  # of data that is not acknowledged: five checks without an answer end a connection
KEEP_ALIVE = {socket.TCP_KEEPIDLE: 3, socket.TCP_KEEPINTVL: 2, socket.TCP_KEEPCNT: 3}
DAY_MS = 86_400_000
START_OF_FRAME = b"Q"
LOCAL = "tcpserver/127.0.0.1/0"

_log = logging.getLogger("zelsim")
PathLike = Union[str, "os.PathLike[str]"]


def frame(message: bytes) -> bytes:
    """Returns the frame in which a link carries the message."""
    if len(message) > LONGEST_TEXT:
        raise ValueError(f"the message is longer than {LONGEST_TEXT} bytes")
    return START_OF_FRAME + struct.pack(">H", len(message)) + message


# --- The words of a line ---------------------------------------------------------------------

class UsageError(ValueError, argparse.ArgumentTypeError):
    """A text that is neither an address nor a time."""


class FormatError(ValueError):
    """A script or a recording cannot be read: the line and the column, both from 1, and why."""

    def __init__(self, line: int, column: int, reason: str) -> None:
        super().__init__(f"line {line}, column {column}: {reason}")
        self.line, self.column, self.reason = line, column, reason


_BLANKS = re.compile(rb"[ \t]*")
_BARE = re.compile(rb"[!$-\[\]-~]*")
_QUOTED = re.compile(rb'(?:[^"\\]|\\["\\nrt]|\\x[0-9A-Fa-f]{2})*')
_ESCAPE = re.compile(rb"\\(?:x(..)|(.))", re.DOTALL)
_CONTROLS = {b"n": b"\n", b"r": b"\r", b"t": b"\t"}
_TIME = re.compile(r"([0-9]{1,9}(?:\.[0-9]{1,9})?)(ms|s|min)")
_UNIT_MS = {"ms": 1, "s": 1000, "min": 60_000}


def _unescape(match: re.Match[bytes]) -> bytes:
    digits, letter = match.groups()
    return bytes.fromhex(digits.decode()) if digits else _CONTROLS.get(letter, letter)


def quoted(data: bytes) -> str:
    """Returns the bytes as a word in quotes. Printable UTF-8 stays, other bytes are escaped."""
    def word(character: str) -> str:
        if character not in '"\\' and unicodedata.category(character) not in ("Cc", "Cs"):
            return character
        return "".join(f"\\x{byte:02x}" for byte in character.encode("utf-8", "surrogateescape"))
    return '"' + "".join(map(word, data.decode("utf-8", "surrogateescape"))) + '"'


def shortly_quoted(data: bytes) -> str:
    return quoted(data[:60]) + ("..." if len(data) > 60 else "")


def parse_time_ms(word: str) -> int:
    """Returns the milliseconds of a time such as 200ms, 1.5s or 2min, of at most one day."""
    match = _TIME.fullmatch(word)
    if match:
        milliseconds = int(Fraction(match[1]) * _UNIT_MS[match[2]] + Fraction(1, 2))
        if milliseconds <= DAY_MS:
            return milliseconds
    raise UsageError(f"{word!r} is not a time of at most one day, such as 200ms")


class _Line:
    """The words of a line, from the left to the right: `str` if bare, and `bytes` if quoted."""

    def __init__(self, number: int, line: bytes) -> None:
        self.number = number
        self._words: list[tuple[str | bytes | None, int]] = []
        self._next = 0
        at = 0
        while True:
            start = at = _BLANKS.match(line, at).end()
            if line[at:at + 1] in (b"", b"#"):
                break
            if line[at:at + 1] == b'"':
                at = self._end_of_quoted(line, at)
                word = _ESCAPE.sub(_unescape, line[start + 1:at - 1])
            else:
                at = _BARE.match(line, at).end()
                word = line[start:at].decode("ascii")
            if line[at:at + 1] not in (b"", b" ", b"\t", b"#"):
                raise FormatError(number, at + 1, "unexpected character")
            self._words.append((word, start + 1))
        self._words.append((None, len(line) + 1))

    def _end_of_quoted(self, line: bytes, start: int) -> int:
        end = _QUOTED.match(line, start + 1).end()
        if line[end:end + 1] != b'"':
            raise FormatError(self.number, end + 1, "unknown escape" if end < len(line)
                              else "the closing quote is missing")
        return end + 1

    def __bool__(self) -> bool:
        return len(self._words) > 1

    @property
    def _word(self) -> str | bytes | None:
        return self._words[self._next][0]

    def fail(self, reason: str, back: int = 0) -> NoReturn:
        """Reports a problem with the next word, or with one that was taken."""
        raise FormatError(self.number, self._words[self._next - back][1], reason)

    def take(self, *keywords: str) -> str | None:
        """Takes the next word if it is one of these."""
        return self._taken() if self._word in keywords else None

    def bare(self, pattern: str, what: str) -> str:
        if not isinstance(self._word, str) or not re.fullmatch(pattern, self._word):
            self.fail(f"{what} is missing")
        return self._taken()

    def text(self) -> bytes:
        if not isinstance(self._word, bytes):
            self.fail("a text in quotes is missing")
        if len(self._word) > LONGEST_TEXT:
            self.fail(f"the text is longer than {LONGEST_TEXT} bytes")
        return self._taken()

    def _taken(self) -> Any:
        self._next += 1
        return self._words[self._next - 1][0]

    def count(self) -> int:
        number = int(self.bare("[0-9]{1,7}", "a number from 1 to 1000000"))
        if not 1 <= number <= 1_000_000:
            self.fail("it is not a number from 1 to 1000000", back=1)
        return number

    def time_ms(self, least: int = 0) -> int:
        try:
            milliseconds = parse_time_ms(self.bare(".*", "a time"))
        except UsageError as error:
            self.fail(str(error), back=1)
        if milliseconds < least:
            self.fail("the time is too short", back=1)
        return milliseconds

    def end(self) -> None:
        if self._word is not None:
            self.fail("unexpected word")


def _lines(data: bytes, kind: str, limit: int) -> Iterator[_Line]:
    """Yields the lines that have words, without the first line."""
    head = f'the first line must be "zelsim {kind} 1"'
    if not data or len(data) > limit:
        raise FormatError(1, 1, f"the {kind} is larger than {limit >> 20} MiB" if data else head)
    begin, number = 0, 0
    while begin < len(data):
        end, number = data.find(b"\n", begin), number + 1
        size = (end if end >= 0 else len(data)) - begin
        if size > LONGEST_LINE:
            raise FormatError(number, size + 1, f"the line is longer than {LONGEST_LINE} bytes")
        if end < 0:
            raise FormatError(number, size + 1, "the line feed at the end is missing")
        line, begin = _Line(number, data[begin:end]), end + 1
        if number == 1:
            if not (line.take("zelsim") and line.take(kind) and line.take("1")):
                line.fail(head)
            line.end()
        elif line:
            yield line


def _content(path: PathLike, limit: int) -> bytes:
    """Reads a file, of which the rest does not matter if it is larger than the limit."""
    descriptor = os.open(path, os.O_RDONLY | os.O_NONBLOCK | os.O_NOCTTY)  # A pipe would wait.
    with open(descriptor, "rb") as file:
        status = os.fstat(descriptor)
        if not stat.S_ISREG(status.st_mode):
            raise OSError(errno.EINVAL, "it is not a file", path)
        return file.read(min(status.st_size, limit) + 1)


def _encoded(data: bytes | str) -> bytes:
    return data.encode() if isinstance(data, str) else data


# --- Scripts -----------------------------------------------------------------------------------

@dataclass(frozen=True)
class ScriptRow:
    """A row of a script: the simulator waits for the trigger, and then acts."""

    trigger: str  #: connected, message, begins, any, every or also
    text: bytes = b""  #: of the message, or its beginning
    period_ms: int = 0  #: of `every`
    first: int | None = None  #: how many triggers it takes
    after_ms: int = 0
    repeat: int = 1
    each_ms: int = 0
    action: str = "silence"  #: answer, raw, half, silence or disconnect
    payload: bytes = b""

    @classmethod
    def _parse(cls, line: _Line, is_first_row: bool) -> ScriptRow:
        values: dict[str, Any] = {}
        trigger = line.take("connected", "when", "every", "also")
        if trigger == "when":
            trigger = line.take("any", "begins") or "message"
            values["text"] = b"" if trigger == "any" else line.text()
        elif trigger == "every":
            values["period_ms"] = line.time_ms(least=1)
        elif not trigger:
            line.fail("a row begins with connected, when, every or also")
        elif trigger == "also" and is_first_row:
            line.fail("there is no row before this one", back=1)
        allowed = ["after", "repeat"] if trigger == "also" else ["after", "repeat", "first"]
        while option := line.take(*allowed):
            allowed.remove(option)
            if option == "after":
                values["after_ms"] = line.time_ms()
            else:
                values[option] = line.count()
            if option == "repeat" and line.take("each"):
                values["each_ms"] = line.time_ms()
        action = line.take("answer", "raw", "half", "silence", "disconnect")
        if not action:
            line.fail("it is neither an action nor an option that may stand here")
        payload = b"" if action in ("silence", "disconnect") else line.text()
        line.end()
        return cls(trigger, action=action, payload=payload, **values)

    def takes(self, message: bytes) -> bool:
        """Whether this message triggers the row."""
        return (self.trigger == "any" or self.trigger == "message" and self.text == message
                or self.trigger == "begins" and message.startswith(self.text))


@dataclass
class Script:
    """The rows of a script, which say how a simulator behaves."""

    rows: list[ScriptRow] = field(default_factory=list)

    @classmethod
    def parse(cls, data: bytes | str) -> Script:
        """Reads the content of a file. Raises FormatError."""
        script = cls()
        for line in _lines(_encoded(data), "script", LARGEST_SCRIPT_B):
            if len(script.rows) == 10_000:
                line.fail("the script has more than 10000 rows")
            script.rows.append(ScriptRow._parse(line, not script.rows))
        return script

    @classmethod
    def load(cls, path: PathLike) -> Script:
        """Reads a file. Raises FormatError or OSError."""
        return cls.parse(_content(path, LARGEST_SCRIPT_B))


# --- Recordings --------------------------------------------------------------------------------

@dataclass(frozen=True)
class Row:
    """A row of a recording: what one side of the link did."""

    time_us: int  #: since the beginning of the recording
    side: str  #: machine or simulator
    event: str  #: connected, disconnected, message or raw
    text: bytes = b""  #: the message, or the raw bytes
    line: int = field(default=0, compare=False)  #: in the file that was read

    @classmethod
    def _parse(cls, line: _Line, before_us: int, is_connected: bool) -> Row:
        word = line.bare(r"[0-9]{1,12}(\.[0-9]{1,3})?", "a number of milliseconds")
        whole, _, decimals = word.partition(".")
        time_us = int(whole) * 1000 + int(decimals.ljust(3, "0"))
        if time_us < before_us:
            line.fail("the time is earlier than in the row before", back=1)
        side = line.take("machine", "simulator")
        event = line.take("connected", "disconnected", "message", "raw") if side else None
        if not side or not event:
            line.fail("unknown word")
        if is_connected == (event == "connected"):
            line.fail("the connection exists already" if is_connected
                      else "there is no connection", back=1)
        text = line.text() if event in ("message", "raw") else b""
        line.end()
        return cls(time_us, side, event, text, line.number)

    def words(self, quote: Callable[[bytes], str] = quoted) -> str:
        """Returns the row without its time."""
        text = f" {quote(self.text)}" if self.event in ("message", "raw") else ""
        return f"{self.side} {self.event}{text}"

    def to_bytes(self) -> bytes:
        """Returns the line of the file."""
        whole, rest = divmod(self.time_us, 1000)
        decimals = f".{rest:03}".rstrip("0") if rest else ""
        return f"{whole}{decimals} {self.words()}\n".encode()


@dataclass
class Recording:
    """The rows of a recording, in the order in which they happened."""

    rows: list[Row] = field(default_factory=list)
    end_line: int = 0  #: the line of `end` in the file that was read

    HEAD = b"zelsim recording 1\n"
    END = b"end\n"

    @classmethod
    def parse(cls, data: bytes | str) -> Recording:
        """Reads the content of a file. Raises FormatError."""
        data, recording = _encoded(data), cls()
        before_us, is_connected = 0, False
        for line in _lines(data, "recording", LARGEST_RECORDING_B):
            if recording.end_line:
                line.fail("there are rows behind the end")
            if line.take("end"):
                line.end()
                recording.end_line = line.number
                continue
            if len(recording.rows) == MOST_ROWS:
                line.fail(f"the recording has more than {MOST_ROWS} rows")
            row = Row._parse(line, before_us, is_connected)
            recording.rows.append(row)
            before_us, is_connected = row.time_us, row.event != "disconnected"
        if not recording.end_line:
            column = len(data) - data.rfind(b"\n", 0, -1) - 1
            raise FormatError(data.count(b"\n"), column, "the recording is cut: its end is missing")
        return recording

    @classmethod
    def load(cls, path: PathLike) -> Recording:
        """Reads a file. Raises FormatError or OSError."""
        return cls.parse(_content(path, LARGEST_RECORDING_B))

    def to_bytes(self) -> bytes:
        """Returns the content of a file from which parse() makes the same rows."""
        return self.HEAD + b"".join(row.to_bytes() for row in self.rows) + self.END

    def messages(self, side: str) -> list[bytes]:
        """Returns the messages of "machine" or of "simulator"."""
        return [row.text for row in self.rows if row.side == side and row.event == "message"]


class _RecordingFile:
    """Writes a recording row by row. A full disk ends the file, but not the program."""

    def __init__(self, path: PathLike) -> None:
        self._path = path
        # A pipe that nobody reads must not stop the forwarding.
        self._file = open(path, "wb", buffering=0, opener=lambda path, flags: os.open(
            path, flags | os.O_NONBLOCK, 0o666))
        self._start_ns = time.monotonic_ns()
        self._size_B = self._count = 0
        self.has_failed = False
        self._write(Recording.HEAD)

    def add(self, side: str, event: str, text: bytes = b"") -> None:
        time_us = (time.monotonic_ns() - self._start_ns) // 1000
        for begin in range(0, max(len(text), 1), LONGEST_TEXT):
            row = Row(time_us, side, event, text[begin:begin + LONGEST_TEXT]).to_bytes()
            self._count += 1
            is_full = self._size_B + len(row) + len(Recording.END) > LARGEST_RECORDING_B
            if not self.has_failed and (is_full or self._count > MOST_ROWS):
                self.close()
                self._fail(f"a recording has at most {MOST_ROWS} rows and "
                           f"{LARGEST_RECORDING_B >> 20} MiB")
            self._write(row)

    def close(self) -> None:
        """Ends the recording and forces it to the storage."""
        if self._file.closed:
            return
        self._write(Recording.END)
        for finish in (partial(os.fdatasync, self._file.fileno()), self._file.close):
            try:
                finish()
            except OSError as error:
                if error.errno not in (errno.EINVAL, errno.ENOTSUP):  # It is not a regular file.
                    self._fail(error.strerror)

    def _write(self, row: bytes) -> None:
        rest = row
        try:
            while rest and not self.has_failed:
                rest = rest[os.write(self._file.fileno(), rest):]
            self._size_B += len(row)
        except OSError as error:
            self._fail(error.strerror)
            with suppress(OSError):
                self._file.truncate(self._size_B)  # All rows of the file are whole.

    def _fail(self, reason: str) -> None:
        if not self.has_failed:
            _log.error("cannot write %s: %s", self._path, reason)
        self.has_failed = True


# --- Connections -------------------------------------------------------------------------------

@dataclass(frozen=True)
class Address:
    """The address of this end of a link. The types tcpserver and unixserver listen, tcpclient and
    unixclient connect."""

    type: str
    host: str = ""
    port: int = 0
    path: str = ""

    @classmethod
    def parse(cls, text: str) -> Address:
        """Raises UsageError. Only the low 16 bits of the port are used."""
        kind, _, rest = text.partition("/")
        kind = kind.lower()
        if kind in ("unixserver", "unixclient"):
            if rest.startswith("/") and len(os.fsencode(rest)) < 108 and "\0" not in rest:
                return cls(kind, path=rest)
        elif kind in ("tcpserver", "tcpclient"):
            match = re.fullmatch(r"([0-9A-Za-z.:%]+)/\s*([+-]?[0-9]{1,10})\s*", rest, re.ASCII)
            with suppress(OSError):
                if match and -2**31 <= int(match[2]) < 2**31:
                    socket.getaddrinfo(match[1], 0, flags=socket.AI_NUMERICHOST)
                    return cls(kind, match[1], int(match[2]) & 0xFFFF)
        raise UsageError(f"{text!r} is not an address, such as {LOCAL} or unixclient//run/zel/sim.sock")

    def __str__(self) -> str:
        return f"{self.type}/{self.path or f'{self.host}/{self.port}'}"

    @property
    def listens(self) -> bool:
        return self.type.endswith("server")


class _Connection:
    """A connection of an endpoint. Its errors count as its end."""

    def __init__(self, reader: asyncio.StreamReader, writer: asyncio.StreamWriter) -> None:
        self._reader, self._writer = reader, writer
        reader.set_exception = lambda _: reader.feed_eof()  # An error would hide bytes before it.
        self._socket, own, peer = map(writer.get_extra_info, ("socket", "sockname", "peername"))
        self.is_loop = own == peer
        self.abort, self.close = writer.transport.abort, writer.close
        if self._socket.family != socket.AF_UNIX:
            self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_KEEPALIVE, 1)
            for option, value in KEEP_ALIVE.items():
                self._socket.setsockopt(socket.IPPROTO_TCP, option, value)
            self._watch(0)

    def _watch(self, silent_checks: int) -> None:
        """Ends the connection to a machine that is lost. The kernel sends no probes while data is
        unacknowledged, and its own limit would also end the one to a machine that reads nothing."""
        if self._writer.is_closing():
            return
        info = self._socket.getsockopt(socket.IPPROTO_TCP, socket.TCP_INFO, 60)
        retransmits, probes, last_acknowledged_ms = struct.unpack("2x2B52xI", info)
        is_silent = retransmits + probes and last_acknowledged_ms >= CHECK_S * 1000
        if is_silent and silent_checks == 4:
            self.abort()
        asyncio.get_running_loop().call_later(CHECK_S, self._watch,
                                              silent_checks + 1 if is_silent else 0)

    async def read(self) -> bytes:
        """Returns no bytes at the end of the connection, however it has ended."""
        return await self._reader.read(READ_SIZE)

    def write(self, data: bytes) -> None:
        if not self._writer.is_closing():
            self._writer.write(data)

    async def drain(self) -> bool:
        """Waits until more can be written. Returns False if the connection is lost."""
        with suppress(OSError):
            await self._writer.drain()
            return True
        return False

    async def hang_up(self) -> None:
        """Closes the connection so that what was sent still arrives. Drops what still comes."""
        async def read_off() -> None:
            while await self.read():
                pass

        with suppress(OSError, asyncio.TimeoutError):
            self._writer.write_eof()
            await asyncio.wait_for(read_off(), 3)
        self.close()


class _Endpoint:
    """Opens one connection after another: listens from the beginning on, or connects."""

    def __init__(self, address: str | Address) -> None:
        self.address = Address.parse(address) if isinstance(address, str) else address
        self._listener: socket.socket | None = None
        self._server: asyncio.AbstractServer | None = None
        self._inode = 0
        self._arrived: list[_Connection] = []
        self._arrival: asyncio.Event | None = None
        self.connections: weakref.WeakSet[_Connection] = weakref.WeakSet()
        self._closing: asyncio.Task | None = None
        self.limit = 64 << 10  #: how many bytes of a connection may wait to be read
        if self.address.listens:
            try:
                self._bind()
            except OSError as error:
                self.close()
                raise OSError(f"cannot listen on {self.address}: {error.strerror}") from None

    def _bind(self) -> None:
        path, host = self.address.path, self.address.host
        family = socket.AF_UNIX if path else socket.AF_INET6 if ":" in host else socket.AF_INET
        self._listener = listener = socket.socket(family, socket.SOCK_STREAM,
                                                  0 if path else socket.IPPROTO_TCP)
        if path:
            self._remove_stale(path)
            os.fchmod(listener.fileno(), 0o600)  # bind() gives this mode to the file.
            listener.bind(path)
            self._inode = os.stat(path).st_ino
        else:
            listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
            listener.bind((host, self.address.port))
            self.address = Address(self.address.type, host, listener.getsockname()[1])
        listener.listen()

    @staticmethod
    def _remove_stale(path: str) -> None:
        """Removes the socket of a process that has ended. Another one does not see the probe, since
        a datagram socket cannot connect to a stream socket."""
        with suppress(FileNotFoundError), socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as probe:
            if (stat.S_ISSOCK(os.lstat(path).st_mode)
                    and probe.connect_ex(path) == errno.ECONNREFUSED):
                os.unlink(path)

    async def open(self, timeout: float | None = None) -> _Connection:
        """Returns the next connection. Raises asyncio.TimeoutError."""
        return await asyncio.wait_for(self._accept() if self._listener else self._retry(), timeout)

    async def dial(self) -> _Connection:
        """Tries to connect, when the connection before is closed. Raises OSError."""
        await self.closed()
        address, limit = self.address, self.limit
        connection = _Connection(
            *await (asyncio.open_unix_connection(address.path, limit=limit) if address.path
                    else asyncio.open_connection(address.host, address.port, limit=limit)))
        self.connections.add(connection)
        # The kernel connects a socket to itself if nobody listens on a port that it chose.
        if connection.is_loop:
            connection.close()
            raise ConnectionRefusedError(errno.ECONNREFUSED, os.strerror(errno.ECONNREFUSED))
        return connection

    async def _retry(self) -> _Connection:
        while True:
            with suppress(OSError):
                return await self.dial()
            await asyncio.sleep(RETRY_S)

    async def _accept(self) -> _Connection:
        if not self._server:
            start = asyncio.start_unix_server if self.address.path else asyncio.start_server
            self._arrival = asyncio.Event()
            self._server = await start(self._arrive, sock=self._listener, limit=self.limit)
        while not self._arrived:
            self._arrival.clear()
            await self._arrival.wait()
        return self._arrived.pop(0)

    def _arrive(self, *streams: Any) -> None:
        connection = _Connection(*streams)
        self.connections.add(connection)
        self._arrived.append(connection)
        self._arrival.set()
        # It may be seen before the end of the connection that it follows.
        pause = 0.1 if len(self._arrived) < 10 else 0
        asyncio.get_running_loop().call_later(pause, self._refuse, connection)

    def _refuse(self, connection: _Connection) -> None:
        """Closes a connection that nobody has taken, since there is one already."""
        if connection in self._arrived:
            self._arrived.remove(connection)
            connection.close()

    def hang_up(self, connection: _Connection) -> None:
        """Begins to close a connection."""
        self._closing = asyncio.ensure_future(connection.hang_up())

    async def closed(self) -> None:
        """Waits until the last connection is closed."""
        if self._closing:
            await self._closing

    def close(self) -> None:
        if self._listener:
            self._listener.close()
        with suppress(OSError):
            if self._inode and os.stat(self.address.path).st_ino == self._inode:
                os.unlink(self.address.path)


class _Frames:
    """Splits the stream of one connection into messages and raw bytes.

    Bytes that do not begin with a frame are raw, with all that came together with them. A machine
    reads a header only when four bytes have come.
    """

    def __init__(self, header_size: int = 3) -> None:
        self._header_size = header_size
        self.rest = b""

    def feed(self, chunk: bytes) -> Iterator[tuple[str, bytes]]:
        data, at = self.rest + chunk, 0
        self.rest = b""
        while len(data) - at >= self._header_size or self._header_size == 3 and at < len(data):
            if data[at:at + 1] != START_OF_FRAME:
                yield "raw", data[at:]
                return
            end = at + 3 + int.from_bytes(data[at + 1:at + 3], "big")
            if len(data) < max(end, at + 3):
                break
            yield "message", data[at + 3:end]
            at = end
        self.rest = data[at:]


class _Player:
    """Runs in the caller's thread by run(), or in a thread of its own inside of a `with` block.

    All listening addresses are bound when the constructor returns. An error in the thread is
    raised at the end of the block.
    """

    def __init__(self, *addresses: str | Address) -> None:
        self._endpoints: list[_Endpoint] = []
        self._ended: Future[None] | None = None
        self._loop: asyncio.AbstractEventLoop | None = None
        self._task: asyncio.Task | None = None
        self._is_stopping = False
        try:
            for address in addresses:
                self._endpoints.append(_Endpoint(address))
        except BaseException:
            self._close()
            raise

    @property
    def address(self) -> str:
        """The address with the port that was really bound."""
        return str(self._endpoints[0].address)

    @property
    def port(self) -> int:
        return self._endpoints[0].address.port

    @property
    def listens(self) -> bool:
        return self._endpoints[0].address.listens

    def run(self) -> None:
        """Returns when everything is done, or after stop()."""
        try:
            asyncio.run(self._main())
        except asyncio.CancelledError:
            pass
        finally:
            self._close()

    def stop(self) -> None:
        """Ends run() soon. Each thread and the handler of a signal may call it."""
        self._is_stopping = True
        self._call(self._cancel)

    def __enter__(self):
        executor = ThreadPoolExecutor(1, thread_name_prefix="zelsim")
        self._ended = executor.submit(self.run)
        executor.shutdown(wait=False)
        return self

    def __exit__(self, kind: object, *_: object) -> None:
        self.stop()
        error = self._ended.exception()
        if error and kind is None:
            raise error

    async def _main(self) -> None:
        self._loop, self._task = asyncio.get_running_loop(), asyncio.current_task()
        try:
            if not self._is_stopping:
                await self._play()
                for endpoint in self._endpoints:
                    await endpoint.closed()
        finally:
            for endpoint in self._endpoints:
                for connection in endpoint.connections:
                    connection.abort()
            await asyncio.sleep(0)

    async def _play(self) -> None:
        raise NotImplementedError

    def _cancel(self) -> None:
        # Before Python 3.12, wait_for() can lose a cancellation that comes together with a result.
        self._task.cancel()
        self._loop.call_later(0.1, self._cancel)

    def _call(self, function: Callable[[], object]) -> None:
        """Calls the function in the thread of run(), if that has begun and not ended."""
        with suppress(RuntimeError):
            if self._loop:
                self._loop.call_soon_threadsafe(function)

    def _close(self) -> None:
        for endpoint in self._endpoints:
            endpoint.close()


# --- Simulators --------------------------------------------------------------------------------

def _clock_ms() -> int:
    return time.monotonic_ns() // 1_000_000


class Link:
    """A simulator's connection to a machine. It belongs to the thread of the simulator."""

    def __init__(self, connection: _Connection) -> None:
        self._connection = connection
        self._waiting: list[tuple] = []  # a heap of time in ms, turn, number, action
        self._numbers = itertools.count(1)
        self._now_ms, self._turn = _clock_ms(), 0
        self._has_warned = False
        self.is_open = True

    def answer(self, message: bytes) -> None:
        """Sends a message."""
        self.raw(frame(message))

    def half(self, message: bytes) -> None:
        """Sends the first half of the frame of a message."""
        whole = frame(message)
        self.raw(whole[:len(whole) // 2])

    def raw(self, data: bytes) -> None:
        """Sends bytes without a frame."""
        self._connection.write(data)

    def disconnect(self) -> None:
        """Closes the connection. The machine may connect again."""
        self.is_open = False

    def later(self, seconds: float, action: Callable[[], None], *, again: bool = False) -> None:
        """Calls the action after this time, unless the connection ends before.

        Actions of the same millisecond are called in the order of these calls. `again` gives an
        action the place of the one that is being called.
        """
        if len(self._waiting) < MOST_WAITING:
            number = next(self._numbers)
            turn = self._turn if again else number
            due_ms = self._now_ms + round(seconds * 1000)
            heapq.heappush(self._waiting, (due_ms, turn, number, action))
        elif not self._has_warned:
            self._has_warned = True
            _log.warning("more than %d actions wait, further ones are dropped", MOST_WAITING)

    async def _act(self) -> float:
        """Calls the actions whose time has come. Returns the seconds until the next one."""
        for _ in range(100):  # The messages of a machine are read between the repetitions.
            if not self.is_open or not self._waiting or self._waiting[0][0] > _clock_ms():
                break
            self._now_ms, self._turn, _, action = heapq.heappop(self._waiting)
            action()
            await self._connection.drain()
        await self._connection.drain()
        return max(1, self._waiting[0][0] - _clock_ms()) / 1000 if self._waiting else 3600


class _ScriptPlayer:
    """The behaviour that a script describes."""

    def __init__(self, script: Script) -> None:
        self._rows = script.rows
        self._left = [row.first for row in script.rows]

    def connected(self, link: Link) -> None:
        for number, row in enumerate(self._rows):
            if row.trigger == "connected":
                self._trigger(link, number)
            elif row.trigger == "every":
                link.later(row.period_ms / 1000, partial(self._turn, link, number))

    def received(self, link: Link, message: bytes) -> None:
        for number, row in enumerate(self._rows):
            if row.takes(message) and self._trigger(link, number):
                return

    def _trigger(self, link: Link, number: int) -> bool:
        left = self._left[number]
        if left:
            self._left[number] = left - 1
        if left != 0:
            others = itertools.islice(self._rows, number + 1, None)
            also = itertools.takewhile(lambda row: row.trigger == "also", others)
            for row in itertools.chain([self._rows[number]], also):
                link.later(row.after_ms / 1000, partial(self._act, link, row, row.repeat))
        return left != 0

    def _act(self, link: Link, row: ScriptRow, times: int) -> None:
        if row.action == "disconnect":
            link.disconnect()
        elif row.action != "silence":
            getattr(link, row.action)(row.payload)
        if times > 1:
            link.later(row.each_ms / 1000, partial(self._act, link, row, times - 1), again=True)

    def _turn(self, link: Link, number: int) -> None:
        if self._trigger(link, number):
            period_ms = self._rows[number].period_ms
            missed = (_clock_ms() - link._now_ms) // period_ms
            link.later(period_ms * (missed + 1) / 1000, partial(self._turn, link, number))


class Simulator(_Player):
    """The simulator's end of a link. Its behaviour is a script, or a function for each message:

        def grind(link: zelsim.Link, message: bytes) -> None:
            link.later(0.2, lambda: link.answer(b"ground"))

        with zelsim.Simulator(grind) as simulator: ...

    One machine is connected at a time; further connections are closed.
    """

    def __init__(self, behaviour: Script | Callable[[Link, bytes], None],
                 address: str | Address = LOCAL, *,
                 connected: Callable[[Link], None] = lambda link: None,
                 once: bool = False) -> None:
        super().__init__(address)
        self._behaviour = (_ScriptPlayer(behaviour) if isinstance(behaviour, Script)
                           else SimpleNamespace(received=behaviour, connected=connected))
        self._once = once
        self._link: Link | None = None
        self._outgoing: deque[bytes] = deque()
        self._arrival = threading.Condition()
        #: The last 10,000 messages of the machine, or fewer if they are larger than 16 MiB.
        self.received: deque[bytes] = deque()
        self._received_B = 0

    def send(self, message: bytes) -> None:
        """Sends a message from any thread, when a machine is connected."""
        self._outgoing.append(frame(message))
        self._call(self._send_waiting)

    def wait_for(self, message: bytes, timeout: float = 10) -> None:
        """Waits in another thread until this message has come. Raises TimeoutError."""
        with self._arrival:
            if not self._arrival.wait_for(lambda: message in self.received, timeout):
                raise TimeoutError(f"{quoted(message)} has not come within {timeout:g} s")

    def _send_waiting(self) -> None:
        while self._link and self._outgoing:
            self._link.raw(self._outgoing.popleft())

    async def _play(self) -> None:
        while True:
            connection = await self._endpoints[0].open()
            self._link = Link(connection)
            await self._serve(self._link, connection)
            self._link = None
            self._endpoints[0].hang_up(connection)
            if self._once:
                return
            if not self._endpoints[0].address.listens:
                await asyncio.sleep(RETRY_S)

    async def _serve(self, link: Link, connection: _Connection) -> None:
        frames = _Frames(header_size=4)
        self._send_waiting()
        self._behaviour.connected(link)
        while True:
            pause = await link._act()
            if not link.is_open:
                return
            try:
                chunk = await asyncio.wait_for(connection.read(), pause)
            except asyncio.TimeoutError:
                continue
            if not chunk:
                return
            link._now_ms = _clock_ms()
            for event, text in frames.feed(chunk):
                if event == "message" and link.is_open:
                    self._receive(link, text)
                    await link._act()

    def _receive(self, link: Link, message: bytes) -> None:
        with self._arrival:
            self._received_B = self._received_B + len(message) if self.received else len(message)
            self.received.append(message)
            while len(self.received) > 10_000 or (self._received_B > MOST_KEPT_B
                                                  and len(self.received) > 1):
                self._received_B -= len(self.received.popleft())
            self._arrival.notify_all()
        self._behaviour.received(link, message)


# --- Recording and replaying -------------------------------------------------------------------

class LinkRecorder(_Player):
    """Stands between a machine and a simulator, forwards all bytes and records them in a file.

    Both addresses are those of the recorder's ends; `address` and `port` are the machine's. It
    connects to the simulator when a machine has connected. The file is complete when run() or the
    `with` block has ended.
    """

    def __init__(self, simulator: str | Address, path: PathLike,
                 machine: str | Address = LOCAL) -> None:
        super().__init__(machine, simulator)
        self.has_failed = False  #: Whether the file could not be written to its end.
        try:
            self._file = _RecordingFile(path)
        except OSError:
            self._close()
            raise

    def run(self) -> None:
        try:
            super().run()
        finally:
            self._file.close()
            self.has_failed = self._file.has_failed

    async def _play(self) -> None:
        # An end that listens comes first, so that the other one connects when it is needed.
        first, second = sorted(self._endpoints, key=lambda end: not end.address.listens)
        while True:
            pair = [await first.open()]
            try:
                pair.append(await (second.open() if second.address.listens else second.dial()))
            except OSError as error:
                _log.warning("cannot connect to %s: %s", second.address, error.strerror)
                pair[0].close()
            else:
                await self._forward(*(pair if first is self._endpoints[0] else reversed(pair)))
            if not first.address.listens:
                await asyncio.sleep(RETRY_S)

    async def _forward(self, *pair: _Connection) -> None:
        """Forwards until one side ends the connection, and then ends the other one's."""
        sides, frames = ("machine", "simulator"), (_Frames(), _Frames())
        self._file.add(sides[not self._endpoints[0].address.listens], "connected")
        ways = [asyncio.ensure_future(self._carry(sides[i], frames[i], pair[i], pair[1 - i]))
                for i in range(2)]
        try:
            await asyncio.wait(ways, return_when=asyncio.FIRST_COMPLETED)
        finally:
            ended = 0 if ways[0].done() else 1
            for way, side, rest in zip(ways, sides, frames):
                way.cancel()
                if rest.rest:
                    self._file.add(side, "raw", rest.rest)
        await asyncio.gather(*ways, return_exceptions=True)
        self._file.add(sides[ended], "disconnected")
        pair[ended].close()
        self._endpoints[1 - ended].hang_up(pair[1 - ended])

    async def _carry(self, side: str, frames: _Frames, source: _Connection,
                     target: _Connection) -> None:
        while chunk := await source.read():
            for event, text in frames.feed(chunk):
                self._file.add(side, event, text)
            target.write(chunk)
            await target.drain()  # The other way notices that this side has gone.


class Replayer(_Player):
    """Plays one side of a recording, and compares what the other side does.

        with zelsim.Replayer(zelsim.Recording.load("fault.zelsim")) as replayer:
            start_machine(replayer.address)
            assert replayer.wait() is None
    """

    def __init__(self, recording: Recording, address: str | Address = LOCAL, *,
                 side: str = "simulator", in_time: bool = False, timeout: float = 10) -> None:
        super().__init__(address)
        self._endpoints[0].limit = 64 << 20  # What comes early waits for its row.
        self._rows = recording.rows
        self._end_line = recording.end_line or len(recording.rows) + 2
        self._side = side
        self._in_time = in_time
        self._timeout = timeout
        self._connection: _Connection | None = None
        self._arrived = bytearray()
        #: The first difference, for example: row 7: expected machine message "a", but "b" came
        self.difference: str | None = "the replay was stopped"

    def wait(self) -> str | None:
        """Waits in a `with` block until all is played. Returns the first difference, or None."""
        self._ended.result()
        return self.difference

    async def _play(self) -> None:
        before_us = anchor_us = 0
        anchor = time.monotonic()  # of the last row of the other side
        for number, row in enumerate(self._rows):
            gap = (row.time_us - before_us) / 1e6
            before_us = row.time_us
            if row.side == self._side and row.event != "connected":
                pause = (max(0, anchor + (row.time_us - anchor_us) / 1e6 - time.monotonic())
                         if self._in_time else 0 if row.event != "disconnected" else min(gap, 0.1))
                came = await self._do(row, pause, gap + self._timeout)
            else:
                came = await self._came(row, gap + self._timeout)
                anchor, anchor_us = time.monotonic(), row.time_us
                came = None if came == (row.event, row.text) else came
            if came:
                expected = row.words(shortly_quoted)
                self.difference = self._told(row.line or number + 2, expected, came)
                return
        came = None
        if self._connection:
            came = await self._do(Row(0, self._side, "disconnected"), 0.1, 0)
        self.difference = None
        if came and came[0] != "disconnected":
            self.difference = self._told(self._end_line, "the end", came)

    def _told(self, line: int, expected: str, came: tuple[str, bytes]) -> str:
        event, text = came
        side = "machine" if self._side == "simulator" else "simulator"
        what = {"nothing": "nothing came", "disconnected": f"the {side} disconnected",
                "message": f"{shortly_quoted(text)} came",
                "raw": f"raw {shortly_quoted(text)} came"}[event]
        return f"row {line}: expected {expected}, but {what}"

    async def _do(self, row: Row, pause: float, timeout: float) -> tuple[str, bytes] | None:
        """Plays an own row. Returns None, or what the other side did instead."""
        if row.event == "disconnected":
            came = await self._came(row, max(pause, 0.01))
            if came[0] != "nothing":
                return came
            await self._connection.hang_up()
            self._connection = None
            return None
        await asyncio.sleep(pause)
        self._connection.write(frame(row.text) if row.event == "message" else row.text)
        try:
            is_open = await asyncio.wait_for(self._connection.drain(), timeout)
        except asyncio.TimeoutError:
            return "nothing", b""
        return None if is_open else ("disconnected", b"")

    async def _came(self, row: Row, timeout: float) -> tuple[str, bytes]:
        """Waits for the row. Returns what the other side did: an event and a text."""
        try:
            if row.event == "connected":
                self._connection = await self._endpoints[0].open(timeout)
                self._arrived.clear()
                return "connected", b""
            return await asyncio.wait_for(self._next(row), timeout)
        except asyncio.TimeoutError:
            return ("raw", bytes(self._arrived)) if self._arrived else ("nothing", b"")

    async def _next(self, row: Row) -> tuple[str, bytes]:
        while not (found := self._take(row)):
            chunk = await self._connection.read()
            if not chunk:
                self._connection.close()
                return ("raw", bytes(self._arrived)) if self._arrived else ("disconnected", b"")
            self._arrived += chunk
        return found

    def _take(self, row: Row) -> tuple[str, bytes] | None:
        """Takes from what has arrived a frame, or as many raw bytes as the row has."""
        data = self._arrived
        event, begin, end = "raw", 0, len(row.text)
        if row.event != "raw" and data[:1] == START_OF_FRAME:
            event, begin, end = "message", 3, 3 + int.from_bytes(data[1:3], "big")
        elif row.event != "raw":
            end = max(1, len(data))
        if len(data) < max(begin, end):
            return None
        text = bytes(data[begin:end])
        del data[:end]
        return event, text


# --- The command line --------------------------------------------------------------------------

class _Parser(argparse.ArgumentParser):
    def error(self, message: str) -> NoReturn:
        self.exit(2, f"zelsim: {message}\n")


def _parser() -> argparse.ArgumentParser:
    parser = _Parser(prog="zelsim.py", description=__doc__, allow_abbrev=False,
                     formatter_class=argparse.RawDescriptionHelpFormatter)
    commands = parser.add_subparsers(dest="command", required=True)
    address = {"metavar": "ADDRESS", "type": Address.parse}

    serve = commands.add_parser("serve", help="plays a simulator by a script")
    serve.add_argument("file", metavar="SCRIPT")
    serve.add_argument("address", nargs="?", default=LOCAL, **address)
    serve.add_argument("--once", action="store_true", help="ends after the first connection")
    serve.set_defaults(make=lambda its: Simulator(Script.load(its.file), its.address,
                                                  once=its.once))

    record = commands.add_parser("record", help="stands between machine and simulator")
    record.add_argument("address", help="the end for the simulator", **address)
    record.add_argument("file", metavar="FILE")
    record.add_argument("--machine", default=LOCAL, **address,
                        help="the end for the machine, tcpserver/127.0.0.1/0 unless given")
    record.set_defaults(make=lambda its: LinkRecorder(its.address, its.file, its.machine))

    replay = commands.add_parser("replay", help="plays one side of a recording")
    replay.add_argument("file", metavar="FILE")
    replay.add_argument("address", **address)
    replay.add_argument("--as", dest="side", choices=["simulator", "machine"], default="simulator")
    replay.add_argument("--in-time", action="store_true", help="waits as long as recorded")
    replay.add_argument("--timeout", metavar="TIME", type=parse_time_ms, default=10_000,
                        help="how late an expected row may come, 10s unless given")
    replay.set_defaults(make=lambda its: Replayer(
        Recording.load(its.file), its.address, side=its.side, in_time=its.in_time,
        timeout=its.timeout / 1000))
    return parser


def _play(arguments: argparse.Namespace) -> int:
    player = arguments.make(arguments)
    for number in (signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: player.stop())
    for endpoint in player._endpoints:
        if endpoint.address.listens:
            print("listening on", endpoint.address, flush=True)
        elif arguments.command != "record":
            print("connecting to", endpoint.address, flush=True)
    player.run()
    difference = getattr(player, "difference", None)
    if difference:
        _log.error("%s", difference)
    return int(bool(difference) or getattr(player, "has_failed", False))


def main(words: list[str] | None = None) -> int:
    """Runs a command. Returns the exit status: 0 done, 1 failed; wrong usage exits with 2."""
    logging.basicConfig(format="zelsim: %(message)s")
    arguments = _parser().parse_args(words)
    try:
        return _play(arguments)
    except FormatError as error:
        _log.error("%s: %s", arguments.file, error)
    except MemoryError:
        _log.error("the memory is used up")
    except OSError as error:
        place = f"{error.filename}: " if error.filename else ""
        _log.error("%s%s", place, error.strerror or error)
    return 1


if __name__ == "__main__":
    sys.exit(main())
