"""Players that tests drive frame by frame: one behind the real relay, and a relay of the tests' own that says
whatever a test wants, so that a client meets what the real one would never let pass.
"""

import asyncio
import contextlib
import json
import ssl
import threading
import time

import websockets

from stage import LIMIT, Frame, Stage, make_certificate, wait_for

PATH = "/ws/chat?sessid=play"


def message(kind, **fields):
    """A message of the wire with the five fields that each carries."""
    return json.dumps({"type": kind, "subType": "", "from": "g:Eve", "to": "#", "ident": 0, **fields})


def play(cmd, **fields):
    return message("PLAY", game="vork", payload={"cmd": cmd, **fields})


class Driver:
    """One socket to drive, on an event loop with a thread of its own."""

    def __init__(self):
        self.received = []
        self.socket = None
        self.loop = asyncio.new_event_loop()
        self._thread = threading.Thread(target=self.loop.run_forever, daemon=True)
        self._thread.start()

    def run(self, coroutine, limit=LIMIT):
        return asyncio.run_coroutine_threadsafe(coroutine, self.loop).result(limit)

    def close(self):
        if self.socket is not None:
            with contextlib.suppress(Exception):
                self.run(self.socket.close())
        self.loop.call_soon_threadsafe(self.loop.stop)
        self._thread.join(LIMIT)
        self.loop.close()

    def send(self, text, limit=LIMIT):
        self.run(self.socket.send(text), limit)

    def send_steadily(self, texts, per_second, seconds):
        """`per_second` frames in each second, the texts in turn; returns how many went out per second."""
        async def pour():
            start = time.monotonic()
            sent = 0
            while time.monotonic() - start < seconds:
                while sent < per_second * (time.monotonic() - start):
                    await self.socket.send(texts[sent % len(texts)])
                    sent += 1
                await asyncio.sleep(0.002)  # the rate's own pace
            return sent / (time.monotonic() - start)
        return self.run(pour(), seconds + LIMIT)

    def count(self, kind):
        return sum(1 for frame in list(self.received) if frame.json.get("type") == kind)

    async def _listen(self):
        with contextlib.suppress(websockets.ConnectionClosed):
            async for text in self.socket:
                self.received.append(Frame("", True, text))
                await self.on_frame(self.received[-1])


class SecondPlayer(Driver):
    """A player without a window, who logs in at the real relay."""

    def __init__(self, relay_port, name="g:Eve"):
        super().__init__()
        self.name = name
        self.run(self._connect(relay_port))

    async def _connect(self, port):
        trust = ssl.SSLContext(ssl.PROTOCOL_TLS_CLIENT)
        trust.check_hostname = False
        trust.verify_mode = ssl.CERT_NONE
        self.socket = await websockets.connect(f"wss://127.0.0.1:{port}{PATH}", ssl=trust, ping_interval=None,
                                               max_size=2 ** 25, compression=None)
        await self.socket.send(json.dumps({"type": "LOGIN", "subType": "login", "from": self.name, "to": "+",
                                           "ident": 0, "pw": "secret"}))
        asyncio.ensure_future(self._listen())

    async def on_frame(self, frame):
        if frame.json["type"] == "PING":
            await self.socket.send(json.dumps({"type": "PONG", "subType": "", "from": self.name, "to": "+",
                                               "ident": 0}))


class FakeRelay(Driver):
    """A relay that takes one client, welcomes it together with the given names, and says what the test says."""

    def __init__(self, folder, names="g:Ann, g:Eve"):
        super().__init__()
        self._names = names
        self._certificate = make_certificate(folder)
        self.run(self._serve())

    async def _serve(self):
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self._certificate[1], self._certificate[0])
        server = await websockets.serve(self._on_client, "127.0.0.1", 0, ssl=context, ping_interval=None,
                                        max_size=2 ** 25, compression=None)
        self.port = server.sockets[0].getsockname()[1]

    async def _on_client(self, socket):
        self.socket = socket
        await self._listen()

    async def on_frame(self, frame):
        if frame.json["type"] == "LOGIN":
            await self.socket.send(message("CHAT", **{"subType": "welcome", "from": "relay", "text": "hello",
                                                      "extraData": self._names}))

    def ask_for_life(self):
        """Returns when the client has answered a heartbeat, and so has handled all that was sent before."""
        before = self.count("PONG")
        self.send(message("PING"))
        wait_for("the answer to PING", lambda: self.count("PONG") > before)


class FakeRelayStage(Stage):
    """A stage on which the clients talk to a FakeRelay."""

    def __init__(self, names="g:Ann, g:Eve", **options):
        super().__init__(**options)
        self.fake = FakeRelay(self.folder, names)

    @property
    def port(self):
        return self.fake.port

    def close(self):
        for program in reversed(self.programs):
            program.stop()
        self.fake.close()
        super().close()


def resident_bytes(process):
    """What a process holds in memory now."""
    with open(f"/proc/{process.pid}/status", encoding="utf-8") as lines:
        return next(int(line.split()[1]) * 1024 for line in lines if line.startswith("VmRSS:"))
