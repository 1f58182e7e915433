#!/usr/bin/env python3
"""Changes the core's code in thousands of small ways, and looks which changes no core test notices.

    tests/mutation/run.py [--sample N] [--seed S] [--tables PART] [--longest MS] [--again] [FILE]...

All mutants are compiled into one binary; each one is a run of the tests that reach it. Files and folders are
those of the core, all of them unless named. Survivors stand in build/mutation/survivors.txt. Exit code 1 if
fewer than 90 % are killed.
"""

import argparse
import collections
import concurrent.futures
import os
import random
import subprocess
import sys
import time

from building import BUILD, ROOT, Program

BINARY = BUILD / "core_tests"
SURVIVORS = BUILD / "survivors.txt"
WANTED = 0.9
LONG = 20  # ms of a test
FIRST_TESTS = 30  # run first: those that reach least beside the mutant


def run_binary(arguments, **variables):
    """Runs the tests; true if all of them pass."""
    try:
        return subprocess.run([BINARY, *arguments], cwd=ROOT, env={**os.environ, **variables}, timeout=120,
                              check=False, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0
    except subprocess.TimeoutExpired:
        return False


class Record:
    """Which tests reach which mutants, and how long they take."""

    def __init__(self, mutants, sources):
        run_binary(["--gtest_list_tests"], TYXO_MUTANT_LIST=str(BUILD / "compiled.txt"))
        self.compiled = {int(line) for line in (BUILD / "compiled.txt").read_text().split()}
        run_binary([], TYXO_MUTANT_RECORD=str(BUILD / "reached.txt"))
        self.tests, self.milliseconds, self.breadth = collections.defaultdict(set), {}, {}
        by_file, at_start, failed = collections.defaultdict(set), [], []
        for line in (BUILD / "reached.txt").read_text().splitlines():
            name, milliseconds, *reached = line.split()
            if name == "start":
                at_start = [int(number) for number in reached]
                continue
            if name.startswith("failed:"):
                failed.append(name)
                continue
            self.milliseconds[name], self.breadth[name] = int(milliseconds), len(reached)
            for number in map(int, reached):
                self.tests[number].add(name)
                by_file[mutants[number].file].add(name)
        if failed:
            print("Tests that fail without a mutant, and are not used:", *failed)
        # What is made before the tests may concern each test that enters the file, or one that includes it.
        for number in at_start:
            header = mutants[number].file.removeprefix("src/")
            for name, source in sources.items():
                if name == mutants[number].file or f'#include "{header}"' in source.text:
                    self.tests[number] |= by_file[name]


def survives(record, mutant, longest):
    """Runs the tests that reach the mutant: first the narrow ones, last those that take long."""
    tests = sorted((name for name in record.tests[mutant.number] if record.milliseconds[name] <= longest),
                   key=lambda name: (record.breadth[name], name))
    quick = [name for name in tests if record.milliseconds[name] <= LONG]
    slow = [name for name in tests if record.milliseconds[name] > LONG]
    for number, part in enumerate((quick[:FIRST_TESTS], quick[FIRST_TESTS:], slow)):
        if not part:
            continue
        flags = BUILD / f"flags-{mutant.number}-{number}"
        flags.write_text("--gtest_filter=" + ":".join(part))
        limit = 300 + 4 * sum(record.milliseconds[name] for name in part)
        passed = run_binary([f"--gtest_flagfile={flags}"], TYXO_MUTANT=str(mutant.number),
                            TYXO_MUTANT_MS=str(limit))
        flags.unlink()
        if not passed:
            return False
    return True


def chosen(mutants, options, generator):
    """The mutants of this run."""
    files = [os.path.relpath(os.path.abspath(file), ROOT) for file in options.file]
    unknown = [file for file in files if not any(mutant.file.startswith(file) for mutant in mutants)]
    if unknown:
        raise SystemExit(f"no mutants in {', '.join(unknown)}")
    if options.again:
        known = set(SURVIVORS.read_text().splitlines())
        mutants = [mutant for mutant in mutants if f"{mutant}" in known]
    result = [mutant for file in files or [""] for mutant in mutants if mutant.file.startswith(file)]
    result = [mutant for mutant in result if not mutant.table or generator.random() < options.tables]
    if options.sample is not None:
        result = generator.sample(result, min(options.sample, len(result)))
    return result


def print_table(rows):
    """One line per folder, and one for all."""
    print(f"{'':12}{'mutants':>9}{'killed':>9}{'survived':>9}{'not reached':>13}{'killed, %':>11}")
    for name, count in [*sorted(rows.items()), ("all", sum(rows.values(), collections.Counter()))]:
        total = sum(count.values())
        print(f"{name:12}{total:9}{count['killed']:9}{count['survived']:9}{count['not reached']:13}"
              f"{100 * count['killed'] / total:11.1f}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sample", type=int, metavar="N", help="this many mutants only")
    parser.add_argument("--seed", type=int, default=random.randrange(10 ** 6))
    parser.add_argument("--tables", type=float, default=1, metavar="PART",
                        help="part of the tables' constants, 0 to 1")
    parser.add_argument("--longest", type=int, default=300, metavar="MS",
                        help="tests that take longer are not used")
    parser.add_argument("--again", action="store_true", help="only those that survived in the last run")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("file", nargs="*")
    options = parser.parse_args()
    print(f"seed {options.seed}", flush=True)

    began = time.monotonic()
    program = Program(options.jobs)
    program.build()
    record = Record(program.mutants, program.sources)
    print(f"{len(program.mutants)} mutants, {len(record.compiled)} of them compiled, "
          f"{len(record.milliseconds)} tests, after {time.monotonic() - began:.0f} s", flush=True)

    candidates = [mutant for mutant in program.mutants if mutant.number in record.compiled]
    mutants = chosen(candidates, options, random.Random(options.seed))
    rows, survivors = collections.defaultdict(collections.Counter), []

    def judge(mutant):
        if not record.tests[mutant.number]:
            return "not reached"
        return "survived" if survives(record, mutant, options.longest) else "killed"

    with (concurrent.futures.ThreadPoolExecutor(options.jobs) as pool,
          open(SURVIVORS, "w", encoding="utf-8") as told):
        for number, (mutant, verdict) in enumerate(zip(mutants, pool.map(judge, mutants)), 1):
            rows[mutant.file.split("/")[1]][verdict] += 1
            if verdict != "killed":
                survivors.append(mutant)
                print(mutant, file=told, flush=True)
            if number % 500 == 0:
                print(f"  {number} of {len(mutants)}, {len(survivors)} left, "
                      f"{time.monotonic() - began:.0f} s", flush=True)
    print_table(rows)
    share = sum(row["killed"] for row in rows.values()) / max(1, len(mutants))
    print(f"{100 * share:.1f} % killed, seed {options.seed}, {time.monotonic() - began:.0f} s; "
          f"build/mutation/survivors.txt has the others")
    return 0 if share >= WANTED else 1


if __name__ == "__main__":
    sys.exit(main())
