"""What the built program answers before it has a window, and what it makes of its command line."""

import os
import pathlib
import subprocess
import tempfile
import threading
import unittest

PROGRAM = os.environ["VORK2D_PROGRAM"]
LIMIT = 60  # seconds, for a busy machine

# Where nothing listens, so that no attempt leaves this machine.
NOWHERE = ("--server", "127.0.0.1:9")


class Entry(unittest.TestCase):
    def setUp(self):
        home = tempfile.TemporaryDirectory()
        self.addCleanup(home.cleanup)
        self.environment = {**os.environ, "HOME": home.name, "XDG_CONFIG_HOME": home.name,
                            "QT_QPA_PLATFORM": "offscreen"}

    def lines_until(self, text, *arguments):
        """The log up to the first line that holds the text."""
        lines = []
        with subprocess.Popen([PROGRAM, *arguments], env=self.environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as program:
            limit = threading.Timer(LIMIT, program.kill)
            limit.start()
            try:
                for line in program.stdout:
                    lines.append(line.rstrip("\n"))
                    if text in line:
                        return lines
            finally:
                limit.cancel()
                program.kill()
        self.fail(f"the program ended without a line that holds {text!r}")

    def line_after(self, *arguments, with_text):
        """The first line of the log that holds the text, from there on."""
        line = self.lines_until(with_text, *arguments)[-1]
        return line[line.index(with_text):]

    def test_help_and_version_need_no_display(self):
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
            self.environment.pop(name, None)
        for option, answer in (("--help", r"(?s)^usage: vork2d .*--server HOST.*--login"),
                               ("--version", r"^vork2d \d+\.\d+\.\d+\n$")):
            with self.subTest(option):
                done = subprocess.run([PROGRAM, option], env=self.environment, text=True,
                                      capture_output=True, timeout=LIMIT)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertRegex(done.stdout, answer)

    def test_damaged_settings_are_kept_aside_and_the_program_starts(self):
        version = "version expected:110 "
        settings = pathlib.Path(self.line_after(with_text=version).removeprefix(version))
        kept = settings.with_name(settings.name + ".unreadable")
        for content in (b"\0" * 100,
                        b"[config]\nversion=110\n[GApplication]\napp=R05P\n",
                        b"[config]\nversion=@Variant(\\0\\0\\0\\v\\xff\\xff\\xff\\xff)\n",
                        b"[config]\nversion=@Variant(\\0\\0\\0\\x41\\0\\0\\0\\x1)\n"):
            with self.subTest(content):
                kept.unlink(missing_ok=True)
                settings.parent.mkdir(exist_ok=True)
                settings.write_bytes(content)
                self.line_after(with_text="user '")
                self.assertEqual(kept.read_bytes(), content)

    def test_the_user_is_told_and_has_a_default(self):
        self.assertEqual(self.line_after(with_text="user '"), "user 'group1:Nilo'")
        self.assertEqual(self.line_after("--user", "g:Ann", with_text="user '"), "user 'g:Ann'")

    def test_only_the_alias_itself_becomes_localhost(self):
        for host, taken in (("127.0.0.1", "localhost"), ("127.0.0.11", "127.0.0.11"),
                            ("127.0.0.", "127.0.0."), ("Localhost", "Localhost")):
            with self.subTest(host):
                attempt = "Window::try_connect_via_cmd "
                self.assertEqual(self.line_after("--host", host, "--login", *NOWHERE,
                                                 with_text=attempt), f"{attempt}'{taken}'")

    def test_a_host_that_nobody_knows_is_told_with_what_is_taken_for_it(self):
        warning = "host '"
        line = self.lines_until(warning, "--host", "nowhere", *NOWHERE)[-1]
        self.assertIn("[WRN]", line)
        self.assertTrue(line.endswith("host 'nowhere' is unknown, --login takes the default server "
                                      "'127.0.0.1:9'"), line)
        for host in ("localhost", "127.0.0.1", "127.0.0.1:9"):
            with self.subTest(host):
                lines = self.lines_until("user '", "--host", host, *NOWHERE)
                self.assertEqual([line for line in lines if warning in line], [])

    def test_a_default_server_on_this_machine_is_not_the_development_relay(self):
        attempt = "Window::try_connect_via_cmd "
        for server in ("127.0.0.1", "localhost"):
            with self.subTest(server):
                self.assertEqual(self.line_after("--server", server, "--login", with_text=attempt),
                                 f"{attempt}'{server}:443'")

    def test_a_server_that_is_none_is_told_once_and_nothing_is_connected(self):
        for server in ("::1", "http://x"):
            with self.subTest(server):
                lines = self.lines_until("no server", "--server", server, "--login")
                self.assertEqual([line for line in lines if "takes the default server" in line], [])
                told = [line for line in lines if "no host or host:port" in line]
                self.assertEqual(len(told), 1, lines)
                self.assertIn(f"'{server}' is no server, not connecting", lines[-1])

    def test_without_a_host_the_default_server_is_taken(self):
        attempt = "Window::try_connect_via_cmd "
        self.assertEqual(self.line_after("--login", *NOWHERE, with_text=attempt),
                         f"{attempt}'127.0.0.1:9'")


if __name__ == "__main__":
    unittest.main()
