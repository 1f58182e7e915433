"""The queries of the fleet, each with what the logs themselves tell.

    fleet_queries_test.py XLG SIMULATE
"""

import datetime
import itertools
import shutil
import statistics
import subprocess
import sys
import tempfile
import unittest
from collections import Counter, defaultdict
from pathlib import Path

import fleet_server
import plain_logs

XLG, SIMULATE = (Path(word).resolve() for word in sys.argv[1:3])
PERIOD = {"from": "2020-01-01", "to": "2040-01-01"}


def setUpModule():
    folder = Path(tempfile.mkdtemp())
    unittest.addModuleCleanup(shutil.rmtree, folder)
    Queries.server = fleet_server.Server(XLG)
    unittest.addModuleCleanup(Queries.server.remove)
    kept = folder / "logs"
    subprocess.run([SIMULATE, "--replay", "2", "--days", "2", "--keep", kept], check=True,
                   capture_output=True)
    Queries.logs = sorted(kept.rglob("*.xlg"))
    code, _, complaint = Queries.server.load(*Queries.logs)
    if code != 0:
        raise RuntimeError(complaint)
    Queries.rows = [row for log in Queries.logs for row in plain_logs.rows_of(log)]


def in_time(rows):
    """By engine, each engine's rows by time; logs and lines stay in their order."""
    engines = defaultdict(list)
    for row in sorted(rows, key=lambda row: row.at):
        engines[row.location].append(row)
    return engines


class Queries(unittest.TestCase):
    server = None
    logs = []
    rows = []

    def test_alarms_per_engine_and_week(self):
        wanted = Counter()
        for row in self.rows:
            if row.kind == "comment" and "ALARM" in row.value.upper() and row.value.endswith(" ON"):
                monday = row.at.date() - datetime.timedelta(days=row.at.weekday())
                wanted[row.location, str(monday), row.value] += 1
        self.assertTrue(wanted)
        told = self.server.query("alarms_per_week", **PERIOD)
        self.assertEqual({(row["location"], row["week"], row["alarm"]): int(row["times"]) for row in told},
                         wanted)
        self.assertEqual(len(told), len(wanted))

    def test_hours_above_a_threshold(self):
        for column, place, threshold in (("tsignal", 0, 100), ("speed", 1, 900)):
            told = self.server.query("hours_above", **PERIOD, value=column, threshold=threshold, longest=10)
            self.assertGreater(float(told[0]["hours_above"]), 0)
            self.assertEqual(len(told), len({row.location for row in self.rows if row.kind == "REC1"}))
            for row in told:
                records = in_time(r for r in self.rows if r.kind == "REC1")[row["location"]]
                held = [(min((after.at - one.at).total_seconds(), 10), one.value[place] > threshold)
                        for one, after in itertools.pairwise(records)]
                held.append((10, records[-1].value[place] > threshold))
                above = sum(seconds for seconds, is_above in held if is_above)
                self.assertAlmostEqual(float(row["hours_above"]), above / 3600, delta=0.0001)
                self.assertAlmostEqual(float(row["hours"]), sum(h[0] for h in held) / 3600, delta=0.0001)

    def test_gaps_in_the_link(self):
        words = ("Evaluator not connected", "Evaluator connected", "Measure Stopped")
        gaps = []
        for location, turns in in_time(row for row in self.rows if row.value in words).items():
            for one, after in itertools.pairwise(turns):
                if one.value == words[0]:
                    seconds = int((after.at - one.at).total_seconds())
                    gaps.append((location, str(one.at), str(after.at), seconds))
        longest = max(gap[3] for gap in gaps)
        self.assertGreater(longest, 1)
        for least in (0, longest, longest + 1):
            told = [(row["location"], row["lost"], row["back"], int(row["seconds"]))
                    for row in self.server.query("link_gaps", **PERIOD, least=least)]
            self.assertEqual(sorted(told), sorted(gap for gap in gaps if gap[3] >= least))
            self.assertEqual([row[3] for row in told], sorted((row[3] for row in told), reverse=True))

    def test_the_worst_cycles_of_a_month(self):
        month = min(row.at for row in self.rows if row.kind == "REC2").date().replace(day=1)
        for kind in ("REC2", "REC3"):
            curves = [row for row in self.rows
                      if row.kind == kind and row.at.date().replace(day=1) == month]
            swings = sorted((max(row.value) - min(row.value) for row in curves), reverse=True)[:20]
            told = self.server.query("worst_cycles", month=month, record=kind, cycles=20)
            self.assertEqual([int(row["swing"]) for row in told], swings)
            known = {(row.location, str(row.at), max(row.value) - min(row.value), row.name, row.line)
                     for row in curves}
            for row in told:
                self.assertIn((row["location"], row["at"], int(row["swing"]), row["file"], int(row["line"])),
                              known)

    def places_of(self, log):
        """For each cylinder that fires: its place, its number, the sample."""
        cylinders, = map(int, plain_logs.numbers_of(log, "NUMZYL"))
        strokes, = map(int, plain_logs.numbers_of(log, "ENGINETYPE"))
        order = plain_logs.numbers_of(log, "FIRINGORDER")
        angles = itertools.accumulate(map(int, plain_logs.numbers_of(log, "FIRINGANGLE")))
        for place, angle in enumerate(itertools.islice(angles, cylinders)):
            yield place, order[place], round(angle * 255 / (720 if strokes == 4 else 360))

    def test_drift_of_cylinders(self):
        above = defaultdict(list)
        for log in self.logs:
            curves = [row for row in plain_logs.rows_of(log) if row.kind == "REC2"]
            for (place, number, centre), row in itertools.product(self.places_of(log), curves):
                mean = statistics.fmean(row.value)
                if centre < 256 and mean > 0:
                    around = [row.value[(centre + step) % 256] for step in range(-3, 4)]
                    week = (row.at - datetime.datetime(1970, 1, 1)).total_seconds() / 604800
                    above[row.location, place + 1, number].append(
                        (week, 100 * (statistics.fmean(around) - mean) / mean))
        self.assertGreater(len(above), 8)
        told = self.server.query("cylinder_drift", **PERIOD, record="REC2", half_width=3)
        self.assertEqual({(row["location"], int(row["place"]), row["cylinder"]) for row in told}, set(above))
        for row in told:
            points = above[row["location"], int(row["place"]), row["cylinder"]]
            weeks, values = zip(*points)
            self.assertEqual(int(row["curves"]), len(points))
            self.assertAlmostEqual(float(row["above_mean"]), statistics.fmean(values), delta=0.01)
            slope = statistics.linear_regression(weeks, values).slope
            self.assertAlmostEqual(float(row["drift"]), slope, delta=0.001 + abs(slope) * 1e-6)

    def test_a_curve_of_zeros_is_left_out_of_the_drift(self):
        log = self.logs[0]
        head = log.read_bytes().partition(b"<LOG>\r\n")[0] + b"<LOG>\r\n"
        with tempfile.TemporaryDirectory() as folder:
            zeros = Path(folder) / "20150103Qu_Zeros.xlg"  # before the time of the others
            zeros.write_bytes(head + b"".join(b"<REC2> 12:00:0%d %s </REC2>\r\n" % (second, sample * 256)
                                              for second, sample in enumerate((b"0 ", b"500 ", b"0 "))))
            self.server.load(zeros)  # remarks that the header has another date
        told = self.server.query("cylinder_drift", **{"from": "2015-01-01", "to": "2015-02-01"},
                                 record="REC2", half_width=3)
        self.assertEqual(len(told), sum(centre < 256 for _, _, centre in self.places_of(log)))
        for row in told:
            self.assertEqual((row["location"], row["curves"], float(row["above_mean"])), ("Zeros", "1", 0))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
