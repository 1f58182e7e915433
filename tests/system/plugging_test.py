"""Adapters that are pulled and plugged in again while the program measures."""

import time

from harness import PlantTest, measured_values, parameter_frame, status, wait_for
from side_by_side import run_side_by_side

WHEN = "##;mm-dd-yyyy;hh:mm:ss;"


class Plugging(PlantTest):
    def measure(self, plant, line, speed, number=1):
        """The Evaluator sends until its value is recorded: a device that is back is found within a second."""
        def recorded():
            line.send(measured_values(speed=speed))
            return any(f" {speed} " in record for record in plant.records(number)[-3:])
        wait_for(recorded, 5, f"a record of {speed} rpm")
        time.sleep(0.3)  # what was sent last is recorded too

    def running(self, **settings):
        """A plant whose channels measure."""
        plant = self.plant(**settings).start()
        for number, line in plant.lines.items():
            line.send(parameter_frame())
            self.measure(plant, line, 100 * number, number)
        self.links_before = len(self.links(plant, 0))
        return plant

    def links(self, plant, first=None):
        """Links lost and found since all channels measure."""
        found = [line.removeprefix(WHEN) for line in plant.events() if "connected" in line]
        return found[self.links_before if first is None else first:]

    def test_an_adapter_that_is_plugged_in_again_measures_again(self):
        plant = self.running()
        line = plant.lines[1]
        gap = ["Evaluator 1 not connected", "Evaluator 1 connected"]
        for pulled in (1, 2):
            line.vanish()
            wait_for(lambda: len(self.links(plant)) == 2 * pulled - 1, 6, "the lost link")
            line.come_back()
            self.measure(plant, line, 50 + pulled)
            self.assertEqual(self.links(plant), gap * pulled)
        self.assertEqual(len(plant.log_names()), 1)

    def test_a_short_pull_makes_no_event(self):
        plant = self.running()
        line = plant.lines[1]
        line.vanish()
        line.come_back()
        self.measure(plant, line, 51)
        self.assertEqual(self.links(plant), [])

    def test_swapped_names_never_mix_two_engines(self):
        plant = self.running(channels=2)
        one, two = plant.lines[1], plant.lines[2]
        # The name of channel 1 leads to the device of channel 2: two readers would share its bytes.
        before = {number: len(plant.records(number)) for number in (1, 2)}
        one.vanish()
        one.lead_to(two)
        for _ in range(40):
            two.send(measured_values(speed=200), status())
            time.sleep(0.1)
        wait_for(lambda: len(plant.records(2)) == before[2] + 40, what="every record of channel 2")
        self.assertEqual(len(plant.records(1)), before[1])
        self.assertEqual(self.links(plant), ["Evaluator 1 not connected"])
        self.assertEqual([text for text in plant.debug() if "COM1: " in text], ["COM1: device vanished"],
                         "nothing was even tried")
        # Its own device is there again.
        one.come_back()
        self.measure(plant, one, 101)
        # Both go and come back, and the names lead crosswise: each channel has the device of its name, alone.
        for line in (one, two):
            line.vanish()
        for line in (one, two):
            line.come_back()
        one.lead_to(two)
        two.lead_to(one)
        self.measure(plant, two, 102, 1)
        self.measure(plant, one, 202, 2)
        before = {number: len(plant.records(number)) for number in (1, 2)}
        for index in range(20):
            one.send(measured_values(speed=1000 + index))
            two.send(measured_values(speed=2000 + index))
        wait_for(lambda: all(len(plant.records(number)) == before[number] + 20 for number in (1, 2)),
                 what="all records")
        for number, first in ((1, 2000), (2, 1000)):
            speeds = [int(record.split()[3]) for record in plant.records(number)[before[number]:]]
            self.assertEqual(speeds, list(range(first, first + 20)))

    def test_a_contact_that_comes_and_goes_is_told_once_and_costs_no_processor(self):
        plant = self.running()
        line = plant.lines[1]
        started, before = time.monotonic(), plant.processor_seconds()
        for pulled in range(1, 8):
            line.vanish()
            line.come_back()
            self.measure(plant, line, 50 + pulled)
        load = (plant.processor_seconds() - before) / (time.monotonic() - started)
        print(f"contact that comes and goes: processor load {100 * load:.1f} %")
        self.assertLess(load, 0.1)
        self.assertEqual([text for text in plant.debug() if "COM1: " in text], ["COM1: device vanished"])
        wait_for(lambda: "COM1: device is back" in plant.debug(), 12, "the word that it stays")

    def test_a_channel_that_is_stopped_meanwhile_opens_its_device_at_the_next_start(self):
        plant = self.running()
        line = plant.lines[1]
        window = self.display.window("Version 2.10_4")
        start_or_stop = ("alt+f", "Right", "Right", "Return")
        line.vanish()
        time.sleep(0.5)
        self.display.press(window, *start_or_stop)
        self.display.press(self.display.window("stop data logging"), "Tab", "space")
        wait_for(lambda: WHEN + "KVD Engine 1 ## Measure stopped " in plant.events(), what="the stop")
        line.come_back()
        time.sleep(2)
        self.assertNotEqual(line.holder(), plant.program.pid, "a stopped channel opens nothing")
        self.display.press(window, *start_or_stop)
        wait_for(lambda: line.holder() == plant.program.pid, what="the opened device")
        started = WHEN + "KVD Engine 1 ## Measure started "
        wait_for(lambda: plant.events().count(started) == 2, what="the start, which empties the device")
        line.send(parameter_frame())
        self.measure(plant, line, 51)


if __name__ == "__main__":
    run_side_by_side(2, longest=["contact"])
