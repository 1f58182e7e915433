"""A desktop that hangs while the program measures at full pace: X server, window manager, session bus."""

import contextlib
import os
import signal
import time
import unittest

from full_pace import AT_ONCE, FullPace
from harness import Display, Plant, SessionBus, wait_for
from side_by_side import run_side_by_side

HANGS = [float(word) for word in os.environ.get("HANGS", "3").split()]  # s


@contextlib.contextmanager
def halted(process):
    process.send_signal(signal.SIGSTOP)
    try:
        yield
    finally:
        process.send_signal(signal.SIGCONT)


class DesktopHangs(unittest.TestCase):
    def display(self, **options):
        display = Display(**options)
        self.addCleanup(display.stop)
        return display

    def plant(self, display, channels=4):
        plant = Plant(display, channels)
        self.addCleanup(plant.stop)
        return plant

    def bus(self, display):
        bus = SessionBus(display.environment)
        self.addCleanup(bus.stop)
        self.addCleanup(bus.process.send_signal, signal.SIGCONT)
        display.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address
        return bus

    def hang(self, what, plant, process):
        """The worst delays of a value in the log by the seconds of the hang."""
        delays = {}
        for seconds in HANGS:
            with FullPace(plant.start()) as pace:
                time.sleep(0.5)
                with halted(process):
                    time.sleep(seconds)
                time.sleep(0.5)
                pace.settle()
                pace.check(self)
                delays[seconds] = pace.worst_delay()
                print(f"{what} hangs for {seconds:g} s: {pace.values()} values on {len(plant.lines)} lines, "
                      f"none lost, worst delay {1000 * delays[seconds]:.0f} ms")
            plant.stop()
            plant = self.plant(plant.display, len(plant.lines))
        return delays

    def test_an_x_server_that_hangs_holds_lines_up_as_long_and_loses_none(self):
        display = self.display()
        for seconds, delay in self.hang("X server", self.plant(display), display.process).items():
            self.assertLess(delay, seconds + AT_ONCE)

    def test_a_window_manager_that_hangs_is_not_noticed(self):
        display = self.display(window_manager=True)
        self.addCleanup(display.manager.send_signal, signal.SIGCONT)
        delays = self.hang("window manager", self.plant(display), display.manager)
        self.assertLess(max(delays.values()), AT_ONCE)

    def test_a_session_bus_that_hangs_is_not_noticed(self):
        display = self.display()
        bus = self.bus(display)
        delays = self.hang("session bus", self.plant(display), bus.process)
        self.assertLess(max(delays.values()), AT_ONCE)

    def test_a_start_while_the_session_bus_hangs_measures(self):
        display = self.display()
        bus = self.bus(display)
        begin = time.monotonic()
        with halted(bus.process):
            plant = self.plant(display).start(ready=None)
            wait_for(lambda: sum("Measure started" in line for line in plant.events()) == len(plant.lines),
                     20, "the start")
            waited = time.monotonic() - begin
            print(f"start while the session bus hangs: measures after {waited:.1f} s")
            self.assertIn("The session bus does not answer, and is done without", plant.debug())
            with FullPace(plant) as pace:
                time.sleep(1)
                pace.settle()
                pace.check(self)


if __name__ == "__main__":
    run_side_by_side(2)
