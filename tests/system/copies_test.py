"""Many copies that are started in one folder at the same moment: one measures, all others say so and end."""

import os
import subprocess
import unittest

from full_pace import FullPace
from harness import PROGRAM, PlantTest, wait_for

COPIES = int(os.environ.get("COPIES", "6"))
BOX = "^Quarvo / Tyxo Data Logger$"
STARTED = "Tyxo Logger software started !"


class Copies(PlantTest):
    def test_of_copies_that_start_together_one_measures(self):
        plant = self.plant(channels=4)
        programs = [subprocess.Popen([PROGRAM], cwd=plant.folder, env=self.display.environment,
                                     stderr=subprocess.DEVNULL) for _ in range(COPIES)]
        for program in programs:
            self.addCleanup(program.wait)
            self.addCleanup(program.kill)
        wait_for(lambda: len(self.display.windows(BOX)) == COPIES - 1, 30, "a box of each other copy")
        wait_for(lambda: sum("Measure started" in line for line in plant.events()) == 4, what="the start")
        for box in self.display.windows(BOX):
            self.display.press(box, "Return")
        wait_for(lambda: sum(program.poll() is None for program in programs) == 1, what="their ends")
        self.assertEqual(sorted(filter(None, (program.poll() for program in programs))), [2] * (COPIES - 1))
        with FullPace(plant) as pace:
            pace.settle()
            pace.check(self)
        self.assertEqual(plant.text("events/TY_all_events.txt").count(STARTED), 1)
        print(f"{COPIES} copies at once: one measures, {COPIES - 1} end with 2")


if __name__ == "__main__":
    unittest.main()
