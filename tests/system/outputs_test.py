"""The debug output at full pace, with a reader that does not read: none of it costs a line of the logs."""

import os
import pty
import termios
import time

from full_pace import AT_ONCE, FullPace
from harness import PlantTest
from side_by_side import run_side_by_side

SECONDS = float(os.environ.get("FAULT_SECONDS", "3"))
WRONG_CHECK = b":0100ff\r\n"  # a frame that the debug output tells of


class Outputs(PlantTest):
    def measure(self, what, begin, end=None, **outputs):
        """Two quiet lines, and two that are wrong each time they tell something."""
        plant = self.plant(channels=4).start(**outputs)
        with FullPace(plant) as pace:
            for number in (1, 2):
                turn = pace.feeders[number].turn
                pace.feeders[number].turn = lambda count, turn=turn: [*turn(count), *[WRONG_CHECK] * 5]
            begin()
            time.sleep(SECONDS)
            if end:
                end()
                time.sleep(0.5)
            pace.settle()
            pace.check(self)
            told = sum(len(pace.feeders[number].sent) for number in (1, 2)) * 5
            print(f"{what}: {pace.values()} values, none lost, worst delay "
                  f"{1000 * pace.worst_delay():.0f} ms; about {told} lines to tell")
            self.assertLess(pace.worst_delay(), AT_ONCE)
        self.assertIsNone(plant.program.poll())

    def test_a_pipe_that_nobody_reads(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        os.set_blocking(reading, False)
        self.measure("pipe that nobody reads", lambda: os.close(writing), lambda: os.read(reading, 1 << 20),
                     stderr=writing, stdout=writing)

    def test_a_pipe_whose_reader_has_gone(self):
        reading, writing = os.pipe()
        self.measure("pipe whose reader has gone", lambda: (os.close(writing), os.close(reading)),
                     stderr=writing, stdout=writing)

    def test_a_terminal_that_is_halted(self):
        master, slave = pty.openpty()
        self.addCleanup(os.close, master)
        self.addCleanup(os.close, slave)
        self.measure("halted terminal", lambda: termios.tcflow(slave, termios.TCOOFF),
                     lambda: termios.tcflow(slave, termios.TCOON), stderr=slave, stdout=slave, stdin=slave)

    def test_a_terminal_that_is_closed(self):
        master, slave = pty.openpty()
        self.measure("closed terminal", lambda: (os.close(slave), os.close(master)),
                     stderr=slave, stdout=slave, stdin=slave)

    def test_a_file_on_a_full_disk(self):
        with open("/dev/full", "wb") as full:
            self.measure("full disk", lambda: None, stderr=full, stdout=full)


if __name__ == "__main__":
    run_side_by_side(2)
