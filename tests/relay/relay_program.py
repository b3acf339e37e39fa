"""Starts the built relay for a test and talks to it over TLS."""

import asyncio
import contextlib
import json
import os
import re
import signal
import ssl
import subprocess
import tempfile

import websockets

PROGRAM = os.environ["RELAY_PROGRAM"]
TARGET = "/ws/chat?sessid=play"
LIMIT = 10  # seconds until something that is waited for counts as lost


def client_context():
    context = ssl.create_default_context()
    context.check_hostname = False
    context.verify_mode = ssl.CERT_NONE
    return context


class Relay:
    """A relay on a port of its own, with a state folder of its own."""

    def __init__(self, *options, environment=None, state_dir=None):
        self._folder = tempfile.TemporaryDirectory()
        self.state_dir = state_dir or os.path.join(self._folder.name, "state")
        self._log = open(os.path.join(self._folder.name, "log"), "w+b")
        clean = {k: v for k, v in os.environ.items() if not k.startswith("VORK2D_RELAY_")}
        command = [PROGRAM, "--state-dir", self.state_dir, *options]
        if not any(option.split("=")[0] == "--listen" for option in options):
            command += ["--listen", "127.0.0.1:0"]
        self.process = subprocess.Popen(
            command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            env={**clean, **(environment or {})}, text=True, bufsize=1)
        self.lines = []
        self.reach = self.read_line()
        found = re.search(r"wss://(\S+):(\d+)/", self.reach)
        if found is None:
            raise RuntimeError("the relay did not start: " + self.reach)
        self.host, self.port = found[1].strip("[]"), int(found[2])
        os.set_blocking(self.process.stdout.fileno(), True)

    def read_line(self):
        line = self.process.stdout.readline().rstrip("\n")
        self.lines.append(line)
        return line

    def read_until(self, pattern):
        """The first line of the log that matches; the relay is quiet for no longer than the test's
        own time limit."""
        while True:
            line = self.read_line()
            if re.search(pattern, line):
                return line
            if line == "" and self.process.poll() is not None:
                raise AssertionError(f"{pattern!r} is not in {self.lines}")

    def connect(self, **options):
        return websockets.connect(f"wss://{self.host}:{self.port}{TARGET}",
                                  ssl=client_context(), compression=None, ping_interval=None,
                                  max_queue=None, close_timeout=2, **options)

    def stop(self, number=signal.SIGTERM):
        self.process.send_signal(number)
        status = self.process.wait(LIMIT)
        self.lines += self.process.stdout.read().splitlines()
        return status

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.process.stdout.close()
        self._log.close()
        self._folder.cleanup()


def message(kind, name, to, **more):
    fields = {"type": kind, "subType": "", "from": name, "to": to, "ident": 0}
    return json.dumps({**fields, **more})


def login_text(name, password=""):
    return message("LOGIN", name, "+", subType="login", pw=password)
