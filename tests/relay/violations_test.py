"""What breaks the protocol is closed or bounded, and a pair that plays meanwhile never feels it."""

import concurrent.futures
import contextlib
import os
import struct
import unittest

from raw_line import BINARY, CLOSE, CONTINUATION, PING, PONG, TEXT, Line, frame, request
from relay_program import STALL, Relay, login, play
from witness import Witness

def close(code, reason=b""):
    return frame(CLOSE, struct.pack("!H", code) + reason)


MEMBER = frame(TEXT, login("v:a", "pw").encode())


def fragments(count, size):
    yield frame(TEXT, b" " * size, fin=0)
    for _ in range(count):
        yield frame(CONTINUATION, b" " * size, fin=0)


# What is sent before TLS; the relay has to end it without a word of its own, or with an alert.
NO_TLS = {
    "plain HTTP": request(),
    "zeros": bytes(1000),
    "random bytes": os.urandom(1000),
    "a plain frame": frame(TEXT, b"{}"),
    "a record of 65,535 bytes": b"\x16\x03\x01\xff\xff" + bytes(1000),
    "an alert first": b"\x15\x03\x03\x00\x02\x02\x28",
    "application data first": b"\x17\x03\x03\x00\x05hello",
    "an SSL 2 hello": b"\x80\x2e\x01\x00\x02\x00\x15\x00\x00\x00\x10" + bytes(40),
    "half a hello": b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03" + bytes(32),
    "one byte": b"\x16",
    "nothing": b"",
}

# The status of the answer to what is no upgrade.
NO_UPGRADE = {
    "another path": (request("GET / HTTP/1.1"), 404),
    "no query": (request("GET /ws/chat HTTP/1.1"), 404),
    "another query": (request("GET /ws/chat?sessid=other HTTP/1.1"), 404),
    "a longer query": (request("GET /ws/chat?sessid=play&x=1 HTTP/1.1"), 404),
    "a slash too many": (request("GET /ws/chat/?sessid=play HTTP/1.1"), 404),
    "a full address": (request("GET https://x/ws/chat?sessid=play HTTP/1.1"), 404),
    "no upgrade": (request(Upgrade=None, Connection=None), 426),
    "another upgrade": (request(Upgrade="h2c"), 426),
    "POST": (request("POST /ws/chat?sessid=play HTTP/1.1"), 426),
    "HTTP 1.0": (request("GET /ws/chat?sessid=play HTTP/1.0"), 426),
    "HTTP 2": (b"PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", 400),
    "no key": (request(Sec_WebSocket_Key=None), 400),
    "a key too long": (request(Sec_WebSocket_Key="x" * 100), 400),
    "no version": (request(Sec_WebSocket_Version=None), 400),
    "an old version": (request(Sec_WebSocket_Version="8"), 426),
    "no host": (request(Host=None), 400),
    "a header of 10,000 bytes": (request(Cookie="x" * 10000), 400),
    "a header line without colon": (b"GET /ws/chat?sessid=play HTTP/1.1\r\nnonsense\r\n\r\n", 400),
    "a zero in a header": (request(Cookie="a\0b"), 400),
    "a word that is no request": (b"hello\r\n\r\n", 400),
    "a body": (request(Content_Length="5") + b"hello", 400),
    "a frame before the answer": (request() + MEMBER, 400),
    "half a request": (request()[:60], 408),
    "a request without end": (request()[:-2], 408),
}

# What is sent over an open WebSocket, and the close codes one of which ends it.
FRAMES = {
    "an unmasked text": ([MEMBER, frame(TEXT, b"{}", mask=None)], {1002}),
    "an unmasked ping": ([MEMBER, frame(PING, mask=None)], {1002}),
    "an unmasked close": ([MEMBER, frame(CLOSE, mask=None)], {1002}),
    "an unmasked login": ([frame(TEXT, login("v:a", "pw").encode(), mask=None)], {1002}),
    **{f"reserved bit {bit} on a text": ([MEMBER, frame(TEXT, b"{}", rsv=bit)], {1002})
       for bit in (1, 2, 4)},
    "a reserved bit on a ping": ([MEMBER, frame(PING, rsv=4)], {1002}),
    "a reserved bit on a continuation":
        ([MEMBER, frame(TEXT, b"{", fin=0), frame(CONTINUATION, b"}", rsv=2)], {1002}),
    **{f"opcode {code}": ([MEMBER, frame(code, b"x")], {1002})
       for code in (3, 4, 5, 6, 7, 11, 12, 13, 14, 15)},
    "a ping in fragments": ([MEMBER, frame(PING, b"x", fin=0)], {1002}),
    "a pong in fragments": ([MEMBER, frame(PONG, b"x", fin=0)], {1002}),
    "a close in fragments": ([MEMBER, frame(CLOSE, b"\x03\xe8", fin=0)], {1002}),
    "a ping of 126 bytes": ([MEMBER, frame(PING, b"x" * 126)], {1002}),
    "a pong of 126 bytes": ([MEMBER, frame(PONG, b"x" * 126)], {1002}),
    "a close of 126 bytes": ([MEMBER, close(1000, b"x" * 124)], {1002}),
    "a ping of 70,000 bytes": ([MEMBER, frame(PING, b"x" * 70000)], {1002}),
    "a ping with a long form": ([MEMBER, frame(PING, b"x", form=16)], {1002}),
    "a continuation of nothing": ([MEMBER, frame(CONTINUATION, b"{}")], {1002}),
    "a text inside a text": ([MEMBER, frame(TEXT, b"{", fin=0), frame(TEXT, b"}")], {1002}),
    "a binary inside a text": ([MEMBER, frame(TEXT, b"{", fin=0), frame(BINARY, b"}")], {1002}),
    "a short length in 16 bits": ([MEMBER, frame(TEXT, b"{}", form=16)], {1002}),
    "a short length in 64 bits": ([MEMBER, frame(TEXT, b"{}", form=64)], {1002}),
    "a medium length in 64 bits": ([MEMBER, frame(TEXT, b" " * 200, form=64)], {1002}),
    "a length of 2^63": ([MEMBER, frame(TEXT, b"x", size=1 << 63)], {1002, 1008}),
    "a length of 2^64 - 1": ([MEMBER, frame(TEXT, b"x", size=(1 << 64) - 1)], {1002, 1008}),
    "a length of 2^62 and silence": ([MEMBER, frame(TEXT, b"x", size=1 << 62)], {1008}),
    "a length of 2^62 and data": ([MEMBER, frame(TEXT, b" " * 20000, size=1 << 62)], {1009}),
    "a continuation of 2^62":
        ([MEMBER, frame(TEXT, b"{", fin=0), frame(CONTINUATION, b" " * 20000, size=1 << 62)],
         {1009}),
    "a text of 16,385 bytes": ([MEMBER, frame(TEXT, b" " * 16385)], {1009}),
    "a binary of 16,385 bytes": ([MEMBER, frame(BINARY, b" " * 16385)], {1009}),
    "a text of 1 MiB": ([MEMBER, frame(TEXT, b" " * (1 << 20))], {1009}),
    "fragments without end": ([MEMBER, *fragments(2000, 10)], {1009}),
    "large fragments without end": ([MEMBER, *fragments(50, 4000)], {1009}),
    "empty fragments without end": ([MEMBER, *fragments(200000, 0)], {1008}),
    "bad UTF-8: a lone byte": ([MEMBER, frame(TEXT, b"\xff")], {1007}),
    "bad UTF-8: a lone continuation": ([MEMBER, frame(TEXT, b'{"a":"\x80"}')], {1007}),
    "bad UTF-8: overlong": ([MEMBER, frame(TEXT, b"\xc0\xaf")], {1007}),
    "bad UTF-8: a surrogate": ([MEMBER, frame(TEXT, b"\xed\xa0\x80")], {1007}),
    "bad UTF-8: above the last": ([MEMBER, frame(TEXT, b"\xf4\x90\x80\x80")], {1007}),
    "bad UTF-8: cut off": ([MEMBER, frame(TEXT, b"{}\xe2\x82")], {1007}),
    "bad UTF-8: over two fragments":
        ([MEMBER, frame(TEXT, b"\xe2", fin=0), frame(CONTINUATION, b"\x28\xa1")], {1007}),
    "bad UTF-8: before the login": ([frame(TEXT, b"\xff")], {1007}),
    "a close of one byte": ([MEMBER, frame(CLOSE, b"\x03")], {1002}),
    **{f"a close with the code {code}": ([MEMBER, close(code)], {1002})
       for code in (0, 999, 1004, 1005, 1006, 1015, 2000)},
    "a close with bad UTF-8": ([MEMBER, close(1000, b"\xff\xfe")], {1002, 1007}),
    "frames behind a close": ([MEMBER, close(1000), MEMBER, frame(TEXT, b"\xff")], {1000}),
    "two closes": ([MEMBER, close(1000), close(1001)], {1000}),
    "half a header and silence": ([MEMBER, frame(TEXT, b"{}")[:1]], {1008}),
    "half a mask and silence": ([MEMBER, frame(TEXT, b"{}")[:4]], {1008}),
    "half a text and silence": ([MEMBER, frame(TEXT, b" " * 100)[:50]], {1008}),
    "a binary before the login": ([frame(BINARY, b"{}")], {1008}),
    "a text of 16,385 bytes before the login": ([frame(TEXT, b" " * 16385)], {1008}),
    "an open fragment and silence": ([MEMBER, frame(TEXT, b"{", fin=0)], {1008}),
    "silence before the login": ([], {1008}),
    "random bytes": ([os.urandom(5000)], {1002, 1007, 1008, 1009}),
    "a flood of pings": ([MEMBER, frame(PING, b"x" * 125) * 20000], {1008}),
    "a flood of pongs": ([MEMBER, frame(PONG) * 20000], {1008}),
    "a flood of texts": ([MEMBER, frame(TEXT, play("v:a").encode()) * 20000], {1008}),
    "a flood before the login": ([frame(PING) * 20000], {1008}),
}


def run_without_tls(relay, data):
    with contextlib.closing(Line(relay, tls=False)) as line:
        return line.read_until_end(data)


def run_request(relay, data):
    """The status of the answer, None if the line does not end."""
    with contextlib.closing(Line(relay)) as line:
        return int(line.received[9:12] or b"0") if line.read_until_end(data) else None


def run_frames(relay, frames):
    """The code of the close frame, None if the line does not end."""
    with contextlib.closing(Line(relay)) as line:
        line.send(request())
        line.read_upgrade()
        return line.close_code() if line.read_until_end(b"".join(frames)) else None


def run_garbage_over_tls(relay):
    with contextlib.closing(Line(relay)) as line:
        line.send(request())
        line.read_upgrade()
        os.write(line.socket.fileno(), b"\x17\x03\x03\x00\x20" + bytes(32))
        return line.read_until_end()


class Violations(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.relay = Relay("--handshake-seconds", "2", "--login-seconds", "2", "--ping-seconds", "1",
                          "--silence-seconds", "2", "--max-connections-per-address", "1000",
                          "--failed-logins", "100000", "--bytes-per-second", "300000",
                          "--burst-seconds", "1", "--frames-per-second", "2500")
        cls.addClassCleanup(cls.relay.__exit__)
        cls.witness = Witness(cls.relay)
        cls.addClassCleanup(cls.witness.stop)

    def run_rows(self, rows, run):
        """All rows side by side, as on a bad day. What each came to, by its title."""
        self.witness.forget()
        with concurrent.futures.ThreadPoolExecutor(16) as pool:
            running = {title: pool.submit(run, self.relay, row) for title, row in rows.items()}
        seen = self.witness.take()
        self.assertGreater(seen.messages, 0, "the others go on playing")
        self.assertLess(seen.longest_ms, STALL * 1000, "and never feel it")
        return {title: result.result() for title, result in running.items()}

    def test_what_is_no_tls_ends(self):
        results = self.run_rows(NO_TLS, run_without_tls)
        self.assertEqual(results, {title: True for title in NO_TLS})

    def test_what_is_no_upgrade_is_answered(self):
        rows = {title: data for title, (data, _) in NO_UPGRADE.items()}
        results = self.run_rows(rows, run_request)
        self.assertEqual(results, {title: status for title, (_, status) in NO_UPGRADE.items()})

    def test_what_is_no_good_frame_ends_with_its_code(self):
        rows = {title: unique(title, frames) for title, (frames, _) in FRAMES.items()}
        results = self.run_rows(rows, run_frames)
        wrong = {title: code for title, code in results.items() if code not in FRAMES[title][1]}
        self.assertEqual(wrong, {})

    def test_garbage_inside_an_open_line_ends_it(self):
        self.assertTrue(run_garbage_over_tls(self.relay))

    def test_lines_that_break_at_any_point_leave_an_empty_group(self):
        whole = MEMBER + frame(TEXT, play("v:a").encode())
        for cut in range(0, len(whole), 7):
            with contextlib.closing(Line(self.relay)) as line:
                line.send(request())
                line.read_upgrade()
                line.send(whole[:cut])
        with contextlib.closing(Line(self.relay)) as member:
            member.send(request())
            member.read_upgrade()
            member.send(frame(TEXT, login("v:z", "another password").encode()))
            self.assertIn(b'"extraData":"v:z"', member.socket.recv(4096))

    def test_there_are_enough_of_them(self):
        self.assertGreaterEqual(len(NO_TLS) + len(NO_UPGRADE) + len(FRAMES), 60)


def unique(title, frames):
    """The same frames with a login into a group that no other row uses."""
    name = "v" + "".join(c for c in title if c.isalnum())[:50] + ":a"
    mine = frame(TEXT, login(name, "pw").encode())
    return [mine if data is MEMBER else data for data in frames]


if __name__ == "__main__":
    unittest.main()
