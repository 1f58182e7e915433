#!/usr/bin/env python3
"""Hours' worth of frames on four lines, as fast as the program takes them: each must become its line in the
log, and the program must need no more at the end than at the beginning. `endurance.py --help` tells the rest.
"""

import argparse
import os
import pathlib
import re
import select
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
os.environ.setdefault("TYXO", str(ROOT / "build" / "release" / "tyxo"))

from full_pace import MOST, PACE  # noqa: E402
from harness import (Display, Plant, curve, frame, measured_values, parameter_frame, status,  # noqa: E402
                     wait_for)
from line_plots import picture  # noqa: E402

PIECE = 4096
CURVES_EVERY = 5  # values
MOST_GROWTH = 5  # MB
KINDS = ("<REC1>", "<REC2>", "<REC3>")


def one_round():
    """Frames whose values count from 1 to MOST, and what lines they make."""
    data = []
    for number in range(1, MOST + 1):
        data.append(frame(measured_values(speed=number)) + frame(status()))
        if number % CURVES_EVERY == 0:
            code = "03" if number % 2 else "04"
            data += map(frame, curve(code, [100 + number % 800] * 256))
    return b"".join(data)


class Flood(threading.Thread):
    """Writes so many rounds as fast as the line is read."""

    def __init__(self, line, data, rounds):
        super().__init__(daemon=True)
        self.line, self.data, self.rounds, self.bytes = line, memoryview(data), rounds, 0

    def run(self):
        for _ in range(self.rounds):
            rest = self.data
            while rest:
                select.select([], [self.line.master], [])
                done = os.write(self.line.master, rest[:PIECE])
                self.bytes += done
                rest = rest[done:]


class Samples:
    """What the process needs, by the hours' worth of frames that it was sent."""

    def __init__(self, plant, floods):
        self.plant, self.floods, self.process = plant, floods, f"/proc/{plant.program.pid}"
        self.begin, self.first = time.monotonic(), plant.processor_seconds()
        self.rows = []

    def take(self):
        hours = sum(flood.bytes for flood in self.floods) / len(self.floods) / PACE / 3600
        memory = pathlib.Path(self.process, "status").read_text()
        resident = int(re.search(r"VmRSS:\s+(\d+)", memory)[1]) / 1024
        self.rows.append((hours, self.plant.processor_seconds() - self.first, resident,
                          len(os.listdir(f"{self.process}/fd")), len(os.listdir(f"{self.process}/task"))))

    def column(self, number):
        return [row[number] for row in self.rows]

    def curves(self):
        return [("Processor time, s", self.column(1)), ("Memory, MB", self.column(2)),
                ("Open files", self.column(3)), ("Threads", self.column(4))]


def lines_of(plant, number):
    """All lines of the channel's logs, in order."""
    for name in plant.log_names(number):
        with open(plant.folder / "logs" / plant.names[number] / name, encoding="cp1252") as log:
            yield from log


def end_of_log(plant, number):
    path = plant.folder / "logs" / plant.names[number] / plant.log_names(number)[-1]
    with open(path, "rb") as log:
        log.seek(max(0, path.stat().st_size - 3 * PIECE))
        return log.read().decode("cp1252")


def missing(plant, number, rounds):
    """How many values are out of their place in the sequence, and how many lines of each kind there are."""
    expected, wrong, found = 0, 0, dict.fromkeys(KINDS, 0)
    for line in lines_of(plant, number):
        kind = line[:6]
        if kind in found:
            found[kind] += 1
        if kind == "<REC1>":
            wrong += int(line.split()[3]) != expected % MOST + 1
            expected += 1
    return wrong + abs(rounds * MOST - expected), found


def follow(samples, floods):
    while any(flood.is_alive() for flood in floods):
        samples.take()
        time.sleep(0.25)
    samples.take()


def run(plant, hours):
    """The samples, and true if every frame has become its line and the program needs no more than before."""
    data = one_round()
    rounds = max(1, round(hours * 3600 * PACE / len(data)))
    for line in plant.lines.values():
        line.send(parameter_frame())
    wait_for(lambda: all(plant.log_names(number) for number in plant.lines), what="the logs")
    floods = [Flood(line, data, rounds) for line in plant.lines.values()]
    samples = Samples(plant, floods)
    for flood in floods:
        flood.start()
    follow(samples, floods)
    seconds = time.monotonic() - samples.begin
    whole = True
    for number in plant.lines:
        last = f" 41 {MOST} 1234 "
        wait_for(lambda: last in end_of_log(plant, number), 20, "the last value")
        time.sleep(0.5)  # the curve behind it
        wrong, found = missing(plant, number, rounds)
        curves = rounds * MOST // CURVES_EVERY
        whole = whole and wrong == 0 and found["<REC2>"] + found["<REC3>"] == curves
        print(f"channel {number}: {len(data) * rounds / 1e6:.0f} MB, {rounds * MOST} values and {curves} "
              f"curves sent, {found['<REC1>']} and {found['<REC2>'] + found['<REC3>']} logged, "
              f"{wrong} missing or wrong")
    first, last = samples.rows[len(samples.rows) // 10], samples.rows[-1]
    print(f"{first[0]:.1f} to {last[0]:.1f} hours' worth in {seconds:.0f} s: processor {last[1]:.0f} s, "
          f"memory {first[2]:.1f} to {last[2]:.1f} MB, open files {first[3]} to {last[3]}, "
          f"threads {first[4]} to {last[4]}")
    steady = (last[2] < first[2] + MOST_GROWTH and
              all(now <= then + 2 for now, then in zip(last[3:], first[3:])))
    return samples, whole and steady


def main():
    parser = argparse.ArgumentParser(description="Hours' worth of frames, as fast as the program takes them.")
    parser.add_argument("--hours", type=float, default=8, help="at a line's full pace; 8 unless said")
    parser.add_argument("--plot", type=pathlib.Path, help="an SVG file to be written")
    arguments = parser.parse_args()
    display = Display()
    plant = Plant(display, channels=4)
    try:
        samples, whole = run(plant.start(), arguments.hours)
        if arguments.plot:
            axis = "Hours' worth of frames on each of four lines"
            arguments.plot.write_text(picture(axis, samples.column(0), samples.curves()), encoding="utf-8")
    finally:
        plant.stop()
        display.stop()
    sys.exit(not whole)


if __name__ == "__main__":
    main()
