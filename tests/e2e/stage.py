"""A stage for whole-program tests: a virtual screen with a window manager, the real relay over TLS, and real clients,
each with a configuration folder of its own. Every frame passes a recorder on its way between a client and the relay.

Nothing here sleeps to wait for something: each wait is for an event, with a limit.
"""

import asyncio
import contextlib
import json
import os
import pathlib
import re
import shutil
import signal
import ssl
import subprocess
import tempfile
import threading
import time
from dataclasses import dataclass, field

import websockets

os.environ["no_proxy"] = "*"  # all of it is on this machine, whatever proxy the user's shell names
BIN = pathlib.Path(os.environ["VORK2D_BIN"])
LIMIT = float(os.environ.get("VORK2D_E2E_LIMIT", "30"))  # seconds that a wait may take on a busy machine

# Where buttons stand: middle in the game's own window, from its lower edge.
START_BUTTON = (22, -15)
OPTIONS_BUTTON = (66, -15)
CONNECT_BUTTON = (160, -15)


def wait_for(what, condition, limit=LIMIT):
    """Returns the first true value of condition(); fails with the text `what` after `limit` seconds."""
    deadline = time.monotonic() + limit
    while time.monotonic() < deadline:
        value = condition()
        if value:
            return value
        time.sleep(0.005)
    raise AssertionError(f"waited {limit:.0f} s in vain for {what}")


@dataclass
class Frame:
    """One text frame: `up` from the client to the relay, or down to it."""

    who: str
    up: bool
    text: str
    at: float = field(default_factory=time.monotonic)

    @property
    def json(self):
        return json.loads(self.text)

    @property
    def cmd(self):
        payload = self.json.get("payload")
        return payload.get("cmd") if isinstance(payload, dict) else None


def make_certificate(folder):
    """A key and a certificate of our own making, as a friend's relay has them."""
    key, cert = folder / "key.pem", folder / "cert.pem"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost",
         "-keyout", key, "-out", cert],
        check=True, capture_output=True)
    return key, cert


class Recorder:
    """A TLS WebSocket server that hands every frame on to the relay and keeps it."""

    def __init__(self, folder, relay_port):
        self.frames = []
        self._relay_port = relay_port
        self._certificate = make_certificate(folder)
        self._loop = asyncio.new_event_loop()
        self._started = threading.Event()
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()
        self._started.wait(LIMIT)

    def stop(self):
        self._loop.call_soon_threadsafe(self._loop.stop)
        self._thread.join(LIMIT)

    def stop_listening(self):
        """Refuses every connection from now on."""
        async def close():
            self._server.close()
            await self._server.wait_closed()
        asyncio.run_coroutine_threadsafe(close(), self._loop).result(LIMIT)

    def _run(self):
        asyncio.set_event_loop(self._loop)
        self._loop.run_until_complete(self._serve())
        self._loop.run_forever()

    async def _serve(self):
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self._certificate[1], self._certificate[0])
        self._server = await websockets.serve(self._client, "127.0.0.1", 0, ssl=context, ping_interval=None,
                                        max_size=2 ** 25, compression=None)
        self.port = self._server.sockets[0].getsockname()[1]
        self._started.set()

    async def _client(self, client):
        path = client.path if hasattr(client, "path") else client.request.path  # websockets 10 and 15
        trust = ssl.SSLContext(ssl.PROTOCOL_TLS_CLIENT)
        trust.check_hostname = False
        trust.verify_mode = ssl.CERT_NONE
        who = {"name": "?"}
        try:
            relay = await websockets.connect(f"wss://127.0.0.1:{self._relay_port}{path}", ssl=trust,
                                             ping_interval=None, max_size=2 ** 25, compression=None)
        except OSError:
            await client.close(1013)
            return
        await asyncio.gather(self._pump(client, relay, who, True), self._pump(relay, client, who, False))

    async def _pump(self, source, sink, who, up):
        try:
            async for text in source:
                if who["name"] == "?" and up:
                    who["name"] = json.loads(text).get("from", "?")
                self.frames.append(Frame(who["name"], up, text))
                await sink.send(text)
        except websockets.ConnectionClosed:
            pass
        finally:
            code = source.close_code if source.close_code and source.close_code not in (1005, 1006) else 1000
            with contextlib.suppress(Exception):
                await sink.close(code, source.close_reason or "")


class Program:
    """A started program whose standard output is read line by line."""

    def __init__(self, arguments, env):
        self.lines = []
        self.process = subprocess.Popen([str(a) for a in arguments], env=env, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, text=True, errors="replace", bufsize=1)
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.append((time.monotonic(), line.rstrip("\n")))

    def is_running(self):
        return self.process.poll() is None

    def stop(self, limit=LIMIT):
        if self.is_running():
            self.process.send_signal(signal.SIGTERM)
            with contextlib.suppress(subprocess.TimeoutExpired):
                self.process.wait(limit)
        if self.is_running():
            self.process.kill()
        self.process.wait()
        self._reader.join(limit)
        self.process.stdout.close()


class Client(Program):
    """A game in its own window, with its own settings."""

    PREFIX = re.compile(r"^\[\d+\] \[(\w*)\] \[[^]]*\] \[\d+\] ?")

    def __init__(self, stage, name, arguments=(), config=None, trace=True):
        self.stage = stage
        self.name = name
        self.config = config or pathlib.Path(tempfile.mkdtemp(dir=stage.folder))
        env = dict(stage.env, XDG_CONFIG_HOME=str(self.config), HOME=str(self.config))
        level = ["--__log_level", "trace"] if trace else []
        super().__init__([BIN / "vork2d", "--server", f"127.0.0.1:{stage.port}", *level, *arguments], env)

    # --- the log -------------------------------------------------------------------------------------------------

    def log(self):
        """(level word, text) of each line, without number, time and thread."""
        found = []
        for _, line in list(self.lines):
            match = self.PREFIX.match(line)
            found.append((match.group(1), line[match.end():]) if match else ("", line))
        return found

    def texts(self):
        return [text for _, text in self.log()]

    def count(self, text):
        return self.texts().count(text)

    def wait_line(self, text, times=1):
        wait_for(f"{self.name}'s line '{text}'", lambda: self.count(text) >= times)

    def wait_match(self, pattern):
        compiled = re.compile(pattern)
        return wait_for(f"{self.name}'s line like '{pattern}'",
                        lambda: next((m for m in map(compiled.search, self.texts()) if m), None))

    def errors(self):
        return [text for level, text in self.log() if level == "ERR"]

    # --- the window ----------------------------------------------------------------------------------------------

    def windows(self):
        """The ids of the visible windows of this program, dialogs and menus included."""
        out = self.stage.run("xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid), check=False)
        return out.split()

    def window(self, title):
        """The id of the visible window with this title."""
        def find():
            for window in self.windows():
                if self.stage.run("xdotool", "getwindowname", window, check=False).strip() == title:
                    return window
            return None
        return wait_for(f"{self.name}'s window '{title}'", find)

    def activate(self, title):
        window = self.window(title)
        self.stage.run("xdotool", "windowactivate", "--sync", window)
        wait_for("the keyboard", lambda: self.stage.run("xdotool", "getactivewindow", check=False).strip() == window)
        return window

    def keys(self, *keys):
        """To whichever window has the keyboard."""
        self.stage.run("xdotool", "key", "--delay", "30", *keys)

    def press(self, *keys):
        """To the game's own window."""
        self.activate(self.title())
        self.keys(*keys)

    def click(self, x, y):
        """At a point of the game's own window; a negative coordinate counts from the right or lower edge."""
        window = self.activate(self.title())
        width, height = self.shape(window)
        x = x if x >= 0 else x + width
        y = y if y >= 0 else y + height
        self.stage.run("xdotool", "mousemove", "--window", window, str(x), str(y), "click", "1")

    def drag(self, *points):
        """From the first point of the game's own window, with the left button held, past the others to the last."""
        window = self.activate(self.title())
        moves = [["mousemove", "--window", window, str(x), str(y)] for x, y in points]
        self.stage.run("xdotool", *moves[0], "mousedown", "1", *sum(moves[1:], []), "mouseup", "1")

    def shape(self, window):
        """Width and height of a window."""
        shape = dict(line.split("=") for line in self.stage.run("xdotool", "getwindowgeometry", "--shell",
                                                                 window).split())
        return int(shape["WIDTH"]), int(shape["HEIGHT"])

    def resize(self, width, height):
        """The game's own window."""
        window = self.activate(self.title())
        self.stage.run("xdotool", "windowsize", window, str(width), str(height))
        wait_for("the shape", lambda: self.shape(window) == (width, height))

    def open_connection_dialog(self):
        self.click(*CONNECT_BUTTON)
        self.activate("Connection")

    def open_options(self):
        """The pop-up menu; the arrow keys walk it."""
        before = self.count_starting("Window::on_menu_options")
        self.click(*OPTIONS_BUTTON)
        wait_for("the menu", lambda: self.count_starting("Window::on_menu_options") > before)

    def count_starting(self, text):
        return sum(1 for line in self.texts() if line.startswith(text))

    def type(self, text):
        self.stage.run("xdotool", "type", "--delay", "15", text)

    def title(self):
        """The title of the game's own window: the login while connected."""
        changes = [t for t in self.texts() if t == "Window::on_connected **" or t == "Window::disconnected"]
        return self.name if changes and changes[-1].startswith("Window::on_c") else "vork2D/v5"

    def screenshot(self, path, title=None):
        self.stage.run("import", "-window", self.window(title or self.title()), str(path))

    def quit(self):
        """Closes the window as a player does; returns the exit status."""
        self.press("alt+F4")  # the window manager asks the window to close
        return self.process.wait(LIMIT)


class Stage:
    """Everything a test needs, and its end."""

    def __init__(self, size="1700x1300"):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vork2d-e2e-"))
        self.programs = []
        runtime = self.folder / "run"
        runtime.mkdir(mode=0o700)
        self.env = dict(os.environ, XDG_RUNTIME_DIR=str(runtime), QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8")
        self.env.pop("WAYLAND_DISPLAY", None)
        self._start_screen(size)
        self.start_relay()
        self.recorder = Recorder(self.folder, self.relay_port)

    @property
    def port(self):
        """Where a client reaches the relay, past the recorder."""
        return self.recorder.port

    @property
    def frames(self):
        return list(self.recorder.frames)

    def run(self, *command, check=True):
        done = subprocess.run(command, env=self.env, capture_output=True, text=True, timeout=LIMIT)
        if check and done.returncode != 0:
            raise AssertionError(f"{' '.join(command)}: {done.stderr.strip()}")
        return done.stdout

    def clipboard(self):
        return self.run("xclip", "-selection", "clipboard", "-out")

    def _start_screen(self, size):
        read, write = os.pipe()
        self._screen = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", size + "x24", "-nolisten", "tcp",
             "-noreset"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            self.env["DISPLAY"] = ":" + number.readline().strip()
        self._manager = subprocess.Popen(["openbox"], env=self.env, stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL)
        wait_for("the window manager", lambda: "window id" in self.run(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK", check=False))
        self.run("xdotool", "key", "Shift_L")  # at the first key the window manager binds all of its own anew

    def start_relay(self, port=0):
        """Starts the relay; with a port, one that was in use before."""
        self.relay = Program([BIN / "vork2d-relay", "--listen", f"127.0.0.1:{port}", "--state-dir",
                              self.folder / "relay"], self.env)
        self.programs.append(self.relay)

        def find():
            for _, line in list(self.relay.lines):
                match = re.search(r"wss://127\.0\.0\.1:(\d+)", line)
                if match:
                    return int(match.group(1))
            return None
        self.relay_port = wait_for("the relay", find)

    def client(self, name, *arguments, **options):
        client = Client(self, name, arguments, **options)
        self.programs.append(client)
        return client

    def player(self, name, place, *arguments, **options):
        """A client that logs in by itself; `place` is its window's rectangle."""
        return self.client(name, "--user", name, "--pass", "secret", "--login", "--__bounds", place, *arguments,
                           **options)

    def pair(self, first="g:Ann", second="g:Ben", arguments=(), **options):
        """Two players of one group, paired; the first one arrived first."""
        ann = self.player(first, "0,30,800,600", *arguments, **options)
        ann.wait_match(r"^USER: ")
        ben = self.player(second, "820,30,800,600", *arguments, **options)
        for client in (ann, ben):
            client.wait_line("STATE CHANGED, states {CONNECTED1 | CONNECTED2}")
        ben.wait_match("orient changed")
        return ann, ben

    def wait_frame(self, what, condition):
        return wait_for(what, lambda: next((f for f in self.frames if condition(f)), None))

    def commands(self, who, up=True):
        """The play commands of one client, those it sent or those it got."""
        return [f.cmd for f in self.frames if f.who == who and f.up == up and f.json.get("type") == "PLAY"]

    def close(self):
        for program in reversed(self.programs):
            program.stop()
        self.recorder.stop()
        for process in (self._manager, self._screen):
            process.terminate()
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)
