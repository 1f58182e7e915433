"""Alarms while a password is typed, on several desktops: what is typed confirms none and arrives whole.

Desktops and the number of alarms can be given: ALARMS=20 alert_typing_test.py -v Openbox Icewm Xfwm4 Weston
"""

import os
import time
import unittest

from desktops import Desktop, Screen
from harness import PlantTest, measured_values, parameter_frame, status, wait_for

ALARMS = int(os.environ.get("ALARMS", "20"))
RELAY_AND_AC = 0x0088
RED = 0xFF0000
PHASE = 0.6  # s
SCREEN = [int(side) for side in Desktop.SIZE.split("x")]


class Typing:
    """Alarms, one after the other, while the same long password is typed into two boxes."""

    desktop = ""

    @classmethod
    def setUpClass(cls):
        cls.display = Desktop(cls.desktop)

    def setUp(self):
        self.screen = Screen(self.display.name)
        self.addCleanup(self.screen.close)

    def red(self):
        return self.screen.extent(RED, *SCREEN)

    def seen(self):
        """Where the alert is, which is red every other moment."""
        return wait_for(self.red, 2 * PHASE + 0.3, "the alert")

    def gone(self):
        """True as soon as it has been away for longer than its dark phase."""
        start = away = time.monotonic()
        while time.monotonic() < away + PHASE + 0.2:
            if self.red():
                away = time.monotonic()
            if time.monotonic() > start + 5:
                return False
        return True

    def measuring(self):
        plant = self.plant(passwd="old")
        plant.start(ready=None if self.display.wayland else "Tyxo Data Logger")
        line = plant.lines[1]

        def recorded():
            line.send(parameter_frame(), status(), measured_values())
            time.sleep(0.2)
            return plant.records()

        wait_for(recorded, what="a record")
        return plant

    def open_password_dialog(self):
        time.sleep(1)
        self.display.keys("alt+f", "Right", "Down", "Down", "Return", delay=150)
        time.sleep(1)

    def confirm_by_mouse(self):
        left, _, right, bottom = self.seen()
        self.display.click((left + right) // 2, bottom - 50)

    def confirm_and_go_on(self, plant):
        self.confirm_by_mouse()
        self.assertTrue(self.gone())
        plant.lines[1].send(status())
        if self.display.wayland:  # this compositor gives the keyboard to nobody when a window has gone
            self.display.keys("super+Tab")

    def type_under_alarms(self, plant, words):
        """Types the words with an alarm in front of each, and with keys that would confirm it."""
        for index, word in enumerate(words):
            plant.lines[1].send(status(RELAY_AND_AC))
            if index % 5 == 4:
                self.seen()  # the alarm is an old one
                time.sleep(PHASE + 0.05 * index)
            self.display.keys(*word, "Return", "space")
            self.confirm_and_go_on(plant)

    def test_what_is_typed_confirms_nothing_and_is_not_lost(self):
        plant = self.measuring()
        words = [f"word{index:02}" for index in range(ALARMS // 2)]
        self.open_password_dialog()
        for _ in range(2):
            self.display.keys("Tab")
            self.type_under_alarms(plant, words)
            self.display.keys("z")
        self.display.keys("shift+Tab", "shift+Tab", *"old")
        plant.lines[1].send(status(RELAY_AND_AC))
        self.display.keys("Return")  # stores; the next one confirms nothing, since it comes too soon
        self.display.keys("Return", "space", "Escape")
        stored = f"passwd={' '.join([*words, 'z'])}\r\n"
        wait_for(lambda: stored in plant.text("tyxo.ini"), what="the password")
        self.confirm_and_go_on(plant)


class Openbox(Typing, PlantTest):
    desktop = "openbox"


class Icewm(Typing, PlantTest):
    desktop = "icewm"


class Xfwm4(Typing, PlantTest):
    desktop = "xfwm4"


class Weston(Typing, PlantTest):
    desktop = "weston"


if __name__ == "__main__":
    unittest.main()
