"""Each limit is told to the client once before the close, and the others go on playing."""

import asyncio
import contextlib
import json
import socket
import time
import unittest

import websockets
from raw_line import CONTINUATION, TEXT, Line, frame, request
from relay_program import (LIMIT, STALL, RelayTest, client_context, login, message, play, receive,
                           receive_text, refusal)


class Heartbeat(RelayTest):
    options = ("--ping-seconds", "1", "--silence-seconds", "2")

    async def test_pings_come_and_silence_ends_the_client(self):
        first, second = await self.relay.pair("g")

        async def answer():
            pings = []
            while True:
                news = await receive(first)
                if news["type"] != "PING":
                    return pings, news
                pings.append(news)
                await first.send(message("PONG", "g:a", "+"))
        started = time.monotonic()
        (pings, news), told = await asyncio.gather(answer(), refusal(second))
        self.assertEqual(told, (19, "Nothing was heard of you for too long.", 1008))
        self.assertEqual(news["subType"], "bye")
        self.assertGreaterEqual(len(pings), 1)
        self.assertEqual(pings[0], {"type": "PING", "subType": "", "from": "relay", "to": "g:a",
                                    "ident": 0})
        self.assertLess(time.monotonic() - started, 4)


class Login(RelayTest):
    options = ("--login-seconds", "1")

    async def test_no_login_in_time(self):
        async with self.relay.connect() as client:
            self.assertEqual(await refusal(client), (6, "No login came in time.", 1008))


class FailedLogins(RelayTest):
    options = ("--failed-logins", "2")

    async def test_who_guesses_has_to_wait(self):
        first = await self.relay.member("g:a", "right")
        codes = []
        for password in ("x", "y", "right"):
            async with self.relay.connect() as client:
                await client.send(login("g:b", password))
                codes.append((await refusal(client))[0])
        self.assertEqual(codes, [7, 7, 10])
        await first.close()


class Connections(RelayTest):
    options = ("--max-connections", "2")

    async def test_one_too_many_in_all(self):
        first, second = await self.relay.pair("g")
        async with self.relay.connect() as third:
            self.assertEqual(await refusal(third),
                             (20, "The relay is full. Try again later.", 1013))
        await second.close()
        self.relay.wait_for_line('left reason="closed" name="g:b"')
        await (await self.relay.member("h:a")).close()
        await first.close()


class ConnectionsPerAddress(RelayTest):
    options = ("--max-connections-per-address", "2")

    async def test_one_too_many_from_one_address(self):
        await self.relay.pair("g")
        async with self.relay.connect() as third:
            self.assertEqual(await refusal(third),
                             (21, "Too many connections from your address.", 1013))


class Lingering(RelayTest):
    options = ("--max-connections", "4", "--max-connections-per-address", "2",
               "--max-half-open-per-address", "4", "--status", "127.0.0.1:0")

    async def test_who_does_not_go_when_told_takes_no_place_of_others(self):
        with contextlib.ExitStack() as lines:
            for _ in range(30):
                with contextlib.suppress(OSError):  # beyond the end it is dropped without a word
                    line = lines.enter_context(contextlib.closing(Line(self.relay)))
                    line.send(request())
                    line.read_upgrade()
            self.assertLessEqual(self.relay.metric("connections"), 2 + 4)
            async with self.relay.connect(local_addr=("127.0.0.2", 0)) as client:
                await client.send(login("g:a", "pw"))
                self.assertEqual((await receive(client))["subType"], "welcome")
            self.relay.wait_for_line('dropped reason="connections_per_address"')

    async def test_a_place_that_was_left_is_free_again(self):
        for _ in range(6):
            async with self.relay.connect() as client:
                await client.send("x")
                self.assertEqual((await refusal(client))[0], 5)
            await (await self.relay.member("g:a")).close()


class Rates(RelayTest):
    options = ("--frames-per-second", "10", "--burst-seconds", "1")

    async def test_too_many_frames(self):
        first, second = await self.relay.pair("g")
        for number in range(30):
            await first.send(play("g:a", number))
        self.assertEqual(await refusal(first), (16, "Too many messages a second.", 1008))
        received = []
        while (news := await receive(second))["type"] == "PLAY":
            received.append(news["payload"]["n"])
        self.assertEqual(received, list(range(len(received))))
        self.assertEqual(news["subType"], "bye")

    async def test_too_many_control_frames(self):
        client = await self.relay.member("g:a")
        pongs = [await client.ping() for _ in range(12)]
        self.assertEqual((await refusal(client))[0], 16)
        await asyncio.gather(*pongs, return_exceptions=True)


class Bytes(RelayTest):
    options = ("--bytes-per-second", "10000", "--burst-seconds", "1", "--frame-size", "8192")

    async def test_too_many_bytes(self):
        client = await self.relay.member("g:a")
        for _ in range(4):
            await client.send(message("PLAY", "g:a", "+", pad="x" * 4000))
        self.assertEqual(await refusal(client), (17, "Too many bytes a second.", 1008))


class SlowReader(RelayTest):
    options = ("--queued-output", "100000", "--frames-per-second", "100000",
               "--bytes-per-second", "100000000", "--status", "127.0.0.1:0")

    async def member_that_takes_little(self, name):
        """A client whose kernel holds little that is not read."""
        plain = socket.socket()
        plain.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 65536)
        plain.connect((self.relay.host, self.relay.port))
        return await self.relay.member(name, sock=plain, server_hostname="relay")

    async def test_a_client_that_does_not_read_has_to_go_and_the_others_do_not_feel_it(self):
        first = await self.relay.member("g:a")
        slow = await self.member_that_takes_little("g:b")
        self.assertEqual((await receive(first))["subType"], "join")
        others = await self.relay.pair("h")
        slow.transport.pause_reading()

        async def flood():
            text = message("PLAY", "g:a", "#", pad="x" * 8000)
            for _ in range(5000):
                await first.send(text)
        flooding = asyncio.ensure_future(flood())
        for number in range(100):
            begun = time.monotonic()
            await others[0].send(play("h:a", number))
            self.assertEqual(await receive_text(others[1]), play("h:a", number))
            self.assertLess(time.monotonic() - begun, STALL)
        self.assertEqual((await receive(first))["subType"], "bye")
        flooding.cancel()
        self.relay.wait_for_line('refused reason="output_full" name="g:b"')
        # What waits counts against the limit and not in the relay's kernel, which would take more.
        self.assertLess(self.relay.metric("bytes_sent_total"), 100000 + (1 << 20))
        slow.transport.abort()


class HalfOpen(RelayTest):
    options = ("--max-half-open", "3", "--max-half-open-per-address", "3",
               "--handshake-seconds", "1")

    async def test_handshakes_that_stand_still_are_bounded_and_end(self):
        idle = [socket.create_connection((self.relay.host, self.relay.port),
                                         source_address=(f"127.0.0.{number}", 0))
                for number in range(1, 5)]
        idle[0].settimeout(LIMIT)
        self.assertEqual(idle[0].recv(1), b"", "the oldest gives its place to the fourth")
        self.relay.wait_for_line('dropped reason="half_open" address="127.0.0.1"')
        for one in idle[1:]:
            one.settimeout(LIMIT)
            self.assertEqual(one.recv(1), b"", "the others end in time")
        self.relay.wait_for_line('dropped reason="handshake_timeout"')
        client = await self.relay.member("g:a")
        await client.close()
        for one in idle:
            one.close()

    async def test_half_a_request_ends_in_time(self):
        with socket.create_connection((self.relay.host, self.relay.port)) as plain:
            with client_context().wrap_socket(plain) as line:
                line.sendall(b"GET /ws/chat?sessid=play HTTP/1.1\r\nHost:")
                line.settimeout(LIMIT)
                self.assertTrue(line.recv(1000).startswith(b"HTTP/1.1 408 "))
                self.assertEqual(line.recv(100), b"")
        self.relay.wait_for_line('refused reason="handshake_timeout" status=408')


class HalfOpenPerAddress(RelayTest):
    options = ("--max-half-open", "8", "--max-half-open-per-address", "4")

    async def test_silent_lines_from_one_address_shut_nobody_else_out(self):
        with contextlib.ExitStack() as idle:
            for _ in range(20):
                idle.enter_context(socket.create_connection((self.relay.host, self.relay.port)))
            self.relay.wait_for_line('dropped reason="half_open" address="127.0.0.1"')
            async with self.relay.connect(local_addr=("127.0.0.2", 0)) as client:
                await client.send(login("g:a", "pw"))
                self.assertEqual((await receive(client))["subType"], "welcome")

    async def test_silent_lines_from_his_own_address_shut_nobody_out(self):
        with contextlib.ExitStack() as idle:
            for _ in range(20):
                idle.enter_context(socket.create_connection((self.relay.host, self.relay.port)))
            await (await self.relay.member("g:a")).close()

    async def test_handshakes_that_are_over_count_no_more(self):
        clients = [await self.relay.member(f"g{number}:a") for number in range(10)]
        await asyncio.gather(*(client.close() for client in clients))


class HalfOpenAndFull(RelayTest):
    options = ("--max-connections", "2", "--max-connections-per-address", "2",
               "--max-half-open", "8")

    async def test_silent_lines_make_the_relay_full_for_nobody(self):
        with contextlib.ExitStack() as idle:
            for _ in range(8):
                idle.enter_context(socket.create_connection((self.relay.host, self.relay.port)))
            first, second = await self.relay.pair("g")
            await first.close()
            await second.close()


class ConnectsPerMinute(RelayTest):
    options = ("--connects-per-minute", "2")

    async def test_an_address_that_comes_too_often_shuts_nobody_else_out(self):
        with contextlib.ExitStack() as lines:
            for _ in range(3):
                last = lines.enter_context(
                    socket.create_connection((self.relay.host, self.relay.port), LIMIT))
            self.assertEqual(last.recv(1), b"", "the third comes too often")
            self.relay.wait_for_line('dropped reason="connections_per_address" '
                                     'address="127.0.0.1" count=1')
            async with self.relay.connect(local_addr=("127.0.0.2", 0)) as client:
                await client.send(login("g:a", "pw"))
                self.assertEqual((await receive(client))["subType"], "welcome")


class Fragments(RelayTest):
    options = ("--frames-per-second", "100", "--burst-seconds", "1")

    async def test_a_message_in_tiny_pieces_counts_them_all(self):
        client = await self.relay.member("g:a")
        with contextlib.suppress(websockets.ConnectionClosed):
            await client.send(" " for _ in range(500))
        self.assertEqual(await refusal(client), (16, "Too many messages a second.", 1008))

    async def test_a_message_in_two_pieces_counts_once(self):
        first, second = await self.relay.pair("g")
        for number in range(60):
            text = play("g:a", number)
            first.transport.write(frame(TEXT, text[:9].encode(), fin=0) +
                                  frame(CONTINUATION, text[9:].encode()))
            self.assertEqual(await receive_text(second), text)


class ToldOnce(RelayTest):
    async def test_a_refusal_is_told_once(self):
        async with self.relay.connect() as client:
            await client.send("x")
            await client.send("x")
            seen = []
            try:
                while True:
                    seen.append(json.loads(await receive_text(client))["type"])
            except websockets.ConnectionClosed:
                pass
        self.assertEqual(seen, ["ERROR", "CHAT"])


if __name__ == "__main__":
    unittest.main()
