"""Two clients send each other 10,000 messages at once: none is lost, none overtakes another."""

import asyncio
import unittest

from relay_program import LIMIT, RelayTest, play, receive_text

COUNT = 10000


class Exchange(RelayTest):
    # The exchange runs as fast as the clients can, far beyond what a player sends.
    options = ("--frames-per-second", "1000000", "--bytes-per-second", "1000000000",
               "--queued-output", "100000000")

    async def test_ten_thousand_messages_each_way(self):
        pair = await self.relay.pair("g")
        names = ("g:a", "g:b")

        async def send(client, name):
            for number in range(COUNT):
                await client.send(play(name, number))

        async def take(client, name):
            return [await receive_text(client) for _ in range(COUNT)] == \
                [play(name, number) for number in range(COUNT)]

        results = await asyncio.wait_for(asyncio.gather(
            send(pair[0], names[0]), send(pair[1], names[1]),
            take(pair[0], names[1]), take(pair[1], names[0])), 6 * LIMIT)
        self.assertEqual(results[2:], [True, True])


if __name__ == "__main__":
    unittest.main()
