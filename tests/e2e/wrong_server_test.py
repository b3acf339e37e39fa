"""Instead of a relay something else answers, or nothing does. The client says so, keeps its form for another attempt,
and can be closed."""

import unittest

from raw_relay import RawRelayStage, finish


class WrongServerTest(unittest.TestCase):
    def setUp(self):
        self.stage = RawRelayStage()
        self.addCleanup(self.stage.close)

    def start(self, *arguments):
        """A client with its form open."""
        client = self.stage.client("g:Ann", "--user", "g:Ann", "--pass", "secret", "--__bounds", "0,30,800,600",
                                   *arguments)
        client.window("vork2D/v5")
        client.open_connection_dialog()
        return client

    def connect(self):
        """A client and the bare socket from which its first words have been read: they want TLS."""
        client = self.start()
        client.keys("Return")
        wire = self.stage.raw.accept_wire()
        self.assertEqual(wire.recv(2), b"\x16\x03")
        return client, wire

    def check_failed(self, client):
        client.wait_match(r"^GWebSocket error (\d+ => )?<.+>")
        self.assertEqual(len(client.errors()), 1, client.errors())
        self.check_next_attempt(client)

    def check_next_attempt(self, client):
        """Now there is a relay, and the form is where it was."""
        client.activate("Connection")
        client.keys("Return")
        self.stage.raw.accept().welcome()
        client.wait_line("STATE CHANGED, states {CONNECTED1 | CONNECTED2}")
        self.assertEqual(client.quit(), 0)

    def test_a_server_that_speaks_first_and_no_tls(self):
        client, wire = self.connect()
        wire.sendall(b"220 mail.example ESMTP\r\n")
        self.check_failed(client)

    def test_a_server_that_hangs_up(self):
        client, wire = self.connect()
        finish(wire)
        self.check_failed(client)

    def test_a_websocket_server_without_tls(self):
        client, wire = self.connect()
        wire.sendall(b"HTTP/1.1 400 Bad Request\r\nConnection: close\r\nContent-Length: 0\r\n\r\n")
        finish(wire)
        self.check_failed(client)

    def test_a_web_server_without_websockets(self):
        client = self.start()
        client.keys("Return")
        self.stage.raw.accept().send(b"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n")
        self.check_failed(client)

    def test_a_server_that_says_nothing_leaves_the_next_attempt_open(self):
        client, _ = self.connect()
        self.check_next_attempt(client)

    def test_a_server_that_says_nothing_does_not_keep_the_game_from_quitting(self):
        client, _ = self.connect()
        client.keys("Escape")
        client.wait_line("DialogConnection::~DialogConnection")
        self.assertEqual(client.quit(), 0)

    def test_an_unknown_host(self):
        client = self.start("--server", ".".join(["unknown" * 9] * 5))  # too long for any name server to be asked
        client.keys("Return")
        client.wait_match(r"^GWebSocket error 2 => <.+>$")
        client.wait_line("Window::disconnected")
        client.window("Connection")
        client.keys("Escape")
        client.wait_line("DialogConnection::~DialogConnection")
        self.assertEqual(client.quit(), 0)


if __name__ == "__main__":
    unittest.main()
