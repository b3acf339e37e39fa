"""Two clients play rally after rally through the real relay, for as long as wanted. Prints a table of what they hold in
memory; ends with 1 if the scores differ, an error line was logged, or the memory grew.

Started by scripts/soak.
"""

import sys
import time

from opponent import resident_bytes
from stage import Stage, wait_for

MEGABYTE = 2 ** 20
ROWS = 10          # of the table, evenly over the time
FLAT = 5           # MB that a program may gain from the second row to the last
AWAY = 5           # steps of a paddle that leave the middle, where a serve is aimed at


class Tally:
    """What a client's log tells of the score, read on from where the last look ended."""

    def __init__(self, client):
        self.client = client
        self.serves = self.mine = self.theirs = 0
        self.errors = []
        self._read = 0

    def look(self):
        texts = self.client.lines[self._read:]
        self._read += len(texts)
        for _, line in texts:
            self.serves += "PLAY START" in line
            self.mine += line.endswith("] point for me")
            self.theirs += line.endswith("] point for opponent")
            if "] [ERR] [" in line:
                self.errors.append(line)
        return self

    def press(self, *keys):
        self.client.activate(self.client.name)
        self.client.keys(*keys)

    @property
    def points(self):
        return self.mine + self.theirs


def play_rally(starter, other, way):
    """The starter serves; the other leaves the ball's way, so that the rally ends."""
    serves, points = other.look().serves, (starter.look().points, other.points)
    starter.press("ctrl+6", "space")
    wait_for("the serve", lambda: other.look().serves > serves)
    other.press(*[way] * AWAY)
    wait_for("the point", lambda: starter.look().points > points[0] and other.look().points > points[1])


def print_row(*cells):
    print("".join(f"{cell:>10}" for cell in cells), flush=True)


def soak(minutes):
    """The table's rows: for each the MB of both clients and of the relay; and the two tallies."""
    stage = Stage()
    try:
        players = [Tally(client) for client in stage.pair(trace=False, arguments=["--__log_level", "info"])]
        rows = []
        start = time.monotonic()
        rallies = 0
        print_row("minutes", "rallies", "Ann", "Ben", "Ann MB", "Ben MB", "relay MB")
        while len(rows) < ROWS:
            play_rally(players[rallies % 2], players[(rallies + 1) % 2], "Down" if rallies % 4 < 2 else "Up")
            rallies += 1
            elapsed = (time.monotonic() - start) / 60
            if elapsed >= minutes * (len(rows) + 1) / ROWS:
                rows.append([resident_bytes(program.process) / MEGABYTE
                             for program in (players[0].client, players[1].client, stage.relay)])
                print_row(f"{elapsed:.1f}", rallies, players[0].mine, players[1].mine,
                          *(f"{size:.1f}" for size in rows[-1]))
        return rows, players
    finally:
        stage.close()


def faults(rows, ann, ben):
    """What is wrong, in words."""
    found = [f"error line: {line}" for line in ann.errors + ben.errors]
    if (ann.mine, ann.theirs) != (ben.theirs, ben.mine):
        found.append(f"Ann counts {ann.mine}:{ann.theirs}, Ben {ben.mine}:{ben.theirs}")
    for name, first, last in zip(("Ann", "Ben", "the relay"), rows[1], rows[-1]):
        if last - first > FLAT:
            found.append(f"{name} has grown from {first:.1f} to {last:.1f} MB")
    return found


def main():
    rows, (ann, ben) = soak(float(sys.argv[1]))
    wrong = faults(rows, ann, ben)
    print("\n".join(wrong) if wrong else "equal scores, no error line, memory flat")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
