"""The screen stays lit while the program measures, and an alert lights it up."""

import ctypes
import os
import signal
import subprocess
import sys
import threading
import time
import unittest

from desktops import Screen
from harness import PlantTest, measured_values, parameter_frame, status, wait_for

SAVER_SECONDS = 1
RELAY_AND_AC = 0x0088
ALERT = "^Mainalarm$"
SAVER_ON = 1
SCREEN_SAVER = "org.freedesktop.ScreenSaver"
INTERFACE = f"""
<node><interface name="{SCREEN_SAVER}">
  <method name="Inhibit"><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="u" direction="out"/></method>
  <method name="UnInhibit"><arg type="u" direction="in"/></method>
  <method name="SimulateUserActivity"/>
</interface></node>
"""


class SaverInfo(ctypes.Structure):
    _fields_ = [("window", ctypes.c_ulong), ("state", ctypes.c_int), ("kind", ctypes.c_int),
                ("until", ctypes.c_ulong), ("idle", ctypes.c_ulong), ("mask", ctypes.c_ulong)]


class SaverScreen(Screen):
    """The X server's screen saver, which comes soon."""

    def __init__(self, name):
        super().__init__(name)
        self.saver = ctypes.CDLL("libXss.so.1")
        self.x11.XSetScreenSaver(self.display, SAVER_SECONDS, 0, 1, 1)

    def dark(self):
        info = SaverInfo()
        self.saver.XScreenSaverQueryInfo(self.display, self.root, ctypes.byref(info))
        return info.state == SAVER_ON

    def darken(self):
        self.x11.XForceScreenSaver(self.display, 1)
        self.x11.XSync(self.display, 0)


def serve_screen_saver():
    """A desktop's screen saver service: prints what it is asked for."""
    from gi.repository import Gio, GLib
    loop = GLib.MainLoop()

    def called(_connection, _sender, _path, _interface, method, parameters, invocation):
        print(method, *parameters.unpack(), flush=True)
        invocation.return_value(GLib.Variant("(u)", (77,)) if method == "Inhibit" else None)

    def registered(connection, _name):
        node = Gio.DBusNodeInfo.new_for_xml(INTERFACE)
        connection.register_object("/org/freedesktop/ScreenSaver", node.interfaces[0], called)
        print("ready", flush=True)

    Gio.bus_own_name(Gio.BusType.SESSION, SCREEN_SAVER, Gio.BusNameOwnerFlags.NONE, registered)
    loop.run()


class Desktop:
    """A session bus with a screen saver service on it."""

    def __init__(self, environment):
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.environment = environment
        environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().strip()
        self.calls = []
        self.start_service()

    def start_service(self):
        self.service = subprocess.Popen([os.environ["SYSTEM_PYTHON"], "-B", __file__, "--serve"],
                                        env=self.environment, stdout=subprocess.PIPE, text=True)
        threading.Thread(target=self.listen, args=[self.service.stdout], daemon=True).start()
        wait_for(lambda: self.calls and self.calls.pop(0) == "ready", what="the service")

    def listen(self, output):
        for line in output:
            self.calls.append(line.strip())

    def end_service(self):
        self.service.kill()
        self.service.wait()
        self.service.stdout.close()

    def stop(self):
        del self.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.end_service()
        self.bus.kill()
        self.bus.wait()
        self.bus.stdout.close()


class Awake(PlantTest):
    def setUp(self):
        self.display.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.screen = SaverScreen(self.display.name)
        self.addCleanup(self.screen.close)

    def desktop(self):
        desktop = Desktop(self.display.environment)
        self.addCleanup(desktop.stop)
        return desktop

    def measuring(self, **settings):
        plant = self.plant(**settings).start()
        plant.lines[1].send(parameter_frame(), measured_values())
        wait_for(plant.records, what="a record")
        return plant

    def test_the_screen_goes_dark_while_nothing_is_measured_and_stays_lit_while_something_is(self):
        plant = self.plant(autostart=0).start()
        wait_for(self.screen.dark, SAVER_SECONDS + 3, "the screen saver")
        plant.stop()
        self.measuring()
        self.display.tool("xdotool", "mousemove_relative", "1", "1")
        wait_for(lambda: not self.screen.dark(), what="the light")
        end = time.monotonic() + SAVER_SECONDS + 2
        while time.monotonic() < end:
            self.assertFalse(self.screen.dark())
            time.sleep(0.1)

    def test_an_alert_lights_a_dark_screen_up(self):
        plant = self.measuring()
        time.sleep(0.3)
        self.screen.darken()
        self.assertTrue(self.screen.dark())
        plant.lines[1].send(status(RELAY_AND_AC))
        wait_for(lambda: not self.screen.dark(), 2, "the light")

    def test_the_session_is_asked_while_something_is_measured_and_told_of_the_end(self):
        desktop = self.desktop()
        plant = self.measuring()
        inhibit = "Inhibit Tyxo Data Logger An engine is being measured"
        wait_for(lambda: inhibit in desktop.calls, what="the request")
        desktop.end_service()
        desktop.calls.clear()
        desktop.start_service()
        wait_for(lambda: inhibit in desktop.calls, what="the request to a service that has started anew")
        plant.lines[1].send(status(RELAY_AND_AC))
        wait_for(lambda: "SimulateUserActivity" in desktop.calls, what="the wake-up")
        self.display.confirm_alarm()
        window = self.display.window("Tyxo Data Logger")
        self.display.press(window, "alt+f", "Right", "Right", "Return")
        self.display.press(self.display.window("stop data logging"), "Tab", "space")
        wait_for(lambda: "UnInhibit 77" in desktop.calls, what="the end of the request")

    def test_a_session_that_hangs_holds_nothing_up(self):
        desktop = self.desktop()
        plant = self.measuring()
        wait_for(lambda: desktop.calls, what="the request")
        desktop.bus.send_signal(signal.SIGSTOP)
        plant.lines[1].send(status(RELAY_AND_AC))
        self.display.window(ALERT)
        plant.lines[1].send(measured_values(speed=99))
        wait_for(lambda: " 99 " in plant.log(), 2, "a record of now")
        plant.program.terminate()
        self.assertEqual(plant.program.wait(5), 0)


if __name__ == "__main__":
    if "--serve" in sys.argv:
        serve_screen_saver()
    else:
        unittest.main()
