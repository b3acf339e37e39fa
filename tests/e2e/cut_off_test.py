"""A relay that is gone in the middle of a word. The client is offline at once, whole, and connects again."""

import unittest

from opponent import message
from raw_relay import PING, TEXT, RawRelayStage, finish, frame, reset

CHAT = frame(TEXT, message("CHAT", subType="text", text="x" * 20_000).encode())
START = message("PLAY", game="vork", payload={"cmd": "start", "orient": "RIGHT", "msTravel": 10000})

# What is written before the end; each is cut off somewhere.
CUT = {
    "nothing": lambda connection: b"",
    "the first byte of a frame": lambda connection: connection.sealed(CHAT[:1]),
    "half the length of a frame": lambda connection: connection.sealed(CHAT[:3]),
    "half a frame": lambda connection: connection.sealed(CHAT[:len(CHAT) // 2]),
    "a frame that more were to follow": lambda connection: connection.sealed(b"\x01" + CHAT[1:]),
    "half a ping": lambda connection: connection.sealed(frame(PING, b"x" * 100)[:50]),
    "half the head of a record": lambda connection: connection.sealed(CHAT)[:3],
    "half a record": lambda connection: connection.sealed(CHAT)[:5000],
    "the first record of two": lambda connection: connection.sealed(CHAT)[:17_000],
}


class CutOffTest(unittest.TestCase):
    def check(self, end):
        stage = RawRelayStage()
        self.addCleanup(stage.close)
        ann = stage.player("g:Ann", "0,30,800,600")
        for times, (name, cut) in enumerate(CUT.items(), 1):
            connection = stage.raw.accept()
            connection.welcome()
            ann.wait_line("STATE CHANGED, states {CONNECTED1 | CONNECTED2}", times)
            connection.send(frame(TEXT, START.encode()))
            ann.wait_line("PLAY START RIGHT SIDE", times)
            connection.wire.sendall(cut(connection))
            end(connection.wire)
            ann.wait_line("Window::disconnected", times)
            ann.wait_line("STATE CHANGED, states {}", times)
            errors = ann.errors()
            self.assertEqual(len(errors), times, (name, errors))
            self.assertRegex(errors[-1], r"^GWebSocket error 1 => <.+>$", name)
            ann.open_connection_dialog()
            ann.keys("Return")
        stage.raw.accept().welcome()
        ann.wait_line("STATE CHANGED, states {CONNECTED1 | CONNECTED2}", len(CUT) + 1)
        self.assertEqual(ann.quit(), 0)

    def test_a_connection_finished_in_the_middle(self):
        self.check(finish)

    def test_a_connection_reset_in_the_middle(self):
        self.check(reset)


if __name__ == "__main__":
    unittest.main()
