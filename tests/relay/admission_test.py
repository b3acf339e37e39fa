"""Beside a flood of handshakes that nobody finishes, newcomers get in and a pair plays on."""

import contextlib
import functools
import statistics
import unittest

from flood import FORMS, Flood
from raw_line import TEXT, Line, frame, request
from relay_program import Relay, login
from witness import Witness, three_waits

NEWCOMERS = 8  # beside each run of each flood: 192 in all
LONGEST_MS = 100


class Admission(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.relay = Relay("--max-half-open", "256")
        cls.addClassCleanup(cls.relay.__exit__)
        cls.witness = Witness(cls.relay)
        cls.addClassCleanup(cls.witness.stop)
        cls.came = 0
        cls.floods = 0

    def enter(self):
        """A newcomer from an address of his own, up to the welcome."""
        type(self).came += 1
        with contextlib.closing(Line(self.relay, address=f"127.0.1.{self.came}")) as line:
            line.send(request())
            line.read_upgrade()
            line.send(frame(TEXT, login(f"n{self.came}:a", "pw").encode()))
            self.assertIn('"welcome"', line.read_text())

    def run_flood(self, form, addresses):
        # New addresses each time: the former have used up what they may open in a minute.
        type(self).floods += 1
        with Flood(self.relay, form, self.floods, addresses):
            for _ in range(NEWCOMERS):
                self.enter()

    def check(self, form, addresses):
        waits = three_waits(self.witness, functools.partial(self.run_flood, form, addresses))
        self.assertLess(statistics.median(waits), LONGEST_MS, waits)

    def test_newcomers_get_in_and_the_pair_plays_on(self):
        for addresses in (4, 250):
            for form in FORMS:
                with self.subTest(form=form, addresses=addresses):
                    self.check(form, addresses)
        self.assertEqual(self.came, 3 * 2 * len(FORMS) * NEWCOMERS)


if __name__ == "__main__":
    unittest.main()
