"""Child processes that never outlive their starter, however it ends."""

import signal
import subprocess
import time

PATIENCE = 5  # seconds that a process is given after each word to it


class Failure(Exception):
    """What went wrong, in words for whoever started this."""


def wait_until(condition, seconds, what):
    """Waits until the condition holds. Failure: it doesn't within the time."""
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise Failure(f"{what} within {seconds} s")
        time.sleep(0.05)


class Helper:
    """A running program: `with Helper("name", [words]) as helper`. It is ended with its block."""

    def __init__(self, name, words, **options):
        self.name = name
        # A session of its own keeps the terminal's Ctrl-C away: the end comes from here, in order. The kernel
        # ends it too when this process is killed.
        self.process = subprocess.Popen(
            ["setpriv", "--pdeathsig", "TERM", "--", *map(str, words)],
            stdin=subprocess.DEVNULL, start_new_session=True, **options)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def running(self):
        return self.process.poll() is None

    def check(self):
        """Failure: it has ended by itself."""
        if not self.running():
            raise Failure(f"{self.name} ended by itself, {self.ending()}")

    def ending(self):
        code = self.process.returncode
        return f"killed by {signal.Signals(-code).name}" if code < 0 else f"exit code {code}"

    def wait(self, seconds):
        """True when it has ended within the time."""
        try:
            self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            return False
        return True

    def stop(self):
        for word in (self.process.terminate, self.process.kill):
            if not self.running():
                return
            word()
            self.wait(PATIENCE)
