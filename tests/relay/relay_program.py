"""Starts the built relay for a test and talks to it over TLS with a client that is not ours."""

import asyncio
import json
import os
import re
import signal
import ssl
import subprocess
import tempfile
import threading
import unittest
import urllib.request

import websockets

os.environ["no_proxy"] = "*"  # the relay is on this machine, whatever proxy the user's shell names
PROGRAM = os.environ["RELAY_PROGRAM"]
TARGET = "/ws/chat?sessid=play"
LIMIT = 20  # seconds until something that is waited for counts as lost
# Seconds that no message of a pair takes, busy as the machine may be, unless the relay stands
# still.
STALL = 5


def client_context():
    context = ssl.create_default_context()
    context.check_hostname = False
    context.verify_mode = ssl.CERT_NONE
    return context


class Relay:
    """A relay on a free port, with a state folder of its own. `prefix` is a command that runs it."""

    def __init__(self, *options, environment=None, state_dir=None, prefix=()):
        self._folder = tempfile.TemporaryDirectory()
        self.state_dir = state_dir or os.path.join(self._folder.name, "state")
        clean = {k: v for k, v in os.environ.items() if not k.startswith("VORK2D_RELAY_")}
        self.process = subprocess.Popen(
            [*prefix, PROGRAM, "--state-dir", self.state_dir, "--listen", "127.0.0.1:0", *options],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
            env={**clean, **(environment or {})})
        self.lines = []
        self._news = threading.Condition()
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self.reach = self.wait_for_line("wss://|vork2d-relay: ")
        found = re.search(r"wss://(\S+):(\d+)/", self.reach)
        if found is None:
            raise RuntimeError("the relay did not start: " + self.reach)
        self.host, self.port = found[1].strip("[]"), int(found[2])

    def _read(self):
        for line in self.process.stdout:
            with self._news:
                self.lines.append(line.rstrip("\n"))
                self._news.notify_all()
        with self._news:
            self.lines.append("<end of output>")
            self._news.notify_all()

    def wait_for_line(self, pattern):
        """The first line of the output that matches."""
        def find():
            return next((line for line in self.lines if re.search(pattern, line)), None)
        with self._news:
            self._news.wait_for(lambda: find() or "<end of output>" in self.lines, LIMIT)
            if find() is None:
                raise AssertionError(f"{pattern!r} is not in {self.lines}")
            return find()

    def connect(self, target=TARGET, **options):
        return websockets.connect(f"wss://{self.host}:{self.port}{target}", ssl=client_context(),
                                  compression=None, ping_interval=None, max_queue=None,
                                  max_size=None, close_timeout=1, **options)

    async def member(self, name, password="secret", **options):
        """A client that is logged in and has read its welcome."""
        client = await self.connect(**options)
        await client.send(login(name, password))
        welcome = await receive(client)
        assert welcome["subType"] == "welcome", welcome
        return client

    async def pair(self, group):
        first = await self.member(group + ":a")
        second = await self.member(group + ":b")
        join = await receive(first)
        assert join["subType"] == "join", join
        return first, second

    def metric(self, name):
        """What the status of this relay, which was asked for with --status, says of it."""
        address = re.search(r'status address="([^"]+)"', self.wait_for_line("status address="))[1]
        with urllib.request.urlopen(f"http://{address}/metrics", timeout=LIMIT) as answer:
            found = re.search(rf"^vork2d_relay_{name} (\S+)$", answer.read().decode(), re.M)
        return int(found[1])

    def stop(self, number=signal.SIGTERM):
        self.process.send_signal(number)
        status = self.process.wait(LIMIT)
        self._reader.join(LIMIT)
        return status

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self._reader.join(LIMIT)
        self.process.stdout.close()
        self._folder.cleanup()


def message(kind, name, to, **more):
    fields = {"type": kind, "subType": "", "from": name, "to": to, "ident": 0}
    return json.dumps({**fields, **more})


def login(name, password):
    return message("LOGIN", name, "+", subType="login", pw=password)


def play(name, number=0):
    return message("PLAY", name, "#", game="vork", payload={"cmd": "n", "n": number})


async def receive_text(client):
    return await asyncio.wait_for(client.recv(), LIMIT)


async def receive(client):
    return json.loads(await receive_text(client))


async def receive_until_closed(client):
    """All messages up to the close, and the code and reason of the close."""
    messages = []
    try:
        while True:
            messages.append(await receive(client))
    except websockets.ConnectionClosed:
        return messages, client.close_code, client.close_reason


async def refusal(client):
    """What a refused client is told: (code of the ERROR, its text, close code)."""
    messages, code, reason = await receive_until_closed(client)
    error = next(m for m in messages if m["type"] == "ERROR")
    chat = messages[messages.index(error) + 1]
    assert (chat["type"], chat["from"], chat["text"]) == ("CHAT", "relay", error["text"]), chat
    assert reason == error["text"], reason
    return error["code"], error["text"], code


class RelayTest(unittest.IsolatedAsyncioTestCase):
    """One relay for each test; `options` of a class go to its relays."""

    options = ()

    def setUp(self):
        self.relay = Relay(*self.options)
        self.addCleanup(self.relay.__exit__)

    async def asyncSetUp(self):
        asyncio.get_running_loop().set_debug(False)  # a busy machine is no fault to warn of
