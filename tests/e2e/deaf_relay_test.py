"""A relay that asks and asks and reads no answer. The client keeps its memory, says why it leaves, and plays on."""

import unittest

from opponent import message, resident_bytes
from raw_relay import PING, TEXT, Pour, RawRelayStage, frame
from stage import LIMIT, wait_for

MEGABYTE = 2 ** 20
CLOSED = "GWebSocket, more than 4 MiB unsent, the other end does not read, connection closed"


class DeafRelayTest(unittest.TestCase):
    def setUp(self):
        self.stage = RawRelayStage()
        self.addCleanup(self.stage.close)
        self.ann = self.stage.player("g:Ann", "0,30,800,600")
        self.connection = self.stage.raw.accept()
        self.connection.welcome()
        self.ann.wait_line("STATE CHANGED, states {CONNECTED1 | CONNECTED2}")

    def most_resident_bytes_until(self, what, condition):
        most = 0

        def look():
            nonlocal most
            most = max(most, resident_bytes(self.ann.process))
            return condition()
        wait_for(what, look)
        return most

    def check_flood(self, data):
        before = resident_bytes(self.ann.process)
        pour = Pour(self.connection, data)
        most = self.most_resident_bytes_until("the end", lambda: self.ann.count("Window::disconnected"))
        print(f"resident MB before: {before // MEGABYTE}, at most: {most // MEGABYTE}, "
              f"sent MB: {pour.sent // MEGABYTE}")
        pour.join(LIMIT)
        self.assertFalse(pour.is_alive())
        self.assertEqual(self.ann.errors(), [CLOSED])
        self.assertLess(most - before, 96 * MEGABYTE)
        self.ann.press("ctrl+1")
        self.ann.wait_line("tmTravel, ms:10000")

    def test_pings_without_end(self):
        self.check_flood(frame(PING, b"x" * 125) * 1000)

    def test_empty_pings_without_end(self):
        self.check_flood(frame(PING, b"") * 50_000)

    def test_heartbeats_without_end(self):
        self.check_flood(frame(TEXT, message("PING").encode()) * 500)


if __name__ == "__main__":
    unittest.main()
