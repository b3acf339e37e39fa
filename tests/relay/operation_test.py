"""Starting, watching, reloading and stopping the relay, as its host does it."""

import asyncio
import contextlib
import os
import re
import resource
import signal
import socket
import ssl
import stat
import subprocess
import tempfile
import time
import unittest
import urllib.error
import urllib.request

from relay_program import (LIMIT, PROGRAM, Relay, RelayTest, client_context, login, message,
                           receive, receive_until_closed)
from violations_test import Line, request


def run(*options, environment=None):
    """Status and output of a run that is expected to end by itself."""
    done = subprocess.run([PROGRAM, *options], capture_output=True, text=True, timeout=LIMIT,
                          env={**os.environ, **(environment or {})})
    return done.returncode, done.stdout + done.stderr


class CommandLine(unittest.TestCase):
    def test_help_and_version(self):
        status, text = run("--help")
        self.assertEqual(status, 0)
        self.assertIn("--max-connections-per-address", text)
        self.assertRegex(run("--version")[1], r"^vork2d-relay \d+\.\d+\.\d+\n$")

    def test_a_fault_is_told_and_ends_with_2(self):
        self.assertEqual(run("--frame-size", "big"), (
            2, "vork2d-relay: frame-size takes a whole number from 1024 to 1073741824 "
               "(see --help)\n"))

    def test_check_config(self):
        self.assertEqual(run("--check-config"), (0, "The settings are good.\n"))
        status, text = run("--check-config", "--cert", "/nonexistent", "--key", "/nonexistent")
        self.assertEqual(status, 2)
        self.assertIn("can not use the certificate /nonexistent", text)

    def test_check_config_finds_what_would_end_the_start(self):
        for option, value, fault in (
                ("--status", "0.0.0.0:1", "0.0.0.0:1 is no loopback address"),
                ("--listen", "nowhere.invalid:1", "can not find nowhere.invalid"),
                ("--state-dir", "/proc/nope", "can not write into /proc/nope"),
                ("--state-dir", "/dev/null/state", "can not write into /dev/null/state")):
            status, text = run("--check-config", option, value)
            self.assertEqual((status, fault in text), (2, True), text)

    def test_check_config_tells_all_that_is_wrong(self):
        with tempfile.NamedTemporaryFile("w", suffix=".conf") as config:
            config.write("colour = red\nchat-length = x\n")
            config.flush()
            status, text = run("--check-config", "--config", config.name)
        self.assertEqual((status, text.count("vork2d-relay: ")), (2, 2), text)
        status, text = run("--check-config", "--listen", "nowhere.invalid:1", "--status",
                           "0.0.0.0:1", "--state-dir", "/proc/nope",
                           environment={"VORK2D_RELAY_FRAMESIZE": "1"})
        self.assertEqual((status, text.count("vork2d-relay: ")), (2, 4), text)
        self.assertIn("the variable VORK2D_RELAY_FRAMESIZE is no setting", text)

    def test_a_misspelled_variable_is_warned_of_at_a_start(self):
        with Relay(environment={"VORK2D_RELAY_FRAMESIZE": "1"}) as relay:
            relay.wait_for_line('unknown_variable name="VORK2D_RELAY_FRAMESIZE"$')

    def test_print_config_shows_what_counts(self):
        with tempfile.NamedTemporaryFile("w", suffix=".conf") as config:
            config.write("chat-length = 1\nchat-burst = 1\nframe-size = 2048\n")
            config.flush()
            status, text = run("--print-config", "--config", config.name, "--frame-size=8192",
                               environment={"VORK2D_RELAY_FRAME_SIZE": "4096",
                                            "VORK2D_RELAY_CHAT_BURST": "2"})
        self.assertEqual(status, 0)
        for line in ("chat-length = 1\n", "chat-burst = 2\n", "frame-size = 8192\n"):
            self.assertIn(line, text)

    def test_a_port_that_is_taken_is_told(self):
        with Relay() as relay:
            status, text = run("--listen", f"127.0.0.1:{relay.port}", "--state-dir",
                               relay.state_dir)
        self.assertEqual(status, 2)
        self.assertIn("can not listen on", text)

    def test_the_status_is_for_loopback_only(self):
        with tempfile.TemporaryDirectory() as folder:
            status, text = run("--listen", "127.0.0.1:0", "--state-dir", folder, "--status",
                               "0.0.0.0:0")
        self.assertEqual((status, "is no loopback address" in text), (2, True))


class Start(RelayTest):
    async def test_it_makes_a_key_that_only_its_owner_reads(self):
        key = os.path.join(self.relay.state_dir, "key.pem")
        self.assertEqual(stat.S_IMODE(os.stat(key).st_mode), 0o600)

    async def test_the_first_line_tells_how_to_reach_it(self):
        self.assertRegex(self.relay.lines[0], r"^Play with: vork2d --server 127\.0\.0\.1:\d+  "
                         r"\(wss://127\.0\.0\.1:\d+/ws/chat\?sessid=play, self-signed certificate"
                         r"\)$")

    async def test_nobody_resumes_a_session(self):
        context = client_context()
        context.maximum_version = ssl.TLSVersion.TLSv1_2
        with socket.create_connection((self.relay.host, self.relay.port)) as plain:
            with context.wrap_socket(plain) as line:
                self.assertFalse(line.session.has_ticket)

    async def test_a_second_start_keeps_the_certificate(self):
        before = ssl.get_server_certificate((self.relay.host, self.relay.port))
        self.relay.stop()
        with Relay(state_dir=self.relay.state_dir) as again:
            self.assertEqual(ssl.get_server_certificate((again.host, again.port)), before)


class Ciphers(unittest.TestCase):
    """Of TLS 1.2; all of TLS 1.3 are good."""

    def accepted(self, relay):
        context = client_context()
        context.maximum_version = ssl.TLSVersion.TLSv1_2
        context.set_ciphers("ALL:COMPLEMENTOFALL:@SECLEVEL=0")
        names = {cipher["name"] for cipher in context.get_ciphers()}
        found = set()
        while True:  # without those that were chosen before, until nothing is left in common
            context.set_ciphers(":".join(sorted(names - found)) + ":@SECLEVEL=0")
            try:
                with socket.create_connection((relay.host, relay.port), LIMIT) as plain:
                    with context.wrap_socket(plain) as line:
                        found.add(line.cipher()[0])
            except ssl.SSLError:
                return found

    def check(self, relay, kind):
        self.assertEqual(self.accepted(relay), {
            f"ECDHE-{kind}-{cipher}" for cipher in ("AES128-GCM-SHA256", "AES256-GCM-SHA384",
                                                    "CHACHA20-POLY1305")})

    def test_the_relays_own_certificate(self):
        with Relay() as relay:
            self.check(relay, "ECDSA")

    def test_an_rsa_certificate(self):
        with tempfile.TemporaryDirectory() as folder:
            key, cert = os.path.join(folder, "key.pem"), os.path.join(folder, "cert.pem")
            subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj",
                            "/CN=relay", "-days", "30", "-keyout", key, "-out", cert],
                           check=True, capture_output=True, timeout=LIMIT)
            with Relay("--cert", cert, "--key", key) as relay:
                self.check(relay, "RSA")


class Reload(RelayTest):
    async def test_a_new_certificate_is_taken_up_without_a_connection_lost(self):
        first, second = await self.relay.pair("g")
        before = ssl.get_server_certificate((self.relay.host, self.relay.port))
        os.remove(os.path.join(self.relay.state_dir, "certificate.pem"))
        self.relay.process.send_signal(signal.SIGHUP)
        self.relay.wait_for_line("reloaded cert=")
        after = ssl.get_server_certificate((self.relay.host, self.relay.port))
        self.assertNotEqual(after, before)
        await first.send(message("PLAY", "g:a", "#"))
        await asyncio.wait_for(second.recv(), LIMIT)

    async def test_a_fault_keeps_the_old_one(self):
        certificate = os.path.join(self.relay.state_dir, "certificate.pem")
        key = os.path.join(self.relay.state_dir, "key.pem")
        with Relay("--cert", certificate, "--key", key) as relay:
            with open(key, "w", encoding="ascii") as file:
                file.write("broken")
            relay.process.send_signal(signal.SIGHUP)
            relay.wait_for_line("reload_failed detail=")
            await (await relay.member("g:a")).close()


class Shutdown(RelayTest):
    async def test_each_client_hears_1001_and_the_status_is_0_in_time(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            with Relay() as relay:
                clients = [*(await relay.pair("g")), await relay.connect()]
                started = time.monotonic()
                relay.process.send_signal(number)
                ends = await asyncio.gather(*(receive_until_closed(one) for one in clients))
                self.assertEqual([end[1] for end in ends], [1001] * 3)
                self.assertEqual(relay.process.wait(LIMIT), 0)
                self.assertLess(time.monotonic() - started, 2)

    async def test_a_client_that_does_not_answer_holds_nothing_up(self):
        client = await self.relay.member("g:a")
        client.transport.pause_reading()
        started = time.monotonic()
        self.assertEqual(await asyncio.to_thread(self.relay.stop), 0)
        self.assertLess(time.monotonic() - started, 2)
        client.transport.abort()


class Status(RelayTest):
    def setUp(self):
        super().setUp()
        self.status = Relay("--status", "127.0.0.1:0")
        self.addCleanup(self.status.__exit__)
        line = self.status.wait_for_line("status address=")
        self.address = re.search(r'address="([^"]+)"', line)[1]

    async def get(self, path, **options):
        request = urllib.request.Request(f"http://{self.address}{path}", **options)

        def fetch():
            with urllib.request.urlopen(request, timeout=LIMIT) as answer:
                return answer.read().decode()
        return await asyncio.to_thread(fetch)

    async def test_health_answers(self):
        self.assertEqual(await self.get("/health"), "ok\n")

    async def test_metrics_count_what_happens(self):
        first, second = await self.status.pair("g")
        await first.send(message("PLAY", "g:a", "#"))
        await asyncio.wait_for(second.recv(), LIMIT)
        third = await self.status.connect()
        await third.send(login("g:c", "wrong"))
        await receive_until_closed(third)
        text = await self.get("/metrics")
        for line in ("members 2", "groups 1", "frames_received_total 4",
                     "frames_forwarded_total 1", 'refusals_total{reason="wrong_password"} 1'):
            self.assertIn(f"\nvork2d_relay_{line}\n", text)

    async def test_other_paths_and_methods_are_refused(self):
        for path, options, code in (("/", {}, 404), ("/metrics", {"method": "POST"}, 405)):
            with self.assertRaises(urllib.error.HTTPError) as raised:
                await self.get(path, **options)
            self.assertEqual(raised.exception.code, code)

    async def test_the_players_port_has_no_status(self):
        request = f"https://{self.relay.host}:{self.relay.port}/metrics"
        context = ssl._create_unverified_context()
        with self.assertRaises(urllib.error.HTTPError) as raised:
            await asyncio.to_thread(urllib.request.urlopen, request, context=context)
        self.assertEqual(raised.exception.code, 404)


    async def test_no_answer_tells_what_the_relay_is_made_of(self):
        answers = []
        for asked in (request(), request(Sec_WebSocket_Key=None), request("GET / HTTP/1.1")):
            with contextlib.closing(Line(self.relay)) as line:
                line.send(asked)
                while b"\r\n\r\n" not in line.received:
                    line.received += line.socket.recv(4096)
                answers.append(line.received.decode("latin-1"))
        self.assertEqual([answer.split(" ")[1] for answer in answers], ["101", "400", "404"])
        with urllib.request.urlopen(f"http://{self.address}/health", timeout=LIMIT) as answer:
            answers.append(str(answer.headers))
        for answer in answers:
            servers = re.findall(r"^Server: *(.*?)\r?$", answer, re.M | re.I)
            self.assertLessEqual(set(servers), {"vork2d-relay"}, answer)
            self.assertNotRegex(answer, r"(?i)beast|boost")


class Descriptors(unittest.IsolatedAsyncioTestCase):
    def start(self, *options, **more):
        relay = Relay(*options, **more)
        self.addCleanup(relay.__exit__)
        return relay

    def test_the_limit_is_raised_and_too_few_are_told(self):
        few = self.start("--max-connections", "500", "--max-half-open", "10",
                         prefix=("prlimit", "--nofile=64:300"))
        line = few.wait_for_line("few_descriptors")
        self.assertRegex(line, r"few_descriptors allowed=300 needed=552$")

    def test_enough_are_nothing_to_tell(self):
        enough = self.start("--max-connections", "200", "--max-half-open", "10",
                            prefix=("prlimit", "--nofile=64:300"))
        enough.stop()
        self.assertNotIn("few_descriptors", "\n".join(enough.lines))

    async def test_a_silent_line_gives_its_descriptor_to_who_comes(self):
        relay = self.start()
        open_now = len(os.listdir(f"/proc/{relay.process.pid}/fd"))
        resource.prlimit(relay.process.pid, resource.RLIMIT_NOFILE, (open_now + 3,) * 2)
        with contextlib.ExitStack() as idle:
            for _ in range(8):
                idle.enter_context(socket.create_connection((relay.host, relay.port)))
            await (await relay.member("g:a")).close()
        self.assertNotIn("accept_failed", "\n".join(relay.lines))

    async def test_no_descriptor_left_is_one_line_a_second_with_its_count(self):
        relay = self.start()
        members = [await relay.member(f"g{number}:a") for number in range(3)]
        last = max(int(name) for name in os.listdir(f"/proc/{relay.process.pid}/fd"))
        resource.prlimit(relay.process.pid, resource.RLIMIT_NOFILE, (last + 1, last + 1))
        with contextlib.ExitStack() as lines:
            for _ in range(last):  # more than the numbers below it that are free
                lines.enter_context(socket.create_connection((relay.host, relay.port)))
            relay.wait_for_line("accept_failed .*count=1$")
            second = relay.wait_for_line(r"accept_failed detail=.* count=(?!1$)\d+$")
        self.assertGreaterEqual(int(second.rsplit("=", 1)[1]), 5)
        failures = [line for line in relay.lines if "accept_failed" in line]
        self.assertEqual(len(failures), 2, failures)
        for member in members:
            await member.close()


class Log(RelayTest):
    async def test_each_event_is_one_line_without_password_or_chat(self):
        first, second = await self.relay.pair("g")
        await first.send(message("CHAT", "g:a", "#", text="whisper"))
        await asyncio.wait_for(second.recv(), LIMIT)
        await second.close()
        self.relay.wait_for_line('left reason="closed" name="g:b"')
        self.relay.stop()
        words = [line.split(" ", 1)[1] for line in self.relay.lines[1:-1]]
        self.assertEqual(words, [
            "ready connections=10000",
            'login name="g:a" address="127.0.0.1"', 'login name="g:b" address="127.0.0.1"',
            'left reason="closed" name="g:b" address="127.0.0.1"',
            "stopping connections=1",
            'left reason="shutdown" name="g:a" address="127.0.0.1"', "stopped"])
        self.assertNotIn("secret", "\n".join(self.relay.lines))

    async def test_why_somebody_left_is_in_its_line(self):
        lost = await self.relay.member("g:a")
        lost.transport.abort()
        # The line is let go by the loop that this test runs in.
        await asyncio.to_thread(self.relay.wait_for_line, 'left reason="lost" name="g:a"')
        refused = await self.relay.member("g:b")
        await refused.send("x")
        self.relay.wait_for_line('refused reason="not_json" name="g:b"')
        self.relay.wait_for_line('left reason="not_json" name="g:b"')

    async def test_a_handshake_that_fails_is_an_event_too(self):
        with socket.create_connection((self.relay.host, self.relay.port)) as line:
            line.sendall(b"GET / HTTP/1.1\r\n\r\n")
            self.relay.wait_for_line('dropped reason="handshake_failed" address="127.0.0.1" count=1')

    async def test_an_upgrade_without_a_key_is_an_event_too(self):
        with socket.create_connection((self.relay.host, self.relay.port)) as plain:
            with client_context().wrap_socket(plain) as line:
                line.sendall(b"GET /ws/chat?sessid=play HTTP/1.1\r\nHost: relay\r\n"
                             b"Upgrade: websocket\r\nConnection: Upgrade\r\n"
                             b"Sec-WebSocket-Version: 13\r\n\r\n")
                self.relay.wait_for_line('refused reason="bad_request" detail=".+" '
                                         'address="127.0.0.1"')


class Standstill(RelayTest):
    options = ("--ping-seconds", "1", "--silence-seconds", "2")

    async def test_idle_players_stay_when_the_relay_itself_was_stopped(self):
        pair = await self.relay.pair("g")
        self.relay.process.send_signal(signal.SIGSTOP)
        await asyncio.sleep(4)  # twice the silence that a player is let go for
        self.relay.process.send_signal(signal.SIGCONT)
        for _ in range(3):
            for name, client in zip(("g:a", "g:b"), pair):
                self.assertEqual((await receive(client))["type"], "PING")
                await client.send(message("PONG", name, "+"))


if __name__ == "__main__":
    unittest.main()
