"""The start where something is missing, in every combination or, without ALL_STARTS in the environment, in so
many that each pair of them comes together once. There is never a sound server.
"""

import itertools
import os
import shutil
import time
import unittest

from harness import Display, Plant, measured_values, parameter_frame, status, wait_for
from side_by_side import run_side_by_side

FAULTS = ("log folder", "settings file", "port", "large screen", "sound file", "printer")
BOX = "^Quarvo / Tyxo Data Logger$"
GROUPS = 4
ALARM = 0x0088  # relay and AC


def pairwise(count):
    """Combinations of yes and no in which each two places take all four values."""
    rows, open_pairs = [], {(a, b, x, y) for a, b in itertools.combinations(range(count), 2)
                            for x in (0, 1) for y in (0, 1)}
    while open_pairs:
        best = max(itertools.product((0, 1), repeat=count),
                   key=lambda row: sum(row[a] == x and row[b] == y for a, b, x, y in open_pairs))
        rows.append(best)
        open_pairs = {pair for pair in open_pairs if (best[pair[0]], best[pair[1]]) != pair[2:]}
    return rows


ALL = list(itertools.product((0, 1), repeat=len(FAULTS)))
ROWS = ALL if "ALL_STARTS" in os.environ else pairwise(len(FAULTS))


class Starts(unittest.TestCase):
    def start_without(self, missing):
        """What the program shows and says where these are missing, and what it measures."""
        display = self.displays["large screen" not in missing]
        display.environment["PULSE_SERVER"] = "unix:/no-sound-server"
        display.environment["CUPS_SERVER"] = "/no-printer-server" if "printer" in missing else ""
        # A number that no device has; of the last channel, since those behind it would not be started.
        port = {"comport__2": 97} if "port" in missing else {}
        plant = Plant(display, channels=2, **port)
        self.addCleanup(plant.stop)
        if "log folder" in missing:
            (plant.folder / "logs").rmdir()
        if "settings file" in missing:
            (plant.folder / "tyxo.ini").unlink()
        if "sound file" not in missing:
            shutil.copy(os.path.join(os.path.dirname(__file__), "../../data/ralarm_1.wav"), plant.folder)
        plant.start(ready=None)
        try:
            self.check(display, plant, missing)
        finally:
            plant.stop()

    def check(self, display, plant, missing):
        if "large screen" in missing:
            display.press(display.window("WARNING !"), "Return")
        display.window("Version 2.10_4")
        if "settings file" in missing:
            self.assertEqual(display.windows(BOX), [], "no channel is installed, none can fail")
            wait_for(lambda: "adc_offset=479" in plant.text("tyxo.ini"), what="the repaired settings")
            self.assertIsNone(plant.program.poll())
            return
        wait_for(lambda: len(display.windows(BOX)) == ("port" in missing), what="a box for the missing port")
        measuring = [1] if "port" in missing else [1, 2]
        for number in measuring:
            started = f"KVD Engine {number} ## Measure started"
            wait_for(lambda: any(started in line for line in plant.events()), what="the start")
            plant.lines[number].send(parameter_frame(), status(), measured_values(speed=100 + number))
        for number in measuring:
            told = f"KVD Engine {number} ## "
            plant.lines[number].send(status(ALARM))
            wait_for(lambda: any(told + "Main ALARM AC ON" in line or told + "Main Alarm AC ON" in line
                                 for line in plant.events()), what="the alarm")
            if "log folder" in missing:
                self.assertEqual(plant.log_names(number), [])
            else:
                wait_for(lambda: f" {100 + number} " in plant.log(number), what="a record")
        display.window("^Mainalarm$")
        complaints = " ".join(plant.debug())
        if "log folder" in missing:
            self.assertIn("createlog : ", complaints)
        wait_for(lambda: "PlaySoundA" in " ".join(plant.debug()), what="a word on the sound")


def group_test(group):
    def test(self):
        begin = time.monotonic()
        self.displays = {large: Display("1280x1024" if large else "1024x768") for large in (True, False)}
        for display in self.displays.values():
            self.addCleanup(display.stop)
        rows = ROWS[group::GROUPS]
        for row in rows:
            missing = [fault for fault, gone in zip(FAULTS, row) if gone]
            with self.subTest(missing=missing):
                self.start_without(missing)
        print(f"{len(rows)} starts in {time.monotonic() - begin:.1f} s")
    return test


for group in range(GROUPS):
    setattr(Starts, f"test_what_can_be_measured_is_measured_whatever_is_missing_{group}", group_test(group))


if __name__ == "__main__":
    run_side_by_side(2)
