"""The systemd unit is well formed, and what it starts may do little on its host."""

import os
import subprocess
import tempfile
import unittest

ANALYZE = os.environ["SYSTEMD_ANALYZE"]
PROGRAM = os.environ["RELAY_PROGRAM"]
UNIT = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                    "../../programs/relay/vork2d-relay.service")
EXPOSURE = 20  # tenths on systemd's scale, on which a service without any protection has 96


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


if __name__ == "__main__":
    unittest.main()
