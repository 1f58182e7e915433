"""A virtual screen with a window manager, and pictures of it."""

import os
import struct
import subprocess
import tempfile
import zlib
from pathlib import Path

from helpers import Helper, wait_until


class Screen:
    """`with Screen(1280, 1024) as screen`: an X server without hardware, and a window manager on it."""

    def __init__(self, width, height):
        self.size = (width, height)
        self.memory = tempfile.TemporaryDirectory(prefix="screen-")
        self.helpers = []
        self.environment = {}

    def __enter__(self):
        try:
            self._start_server()
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for helper in reversed(self.helpers):
            helper.stop()
        self.memory.cleanup()

    def _start_server(self):
        number, theirs = os.pipe()
        width, height = self.size
        words = ["Xvfb", "-displayfd", theirs, "-screen", "0", f"{width}x{height}x24", "-dpi", "96",
                 "-nolisten", "tcp", "-noreset", "-nocursor", "-fbdir", self.memory.name]
        with open(number, encoding="ascii") as answer:
            self.helpers.append(Helper("Xvfb", words, pass_fds=[theirs], stderr=subprocess.DEVNULL))
            os.close(theirs)
            display = answer.readline().strip()  # comes when the server is ready, or ends with it
        if not display:
            self.helpers[-1].wait(1)
            self.helpers[-1].check()
        self.environment = {**os.environ, "DISPLAY": f":{display}"}
        self.environment.pop("WAYLAND_DISPLAY", None)

    def _start_window_manager(self):
        # Its standard settings, whatever the user has. It says itself when it is ready: a window that appears
        # before is never shown.
        settings = {"XDG_CONFIG_HOME": self.memory.name, "XDG_CACHE_HOME": self.memory.name}
        ready = Path(self.memory.name) / "ready"
        manager = Helper("openbox", ["openbox", "--startup", f"touch {ready}"],
                         env={**self.environment, **settings},
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.helpers.append(manager)
        wait_until(lambda: manager.check() or ready.exists(), 10, "No window manager")

    def command(self, *words):
        """A word to the window manager. True when it was understood: the window is there."""
        return subprocess.run(["wmctrl", *words], env=self.environment, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, check=False).returncode == 0

    def shows(self, title):
        """True when there is such a window; it comes to the front."""
        return self.command("-a", title)

    def maximise(self, title):
        return self.command("-r", title, "-b", "add,maximized_vert,maximized_horz")

    def close(self, title):
        """Asks the window to close, as its close button does."""
        return self.command("-c", title)

    def click(self, title, place):
        """One click in a window's client area."""
        self._input("search", "--name", title, "windowactivate", "--sync",
                    "mousemove", "--window", "%1", *map(str, place), "click", "1")

    def keys(self, names):
        """Keys, one after the other, for the window that has the keyboard."""
        self._input("key", "--delay", "100", *names)

    def _input(self, *words):
        subprocess.run(["xdotool", *words], env=self.environment, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=False)

    def picture(self, file):
        """Writes what the screen shows, a PNG file."""
        Path(file).write_bytes(png((Path(self.memory.name) / "Xvfb_screen0").read_bytes()))


def png(dump):
    """The PNG file of an X window dump with 4 bytes a pixel: blue, green, red, nothing."""
    header = struct.unpack(">25I", dump[:100])
    header_size, width, height, line_size, colours = header[0], header[4], header[5], header[12], header[19]
    start = header_size + colours * 12
    rows = bytearray()
    for row in range(height):
        line = dump[start + row * line_size:start + row * line_size + width * 4]
        pixels = bytearray(width * 3)
        for place in range(3):
            pixels[place::3] = line[2 - place::4]
        rows += b"\0" + pixels
    return b"\x89PNG\r\n\x1a\n" + b"".join([
        chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)),
        chunk(b"IDAT", zlib.compress(bytes(rows))),
        chunk(b"IEND", b"")])


def chunk(name, content):
    return struct.pack(">I", len(content)) + name + content + struct.pack(">I", zlib.crc32(name + content))
