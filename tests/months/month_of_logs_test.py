"""Logs that were played back by `month_of_logs`: the log of a log has its lines, whatever happens meanwhile.

    month_of_logs_test.py MONTH_OF_LOGS XLG SCENARIO
"""

import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

MONTH_OF_LOGS, XLG, SCENARIO = (Path(word).resolve() for word in sys.argv[1:4])

BUSY_DAY = "20260917"  # the link of Engine 1 is lost, and the measurement stopped for two hours
# What the program says of itself, not of the engine.
OWN = {"<!-- Measure Stopped -->", "<!-- Log Started -->", "<!-- Evaluator connected -->",
       "<!-- Evaluator not connected -->"}


def setUpModule():
    """An hour and some minutes of two engines."""
    MonthOfLogs.folder = Path(tempfile.mkdtemp())
    unittest.addModuleCleanup(shutil.rmtree, MonthOfLogs.folder)
    make("source", "--minutes", "70", "--engines", "2", "--scenario", SCENARIO)


def make(name, *words):
    folder = MonthOfLogs.folder / name
    subprocess.run([MONTH_OF_LOGS, folder, *words], check=True, capture_output=True)
    return folder


def logs(name, engine):
    return sorted((MonthOfLogs.folder / name / "logs" / f"Engine {engine}").iterdir())


def lines(*paths):
    """Records, comments and notes without their times."""
    found = []
    for path in paths:
        text = path.read_bytes().decode("cp1252")
        found += [re.sub(r" \d\d:\d\d:\d\d ", " ", line, count=1)
                  for line in text.partition("<LOG>\r\n")[2].split("\r\n")[:-1]]
    return found


def engines_own(found):
    return [line for line in found if line not in OWN]


class MonthOfLogs(unittest.TestCase):
    maxDiff = 2000
    folder = None

    def assert_repeats(self, found, source):
        """One time after another, and the last one as far as it came."""
        wanted = source * (len(found) // len(source) + 1)
        for number, (mine, other) in enumerate(zip(found, wanted)):
            self.assertEqual(mine, other, f"line {number} of {len(source)}")

    def test_a_source_has_what_a_log_has(self):
        found = lines(*logs("source", 1))
        for line in ("<!-- KVD Prealarm ON -->", "<!-- KVD Prealarm OFF -->", "<!-- Measure Stopped -->"):
            self.assertIn(line, found)
        kinds = [sum(line.startswith(f"<REC{kind}>") for line in found) for kind in (1, 2, 3)]
        self.assertGreater(kinds[0], 70 * 60 * 10 - 100)  # ten a second, from the first parameters on
        self.assertGreater(min(kinds[1:]), 70 * 60 / 4 - 10)
        self.assertGreater(len({line for line in found if line.startswith("<REC1>")}), 1000)

    def test_the_log_of_a_log_has_the_same_lines(self):
        sources = logs("source", 1) + logs("source", 2)
        make("quiet", "--quiet", "--minutes", "72", "--engines", "2", *sources)
        for engine in (1, 2):
            source = engines_own(lines(*logs("source", engine)))
            found = engines_own(lines(*logs("quiet", engine)))
            self.assertGreater(len(found), len(source) + 600, "it did not begin again")
            self.assert_repeats(found, source)

    def test_no_line_is_lost_by_a_lost_link_a_stop_and_midnight(self):
        make("busy", "--from", BUSY_DAY, "--minutes", str(25 * 60), "--engines", "1", *logs("source", 1))
        first, second = logs("busy", 1)
        self.assertEqual(first.name, f"{BUSY_DAY}Qu_Engine 1.xlg")
        found = lines(first)
        self.assertIn("<!-- Evaluator not connected -->", found)
        self.assertEqual(found.count("<!-- Measure Stopped -->"), 2)  # by the operator, and at midnight
        self.assert_repeats(engines_own(found + lines(second)), engines_own(lines(*logs("source", 1))))
        events = (self.folder / "busy/logs/TY_all_events.txt").read_text()
        self.assertEqual(events.count("KVD Engine 1 ## Measure started"), 2)

    def test_the_log_tool_finds_nothing_wrong(self):
        every = logs("source", 1) + logs("source", 2)
        done = subprocess.run([XLG, "check", *every], capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_what_cannot_be_done_is_told(self):
        for words, why in (([], "OPTION"), (["x", "--days", "0"], "OPTION"),
                           (["x", "--engines", "5"], "OPTION"),
                           ([self.folder / "x", self.folder / "no.xlg"], "cannot read"),
                           ([self.folder / "x", "--scenario", "no"], "cannot read no")):
            with self.subTest(words=words):
                done = subprocess.run([MONTH_OF_LOGS, *words], capture_output=True, text=True)
                self.assertEqual(done.returncode, 2)
                self.assertIn(why, done.stderr)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
