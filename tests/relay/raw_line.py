"""A connection to the relay byte by byte, for what no library would send."""

import contextlib
import select
import socket
import ssl
import struct
import time

from relay_program import LIMIT, client_context

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


def first_frame(data):
    """The opcode and payload of a frame of the relay's, and what is behind it; None if it is not
    whole yet."""
    start = 4 if data[1:2] == b"\x7e" else 2
    if len(data) < start:
        return None
    size = struct.unpack("!H", data[2:4])[0] if start == 4 else data[1]
    end = start + size
    return (data[0] & 15, data[start:end], data[end:]) if len(data) >= end else None


class Line:
    """A raw connection, from an address of this machine if one is given; what it reads is kept."""

    def __init__(self, relay, tls=True, address=None):
        self.socket = socket.create_connection((relay.host, relay.port), LIMIT,
                                               source_address=address and (address, 0))
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

    def read_text(self):
        """The next frame, which has to be a text."""
        while (found := first_frame(self.received)) is None:
            data = self.socket.recv(4096)
            assert data, "the relay has closed the line"
            self.received += data
        opcode, payload, self.received = found
        assert opcode == TEXT, (opcode, payload)
        return payload.decode()

    def close_code(self):
        """The code of the close frame among the frames that were received, 0 for none."""
        data = self.received
        while (found := first_frame(data)) is not None:
            opcode, payload, data = found
            if opcode == CLOSE:
                return struct.unpack("!H", payload[:2])[0] if payload else 1005
        return 0
