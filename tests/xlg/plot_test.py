"""Pictures as they are asked for on the command line: without a display, beside the tool or not there at all.

    plot_test.py XLG GOLDEN_FOLDER
"""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

XLG, GOLDEN = sys.argv[1:3]
LOG = Path(GOLDEN) / "six_cylinders_in_line.xlg"
BEGINNINGS = {".png": b"\x89PNG", ".svg": b"<?xml", ".pdf": b"%PDF-"}
MISSING = b"xlg: plot and view are in the package xlg-view; cannot start "


class Pictures(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="xlg_plot_"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.log = self.folder / "20260702Qu_Engine 1.xlg"
        # An alarm level that there is, unlike that of the golden log.
        self.log.write_bytes(LOG.read_bytes().replace(b"<ALARMLEVEL> 320 <", b"<ALARMLEVEL> 3 <"))

    def xlg(self, *words, tool=XLG, **more):
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith(("QT_", "DISPLAY", "WAYLAND", "XDG_"))} | more
        return subprocess.run([tool, *words], capture_output=True, check=False, timeout=60, cwd=self.folder,
                              env=environment)

    def test_no_display_is_needed_and_none_is_asked(self):
        pictures = set()
        for display in ({}, {"DISPLAY": ":77"}, {"QT_QPA_PLATFORM": "xcb", "QT_SCALE_FACTOR": "2"},
                        {"QT_FONT_DPI": "192"}, {"QT_SCREEN_SCALE_FACTORS": "1.5"}):
            done = self.xlg("plot", "--force", "-o", "a.png", self.log, **display)
            self.assertEqual((done.returncode, done.stderr), (0, b""))
            self.assertEqual(done.stdout.count(b"\n"), 1)
            self.assertTrue(done.stdout.startswith(b"a.png: Engine 1, 2026-07-02 13:05:09 to "), done.stdout)
            cycle = self.xlg("plot", "--force", "--cycle", "13:06", "--as", "detail", self.log, **display)
            self.assertEqual((cycle.returncode, cycle.stderr), (0, b""))
            picture = (self.folder / "a.png").read_bytes()
            self.assertEqual(int.from_bytes(picture[16:20], "big"), 1600)
            pictures.add(picture)
        self.assertEqual(len(pictures), 1)

    def test_a_file_is_of_the_kind_that_it_is_called(self):
        for ending, beginning in BEGINNINGS.items():
            self.assertEqual(self.xlg("plot", "-o", f"a{ending}", self.log).returncode, 0)
            self.assertTrue((self.folder / f"a{ending}").read_bytes().startswith(beginning), ending)

    def test_a_picture_without_a_name_is_called_as_its_log(self):
        self.assertEqual(self.xlg("plot", self.log).returncode, 0)
        self.assertTrue((self.folder / "20260702Qu_Engine 1.png").exists())
        self.assertEqual(self.xlg("plot", self.log).returncode, 2)

    def test_exit_codes(self):
        self.assertEqual(self.xlg("plot", "--from", "20:00", "--to", "21:00", self.log).returncode, 1)
        for words in (["plot"], ["plot", "/nowhere.xlg"], ["plot", "--from", "noon", self.log],
                      ["plot", "-o", "/nowhere/a.png", self.log], ["plot", "-o", "a.jpg", self.log],
                      ["plot", self.folder / "nothing"]):
            done = self.xlg(*words)
            self.assertEqual(done.returncode, 2, words)
            self.assertTrue(done.stderr.startswith(b"xlg: "), done.stderr)
            self.assertEqual(done.stdout, b"")
        self.assertEqual(list(self.folder.iterdir()), [self.log])

    def test_an_empty_folder_has_no_log(self):
        (self.folder / "empty").mkdir()
        done = self.xlg("plot", "empty")
        self.assertEqual((done.returncode, done.stderr), (2, b"xlg: there is no log in empty\n"))

    def test_no_picture_takes_the_place_of_a_log(self):
        (self.folder / "a.png").hardlink_to(self.log)
        done = self.xlg("plot", "--force", "-o", "a.png", self.log)
        self.assertEqual((done.returncode, done.stderr), (2, b"xlg: a.png is the log itself\n"))
        self.assertEqual((self.folder / "a.png").stat().st_nlink, 2)

    def test_a_log_without_a_header_has_charts_and_a_scope_but_no_diagrams(self):
        self.log.write_bytes(self.log.read_bytes().partition(b"</HEADER>\r\n")[2])
        self.assertEqual(self.xlg("plot", self.log).returncode, 0)
        for kind in ("detail", "speed-bars", "thermo-bars"):
            done = self.xlg("plot", "-o", "a.png", "--cycle", "13:06", "--as", kind, self.log)
            told = f"xlg: the header of {self.log} tells nothing of the engine\n"
            self.assertEqual((done.returncode, done.stderr.decode()), (2, told))
        scope = self.xlg("plot", "-o", "a.png", "--cycle", "13:06", self.log)
        self.assertEqual((scope.returncode, scope.stderr), (0, b""))

    def test_a_document_is_a_page_of_paper_across(self):
        for words in ([], ["--cycle", "13:06"]):
            self.assertEqual(self.xlg("plot", "--force", "-o", "a.pdf", *words, self.log).returncode, 0)
            about = subprocess.run(["pdfinfo", self.folder / "a.pdf"], capture_output=True, check=True,
                                   text=True)
            self.assertRegex(about.stdout, "Page size: +84[0-9.]+ x 59[0-9.]+ pts")

    def test_without_the_program_beside_it_the_tool_names_the_package(self):
        alone = self.folder / "bin"
        alone.mkdir()
        tool = shutil.copy(XLG, alone)
        for words in (["plot", self.log], ["view"], ["view", self.log]):
            done = self.xlg(*words, tool=tool)
            self.assertEqual(done.returncode, 2)
            self.assertTrue(done.stderr.startswith(MISSING), done.stderr)
            self.assertEqual(done.stderr.count(b"\n"), 1)
        for words in (["plot", "--help"], ["view", "--help"]):
            self.assertEqual(self.xlg(*words, tool=tool).returncode, 0)
        self.assertEqual(self.xlg("check", self.log, tool=tool).returncode, 0)

    def test_nothing_is_left_of_a_picture_that_finds_no_room(self):
        plot = 'ulimit -f 1; trap "" XFSZ; exec "$0" plot -o a.svg "$1"'
        done = subprocess.run(["sh", "-c", plot, XLG, self.log], capture_output=True, check=False, timeout=60,
                              cwd=self.folder)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"cannot write a.svg.part", done.stderr)
        self.assertEqual(list(self.folder.iterdir()), [self.log])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
