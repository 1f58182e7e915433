"""The program where nobody reads, answers or watches: its outputs, its start, its end from outside."""

import fcntl
import os
import pathlib
import pty
import shutil
import signal
import subprocess
import termios
import time
import unittest

from desktops import Desktop
from harness import PROGRAM, Display, Plant, measured_values, parameter_frame, status, wait_for

WHEN = "##;mm-dd-yyyy;hh:mm:ss;"
STOPPED = WHEN + "Tyxo Data Logger software stopped !"
BOX = "^Quarvo / Tyxo Data Logger$"
MAIN_ALARM = 0x0088  # relay and AC
WRONG_CHECK = b":0100ff\r\n"  # a frame that the debug output tells of


def closed_standard_descriptors():
    for descriptor in (0, 1, 2):
        os.close(descriptor)


def fill(descriptor):
    """Writes until nothing more goes in, through a description of its own."""
    own = os.open(f"/proc/self/fd/{descriptor}", os.O_WRONLY | os.O_NONBLOCK)
    filled = 0
    try:
        while True:
            filled += os.write(own, b"x" * 512)
    except BlockingIOError:
        return filled
    finally:
        os.close(own)


def everything_in(descriptor):
    os.set_blocking(descriptor, False)
    data = b""
    try:
        while True:
            data += os.read(descriptor, 65536)
    except BlockingIOError:
        return data


class Unattended(unittest.TestCase):
    def display(self, size="1280x1024", **options):
        display = Display(size, **options)
        self.addCleanup(display.stop)
        return display

    def plant(self, display=None, **settings):
        plant = Plant(display or self.display(), **settings)
        self.addCleanup(plant.stop)
        return plant

    def measures(self, plant, speed, number=1):
        plant.lines[number].send(measured_values(speed=speed))
        wait_for(lambda: f" {speed} " in plant.log(number), 5, "a record of now")

    def chatter(self, plant, times):
        for _ in range(times):
            plant.lines[1].raw(WRONG_CHECK)

    def test_a_pipe_that_nobody_reads_stops_nothing_and_the_lost_lines_are_counted(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        plant = self.plant()
        plant.start(stderr=writing)
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)
        filled = fill(writing)
        os.close(writing)
        self.chatter(plant, 50)
        self.measures(plant, 102)
        before = everything_in(reading)
        self.assertGreaterEqual(len(before), filled)
        self.assertNotIn(b"LRC Error", before)
        told = wait_for(lambda: everything_in(reading), 5, "the count, without a further line to tell")
        self.assertEqual(told, b"debug output: 50 lines were lost\n")
        self.chatter(plant, 1)
        wait_for(lambda: everything_in(reading) == b"LRC Error\n", 5, "the next line")
        self.measures(plant, 103)

    def test_a_halted_terminal_stops_nothing(self):
        master, slave = pty.openpty()
        self.addCleanup(os.close, master)
        plant = self.plant()
        plant.start(stderr=slave, stdout=slave, stdin=slave)
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)
        everything_in(master)
        termios.tcflow(slave, termios.TCOOFF)  # what Ctrl+S does
        self.chatter(plant, 300)
        self.measures(plant, 102)
        self.assertNotIn(b"LRC Error", everything_in(master))
        termios.tcflow(slave, termios.TCOON)
        os.close(slave)
        self.assertRegex(wait_for(lambda: everything_in(master), 5, "the count"), rb"\d+ lines were lost")
        self.measures(plant, 103)

    def test_the_terminal_of_others_goes_on_waiting_as_before(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        self.addCleanup(os.close, writing)
        self.plant().start(stderr=writing)
        self.assertFalse(fcntl.fcntl(writing, fcntl.F_GETFL) & os.O_NONBLOCK)

    def test_closed_standard_descriptors_are_the_null_device(self):
        plant = self.plant()
        plant.start(preexec_fn=closed_standard_descriptors, stderr=None)
        for descriptor in (0, 1, 2):
            self.assertEqual(os.readlink(f"/proc/{plant.program.pid}/fd/{descriptor}"), "/dev/null")
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)

    def test_a_start_at_night_measures_logs_and_alarms_behind_its_boxes(self):
        display = self.display(window_manager=True)
        plant = self.plant(display, channels=4, evtpath=".\\share\\")
        plant.lines[4].vanish()
        plant.start(ready="Version 2.10_4")
        self.assertEqual(len(wait_for(lambda: display.windows(BOX), what="the boxes")), 2)
        for number in (1, 2, 3):
            plant.lines[number].send(parameter_frame(), status())
            self.measures(plant, 100 + number, number)
        plant.lines[2].send(status(MAIN_ALARM))
        display.window("^Mainalarm$")
        self.assertEqual(len(display.windows(BOX)), 2, "the boxes stay until somebody has read them")
        self.assertIn("KVD Main ALARM AC ON", plant.log(2))
        self.measures(plant, 200, 1)

    def test_the_boxes_of_the_start_stand_in_front_of_the_main_window_without_a_window_manager(self):
        display = self.display()
        plant = self.plant(display, evtpath=".\\share\\")
        plant.start(ready="Version 2.10_4")
        box = display.window(BOX)
        windows = ["xdotool", "search", "--onlyvisible", "--name", "Tyxo Data Logger"]
        wait_for(lambda: display.tool(*windows)[-1] == box, what="the box in front, the last of the list")
        time.sleep(0.3)
        self.assertEqual(display.tool(*windows)[-1], box)

    def test_a_second_copy_says_who_holds_the_folder_and_touches_nothing(self):
        display = self.display()
        plant = self.plant(display).start()
        events = plant.events()
        settings = plant.text("tyxo.ini")
        second = subprocess.Popen([PROGRAM], cwd=plant.folder, env=display.environment,
                                  stderr=subprocess.DEVNULL)
        self.addCleanup(second.kill)
        box = display.window(BOX)
        opened = {os.readlink(link) for link in pathlib.Path(f"/proc/{second.pid}/fd").iterdir()}
        self.assertFalse([path for path in opened if path.startswith("/dev/pts/")])
        display.press(box, "Return")
        self.assertEqual(second.wait(10), 2)
        self.assertEqual(plant.events(), events)
        self.assertEqual(plant.text("tyxo.ini"), settings)
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)

    def test_the_folder_is_free_again_behind_a_killed_program(self):
        plant = self.plant().start()
        plant.kill()
        plant.start()
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)

    def test_signals_write_the_stop_line_and_end_with_0_without_a_question(self):
        display = self.display()
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number.name):
                plant = self.plant(display, passwd="secret").start()
                plant.lines[1].send(parameter_frame())
                self.measures(plant, 101)
                plant.program.send_signal(number)
                self.assertEqual(plant.program.wait(5), 0)
                self.assertEqual(plant.events()[-2:], [STOPPED, ""])
                self.assertNotIn("Measure Stopped", plant.log())

    def test_a_signal_ends_the_program_behind_an_open_question_and_an_open_box(self):
        display = self.display()
        plant = self.plant(display, passwd="secret").start()
        display.press(display.window("Tyxo Data Logger"), "alt+f", "x")
        display.window("stop data logging")
        plant.program.terminate()
        self.assertEqual(plant.program.wait(5), 0)
        self.assertEqual(plant.events()[-3:], [STOPPED, STOPPED, ""], "one of the request, one of the end")

    def test_a_signal_that_was_ignored_at_the_start_stays_ignored(self):
        plant = self.plant()
        plant.start(preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        plant.program.send_signal(signal.SIGHUP)
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)

    def test_a_lost_display_writes_the_stop_line_and_ends_as_a_failure(self):
        for events in (".\\events\\", ".\\missing\\"):
            with self.subTest(events):
                display = self.display()
                plant = self.plant(display, evtpath=events).start(ready="Version 2.10_4")
                plant.lines[1].send(parameter_frame())
                self.measures(plant, 101)
                display.process.kill()
                self.assertEqual(plant.program.wait(5), 1)
                if plant.events() != [""]:
                    self.assertEqual(plant.events()[-2:], [STOPPED, ""])

    def test_a_lost_wayland_compositor_writes_the_stop_line_too(self):
        display = Desktop("weston")
        self.addCleanup(display.stop)
        plant = self.plant(display)
        plant.start(ready=None)
        plant.lines[1].send(parameter_frame())
        wait_for(lambda: WHEN + "KVD Engine 1 ## Measure started " in plant.events(), what="the start")
        display.manager.kill()
        self.assertEqual(plant.program.wait(5), 1)
        self.assertEqual(plant.events()[-2:], [STOPPED, ""])

    def test_no_session_bus_is_started_where_there_is_none(self):
        display = self.display()
        display.environment.pop("DBUS_SESSION_BUS_ADDRESS", None)
        plant = self.plant(display)
        plant.executable = str(plant.folder / "traced")
        trace = plant.folder / "trace"
        with open(plant.executable, "w") as script:
            script.write(f"#!/bin/sh\nexec strace -f -o {trace} -e trace=execve {PROGRAM}\n")
        os.chmod(plant.executable, 0o755)
        plant.start(ready=None)
        display.window("Version 2.10_4")
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)
        self.assertEqual([line for line in trace.read_text().splitlines() if "bus" in line], [])

    def test_a_copy_under_another_name_has_settings_of_its_own(self):
        plant = self.plant()
        plant.executable = str(plant.folder / "plant2.bin")
        shutil.copy(PROGRAM, plant.executable)
        settings = (plant.folder / "tyxo.ini").rename(plant.folder / "plant2.ini")
        settings.write_bytes(settings.read_bytes().replace(b"[tyxo]", b"[plant2]"))
        plant.start()
        plant.lines[1].send(parameter_frame())
        self.measures(plant, 101)
        self.assertFalse((plant.folder / "tyxo.ini").exists())


if __name__ == "__main__":
    unittest.main()
