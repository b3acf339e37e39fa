"""The relay stands still for a while, as on a machine that sleeps. The player can go on, leave, and quit; what was
played meanwhile arrives when the relay goes on."""

import signal
import unittest

from stage import CONNECT_BUTTON, Stage


class DirectStage(Stage):
    """Without a recorder in between, who would go on reading."""

    @property
    def port(self):
        return self.relay_port


class FrozenRelayTest(unittest.TestCase):
    def setUp(self):
        self.stage = DirectStage()
        self.addCleanup(self.stage.close)

    def freeze(self):
        self.stage.relay.process.send_signal(signal.SIGSTOP)
        self.addCleanup(self.thaw)  # one that is frozen would not end

    def thaw(self):
        self.stage.relay.process.send_signal(signal.SIGCONT)

    def pair_in_a_rally(self):
        ann, ben = self.stage.pair()
        ann.press("ctrl+1", "space")
        for client in (ann, ben):
            client.wait_line("PLAY START LEFT SIDE")
        return ann, ben

    def test_the_rally_goes_on_and_what_was_played_arrives_later(self):
        ann, ben = self.pair_in_a_rally()
        self.freeze()
        ann.press("ctrl+2")
        ann.wait_line("tmTravel, ms:5000")
        self.assertNotIn("tmTravel, ms:5000", ben.texts())
        self.thaw()
        ben.wait_line("tmTravel, ms:5000")
        self.assertEqual((ann.errors(), ben.errors()), ([], []))

    def test_both_can_quit(self):
        clients = self.pair_in_a_rally()
        self.freeze()
        for client in clients:
            self.assertEqual(client.quit(), 0)

    def test_a_player_can_disconnect(self):
        ann, _ = self.pair_in_a_rally()
        self.freeze()
        ann.click(*CONNECT_BUTTON)
        ann.activate("Disconnect")
        ann.keys("alt+y")
        ann.wait_line("Window::disconnected")
        ann.wait_line("STATE CHANGED, states {}")
        self.assertEqual(ann.errors(), [])

    def test_a_login_that_nobody_answers_can_be_given_up_and_made_again(self):
        self.freeze()
        ann = self.stage.client("g:Ann", "--user", "g:Ann", "--pass", "secret", "--__bounds", "0,30,800,600")
        ann.window("vork2D/v5")
        ann.open_connection_dialog()
        ann.keys("Return")
        ann.wait_line("after try open")
        ann.keys("Escape")
        ann.wait_line("DialogConnection::~DialogConnection")
        self.thaw()
        ann.open_connection_dialog()
        ann.keys("Return")
        ann.wait_line("Window::on_login")
        self.assertEqual(ann.errors(), [])


if __name__ == "__main__":
    unittest.main()
