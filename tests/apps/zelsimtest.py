# zelsimtest.py ZELCTL MODULE PAGE: holds `zelctl sim` and the module zelsim.py against each other.

import ctypes
import itertools
import os
import re
import socket
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest
from concurrent.futures import ThreadPoolExecutor
from functools import partial
from pathlib import Path
from unittest import mock

ZELCTL, MODULE, PAGE = map(os.path.abspath, sys.argv[1:4])
sys.path.insert(0, os.path.dirname(MODULE))
import zelsim  # noqa: E402

PROGRAMS = {"zelctl": [ZELCTL, "sim"], "zelsim": [sys.executable, "-S", MODULE]}
NOWHERE = "tcpserver/192.0.2.1/0"  # an address at which no computer listens

SCRIPT = r"""zelsim script 1
connected answer "hello"
when "status?" answer "ready"
when begins "grind " first 1 after 20ms answer "jam"
when begins "grind " answer "gro\x00nd é" # twice
also after 30ms repeat 2 answer "cleaned"
when "junk" raw "\x00\x01"
when "break" half "brewed"
also after 20ms disconnect
when any silence
when "brew" answer "never"
"""

RECORDING = r"""zelsim recording 1
0 machine connected
0 simulator message "hello"
1 machine message "status?"
1 simulator message "ready"
1.5 machine message "grind 1"
21 simulator message "jam"
21 machine message "grind 2"
21 simulator message "gro\x00nd é"
51 simulator message "cleaned"
51.001 simulator message "cleaned"
52 machine message "brew"
250 machine message "junk"
250 simulator raw "\x00\x01"
251 machine message "break"
251 simulator raw "Q\x00\x06b"
351 simulator disconnected
353 machine connected
354 simulator message "hello"
355 machine message "grind 1"
355 simulator message "gro\x00nd é"
385 simulator message "cleaned"
385 simulator message "cleaned"
386 machine raw "\x00"
387 machine disconnected
""" + 50 * """388 machine connected
388 simulator message "hello"
388 machine disconnected
""" + "end\n"

# The lines behind the first one, and where the problem is.
SCRIPTS = [
    ("", None), ("# only a comment\n \t\n", None), ('when "" answer ""\n', None),
    ('\twhen any after 1.5s repeat 1000000 each 1440min first 7 silence # all\n', None),
    ('when begins "\\"\\\\\\n\\r\\t\\xfF\r\0\xff" half "é" #\0\n', None),
    ('every 0.5ms disconnect\n', None), ('every 86400.0004s silence\n', None),
    *[(f'every {time} silence\n', "line 2, column 7") for time in [
        "0.49999ms", "0ms", "86400.0005s", "1000000000ms", "1.s", "+5s", '"1s"']],
    ('also silence\n', "line 2, column 1"),
    ('when any first 0 silence\n', "line 2, column 16"), ('when any first\n', "line 2, column 15"),
    ('when any first 1000001 silence\n', "line 2, column 16"),
    ('when any first 1 first 1 silence\n', "line 2, column 18"),
    ('when any each 1s silence\n', "line 2, column 10"),
    ('when any silence\nalso first 1 silence\n', "line 3, column 6"),
    ('when any answer\n', "line 2, column 16"), ('when any answer hello\n', "line 2, column 17"),
    ('when any "answer" "x"\n', "line 2, column 10"), ('when brew silence\n', "line 2, column 6"),
    ('when any silence "x"\n', "line 2, column 18"), ('When any silence\n', "line 2, column 1"),
    ('when any silence\r\n', "line 2, column 17"), ('when any silence', "line 2, column 17"),
    ('when any answer "x\n', "line 2, column 19"), ('when any answer "\\q"\n', "line 2, column 18"),
    ('when any answer "\\x4"\n', "line 2, column 18"), ('when any answer "a""b"\n', "line 2, column 20"),
    ('connected first 1 answer "%s"\n' % ("x" * 65535), None),
    ('connected answer "%s"\n' % ("x" * 65536), "line 2, column 18"),
    ('#' * 300000 + '\n', None), ('#' * 300001 + '\n', "line 2, column 300002"),
    ('when any silence\n' * 10000, None), ('when any silence\n' * 10001, "line 10002, column 1"),
]
RECORDINGS = [
    ("end\n", None), ("0.001 machine connected\nend # of it\n\n", None), ("", "line 1, column"),
    ("999999999999.999 simulator connected\nend\n", None), ("end\nend\n", "line 3, column 1"),
    ("0 machine connected\n", "line 2, column"), ("0 machine connected\nend", "line 3, column 4"),
    ("1 machine connected\n0.999 machine disconnected\nend\n", "line 3, column 1"),
    ("0.0001 machine connected\nend\n", "line 2, column 1"), ("-1 machine\n", "line 2, column 1"),
    ("0 machine message \"x\"\nend\n", "line 2, column 11"),
    ("0 machine connected\n0 machine connected\nend\n", "line 3, column 11"),
    ("0 somebody connected\nend\n", "line 2, column 3"), ("0 machine\nend\n", "line 2, column 10"),
    ("0 machine connected\n0 machine raw x\nend\n", "line 3, column 15"),
    ("0 machine connected \"x\"\nend\n", "line 2, column 21"),
]
HEADS = [b"", b"zelsim script 2\n", b"\nzelsim script 1\n", b"zelsim recording 1\n",
         b"zelsim script 1 1\n", b"zelsim script 1", b"\"zelsim\" script 1\n"]

# The row of a difference, what a machine does in another way than recorded, and what came instead.
DIFFERENCES = [
    (12, '52 machine message "brew"', '52 machine raw "Q"\n52 simulator message "x"\nend\n',
     'raw "Q" came'),
    (25, '387 machine disconnected', '387 simulator message "x"\nend\n', 'nothing came'),
    (4, '1 machine message "status?"', '1 machine message "grind"', '"grind" came'),
    (4, '1 machine message "status?"', '1 machine message "%s"' % ("ü" * 40),
     '"%s"... came' % ("ü" * 30)),
    (12, '52 machine message "brew"', '52 machine raw "bre"\nend\n', 'raw "bre" came'),
    (12, '52 machine message "brew"', '52 machine disconnected\nend\n', 'the machine disconnected'),
    (25, '387 machine d', '386 machine message "more"\n387 machine d', '"more" came'),
    (17, '251 machine message "break"', r'251 machine raw "Q\x00\x05breakQ\x00\x01x"', '"x" came'),
]


def connect(player):
    return socket.create_connection(("127.0.0.1", player.port), 20)


def without_times(recording):
    return [(row.side, row.event, row.text) for row in recording.rows]


class Program:
    """A process of zelctl or zelsim.py, which must not outlive its block."""

    def __init__(self, name, *words):
        self._process = subprocess.Popen([*PROGRAMS[name], *map(str, words)], encoding="utf-8",
                                         stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.communicate()

    def peer_address(self):
        """The address at which the other side connects to this program."""
        line = self._process.stdout.readline()
        assert line.startswith("listening on "), line + self._process.stderr.read()
        return line.split()[-1].replace("server", "client")

    def end(self, is_stopped=False):
        """Returns the exit status and what was written without the name of the program."""
        if is_stopped:
            self._process.terminate()
        output, errors = self._process.communicate(timeout=30)
        return self._process.returncode, re.sub("^zel(ctl|sim): ", "", errors, flags=re.M)


class Comparison(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def file(self, name, content):
        path = self.folder / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def check_each(self, check, cases):
        """Checks a few cases at a time."""
        with ThreadPoolExecutor(8) as pool:
            for case, checked in [(case, pool.submit(check, *case)) for case in cases]:
                with self.subTest(case=str(case)[:200]):
                    checked.result()

    def problem(self, name, action, content):
        """The place of the problem that a program reports, or None for a good file."""
        with Program(name, action, self.file(f"{hash(content)}/file", content), NOWHERE) as program:
            status, errors = program.end()
        self.assertEqual((status, errors.count("\n")), (1, 1), errors)
        if errors.startswith("cannot listen on " + NOWHERE):
            return None
        return re.fullmatch(r".*/file: (line \d+, column \d+): .+\n", errors)[1]

    def test_refuse_the_same_files(self):
        files = [("serve", head, "line 1, column") for head in HEADS]
        for action, head, rows in (("serve", "zelsim script 1\n", SCRIPTS),
                                   ("replay", "zelsim recording 1 # head\n", RECORDINGS)):
            files += [(action, (head + row).encode("latin-1"), where) for row, where in rows]

        def check(action, content, where):
            told = None
            try:
                (zelsim.Script if action == "serve" else zelsim.Recording).parse(content)
            except zelsim.FormatError as error:
                told = f"line {error.line}, column {error.column}"
            self.assertEqual((told or "")[:len(where or "")], where or "")
            self.assertEqual(told is None, where is None)
            self.assertEqual(self.problem("zelctl", action, content), told)
        self.check_each(check, files)
        self.assertEqual(self.problem("zelsim", "serve", b"zelsim script 1\nx\n"), "line 2, column 1")

    def test_serve_record_and_replay_for_each_other(self):
        script = self.file("script", SCRIPT)
        golden = self.file("golden", RECORDING)

        def check(server, recorder, player):
            path = self.folder / f"{server}.{recorder}.{player}"
            with Program(server, "serve", script, f"unixserver/{path}.socket") as simulator, \
                    Program(recorder, "record", simulator.peer_address(), path) as link, \
                    Program(player, "replay", golden, link.peer_address(), "--as", "machine",
                            "--timeout", "20s") as machine:
                self.assertEqual(machine.end(), (0, ""))
                self.assertEqual(link.end(is_stopped=True), (0, ""))
                self.assertEqual(simulator.end(is_stopped=True), (0, ""))
                self.assertEqual(without_times(zelsim.Recording.load(path)),
                                 without_times(zelsim.Recording.parse(RECORDING)))
        self.check_each(check, itertools.product(PROGRAMS, repeat=3))

    def test_tell_the_same_difference(self):
        golden = self.file("golden", RECORDING)

        def check(change, name):
            number, row, other, came = change
            rows = RECORDING.replace(row, other).split("\nend\n")[0]
            recording = zelsim.Recording.parse(rows + "\nend\n")
            timeout = "2s" if 'message "x"' in other else "20s"
            expected = RECORDING.split("\n")[number - 1].split(" ", 1)[1]
            with Program(name, "replay", golden, zelsim.LOCAL, "--timeout", timeout) as program, \
                    zelsim.Replayer(recording, program.peer_address(), side="machine"):
                told = f"row {number}: expected {expected}, but {came}\n"
                self.assertEqual(program.end(), (1, told))
        self.check_each(check, itertools.product(DIFFERENCES, PROGRAMS))

    def test_serve_turns_of_all_connections(self):
        script = self.file("script", 'zelsim script 1\nevery 200ms first 3 answer "tick"\n'
                           'also after 10ms answer "tock"\nwhen "end" answer "ended"\n')
        both = '0 simulator message "tick"\n0 simulator message "tock"\n'
        recording = zelsim.Recording.parse(
            "zelsim recording 1\n0 machine connected\n" + 2 * both + "0 machine disconnected\n"
            "0 machine connected\n" + both + '300 machine message "end"\n'
            '300 simulator message "ended"\n300 machine disconnected\nend\n')

        def check(name):
            with Program(name, "serve", script) as program, \
                    zelsim.Replayer(recording, program.peer_address(), side="machine",
                                    in_time=True) as machine:
                self.assertIsNone(machine.wait())
        self.check_each(check, zip(PROGRAMS))

    def test_replay_in_time(self):
        recording = self.file("recording", "zelsim recording 1\n0 machine connected\n"
                              '0 machine message "a"\n400 machine message "b"\n'
                              "1400 machine disconnected\nend\n")

        def check(late, end, name):
            times = []

            def behaviour(link, message):
                times.append(time.monotonic())
                if message == b"b":
                    link.later(0.01, partial(link.raw, late) if late else link.disconnect)
            with zelsim.Simulator(behaviour) as simulator, \
                    Program(name, "replay", recording, simulator.address.replace("server", "client"),
                            "--as", "machine", "--in-time") as program:
                told = f"row 5: expected machine disconnected, but {end}\n"
                self.assertEqual(program.end(), (1, told))
                self.assertGreater(times[1] - times[0], 0.35)
        ends = {None: "the simulator disconnected", b"Q\0\1y": '"y" came',
                b"Q\0\1": r'raw "Q\x00\x01" came'}
        self.check_each(check, [(*end, name) for end in ends.items() for name in PROGRAMS])

    def test_take_the_same_arguments(self):
        script, taken = self.file("script", SCRIPT), socket.create_server(("127.0.0.1", 0))
        busy = "tcpserver/127.0.0.1/%d" % taken.getsockname()[1]
        living = [socket.socket(socket.AF_UNIX, kind) for kind in (socket.SOCK_STREAM, socket.SOCK_DGRAM)]
        paths = [f"{self.folder}/{number}" for number in range(2)]
        os.mkfifo(self.folder / "pipe")
        for path, other in zip(paths, living):
            other.bind(path)
        living[0].listen()
        living[0].setblocking(False)

        def check(case, name):
            with Program(name, *case[0]) as program:
                ended, errors = program.end()
                self.assertEqual((ended, errors.count("\n")), (case[1], 1), errors)
        self.check_each(check, itertools.product([
            ([], 2), (["play"], 2), (["serve"], 2), (["serve", script, "tcp/127.0.0.1/1"], 2),
            (["serve", script, "tcpserver/localhost/1"], 2), (["serve", script, "--machine"], 2),
            (["serve", script, "unixserver/relative"], 2), (["replay", script], 2),
            (["replay", script, busy, "--as", "both"], 2), (["record", "a", "b", "c"], 2),
            (["replay", script, busy, "--timeout", "5"], 2), (["serve", script, busy], 1),
            (["serve", self.folder / "none", busy], 1), (["record", busy, script, "--once"], 2),
            *((["record", "tcpclient/127.0.0.1/1", self.folder / name], 1) for name in (
                "none/x", "pipe")), (["serve", "/dev/zero"], 1),
            *((["serve", script, f"unixserver/{path}"], 1) for path in paths)], PROGRAMS))
        self.assertRaises(BlockingIOError, living[0].accept)
        for other in (taken, *living):
            other.close()
        self.assertEqual(script.read_text(), SCRIPT)


class Module(unittest.TestCase):
    def test_runs_the_example_of_the_page(self):
        code = re.search(r"```python\n(.*?)```", Path(PAGE).read_text(), re.S)[1]
        with tempfile.TemporaryDirectory() as folder:
            environment = {**os.environ, "PYTHONPATH": os.path.dirname(MODULE)}
            subprocess.run([sys.executable, "-c", code], cwd=folder, env=environment, check=True)

    @mock.patch.object(zelsim, "MOST_KEPT_B", 5)
    def test_serves_one_machine_at_a_time(self):
        with zelsim.Simulator(lambda link, message: link.answer(message[::-1])) as simulator:
            simulator.send(b"first")
            with connect(simulator) as machine:
                self.assertEqual(machine.recv(100), zelsim.frame(b"first"))
                with connect(simulator) as other:
                    self.assertEqual(other.recv(1), b"")
                for message in (b"old", b"abc"):
                    machine.sendall(zelsim.frame(message))
                    self.assertEqual(machine.recv(100), zelsim.frame(message[::-1]))
                machine.sendall(b"junk" + zelsim.frame(b"lost"))
                machine.shutdown(socket.SHUT_WR)
                self.assertEqual(machine.recv(100), b"")
            self.assertEqual(list(simulator.received), [b"abc"])
            with self.assertRaises(TimeoutError):
                simulator.wait_for(b"lost", timeout=0.01)

    def test_raises_the_error_of_a_function(self):
        with self.assertRaises(ZeroDivisionError), \
                zelsim.Simulator(lambda link, message: 1 / 0) as simulator, \
                connect(simulator) as machine:
            machine.sendall(zelsim.frame(b"x"))
            self.assertEqual(machine.recv(1), b"")

    def test_tells_once_of_a_file_that_is_full(self):
        rows = [b'connected', b'message "status?"', b'message "x"', b'raw "Q"']
        for device, limit, written in (("/dev/full", 9, None), (None, 2, rows[:2]), (None, 9, rows)):
            with tempfile.NamedTemporaryFile() as file, \
                    mock.patch.object(zelsim, "MOST_ROWS", limit), \
                    mock.patch.object(zelsim._log, "error") as told, \
                    zelsim.Simulator(lambda link, _: link.answer(b"x")) as end:
                with zelsim.LinkRecorder(end.address.replace("server", "client"),
                                         device or file.name) as recorder, \
                        connect(recorder) as machine:
                    machine.sendall(zelsim.frame(b"status?") + b"Q")
                    self.assertEqual(machine.recv(100), zelsim.frame(b"x"))
                    recorder.stop()
                    self.assertEqual(machine.recv(1), b"")
                self.assertEqual((recorder.has_failed, told.call_count), (written != rows,) * 2)
                lines = [line.split(b" ", 2)[-1] for line in file.read().splitlines()[1:]]
                self.assertEqual(lines, written + [b"end"] if written else [])

    def test_replays_for_partners_that_read_nothing_or_reset(self):
        connected = zelsim.Row(0, "machine", "connected")
        recording = zelsim.Recording([connected] + 300 * [
            zelsim.Row(0, "simulator", "message", bytes(65000))])
        with zelsim.Replayer(recording, timeout=0.3) as replayer, connect(replayer):
            self.assertRegex(replayer.wait(), "nothing came$")
        recording = zelsim.Recording([connected, zelsim.Row(0, "machine", "message", b"a")])
        replayer = zelsim.Replayer(recording)
        with connect(replayer) as machine:
            machine.sendall(zelsim.frame(b"a"))
            machine.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        replayer.run()
        self.assertIsNone(replayer.difference)

    @mock.patch.multiple(zelsim, CHECK_S=0.1, KEEP_ALIVE=dict.fromkeys(zelsim.KEEP_ALIVE, 1))
    def test_notices_a_lost_machine(self):
        instruction = ctypes.create_string_buffer(struct.pack("HBBI", 6, 0, 0, 0))  # drops all
        drop = struct.pack("HxxxxxxP", 1, ctypes.addressof(instruction))
        for unacknowledged in (b"", b"x"):
            simulator = zelsim.Simulator(lambda *_: None, once=True,
                                         connected=lambda link: link.raw(unacknowledged))
            limit = threading.Timer(9, simulator.stop)
            limit.start()
            with self.subTest(unacknowledged=unacknowledged), connect(simulator) as machine:
                machine.setsockopt(socket.SOL_SOCKET, 26, drop)  # SO_ATTACH_FILTER
                simulator.run()
                self.assertTrue(limit.is_alive())
            limit.cancel()


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
