"""Sixty addresses guess at the password of one group, and the friend who knows it gets in all the same."""

import asyncio
import contextlib
import time
import unittest

import websockets
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


if __name__ == "__main__":
    unittest.main()
