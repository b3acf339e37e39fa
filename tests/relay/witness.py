"""A pair that plays beside an attack and tells how long its messages took.

    witness = Witness(relay)          # a Relay of relay_program, or whatever has a host and a port
    self.addCleanup(witness.stop)
    witness.forget()                  # what was before
    attack()
    seen = witness.take()             # seen.messages, seen.longest_ms

or, for the bound that holds in the median of three runs:

    waits = three_waits(witness, attack)
    self.assertLess(statistics.median(waits), 100, waits)

The pair has a process of its own with plain blocking sockets: neither the interpreter of the test nor
an event loop adds to what is measured. Each message is sent when the one before has arrived, every
5 ms, in either direction by turns. As soon as the pair can not play any more, also because the relay
has let it go, take() and forget() raise.
"""

import contextlib
import socket
import subprocess
import sys
import threading
import time
import traceback
import types
import typing

from raw_line import TEXT, Line, frame, request
from relay_program import LIMIT, login, play

PACE = 0.005  # seconds between two messages


class Seen(typing.NamedTuple):
    messages: int  # that arrived
    longest_ms: float  # that one took, or has taken so far and is not there yet


class Witness:
    def __init__(self, relay, group="witness"):
        self._process = subprocess.Popen(
            [sys.executable, "-B", __file__, relay.host, str(relay.port), group],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.forget()

    def take(self):
        """What the pair has seen since the last call."""
        return self._ask("take")

    def forget(self):
        """Waits until the pair plays freely and begins anew."""
        self._ask("forget")

    def _ask(self, what):
        with contextlib.suppress(OSError):  # it has ended, and its last words say why
            self._process.stdin.write(what + "\n")
            self._process.stdin.flush()
        answer = self._process.stdout.readline().split()
        if len(answer) != 2:
            raise AssertionError("the pair plays no more: " + self._process.stdout.read())
        return Seen(int(answer[0]), float(answer[1]))

    def stop(self):
        self._process.kill()
        self._process.wait()
        self._process.stdin.close()
        self._process.stdout.close()


def three_waits(witness, attack):
    """The longest wait, in ms, beside each of three runs of the attack."""
    waits = []
    for _ in range(3):
        witness.forget()
        attack()
        waits.append(witness.take().longest_ms)
    return waits


class _Player(Line):
    def __init__(self, relay, name):
        super().__init__(relay)
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.send(request())
        self.read_upgrade()
        self.send_text(login(name, "witness"))
        assert '"welcome"' in self.read_text()

    def send_text(self, text):
        self.socket.sendall(frame(TEXT, text.encode()))


class _Pair:
    def __init__(self, relay, group):
        self._names = group + ":a", group + ":b"
        self._players = [_Player(relay, name) for name in self._names]
        self._news = threading.Condition()
        self._messages = 0
        self._longest = 0.0
        self._begun = None  # of the message that is under way
        self._fault = None

    def play(self):
        try:
            while True:
                for sender in (0, 1):
                    self._pass_on(sender)
                    time.sleep(PACE)
        except Exception:  # pylint: disable=broad-except
            with self._news:
                self._fault = traceback.format_exc()
                self._news.notify_all()

    def _pass_on(self, sender):
        text = play(self._names[sender], self._messages)
        with self._news:
            self._begun = time.monotonic()
        self._players[sender].send_text(text)
        while (news := self._players[1 - sender].read_text()) != text:
            assert '"PING"' in news or '"join"' in news, news
        with self._news:
            self._longest = max(self._longest, time.monotonic() - self._begun)
            self._begun = None
            self._messages += 1
            self._news.notify_all()

    def take(self):
        with self._news:
            longest = self._longest
            if self._begun is not None:
                longest = max(longest, time.monotonic() - self._begun)
            if self._fault is not None:
                raise AssertionError(self._fault)
            seen = Seen(self._messages, longest * 1000)
            self._messages, self._longest = 0, 0.0
        return seen

    def forget(self):
        with self._news:
            free = self._messages + 2  # the one under way may have waited long
            self._news.wait_for(lambda: self._messages >= free or self._fault, LIMIT)
        return self.take()


def _main(host, port, group):
    try:
        pair = _Pair(types.SimpleNamespace(host=host, port=int(port)), group)
        threading.Thread(target=pair.play, daemon=True).start()
        for line in sys.stdin:
            seen = pair.forget() if line.strip() == "forget" else pair.take()
            print(seen.messages, seen.longest_ms, flush=True)
    except Exception:  # pylint: disable=broad-except
        print("\n" + traceback.format_exc(), flush=True)


if __name__ == "__main__":
    _main(*sys.argv[1:])
