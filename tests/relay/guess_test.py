"""Sixty addresses guess at the password of one group, and the friend who knows it gets in all the same."""

import asyncio
import contextlib
import time
import unittest

import websockets
from raw_line import BINARY, TEXT, Line, frame, request
from relay_program import LIMIT, RelayTest, login, play, receive, receive_text, refusal

ATTACKERS = 60
AT_ONCE = 12  # wrong passwords that a group looks at without a pause
PAUSE = 5  # seconds from one to the next after that


class Guess(RelayTest):
    attack_over = False

    async def guess(self, number, answers):
        """Guesses from an address of its own until the attack is over; adds the code of each answer to `answers`."""
        while not self.attack_over:
            with contextlib.suppress(OSError, websockets.ConnectionClosed, asyncio.TimeoutError):
                async with self.relay.connect(local_addr=(f"127.0.1.{number}", 0)) as client:
                    await client.send(login("g:a" if number % 2 else "g:z", f"guess {number}"))
                    answers.append((await refusal(client))[0])

    async def test_the_friend_gets_in_while_sixty_addresses_get_a_guess_in_five_seconds(self):
        first = await self.relay.member("g:a")
        answers = []
        begun = time.monotonic()
        attack = [asyncio.ensure_future(self.guess(number + 1, answers)) for number in range(ATTACKERS)]
        try:
            await asyncio.wait_for(self.first_guesses(answers), LIMIT)
            friend = await self.relay.connect(local_addr=("127.0.0.2", 0))
            await friend.send(login("g:b", "secret"))
            came = time.monotonic()
            self.assertEqual((await receive(friend))["subType"], "welcome")
            self.assertLess(time.monotonic() - came, 2 * PAUSE + 2)
            allowed = AT_ONCE + (time.monotonic() - begun) / PAUSE + 1
            self.assertLessEqual(answers.count(7), allowed)
            self.assertEqual(set(answers) - {7, 27}, set(), "and a taken name is told as a wrong password")
        finally:
            self.attack_over = True
            for task in attack:
                task.cancel()
            await asyncio.gather(*attack, return_exceptions=True)
        self.assertEqual((await receive(first))["subType"], "join")
        await friend.send(play("g:b"))
        self.assertEqual(await receive_text(first), play("g:b"))

    @staticmethod
    async def first_guesses(answers):
        while len(answers) < AT_ONCE:
            await asyncio.sleep(0.05)


class WaitsForItsTurn(RelayTest):
    """Frames that nobody may send, from a client that waits because the group has been guessed at."""

    async def use_up_guesses(self):
        for number in range(AT_ONCE):
            async with self.relay.connect(local_addr=(f"127.0.1.{1 + number % 4}", 0)) as client:
                await client.send(login("g:z", f"guess {number}"))
                self.assertEqual((await refusal(client))[0], 7)

    def waiting_line(self):
        line = Line(self.relay, address="127.0.0.3")
        self.addCleanup(line.close)
        line.send(request())
        line.read_upgrade()
        line.send(frame(TEXT, login("g:b", "secret").encode()))
        return line

    async def test_a_frame_that_claims_to_be_endless_ends_it_and_nobody_else(self):
        first = await self.relay.member("g:a")
        await self.use_up_guesses()
        line = self.waiting_line()
        self.assertTrue(line.read_until_end(frame(TEXT, b"x" * 40_000, size=1 << 62)))
        self.assertEqual(line.close_code(), 1009)
        friend = await self.relay.connect(local_addr=("127.0.0.2", 0))
        await friend.send(login("g:b", "secret"))
        self.assertEqual((await receive(friend))["subType"], "welcome")
        self.assertEqual((await receive(first))["subType"], "join")

    async def test_a_binary_frame_ends_it(self):
        await self.relay.member("g:a")
        await self.use_up_guesses()
        line = self.waiting_line()
        self.assertTrue(line.read_until_end(frame(BINARY, b"x")))
        self.assertEqual(line.close_code(), 1003)


if __name__ == "__main__":
    unittest.main()
