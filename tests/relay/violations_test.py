"""What breaks the protocol is closed or bounded, and a pair that plays meanwhile never feels it."""

import asyncio
import concurrent.futures
import contextlib
import os
import select
import socket
import ssl
import struct
import threading
import time
import unittest

from relay_program import LIMIT, STALL, Relay, client_context, login, play, receive_text

# What a socket says that has nothing to read or no room to write.
WAITS = (ssl.SSLWantReadError, ssl.SSLWantWriteError, BlockingIOError)

CONTINUATION, TEXT, BINARY, CLOSE, PING, PONG = 0, 1, 2, 8, 9, 10

REQUEST = {
    "Host": "relay", "Upgrade": "websocket", "Connection": "Upgrade",
    "Sec-WebSocket-Key": "dGhlIHNhbXBsZSBub25jZQ==", "Sec-WebSocket-Version": "13"}


def request(line="GET /ws/chat?sessid=play HTTP/1.1", **changes):
    """The request of a good client, with headers changed, or left out where a change is None."""
    headers = {**REQUEST, **{name.replace("_", "-"): value for name, value in changes.items()}}
    lines = [line] + [f"{name}: {value}" for name, value in headers.items() if value is not None]
    return ("\r\n".join(lines) + "\r\n\r\n").encode()


def frame(opcode, payload=b"", fin=1, rsv=0, mask=b"\x11\x22\x33\x44", size=None, form=None):
    """A frame as a client sends it; `size` is the length it claims, `form` how it is written."""
    size = len(payload) if size is None else size
    form = form or (7 if size < 126 else 16 if size < 65536 else 64)
    head = bytes([fin << 7 | rsv << 4 | opcode])
    flag = 0x80 if mask else 0
    head += {7: lambda: bytes([flag | size]), 16: lambda: struct.pack("!BH", flag | 126, size),
             64: lambda: struct.pack("!BQ", flag | 127, size)}[form]()
    if mask:
        payload = bytes(byte ^ mask[i % 4] for i, byte in enumerate(payload))
    return head + (mask or b"") + payload


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


class Line:
    """A raw connection; what it reads is kept."""

    def __init__(self, relay, tls=True):
        self.socket = socket.create_connection((relay.host, relay.port), LIMIT)
        if tls:
            self.socket = client_context().wrap_socket(self.socket)
        self.received = b""

    def send(self, data):
        # The relay may have closed the line before all of it was sent: that is what is tested.
        with contextlib.suppress(OSError):
            self.socket.sendall(data)

    def read_until_end(self, outgoing=b""):
        """Sends and reads at the same time, in one thread as TLS wants it. False if the line does
        not end in time."""
        self.socket.setblocking(False)
        until = time.monotonic() + LIMIT
        while time.monotonic() < until:
            try:
                while data := self.socket.recv(65536):
                    self.received += data
                return True
            except WAITS:
                pass
            except OSError:
                return True  # a reset or a broken TLS is an end too
            try:
                outgoing = outgoing[self.socket.send(outgoing[:16384]):] if outgoing else b""
            except WAITS:
                pass
            except OSError:
                outgoing = b""  # the relay has closed its side: what it said is still to be read
            select.select([self.socket], [self.socket] if outgoing else [], [], LIMIT)
        return False

    def close(self):
        self.socket.close()

    def read_upgrade(self):
        while b"\r\n\r\n" not in self.received:
            self.received += self.socket.recv(4096)
        assert self.received.startswith(b"HTTP/1.1 101"), self.received
        self.received = self.received.split(b"\r\n\r\n", 1)[1]

    def close_code(self):
        """The code of the close frame among the frames that were received, 0 for none."""
        data = self.received
        while len(data) >= 2:
            opcode, size, start = data[0] & 15, data[1], 2
            if size == 126:
                size, start = struct.unpack("!H", data[2:4])[0], 4
            if opcode == CLOSE:
                return struct.unpack("!H", data[start:start + 2])[0] if size >= 2 else 1005
            data = data[start + size:]
        return 0


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
        cls.witnesses = Witnesses(cls.relay)
        cls.addClassCleanup(cls.witnesses.stop)

    def run_rows(self, rows, run):
        """All rows side by side, as on a bad day. What each came to, by its title."""
        self.witnesses.take_rounds()
        with concurrent.futures.ThreadPoolExecutor(16) as pool:
            running = {title: pool.submit(run, self.relay, row) for title, row in rows.items()}
        rounds, slowest = self.witnesses.take_rounds()
        self.assertGreater(rounds, 0, "the others go on playing")
        self.assertLess(slowest, STALL, "and never feel it")
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


class Witnesses:
    """A pair that plays all the time in a thread of its own, and fails loudly if it can not."""

    def __init__(self, relay):
        self._relay = relay
        self._rounds = 0
        self._slowest = 0
        self._begun = None  # of the round that is played now
        self._fault = None
        self._go_on = True
        self._thread = threading.Thread(target=lambda: asyncio.run(self._play()))
        self._thread.start()

    async def _play(self):
        try:
            pair = await self._relay.pair("witness")
            while self._go_on:
                self._begun = time.monotonic()
                for sender, taker, name in ((0, 1, "witness:a"), (1, 0, "witness:b")):
                    text = play(name, self._rounds)
                    await pair[sender].send(text)
                    while (news := await receive_text(pair[taker])) != text:
                        assert '"PING"' in news, news
                self._slowest = self._slowest_so_far()
                self._begun = None
                self._rounds += 1
                await asyncio.sleep(0.01)  # a player's pace, not a flood
        except Exception as fault:  # pylint: disable=broad-except
            self._fault = fault

    def _slowest_so_far(self):
        begun = self._begun
        return self._slowest if begun is None else max(self._slowest, time.monotonic() - begun)

    def take_rounds(self):
        """Rounds since the last call and the seconds of the slowest, which may not be over yet;
        raises what has gone wrong."""
        if self._fault is not None:
            raise self._fault
        result = self._rounds, self._slowest_so_far()
        self._rounds, self._slowest = 0, 0
        return result

    def stop(self):
        self._go_on = False
        self._thread.join(LIMIT)


if __name__ == "__main__":
    unittest.main()
