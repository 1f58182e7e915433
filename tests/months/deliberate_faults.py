#!/usr/bin/env python3
"""Puts faults into copies of the sources, one by one, and counts the seeds until the simulation finds each.

tests/months/deliberate_faults.py [--seeds N] [--days D] [--from SEED] [--jobs J] [WORDS]

The faults stand in deliberate_faults.txt beside this file. With words, only those whose name holds them. Ends
with 1 if one of them was not found, or cannot be put in.
"""

import argparse
import concurrent.futures
import dataclasses
import os
import pathlib
import queue
import re
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
COPIES = ROOT / "build" / "faults"
COPIED = ("CMakeLists.txt", "CMakePresets.json", "packaging", "src", "tests", "tools")


@dataclasses.dataclass
class Fault:
    name: str
    file: str
    days: int  # 0: as many as the others
    right: str
    wrong: str


def faults():
    text = (HERE / "deliberate_faults.txt").read_text(encoding="utf-8")
    for block in re.split(r"^=== ", text, flags=re.MULTILINE)[1:]:
        title, _, body = block.partition("\n")
        name, file, *days = title.split(" | ")
        right, _, wrong = body.rstrip("\n").partition("\n---")
        yield Fault(name, file, int(days[0]) if days else 0, right, wrong.removeprefix("\n"))


class Copy:
    """The sources once more, each compiled for itself, so that a fault costs one of them."""

    def __init__(self, number):
        self.folder = COPIES / str(number)
        self.build = self.folder / "build"
        self.folder.mkdir(parents=True, exist_ok=True)
        for name in COPIED:
            for source in [ROOT / name, *(ROOT / name).rglob("*")]:
                if source.is_file():
                    self.copy(source)
        self.run(["cmake", "-S", str(self.folder), "-B", str(self.build), "-G", "Ninja",
                  "-DTYXO_BENCHMARKS=OFF", "-DTYXO_WARNINGS_AS_ERRORS=OFF", "-DCMAKE_CXX_FLAGS=-O1 -w"])
        self.make()

    def copy(self, source):
        """Only what differs, so that what is compiled again is what was changed, and all of that."""
        to = self.folder / source.relative_to(ROOT)
        content = source.read_bytes().replace(b"CMAKE_UNITY_BUILD ON", b"CMAKE_UNITY_BUILD OFF")
        if to.exists() and to.read_bytes() == content:
            return
        to.parent.mkdir(parents=True, exist_ok=True)
        to.write_bytes(content)
        shutil.copymode(source, to)

    def run(self, words):
        done = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if done.returncode != 0:
            raise RuntimeError(done.stdout[-2000:])

    def make(self):
        self.run(["cmake", "--build", str(self.build), "--target", "simulate", "--", "-j2"])

    def seeds_until_found(self, fault, wanted):
        """How many seeds it took, 0 if it was not found."""
        path = self.folder / "src" / fault.file
        right = path.read_text(encoding="utf-8")
        if right.count(fault.right) != 1:
            raise RuntimeError(f"{fault.file} holds the right words {right.count(fault.right)} times")
        try:
            path.write_text(right.replace(fault.right, fault.wrong), encoding="utf-8")
            self.make()
            for count in range(1, wanted.seeds + 1):
                seed = getattr(wanted, "from") + count - 1
                days = fault.days or wanted.days
                words = [str(self.build / "simulate"), "--replay", str(seed), "--days", str(days)]
                done = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False,
                                      timeout=600)
                if done.returncode != 0:
                    said = done.stdout.decode("latin-1").splitlines()
                    complaints = [line for line in said if line.startswith("! ")]
                    return count, complaints[0][2:] if complaints else f"ended with {done.returncode}"
            return 0, ""
        finally:
            path.write_text(right, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seeds", type=int, default=20, help="for a fault, at most (20)")
    parser.add_argument("--days", type=int, default=2, help="of each seed (2)")
    parser.add_argument("--from", type=int, default=1, help="the first seed (1)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("words", nargs="*")
    wanted = parser.parse_args()
    chosen = [fault for fault in faults() if all(word in fault.name for word in wanted.words)]

    free = queue.Queue()
    with concurrent.futures.ThreadPoolExecutor(wanted.jobs) as pool:
        for copy in pool.map(Copy, range(min(wanted.jobs, len(chosen)))):
            free.put(copy)

        def look(fault):
            copy = free.get()
            try:
                return copy.seeds_until_found(fault, wanted)
            except (RuntimeError, subprocess.TimeoutExpired) as why:
                return 0, str(why)
            finally:
                free.put(copy)

        found = 0
        for fault, (seeds, what) in zip(chosen, pool.map(look, chosen)):
            found += seeds > 0
            print(f"{seeds or 'NOT FOUND':>9}  {fault.name}  ({fault.file})\n           {what}", flush=True)
    print(f"{found} of {len(chosen)} found")
    return 0 if found == len(chosen) else 1


if __name__ == "__main__":
    sys.exit(main())
