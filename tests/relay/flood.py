"""Opens connections that nobody means to finish, as fast as it can, from a process of its own.

    with Flood(relay, "half a hello", row=0, addresses=4):  # begins when FIRST have been opened
        ...

Its addresses are the first ones of a row of 250. Of the connections it holds the last HELD. It ends
by itself after MAX_COUNT or MAX_SECONDS.
"""

import collections
import contextlib
import resource
import socket
import ssl
import subprocess
import sys
import threading
import time

# Of Linux: the port is chosen when the target is known, and there are more of them.
IP_BIND_ADDRESS_NO_PORT = 24
FIRST = 300
HELD = 3000
MAX_COUNT = 200000
MAX_SECONDS = 60

# A flood has no time to read the system's certificates for each of its connections.
CONTEXT = ssl.SSLContext(ssl.PROTOCOL_TLS_CLIENT)
CONTEXT.check_hostname = False
CONTEXT.verify_mode = ssl.CERT_NONE


def client_hello():
    outgoing = ssl.MemoryBIO()
    line = CONTEXT.wrap_bio(ssl.MemoryBIO(), outgoing)
    with contextlib.suppress(ssl.SSLWantReadError):
        line.do_handshake()
    return outgoing.read()


HELLO = client_hello()
# What each connection says, and whether it goes on to the end of TLS.
FORMS = {
    "nothing": (b"", False),
    "half a hello": (HELLO[:len(HELLO) // 2], False),
    "a whole hello": (HELLO, False),
    "TLS without a request": (b"", True),
}


class Flood:
    def __init__(self, relay, form, row, addresses):
        self._process = subprocess.Popen(
            [sys.executable, "-B", __file__, relay.host, str(relay.port), form, str(row),
             str(addresses)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def __enter__(self):
        begun = self._process.stdout.readline()
        assert begun == "begun\n", begun
        return self

    def __exit__(self, *_):
        self._process.stdin.close()
        self._process.stdout.close()
        status = self._process.wait()
        assert status == 0, status


def _connect(target, address):
    line = socket.socket()
    line.setsockopt(socket.IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT, 1)
    line.bind((address, 0))
    line.setblocking(False)
    line.connect_ex(target)
    return line


def _finish_tls(line):
    """The client's side of TLS, and no word behind it."""
    line.setblocking(True)
    line.settimeout(5)
    with contextlib.suppress(OSError):
        return CONTEXT.wrap_socket(line, do_handshake_on_connect=True)
    return line


def _main(host, port, form, row, addresses):
    said, flag_tls = FORMS[form]
    most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
    stop = threading.Event()
    threading.Thread(target=lambda: (sys.stdin.read(), stop.set()), daemon=True).start()
    until = time.monotonic() + MAX_SECONDS
    held = collections.deque()
    count = 0
    while not stop.is_set() and count < MAX_COUNT and time.monotonic() < until:
        line = _connect((host, port), f"127.0.{100 + row}.{1 + count % addresses}")
        if flag_tls:
            line = _finish_tls(line)
        else:
            with contextlib.suppress(OSError):
                line.send(said)
        held.append(line)
        if len(held) > HELD:
            held.popleft().close()
        count += 1
        if count == FIRST:
            print("begun", flush=True)


if __name__ == "__main__":
    _main(sys.argv[1], int(sys.argv[2]), sys.argv[3], *map(int, sys.argv[4:]))
