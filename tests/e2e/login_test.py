"""How clients reach the relay, log in and find each other, frame by frame, and every way to close the dialog."""

import re
import unittest

from stage import Stage, wait_for


class LoginTest(unittest.TestCase):
    def setUp(self):
        self.stage = Stage()
        self.addCleanup(self.stage.close)

    def frames_of(self, who):
        """What the table of a login tells about each frame of a client, heartbeats left out."""
        found = []
        for frame in self.stage.frames:
            body = frame.json
            if frame.who != who or body["type"] in ("PING", "PONG"):
                continue
            shape = [("up" if frame.up else "down"), body["type"], body["subType"], body["from"]]
            if frame.up:
                shape.append(body["to"])
            if body["type"] == "CHAT":
                shape.append(body.get("extraData", ""))
            if frame.cmd:
                shape += [frame.cmd, body["payload"].get("orient")]
            found.append(tuple(shape))
        return found

    def start_offline(self):
        """A client that has not logged in; its window's title is the program's own."""
        client = self.stage.client("g:Ann", "--user", "g:Ann", "--pass", "secret", "--__bounds", "0,30,800,600")
        client.window("vork2D/v5")
        return client

    def test_two_players_of_a_group_are_paired_frame_by_frame(self):
        ann, ben = self.stage.pair()
        self.stage.wait_frame("the side", lambda f: f.who == "g:Ben" and not f.up and f.cmd == "orientation")
        relay = self.frames_of("g:Ann")[1][3]
        self.assertEqual(self.frames_of("g:Ann"), [
            ("up", "LOGIN", "login", "g:Ann", "+"),
            ("down", "CHAT", "welcome", relay, "g:Ann"),
            ("down", "CHAT", "join", "g:Ben", ""),
            ("up", "PLAY", "", "g:Ann", "#", "orientation", "LEFT"),
        ])
        self.assertEqual(self.frames_of("g:Ben"), [
            ("up", "LOGIN", "login", "g:Ben", "+"),
            ("down", "CHAT", "welcome", relay, "g:Ann, g:Ben"),
            ("down", "PLAY", "", "g:Ann", "orientation", "LEFT"),
        ])
        self.assertEqual(self.stage.frames[0].json["pw"], "secret")
        ann.wait_line("me: {g:Ann, LEFT, countPoints:0}, opponent{g:Ben, RIGHT, countPoints:0}")
        ben.wait_line("orient changed, me: {g:Ben, RIGHT, countPoints:0}, opponent{g:Ann, LEFT, countPoints:0}")
        self.assertEqual((ann.errors(), ben.errors()), ([], []))

    def test_the_first_to_arrive_waits_in_a_dialog_that_closes_by_itself(self):
        ann = self.stage.player("g:Ann", "0,30,800,600")
        ann.window("Connection")
        self.stage.player("g:Ben", "820,30,800,600")
        ann.wait_line("DialogConnection::close - PROGRAMMATICAL")
        ann.wait_line("DialogConnection::~DialogConnection")
        self.assertNotIn("Window::disconnect", ann.texts())

    def test_a_wrong_password_is_told_in_the_chat_and_ends_the_connection(self):
        ann = self.stage.player("g:Ann", "0,30,800,600")
        ann.wait_line("Window::on_login")
        ben = self.stage.client("g:Ben", "--user", "g:Ben", "--pass", "other", "--login")
        ben.wait_line("Window::disconnected")
        got = [f.json["type"] for f in self.stage.frames if f.who == "g:Ben" and not f.up]
        self.assertEqual(got, ["ERROR", "CHAT"])
        self.assertNotIn("Window::on_login", ben.texts())

    def test_a_refused_connection_leaves_the_dialog_on_its_form(self):
        self.stage.recorder.stop_listening()
        client = self.start_offline()
        client.open_connection_dialog()
        client.keys("Return")
        client.wait_match(r"GWebSocket error <.*> - server running \?")
        client.wait_line("Window::disconnected")
        client.window("Connection")
        self.assertNotIn("DialogConnection::close - PROGRAMMATICAL", client.texts())

    def test_the_dialog_logs_in_with_what_was_typed(self):
        client = self.start_offline()
        client.open_connection_dialog()
        for text in ("Zoe", "team", "word"):
            client.keys("ctrl+a")
            client.type(text)
            client.keys("Tab")
        client.keys("Return")
        frame = self.stage.wait_frame("the login", lambda f: f.up and f.json["type"] == "LOGIN")
        self.assertEqual((frame.json["from"], frame.json["pw"]), ("team:Zoe", "word"))
        client.wait_line("DialogConnection::open_waiting_page")

    def test_a_password_of_two_characters_is_refused_in_the_dialog(self):
        client = self.start_offline()
        client.open_connection_dialog()
        client.keys("Tab", "Tab", "ctrl+a")
        client.type("pw")
        client.keys("Return")
        client.wait_line("password toooooo short")
        client.window("Connection")
        self.assertEqual(self.stage.frames, [])

    def closing_lines(self, close):
        """The lines that tell how the waiting dialog was closed, from the given way on."""
        client = self.stage.player("g:Ann", "0,30,800,600")
        client.wait_line("DialogConnection::open_waiting_page")
        client.activate("Connection")
        before = len(client.texts())
        close(client)
        client.wait_line("DialogConnection::~DialogConnection")
        client.wait_line("Window::disconnected")
        told = re.compile(r"ok, close|Window::disconnect(ed)?|close\(\) or X button|DialogConnection::(reject|close.*|~.*)")
        return [text for text in client.texts()[before:] if told.fullmatch(text)]

    # The socket reports its end while it is being closed, so that the window closes the dialog from within.
    FROM_WITHIN = ["Window::disconnect", "Window::disconnected", "DialogConnection::close - PROGRAMMATICAL",
                   "close() or X button"]
    END = ["DialogConnection::~DialogConnection"]

    def test_escape_closes_the_dialog_and_the_connection(self):
        self.assertEqual(self.closing_lines(lambda client: client.keys("Escape")),
                         ["DialogConnection::reject"] + self.FROM_WITHIN + self.END)

    def test_the_title_bar_closes_the_dialog_and_the_connection(self):
        self.assertEqual(self.closing_lines(lambda client: client.keys("alt+F4")),
                         ["close() or X button"] + self.FROM_WITHIN[:3] + self.END)

    def test_stop_waiting_closes_the_dialog_and_the_connection(self):
        self.assertEqual(self.closing_lines(lambda client: client.keys("space")),
                         ["ok, close"] + self.FROM_WITHIN + self.END)

    def test_the_waiting_page_copies_the_password_and_all(self):
        client = self.stage.player("g:Ann", "0,30,800,600")
        client.wait_line("DialogConnection::open_waiting_page")
        client.activate("Connection")
        client.keys("Tab", "space")
        client.wait_line("password copied")
        self.assertEqual(self.stage.clipboard(), "secret")
        client.keys("Tab", "space")
        client.wait_line("all connections copied")
        self.assertEqual(self.stage.clipboard(),
                         f"127.0.0.1:{self.stage.port},Ann,g,secret\nChange username!")

    def test_without_arguments_nobody_connects(self):
        client = self.stage.client("group1:Nilo")
        client.wait_line("user 'group1:Nilo'")
        client.window("vork2D/v5")
        self.assertEqual(client.quit(), 0)
        self.assertEqual(self.stage.frames, [])
        self.assertEqual(client.count_starting("Window::try_connect"), 0)
        self.assertEqual(client.errors(), [])


if __name__ == "__main__":
    unittest.main()
