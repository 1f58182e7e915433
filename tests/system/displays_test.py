"""What the operator opens beside the main window while the engine is measured."""

import re
import subprocess
import time
import unicodedata
import unittest

from harness import Display, PlantTest, curve, measured_values, parameter_frame, status, wait_for

# Places in the main window's client area at its design size.
SCOPE = (463, 375)
SPEED_DIFFERENCE = (580, 330)
THERMO_DIFFERENCE = (580, 395)
CHART = (300, 150)
ENLARGE = (60, 30)

THERMO = [600 + (sample * 7) % 90 for sample in range(256)]
ANGACC = [700 + (sample * 5) % 60 for sample in range(256)]


class Displays(PlantTest):
    @classmethod
    def setUpClass(cls):
        cls.display = Display(window_manager=True)

    def measuring(self):
        plant = self.plant(upd_periode=100).start()
        self.line = plant.lines[1]
        self.line.send(parameter_frame(), status(), measured_values(), *curve("03", THERMO),
                       *curve("04", ANGACC))
        wait_for(lambda: len(plant.records()) == 1, what="a record")
        self.main = self.display.window("Tyxo Data Logger")
        self.expected = 1
        time.sleep(0.3)  # the tick that shows the scope
        return plant

    def click(self, place, window=None):
        where = ["--window", window or self.main, *map(str, place)]
        self.display.tool("xdotool", "mousemove", *where, "click", "1")

    def still_logging(self, plant):
        """A curve and a value arrive, and the value is written down."""
        self.line.send(*curve("03", THERMO), *curve("04", ANGACC), measured_values())
        self.expected += 1
        wait_for(lambda: len(plant.records()) == self.expected, what="another record")

    def gone(self, title):
        wait_for(lambda: not self.display.windows(title), what=f"the end of {title!r}")

    def test_the_scope_opens_the_detailed_display_and_measuring_goes_on(self):
        plant = self.measuring()
        self.click(SCOPE)
        window = self.display.window("Detailed Display Engine 1")
        self.still_logging(plant)
        self.display.press(window, "Escape")
        self.gone("Detailed Display")
        self.still_logging(plant)

    def test_both_bar_diagrams_stand_beside_each_other(self):
        plant = self.measuring()
        self.click(SPEED_DIFFERENCE)
        speed = self.display.window("Speed difference diagram Engine 1")
        self.display.tool("xdotool", "windowmove", speed, "400", "500")
        self.display.tool("xdotool", "windowactivate", "--sync", self.main)
        self.click(THERMO_DIFFERENCE)
        thermo = self.display.window("Thermosignal difference diagram Engine 1")
        self.still_logging(plant)
        self.display.ask_to_close(thermo)
        self.gone("Thermosignal difference diagram")
        self.assertTrue(self.display.windows("Speed difference diagram"))
        self.display.press(speed, "Escape")
        self.gone("Speed difference diagram")

    def test_bars_wait_for_the_parameters(self):
        plant = self.plant(upd_periode=100).start()
        plant.lines[1].send(status(), measured_values())
        self.main = self.display.window("Tyxo Data Logger")
        time.sleep(0.5)
        self.click(SPEED_DIFFERENCE)
        box = self.display.window("^Message$")
        self.display.press(box, "Return")
        self.gone("^Message$")
        self.assertFalse(self.display.windows("Speed difference diagram"))

    def test_charts_are_frozen_and_enlarged_while_measuring_goes_on(self):
        plant = self.measuring()
        self.click(CHART)
        self.click(ENLARGE)
        self.still_logging(plant)
        self.click(ENLARGE)
        self.click(CHART)
        self.still_logging(plant)
        self.assertEqual([line for line in plant.debug() if "error" in line.lower()], [])

    def test_a_chart_is_printed_into_a_pdf_file(self):
        plant = self.plant(upd_periode=100)
        self.display.environment["HOME"] = str(plant.folder)
        plant.start()
        window = self.display.window("Tyxo Data Logger")
        self.display.press(window, "alt+f", "Return")
        self.display.press(self.display.window("^Select print$"), "Return")
        self.display.press(self.display.window("^Print$"), "Return")
        file = wait_for(lambda: list(plant.folder.glob("*.pdf")), what="a PDF file")[0]
        self.gone("^Print$")
        text = subprocess.run(["pdftotext", "-layout", file, "-"], capture_output=True, text=True).stdout
        text = unicodedata.normalize("NFKC", re.sub(r"\s+", " ", text))
        self.assertIn("Sensor 1: Engine 1", text)
        self.assertIn("Printed by Quarvo | Tyxo Data Logger Version 2.10_4", text)
        for legend in ("Tsig %DCA", "RPM /10", "TAlm 100%", "TmV x50", "Teff %DCA", "Teff %ACA"):
            self.assertIn(legend, text)

    def test_the_scales_are_stored_from_the_keyboard(self):
        plant = self.plant(autostart=0, scale_polar_t=3, scale_polar_a=".5", log_mode=0).start()
        window = self.display.window("Tyxo Data Logger")
        self.display.press(window, "alt+f", "Right", "Down", "Return")
        dialog = self.display.window("Setup scales|Scale")
        self.display.press(dialog, "Return")
        wait_for(lambda: not self.display.windows("Setup scales|Scale"), what="the dialog's end")
        stored = ("scale_polar_a= .5", "scale_polar_t= 3", "log_mode= 0", "upd_periode= 100")
        wait_for(lambda: all(line + "\r\n" in plant.text("tyxo.ini") for line in stored),
                 what="the scales in the settings")


if __name__ == "__main__":
    unittest.main()
