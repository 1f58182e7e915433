"""Lines, disks and devices that fail while the program measures."""

import os
import resource
import time

from harness import PlantTest, frame, masked, measured_values, parameter_frame, status, wait_for
from side_by_side import run_side_by_side

INHIBIT = (315, 342)  # the label of the first channel, in the main window at its design size
WHEN = "##;mm-dd-yyyy;hh:mm:ss;"


class Faults(PlantTest):
    def test_a_vanished_device_is_silence_and_costs_no_processor(self):
        plant = self.plant().start()
        plant.lines[1].send(parameter_frame(), status(), measured_values())
        wait_for(plant.records, what="a record")
        gone = time.monotonic()
        plant.lines[1].vanish()
        time.sleep(0.2)
        before = plant.processor_seconds()
        wait_for(lambda: WHEN + "Evaluator 1 not connected" in plant.events(), 6, "the lost link")
        silence = time.monotonic() - gone
        self.assertTrue(2.5 < silence < 4, f"told after {silence:.1f} s")
        time.sleep(2)
        load = (plant.processor_seconds() - before) / (time.monotonic() - gone - 0.2)
        print(f"vanished device: told after {silence:.2f} s, processor load {100 * load:.1f} %")
        self.assertLess(load, 0.05)
        self.assertEqual(plant.events().count(WHEN + "Evaluator 1 not connected"), 1)
        self.assertIsNone(plant.program.poll())

    def test_a_silent_line_returns_with_its_first_byte(self):
        plant = self.plant().start()
        plant.lines[1].send(parameter_frame(), measured_values())
        wait_for(lambda: WHEN + "Evaluator 1 not connected" in plant.events(), 6, "the lost link")
        plant.lines[1].raw(b"x")
        wait_for(lambda: WHEN + "Evaluator 1 connected" in plant.events(), what="the link's return")
        self.assertIn("<!-- hh:mm:ss Evaluator connected -->", masked(plant.log()))

    def test_a_full_disk_loses_only_what_does_not_fit(self):
        limit = 8000  # bytes that any file may have

        def small_disk():
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, resource.RLIM_INFINITY))

        plant = self.plant(eventfile_ena=0).start(preexec_fn=small_disk)
        plant.lines[1].send(parameter_frame())
        for index in range(100):
            plant.lines[1].send(measured_values(speed=index))
        # "file : " where the disk took longer than the measurement waits for it.
        wait_for(lambda: any(line.startswith(("mscomm: ", "file : ")) for line in plant.debug()),
                 what="a lost line")
        full = plant.log()
        self.assertTrue(full.endswith("</REC1>\r\n"), "no piece of a line is left")
        unlimited = (resource.RLIM_INFINITY, resource.RLIM_INFINITY)
        resource.prlimit(plant.program.pid, resource.RLIMIT_FSIZE, unlimited)
        plant.lines[1].send(measured_values(speed=777))
        wait_for(lambda: " 777 " in plant.log(), what="the next line that fits")
        self.assertTrue(plant.log().startswith(full))
        self.assertEqual(self.display.windows("message"), [])

    def test_a_missing_log_folder_disturbs_nothing(self):
        plant = self.plant(logpath__1=".\\missing\\deep\\").start()
        plant.lines[1].send(parameter_frame(), measured_values(), status(0x2020))
        wait_for(lambda: WHEN + "KVD Engine 1 ## Overspeed Alarm ON" in plant.events(), what="the event")
        self.assertFalse((plant.folder / "missing").exists())

    def test_an_event_file_that_cannot_be_written_is_told_once_and_measuring_goes_on(self):
        plant = self.plant(evtpath=".\\events\\", eventfile_ena=1)
        os.symlink("/dev/full", plant.folder / "events" / "TY_all_events.txt")
        plant.start(ready="Quarvo")
        box = self.display.window("^Quarvo / Tyxo Data Logger$")
        self.display.press(box, "Return")
        wait_for(lambda: not self.display.windows("^Quarvo / Tyxo Data Logger$"), what="the box's end")
        self.display.window("Version 2.10_4")
        plant.lines[1].send(parameter_frame(), measured_values(), status(0x2020))
        wait_for(lambda: "KVD Overspeed Alarm ON" in plant.log(), what="the log comment")
        self.assertEqual(self.display.windows("^Quarvo / Tyxo Data Logger$"), [])

    def test_an_event_file_that_fails_while_measuring_does_not_hold_it_up(self):
        plant = self.plant().start()
        plant.lines[1].send(parameter_frame(), measured_values(speed=1))
        wait_for(plant.records, what="a record")
        event_file = plant.folder / "events" / "TY_all_events.txt"
        event_file.unlink()
        event_file.symlink_to("/dev/full")
        plant.lines[1].send(status(0x2020))
        self.display.window("^Quarvo / Tyxo Data Logger$")
        for index in range(2, 12):
            plant.lines[1].send(measured_values(speed=index))
        wait_for(lambda: len(plant.records()) == 11, what="records behind the open box")

    def test_noise_without_end_neither_stops_nor_slows_the_next_frame(self):
        plant = self.plant().start()
        plant.lines[1].send(parameter_frame())
        for _ in range(40):
            plant.lines[1].raw(os.urandom(500))
        plant.lines[1].send(":", measured_values(speed=42))
        wait_for(lambda: any(" 42 " in record for record in plant.records()),
                 what="the frame behind the noise")

    def test_a_location_that_is_no_file_name_is_silent(self):
        plant = self.plant(location__1="a/b").start()
        plant.lines[1].send(parameter_frame(), measured_values(), status(0x2020))
        wait_for(lambda: WHEN + "KVD a/b ## Overspeed Alarm ON" in plant.events(), what="the event")
        self.assertIn("createlog : Path exists", plant.debug())
        self.assertEqual(list((plant.folder / "logs").iterdir()), [])


    def test_a_frame_sent_to_a_stopped_channel_leaves_it_stopped(self):
        plant = self.plant().start()
        line = plant.lines[1]
        line.send(parameter_frame(), measured_values(), status(inhibit=1, left=45))
        wait_for(lambda: WHEN + "KVD Engine 1 ## Alarm Inhibit ON" in plant.events(), what="the inhibit time")
        window = self.display.window("Version 2.10_4")
        self.display.press(window, "alt+f", "Right", "Right", "Return")
        self.display.press(self.display.window("stop data logging"), "Tab", "space")
        wait_for(lambda: WHEN + "KVD Engine 1 ## Measure stopped " in plant.events(), what="the stop")
        log = plant.log()
        line.send(measured_values(speed=999), status(0x2020))  # waits on the line when the port opens
        self.display.tool("xdotool", "mousemove", "--window", window, *map(str, INHIBIT), "click", "1")
        self.display.press(self.display.window("Alarm Inhibit Time"), "Return")
        sent = WHEN + "KVD Engine 1 ## Restart Alarm Inhibit Time"
        wait_for(lambda: sent in plant.events(), what="the restart")
        self.assertEqual(line.received(), frame(":8009"))
        time.sleep(3.5)
        self.assertEqual(plant.events()[-2:], [sent, ""])
        self.assertEqual(plant.log(), log)


if __name__ == "__main__":
    run_side_by_side(2)
