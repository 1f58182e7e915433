"""How much of the core its tests run: lines and branches of each file, and what none of them runs.

    tests/coverage.py [--least LINES BRANCHES]

Builds the preset `coverage` and runs the core's tests in it. Exit code 1 when less is covered than the least,
in per cent. A branch is one outcome of a condition that somebody wrote; what exceptions do is no branch.
"""

import argparse
import json
import os
import re
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
BUILD = ROOT / "build" / "coverage"
RAW, PROFILE = BUILD / "core.profraw", BUILD / "core.profdata"
sys.path.insert(0, str(ROOT / "tests" / "hygiene"))

from includes import DESKTOP  # noqa: E402


class File:
    """What ran of a file: by line how often, by place and outcome of a condition how often."""

    def __init__(self):
        self.lines = defaultdict(int)
        self.branches = defaultdict(int)

    def missed_lines(self):
        return [line for line, count in sorted(self.lines.items()) if count == 0]

    def missed_branches(self):
        """The lines that have a branch which no test takes, though they run."""
        missed = {line for (line, *_), count in self.branches.items() if count == 0}
        return sorted(line for line in missed if self.lines[line] > 0)

    def covered(self):
        """Lines and branches: how many ran, and how many there are."""
        lines, branches = self.lines.values(), self.branches.values()
        return sum(map(bool, lines)), len(lines), sum(map(bool, branches)), len(branches)


def run(*words, **options):
    return subprocess.run(words, check=True, text=True, **options)


def run_tests():
    """Writes down in the build folder what the tests run."""
    run(ROOT / "packaging" / "build-preset", "coverage", "core_tests")
    run(BUILD / "core_tests", "--gtest_brief=1", env={**os.environ, "LLVM_PROFILE_FILE": str(RAW)})
    run("llvm-profdata", "merge", "-o", PROFILE, RAW)


def exported(form):
    return run("llvm-cov", "export", "-format", form, "-instr-profile", PROFILE, BUILD / "core_tests",
               stdout=subprocess.PIPE).stdout


def core_path(path):
    """The path from the root of the repository, of a file of the core."""
    path = os.path.relpath(path, ROOT)
    return path if path.startswith("src/") and not DESKTOP.fullmatch(path) else None


def core_files():
    """The files of the core. Of a template that is used for many types, all uses count as one."""
    files = defaultdict(File)
    path = None
    for line in exported("lcov").splitlines():
        kind, _, rest = line.partition(":")
        if kind == "SF":
            path = core_path(rest)
        elif kind == "DA" and path:
            number, count = rest.split(",")[:2]
            files[path].lines[int(number)] += int(count)
    for entry in json.loads(exported("text"))["data"][0]["files"]:
        path = core_path(entry["filename"])
        for *place, yes, no, _, _, _ in entry["branches"] if path else []:
            files[path].branches[*place, True] += yes
            files[path].branches[*place, False] += no
    return dict(sorted(files.items()))


def per_cent(part, whole):
    return 100 * part / whole if whole else 100.0


def row(name, covered):
    lines, all_lines, branches, all_branches = covered
    return (f"{name:44} {lines:5} of {all_lines:5} {per_cent(lines, all_lines):6.1f} %"
            f" {branches:6} of {all_branches:5} {per_cent(branches, all_branches):6.1f} %")


def show(files):
    print(f"{'':44} {'lines':>22} {'branches':>23}")
    for path, file in files.items():
        print(row(path, file.covered()))
    for path, file in files.items():
        source = (ROOT / path).read_text().splitlines()
        for number in file.missed_lines():
            print(f"{path}:{number}: not run: {source[number - 1].strip()}")
        for number in file.missed_branches():
            print(f"{path}:{number}: one way only: {source[number - 1].strip()}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--least", nargs=2, type=float, default=(97, 90), metavar=("LINES", "BRANCHES"))
    arguments = parser.parse_args()
    run_tests()
    files = core_files()
    show(files)
    total = [sum(numbers) for numbers in zip(*(file.covered() for file in files.values()))]
    print(row("The core", total))
    lines, branches = per_cent(*total[:2]), per_cent(*total[2:])
    return 1 if lines < arguments.least[0] or branches < arguments.least[1] else 0


if __name__ == "__main__":
    sys.exit(main())
