"""A program that is killed while four channels log at full pace, and started again in the same folder.

TRIALS in the environment says how often, without it a few times; SEED says with which random moments, and so
repeats them. COPIES run side by side, each in a folder and with a display of its own.
"""

import os
import random
import re
import time

from full_pace import OVERSPEED, FullPace
from harness import PlantTest, wait_for
from side_by_side import run_side_by_side

TRIALS = int(os.environ.get("TRIALS", "6"))
COPIES = int(os.environ.get("COPIES", "2"))
SEED = int(os.environ.get("SEED", random.randrange(1 << 32)))
LABEL = (200, 327)  # name of channel 1's thermo value in the main window; a click on it writes a setting
ON_ITS_WAY = 0.5  # s: a value that the line has delivered for so long is in the log
WHOLE_LINE = re.compile(r"<REC1> \d\d:\d\d:\d\d( \d+){5} </REC1>|<REC2> \d\d:\d\d:\d\d( \d+){256}  </REC2>|"
                        r"<!-- \d\d:\d\d:\d\d .* -->")
EVENT_LINE = re.compile(r"##;\d\d-\d\d-\d{4};\d\d:\d\d:\d\d;.*")
STARTED = "Tyxo Logger software started !"


class KilledPlant:
    """A plant through many lives of its program, and what they have cost so far."""

    def __init__(self, test, plant, chance):
        self.test, self.plant, self.chance = test, plant, chance
        self.logs, self.events = dict.fromkeys(plant.lines, ""), ""
        self.lines = self.told = self.torn = self.oldest_unwritten = self.lost = 0
        self.clicks = self.settings = 0  # clicks that change a setting, and changes seen in the file

    def live_and_be_killed(self):
        """At any moment from the start of the process on, while lines, events and settings are written."""
        plant = self.plant
        early = self.chance.random() < 0.2
        if early:
            moment = self.chance.uniform(0, 0.8)
            plant.start(ready=None)
            time.sleep(moment)
            plant.kill()
            return self.check({})
        plant.start()
        self.test.assertEqual(plant.display.windows("^Quarvo / Tyxo Data Logger$"), [], "a clean start")
        with FullPace(plant) as pace:
            end = time.monotonic() + self.chance.uniform(0.2, 1.2)
            clicks = self.chance.random() < 0.7
            while time.monotonic() < end:
                if clicks:
                    self.change_a_setting()
                time.sleep(0.01)
            killed = time.monotonic()
            plant.kill()
        for line in plant.lines.values():
            line.received()
        self.check({number: [killed - sent for sent in feeder.sent]
                    for number, feeder in pace.feeders.items()})

    def change_a_setting(self):
        before = self.plant.text("tyxo.ini")
        self.plant.display.tool("xdotool", "mousemove", *map(str, LABEL), "click", "1")
        self.clicks += 1
        self.settings += self.plant.text("tyxo.ini") != before

    def check(self, ages):
        """The ages are those of all values at the kill, by channel."""
        self.check_settings()
        events = self.check_events()
        for number in self.plant.lines:
            self.check_log(number, ages.get(number, []), events)

    def check_settings(self):
        text = self.plant.text("tyxo.ini")
        self.test.assertTrue(text.startswith("[tyxo]\r\n") and text.endswith("\r\n"))
        for key in ("upd_periode", "evtpath", "location 4", "logpath 4"):
            self.test.assertEqual(text.count(f"\n{key}="), 1, key)

    def check_events(self):
        """The new event lines; each is whole but one that the kill has torn."""
        text = self.plant.text("events/TY_all_events.txt")
        self.test.assertTrue(text.startswith(self.events), "nothing that was there has changed")
        *lines, torn = text[len(self.events):].removeprefix("\r\n").split("\r\n")
        for line in lines:
            self.test.assertRegex(line, EVENT_LINE)
        self.torn += torn != ""
        self.told += len(lines)
        self.events = text
        return lines

    def check_log(self, number, ages, events):
        """No finished line is missing: an event line is written behind its log comment and its values."""
        test, text = self.test, self.plant.log(number)
        test.assertTrue(text.startswith(self.logs[number]), "nothing that was there has changed")
        new = text[len(self.logs[number]):]
        if self.plant.log_names(number):
            test.assertRegex(text, r"\A<\?xml version", "a log without a header")
            test.assertEqual(text.count("<LOG>\r\n"), 1)
        self.logs[number] = text
        *lines, torn = new.split("<LOG>\r\n")[-1].removeprefix("\r\n").split("\r\n")
        self.torn += torn != ""
        for line in lines:
            test.assertTrue(WHOLE_LINE.fullmatch(line), f"a torn line: {line[:100]!r}")
        speeds = [int(line.split()[3]) for line in lines if line.startswith("<REC1>")]
        test.assertEqual(speeds, list(range(1, len(speeds) + 1)), "a value is missing")
        told = sum(f"Engine {number} ## {OVERSPEED}" in line for line in events)
        comments = sum(OVERSPEED in line for line in lines)
        test.assertGreaterEqual(comments, told, f"channel {number}: a finished comment is lost")
        test.assertGreaterEqual(len(speeds), told, f"channel {number}: a finished record is lost")
        self.lines += len(lines)
        unwritten = ages[len(speeds):]
        self.oldest_unwritten = max([self.oldest_unwritten, *unwritten])
        self.lost += sum(age > ON_ITS_WAY for age in unwritten)


class Kill(PlantTest):
    def trials(self, copy):
        chance = random.Random(SEED + copy)
        killed = KilledPlant(self, self.plant(channels=4), chance)
        count = len(range(copy, TRIALS, COPIES))
        try:
            for _ in range(count):
                killed.live_and_be_killed()
        finally:
            print(f"SEED={SEED} COPIES={COPIES}, copy {copy}: {count} kills, {killed.lines} lines of logs, "
                  f"{killed.told} event lines, {killed.settings} changes of settings, {killed.torn} lines "
                  f"torn by a kill, {killed.lost} lost; the oldest value on its way was "
                  f"{1000 * killed.oldest_unwritten:.0f} ms old", flush=True)
        self.assertEqual(killed.lost, 0)
        if killed.clicks > 10:
            self.assertGreater(killed.settings, 0, "the clicks have written something")
        self.next_start_is_clean(killed)

    def next_start_is_clean(self, killed):
        plant = killed.plant
        starts = killed.events.count(STARTED)
        plant.start()
        wait_for(lambda: plant.text("events/TY_all_events.txt").count(STARTED) > starts, what="the start")
        self.assertEqual(self.display.windows("^Quarvo / Tyxo Data Logger$"), [])
        self.assertEqual([line for line in plant.debug() if line.startswith("COM")], [])


for copy in range(COPIES):
    setattr(Kill, f"test_a_kill_at_a_random_moment_loses_no_finished_line_{copy}",
            lambda self, copy=copy: self.trials(copy))


if __name__ == "__main__":
    os.environ["SEED"] = str(SEED)  # the copies' own
    run_side_by_side(COPIES)
