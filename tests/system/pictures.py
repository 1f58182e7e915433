#!/usr/bin/python3
"""Pictures of every window of the real program on a desktop, for people to look at.

    tests/system/pictures.py FOLDER [WIDTHxHEIGHT[*SCALE] [openbox|icewm|xfwm4|weston [light|dark]]]

The windows are opened over the accessibility bus, beside simulated Evaluators and a simulated plant
controller; a picture is what the whole screen shows. A dark desktop needs qt6ct.
"""

import argparse
import contextlib
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
BUILD = ROOT / "build" / "release"
DARK = pathlib.Path("/usr/share/qt6ct/colors/darker.conf")
sys.path.append(str(ROOT / "tools" / "plant"))
os.environ.setdefault("TYXO", str(BUILD / "tyxo"))

from desktops import Desktop  # noqa: E402
from harness import WITH_US, wait_for  # noqa: E402
from screen import png  # noqa: E402
from screen_reader import ScreenReader  # noqa: E402

PASSWORD = "Kessel 7"
CYCLE = 7  # s until the next curves have come, which diagrams wait for
# Four engines of four kinds; the last one's Evaluator tells little.
ENGINES = """
1 engine inline6-4
2 engine v16-4
2 param alarmlevel 4
3 engine inline5-2
3 param alminhibit_time 90
4 engine inline9-4
4 unit plain
"""


class Tour:
    """The program on a desktop, and what an operator opens there."""

    def __init__(self, folder, desktop, memory):
        self.folder = folder
        self.desktop = desktop
        self.memory = memory
        self.plant = pathlib.Path(tempfile.mkdtemp(prefix="pictures-", dir=memory))
        self.reader = ScreenReader(desktop)

    def helper(self, *words, **options):
        return subprocess.Popen([*WITH_US, *map(str, words)], cwd=self.plant, text=True,
                                env=self.desktop.environment, **options)

    def start_plant(self):
        for name in ("logs", "ports"):
            (self.plant / name).mkdir()
        with open(self.plant / "evaluator.log", "wb") as log:
            self.evaluators = self.helper(BUILD / "evaluator", stdin=subprocess.PIPE, stdout=log, stderr=log)
        self.tell(*[f"{number} port {number}" for number in range(1, 5)], *ENGINES.strip().split("\n"))
        wait_for(lambda: len(list((self.plant / "ports").iterdir())) == 4, what="the ports")
        self.controller = self.helper(BUILD / "controller", "--no-input", "--base", 1000,
                                      stdout=subprocess.PIPE)
        port = re.match(r"listening on port (\d+)", self.controller.stdout.readline())[1]
        settings = (ROOT / "tools" / "plant" / "tyxo.ini").read_text(encoding="ascii")
        for key, value in {"autostart": 0, "IPport": port, "passwd": PASSWORD}.items():
            settings = re.sub(rf"^{key}=.*", f"{key}={value}", settings, flags=re.MULTILINE)
        (self.plant / "tyxo.ini").write_text(settings, encoding="ascii")

    def tell(self, *commands):
        """Words to the simulated Evaluators."""
        self.evaluators.stdin.write("".join(f"{command}\n" for command in commands))
        self.evaluators.stdin.flush()

    def start_program(self, picture):
        """Its windows as they are at once, then without what it said."""
        self.program = self.helper(BUILD / "tyxo", stderr=subprocess.DEVNULL)
        self.told = self.reader.program(self.program.pid)
        self.reader.listen(2)
        self.take(picture)
        self.answer_boxes()
        self.main = self.window("Tyxo Data Logger")

    def window(self, name):
        """A window whose title has the name in it."""
        def shown():
            for window in self.told:
                if window is not None and name in window.name and self.reader.showing(window):
                    return window
            return None

        return wait_for(shown, what=f"a window {name!r}")

    def press(self, role, name, window=None):
        node = wait_for(lambda: self.reader.find(window or self.main, role, name,
                                                 with_hidden=role == "menu item"), what=f"{role} {name!r}")
        self.reader.press(node)

    def take(self, name, settle=0.8):
        """What the screen shows when everything has come to rest."""
        self.reader.listen(settle)
        dump = (self.memory / "Xvfb_screen0").read_bytes()
        (self.folder / f"{name}.png").write_bytes(png(dump))

    def show(self, name, opener, title, button=None, settle=0.8):
        """Opens a window, takes its picture and leaves it."""
        self.press(*opener)
        window = self.window(title)
        self.take(name, settle)
        self.leave(title, window, button)

    def leave(self, title, window, button=None):
        if button:
            self.press("push button", button, window)
        else:
            self.desktop.keys("Escape")
        wait_for(lambda: not [one for one in self.told if one is not None and title in one.name
                              and self.reader.showing(one)], what=f"the end of {title!r}")

    def first_start(self):
        """Without settings: what the program says, and a start that nothing is set up for."""
        self.start_program("start-without-settings")
        self.press("menu item", "Start all channels")
        self.take("box-no-sensor")
        self.program.terminate()
        self.program.wait()
        (self.plant / "tyxo.ini").unlink()

    def answer_boxes(self):
        def box():
            return [one for one in self.told if one is not None and one.getRoleName() == "alert"
                    and self.reader.showing(one) and self.reader.find(one, "push button", "")]

        while box():
            self.reader.press(self.reader.find(box()[0], "push button", ""))
            self.reader.listen(0.5)

    def idle(self):
        self.start_program("start")
        self.take("main-idle")
        self.desktop.keys("alt+f", delay=150)
        for name in ("file", "setup", "start"):
            self.take(f"menu-{name}")
            self.desktop.keys("Right")
        self.desktop.keys("Escape", "Escape")
        self.setup("setup", browse=True)

    def setup(self, prefix, browse=False):
        self.press("menu item", "Setup preferences")
        setup = self.window("Setup")
        for tab in ("TY Settings", "1 :", "2 :", "3 :", "4 :"):
            self.press("page tab", tab, setup)
            self.take(f"{prefix}-{tab[0].lower()}")
        if browse:
            self.press("page tab", "TY Settings", setup)
            self.press("push button", "Browse", setup)
            browser = self.window("Pathselect")
            self.take(f"{prefix}-browse")
            self.leave("Pathselect", browser, "Cancel")
        self.leave("Setup", setup, "Cancel")

    def running(self):
        self.press("menu item", "Start all channels")
        self.reader.listen(25)
        self.take("main-running")
        self.press("chart", "Chart 1")
        self.press("push button", "Enlarge XY graph, channel 4")
        self.take("main-frozen-and-enlarged")
        self.press("push button", "Reduce XY graph, channel 4")
        self.press("chart", "Chart 1")

    def scopes(self):
        for name, role, opener, title in [
                ("detailed-display", "chart", "Polar scope", "Detailed Display"),
                ("speed-bars", "push button", "Speed difference", "Speed"),
                ("thermo-bars", "push button", "Thermosignal difference", "Thermosignal")]:
            self.show(name, (role, f"{opener}, channel 2"), title, settle=CYCLE)

    def status_window(self):
        if self.desktop.wayland:  # this compositor gives the keyboard to nobody when a window has gone
            self.desktop.keys("super+Tab")
        self.reader.find(self.main, "text", "Status text").queryComponent().grabFocus()
        self.desktop.keys("Return")
        window = self.window("Status window")
        self.take("status-window")
        self.leave("Status window", window)

    def dialogs(self):
        for name, entry, title, button in [
                ("scales", "Setup scales", "Setup scales", "OK"),
                ("password", "Setup password", "Setup Password", "Cancel"),
                ("select-print", "Print", "Select print", "cancel"),
                ("stop-lock", "Stop all channels", "stop data logging", "Continue Logging"),
                ("about", "About", "About", None)]:
            self.show(name, ("menu item", entry), title, button)
        self.show("software-info", ("push button", "Tyxo Data Logger"), "Software info")
        self.tell("3 inhibit on 300")
        self.show("inhibit-reset", ("push button", "Alarm inhibit"), "Alarm Inhibit Time", "Cancel")

    def gateway(self):
        self.press("menu item", "Setup Modbus TCP/IP")
        window = self.window("Modbus")
        self.take("gateway")
        self.press("menu item", "Register Content", window)
        self.take("gateway-without-registers")
        self.press("push button", "close", window)

    def alarms(self):
        self.tell("2 warm 118 over 1 cylinder 10", "4 silence 100")
        alert = self.window("Mainalarm")
        self.take("alert", settle=0.7)
        self.take("alert-other-phase", settle=0.6)
        self.press("push button", "Confirm", alert)
        self.reader.listen(4)
        self.take("main-alarm-and-lost-link")

    def play(self):
        self.first_start()
        self.start_plant()
        self.idle()
        self.running()
        self.scopes()
        self.dialogs()
        self.status_window()
        self.setup("setup-measuring")
        self.gateway()
        self.alarms()
        self.program.terminate()
        self.program.wait()

    def stop(self):
        for name in ("program", "evaluators", "controller"):
            process = getattr(self, name, None)
            if process:
                process.kill()
                process.wait()
        self.reader.stop()


def surroundings(desktop, scale, dark, memory):
    """What a desktop tells the programs on it."""
    if scale > 1 and not desktop.wayland:
        desktop.environment["QT_SCALE_FACTOR"] = str(scale)
    if dark:
        (memory / "qt6ct").mkdir()
        (memory / "qt6ct" / "qt6ct.conf").write_text(
            f"[Appearance]\ncolor_scheme_path={DARK}\ncustom_palette=true\nstyle=Fusion\n", encoding="ascii")
        desktop.environment |= {"QT_QPA_PLATFORMTHEME": "qt6ct", "XDG_CONFIG_HOME": str(memory)}


def main():
    arguments = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    arguments.add_argument("folder", type=pathlib.Path)
    arguments.add_argument("size", nargs="?", default="1280x1024", help="WIDTHxHEIGHT, or WIDTHxHEIGHT*SCALE")
    arguments.add_argument("desktop", nargs="?", default="openbox")
    arguments.add_argument("light", nargs="?", default="light", choices=["light", "dark"])
    given = arguments.parse_args()
    given.folder.mkdir(parents=True, exist_ok=True)
    size, _, scale = given.size.partition("*")
    with tempfile.TemporaryDirectory(prefix="pictures-") as memory, contextlib.ExitStack() as undo:
        memory = pathlib.Path(memory)
        desktop = Desktop(given.desktop, size, int(scale or 1), ["-fbdir", str(memory), "-nocursor"])
        undo.callback(desktop.stop)
        surroundings(desktop, int(scale or 1), given.light == "dark", memory)
        tour = Tour(given.folder, desktop, memory)
        undo.callback(tour.stop)
        tour.play()


if __name__ == "__main__":
    main()
