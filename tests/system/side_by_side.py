"""The cases of a suite at the same time."""

import concurrent.futures
import faulthandler
import subprocess
import sys
import unittest

from harness import WITH_US


def run_side_by_side(at_a_time, longest=(), **options):
    """Runs the cases that are named, or all of the suite: so many at a time, each in a process of its own and
    with a display of its own. For cases that mostly wait; those with one of the longest's words begin."""
    words = sys.argv[1:]
    if any(not word.startswith("-") for word in words):
        unittest.main(**options)
    faulthandler.cancel_dump_traceback_later()  # each case tells where it hangs

    def run(name):
        return subprocess.run([*WITH_US, sys.executable, "-B", sys.argv[0], *words, name],
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)

    names = [test.id().removeprefix("__main__.")
             for tests in unittest.defaultTestLoader.loadTestsFromName("__main__") for test in tests]
    names.sort(key=lambda name: not any(word in name for word in longest))
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(at_a_time) as pool:
        for running in concurrent.futures.as_completed([pool.submit(run, name) for name in names]):
            done = running.result()
            failed += done.returncode != 0
            print(done.stdout.decode(errors="replace"), flush=True)
    print(f"{len(names)} cases, {failed} failed")
    sys.exit(failed != 0 or not names)
