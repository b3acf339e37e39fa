"""What systemd reads of the relay: a unit that is well formed and lets it do little on its host,
and what the relay says of itself while it runs."""

import os
import select
import signal
import socket
import subprocess
import tempfile
import time
import unittest

from relay_program import LIMIT, Relay

ANALYZE = os.environ.get("SYSTEMD_ANALYZE")
PROGRAM = os.environ["RELAY_PROGRAM"]
UNIT = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                    "../../programs/relay/vork2d-relay.service")
EXPOSURE = 20  # tenths on systemd's scale, on which a service without any protection has 96


class UnitText(unittest.TestCase):
    def test_it_has_a_watchdog_and_may_speak_to_it(self):
        with open(UNIT, encoding="ascii") as unit:
            text = unit.read()
        self.assertRegex(text, r"(?m)^Type=notify$")
        self.assertRegex(text, r"(?m)^WatchdogSec=\d+$")
        self.assertRegex(text, r"(?m)^RestrictAddressFamilies=.*\bAF_UNIX\b")
        self.assertRegex(text, r"(?m)^Restart=on-failure$")


@unittest.skipUnless(ANALYZE, "systemd-analyze is not here")
class Unit(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.unit = os.path.join(folder.name, "vork2d-relay.service")
        with open(UNIT, encoding="ascii") as source, open(self.unit, "w", encoding="ascii") as copy:
            # systemd looks whether the program is there.
            copy.write(source.read().replace("/usr/local/bin/vork2d-relay", PROGRAM))

    def analyze(self, *words):
        done = subprocess.run([ANALYZE, *words, self.unit], capture_output=True, text=True,
                              timeout=50, check=False)
        return done.returncode, done.stdout + done.stderr

    def test_it_is_well_formed(self):
        status, text = self.analyze("verify", "--man=no", "--recursive-errors=no")
        self.assertEqual((status, text), (0, ""))

    def test_it_is_shut_in(self):
        status, text = self.analyze("security", "--offline=yes", f"--threshold={EXPOSURE}",
                                    "--no-pager")
        self.assertEqual(status, 0, text)


class Notify(unittest.TestCase):
    """The test is the service manager."""

    WATCHDOG = 1.5  # seconds

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        path = os.path.join(folder.name, "notify")
        self.inbox = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.addCleanup(self.inbox.close)
        self.inbox.bind(path)
        self.inbox.settimeout(LIMIT)
        self.relay = Relay(environment={"NOTIFY_SOCKET": path,
                                        "WATCHDOG_USEC": str(int(self.WATCHDOG * 1e6))})
        self.addCleanup(self.relay.__exit__)

    def take(self):
        return self.inbox.recv(100).decode()

    def is_silent_for(self, seconds):
        return not select.select([self.inbox], [], [], seconds)[0]

    def test_it_says_when_players_can_connect(self):
        self.assertEqual(self.take(), "READY=1")
        socket.create_connection((self.relay.host, self.relay.port), LIMIT).close()

    def test_it_feeds_the_watchdog_in_less_than_half_its_time(self):
        self.assertEqual([self.take(), self.take()], ["READY=1", "WATCHDOG=1"])
        pauses = []
        for _ in range(4):
            begun = time.monotonic()
            self.assertEqual(self.take(), "WATCHDOG=1")
            pauses.append(time.monotonic() - begun)
        # One may be late on a busy machine.
        self.assertLess(sorted(pauses)[1], self.WATCHDOG / 2)

    def test_a_loop_that_stands_still_feeds_it_no_more(self):
        self.assertEqual([self.take(), self.take()], ["READY=1", "WATCHDOG=1"])
        self.relay.process.send_signal(signal.SIGSTOP)
        os.waitid(os.P_PID, self.relay.process.pid, os.WSTOPPED)
        self.inbox.setblocking(False)
        while not self.is_silent_for(0):
            self.take()
        self.assertTrue(self.is_silent_for(self.WATCHDOG))
        self.inbox.settimeout(LIMIT)
        self.relay.process.send_signal(signal.SIGCONT)
        self.assertEqual(self.take(), "WATCHDOG=1")

    def test_it_says_when_it_stops(self):
        self.assertEqual(self.relay.stop(), 0)
        while (news := self.take()) != "STOPPING=1":
            self.assertIn(news, ("READY=1", "WATCHDOG=1"))


if __name__ == "__main__":
    unittest.main()
