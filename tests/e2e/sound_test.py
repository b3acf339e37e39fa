"""What is heard: a rally is recorded from the null sink of a sound server of the test's own, and each hit is looked
for in the recording. And what happens where there is no sound server at all.

The hits alternate between wall and paddle, since Qt may drop the repeat of one and the same file.
"""

import array
import datetime
import re
import statistics
import subprocess
import threading
import time
import unittest

from stage import Client, Stage, wait_for

RATE = 44100  # samples a second
QUIET = 200   # of 32,767: below is silence
HITS = 8

PLAYED = re.compile(r"^\[\d+\] \[DEB\] \[([0-9:,]+)\] \[\d+\] PlayField::play_sound \*\* <<<:/wb/shared-res/sounds/(\w+)\.wav>>>$")
COLUMN = re.compile(r"^\[\d+\] \[\w+\] \[([0-9:,]+)\]")


def seconds_of_day(text):
    """The time column of the log, such as 11:03:34,326666."""
    moment = datetime.datetime.strptime(text, "%H:%M:%S,%f")
    return (moment - moment.replace(hour=0, minute=0, second=0, microsecond=0)).total_seconds()


def seconds_of_day_now():
    now = datetime.datetime.now()
    return (now - now.replace(hour=0, minute=0, second=0, microsecond=0)).total_seconds()


class SoundServer:
    """A sound server with one sink that leads nowhere, kept running by silence and recorded."""

    def __init__(self, stage):
        self._env = dict(stage.env, HOME=str(stage.folder))
        self.samples = array.array("h")
        self._starts = []  # where the recording began, as each block of it tells
        self._programs = [self._start("pulseaudio", "-n", "--exit-idle-time=-1", "--daemonize=no", "-L",
                                      "module-null-sink sink_name=null norewinds=1", "-L",
                                      "module-native-protocol-unix")]
        wait_for("the sound server", lambda: subprocess.run(["pactl", "info"], env=self._env,
                                                            capture_output=True).returncode == 0)
        with open("/dev/zero", "rb") as zero:
            self._programs.append(self._start("pacat", "--latency-msec=20", stdin=zero))
        recorder = self._start("parec", "--device=null.monitor", "--format=s16le", f"--rate={RATE}", "--channels=1",
                               "--latency-msec=5", "--raw", stdout=subprocess.PIPE)
        self._programs.append(recorder)
        self._reader = threading.Thread(target=self._read, args=(recorder.stdout,), daemon=True)
        self._reader.start()
        wait_for("the recording", lambda: len(self.samples) > RATE // 2)

    def _start(self, *command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL):
        return subprocess.Popen(command, env=self._env, stdin=stdin, stdout=stdout, stderr=subprocess.DEVNULL)

    def _read(self, stream):
        while block := stream.read1(65536):
            self.samples.frombytes(block[:len(block) & ~1])
            self._starts.append(seconds_of_day_now() - len(self.samples) / RATE)

    def close(self):
        for program in reversed(self._programs):
            program.terminate()
            program.wait()
        self._reader.join()
        self._programs[-1].stdout.close()

    def die(self):
        """As a server that crashed."""
        self._programs[0].kill()
        self.close()

    def is_loud(self):
        return any(abs(sample) > QUIET for sample in self.samples[-RATE:])

    def onset_after(self, moment, limit):
        """Seconds from a time of day to the first loud sample, within `limit`; None where all is quiet."""
        start = min(self._starts)  # no block comes earlier than it was recorded
        first = int((moment - start) * RATE)
        for at in range(max(first, 0), min(first + int(limit * RATE), len(self.samples))):
            if abs(self.samples[at]) > QUIET:
                return (at - first) / RATE
        return None


class SoundTest(unittest.TestCase):
    def setUp(self):
        self.stage = Stage()
        self.addCleanup(self.stage.close)

    def start_rally(self):
        """One player on both sides, who need not move: from the middle of a paddle the ball goes to a wall and on to
        the middle of the other paddle."""
        client = self.stage.client("vork2D/v5", "--__bounds", "0,30,800,600")
        client.window("vork2D/v5")
        client.press("ctrl+4", "space")
        client.activate("Info offline mode")
        client.keys("alt+n")
        return client

    def sounds(self, client):
        """(time of day, name) of each sound that the log tells of, the start of the rally left out."""
        found = [PLAYED.match(line) for _, line in list(client.lines)]
        return [(seconds_of_day(match.group(1)), match.group(2)) for match in found if match][1:]

    def test_each_hit_of_a_rally_is_heard(self):
        server = SoundServer(self.stage)
        self.addCleanup(server.close)
        client = self.start_rally()
        wait_for("the hits", lambda: len(self.sounds(client)) >= HITS, 60)
        hits = self.sounds(client)[:HITS]
        end = len(server.samples) + RATE
        wait_for("the last sound", lambda: len(server.samples) > end)
        self.assertEqual([name for _, name in hits], ["Blop1", "Blop2"] * (HITS // 2))
        quiet_before = [server.onset_after(moment - 0.1, 0.1) for moment, _ in hits]
        onsets = [server.onset_after(moment, 0.5) for moment, _ in hits]
        print("hits are heard after ms:", [onset and round(onset * 1000) for onset in onsets])
        self.assertEqual(quiet_before, [None] * HITS, "what is heard behind a hit is the hit")
        self.assertNotIn(None, onsets)
        self.assertLess(max(onsets), 0.1)

    def test_without_a_sound_server_the_game_plays_on_in_silence(self):
        self.stage.env["PULSE_SERVER"] = f"unix:{self.stage.folder}/nowhere"
        client = self.start_rally()
        wait_for("the hits", lambda: len(self.sounds(client)) >= 2, 60)
        early = self.foreign_lines(client)
        wait_for("the hits", lambda: len(self.sounds(client)) >= HITS, 60)
        print("lines that are not the game's:", early)
        self.assertEqual(self.foreign_lines(client), early, "a sound leaves no line behind it")
        self.assertLessEqual(len(early), 2)
        self.assertEqual(client.errors(), [])
        held_up = statistics.median(self.milliseconds_in_play_sound(client))
        pictures = [int(text.split(":")[1]) for text in client.texts() if text.startswith("FPS:")]
        print(f"a sound takes {held_up:.2f} ms of a frame, {statistics.median(pictures)} pictures/s are drawn")
        self.assertLess(held_up, 8)
        self.assertGreaterEqual(max(pictures), 55)

    def start_and_lose_the_sound_server(self):
        """The server dies while a hit is heard, the last one so far: the next is a second away."""
        server = SoundServer(self.stage)
        client = self.start_rally()

        def last_hit_is_heard():
            hits = self.sounds(client)
            return hits and server.onset_after(hits[-1][0], 0.5) is not None
        wait_for("a hit", last_hit_is_heard, 60)
        server.die()
        return client

    def play_on(self, client):
        hits = len(self.sounds(client)) + HITS
        wait_for("more hits", lambda: len(self.sounds(client)) >= hits, 60)

    def check_the_end(self, client):
        lines = self.foreign_lines(client)
        print("lines that are not the game's:", lines)
        self.assertLess(len(lines), HITS, "not one for each sound")
        self.assertEqual(client.errors(), [])
        self.assertEqual(client.quit(), 0)

    def test_a_sound_server_that_starts_anew_is_heard_again(self):
        """Qt looks for it once, three seconds after it went."""
        client = self.start_and_lose_the_sound_server()
        server = SoundServer(self.stage)
        self.addCleanup(server.close)
        wait_for("a sound", server.is_loud, 60)
        self.play_on(client)
        self.check_the_end(client)

    def test_a_sound_server_that_dies_leaves_a_silent_game(self):
        client = self.start_and_lose_the_sound_server()
        self.play_on(client)
        self.check_the_end(client)

    def foreign_lines(self, client):
        """What Qt says; the settings speak before the log has its columns."""
        return [line for _, line in list(client.lines)
                if line and not Client.PREFIX.match(line) and not line.startswith("GSettings::")]

    def milliseconds_in_play_sound(self, client):
        """From the line in front of each hit's sound to the line behind it."""
        lines = [line for _, line in list(client.lines)]
        took = []
        for at, line in enumerate(lines):
            played = PLAYED.match(line)
            if played is None or not played.group(2).startswith("Blop"):
                continue
            behind = next((text for text in lines[at:] if "PlayField::next_frame, HIT" in text), None)
            if behind is not None:
                took.append(1000 * (seconds_of_day(COLUMN.match(behind).group(1)) - seconds_of_day(played.group(1))))
        return took


if __name__ == "__main__":
    unittest.main()
