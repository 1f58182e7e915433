"""Adapters that are pulled and plugged in again at random moments while four channels measure at full pace.

PULLS in the environment says how often on each line; SEED repeats the moments.
"""

import os
import random
import threading
import time

from full_pace import PACE, Feeder, counted
from harness import PlantTest, curve, frame, measured_values, status, wait_for
from side_by_side import run_side_by_side

PULLS = int(os.environ.get("PULLS", "3"))
SEED = int(os.environ.get("SEED", random.randrange(1 << 32)))
RETURN = 2.5  # s: a device that is back is looked for once a second


class PulledFeeder(Feeder):
    """Goes on without its device, at the line's pace; the values tell their channel."""

    def __init__(self, line, number):
        super().__init__(line)
        self.number, self.held = number, threading.Lock()

    def turn(self, number):
        yield frame(measured_values(tsignal=self.number, speed=counted(number)))
        yield frame(status())
        yield b"".join(map(frame, curve("03", [number % 1000] * 256)[:2]))  # it takes the line its time

    def write(self, data):
        with self.held:
            if self.line.master >= 0:
                os.set_blocking(self.line.master, False)
                try:
                    os.write(self.line.master, data)
                except BlockingIOError:
                    pass  # nobody reads yet
        time.sleep(len(data) / PACE)
        return not self.ended

    def pull(self):
        with self.held:
            self.line.vanish()

    def plug_in(self):
        with self.held:
            self.line.come_back()


class Pulled(PlantTest):
    def pull_at_random(self, feeder, chance, away):
        for _ in range(PULLS):
            time.sleep(chance.uniform(0.2, 2))
            gone = time.monotonic()
            feeder.pull()
            time.sleep(chance.choice([0, chance.uniform(0, 0.3), chance.uniform(0, 4)]))
            feeder.plug_in()
            away.append((gone, time.monotonic() + RETURN))

    def test_what_comes_beside_the_pulls_is_logged_once_and_on_its_own_channel(self):
        plant = self.plant(channels=4).start()
        feeders = {number: PulledFeeder(line, number) for number, line in plant.lines.items()}
        away = {number: [] for number in feeders}
        for feeder in feeders.values():
            feeder.start()
        for number in feeders:
            wait_for(lambda: plant.records(number), what="a record")
        pullers = [threading.Thread(target=self.pull_at_random,
                                    args=(feeder, random.Random(SEED + number), away[number]))
                   for number, feeder in feeders.items()]
        for thread in pullers:
            thread.start()
        for thread in pullers:
            thread.join()
        time.sleep(RETURN + 0.5)
        for feeder in feeders.values():
            feeder.end()
        time.sleep(0.5)
        self.assertIsNone(plant.program.poll())
        sent = lost = 0
        for number, feeder in feeders.items():
            rows = [[int(word) for word in record.split()[2:4]] for record in plant.records(number)]
            self.assertEqual({tsignal for tsignal, _ in rows}, {number}, "a value of another engine")
            speeds = [speed for _, speed in rows]
            self.assertEqual(speeds, sorted(set(speeds)), "a value twice or out of order")
            missing = set(range(1, len(feeder.sent) + 1)) - set(speeds)
            for value in missing:
                when = feeder.sent[value - 1]
                self.assertTrue(any(gone - 0.2 < when < back for gone, back in away[number]),
                                f"channel {number}: value {value} is lost beside the pulls")
            sent, lost = sent + len(feeder.sent), lost + len(missing)
        print(f"SEED={SEED}: {PULLS} pulls on each of 4 lines: {sent} values, {lost} of the time of a pull "
              f"lost, none else")


if __name__ == "__main__":
    os.environ["SEED"] = str(SEED)
    run_side_by_side(1)
