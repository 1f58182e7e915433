"""Nothing is wrong with the logs and the event file of a simulated plant, but for what power cuts tear.

    plant_logs_test.py XLG SIMULATE
"""

import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

XLG, SIMULATE = sys.argv[1:3]


class PlantLogs(unittest.TestCase):
    def kept(self, seed, folder):
        """Logs and event files of a day, and how often the power was cut."""
        done = subprocess.run([SIMULATE, "--replay", str(seed), "--days", "1", "--keep", folder], check=True,
                              capture_output=True)
        cuts = int(re.search(rb"(\d+) power cuts", done.stdout)[1])
        return sorted(Path(folder).rglob("*.xlg")), sorted(Path(folder).rglob("*.txt")), cuts

    def findings(self, command, files):
        """The lines that tell what is wrong, and the number of files that were told."""
        done = subprocess.run([XLG, command, *files], capture_output=True, check=False)
        self.assertEqual(done.stderr, b"")
        lines = done.stdout.splitlines()
        figures = [line for line in lines if re.search(rb": (nothing|[\d,]+) wrong[;,]", line)]
        self.assertEqual(len(figures), len(files))
        wrong = [line for line in lines if line not in figures and b": remark: " not in line]
        self.assertEqual(done.returncode, 1 if wrong else 0)
        return wrong

    def test_without_a_power_cut_nothing_is_wrong(self):
        with tempfile.TemporaryDirectory() as folder:
            logs, events, cuts = self.kept(2, folder)
            self.assertEqual(cuts, 0)
            self.assertGreater(len(logs), 4)
            self.assertEqual(self.findings("check", logs), [])
            self.assertEqual(self.findings("events", events), [])

    def test_power_cuts_tear_lines_and_do_nothing_else(self):
        with tempfile.TemporaryDirectory() as folder:
            logs, _, cuts = self.kept(3, folder)
            self.assertGreater(cuts, 0)
            wrong = self.findings("check", logs)
            self.assertTrue(wrong)
            for line in wrong:
                self.assertRegex(line, rb":\d+: (record [\d,]+, )?(REC\d: )?torn, ")
            self.assertLessEqual(len(wrong), cuts * 4)  # a log of each channel

    def test_every_record_is_a_row(self):
        with tempfile.TemporaryDirectory() as folder:
            logs, _, _ = self.kept(2, folder)
            written = sum(log.read_bytes().count(b"<REC1> ") for log in logs)
            table = subprocess.run([XLG, "csv", *logs], capture_output=True, check=True).stdout
            self.assertEqual(table.count(b"\r\n"), written + 1)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
