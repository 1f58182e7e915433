"""The program for those who cannot see it: read, pressed and heard over the accessibility bus."""


from harness import Display, PlantTest, curve, measured_values, parameter_frame, status, undone_by, wait_for
from screen_reader import ScreenReader
from side_by_side import run_side_by_side

CHANNELS = 4
RELAY_AND_AC = 0x0088
READY = 0x0020
THERMO = [600 + (sample * 7) % 90 for sample in range(256)]
ANGACC = [700 + (sample * 5) % 60 for sample in range(256)]

# What is no control, but holds some: nobody needs to hear of it.
BARE_CONTAINERS = {"filler", "layered pane", "menu bar", "popup menu", "scroll pane"}
NO_ROLES = {"filler", "unknown", "invalid", "redundant object"}


class ForTheEar(PlantTest):
    @classmethod
    def setUpClass(cls):
        cls.display = Display(window_manager=True)
        with undone_by(cls.display.stop):
            cls.reader = ScreenReader(cls.display)

    @classmethod
    def tearDownClass(cls):
        cls.reader.stop()
        super().tearDownClass()

    def measuring(self, channels=CHANNELS, **settings):
        plant = self.plant(channels=channels, **settings).start()
        for line in plant.lines.values():
            line.send(parameter_frame(), status(), measured_values(), *curve("03", THERMO),
                      *curve("04", ANGACC))
        self.program = self.reader.program(plant.program.pid)
        self.main = self.window("frame", "")
        self.reader.wait_for(self.main, "push button", "Thermosignal difference")
        return plant

    def window(self, role, name):
        def shown():
            for window in self.program:
                if (window is not None and window.getRoleName() == role and name in window.name and
                        self.reader.showing(window)):
                    return window
            return None

        return wait_for(shown, what=f"a {role} {name!r}")

    def gone(self, name):
        wait_for(lambda: not [window for window in self.program
                              if name in window.name and self.reader.showing(window)], what=f"no {name!r}")

    def keep_values_coming(self, plant):
        self.keep_sending(plant, lambda turn: [
            *curve("03", THERMO[turn % 9:] + THERMO[:turn % 9]), *curve("04", ANGACC),
            measured_values(30 + turn % 20, 700 + turn % 30, 1200 + turn % 50)])

    def test_nothing_is_told_but_what_has_happened(self):
        plant = self.measuring()
        self.keep_values_coming(plant)
        speed = self.reader.find(self.main, "dial", "Speed, channel 4")
        before = {speed.queryValue().currentValue}
        self.reader.listen(1)  # the windows settle
        self.assertEqual(self.reader.listen(3), [])
        self.assertNotIn(speed.queryValue().currentValue, before)

    def test_instruments_have_values_units_and_words(self):
        plant = self.measuring(channels=1)
        plant.lines[1].send(measured_values(tsignal=57, speed=681, voltage=1298))
        dial = self.reader.find(self.main, "dial", "Speed, channel 1")
        value = dial.queryValue()
        wait_for(lambda: value.currentValue == 681, what="the speed")
        self.assertEqual((value.minimumValue, value.maximumValue, dial.description), (0, 1400, "RPM"))
        bar = self.reader.find(self.main, "dial", "Tsig %DCA").queryValue()
        self.assertEqual((bar.minimumValue, bar.currentValue, bar.maximumValue), (0, 57, 125))
        for role, name, text in [
                ("dial", "Speed, channel 1", "681 RPM"), ("dial", "Tsig %DCA, channel 1", "57, highest 57"),
                ("label", "Speed in digits, channel 1", "681"),
                ("label", "Tsig %DCA in digits, channel 1", "57 %"),
                ("label", "Thermovoltage, channel 1", "12.98 mV"),
                ("label", "System Ready, channel 1", "on"), ("label", "Alarmrel 2, channel 1", "off"),
                ("chart", "Polar scope, channel 1", "Thermosignal: 71 to 130 % of the circle, "
                 "Angular acceleration: 91 to 109 % of the circle"),
                ("chart", "Chart 1: Engine 1", "running, the last 2 min, Tsig %DCA: 57.0, RPM /10: 68.1, "
                 "TAlm 100%: 100.0, TmV x50: 649.0, Teff %DCA: 38.0, Teff %ACA: 12.0")]:
            control = self.reader.find(self.main, role, name)
            wait_for(lambda control=control, wanted=f"{name}: {text}": self.reader.text(control) == wanted,
                     what=f"{text}")

    def test_what_can_be_clicked_can_be_pressed(self):
        plant = self.measuring(channels=1)
        reader, main = self.reader, self.main
        reader.press(reader.find(main, "push button", "Tsig %DCA, value shown"))
        reader.wait_for(main, "dial", "Teff %DCA, channel 1")
        chart = reader.find(main, "chart", "Chart 1")
        for state in ["frozen", "running"]:
            reader.press(chart)
            wait_for(lambda state=state: f": {state}, " in reader.text(chart), what=f"a {state} chart")
        plant.lines[1].send(status(READY, inhibit=1, left=45))
        inhibit = reader.wait_for(main, "push button", "Alarm inhibit")
        reader.press(inhibit)
        question = self.window("dialog", "Alarm Inhibit Time")
        # While it stands in front, nothing behind it is pressed.
        reader.press(reader.find(main, "push button", "Teff %DCA, value shown"))
        reader.press(reader.find(question, "push button", "Cancel"))
        self.gone("Alarm Inhibit Time")
        self.assertTrue(reader.find(main, "dial", "Teff %DCA, channel 1"))
        reader.press(reader.find(main, "chart", "Polar scope"))
        self.window("frame", "Detailed Display")

    def unheard(self, window):
        """What is shown of a window and cannot be told. The inside of a text is a matter of its own."""
        found = []
        for node in self.reader.below(window, leave_out="text"):
            role, name = node.getRoleName(), node.name
            inside = any(child is not None and self.reader.showing(child) for child in node)
            if inside and role in BARE_CONTAINERS:
                continue
            if role in NO_ROLES or not name:
                found.append(f"{window.name}: {role} {name!r} in {node.parent.getRoleName()} "
                             f"{node.parent.name!r}")
        return found

    def choose(self, entry, window=None):
        item = self.reader.find(window or self.main, "menu item", entry, with_hidden=True)
        self.assertTrue(item, entry)
        self.reader.press(item)

    def leave(self, title, button=None):
        if button:
            self.reader.press(self.reader.find(self.window(*title), "push button", button))
        else:
            self.display.press(self.display.window(title[1]), "Escape")
        self.gone(title[1])

    def check(self, *title):
        """The window has a name and a role, all that stands in it too, and it tells no names that stay."""
        window = self.window(*title)
        self.assertEqual(self.unheard(window), [])
        self.reader.listen(0.2)
        told = [(kind, role, name) for kind, role, name in self.reader.listen(0.5)
                if kind.endswith("accessible-name") and role != "notification"]
        self.assertEqual(told, [], title)
        return window

    def test_every_window_is_told_in_whole(self):
        plant = self.measuring(channels=2)
        self.keep_values_coming(plant)
        self.check("frame", "Tyxo Data Logger")
        self.choose("Setup preferences")
        for tab in ["TY Settings", "2 : Engine 2"]:
            self.reader.press(self.reader.find(self.window("dialog", "Setup"), "page tab", tab))
            setup = self.check("dialog", "Setup")
        groups = [node.name for node in self.reader.below(setup) if node.getRoleName() == "panel"]
        self.assertEqual(groups, ["Engine 2", "Evaluator", "Engine", "DC alarm", "AC alarm", "Firing order",
                                  "Firing angle"])
        self.leave(("dialog", "Setup"), "Cancel")
        for entry, title, button in [("Setup scales", "Setup scales", "OK"),
                                     ("Setup password", "Setup Password", "Cancel"),
                                     ("Print", "Select print", "cancel"),
                                     ("Stop all channels", "stop data logging", "Continue Logging"),
                                     ("About", "About", None)]:
            self.choose(entry)
            self.check("dialog", title)
            self.leave(("dialog", title), button)
        for role, name, title in [("chart", "Polar scope, channel 1", ("frame", "Detailed Display")),
                                  ("push button", "Speed difference, channel 1", ("frame", "Speed")),
                                  ("push button", "Thermosignal difference", ("frame", "Thermosignal")),
                                  ("push button", "Tyxo Data Logger", ("dialog", "Software info"))]:
            self.reader.press(self.reader.find(self.main, role, name))
            self.check(*title)
            self.leave(title)
        self.choose("Setup Modbus TCP/IP")
        gateway = self.check("frame", "Modbus")
        self.choose("Register Content", gateway)
        self.reader.wait_for(gateway, "text", "Register 122")
        self.check("frame", "Modbus")
        plant.program.terminate()  # all that was told of is taken apart
        self.assertEqual(plant.program.wait(10), 0)

    def test_the_alert_and_every_event_are_said(self):
        plant = self.measuring(channels=2)
        self.choose("Setup password")  # somebody types; the keyboard stays with him
        typing = self.window("dialog", "Setup Password")
        for number, line in plant.lines.items():
            line.send(status(RELAY_AND_AC))
            alarm = f"Main Alarm Relay triggered! Tyxo {number}: Engine {number}  Mainalarm AC"
            heard = self.reader.listen_for(lambda kind, role, name, alarm=alarm: name == alarm)
            self.assertIn(("object:state-changed:showing", "notification", alarm), heard)
            self.assertTrue([name for kind, role, name in heard if role == "notification" and
                             name.endswith(f"KVD Engine {number} ## Main Alarm AC ON")])
        self.assertTrue(typing.getState().contains(self.reader.atspi.STATE_ACTIVE))
        alert = self.check("alert", "Mainalarm")
        labels = [node.name for node in self.reader.below(alert) if node.getRoleName() == "label"]
        self.assertEqual(labels, ["ATTENTION", "Main Alarm Relay triggered!", "Tyxo 1:",
                                  "Engine 1  Mainalarm AC", "Tyxo 2:", "Engine 2  Mainalarm AC"])
        flashing = self.reader.listen(1.5)
        self.assertIn("Alarm bell", [name for kind, role, name in flashing])
        self.assertFalse([name for kind, role, name in flashing if name.startswith("Main Alarm Relay")])
        self.reader.press(self.reader.find(alert, "push button", "Confirm the main alarm"))
        self.reader.listen_for(lambda kind, role, name: role == "notification" and
                               name.endswith("Mainalarm confirmed by operator!"))
        self.gone("Mainalarm")


if __name__ == "__main__":
    run_side_by_side(2, longest=["every_window"], warnings="ignore")  # of the bus' own Python package
