"""A plant controller that is frozen, vanishes without a word, floods or closes one half of the connection,
while four channels are measured at full pace. FAULT_SECONDS in the environment says how long each lasts.
"""

import ctypes
import os
import pathlib
import re
import socket
import struct
import threading
import time

from full_pace import AT_ONCE, FullPace
from harness import PlantTest, wait_for
from servers import GATEWAY, free_port
from side_by_side import run_side_by_side

SECONDS = float(os.environ.get("FAULT_SECONDS", "3"))
ATTACH_FILTER, DETACH_FILTER = 26, 27
MOST_GROWTH = 30  # MB


class Controller:
    """Answers every request to write registers, until it is told otherwise."""

    def __init__(self):
        self.port = free_port()
        self.listening = socket.create_server(("127.0.0.1", self.port))
        self.written = self.connections = self.flooded = 0
        self.connection = None
        self.manner = "answer"
        self.ended = False
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.thread.start()

    def serve(self):
        while not self.ended:
            try:
                self.connection, _ = self.listening.accept()
            except OSError:
                return
            self.connections += 1
            with self.connection:
                try:
                    while self.answer():
                        pass
                except OSError:
                    pass

    def answer(self):
        if self.manner == "flood":
            self.flooded += self.connection.send(os.urandom(65536))
            return True
        if self.manner == "frozen":
            time.sleep(0.05)
            return not self.ended
        self.connection.settimeout(0.1)
        try:
            request = self.connection.recv(4096)
        except TimeoutError:
            return not self.ended
        if len(request) >= 12:
            self.written += 1
            if self.manner != "half-closed":
                self.connection.sendall(request[:4] + struct.pack(">H", 6) + request[6:12])
        return request != b""

    def vanish(self):
        """Nothing that comes is taken from now on, not even by the system, which says so to nobody: as if the
        machine had lost its power. No right is needed for it."""
        nothing = ctypes.create_string_buffer(struct.pack("HBBI", 0x06, 0, 0, 0))  # return 0 bytes
        program = struct.pack("HL", 1, ctypes.addressof(nothing))
        for one in (self.listening, self.connection):
            one.setsockopt(socket.SOL_SOCKET, ATTACH_FILTER, program)

    def come_back(self):
        for one in (self.listening, self.connection):
            one.setsockopt(socket.SOL_SOCKET, DETACH_FILTER, 0)

    def half_close(self):
        self.manner = "half-closed"
        self.connection.shutdown(socket.SHUT_WR)

    def stop(self):
        self.ended = True
        self.manner = "answer"
        self.listening.shutdown(socket.SHUT_RDWR)
        if self.connection:
            self.connection.close()
        self.thread.join()
        self.listening.close()


class ControllerGone(PlantTest):
    def memory(self, plant):
        text = pathlib.Path(f"/proc/{plant.program.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", text)[1]) / 1024

    def measure(self, what, begin, end=None):
        """Four lines at full pace while the controller does this; what is logged, and what it costs."""
        self.display.environment["ASAN_OPTIONS"] = "quarantine_size_mb=1"  # freed memory is not kept
        controller = Controller()
        self.addCleanup(controller.stop)
        plant = self.plant(channels=4, **{**GATEWAY, "IPport": controller.port}).start()
        with FullPace(plant) as pace:
            wait_for(lambda: controller.written > 4, what="written registers")
            begin(controller)
            processor, memory, clock = plant.processor_seconds(), self.memory(plant), time.monotonic()
            written = controller.written
            time.sleep(SECONDS)
            load = (plant.processor_seconds() - processor) / (time.monotonic() - clock)
            growth = self.memory(plant) - memory
            written = controller.written - written
            if end:
                end(controller)
            time.sleep(0.5)
            pace.settle()
            pace.check(self)
            self.assertIsNone(plant.program.poll())
            print(f"controller {what} for {SECONDS:g} s: {pace.values()} values, none lost, worst delay "
                  f"{1000 * pace.worst_delay():.0f} ms, {100 * load:.0f} % of a processor, memory "
                  f"{growth:+.1f} MB, {written} blocks written, "
                  f"{controller.flooded / 1e6:.1f} MB of flood taken, {controller.connections} connections")
            self.assertLess(pace.worst_delay(), AT_ONCE)
            self.assertLess(growth, MOST_GROWTH)

    def test_a_controller_that_vanishes_without_a_word_holds_nothing_up(self):
        self.measure("vanished", Controller.vanish, Controller.come_back)

    def test_a_controller_that_reads_and_says_nothing_holds_nothing_up(self):
        self.measure("frozen", lambda controller: setattr(controller, "manner", "frozen"),
                     lambda controller: setattr(controller, "manner", "answer"))

    def test_a_controller_that_floods_holds_nothing_up_and_fills_no_memory(self):
        self.measure("floods", lambda controller: setattr(controller, "manner", "flood"))

    def test_a_controller_that_closes_its_half_holds_nothing_up(self):
        self.measure("half-closed", Controller.half_close)


if __name__ == "__main__":
    run_side_by_side(2)
