"""A plant controller that is late, wrong, frozen or gone, while the engines are measured."""

import signal
import socket
import time

from gateway_waits_test import GatewayWaits
from harness import DEAF, PlantTest, measured_values, parameter_frame, status, wait_for
from servers import GATEWAY, Controller, free_port
from side_by_side import run_side_by_side

SETTLED = 1.5  # seconds: several ticks of the send cycle
GIVEN_UP = 2.5  # seconds without an answer, with some to spare
RECONNECTION = 40
LONGEST_WAIT = 5
SEND_CYCLE = 0.3
DAY = 86400


class SilentHost:
    """A port that takes no more connections and says nothing about it: its queue is full."""

    def __init__(self, port):
        self.listening = socket.socket()
        self.listening.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        self.listening.bind(("127.0.0.1", port))
        self.listening.listen(0)
        self.fill = socket.create_connection(("127.0.0.1", port))

    def stop(self):
        self.fill.close()
        self.listening.close()


class GatewayFaults(PlantTest):
    def controller(self, port=0, *commands):
        controller = Controller(port, *commands)
        self.addCleanup(controller.stop)
        return controller

    def start(self, port, **settings):
        return self.plant(**{**GATEWAY, "IPport": port, **settings}).start()

    def still_logging(self, plant, speed):
        plant.lines[1].send(parameter_frame(), status(), measured_values(speed=speed))
        wait_for(lambda: any(f" {speed} " in record for record in plant.records()), what="a record")

    def frames_stand_still(self, controller):
        before = controller.total()
        time.sleep(SETTLED)
        self.assertEqual(controller.total(), before)
        return before

    def test_the_cycle_takes_the_blocks_and_channels_in_turns(self):
        controller = self.controller()
        self.start(controller.port(), channels=2)
        wait_for(lambda: controller.total() >= 8, 8, "a cycle")
        counted = controller.frames()
        for channel in (1, 2):
            for block in (1, 8, 3, 4):
                self.assertIn(counted[channel, block], (1, 2), (channel, block))
        for channel in (3, 4):
            self.assertEqual(sum(counted[channel, block] for block in (1, 8, 3, 4)), 0)
        self.assertEqual(controller.connections(), 1)

    def test_late_answers_cost_no_measured_value(self):
        controller = self.controller(0, "late 90")
        plant = self.start(controller.port(), channels=4)
        for line in plant.lines.values():
            line.send(parameter_frame())
        before, load_before, begin = controller.total(), plant.processor_seconds(), time.monotonic()
        count = 700
        for index in range(count):
            for number, line in plant.lines.items():
                line.send(measured_values(index % 100, number * 1000 + index))
        duration = time.monotonic() - begin
        load = (plant.processor_seconds() - load_before) / duration
        for number in plant.lines:
            wait_for(lambda: len(plant.records(number)) == count, what=f"all records of channel {number}")
            speeds = [int(record.split()[3]) for record in plant.records(number)]
            self.assertEqual(speeds, [number * 1000 + index for index in range(count)])
        written = controller.total() - before
        print(f"{count / duration:.0f} frames a second and channel, {written} blocks in {duration:.1f} s, "
              f"processor load {100 * load:.1f} %")
        self.assertGreater(written, 2 * duration)

    def test_waiting_for_answers_costs_no_processor(self):
        controller = self.controller(0, "late 500")
        plant = self.start(controller.port())
        wait_for(lambda: controller.total() > 0, what="a frame")
        before, begin = plant.processor_seconds(), time.monotonic()
        time.sleep(4)
        load = (plant.processor_seconds() - before) / (time.monotonic() - begin)
        print(f"answers after 500 ms: processor load {100 * load:.1f} %")
        self.assertLess(load, 0.1)
        # In time all the same: each answer is followed by the next frame.
        self.assertGreater(controller.total(), 5)
        self.still_logging(plant, 555)

    def test_a_connection_that_the_controller_closes_is_not_made_anew_at_once(self):
        controller = self.controller()
        plant = self.start(controller.port())
        wait_for(lambda: controller.total() > 0, what="a frame")
        controller.order("close")
        self.frames_stand_still(controller)
        self.assertEqual(controller.connections(), 1)
        self.still_logging(plant, 556)

    def test_wrong_answers_disturb_no_measurement(self):
        for number, (manner, goes_on) in enumerate([
                ("exception 4", False), ("wrong-function", False), ("garbage", False),
                ("split 8", True), ("too-much", None)]):
            with self.subTest(manner):
                controller = self.controller()
                plant = self.start(controller.port(), IPpolar=0)
                wait_for(lambda: controller.total() > 0, what="a frame")
                controller.order(manner)
                received = controller.total() + controller.refused()
                wait_for(lambda: controller.total() + controller.refused() > received, what="another frame")
                self.still_logging(plant, 600 + number)
                received = controller.total() + controller.refused()
                time.sleep(1)
                later = controller.total() + controller.refused()
                if goes_on is not None:
                    self.assertEqual(later > received, goes_on, f"{received} frames, then {later}")
                self.assertIsNone(plant.program.poll())
                self.assertEqual(self.display.windows("message"), [])
                plant.stop()
                controller.stop()

    def test_frozen_stopped_and_started_again(self):
        # A second plant, whose controller is not there at the start: it is never tried again.
        closed_port = free_port()
        lonely = self.start(closed_port)
        late_comer = self.controller(closed_port)

        controller = self.controller()
        port = controller.port()
        plant = self.start(port)
        wait_for(lambda: controller.total() > 0, what="a frame")
        controller.process.send_signal(signal.SIGSTOP)
        frozen = time.monotonic()
        self.still_logging(plant, 701)
        time.sleep(frozen + GIVEN_UP - time.monotonic())
        controller.process.send_signal(signal.SIGCONT)
        # Given up: it answers again, and nothing is sent to it.
        self.frames_stand_still(controller)
        self.assertEqual(controller.connections(), 1)
        controller.stop()

        controller = self.controller(port)
        wait_for(lambda: controller.total() > 0, RECONNECTION + 10, "the reconnection")
        waited = time.monotonic() - frozen
        print(f"frames again {waited:.1f} s after the freeze")
        self.assertTrue(RECONNECTION < waited < RECONNECTION + 5, f"{waited:.1f} s")
        self.assertEqual(controller.connections(), 1)
        self.still_logging(plant, 702)
        self.assertEqual(late_comer.connections(), 0)
        self.still_logging(lonely, 703)


class OverMidnight(GatewayWaits):
    def test_a_reconnection_over_midnight_keeps_no_command_for_good(self):
        ready = 12  # seconds for the start
        midnight = int(time.time()) + RECONNECTION + ready
        behind_utc = midnight % DAY
        self.display.environment["TZ"] = f"LOC{behind_utc // 3600}:{behind_utc // 60 % 60}:{behind_utc % 60}"
        self.addCleanup(self.display.environment.pop, "TZ")
        controller = self.controller()
        port = controller.port()
        plant = self.start(controller)
        # The attempt begins 40 s behind the first refused write, which comes within a cycle's tick.
        time.sleep(midnight - 0.4 - RECONNECTION - time.time())
        controller.process.kill()
        self.assertLess(time.time(), midnight - 0.3 - RECONNECTION)
        controller.stop()
        host = SilentHost(port)
        self.addCleanup(host.stop)
        time.sleep(midnight + SEND_CYCLE - time.time())
        # A dialog that is asked for now waits for the end of the attempt.
        self.display.press(self.display.window("Tyxo Data Logger"), "alt+f", "Right", "Down", "Return")
        self.raise_alarm(plant)
        time.sleep(DEAF)
        confirmed = self.confirm("key", "Return")
        self.assertEqual(self.display.windows("Setup scales"), [])
        self.display.window("Setup scales")
        waited = time.time() - midnight
        print(f"over midnight: confirmed after {1000 * confirmed:.0f} ms, dialog {waited:.1f} s behind it")
        self.assertLess(confirmed, 1)
        self.assertTrue(LONGEST_WAIT - 1 < waited < LONGEST_WAIT + 1, f"{waited:.1f} s")
        self.display.tool("xdotool", "key", "Escape")
        wait_for(lambda: not self.display.windows("Setup scales"), what="the dialog's end")
        plant.lines[1].send(measured_values(speed=901))
        wait_for(lambda: any(" 901 " in record for record in plant.records()), what="a record")


if __name__ == "__main__":
    run_side_by_side(3, longest=["midnight", "frozen"])
