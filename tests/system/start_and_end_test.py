"""The program from its start to its end, with real windows."""

import time
import unittest

from harness import Display, Plant, measured_values, parameter_frame, status, wait_for
from wake_ups import wake_ups

WHEN = "##;mm-dd-yyyy;hh:mm:ss;"
STARTED = WHEN + "Tyxo Logger software started !"
STOPPED = WHEN + "Tyxo Data Logger software stopped !"
SLEEP = 3  # s
BOX = "^Quarvo / Tyxo Data Logger$"


class StartAndEnd(unittest.TestCase):
    def display(self, size="1280x1024", **options):
        display = Display(size, **options)
        self.addCleanup(display.stop)
        return display

    def plant(self, display, **settings):
        plant = Plant(display, **settings)
        self.addCleanup(plant.stop)
        return plant

    def grant(self, display):
        """The stop lock, as it is without a password."""
        display.press(display.window("stop data logging"), "Tab", "space")

    def test_a_first_start_without_settings_writes_the_two_repaired_keys(self):
        plant = self.plant(self.display())
        (plant.folder / "tyxo.ini").unlink()
        plant.start()
        stored = "[tyxo]\r\nadc_offset=479\r\nzyl_speed_range=1\r\n"
        file = plant.folder / "tyxo.ini"
        wait_for(lambda: file.exists() and plant.text("tyxo.ini") == stored, what="these keys and no others")

    def test_while_no_channel_measures_it_sleeps(self):
        plant = self.plant(self.display(window_manager=True), channels=4, autostart=0).start()
        time.sleep(2)  # until everything is drawn
        before = wake_ups(plant.program.pid)
        time.sleep(SLEEP)
        self.assertLess((wake_ups(plant.program.pid) - before).total(), 5 * SLEEP)

    def test_closing_while_idle_writes_the_stop_line_and_ends_with_0(self):
        display = self.display(window_manager=True)
        plant = self.plant(display, autostart=0).start()
        display.ask_to_close(display.window("Tyxo Data Logger"))
        self.assertEqual(plant.program.wait(10), 0)
        self.assertEqual(plant.events(), [STARTED, STOPPED, ""])

    def test_the_exit_entry_closes_while_measuring_without_a_closing_comment(self):
        display = self.display()
        plant = self.plant(display).start()
        plant.lines[1].send(parameter_frame(), measured_values())
        wait_for(plant.records, what="a record")
        display.press(display.window("Tyxo Data Logger"), "alt+f", "x")
        self.grant(display)
        self.assertEqual(plant.program.wait(10), 0)
        self.assertEqual(plant.events()[-2:], [STOPPED, ""])
        self.assertTrue(plant.log().endswith("</REC1>\r\n"))

    def test_no_lock_file_of_a_port_stays_behind(self):
        display = self.display()
        plant = self.plant(display, channels=2).start()
        lines = plant.lines.values()
        wait_for(lambda: all(line.holder() == plant.program.pid for line in lines), what="both locks")
        display.press(display.window("Tyxo Data Logger"), "alt+f", "x")
        self.grant(display)
        self.assertEqual(plant.program.wait(10), 0)
        self.assertEqual([line.holder() for line in lines], [None, None])

    def test_start_and_stop_by_the_keyboard(self):
        display = self.display()
        plant = self.plant(display, autostart=0).start()
        window = display.window("Tyxo Data Logger")
        display.press(window, "alt+f", "Right", "Right", "Return")
        wait_for(lambda: WHEN + "KVD Engine 1 ## Measure started " in plant.events(), what="the start")
        plant.lines[1].send(parameter_frame(), measured_values())
        wait_for(plant.records, what="a record")
        display.press(window, "alt+f", "Right", "Right", "Return")
        self.grant(display)
        wait_for(lambda: WHEN + "KVD Engine 1 ## Measure stopped " in plant.events(), what="the stop")
        self.assertIn(" Measure Stopped -->\r\n", plant.log())

    def test_too_many_channels_are_fatal_with_exit_code_1(self):
        display = self.display()
        plant = self.plant(display, max_sensors=5).start(ready=None)
        display.press(display.window(BOX), "Return")
        self.assertEqual(plant.program.wait(10), 1)

    def test_a_number_out_of_range_is_fatal_with_exit_code_1(self):
        display = self.display()
        plant = self.plant(display, upd_periode=40000).start(ready=None)
        display.press(display.window(BOX), "Return")
        self.assertEqual(plant.program.wait(10), 1)

    def test_a_small_screen_is_warned_about_and_ok_goes_on(self):
        display = self.display("1271x1024")
        plant = self.plant(display).start(ready=None)
        display.press(display.window("WARNING !"), "Return")
        wait_for(lambda: WHEN + "KVD Engine 1 ## Measure started " in plant.events(), what="the start")

    def test_a_small_screen_cancelled_writes_both_lines_and_ends(self):
        display = self.display("1280x936")
        plant = self.plant(display).start(ready=None)
        display.press(display.window("WARNING !"), "Escape")
        self.assertEqual(plant.program.wait(10), 0)
        self.assertEqual(plant.events(), [STARTED, STOPPED, ""])

    def test_nothing_is_measured_before_the_load_has_returned(self):
        display = self.display("1271x1024")
        plant = self.plant(display).start(ready=None)
        warning = display.window("WARNING !")
        plant.lines[1].send(parameter_frame(), measured_values(), status(0x2020))
        with self.assertRaises(AssertionError):
            wait_for(lambda: plant.log_names(), 1.5, "a log behind the question")
        self.assertEqual(plant.events(), [""])
        display.press(warning, "Return")
        display.window("Tyxo Data Logger")


if __name__ == "__main__":
    unittest.main()
