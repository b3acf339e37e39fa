"""Two clients play through the real relay: what goes over the wire, what each logs, and how the score comes about."""

import unittest

from stage import Stage, wait_for

# A serve is aimed at the middle of the other paddle where that stands: it has to leave after the serve.
OUT_OF_THE_WAY = ["Down"] * 4

THEME_ROW = 5  # in the options menu, offline
CHAT_FIELD = (400, -46)  # in the window, from its lower edge, while the chat panel shows


class RallyTest(unittest.TestCase):
    def setUp(self):
        self.stage = Stage()
        self.addCleanup(self.stage.close)
        self.ann, self.ben = self.stage.pair()

    def wait_both(self, text, times=1):
        for client in (self.ann, self.ben):
            client.wait_line(text, times)

    def wait_relayed(self, cmd, who="g:Ben", times=1):
        wait_for(f"'{cmd}' at {who}", lambda: self.stage.commands(who, up=False).count(cmd) >= times)

    def play_a_point(self, starter, other, away=OUT_OF_THE_WAY):
        """A quick rally in which the other player leaves the ball's way after the serve."""
        points = [client.count_starting("CONFIRMED- ball out of field") for client in (self.ann, self.ben)]
        serves = starter.count_starting("PLAY START")
        starter.press("ctrl+6", "space")
        wait_for("the serve", lambda: starter.count_starting("PLAY START") > serves)
        other.press(*away)
        for client, before in zip((self.ann, self.ben), points):
            wait_for("the point", lambda c=client, b=before: c.count_starting("CONFIRMED- ball out of field") > b)

    def test_a_rally_goes_over_the_wire_frame_by_frame(self):
        self.ann.press("ctrl+4", "space")
        self.wait_relayed("setBall", times=2)  # the top wall, then the middle of Ben's paddle
        self.ben.press(*OUT_OF_THE_WAY)
        self.ann.press(*OUT_OF_THE_WAY)
        self.wait_relayed("out_of_field")
        self.stage.wait_frame("the score", lambda f: f.up and f.cmd == "points")
        sent = [cmd for cmd in self.stage.commands("g:Ann") if cmd not in ("orientation", "keyPressed")]
        hits = sent.count("setBall")
        self.assertEqual(sent, ["travel", "start"] + ["setBall"] * hits + [c for c in sent[2 + hits:]])
        self.assertIn(sent[2 + hits:], (["out_of_field"], ["points", "out_of_field"]))
        self.assertEqual([c for c in self.stage.commands("g:Ben") if c != "keyPressed"],
                         [] if "points" in sent else ["points"])
        start = next(f.json for f in self.stage.frames if f.up and f.cmd == "start")
        self.assertEqual(start, {"type": "PLAY", "subType": "", "from": "g:Ann", "to": "#", "ident": 0, "game": "vork",
                                 "payload": {"cmd": "start", "orient": "LEFT", "msTravel": 2000}})
        self.wait_both("PLAY START LEFT SIDE")
        self.assertEqual(self.ben.count("GET BALL SYNC"), hits)
        self.assertEqual(self.ann.count_starting("ONE HIT, ball:"), hits)
        self.assertEqual(self.ben.count_starting("ONE HIT, ball:"), 0, "only the master looks for hits")

    def test_a_frame_reaches_the_other_player_as_it_was_sent(self):
        self.ann.press("Up")
        self.wait_relayed("keyPressed")
        up = next(f.text for f in self.stage.frames if f.up and f.cmd == "keyPressed")
        down = next(f.text for f in self.stage.frames if not f.up and f.cmd == "keyPressed")
        self.assertEqual(down, up)
        self.assertEqual([f.who for f in self.stage.frames if not f.up and f.cmd == "keyPressed"], ["g:Ben"])

    def test_both_score_and_agree(self):
        self.play_a_point(self.ann, self.ben)
        self.play_a_point(self.ben, self.ann)
        self.stage.wait_frame("Ben's point", lambda f: f.up and f.who == "g:Ben" and f.cmd == "points")
        self.wait_both("point for me")
        self.wait_both("point for opponent")
        self.assertEqual((self.ann.count("point for me"), self.ann.count("point for opponent")), (1, 1))
        self.assertEqual((self.ben.count("point for me"), self.ben.count("point for opponent")), (1, 1))
        told = [(f.who, f.json["to"], f.json["payload"]["countPointsMe"], f.json["payload"]["countPointsOpponent"])
                for f in self.stage.frames if f.cmd == "points"]
        self.assertEqual(told, [("g:Ann", "+", 1, 0), ("g:Ben", "+", 1, 1)])

    def test_a_stop_goes_out_twice(self):
        self.ann.press("ctrl+1", "space")
        self.wait_both("PLAY START LEFT SIDE")
        self.ann.press("space")
        self.wait_relayed("stop", times=2)
        self.assertEqual(self.stage.commands("g:Ann").count("stop"), 2)
        self.ann.wait_line("STOPPED by user")
        self.ben.wait_line("STOPPED by user", 2)

    def test_a_speed_change_reaches_both(self):
        self.ben.press("ctrl+9")
        self.wait_relayed("travel", "g:Ann")
        self.wait_both("tmTravel, ms:200")

    def test_a_side_switch_gives_the_other_the_other_side(self):
        self.ann.open_options()
        self.ann.keys("Down", "Return")
        self.wait_relayed("orientation", times=2)
        self.ann.wait_line("orient changed, me: {g:Ann, RIGHT, countPoints:0}, opponent{g:Ben, LEFT, countPoints:0}")
        self.ben.wait_line("orient changed, me: {g:Ben, LEFT, countPoints:0}, opponent{g:Ann, RIGHT, countPoints:0}")

    def test_chat_goes_both_ways(self):
        for client in (self.ann, self.ben):
            client.open_options()
            client.keys("Down", "Down", "Down", "Return")  # switch of sides, sound, chat panel
            client.click(*CHAT_FIELD)
        self.ann.activate(self.ann.title())
        for client, text in ((self.ann, "well played"), (self.ben, "again")):
            client.activate(client.title())
            client.click(*CHAT_FIELD)
            client.type(text)
            client.keys("Return")
            self.stage.wait_frame(text, lambda f, t=text: not f.up and f.json.get("text") == t)
        chats = [(f.who, f.json["subType"], f.json["from"], f.json["text"]) for f in self.stage.frames
                 if not f.up and f.json["type"] == "CHAT" and f.json["subType"] == "text"]
        self.assertEqual(chats, [("g:Ben", "text", "g:Ann", "well played"), ("g:Ann", "text", "g:Ben", "again")])

    def test_when_the_opponent_quits_the_rally_ends_and_a_dialog_waits(self):
        self.play_a_point(self.ann, self.ben)
        self.ann.press("ctrl+1", "space")
        self.wait_both("STATE CHANGED, states {CONNECTED1 | CONNECTED2 | PLAY}", 2)
        self.assertEqual(self.ben.quit(), 0)
        self.ann.wait_line("BYE")
        self.ann.wait_line("STATE CHANGED, states {CONNECTED1}", 2)
        self.ann.window("Connection")
        ben = self.stage.player("g:Ben", "820,30,800,600")
        ben.wait_line("STATE CHANGED, states {CONNECTED1 | CONNECTED2}")
        self.ann.wait_match(r"^me: \{g:Ann, LEFT, countPoints:0\}, opponent\{g:Ben, RIGHT, countPoints:0\}$")

    def test_a_relay_that_dies_in_a_rally_can_be_reached_again(self):
        self.ann.press("ctrl+1", "space")
        self.wait_both("STATE CHANGED, states {CONNECTED1 | CONNECTED2 | PLAY}")
        port = self.stage.relay_port
        self.stage.relay.process.kill()
        self.wait_both("Window::disconnected")
        self.wait_both("STATE CHANGED, states {}")
        self.stage.start_relay(port)
        for client in (self.ann, self.ben):
            client.open_connection_dialog()
            client.keys("Return")
            client.wait_line("Window::on_connected **", 2)
        self.wait_both("STATE CHANGED, states {CONNECTED1 | CONNECTED2}", 2)

    def test_ten_rallies_end_with_equal_scores_on_both_screens(self):
        for rally in range(10):
            starter, other = (self.ann, self.ben) if rally % 2 == 0 else (self.ben, self.ann)
            self.play_a_point(starter, other, ["Down" if rally % 4 < 2 else "Up"] * 6)
        self.assertEqual(self.ann.count("point for me"), self.ben.count("point for opponent"))
        self.assertEqual(self.ben.count("point for me"), self.ann.count("point for opponent"))
        self.assertEqual(self.ann.count("point for me") + self.ben.count("point for me"), 10)
        self.assertEqual((self.ann.errors(), self.ben.errors()), ([], []))


class OfflineTest(unittest.TestCase):
    def setUp(self):
        self.stage = Stage()
        self.addCleanup(self.stage.close)

    def start(self, **options):
        client = self.stage.client("vork2D/v5", "--__bounds", "0,30,800,600", **options)
        client.window("vork2D/v5")
        return client

    def test_a_first_start_has_its_size_its_theme_and_its_settings(self):
        client = self.stage.client("vork2D/v5")
        self.assertEqual(client.shape(client.window("vork2D/v5")), (800, 600))
        client.wait_line("Window, theme DARK")
        self.assertIn(("DEB", "user 'group1:Nilo'"), client.log())
        settings = client.config / "vork2d.example" / "vork2d.conf"
        client.wait_line(f"GSettings::check_update_config, current version:99, version expected:110 {settings}")
        client.wait_line("GSettings::check_update_config - CLEAR")
        self.assertEqual(client.quit(), 0)
        self.assertTrue(settings.exists())

    def test_the_hint_is_answered_both_ways_and_remembered(self):
        client = self.start()
        client.press("space")
        client.activate("Info offline mode")
        client.keys("alt+n")
        client.wait_line("OFFLINE INFO STOPP")
        client.wait_line("PLAY START LEFT SIDE")
        self.assertEqual(client.quit(), 0)

        again = self.start(config=client.config)
        again.press("space")
        again.wait_line("PLAY START LEFT SIDE")
        self.assertEqual(again.count("Window::show_offline_player_mode"), 0)

    def test_yes_shows_the_hint_at_the_next_start_of_the_program(self):
        client = self.start()
        client.press("space")
        client.activate("Info offline mode")
        client.keys("alt+y")
        client.wait_line("OFFLINE INFO AGAIN")
        client.wait_line("PLAY START LEFT SIDE")
        client.quit()
        again = self.start(config=client.config)
        again.press("space")
        again.wait_line("Window::show_offline_player_mode")

    def test_one_player_holds_both_paddles_and_wins_and_loses(self):
        client = self.start()
        client.press("space")
        client.activate("Info offline mode")
        client.keys("alt+n")
        client.wait_line("PLAY START LEFT SIDE")
        client.press("space")  # stops; the next one is quicker
        client.press("ctrl+6", "space")
        client.wait_line("PLAY START LEFT SIDE", 2)
        client.press(*(["ctrl+Down"] * 4))  # the right paddle leaves
        client.wait_line("point for me")
        client.press("space")
        client.wait_line("PLAY START LEFT SIDE", 3)
        client.press(*(["Down"] * 5))  # the left one leaves, the ball comes back from the right one
        client.wait_line("point for opponent")
        self.assertEqual(self.stage.frames, [])

    def test_what_the_options_set_survives_a_restart(self):
        client = self.start()
        client.open_options()
        client.keys(*(["Down"] * THEME_ROW), "Right", "Down", "Down", "Return")
        client.wait_line("Window, theme GREEN")
        self.assertEqual(client.quit(), 0)
        again = self.start(config=client.config)
        again.wait_line("Window, theme GREEN")


if __name__ == "__main__":
    unittest.main()
