"""However many connections send whatever TLS and the WebSocket allow, a pair that plays never waits."""

import os
import statistics
import subprocess
import time
import unittest

from relay_program import Relay
from witness import Witness, three_waits

PROGRAM = os.environ["ATTACK_PROGRAM"]
BOUND_MS = 100  # for a message of the pair, in the median of three runs
STOP_SECONDS = 2
SECONDS = "1"  # of each run


class Attack:
    """Made ready by the constructor, begun by go()."""

    def __init__(self, relay, row):
        self.process = subprocess.Popen(
            [PROGRAM, str(relay.port), *row, SECONDS], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, text=True)
        ready = self.process.stdout.readline()
        assert ready == "ready\n", ready

    def go(self):
        self.process.stdin.write("\n")
        self.process.stdin.flush()

    def connections(self):
        """How many it has made, at its end."""
        return int(self.process.stdout.read().split()[0])

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()


class Attacks(unittest.TestCase):
    def waits_beside(self, relay, row):
        witness = Witness(relay)
        try:
            def attack():
                with Attack(relay, row) as running:
                    witness.forget()
                    running.go()
                    self.assertGreater(running.connections(), 0)
            return three_waits(witness, attack)
        finally:
            witness.stop()

    def stop_under(self, relay, row):
        """Seconds that the relay takes over its end."""
        with Attack(relay, row) as running:
            running.go()
            begun = time.monotonic()
            self.assertEqual(relay.stop(), 0)
            return time.monotonic() - begun

    def check(self, *row):
        with Relay() as relay:
            waits = self.waits_beside(relay, row)
            stopped = self.stop_under(relay, row)
        print(*row, "waits in ms:", *(f"{wait:.0f}" for wait in waits), f"stop: {stopped:.2f} s",
              flush=True)
        self.assertLess(statistics.median(waits), BOUND_MS, waits)
        self.assertLess(stopped, STOP_SECONDS)

    def test_key_updates_before_the_upgrade(self):
        self.check("key-updates", "1.3", "tls", "8")

    def test_key_updates_before_the_login(self):
        self.check("key-updates", "1.3", "open", "8")

    def test_key_updates_after_the_login(self):
        self.check("key-updates", "1.3", "member", "16")

    def test_key_updates_that_ask_for_an_answer(self):
        self.check("answered-key-updates", "1.3", "member", "8")

    def test_renegotiations_before_the_upgrade(self):
        self.check("renegotiations", "1.2", "tls", "16")

    def test_renegotiations_after_the_login(self):
        self.check("renegotiations", "1.2", "member", "16")

    def test_empty_records(self):
        for version, stage in (("1.2", "open"), ("1.3", "tls")):
            self.check("empty-records", version, stage, "16")

    def test_warnings(self):
        for version, stage in (("1.2", "member"), ("1.3", "open")):
            self.check("warnings", version, stage, "16")

    def test_pings(self):
        for version, stage in (("1.2", "open"), ("1.3", "member")):
            self.check("pings", version, stage, "8")

    def test_texts(self):
        self.check("texts", "1.3", "member", "16")

    def test_empty_fragments(self):
        self.check("empty-fragments", "1.2", "member", "8")

    def test_hellos_at_one_moment(self):
        self.check("hellos", "1.3", "tls", "200")


if __name__ == "__main__":
    unittest.main()
