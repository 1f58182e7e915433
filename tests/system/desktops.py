"""The desktops that the program meets, each on a virtual display of its own, driven through the window
system: keys and the mouse go to whoever the desktop gives them to."""

import ctypes
import pathlib
import statistics
import subprocess
import time

from harness import Display, SessionBus, undone_by, wait_for

MANAGERS = {
    "openbox": ["openbox"],
    "icewm": ["icewm"],
    "xfwm4": ["xfwm4"],
}
ALL_PLANES = ctypes.c_ulong(-1)
Z_PIXMAP = 2
POSITION_OF_DATA = 16  # in an XImage: behind four integers


class Desktop(Display):
    """An X server with one of the window managers, or a Wayland compositor in a window of an X server."""

    SIZE = "1600x1200"

    def __init__(self, name, size=SIZE, scale=1, options=()):
        super().__init__(size, options=options)
        self.size = [int(side) // scale for side in size.split("x")]
        self.scale = scale  # of a Wayland compositor; programs for X are told theirs by their environment
        self.environment |= {"HOME": self.runtime, "PULSE_SERVER": "unix:no-sound-server"}
        self.wayland = name == "weston"
        # This one keeps its settings on a bus, which is not the program's.
        self.bus = SessionBus(self.environment) if name == "xfwm4" else None
        with undone_by(self.stop):
            self.start_manager(self.compositor() if self.wayland else MANAGERS[name])

    def start_manager(self, command):
        # With an accessibility bus of its own, a screen reader on this display would listen to that one.
        bus = {"DBUS_SESSION_BUS_ADDRESS": self.bus.address, "NO_AT_BRIDGE": "1"} if self.bus else {}
        self.manager = subprocess.Popen(command, env=self.environment | bus, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        if self.wayland:
            wait_for((pathlib.Path(self.runtime) / "wayland").exists, what="the compositor")
            window = wait_for(lambda: self.tool("xdotool", "search", "--class", "weston"),
                              what="the compositor's window")[0]
            self.tool("xdotool", "windowfocus", "--sync", window)
            for step in ("-9999", "50", "-50"):  # the compositor has to learn where its pointer is
                self.tool("xdotool", "mousemove_relative", "--", step, step)
                time.sleep(0.1)
            self.environment |= {"QT_QPA_PLATFORM": "wayland", "WAYLAND_DISPLAY": "wayland"}
        else:
            wait_for(lambda: self.tool("wmctrl", "-m"), what="the window manager")

    def stop(self):
        super().stop()
        if self.bus:
            self.bus.stop()

    def compositor(self):
        width, height = self.size
        settings = pathlib.Path(self.runtime) / "weston.ini"
        settings.write_text("[shell]\npanel-position=none\n[input-method]\npath=\n")  # no keys on the screen
        return ["weston", "--backend=x11-backend.so", "--use-pixman", f"--config={settings}", "--idle-time=0",
                "--socket=wayland", f"--width={width}", f"--height={height}", f"--scale={self.scale}"]

    def keys(self, *keys, delay=60):
        self.tool("xdotool", "key", "--delay", str(delay), *keys)

    def click(self, x, y):
        """By steps from the upper left corner: the compositor sees no other movement."""
        self.tool("xdotool", "mousemove_relative", "--", "-9999", "-9999")
        self.tool("xdotool", "mousemove_relative", str(x), str(y), "click", "1")


class Screen:
    """Reads pixels of an X screen."""

    def __init__(self, name):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XGetImage.restype = ctypes.c_void_p
        self.x11.XGetPixel.restype = ctypes.c_ulong
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(name.encode()))
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))

    def image(self, x, y, width, height):
        return ctypes.c_void_p(self.x11.XGetImage(self.display, self.root, x, y, width, height, ALL_PLANES,
                                                  Z_PIXMAP))

    def pixel(self, x, y):
        image = self.image(x, y, 1, 1)
        colour = self.x11.XGetPixel(image, 0, 0) & 0xFFFFFF
        self.x11.XDestroyImage(image)
        return colour

    def extent(self, colour, width, height):
        """Left, top, right and bottom of what has a colour in the screen's upper left, if it is much."""
        image = self.image(0, 0, width, height)
        data = ctypes.cast(image.value + POSITION_OF_DATA, ctypes.POINTER(ctypes.c_void_p)).contents.value
        pixels = memoryview(ctypes.string_at(data, 4 * width * height)).cast("I")
        self.x11.XDestroyImage(image)
        rows = {}
        for y in range(0, height, 4):
            row = [x for x in range(0, width, 4) if pixels[y * width + x] & 0xFFFFFF == colour]
            if len(row) > 60:
                rows[y] = row
        if len(rows) < 20:
            return None
        # Beside it there may be little things of the same colour, in some rows.
        return (statistics.mode(map(min, rows.values())), min(rows),
                statistics.mode(map(max, rows.values())), max(rows))

    def close(self):
        self.x11.XCloseDisplay(self.display)
