"""A program that is killed while four channels log at full pace, and started again in the same folder.

TRIALS in the environment says how often; without it a few times.
"""

import os
import random
import re
import threading
import time
import unittest

from harness import PlantTest, curve, frame, measured_values, parameter_frame, status, wait_for

TRIALS = int(os.environ.get("TRIALS", "6"))
LABEL = (200, 327)  # name of channel 1's thermo value in the main window; a click on it writes a setting
OVERSPEED = "Overspeed Alarm O"
WHOLE_LINE = re.compile(r"<REC1> \d\d:\d\d:\d\d( \d+){5} </REC1>|<REC2> \d\d:\d\d:\d\d( \d+){256}  </REC2>|"
                        r"<!-- \d\d:\d\d:\d\d .* -->")


class Feeder(threading.Thread):
    """Sends a line's frames at its full pace: values, changes of the alarm, curves; the speed counts."""

    def __init__(self, line, first):
        super().__init__()
        self.line, self.next, self.ended = line, first, False

    def run(self):
        self.line.send(parameter_frame())
        while not self.ended:
            bodies = [measured_values(speed=self.next), status(0x2020 if self.next % 2 else 0x20)]
            if self.next % 5 == 0:
                bodies += curve("03", [self.next] * 256)
            data = b"".join(map(frame, bodies))
            while data and not self.ended:
                data = data[os.write(self.line.master, data[:256]):]
                time.sleep(256 / 3840)
            self.next += 1


class Kill(PlantTest):
    def start(self, plant):
        plant.start()
        feeders = [Feeder(line, 1) for line in plant.lines.values()]
        for feeder in feeders:
            feeder.start()
        for number in plant.lines:
            wait_for(lambda: plant.records(number), what=f"records of channel {number}")
        return feeders

    def end(self, plant, feeders):
        """Kills in the middle of it all."""
        plant.kill()
        for feeder in feeders:
            feeder.ended = True
        for feeder in feeders:
            feeder.join()
        for line in plant.lines.values():
            line.received()

    def new_lines(self, plant, known):
        """What each channel's log has got in this trial, by channel, without the header."""
        texts = {number: plant.log(number) for number in plant.lines}
        for number, text in texts.items():
            self.assertTrue(text.startswith(known.get(number, "")), "nothing that was there has changed")
        found = {number: text[len(known.get(number, "")):].split("<LOG>\r\n")[-1]
                 for number, text in texts.items()}
        known.update(texts)
        return found

    def check(self, found, events):
        """No finished line is missing: an event line is written behind its log comment and its values."""
        torn = 0
        for number, text in found.items():
            lines = text.removeprefix("\r\n").split("\r\n")
            torn += lines[-1] != ""
            for line in lines[:-1]:
                self.assertTrue(WHOLE_LINE.fullmatch(line), f"a torn line: {line[:100]!r}")
            speeds = [int(line.split()[3]) for line in lines[:-1] if line.startswith("<REC1>")]
            self.assertEqual(speeds, list(range(1, len(speeds) + 1)))
            told = sum(f"Engine {number} ## {OVERSPEED}" in line for line in events)
            comments = sum(OVERSPEED in line for line in lines)
            self.assertGreaterEqual(comments, told, f"channel {number}: a finished comment is lost")
            self.assertGreaterEqual(len(speeds), told, f"channel {number}: a finished record is lost")
            self.assertGreater(len(speeds), 0)
        return torn

    def trials(self, count, meanwhile=None):
        plant = self.plant(channels=4)
        known, event_text, torn, lines = {}, "", 0, 0
        for trial in range(count):
            with self.subTest(trial=trial):
                feeders = self.start(plant)
                end = time.monotonic() + random.uniform(0.2, 1.0)
                while time.monotonic() < end:
                    if meanwhile:
                        meanwhile()
                    time.sleep(0.01)
                self.end(plant, feeders)
                text = plant.text("events/TY_all_events.txt")
                self.assertTrue(text.startswith(event_text))
                new = text[len(event_text):]
                event_text = text
                found = self.new_lines(plant, known)
                lines += sum(part.count("\r\n") for part in found.values())
                torn += self.check(found, new.split("\r\n"))
                for line in new.removeprefix("\r\n").split("\r\n")[:-1]:
                    self.assertRegex(line, r"^##;\d\d-\d\d-\d{4};\d\d:\d\d:\d\d;")
                self.settings_are_whole(plant)
        print(f"{count} kills: {lines} lines, {torn} of them torn by a kill, none lost")

    def settings_are_whole(self, plant):
        text = plant.text("tyxo.ini")
        self.assertTrue(text.startswith("[tyxo]\r\n") and text.endswith("\r\n"))
        for key in ("upd_periode", "evtpath", "location 4", "logpath 4"):
            self.assertEqual(text.count(f"\n{key}="), 1, key)

    def test_a_kill_at_full_pace_loses_no_finished_line(self):
        self.trials(TRIALS)

    def test_a_kill_while_settings_are_written_leaves_them_whole(self):
        written = set()

        def click():
            self.display.tool("xdotool", "mousemove", *map(str, LABEL), "click", "1")
            written.add(self.last_plant.text("tyxo.ini"))

        self.trials(max(2, TRIALS * 3 // 10), click)
        self.assertGreater(len(written), 1, "the clicks have written something")

    def plant(self, **settings):
        self.last_plant = super().plant(**settings)
        return self.last_plant


if __name__ == "__main__":
    unittest.main()
