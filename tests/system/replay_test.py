"""A log that was played back by the simulated Evaluator, and the one that the program writes of it."""

import os
import subprocess
import unittest

from harness import PlantTest, WITH_US, curve, masked, measured_values, parameter_frame, status, wait_for


class Replay(PlantTest):
    def entries(self, plant):
        """Records, comments and notes behind the header, without their times."""
        lines = masked(plant.log()).split("\r\n")
        return [line for line in lines[lines.index("<LOG>") + 1:] if line and "Measure" not in line]

    def recorded(self):
        """A day of few minutes; the path of its log."""
        plant = self.plant().start()
        line = plant.lines[1]
        line.send(parameter_frame(), status())
        for value in range(30):
            line.send(measured_values(value, 600 + value, 10 * value, value, 2 * value))
        line.send(*curve("03", range(1000, 1256)), *curve("04", range(20000, 20256)))
        line.send(measured_values(test_signal=1), measured_values(41))
        line.send(status(0x80A2), status(0x20), status(0x20, 0x0010), status(0x20))
        line.send(measured_values(40))
        wait_for(lambda: len(plant.records()) == 33, what="33 records")
        plant.kill()
        path = plant.folder / "logs/Engine 1" / plant.log_names()[0]
        return path, plant.log(), self.entries(plant)

    def test_the_log_of_a_log_has_the_same_lines(self):
        path, text, entries = self.recorded()
        plant = self.plant()
        plant.lines[1].link.unlink()
        evaluator = subprocess.Popen(
            [*WITH_US, os.environ["EVALUATOR"], "--ports", str(plant.folder / "ports"), "--no-input",
             "--replay", str(path), "--speed", "3"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(evaluator.stdout.close)
        self.addCleanup(evaluator.wait)
        self.addCleanup(evaluator.terminate)
        wait_for(lambda: (plant.folder / "ports/COM1").is_symlink(), what="the Evaluator's port")
        plant.start()
        for said in evaluator.stdout:
            if said == "channel 1 replayed\n":
                break
        wait_for(lambda: len(self.entries(plant)) >= len(entries), what="all lines of the log")
        self.assertEqual(self.entries(plant), entries)
        self.assertIn("<!-- hh:mm:ss KVD Main ALARM DC ON -->", entries)
        self.assertEqual(len(entries), 33 + 2 + 2 + 5)  # records, curves, notes, comments
        for tag in ("NUMZYL", "FIRINGORDER", "FIRINGANGLE", "ALARMLEVEL", "FWVERS", "EVASNR"):
            with self.subTest(tag=tag):
                mine = [line for line in plant.log().split("\r\n") if f"<{tag}>" in line]
                self.assertEqual(mine, [line for line in text.split("\r\n") if f"<{tag}>" in line])


if __name__ == "__main__":
    unittest.main()
