"""What becomes of the log when nobody reads it, and of the relay meanwhile."""

import array
import concurrent.futures
import contextlib
import fcntl
import itertools
import os
import re
import signal
import socket
import ssl
import statistics
import subprocess
import tempfile
import termios
import time
import tty
import unittest

from raw_line import CLOSE, TEXT, Line, frame, request
from relay_program import LIMIT, PROGRAM, Relay, login
from witness import Witness, three_waits

F_SETPIPE_SZ = 1031  # Python 3.10 and on has it in fcntl
PIPE_SIZE = 4096
FLOOD_SECONDS = 2
OPEN_WIDE = ("--connects-per-minute", "1000000", "--max-connections-per-address", "1000",
             "--max-half-open-per-address", "1000", "--failed-logins", "1000000")


class DeafRelay(Relay):
    """Its output is read up to the line that it is ready, and from then on only when asked."""

    def _read(self):
        for line in self.process.stdout:
            self.lines.append(line.rstrip("\n"))
            if " ready " in line:
                break
        with self._news:
            self._news.notify_all()

    def read_rest(self):
        return self.process.stdout.read().splitlines()

    def unread(self):
        count = array.array("i", [0])
        fcntl.ioctl(self.process.stdout, termios.FIONREAD, count)
        return count[0]


def be_refused(relay, number):
    """Leaves one line in the log before the login, three after it, over either version of TLS."""
    with contextlib.closing(Line(relay, tls=False)) as line:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_CLIENT)
        context.check_hostname = False
        context.verify_mode = ssl.CERT_NONE
        if number & 1:
            context.maximum_version = ssl.TLSVersion.TLSv1_2
        line.socket = context.wrap_socket(line.socket)
        line.send(request())
        line.read_upgrade()
        if number & 2:
            line.send(frame(TEXT, login(f"f{number}:a", "pw").encode()))
        line.send(frame(TEXT, b"no JSON") + frame(CLOSE))
        line.read_until_end()


def flood(relay):
    """Refusals as fast as the line takes them, eight at a time."""
    numbers = itertools.count()
    until = time.monotonic() + FLOOD_SECONDS

    def run():
        while time.monotonic() < until:
            be_refused(relay, next(numbers))
    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        for done in [pool.submit(run) for _ in range(8)]:
            done.result()


class NobodyReads(unittest.TestCase):
    def setUp(self):
        self.relay = DeafRelay(*OPEN_WIDE)
        self.addCleanup(self.relay.__exit__)
        fcntl.fcntl(self.relay.process.stdout, F_SETPIPE_SZ, PIPE_SIZE)

    def test_a_pair_plays_on_beside_a_flood_of_refusals_and_the_end_is_in_time(self):
        witness = Witness(self.relay)
        self.addCleanup(witness.stop)
        waits = three_waits(witness, lambda: flood(self.relay))
        self.assertGreater(self.relay.unread(), PIPE_SIZE // 2)
        self.assertLess(statistics.median(waits), 100, waits)
        started = time.monotonic()
        self.relay.process.send_signal(signal.SIGTERM)
        self.assertEqual(self.relay.process.wait(LIMIT), 0)
        self.assertLess(time.monotonic() - started, 2)

    def test_what_waited_arrives_when_the_reader_comes_back(self):
        for number in range(100):
            be_refused(self.relay, number)
        self.assertGreater(self.relay.unread(), PIPE_SIZE // 2)
        self.relay.process.send_signal(signal.SIGTERM)
        words = [line.split(" ")[1] for line in self.relay.read_rest()]
        self.assertEqual(self.relay.process.wait(LIMIT), 0)
        self.assertEqual([words.count(word) for word in ("refused", "login", "left")],
                         [100, 50, 50])
        self.assertEqual(words[-1], "stopped")

    def test_a_reader_who_is_gone_ends_nothing(self):
        self.relay.process.stdout.close()
        witness = Witness(self.relay)
        self.addCleanup(witness.stop)
        be_refused(self.relay, 0)
        witness.forget()
        self.relay.process.send_signal(signal.SIGTERM)
        self.assertEqual(self.relay.process.wait(LIMIT), 0)


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as server:
        return server.getsockname()[1]


class Outputs(unittest.TestCase):
    """The relay with other outputs than the pipe of the other tests."""

    def start(self, output, *prefix):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.port = free_port()
        process = subprocess.Popen([*prefix, PROGRAM, "--listen", f"127.0.0.1:{self.port}",
                                    "--state-dir", folder.name], stdout=output)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def wait_until_it_listens(self):
        until = time.monotonic() + LIMIT
        while True:
            try:
                return socket.create_connection(("127.0.0.1", self.port), LIMIT).close()
            except ConnectionRefusedError:
                self.assertLess(time.monotonic(), until)
                time.sleep(0.01)

    def run_into(self, written, readable):
        """Starts and ends a relay that writes to a descriptor; what it wrote to the other."""
        process = self.start(written)
        text = b""
        while b" ready " not in text:
            text += os.read(readable, 4096)
        self.assertTrue(os.get_blocking(written), "the mode is shared with others")
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(LIMIT), 0)
        self.assertTrue(os.get_blocking(written))
        while b" stopped" not in text:
            text += os.read(readable, 4096)
        return [re.sub(r"^\S+Z ", "", line) for line in text.decode().splitlines()]

    def test_all_lines_are_there_at_the_end_whatever_takes_them(self):
        kinds = {"pipe": os.pipe, "terminal": os.openpty, "socket": lambda: tuple(
            end.detach() for end in socket.socketpair())}
        for kind, make in kinds.items():
            with self.subTest(kind):
                readable, written = make()
                if kind == "terminal":
                    tty.setraw(written)
                lines = self.run_into(written, readable)
                os.close(readable)
                os.close(written)
                self.assertTrue(lines[0].startswith("Play with: "), lines)
                self.assertEqual(lines[1:], ["ready connections=10000", "stopping connections=0",
                                             "stopped"])

    def test_a_file_has_all_lines_when_the_relay_has_ended(self):
        with tempfile.NamedTemporaryFile() as log:
            process = self.start(log)
            self.wait_until_it_listens()
            process.send_signal(signal.SIGTERM)
            self.assertEqual(process.wait(LIMIT), 0)
            log.seek(0)
            self.assertTrue(log.read().endswith(b" stopped\n"))

    def test_no_connection_takes_the_place_of_a_closed_output(self):
        process = self.start(None, "sh", "-c", 'exec "$@" <&- >&- 2>&-', "sh")
        self.wait_until_it_listens()
        for number in (0, 1, 2):
            self.assertEqual(os.readlink(f"/proc/{process.pid}/fd/{number}"), "/dev/null")


if __name__ == "__main__":
    unittest.main()
