"""What the system tests share: a virtual display, pseudo-terminals as serial lines, and the real program."""

import contextlib
import faulthandler
import itertools
import os
import pathlib
import pty
import re
import select
import shutil
import signal
import subprocess
import tempfile
import threading
import time
import tty
import unittest

PROGRAM = os.environ["TYXO"]
DEAF = 0.8  # s: an alert that has just got the keyboard takes no key
WITH_US = ["setpriv", "--pdeathsig", "TERM"]  # what is started so ends with the suite, however that ends

# A suite that hangs tells where, before it is ended from outside.
if "SUITE_SECONDS" in os.environ:
    faulthandler.dump_traceback_later(float(os.environ["SUITE_SECONDS"]), exit=True)


def frame(body):
    """The body with its check digits and CR LF."""
    return f"{body}{-sum(body[1:].encode()) & 0xFF:02x}\r\n".encode()


def masked(text):
    """The text with every date and time replaced."""
    text = re.sub(r"\b\d\d:\d\d:\d\d\b", "hh:mm:ss", text)
    return re.sub(r"\b\d\d-\d\d-\d{4}\b", "mm-dd-yyyy", text)


def wait_for(condition, seconds=10.0, what="the condition"):
    """Polls until the condition holds; its last value is returned."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s in vain for {what}")
        time.sleep(0.02)


@contextlib.contextmanager
def undone_by(undo):
    """Undoes what was begun if the rest of it fails."""
    try:
        yield
    except BaseException:
        undo()
        raise


class SessionBus:
    """A message bus of its own; who is started by it ends with it."""

    def __init__(self, environment):
        self.process = subprocess.Popen([*WITH_US, "dbus-daemon", "--session", "--nofork", "--print-address"],
                                        env=environment, stdout=subprocess.PIPE, text=True,
                                        stderr=subprocess.DEVNULL)
        self.address = self.process.stdout.readline().strip()

    def stop(self):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


class Display:
    """An X server without a screen; `options` are words to it."""

    def __init__(self, size="1280x1024", window_manager=False, options=()):
        reading, writing = os.pipe()
        self.process = subprocess.Popen(
            [*WITH_US, "Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size}x24", "-nolisten", "tcp",
             "-noreset",  # without it the server is away for a moment when its last client goes
             *options],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.name = f":{number}"
        self.runtime = tempfile.mkdtemp(prefix="tyxo_runtime_")
        self.environment = dict(os.environ, DISPLAY=self.name, QT_QPA_PLATFORM="xcb",
                                XDG_RUNTIME_DIR=self.runtime)
        self.manager = None
        if window_manager:
            # A window that appears before it is ready is never shown.
            ready = pathlib.Path(self.runtime) / "ready"
            self.manager = subprocess.Popen(["openbox", "--startup", f"touch {ready}"], env=self.environment,
                                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            with undone_by(self.stop):
                wait_for(ready.exists, what="the window manager")

    def stop(self):
        for process in filter(None, [self.manager, self.process]):
            process.terminate()
            process.wait()
        shutil.rmtree(self.runtime)

    def tool(self, *command):
        done = subprocess.run(command, env=self.environment, capture_output=True, text=True)
        return done.stdout.split()

    def windows(self, title):
        return self.tool("xdotool", "search", "--onlyvisible", "--name", title)

    def window(self, title, seconds=10.0):
        return wait_for(lambda: self.windows(title), seconds, f"a window {title!r}")[0]

    def press(self, window, *keys):
        self.tool("xdotool", "windowfocus", "--sync", window)
        self.tool("xdotool", "key", "--delay", "60", *keys)

    def place(self, window):
        """Left, top, width and height."""
        words = self.tool("xdotool", "getwindowgeometry", "--shell", window)
        values = dict(word.split("=") for word in words)
        return [int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")]

    def point_at_button(self, alert):
        """The mouse goes to the button of the alert."""
        _, _, width, height = self.place(alert)
        self.tool("xdotool", "mousemove", "--window", alert, str(width // 2), str(height - 50))

    def confirm_alarm(self):
        """By the keyboard, as soon as the alert listens to it."""
        alert = self.window("^Mainalarm$")
        self.tool("xdotool", "windowfocus", "--sync", alert)
        time.sleep(DEAF)
        self.press(alert, "Return")

    def ask_to_close(self, window):
        """By the window manager, as a click on the window's cross does."""
        self.tool("wmctrl", "-i", "-c", window)


class Line:
    """A pseudo-terminal that stands for a serial line."""

    def __init__(self, folder, number):
        self.link = folder / "ports" / f"COM{number}"
        self.link.parent.mkdir(exist_ok=True)
        self.come_back()

    def come_back(self):
        """A new device under the same name, like an adapter that is plugged in again."""
        self.master, self.slave = pty.openpty()
        tty.setraw(self.slave)
        self.node = os.ttyname(self.slave)
        self.lead_to(self)

    def lead_to(self, line):
        """This line's name leads to the device of another line."""
        self.link.unlink(missing_ok=True)
        self.link.symlink_to(line.node)

    def holder(self):
        """The process that has the device open, by its lock file; killed programs leave theirs."""
        lock = pathlib.Path("/var/lock/LCK.." + self.node.removeprefix("/dev/").replace("/", "_"))
        return int(lock.read_text().split()[0]) if lock.exists() else None

    def send(self, *bodies):
        for body in bodies:
            self.raw(frame(body))

    def raw(self, data):
        while data:
            data = data[os.write(self.master, data):]
            time.sleep(0.002)

    def received(self):
        """What the program has sent so far and nobody has read."""
        data = b""
        while select.select([self.master], [], [], 0)[0]:
            data += os.read(self.master, 4096)
        return data

    def vanish(self):
        self.link.unlink(missing_ok=True)  # first: the device's number may be somebody else's at once
        for end in (self.master, self.slave):
            if end >= 0:
                os.close(end)
        self.master = self.slave = -1


class Plant:
    """A working directory with settings and lines, and the program that runs in it."""

    def __init__(self, display, channels=1, **settings):
        self.display = display
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tyxo_plant_"))
        (self.folder / "logs").mkdir()
        (self.folder / "events").mkdir()
        values = {"upd_periode": 100, "max_sensors": channels, "scale_polar_a": ".1", "scale_polar_t": ".2",
                  "adc_offset": 479, "zyl_speed_range": 1, "xy_tmv": 1, "xy_theff": 1, "xy_theff_AC": 1,
                  "xy_tha": 1, "autostart": 1, "eventfile_ena": 1, "evtpath": ".\\events\\"}
        for number in range(1, channels + 1):
            values |= {f"comport {number}": number, f"location {number}": f"Engine {number}",
                       f"logpath {number}": ".\\logs\\"}
        values |= {key.replace("__", " "): value for key, value in settings.items()}
        lines = [f"{key}={value}" for key, value in values.items() if value is not None]
        (self.folder / "tyxo.ini").write_bytes("\r\n".join(["[tyxo]", *lines, ""]).encode("cp1252"))
        self.names = {number: f"Engine {number}" for number in range(1, channels + 1)}
        self.lines = {number: Line(self.folder, number) for number in range(1, channels + 1)}
        self.executable = PROGRAM
        self.program = None

    def start(self, ready="Tyxo Data Logger", **options):
        with open(self.folder / "debug.log", "wb") as debug:
            options = {"stderr": debug} | options
            self.program = subprocess.Popen([self.executable], cwd=self.folder,
                                            env=self.display.environment, **options)
        if ready:  # a window of this program: one that was killed just before may still be on the screen
            mine = ["--all", "--onlyvisible", "--pid", str(self.program.pid), "--name", ready]
            wait_for(lambda: self.display.tool("xdotool", "search", *mine), what=f"a window {ready!r}")
        return self

    def stop(self):
        if self.program and self.program.poll() is None:
            self.program.kill()
        if self.program:
            self.program.wait()
        for line in self.lines.values():
            line.vanish()
        shutil.rmtree(self.folder, ignore_errors=True)

    def kill(self):
        self.program.send_signal(signal.SIGKILL)
        self.program.wait()

    def text(self, name):
        path = self.folder / name
        return path.read_bytes().decode("cp1252") if path.exists() else ""

    def debug(self):
        return (self.folder / "debug.log").read_text("utf-8").splitlines()

    def events(self):
        return masked(self.text("events/TY_all_events.txt")).split("\r\n")

    def log_names(self, number=1):
        return sorted(path.name for path in (self.folder / "logs" / self.names[number]).glob("*.xlg"))

    def log(self, number=1):
        names = self.log_names(number)
        return self.text(f"logs/{self.names[number]}/{names[-1]}") if names else ""

    def records(self, number=1):
        return [line for line in self.log(number).split("\r\n") if line.startswith("<REC1>")]

    def processor_seconds(self):
        fields = pathlib.Path(f"/proc/{self.program.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


class PlantTest(unittest.TestCase):
    """Tests on one display for all of them, each with plants of its own."""

    @classmethod
    def setUpClass(cls):
        cls.display = Display()

    @classmethod
    def tearDownClass(cls):
        cls.display.stop()

    def plant(self, **settings):
        plant = Plant(self.display, **settings)
        self.addCleanup(plant.stop)
        return plant

    def keep_sending(self, plant, bodies):
        """The bodies of each turn, about nine turns a second on each of the lines, until the test ends or the
        function that is returned is called."""
        ended = threading.Event()

        def send(line):
            for turn in itertools.count():
                line.send(*bodies(turn))
                if ended.wait(0.08):
                    return

        senders = [threading.Thread(target=send, args=(line,)) for line in plant.lines.values()]
        for sender in senders:
            sender.start()

        def end():
            ended.set()
            for sender in senders:
                sender.join()

        self.addCleanup(end)
        return end


def hex4(*values):
    return "".join(f"{value:04X}" for value in values)


def parameter_frame(order=(1, 5, 3, 6, 2, 4), angles=(0, 120, 120, 120, 120, 120)):
    """A parameter frame with everything that an Evaluator can send."""
    order = list(order) + [0] * (24 - len(order))
    angles = list(angles) + [0] * (24 - len(angles))
    return (":06" + hex4(3, 2, 750, 900, 4, 6, 4) + "".join(f"{value:02X}" for value in order) +
            hex4(*angles) + hex4(17) + hex4(600, 30) + "05" + hex4(6, 7, 400) + "V2.10-0718" +
            hex4(8, 9, 60) + hex4(11, 12) + hex4(90) + "EV020117" + hex4(80))


def measured_values(tsignal=41, speed=723, voltage=1234, dc=38, ac=12, test_signal=0):
    return ":01" + hex4(32768 + 10 * tsignal, 10 * speed, test_signal, 32768 + voltage, 10 * dc, 10 * ac)


def curve(code, samples):
    return [f":{code}{block + 1:02X}" + hex4(*samples[64 * block:64 * block + 64]) for block in range(4)]


def status(alarm=0x20, error=0, mode=1, inhibit=0, left=0):
    return ":08V1.22" + hex4(alarm, error) + "0000" + f"{mode:02X}" + hex4(inhibit, left) + "00"
