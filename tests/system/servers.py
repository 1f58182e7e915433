"""Modbus servers that other people wrote, and the simulated plant controller, as helper processes."""

import os
import pathlib
import random
import re
import signal
import socket
import subprocess
import sys
import threading

from harness import wait_for

HERE = pathlib.Path(__file__).parent
GATEWAY = {"IPAdr": "127.0.0.1", "REGBase": 1000, "IPAutoC": 1, "IPenaTRS": 1, "IPpolar": 1, "IPsysstat": 1,
           "IPRefresh": 2}


def free_port():
    """A port that the settings can hold: they have signed 16-bit numbers. Suites that run side by side look
    for theirs in different places, since it may be taken a while after it was found."""
    first = 20000 + os.getpid() % 100 * 127
    while True:
        port = first + random.randrange(127)
        with socket.socket() as attempt:
            try:
                attempt.bind(("127.0.0.1", port))
            except OSError:
                continue
        return port


class Helper:
    """A process that is told lines and tells lines."""

    def __init__(self, *words):
        self.lines = []
        self.process = subprocess.Popen([str(word) for word in words], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True, bufsize=1)
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.append(line.rstrip("\n"))

    def tell(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def heard(self, pattern, since=0, seconds=10):
        """The first line from the given one on that matches."""
        def search():
            return next(filter(None, (re.fullmatch(pattern, line) for line in self.lines[since:])), None)
        return wait_for(search, seconds, f"a line {pattern!r}")

    def port(self):
        return int(self.heard(r"listening on port (\d+)")[1])

    def stop(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGCONT)
            self.process.kill()
        self.process.wait()
        self.reader.join()
        self.process.stdin.close()
        self.process.stdout.close()


class RegisterServer(Helper):
    """A server whose registers can be looked at and set."""

    def get(self, address, count):
        since = len(self.lines)
        self.tell(f"get {address} {count}")
        return [int(word) for word in self.heard(r"registers( \d+)*", since)[0].split()[1:]]

    def set(self, address, values):
        since = len(self.lines)
        self.tell(f"set {address} " + " ".join(map(str, values)))
        self.heard("done", since)


class PymodbusServer(RegisterServer):
    def __init__(self):
        python = os.environ.get("SYSTEM_PYTHON", sys.executable)
        super().__init__(python, "-B", HERE / "pymodbus_server.py", free_port())


class LibmodbusServer(RegisterServer):
    def __init__(self):
        super().__init__(os.environ["LIBMODBUS_SERVER"], free_port())


class Controller(Helper):
    """The simulated plant controller."""

    def __init__(self, port=0, *commands):
        super().__init__(os.environ["CONTROLLER"], "--base", GATEWAY["REGBase"], "--port", port)
        for command in commands:
            self.order(command)
        self.port()

    def order(self, command):
        since = len(self.lines)
        self.tell(command)
        self.heard("ok " + command, since)

    def frames(self):
        """All frames so far by channel and block code."""
        since = len(self.lines)
        self.order("report")
        counted = {}
        for line in self.lines[since:]:
            match = re.fullmatch(r"channel (\d) frames(( \d+=\d+)*)", line)
            if match:
                for block, count in re.findall(r"(\d+)=(\d+)", match[2]):
                    counted[int(match[1]), int(block)] = int(count)
        return counted

    def total(self):
        return sum(self.frames().values())

    def refused(self):
        since = len(self.lines)
        self.order("report")
        return int(self.heard(r"others .*refused=(\d+)", since)[1])

    def connections(self):
        return sum(bool(re.fullmatch(r"connection \d+ opened", line)) for line in self.lines)
