"""A relay of the tests' own on bare sockets, for what no library would do: it leaves bytes unread, speaks no TLS or no
WebSocket, and ends in the middle of a record or a frame. It takes one client at a time and blocks, with a limit.
"""

import base64
import contextlib
import hashlib
import re
import socket
import ssl
import struct
import threading

from opponent import message
from stage import LIMIT, Stage, make_certificate

TEXT, PING = 1, 9


def frame(opcode, payload):
    """A frame as a relay sends it: unmasked and whole."""
    size = len(payload)
    head = bytes([0x80 | opcode])
    if size < 126:
        head += bytes([size])
    elif size < 2 ** 16:
        head += bytes([126]) + struct.pack(">H", size)
    else:
        head += bytes([127]) + struct.pack(">Q", size)
    return head + payload


def finish(wire):
    """Says that no more will come (FIN)."""
    wire.shutdown(socket.SHUT_WR)


def reset(wire):
    """Ends at once (RST)."""
    wire.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    wire.close()


class Connection:
    """One client over TLS. What is sent is sealed into records here and not by a socket, so that a test can cut
    them."""

    def __init__(self, wire, context):
        self.wire = wire
        self._incoming, self._outgoing = ssl.MemoryBIO(), ssl.MemoryBIO()
        self._tls = context.wrap_bio(self._incoming, self._outgoing, server_side=True)
        self._unread = b""
        self._with_more(self._tls.do_handshake)
        self.wire.sendall(self._outgoing.read())

    def _with_more(self, operation):
        """What the operation returns once enough has come from the wire."""
        while True:
            try:
                return operation()
            except ssl.SSLWantReadError:
                self.wire.sendall(self._outgoing.read())
                data = self.wire.recv(65536)
                if not data:
                    raise ConnectionError("the client has gone") from None
                self._incoming.write(data)

    def sealed(self, data):
        """The bytes that carry this on the wire."""
        self._tls.write(data)
        return self._outgoing.read()

    def send(self, data):
        self.wire.sendall(self.sealed(data))

    def _take(self, count):
        while len(self._unread) < count:
            data = self._with_more(lambda: self._tls.read(65536))
            if not data:
                raise ConnectionError("the client has closed")
            self._unread += data
        taken, self._unread = self._unread[:count], self._unread[count:]
        return taken

    def upgrade(self):
        """The opening handshake of the WebSocket protocol."""
        request = b""
        while not request.endswith(b"\r\n\r\n"):
            request += self._take(1)
        key = re.search(rb"(?i)\r\nsec-websocket-key: *(\S+)", request).group(1)
        accept = base64.b64encode(hashlib.sha1(key + b"258EAFA5-E914-47DA-95CA-C5AB0DC85B11").digest())
        self.send(b"HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                  b"Sec-WebSocket-Accept: " + accept + b"\r\n\r\n")

    def receive(self):
        """What the next frame of the client carries."""
        size = self._take(2)[1] & 0x7f
        if size == 126:
            size, = struct.unpack(">H", self._take(2))
        elif size == 127:
            size, = struct.unpack(">Q", self._take(8))
        mask = self._take(4)
        return bytes(byte ^ mask[i % 4] for i, byte in enumerate(self._take(size)))

    def welcome(self, names="g:Ann, g:Eve"):
        """Takes the login, whatever it says, and tells who is there."""
        self.upgrade()
        self.receive()
        self.say("CHAT", **{"subType": "welcome", "from": "relay", "text": "hello", "extraData": names})

    def say(self, kind, **fields):
        self.send(frame(TEXT, message(kind, **fields).encode()))


class RawRelay:
    def __init__(self, folder):
        key, certificate = make_certificate(folder)
        self._context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        self._context.load_cert_chain(certificate, key)
        self._listener = socket.create_server(("127.0.0.1", 0))
        self._listener.settimeout(LIMIT)
        self._wires = []
        self.port = self._listener.getsockname()[1]

    def accept_wire(self):
        """The bare socket of the next client."""
        wire, _ = self._listener.accept()
        wire.settimeout(LIMIT)
        self._wires.append(wire)
        return wire

    def accept(self):
        """The next client, behind its TLS handshake."""
        return Connection(self.accept_wire(), self._context)

    def close(self):
        for wire in [*self._wires, self._listener]:
            wire.close()


class RawRelayStage(Stage):
    """A stage on which the clients talk to a RawRelay."""

    def __init__(self, **options):
        super().__init__(**options)
        self.raw = RawRelay(self.folder)

    @property
    def port(self):
        return self.raw.port

    def close(self):
        self.raw.close()
        super().close()


class Pour(threading.Thread):
    """Sends the same bytes as fast as the client takes them, and reads nothing. Ends with the connection."""

    def __init__(self, connection, data):
        super().__init__(daemon=True)
        self.sent = 0
        self._connection = connection
        self._data = data
        self.start()

    def run(self):
        with contextlib.suppress(OSError):
            while True:
                self._connection.send(self._data)
                self.sent += len(self._data)
