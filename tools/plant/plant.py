"""Runs the built program beside four simulated Evaluators and a simulated plant controller, in the fresh
folder plant/ of this repository.

With a display until its window is closed; without one a minute on a virtual screen, with pictures. What it
has left and sent stands in a summary at the end. Exit code 0: the program ended in order, and on the virtual
screen all four channels have logged.
"""

import fcntl
import os
import re
import shutil
import signal
import sys
import time
from pathlib import Path

from helpers import Failure, Helper, wait_until
from screen import Screen
from summary import all_logged, logged, summary

ROOT = Path(__file__).resolve().parents[2]
PLANT = ROOT / "plant"
BUILD = ROOT / "build" / "release"
CONTROLLER_REPORT = PLANT / "controller.log"
SCENARIO = ROOT / "tools" / "evaluator" / "scenarios" / "plant.txt"
TITLE = "Quarvo / Tyxo Data Logger"
STOP_LOCK = "stop data logging"

# Where the operator clicks in the main window.
SCOPE_2 = (463, 775)
SPEED_DIFFERENCE_2 = (580, 735)
THERMO_DIFFERENCE_2 = (580, 800)
ENLARGE_2 = (60, 436)
INHIBIT_3 = (955, 342)

# Seconds after the start, and what happens then: a click, keys, "maximise", a picture's name, or nothing.
SETUP = ["alt+f", "Right", "Return"]
ONE_MINUTE = (
    (5, "05s"), (6, SETUP), (8, "08s-setup"), (8.5, ["Escape"]),
    (12, INHIBIT_3), (14, "14s-inhibit-reset"), (14.5, ["Return"]), (18, "18s"),
    (20, SCOPE_2), (26, "26s-detailed-display"), (27, ["Escape"]),
    # The alert comes at about 31 seconds and puts the bar diagram away.
    (27.5, SPEED_DIFFERENCE_2), (29.5, "29s-speed-difference"), (36, "36s-alert"), (36.5, ["Return"]),
    (38, THERMO_DIFFERENCE_2), (43, "43s-thermosignal-difference"), (43.5, ["Escape"]),
    (45, ENLARGE_2), (47, "47s-enlarged"), (48, ENLARGE_2),
    (50, "maximise"), (58, "58s-maximised"), (60, None))
LARGE_SCREEN = ((1, "maximise"), (6, "1920x1080"), (6, None))


def main():
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda number, _: sys.exit(128 + number))
    os.chdir(ROOT)
    try:
        return run()
    except Failure as failure:
        print(f"{failure}.", file=sys.stderr)
    except KeyboardInterrupt:
        print("Interrupted.", file=sys.stderr)
    return 1


def run():
    with open(ROOT / "build" / "plant.lock", "w", encoding="ascii") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            raise Failure("Another run is at work in this folder") from None
        make_folder()
        with_display = bool(os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY"))
        try:
            with open(PLANT / "evaluator.log", "wb") as report:
                words = [BUILD / "evaluator", "--no-input", "--ports", "ports", SCENARIO]
                with (Helper("evaluator", words, cwd=PLANT, stdout=report, stderr=report) as evaluators,
                      start_controller() as controller):
                    wait_for_ports(evaluators)
                    set_port(port_of(controller))
                    run_at_display() if with_display else run_on_virtual_screen()
        finally:
            print_summary()
    if with_display or all_logged(logged(PLANT / "logs")):
        return 0
    raise Failure("Not every channel has logged")


def make_folder():
    shutil.rmtree(PLANT, ignore_errors=True)
    for folder in ("logs", "pictures", "ports"):
        (PLANT / folder).mkdir(parents=True)
    for file in (ROOT / "tools" / "plant" / "tyxo.ini", ROOT / "data" / "ralarm_1.wav"):
        shutil.copy(file, PLANT)


def wait_for_ports(evaluators):
    ports = [PLANT / "ports" / f"COM{number}" for number in range(1, 5)]
    wait_until(lambda: evaluators.check() or all(port.exists() for port in ports), 10,
               "The simulated Evaluators made no ports")


def start_controller():
    with open(CONTROLLER_REPORT, "wb") as report:
        words = [BUILD / "controller", "--no-input", "--base", register_base()]
        return Helper("controller", words, cwd=PLANT, stdout=report, stderr=report)


def register_base():
    return re.search(r"^REGBase=(\d+)", (PLANT / "tyxo.ini").read_text(), re.MULTILINE)[1]


def port_of(controller):
    def told():
        return re.match(r"listening on port (\d+)\n", CONTROLLER_REPORT.read_text())

    wait_until(lambda: controller.check() or told(), 10, "The simulated plant controller did not listen")
    return int(told()[1])


def set_port(port):
    """The controller's port into the settings of this run."""
    file = PLANT / "tyxo.ini"
    file.write_text(re.sub(r"^IPport=.*", f"IPport={port}", file.read_text(), flags=re.MULTILINE))


def start_program(environment):
    environment = dict(environment)
    if not any(environment.get(name) for name in ("LC_ALL", "LC_CTYPE", "LANG")):
        environment["LC_CTYPE"] = "C.UTF-8"  # names of files beyond ASCII
    with open(PLANT / "debug.log", "ab") as output:
        return Helper("The program", [BUILD / "tyxo"], cwd=PLANT, env=environment,
                      stdout=output, stderr=output)


def run_at_display():
    print("Running until the window is closed ...", flush=True)
    with start_program(os.environ) as program:
        program.process.wait()
    check_ending(program)


def run_on_virtual_screen():
    for (width, height), moments in (((1280, 1024), ONE_MINUTE), ((1920, 1080), LARGE_SCREEN)):
        print(f"Running {moments[-1][0]} s on a virtual screen of {width} x {height} ...", flush=True)
        with Screen(width, height) as screen, start_program(screen.environment) as program:
            wait_until(lambda: program.check() or screen.shows(TITLE), 10, "The program showed no window")
            play(screen, program, moments)
            close(screen, program)


def play(screen, program, moments):
    start = time.monotonic()
    for second, action in moments:
        program.wait(max(0, start + second - time.monotonic()))
        program.check()
        if action == "maximise":
            screen.maximise(TITLE)
        elif isinstance(action, list):
            screen.keys(action)
        elif isinstance(action, tuple):
            screen.click(TITLE, action)
        elif action:
            screen.picture(PLANT / "pictures" / f"{action}.png")


def close(screen, program):
    """As an operator does, who answers the stop lock: no password is set."""
    screen.close(TITLE)
    wait_until(lambda: program.check() or screen.shows(STOP_LOCK), 10, "The program did not ask back")
    time.sleep(0.5)
    screen.picture(PLANT / "pictures" / "stop-lock.png")
    screen.keys(["Tab", "space"])
    if not program.wait(5):
        raise Failure("The program did not end")
    check_ending(program)


def check_ending(program):
    if program.process.returncode != 0:
        raise Failure(f"The program ended in disorder, {program.ending()}; see plant/debug.log")


def print_summary():
    def text(name):
        file = PLANT / name
        return file.read_text(errors="replace") if file.exists() else ""

    print("\n".join(summary(PLANT.relative_to(ROOT), text("evaluator.log"), text("controller.log"))))


if __name__ == "__main__":
    sys.exit(main())
