"""Every signal that can be sent to the program while it logs at full pace: which ones end it, which ones it
survives, and that none costs a line.
"""

import os
import signal
import time

from full_pace import AT_ONCE, FullPace
from harness import PlantTest
from side_by_side import run_side_by_side

STOPPED = "Tyxo Data Logger software stopped !"
STOP_SECONDS = float(os.environ.get("STOP_SECONDS", "3"))

# What ends a program by asking: a stop line, code 0.
ASK = {signal.SIGTERM, signal.SIGINT, signal.SIGHUP}
# Errors of the program itself, or requests to go without a word; nobody sends them by mistake.
DEADLY = {signal.SIGABRT, signal.SIGALRM, signal.SIGBUS, signal.SIGFPE, signal.SIGILL, signal.SIGIO,
          signal.SIGPROF, signal.SIGPWR, signal.SIGQUIT, signal.SIGSEGV, signal.SIGSTKFLT, signal.SIGSYS,
          signal.SIGTRAP, signal.SIGUSR1, signal.SIGUSR2, signal.SIGVTALRM, signal.SIGXCPU,
          *range(signal.SIGRTMIN, signal.SIGRTMAX + 1)}
HARMLESS = {signal.SIGPIPE, signal.SIGXFSZ, signal.SIGCHLD, signal.SIGWINCH, signal.SIGURG, signal.SIGCONT}
HALTING = {signal.SIGSTOP, signal.SIGTSTP, signal.SIGTTIN, signal.SIGTTOU}
REAL_TIME = [signal.SIGRTMIN, signal.SIGRTMIN + 1, signal.SIGRTMAX]


def name(number):
    return signal.Signals(number).name if number in set(signal.Signals) else f"real-time signal {number}"


class Signals(PlantTest):
    def at_full_pace(self, channels=2):
        return FullPace(self.plant(channels=channels).start())

    def lines_until(self, pace, number):
        """Sends the deadly signal; how many values each channel has, none missing before its last."""
        plant = pace.plant
        plant.program.send_signal(number)
        plant.program.wait(10)
        ended = time.monotonic()
        pace.__exit__()
        for channel, feeder in pace.feeders.items():
            told = [int(record.split()[3]) for record in plant.records(channel)]
            self.assertEqual(told, list(range(1, len(told) + 1)))
            self.assertTrue(plant.log(channel).endswith("\r\n"), "a torn line")
            on_the_way = [sent for sent in feeder.sent[len(told):] if sent < ended - 0.5]
            self.assertEqual(on_the_way, [], "values that had arrived are lost")

    def test_every_signal_is_in_one_group(self):
        groups = [ASK, DEADLY, HARMLESS, HALTING, {signal.SIGKILL}]
        self.assertEqual(sorted(set().union(*groups)), sorted(signal.valid_signals()))
        self.assertEqual(sum(map(len, groups)), len(signal.valid_signals()))

    def test_signals_that_ask_for_the_end_write_the_stop_line(self):
        for number in ASK:
            with self.subTest(name(number)), self.at_full_pace() as pace:
                self.lines_until(pace, number)
                self.assertEqual(pace.plant.program.returncode, 0)
                self.assertIn(STOPPED, pace.plant.events()[-2])

    def test_deadly_signals_end_the_program_and_cost_no_line(self):
        every = "EVERY_SIGNAL" in os.environ
        for number in sorted(DEADLY if every else {signal.SIGUSR1, signal.SIGQUIT, *REAL_TIME[:1]}):
            with self.subTest(name(number)), self.at_full_pace() as pace:
                self.lines_until(pace, number)
                self.assertEqual(pace.plant.program.returncode, -number)

    def test_harmless_signals_are_not_noticed(self):
        with self.at_full_pace() as pace:
            for _ in range(20):
                for number in sorted(HARMLESS):
                    pace.plant.program.send_signal(number)
                    time.sleep(0.01)
            pace.settle()
            self.assertIsNone(pace.plant.program.poll())
            pace.check(self)
            print(f"{', '.join(map(name, sorted(HARMLESS)))}: {pace.values()} values, "
                  f"worst delay {1000 * pace.worst_delay():.0f} ms")
            self.assertLess(pace.worst_delay(), AT_ONCE)

    def test_a_halted_program_goes_on_where_it_was(self):
        """What arrives meanwhile waits on the line, which holds a few seconds of it."""
        for number in sorted(HALTING):
            seconds = STOP_SECONDS if number == signal.SIGSTOP else 0.5
            with self.subTest(name(number)), self.at_full_pace() as pace:
                time.sleep(0.3)
                pace.plant.program.send_signal(number)
                time.sleep(seconds)
                pace.plant.program.send_signal(signal.SIGCONT)
                time.sleep(0.3)
                pace.settle()
                pace.check(self)
                links = [line for line in pace.plant.events() if "connected" in line]
                print(f"{name(number)} for {seconds} s: {pace.values()} values, links lost and found: "
                      f"{len(links)}")


if __name__ == "__main__":
    run_side_by_side(2, longest=["halted"])
