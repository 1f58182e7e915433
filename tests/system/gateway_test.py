"""What arrives in the registers of Modbus servers that other people wrote."""

import time

from harness import PlantTest, wait_for
from registers import BASE, PER_CHANNEL, PLANT, UNTOUCHED
from servers import GATEWAY, LibmodbusServer, PymodbusServer
from side_by_side import run_side_by_side

AROUND = 20  # registers before and behind the image that must stay as they are


class Registers:
    """The tests, for one kind of server."""

    server_class = None

    def serve(self):
        server = self.server_class()
        self.addCleanup(server.stop)
        self.assertGreater(server.port(), 0)
        server.set(BASE - AROUND, [UNTOUCHED] * (4 * PER_CHANNEL + 2 * AROUND))
        return server

    def start(self, server, **settings):
        return self.plant(**{**GATEWAY, "IPport": server.port(), **settings}).start()

    def all_of(self, server):
        return server.get(BASE - AROUND, 4 * PER_CHANNEL + 2 * AROUND)

    def test_all_440_registers_arrive_as_the_map_says(self):
        server = self.serve()
        plant = self.start(server, channels=4)
        for channel in PLANT:
            plant.lines[channel.number].send(*channel.frames())
        expected = [word for channel in PLANT for word in channel.registers()]
        negative = [word for word in expected if 0x8000 <= word < UNTOUCHED or UNTOUCHED < word]
        self.assertGreater(len(negative), 20)
        margin = [UNTOUCHED] * AROUND
        begin = time.monotonic()
        try:
            wait_for(lambda: self.all_of(server) == margin + expected + margin, 15, "the registers")
        except AssertionError:
            self.assertEqual(self.differences(server, margin + expected + margin), [])
            raise
        print(f"all registers after {time.monotonic() - begin:.1f} s")
        self.assertEqual([line for line in plant.debug() if "error" in line.lower()], [])

    def differences(self, server, expected):
        """Channel and offset of what is not as expected, with the value that is there and the right one."""
        found = []
        for index, (value, right) in enumerate(zip(self.all_of(server), expected)):
            if value != right:
                place = index - AROUND
                found.append((1 + place // PER_CHANNEL, place % PER_CHANNEL, value, right))
        return found

    def test_a_block_that_is_switched_off_is_not_written(self):
        server = self.serve()
        plant = self.start(server, IPpolar=0, IPenaTRS=0)
        plant.lines[1].send(*PLANT[0].frames())
        words = PLANT[0].registers()
        wait_for(lambda: server.get(BASE + 6, 3) == words[6:9], 5, "the status")
        time.sleep(1.5)
        around = [UNTOUCHED] * AROUND
        image = [UNTOUCHED] * 6 + words[6:9] + [UNTOUCHED] * (4 * PER_CHANNEL - 9)
        self.assertEqual(self.all_of(server), around + image + around)

    def test_new_values_replace_old_ones(self):
        server = self.serve()
        plant = self.start(server, IPpolar=0)
        for speed in (100, 3000):
            plant.lines[1].send(PLANT[0].frames()[0], ":0180C8" + f"{10 * speed:04X}" + "0000")
            wait_for(lambda: server.get(BASE + 1, 2) == [20, speed], 5, "the new speed")


class OnPymodbus(Registers, PlantTest):
    server_class = PymodbusServer


class OnLibmodbus(Registers, PlantTest):
    server_class = LibmodbusServer


if __name__ == "__main__":
    run_side_by_side(2)
