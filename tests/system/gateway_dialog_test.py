"""Registers read and written by hand, from the keyboard of the real program."""

import unittest

from harness import Display, PlantTest, wait_for
from servers import GATEWAY, LibmodbusServer

BY_HAND = {"IPenaTRS": 0, "IPpolar": 0, "IPsysstat": 0, "REGView": 1, "Sendbase": 0, "REGNumber": 10}
TITLE = "Setup data transmission over Modbus TCP/IP"
# How often the Tab key takes the keyboard on, from the opened window to the box of the start register.
TO_START_REGISTER = 11
VALUES = [0, 1, 255, 256, 32767, 32768, 65534, 65535]


class Dialog(PlantTest):
    @classmethod
    def setUpClass(cls):
        cls.display = Display(window_manager=True)

    def open(self):
        self.server = LibmodbusServer()
        self.addCleanup(self.server.stop)
        self.plant(**{**GATEWAY, **BY_HAND, "IPport": self.server.port()}, autostart=0).start()
        self.display.press(self.display.window("Tyxo Data Logger"), "alt+f", "Right", "Up", "Return")
        self.dialog = self.display.window(TITLE)

    def type(self, *keys):
        self.display.tool("xdotool", "key", "--delay", "40", *keys)

    def test_registers_are_read_and_written_elsewhere(self):
        self.open()
        self.server.set(40, VALUES)
        count = str(len(VALUES))
        self.display.tool("xdotool", "windowfocus", "--sync", self.dialog)
        self.type(*["Tab"] * TO_START_REGISTER, "4", "0", "Tab", *count, "Tab", "space")  # read
        # Back to the start register, and from there over the button for reading to the one for writing.
        self.type("shift+Tab", "shift+Tab", "9", "0", "Tab", "Tab", "Tab", "space")
        wait_for(lambda: self.server.get(90, len(VALUES)) == VALUES, what="the registers written")
        self.assertEqual(self.server.get(88, 2) + self.server.get(90 + len(VALUES), 2), [0] * 4)
        # The first register's box is behind the button: what is typed into it goes out.
        self.type("Tab", "7", "0", "0", "shift+Tab", "space")
        wait_for(lambda: self.server.get(90, 2) == [700, 1], what="the typed value")


if __name__ == "__main__":
    unittest.main()
