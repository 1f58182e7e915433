"""An operator's day at the running program: the first start without settings, setup, measuring, alarms,
stops, the end. Everything goes through keyboard and mouse, or through the keyboard alone on a smaller screen
under another window manager; afterwards every file is compared line by line.
"""

import subprocess
import time

from desktops import Desktop
from harness import Display, PlantTest, frame, masked, measured_values, parameter_frame, status, wait_for
from log_header import log_header
from operators_records import (AFTER_CONFIRMATION, BEFORE_CONFIRMATION, BOX, CONFIRMED, ENGINES, Evaluators,
                               LOGS, MAIN_ALARM, PREALARM, READY, RESTART, STARTED, STOPPED, WHEN, everywhere)
from side_by_side import run_side_by_side

PASSWORD = "Kessel 7"
RELAYS = [("Slow down", "Shut down"), ("Slow down", "Shut down"), ("Warning", "Trip"), ("Warning", "Trip")]

# Places in the main window's client area at its design size.
INHIBIT_3 = (955, 342)
STATUS_TEXT = (300, 870)

# How often a key takes the keyboard on.
TABS_TO_SENSORS = 2  # from the tabs of the setup to the number of sensors
TABS_TO_FIRST_ROW = 33  # from there back over all rows
TABS_TO_OPTIONS = 3  # from the last row to the order of the bars
TABS_TO_DEFAULTS = 4  # from the opened scales to their defaults
TABS_TO_INHIBIT_3 = 15  # from the first control of the main window
TABS_TO_STATUS_TEXT = 25  # from no control: the label that had the keyboard has gone again
BUTTON_READY = 0.5  # s until the right password has given the keyboard to its button, on a slow machine too
MENUS = {"Setup": 1, "Start": 2}

class OperatorsDay(PlantTest):
    @classmethod
    def setUpClass(cls):
        cls.display = Display(window_manager=True)

    def key(self, *keys):
        self.display.tool("xdotool", "key", "--delay", "50", *keys)

    def type(self, text):
        self.display.tool("xdotool", "type", "--delay", "20", text)

    def click(self, place, count=1):
        where = ["mousemove", "--window", self.main, *map(str, place)]
        self.display.tool("xdotool", *where, "click", "--repeat", str(count), "--delay", "60", "1")

    def menu(self, name, entry):
        """An entry of a menu by its place."""
        self.display.press(self.main, "alt+f", *["Right"] * MENUS[name], *["Down"] * entry, "Return")

    def gone(self, title):
        wait_for(lambda: not self.display.windows(title), what=f"the end of {title!r}")

    def in_dialog(self, title):
        window = self.display.window(title)
        self.display.tool("xdotool", "windowfocus", "--sync", window)
        return window

    def start(self):
        self.plant_.start()
        self.main = self.display.window("Tyxo Data Logger")

    def go_to_inhibit(self):
        self.click(INHIBIT_3)

    def enlarge_status_text(self):
        self.click(STATUS_TEXT, count=2)
        window = self.in_dialog("Status window")
        self.display.tool("xdotool", "mousemove", "--window", window, "300", "200", "click", "1")

    def wait_for_event(self, *texts):
        wait_for(lambda: set(WHEN + text for text in texts) <= set(self.plant_.events()), what=str(texts))

    def settings(self):
        return self.plant_.text("tyxo.ini").split("\r\n")

    def test_a_whole_day(self):
        self.plant_ = self.plant(channels=4)
        (self.plant_.folder / "tyxo.ini").unlink()
        self.plant_.names = dict(enumerate(ENGINES, 1))
        self.first_start()
        self.start()
        evaluators = Evaluators(self.plant_.lines)
        self.addCleanup(evaluators.join)
        self.addCleanup(evaluators.end.set)
        self.measure(evaluators)
        self.alarms(evaluators)
        self.inhibit(evaluators)
        self.setup_while_measuring()
        self.stop_and_go_on(evaluators)
        self.status_text()
        self.leave()
        self.compare()

    def first_start(self):
        self.start()
        self.menu("Start", 0)
        self.in_dialog("^Quarvo / Tyxo Data Logger$")  # "No sensor configurated"
        self.key("Return")
        self.gone("^Quarvo / Tyxo Data Logger$")
        self.fill_setup()
        self.menu("Setup", 1)
        self.in_dialog("Setup scales")
        self.key(*["Tab"] * TABS_TO_DEFAULTS, "space", "shift+Tab", "shift+Tab", "space")
        self.key("Return")
        self.gone("Setup scales")
        self.menu("Setup", 2)
        self.in_dialog("Setup Password")
        self.key("x", "BackSpace", "Tab")  # the old one is empty
        self.type(PASSWORD)
        self.key("Tab")
        self.type(PASSWORD)
        self.key("Return")
        self.gone("Setup Password")
        self.display.press(self.main, "alt+f", "x")
        self.assertEqual(self.plant_.program.wait(10), 0)
        self.assertEqual(self.plant_.text("events/TY_all_events.txt"), "", "it is enabled at the next start")

    def fill_setup(self):
        self.menu("Setup", 0)
        self.in_dialog("^Setup$")
        self.key(*["Tab"] * TABS_TO_SENSORS, "Right", "Right", "Right")
        self.key(*["shift+Tab"] * TABS_TO_FIRST_ROW)
        for row, (engine, relays) in enumerate(zip(ENGINES, RELAYS)):
            self.key(*["Down"] * (row + 1), "Tab")
            self.type(engine + "\t./logs/\t\t" + f"type {row + 1}" + "\t" + "\t".join(relays))
            self.key("Tab", *["space"] * (row == 0), "Tab")  # test signals of the first engine count
        self.key(*["Tab"] * (TABS_TO_OPTIONS - 1), "Tab", "Right", "Tab")
        self.type("./events/")
        self.key("Tab", *["Tab", "space"] * 4, "Return")
        self.gone("^Setup$")

    def measure(self, evaluators):
        self.menu("Start", 0)
        self.wait_for_event(*everywhere("Measure started"))
        for number in self.plant_.lines:
            evaluators.send(number, parameter_frame(), status(READY), measured_values(speed=700 + number))
            wait_for(lambda: len(self.plant_.records(number)) == 1, what=f"a record of channel {number}")

    def alarms(self, evaluators):
        evaluators.tell(1, PREALARM)
        self.wait_for_event("KVD 1 Prealarm ON")
        self.assertFalse(self.display.windows("Mainalarm"))
        evaluators.tell(2, MAIN_ALARM)
        self.in_dialog("Mainalarm")
        evaluators.send(2, measured_values(speed=710))
        wait_for(lambda: len(self.plant_.records(2)) == 2, what="a record behind the alert")
        time.sleep(0.8)  # the alert takes no key at first
        self.key("Return")
        self.gone("Mainalarm")
        time.sleep(1.5)  # the state is told again: the same alarm does not call twice
        self.assertFalse(self.display.windows("Mainalarm"))
        evaluators.tell(2, READY)
        self.wait_for_event("KVD Starboard main ## Main Alarm OFF")
        evaluators.tell(1, READY)
        self.wait_for_event("KVD Port main ## Prealarm OFF")

    def inhibit(self, evaluators):
        evaluators.tell(3, READY, inhibit=1, left=45)
        self.wait_for_event("KVD Generator 1 ## Alarm Inhibit ON")
        time.sleep(0.3)  # the label is shown
        self.go_to_inhibit()
        self.in_dialog("Alarm Inhibit Time")
        self.key("Return")
        self.gone("Alarm Inhibit Time")
        self.assertEqual(self.plant_.lines[3].received(), frame(":8009"))
        self.wait_for_event(RESTART)
        evaluators.tell(3, READY)
        self.wait_for_event("KVD Generator 1 ## Alarm Inhibit OFF")

    def setup_while_measuring(self):
        before = self.settings()
        self.menu("Setup", 0)
        self.in_dialog("^Setup$")
        self.key("Right", "Left", "Return")
        self.gone("^Setup$")
        self.assertEqual(self.settings(), before)

    def stop_and_go_on(self, evaluators):
        self.menu("Start", 0)
        self.in_dialog("stop data logging")
        self.type(PASSWORD.lower())
        self.key("Tab", "space")  # the next button that can be pressed goes on
        self.gone("stop data logging")
        evaluators.send(1, measured_values(speed=720))
        wait_for(lambda: len(self.plant_.records(1)) == 2, what="a record behind the refused stop")
        self.display.press(self.main, "alt+f", "x", "Escape")  # locked now
        self.assertEqual(self.plant_.events().count(STOPPED), 0)
        self.menu("Start", 0)
        self.in_dialog("stop data logging")
        self.type(PASSWORD)
        time.sleep(BUTTON_READY)
        self.key("Return")
        self.gone("stop data logging")
        self.wait_for_event(*everywhere("Measure stopped"))
        self.menu("Start", 0)
        wait_for(lambda: self.plant_.events().count(WHEN + everywhere("Measure started")[3]) == 2,
                 what="the second start")

    def status_text(self):
        self.enlarge_status_text()
        self.key("ctrl+a", "ctrl+c")
        shown = subprocess.run(["xclip", "-o", "-selection", "clipboard"], env=self.display.environment,
                               capture_output=True, check=True, text=True).stdout
        self.assertEqual(masked(shown).strip("\n").split("\n"),
                         [BOX + text for text in [*BEFORE_CONFIRMATION, CONFIRMED, *AFTER_CONFIRMATION]])
        self.key("Escape")
        self.gone("Status window")

    def leave(self):
        self.display.ask_to_close(self.main)
        self.in_dialog("stop data logging")
        self.key("Escape")
        self.gone("stop data logging")
        self.assertIsNone(self.plant_.program.poll())
        self.plant_.lines[4].send(parameter_frame(), measured_values(speed=799))
        wait_for(lambda: len(self.plant_.records(4)) == 2, what="a record behind the refused end")
        self.display.ask_to_close(self.main)
        self.in_dialog("stop data logging")
        self.type(PASSWORD)
        time.sleep(BUTTON_READY)
        self.key("space")
        self.assertEqual(self.plant_.program.wait(10), 0)

    def compare(self):
        plant = self.plant_
        self.assertEqual(self.settings(), [
            "[tyxo]", "adc_offset=479", "zyl_speed_range=1",
            "xy_tha= 1", "xy_tmv= 1", "xy_theff= 1", "xy_theff_AC= 1",
            "upd_periode= 100", "cmd_periode= 0", "max_sensors= 4", "speedbar_mode= 0", "eventfile_ena= 1",
            "evtpath=./events/", "autostart=0",
            *(f"{key} {row + 1}={value}" for row, engine in enumerate(ENGINES) for key, value in (
                ("comport", f" {row + 1}"), ("location", engine), ("typecode", f"type {row + 1}"),
                ("logpath", "./logs/"), ("text_almrel1", RELAYS[row][0]), ("text_almrel2", RELAYS[row][1]),
                ("tstsig_visible", " 1" if row == 0 else " 0"))),
            "scale_polar_a= .5", "scale_polar_t= 3", "log_mode= 0", f"passwd={PASSWORD}", ""])
        events = [*BEFORE_CONFIRMATION, *AFTER_CONFIRMATION]
        events[events.index("KVD Port main ## Prealarm ON")] = "KVD 1 Prealarm ON"
        self.assertEqual(plant.events(), [STARTED, *(WHEN + text for text in events), STOPPED, STOPPED, ""])
        for number, behind_header in LOGS.items():
            header = log_header(plant.log_names(number)[0], f"type {number}", " 3", " .5")
            self.assertEqual(masked(plant.log(number)).split("\r\n"), [*header, *behind_header, ""])


class ByKeyboardOnASmallScreen(OperatorsDay):
    @classmethod
    def setUpClass(cls):
        cls.display = Desktop("icewm", "1366x768")

    def start(self):
        self.plant_.start(ready="WARNING !")  # of a screen that is small
        self.in_dialog("WARNING !")
        self.key("Return")
        self.main = self.display.window("Tyxo Data Logger")

    def click(self, place, count=1):
        self.fail("nobody has a mouse here")

    def go_to_inhibit(self):
        self.display.press(self.main, *["Tab"] * TABS_TO_INHIBIT_3, "space")

    def enlarge_status_text(self):
        self.display.press(self.main, *["Tab"] * TABS_TO_STATUS_TEXT, "Return")
        self.in_dialog("Status window")


if __name__ == "__main__":
    run_side_by_side(2)
