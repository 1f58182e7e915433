"""The tool as it is called: exit codes, standard input and output, how far it has come, the memory it needs.

    xlg_test.py XLG GOLDEN_FOLDER
"""

import os
import pty
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

XLG, GOLDEN = sys.argv[1:3]
LOG = Path(GOLDEN) / "six_cylinders_in_line.xlg"
RECORD = b"<REC1> 13:05:09 51 1480 1234 48 7 </REC1>\r\n"


def xlg(*words, **options):
    return subprocess.run([XLG, *words], capture_output=True, check=False, timeout=60, **options)


class Called(unittest.TestCase):
    def test_exit_codes(self):
        self.assertEqual(xlg("check", LOG).returncode, 0)
        self.assertEqual(xlg("check", "-", input=b"hello").returncode, 1)
        for words in (["check", "/nowhere"], ["check"], ["look", LOG], [], ["check", "--gap", "x", LOG]):
            done = xlg(*words)
            self.assertEqual(done.returncode, 2, words)
            self.assertTrue(done.stderr.startswith(b"xlg: "), done.stderr)
            self.assertEqual(done.stdout, b"")

    def test_every_command_has_a_page(self):
        for words in ([], ["check"], ["summary"], ["csv"], ["mend"], ["events"]):
            done = xlg(*words, "--help")
            self.assertEqual((done.returncode, done.stderr), (0, b""), words)
            self.assertIn(b"Ends with 0", done.stdout)

    def test_a_window_without_a_screen_says_so(self):
        dark = {name: value for name, value in os.environ.items()
                if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        for environment in (dark, dark | {"DISPLAY": ":987"}):
            done = xlg("view", LOG, env=environment)
            self.assertEqual(done.returncode, 2)
            self.assertEqual(done.stderr, b"xlg: there is no screen that the window could be shown on\n")

    def test_standard_input_is_read_as_a_file_is(self):
        from_file = xlg("summary", LOG)
        from_input = xlg("summary", "-", input=LOG.read_bytes())
        self.assertEqual(from_file.stdout.splitlines()[1:], from_input.stdout.splitlines()[1:])
        self.assertEqual(from_input.stdout.splitlines()[0], b"-")

    def test_an_output_that_takes_nothing_is_a_failure(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([XLG, "check", LOG], stdout=full, stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"cannot write standard output", done.stderr)

    def test_mending_into_the_log_that_comes_in_by_standard_input_is_refused(self):
        with tempfile.TemporaryDirectory() as folder:
            log = Path(folder) / "a.xlg"
            log.write_bytes(LOG.read_bytes() + b"<RE")
            with log.open("rb") as stream:
                done = xlg("mend", "--force", "-o", log, "-", stdin=stream)
            self.assertEqual(done.returncode, 2)
            self.assertEqual(log.read_bytes(), LOG.read_bytes() + b"<RE")
            self.assertEqual(xlg("mend", "-o", Path(folder) / "b.xlg", log).returncode, 1)
            self.assertEqual(xlg("check", Path(folder) / "b.xlg").returncode, 0)


class Large(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.log = Path(folder.name) / "a.xlg"
        with cls.log.open("wb") as file:
            file.write(LOG.read_bytes())
            for _ in range(60):  # 260 MB, more than is read until the progress is shown
                file.write(RECORD * 100_000)

    def test_the_progress_is_shown_on_a_terminal_and_wiped_away(self):
        ours, theirs = pty.openpty()
        with subprocess.Popen([XLG, "csv", self.log], stdout=subprocess.DEVNULL, stderr=theirs) as process:
            os.close(theirs)
            shown = b""
            while True:
                try:
                    shown += os.read(ours, 4096)
                except OSError:  # nobody is at the other end any more
                    break
        os.close(ours)
        self.assertEqual(process.returncode, 0)
        self.assertRegex(shown, rb"\r\[#* *\] \d+ % of \d+ MB, \d+ MB/s\x1b\[K")
        self.assertTrue(shown.endswith(b"\r\x1b[K"), shown[-80:])

    def test_without_a_terminal_no_progress_is_shown(self):
        done = subprocess.run([XLG, "csv", self.log], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                              check=True)
        self.assertEqual(done.stderr, b"")

    def test_memory_does_not_grow_with_the_file(self):
        for command, piece in ((["check"], RECORD * 10_000), (["summary"], RECORD * 10_000),
                               (["csv"], RECORD * 10_000), (["check"], b"x" * 400_000)):
            with subprocess.Popen([XLG, *command, "-"], stdin=subprocess.PIPE,
                                  stdout=subprocess.DEVNULL) as process:
                process.stdin.write(LOG.read_bytes())
                most = []
                for pieces in (25, 225):  # 10 MB, 100 MB
                    for _ in range(pieces):
                        process.stdin.write(piece)
                    status = Path(f"/proc/{process.pid}/status").read_text(encoding="utf-8")
                    most.append(int(re.search(r"VmHWM:\s+(\d+) kB", status)[1]))
                process.stdin.close()
            self.assertLess(most[1], most[0] + 1_000, f"kB, {command}")
            self.assertLess(most[1], 16_000, f"kB, {command}")  # with sanitizers too


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
