"""What the real program costs, seen from outside: at work on four lines at full pace, at rest, and until its
first picture. `bench/running_program.py --help` tells the arguments. How soon an alarm is seen and heard is
measured by tests/system/alert_test.py.
"""

import argparse
import contextlib
import mmap
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = ROOT / "build" / "release"
os.environ.setdefault("TYXO", str(BUILD / "tyxo"))
sys.path.insert(0, str(ROOT / "tests" / "system"))

from desktops import Screen  # noqa: E402
from harness import WITH_US, Display, Plant, wait_for  # noqa: E402
from wake_ups import wake_ups  # noqa: E402

TITLE = "Tyxo Data Logger"
SCENARIO = ROOT / "tools" / "evaluator" / "scenarios" / "full-pace.txt"
OPT_RES_24H = (1066, 873)  # in the main window at its design size
DARK = 0x800000
SETTLING = 5  # s, before anything is measured
STARTS = 20
STEADY = 1.0  # s: a picture that stays so long is complete


class Measured:
    """What a process, the sum of its threads, needs from now on."""

    def __init__(self, process):
        self.process = process
        self.begin = time.monotonic(), self.processor_seconds(), wake_ups(process)

    def processor_seconds(self):
        fields = pathlib.Path(f"/proc/{self.process}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def megabytes(self, key):
        lines = pathlib.Path(f"/proc/{self.process}/status").read_text().splitlines()
        return next(int(line.split()[1]) for line in lines if line.startswith(key)) / 1024

    def row(self, name):
        begin, processor, woken = self.begin
        seconds = time.monotonic() - begin
        load = 100 * (self.processor_seconds() - processor) / seconds
        woken = wake_ups(self.process) - woken
        print(f"{name:24} {load:10.2f} {self.megabytes('VmRSS'):10.1f} {self.megabytes('RssAnon'):10.1f} "
              f"{woken.total() / seconds:10.1f}", flush=True)
        return {thread: count / seconds for thread, count in woken.most_common()}


def head():
    print(f"{'':24} {'% of core':>10} {'MB':>10} {'own MB':>10} {'wake-ups/s':>10}")


@contextlib.contextmanager
def at_full_pace(display):
    """The program, measuring four lines at full pace."""
    plant = Plant(display, channels=4)
    for line in plant.lines.values():
        line.vanish()  # the simulated Evaluators bring their own
    with lines_at_full_pace(plant.folder, [line.link for line in plant.lines.values()]):
        try:
            yield plant.start()
        finally:
            plant.stop()


@contextlib.contextmanager
def lines_at_full_pace(folder, ports):
    words = [*WITH_US, BUILD / "evaluator", "--no-input", "--full-pace", "--ports", "ports", SCENARIO]
    evaluators = subprocess.Popen(words, cwd=folder, stdout=subprocess.DEVNULL)
    try:
        wait_for(lambda: all(port.exists() for port in ports), what="the ports")
        yield
    finally:
        evaluators.terminate()
        evaluators.wait()


def floor(_display, name, seconds, _prepare):
    """What reads the same lines and writes as many lines of a log costs if it does nothing else."""
    with tempfile.TemporaryDirectory() as folder:
        ports = [pathlib.Path(folder, "ports", f"COM{number}") for number in range(1, 5)]
        ports[0].parent.mkdir()
        with lines_at_full_pace(folder, ports):
            words = [*WITH_US, BUILD / "lines_floor", "floor.log", *ports]
            reader = subprocess.Popen(words, cwd=folder)
            try:
                time.sleep(SETTLING)
                measured = Measured(reader.pid)
                time.sleep(seconds)
                measured.row(name)
                assert pathlib.Path(folder, "floor.log").stat().st_size > 0
            finally:
                reader.kill()
                reader.wait()


def records(plant):
    return {number: len(plant.records(number)) for number in plant.lines}


def at_work(display, name, seconds, prepare):
    with at_full_pace(display) as plant:
        prepare(display, display.window(TITLE))
        time.sleep(SETTLING)
        before = records(plant)
        measured = Measured(plant.program.pid)
        time.sleep(seconds)
        measured.row(name)
        after = records(plant)
        assert all(after[number] > before[number] for number in after), "a channel wrote no records"


def choose_24_hours(display, window):
    display.tool("xdotool", "mousemove", "--window", window, *map(str, OPT_RES_24H), "click", "1")
    place = dict(word.split(":") for word in display.tool("xdotool", "getmouselocation")[:2])
    screen = Screen(display.name)
    wait_for(lambda: screen.pixel(int(place["x"]), int(place["y"])) < DARK, what="the mark in the circle")
    screen.close()


def minimise(display, window):
    display.tool("xdotool", "windowminimize", "--sync", window)
    assert not display.windows(TITLE), "the window is still seen"


def at_rest(plant, name, seconds):
    time.sleep(SETTLING)
    measured = Measured(plant.program.pid)
    time.sleep(seconds)
    for (thread, _), rate in measured.row(name).items():
        print(f"    thread {thread:15} {rate:45.1f}")


def idle(display, name, seconds, _prepare):
    plant = Plant(display, channels=4, autostart=0)
    try:
        at_rest(plant.start(), name, seconds)
    finally:
        plant.stop()


def stopped(display, name, seconds, _prepare):
    with at_full_pace(display) as plant:
        time.sleep(SETTLING)
        display.press(display.window(TITLE), "alt+f", "Right", "Right", "Return")
        display.press(display.window("stop data logging"), "Tab", "space")
        wait_for(lambda: plant.text("events/TY_all_events.txt").count("Measure stopped") == len(plant.lines),
                 what="the stop")
        at_rest(plant, name, seconds)


def first_pictures(display, screen):
    """Times from the start of the process to the first complete picture: one that the screen shows from then
    on while nothing measures."""
    times, processor = [], []
    for _ in range(STARTS):
        plant = Plant(display, channels=4, autostart=0)
        try:
            begin = changed = time.monotonic()
            before = last = zlib.crc32(screen)
            plant.start(ready=None)
            while last == before or time.monotonic() < changed + STEADY:
                picture = zlib.crc32(screen)
                if picture != last:
                    last, changed = picture, time.monotonic()
                time.sleep(0.002)
            assert display.windows(TITLE)
            times.append(1000 * (changed - begin))
            processor.append(1000 * plant.processor_seconds())
        finally:
            plant.stop()
        wait_for(lambda: zlib.crc32(screen) == before, what="the empty screen")
    for name, values in (("first picture", times), ("its processor time", processor)):
        print(f"{name:24} median {statistics.median(values):4.0f} ms, least {min(values):4.0f} ms, "
              f"worst {max(values):4.0f} ms of {STARTS}")


def start(_display, _name, _seconds, _prepare):
    # The server's picture is read where it lies, which takes the server no time.
    with tempfile.TemporaryDirectory(dir="/dev/shm") as folder:
        display = Display(window_manager=True, options=["-fbdir", folder])
        try:
            with (open(f"{folder}/Xvfb_screen0", "rb") as file,
                  mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ) as screen):
                first_pictures(display, screen)
        finally:
            display.stop()


ROWS = {
    "2min": (at_work, "full pace, 2 minutes", lambda _display, _window: None),
    "24h": (at_work, "full pace, 24 hours", choose_24_hours),
    "minimised": (at_work, "full pace, minimised", minimise),
    "floor": (floor, "reading and logging alone", None),
    "idle": (idle, "idle", None),
    "stopped": (stopped, "idle after measuring", None),
    "start": (start, "start", None),
}


def main():
    parser = argparse.ArgumentParser(description="Measures the program of the preset release at work.")
    parser.add_argument("rows", nargs="*", metavar="row", help=", ".join(ROWS) + "; all unless said")
    parser.add_argument("--seconds", type=float, default=120, help="for each row; 120 unless said")
    arguments = parser.parse_args()
    for row in arguments.rows:
        if row not in ROWS:
            parser.error(f"no row {row!r}")
    display = Display(window_manager=True)
    try:
        head()
        for row in arguments.rows or ROWS:
            measure, name, prepare = ROWS[row]
            measure(display, name, arguments.seconds, prepare)
    finally:
        display.stop()


if __name__ == "__main__":
    main()
