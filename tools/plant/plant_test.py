"""The helpers of ./run: what they read, what they paint, and that no process outlives them."""

import os
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib
from collections import Counter
from pathlib import Path

from helpers import Failure, Helper, wait_until
from screen import Screen, png
from summary import (all_logged, controller_table, frames_at_controller, frames_received, last_words,
                     log_lines, logged, summary)

HERE = Path(__file__).parent
LOG = """<HEADER>
<STRUCTURE> <REC1> time </REC1>
</HEADER>
<LOG>
<REC1> 12:00:00 1 2 3 4 5 </REC1>
<REC1> 12:00:01 1 2 3 4 5 </REC1>
<REC2> 12:00:01 0 </REC2>
<!-- 12:00:01 x -->
<#-- 12:00:02 y -->
"""
REPORT = ("channel 1 frames 01=1\nnoise\nchannel 1 frames 00=1 01=660 03=132\nchannel 1 curves 03=33 04=0\n"
          "channel 2 frames\n")
CONTROLLER_REPORT = """listening on port 21523
connection 1 opened
channel 1 frames 1=1 8=0 3=0 4=0
channel 1: thermosignal 99 %
channel 4 frames 1=0 8=0 3=0 4=0
others writes=0 reads=0 refused=0
ok report
channel 1 frames 1=12 8=11 3=10 4=9
channel 1: thermosignal 41 %
channel 1: status: unit ready; errors: -
channel 2 frames 1=0 8=0 3=0 4=0
channel 4 frames 1=1 8=2 3=3 4=4
channel 4: thermosignal 7 %
others writes=0 reads=0 refused=0
"""


def png_rows(file):
    """Width and the rows of a PNG file with one data chunk and no filters, for comparison."""
    width, height = struct.unpack(">II", file[16:24])
    size, name = struct.unpack(">I4s", file[33:41])
    assert name == b"IDAT"
    content = zlib.decompress(file[41:41 + size])
    step = 1 + 3 * width
    return width, [content[row * step + 1:(row + 1) * step] for row in range(height)]


class SummaryTest(unittest.TestCase):
    def test_the_last_report_counts(self):
        self.assertEqual(frames_received(REPORT), {1: {"00": 1, "01": 660, "03": 132}, 2: {}})

    def test_lines_behind_the_header_count(self):
        self.assertEqual(log_lines(LOG), Counter(REC1=2, REC2=1, comments=2))

    def test_all_channels_have_logged_when_each_has_a_measured_value(self):
        with tempfile.TemporaryDirectory() as folder:
            for channel in range(1, 5):
                self.assertFalse(all_logged(logged(folder)))
                (Path(folder) / f"Engine {channel}").mkdir()
                (Path(folder) / f"Engine {channel}" / "empty.xlg").write_text(LOG.partition("<REC1> 12")[0])
                self.assertFalse(all_logged(logged(folder)))
                (Path(folder) / f"Engine {channel}" / "log.xlg").write_text(LOG)
            self.assertTrue(all_logged(logged(folder)))

    def test_the_summary_of_nothing(self):
        with tempfile.TemporaryDirectory() as folder:
            text = "\n".join(summary(Path(folder), ""))
        self.assertIn("Channel 4\n  frames received  0 ()\n  log lines        0 ", text)

    def test_the_controller_s_last_report_counts(self):
        self.assertEqual(frames_at_controller(CONTROLLER_REPORT),
                         {1: {1: 12, 8: 11, 3: 10, 4: 9}, 2: {1: 0, 8: 0, 3: 0, 4: 0},
                          4: {1: 1, 8: 2, 3: 3, 4: 4}})
        self.assertEqual(last_words(CONTROLLER_REPORT),
                         {1: ["thermosignal 41 %", "status: unit ready; errors: -"], 4: ["thermosignal 7 %"]})

    def test_the_controller_s_table(self):
        self.assertEqual(controller_table(CONTROLLER_REPORT), [
            "Plant controller",
            "  channel    block 1  block 8  block 3  block 4      all",
            "        1         12       11       10        9       42",
            "        2          0        0        0        0        0",
            "        3          0        0        0        0        0",
            "        4          1        2        3        4       10",
            "  channel 1: thermosignal 41 %",
            "  channel 1: status: unit ready; errors: -",
            "  channel 4: thermosignal 7 %"])

    def test_a_controller_that_said_nothing_received_nothing(self):
        table = controller_table("")
        self.assertEqual(len(table), 6)
        self.assertTrue(all(line.endswith(" 0") for line in table[2:]))


class HelperTest(unittest.TestCase):
    def test_it_ends_with_its_block(self):
        with Helper("sleep", ["sleep", "60"]) as helper:
            self.assertTrue(helper.running())
            helper.check()
        self.assertEqual(helper.ending(), "killed by SIGTERM")

    def test_it_ends_when_the_block_fails(self):
        with self.assertRaises(Failure), Helper("sleep", ["sleep", "60"]) as helper:
            raise Failure("x")
        self.assertFalse(helper.running())

    def test_an_end_of_its_own_is_a_failure(self):
        with Helper("sh", ["sh", "-c", "exit 3"]) as helper:
            self.assertTrue(helper.wait(10))
            with self.assertRaisesRegex(Failure, "sh ended by itself, exit code 3"):
                helper.check()

    def test_it_ends_with_its_killed_starter(self):
        script = ("from helpers import Helper; import time; helper = Helper('sleep', ['sleep', '60']);"
                  "print(helper.process.pid, flush=True); time.sleep(60)")
        words = [sys.executable, "-B", "-c", script]
        with subprocess.Popen(words, cwd=HERE, stdout=subprocess.PIPE) as starter:
            pid = int(starter.stdout.readline())
            comm = Path(f"/proc/{pid}/comm")
            wait_until(lambda: comm.read_text() == "sleep\n", 10, "no sleep")
            starter.kill()
        stat = Path(f"/proc/{pid}/stat")
        wait_until(lambda: not stat.exists() or ") Z " in stat.read_text(), 10, "it lives on")

    def test_a_condition_that_never_holds(self):
        with self.assertRaisesRegex(Failure, "nothing came within 0.1 s"):
            wait_until(lambda: False, 0.1, "nothing came")


class ScreenTest(unittest.TestCase):
    def test_a_picture_has_the_pixels_of_the_dump(self):
        header = struct.pack(">25I", 104, 7, 2, 24, 2, 2, 0, 0, 32, 0, 32, 32, 12, 4, 0, 0, 0, 8, 1, 1,
                             2, 2, 0, 0, 0)
        colours = bytes(12)
        lines = bytes([1, 2, 3, 0, 4, 5, 6, 0, 99, 99, 99, 99, 7, 8, 9, 0, 10, 11, 12, 0, 99, 99, 99, 99])
        rows = [bytes([3, 2, 1, 6, 5, 4]), bytes([9, 8, 7, 12, 11, 10])]
        self.assertEqual(png_rows(png(header + b"name" + colours + lines)), (2, rows))

    def test_a_screen_comes_and_goes(self):
        with Screen(640, 480) as screen:
            self.assertTrue(screen.command("-m"))
            self.assertFalse(screen.close("no such window"))
            with tempfile.TemporaryDirectory() as folder:
                file = Path(folder) / "x.png"
                screen.picture(file)
                width, rows = png_rows(file.read_bytes())
            self.assertEqual((width, len(rows)), (640, 480))
            helpers = screen.helpers
            memory = screen.memory.name
        self.assertEqual([helper.running() for helper in helpers], [False, False])
        self.assertFalse(os.path.exists(memory))


if __name__ == "__main__":
    unittest.main()
