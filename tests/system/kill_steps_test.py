"""A program that is killed at each single step that it takes with a file: instead of the first call to the
system of each kind, instead of the second one of a thread, and so on. STEPS in the environment says how many.
"""

import itertools
import os
import re
import time

from harness import PROGRAM, WITH_US, PlantTest, measured_values, parameter_frame, status
from side_by_side import run_side_by_side

STEPS = int(os.environ.get("STEPS", "1"))
BEHIND = 0.7  # s: a program that lives so long behind its first record has taken fewer steps
DIED = (-9, 137)


class KillSteps(PlantTest):
    def killed_at(self, step, call, name, **settings):
        """A plant whose program was killed instead of its step with the file; None if it took no such
        step."""
        plant = self.plant(**settings)
        plant.executable = str(plant.folder / "killed")
        paths = " ".join(f"-P '{prefix}/{name}'" for prefix in (".", plant.folder) if name)
        with open(plant.executable, "w", encoding="utf-8") as script:
            script.write(f"#!/bin/sh\nexec strace -f -qq -o {plant.folder}/trace {paths} "
                         f"-e inject={call}:error=EIO:signal=KILL:when={step} "
                         f"{' '.join(WITH_US)} {PROGRAM}\n")
        os.chmod(plant.executable, 0o755)
        plant.start(ready=None)
        end = time.monotonic() + 30
        while plant.program.poll() is None and time.monotonic() < end:
            plant.lines[1].send(parameter_frame(), measured_values(speed=7), status(0x2020))
            time.sleep(0.1)
            if plant.records():
                end = min(end, time.monotonic() + BEHIND)
        if plant.program.poll() is None:
            plant.kill()  # the tracer, and with it the program
            return None
        self.assertIn(plant.program.returncode, DIED)
        return plant

    def each_step(self, check, name, calls, **settings):
        """The name of the file; none if the calls, done with any file, say enough."""
        done = 0
        for step, call in itertools.product(range(1, STEPS + 1), calls):
            plant = self.killed_at(step, call, name, **settings)
            if plant is not None:
                done += 1
                with self.subTest(call=call, step=step):
                    check(plant)
        print(f"{name or 'the settings'}: killed at {done} of {STEPS * len(calls)} steps")
        self.assertGreater(done, 0)

    def test_a_kill_at_any_step_leaves_no_log_without_a_header(self):
        def check(plant):
            for name in plant.log_names():
                log = plant.text(f"logs/Engine 1/{name}")
                self.assertRegex(log, r"\A<\?xml version", "a log without a header")
                self.assertEqual(log.count("<LOG>\r\n"), 1)

        log = time.strftime("logs/Engine 1/%Y%m%dQu_Engine 1.xlg")
        self.each_step(check, log, ("openat", "linkat", "write"))

    def test_a_kill_at_any_step_leaves_whole_event_lines(self):
        def check(plant):
            *lines, rest = plant.text("events/TY_all_events.txt").split("\r\n")
            self.assertEqual(rest, "")
            for line in lines:
                self.assertTrue(re.fullmatch(r"##;\d\d-\d\d-\d{4};\d\d:\d\d:\d\d;.*", line), line)

        self.each_step(check, "events/TY_all_events.txt", ("openat", "write", "fdatasync"))

    def test_a_kill_at_any_step_leaves_the_old_settings_or_the_new_ones(self):
        def check(plant):
            text = plant.text("tyxo.ini")
            self.assertTrue(text.startswith("[tyxo]\r\n") and text.endswith("\r\n"))
            self.assertEqual(text.count("logpath 1="), 1)

        # They are written beside the file, by a name that has the process's number.
        self.each_step(check, None, ("faccessat2", "fchmod", "fsync", "rename"), adc_offset=None)


if __name__ == "__main__":
    run_side_by_side(3)
