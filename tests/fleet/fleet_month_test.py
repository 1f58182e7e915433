"""What finds every row of a month again: it does, and a row that differs does not escape it.

    fleet_month_test.py XLG MONTH_OF_LOGS SCENARIO
"""

import contextlib
import io
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import fleet_server

XLG, MONTH_OF_LOGS, SCENARIO = (Path(word).resolve() for word in sys.argv[1:4])
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "bench"))

import fleet_month  # noqa: E402


def setUpModule():
    """Some minutes of two engines, in a server."""
    fleet_month.XLG = XLG
    FleetMonth.folder = Path(tempfile.mkdtemp())
    unittest.addModuleCleanup(shutil.rmtree, FleetMonth.folder)
    words = ["--minutes", "20", "--engines", "2", "--scenario", SCENARIO]
    subprocess.run([MONTH_OF_LOGS, FleetMonth.folder, *words], check=True, capture_output=True)
    FleetMonth.server = fleet_server.Server(XLG)
    unittest.addModuleCleanup(FleetMonth.server.remove)
    FleetMonth.told = silent(fleet_month.measure, FleetMonth.server, FleetMonth.folder, 2)


def silent(call, *arguments):
    """What it printed."""
    with contextlib.redirect_stdout(io.StringIO()) as printed:
        call(*arguments)
    return printed.getvalue()


class FleetMonth(unittest.TestCase):
    server = None
    folder = None
    told = ""

    def find_again(self):
        silent(fleet_month.find_again, self.server, sorted(self.folder.rglob("*.xlg")), 2)

    def test_all_rows_are_found_again(self):
        for line in ("curves: 1,202 rows of 2 logs, on 2 days of engines, all found again",
                     "3 of 3 files with nothing new", "no row doubled"):
            self.assertIn(line, self.told)
        self.find_again()

    def test_a_row_that_differs_is_found(self):
        last = "(file, line) = (SELECT file, line FROM fleet.{0} ORDER BY file, line DESC LIMIT 1)"
        for table, there, back in (
                ("records", "SET speed = speed + 1", "SET speed = speed - 1"),
                ("records", "SET line = line + 1", "SET line = line - 1"),
                ("records", "SET at = at + interval '1 s'", "SET at = at - interval '1 s'"),
                ("records", "SET at = at + interval '9 days'", "SET at = at - interval '9 days'"),
                ("records", "SET engine = 3 - engine", "SET engine = 3 - engine"),
                ("curves", "SET samples[256] = samples[256] + 1", "SET samples[256] = samples[256] - 1"),
                ("curves", "SET record = translate(record, '23', '32')",
                 "SET record = translate(record, '23', '32')"),
                ("comments", "SET text = text || ' '", "SET text = rtrim(text)")):
            with self.subTest(there):
                self.server.ask(f"UPDATE fleet.{table} {there} WHERE {last.format(table)}")
                with self.assertRaises(RuntimeError):
                    self.find_again()
                self.server.ask(f"UPDATE fleet.{table} {back} WHERE {last.format(table)}")
                self.find_again()

    def test_a_row_that_lacks_or_is_too_much_is_found(self):
        self.server.ask("CREATE TABLE kept AS SELECT * FROM fleet.records WHERE line = 5000")
        for change, back in (
                ("DELETE FROM fleet.records WHERE line = 5000",
                 "INSERT INTO fleet.records SELECT * FROM kept"),
                ("UPDATE kept SET at = at + interval '9 days'; INSERT INTO fleet.records SELECT * FROM kept",
                 "DELETE FROM fleet.records WHERE at > '2026-08-09'")):
            with self.subTest(change):
                self.server.ask(change)
                with self.assertRaises(RuntimeError):
                    self.find_again()
                self.server.ask(back)
                self.find_again()


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
