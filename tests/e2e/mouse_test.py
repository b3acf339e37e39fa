"""One player rallies offline with the mouse: what it does to the paddles in windows of several shapes, and what the
log tells of it, line by line.
"""

import re
import unittest

from stage import START_BUTTON, Stage, wait_for

# Heights of the right paddle in the field. A serve is aimed at the one where it stands.
HOME = -60
AWAY = 100
ABOVE_HOME = HOME + 20  # the ball meets the lower half of the paddle, which sends it down

PADDLE = re.compile(r"""paddle pos:PLAY, from:'\?', to:'#', game:'vork', payload:'\{"cmd":"setPos","object":"paddle","""
                    r""""pos":"380,([^"]+)","side":"RIGHT"\}'""")
NUMBER = r"(-?\d+\.\d\d)"
FLIGHT = rf"pos:{NUMBER}, {NUMBER}, dir:{NUMBER}, {NUMBER}, velocity:80\.00"
# The lines that tell of a rally.
RALLY = re.compile(r"(PLAY|STATE CHANGED|PlayField::next_frame, (HIT|cGuard)|MASTER|BALL|    (hits|all)|Window::ini|"
                   r"CONFIRMED|point)\b.*")
SERVE = [r"INF PLAY START LEFT SIDE", r"INF STATE CHANGED, states \{PLAY\}",
         rf"DEB PlayField::next_frame, HIT HIT_TOP, ball: \{{{FLIGHT}\}}"]


class MouseTest(unittest.TestCase):
    def setUp(self):
        self.stage = Stage()
        self.addCleanup(self.stage.close)
        self.client = self.stage.client("vork2D/v5", "--__bounds", "0,30,800,600")
        self.client.window("vork2D/v5")
        self.client.click(*START_BUTTON)
        self.client.activate("Info offline mode")
        self.client.keys("alt+n")
        self.client.wait_line("PLAY START LEFT SIDE")
        self.client.click(*START_BUTTON)
        self.client.wait_line("STOPPED by user")
        self.client.press("ctrl+1")  # slow: there is time for the mouse while the ball flies
        self.client.wait_line("tmTravel, ms:10000")

    # --- the mouse -----------------------------------------------------------------------------------------------

    def told(self):
        """The heights of the right paddle that the log has told so far."""
        return [float(match.group(1)) for match in map(PADDLE.fullmatch, self.client.texts()) if match]

    def press_row(self, row):
        """Presses the field in a row of pixels; returns the height that the paddle gets."""
        before = len(self.told())
        self.client.click(self.column, row)
        wait_for("the paddle", lambda: len(self.told()) > before)
        return self.told()[-1]

    def measure(self):
        """Learns from two presses which row of pixels is which height."""
        width, height = self.client.shape(self.client.window("vork2D/v5"))
        self.column = width // 2
        self.middle = height // 2
        upper, lower = self.press_row(self.middle - 40), self.press_row(self.middle + 40)
        self.assertGreater(upper, lower)
        self.units_per_row = (upper - lower) / 80
        self.height_at_middle = (upper + lower) / 2

    def row(self, height):
        return self.middle + round((self.height_at_middle - height) / self.units_per_row)

    def put_paddle(self, height):
        """Presses where the paddle shall be; returns where it is."""
        told = self.press_row(self.row(height))
        self.assertAlmostEqual(told, height, delta=self.units_per_row)
        return told

    def drag_paddle(self, start, end):
        """Drags the paddle; returns where it is in the end."""
        rows = [self.row(start + (end - start) * step / 5) for step in range(6)]
        self.client.drag(*((self.column, row) for row in rows))
        wait_for("the paddle", lambda: abs(self.told()[-1] - end) <= self.units_per_row)
        return self.told()[-1]

    def scores(self):
        """What stands for the left and the right score on the screen: texts that are equal for equal pictures."""
        picture = self.stage.folder / "window.png"
        self.client.screenshot(picture)
        top = self.row(160) - 30  # they stand on this height, 50 from the field's edges
        return [self.stage.run("identify", "-format", "%#", f"{picture}[60x30+{left}+{top}]") for left in (40, 715)]

    # --- the rallies ---------------------------------------------------------------------------------------------

    def serve(self):
        """A serve to the right paddle, which then stands out of the way; returns the place of the serve in the log and
        the height at which the ball will arrive."""
        home = self.put_paddle(HOME)
        before = len(self.client.texts())
        self.client.click(*START_BUTTON)
        wait_for("the serve", lambda: "PLAY START LEFT SIDE" in self.client.texts()[before:])
        self.put_paddle(AWAY)
        return before, home

    def lines_since(self, before, expected):
        """Waits for the last of the expected lines: up to it the lines that tell of the rally are these, whole and in
        this order. Returns their matches."""
        def find():
            lines = [f"{level} {text}" for level, text in self.client.log()[before:] if RALLY.fullmatch(text)]
            return lines if any(re.fullmatch(expected[-1], line) for line in lines) else None
        lines = wait_for(f"the line '{expected[-1]}'", find)
        matches = [re.fullmatch(pattern, line) for pattern, line in zip(expected, lines)]
        self.assertTrue(len(lines) >= len(expected) and all(matches), "\n".join(lines))
        return matches

    def win(self):
        """The paddle is dragged back in time, and the ball comes back from it."""
        before, home = self.serve()
        paddle = self.drag_paddle(AWAY, ABOVE_HOME)
        matches = self.lines_since(before, SERVE + [
            rf"DEB PlayField::next_frame, HIT RIGHT, ball\.pos:370\.00, {NUMBER}, rel:{NUMBER}",
            rf"DEB PlayField::next_frame, cGuard:1, after calc, ball:{FLIGHT}",
            rf"DEB PlayField::next_frame, HIT HIT_BOTTOM, ball: \{{{FLIGHT}\}}"])
        arrived, rel = map(float, matches[3].groups())
        self.assertAlmostEqual(arrived, home, delta=0.1)
        self.assertAlmostEqual(rel, (home - paddle) / 40, delta=0.02)
        came, went, bounced = (list(map(float, matches[i].groups())) for i in (2, 4, 5))
        self.assertGreater(came[2], 0)
        self.assertEqual(went[:2], [370, arrived])
        self.assertLess(went[2], 0)
        self.assertEqual(bounced[2:], went[2:])
        self.assertLess(bounced[0], 370)
        self.client.click(*START_BUTTON)
        self.client.wait_line("STOPPED by user", 2)

    def lose(self):
        """The paddle stays away, the ball passes it, and the one on the left gets a point."""
        before, home = self.serve()
        matches = self.lines_since(before, SERVE + [
            r"DEB MASTER:true",
            rf"DEB BALL ON RIGHT SIDE, ball\.pos:{NUMBER}, {NUMBER}",
            rf"DEB BALL EXIT, ptExit:405\.00, {NUMBER}",
            r"DEB     hits top:1", r"DEB     hits bottom:0", r"DEB     hits pad left:0", r"DEB     hits pad right:0",
            r"DEB     all hits:1",
            r"WRN Window::ini, \* ball out of field:RIGHT",
            r"WRN CONFIRMED- ball out of field:RIGHT",
            r"INF STATE CHANGED, states \{\}",
            r"INF point for me"])
        beyond = list(map(float, matches[4].groups()))
        self.assertGreater(beyond[0], 405)
        self.assertLess(float(matches[5].group(1)), home, "it flies on as it came, downward")

    def play(self):
        """Both rallies. The lost one is the first: after it the ball still flies to the right."""
        self.measure()
        self.lose()
        self.win()
        self.assertEqual(self.client.errors(), [])

    # --- the tests -----------------------------------------------------------------------------------------------

    def test_a_ball_comes_back_from_the_paddle_that_was_dragged_into_its_way(self):
        self.measure()
        self.win()
        self.assertEqual(self.client.errors(), [])

    def test_a_ball_that_passes_the_paddle_is_a_point(self):
        self.measure()
        left, right = self.scores()
        self.lose()
        wait_for("the point on the screen", lambda: self.scores()[0] != left)
        self.assertEqual(self.scores()[1], right)
        self.assertEqual(self.client.errors(), [])

    def test_the_mouse_plays_in_a_window_that_was_made_wide_and_low(self):
        self.client.resize(1100, 300)
        self.play()

    def test_the_mouse_plays_in_a_window_that_was_made_narrow_and_high(self):
        self.client.resize(420, 760)
        self.play()


if __name__ == "__main__":
    unittest.main()
