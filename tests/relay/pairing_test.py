"""Login, pairing, forwarding and refusal, as a client sees them."""

import unittest

from relay_program import RelayTest, login, message, play, receive, receive_text, refusal

EXTRA_BLANKS = '{ "to":"#",  "from" : "g:a","type":"PLAY", "x": 1.50e+01, "y":"\\u00e9\u00e9" }'


class Pairing(RelayTest):
    async def test_the_first_is_welcomed_alone(self):
        async with self.relay.connect() as client:
            await client.send(login("g:a", "pw"))
            self.assertEqual(await receive(client), {
                "type": "CHAT", "subType": "welcome", "from": "relay", "to": "g:a", "ident": 0,
                "text": "Welcome, your friend is not here yet.", "extraData": "g:a"})

    async def test_the_second_is_welcomed_with_both_and_the_first_hears_join(self):
        first = await self.relay.member("g:a")
        async with self.relay.connect() as second:
            await second.send(login("g:b", "secret"))
            self.assertEqual((await receive(second))["extraData"], "g:a, g:b")
            join = await receive(first)
            self.assertEqual((join["subType"], join["from"]), ("join", "g:b"))
        await first.close()

    async def test_a_member_that_closes_is_told_as_bye(self):
        first, second = await self.relay.pair("g")
        await second.close()
        bye = await receive(first)
        self.assertEqual((bye["type"], bye["subType"], bye["from"]), ("CHAT", "bye", "g:b"))
        await first.close()

    async def test_a_line_that_breaks_is_told_as_bye(self):
        first, second = await self.relay.pair("g")
        second.transport.abort()
        self.assertEqual((await receive(first))["subType"], "bye")
        await first.close()

    async def test_who_returns_takes_over_his_place(self):
        first, stale = await self.relay.pair("g")
        back = await self.relay.member("g:b")
        self.assertEqual(await refusal(stale),
                         (11, "You have logged in again from elsewhere.", 1000))
        self.assertEqual([(await receive(first))["subType"] for _ in range(2)], ["bye", "join"])
        await back.send(play("g:b"))
        self.assertEqual(await receive_text(first), play("g:b"))
        await back.close()
        await first.close()

    async def test_an_emptied_group_takes_a_new_password(self):
        await (await self.relay.member("g:a", "old")).close()
        self.relay.wait_for_line('left reason="closed" name="g:a"')
        await (await self.relay.member("g:a", "new")).close()


class Forwarding(RelayTest):
    async def test_frames_arrive_as_they_came(self):
        first, second = await self.relay.pair("g")
        for size in (0, 1, 100, 125 - 60, 126 - 60, 200, 4000, 16000):
            text = message("PLAY", "g:a", "#", pad="x" * size)
            await first.send(text)
            self.assertEqual(await receive_text(second), text)
        await first.send(EXTRA_BLANKS)
        self.assertEqual(await receive_text(second), EXTRA_BLANKS)
        await first.close()
        await second.close()

    async def test_both_broadcast_words_reach_the_friend_and_nobody_else(self):
        first, second = await self.relay.pair("g")
        stranger, other_stranger = await self.relay.pair("h")
        for to in ("+", "#", "", "*", "g:b"):
            await first.send(message("PLAY", "g:a", to))
        await first.send(play("g:a", 1))
        self.assertEqual([(await receive(second))["to"] for _ in range(3)], ["#", "*", "#"])
        await second.send(play("g:b", 2))
        self.assertEqual(await receive_text(first), play("g:b", 2), "no echo came before")
        await other_stranger.send(play("h:b", 3))
        self.assertEqual(await receive_text(stranger), play("h:b", 3), "nothing came before")

    async def test_what_only_the_relay_may_say_is_not_passed_on_from_a_member(self):
        first, second = await self.relay.pair("g")
        for kind, word in (("PING", ""), ("ERROR", ""), ("ADMIN", ""), ("CHAT", "welcome"),
                           ("CHAT", "join"), ("CHAT", "bye")):
            await second.send(message(kind, "g:b", "#", subType=word, text="x", extraData="g:a"))
        legitimate = [message("CHAT", "g:b", "#", subType="text", text="bye"),
                      message("PONG", "g:b", "*"), play("g:b")]
        for text in legitimate:
            await second.send(text)
        self.assertEqual([await receive_text(first) for _ in legitimate], legitimate)
        await first.send(play("g:a"))
        self.assertEqual(await receive_text(second), play("g:a"), "and the forger stays")
        self.assertEqual([line.split(" ", 1)[1] for line in self.relay.lines if "forged" in line],
                         ['forged word="PING" name="g:b" address="127.0.0.1"'])

    async def test_a_message_in_fragments_arrives_whole(self):
        first, second = await self.relay.pair("g")
        text = play("g:a", 7)
        await first.send([text[:1], text[1:20], text[20:]])
        self.assertEqual(await receive_text(second), text)

    async def test_a_chat_text_too_long_or_too_fast_is_dropped_and_told(self):
        first, second = await self.relay.pair("g")
        await first.send(message("CHAT", "g:a", "#", text="x" * 501))
        self.assertEqual((await receive(first))["text"], "Your text was not sent: it is too long.")
        for number in range(6):
            await first.send(message("CHAT", "g:a", "#", text=str(number)))
        self.assertEqual((await receive(first))["text"],
                         "Your text was not sent: wait a second between two texts.")
        await first.send(play("g:a"))
        self.assertEqual([(await receive(second)).get("text") for _ in range(6)],
                         ["0", "1", "2", "3", "4", None])


class Refusal(RelayTest):
    async def assert_refused(self, frames, code, close_code=1008):
        async with self.relay.connect() as client:
            for frame in frames:
                await client.send(frame)
            number, text, closed = await refusal(client)
            self.assertEqual((number, closed), (code, close_code), text)

    async def test_names(self):
        rows = {
            "empty": ("", 1), "empty group": (":a", 1), "empty user": ("g:", 1),
            "no colon": ("Nilo", 2), "too long": ("g:" + "x" * 63, 3), "comma": ("g:a,b", 4),
            "blank": ("g:a b", 4), "tabulator": ("g:a\tb", 4), "bell": ("g:\a", 4)}
        for title, (name, code) in rows.items():
            with self.subTest(title):
                await self.assert_refused([login(name, "pw")], code)

    async def test_wrong_password_name_taken_third_member(self):
        first, second = await self.relay.pair("g")
        await self.assert_refused([login("g:c", "wrong")], 7)
        await self.assert_refused([login("g:a", "wrong")], 7)
        await self.assert_refused([login("g:c", "secret")], 9)
        await first.send(play("g:a"))
        self.assertEqual(await receive_text(second), play("g:a"))

    async def test_a_first_frame_that_is_no_login(self):
        for frame in (play("g:a"), message("PONG", "g:a", "+"), "{}", "x", "[1]"):
            await self.assert_refused([frame], 5)

    async def test_a_first_frame_that_is_not_looked_at(self):
        for frame in (b"{}", login("g:a", "x" * 17000)):
            await self.assert_refused([frame], 5)

    async def test_a_foreign_sender(self):
        await self.assert_refused([login("g:a", "pw"), play("g:b")], 12)

    async def test_no_json(self):
        await self.assert_refused([login("g:a", "pw"), "{"], 13)

    async def test_a_binary_frame(self):
        await self.assert_refused([login("g:a", "pw"), b"{}"], 14, 1003)

    async def test_a_frame_too_large(self):
        text = message("PLAY", "g:a", "#", pad="x" * 17000)
        await self.assert_refused([login("g:a", "pw"), text], 15, 1009)

    async def test_a_refused_member_is_told_to_the_friend(self):
        first, second = await self.relay.pair("g")
        await second.send("x")
        self.assertEqual((await receive(first))["subType"], "bye")


if __name__ == "__main__":
    unittest.main()
