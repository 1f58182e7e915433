"""What a measurement leaves on the disk, to the byte."""

import datetime
import random
import re
import time
import unittest

from harness import (PlantTest, curve, frame, masked, measured_values, parameter_frame, status, wait_for)
from log_header import log_header


class Recording(PlantTest):
    def start(self, **settings):
        return self.plant(**settings).start()

    def test_log_event_file_and_debug_output_to_the_byte(self):
        plant = self.start()
        line = plant.lines[1]
        thermo = [1000 + sample for sample in range(256)]
        angacc = [65535 - sample for sample in range(256)]
        line.send(measured_values(1, 2))  # no file yet
        line.send(parameter_frame())
        line.send(measured_values())
        line.send(*curve("03", thermo), *curve("04", angacc))
        line.send(measured_values(test_signal=1), measured_values(40, 700))
        line.send(status(0x20), status(0xA0A2 | 0x4000, 0x0010), status(0x20))
        line.raw(b":0180000000zz\r\n")
        line.send(":07010")
        line.send(measured_values(39))
        wait_for(lambda: len(plant.records()) == 4, what="four records")

        name = f"{datetime.date.today():%Y%m%d}Qu_Engine 1.xlg"
        self.assertEqual(plant.log_names(), [name])
        body = ["<REC1> hh:mm:ss 41 723 1234 38 12 </REC1>",
                "<REC2> hh:mm:ss " + "".join(f"{sample} " for sample in thermo) + " </REC2>",
                "<REC3> hh:mm:ss " + "".join(f"{sample} " for sample in angacc) + " </REC3>",
                "<#-- hh:mm:ss Testsignal1 ON -->",
                # values of the engine stand still while the test signal runs
                "<REC1> hh:mm:ss 41 723 1234 38 12 </REC1>",
                "<#-- hh:mm:ss Testsignal OFF -->",
                "<REC1> hh:mm:ss 40 700 1234 38 12 </REC1>",
                "<!-- hh:mm:ss KVD SYNC Error -->",
                "<!-- hh:mm:ss KVD Overspeed Alarm ON -->",
                "<!-- hh:mm:ss KVD Main ALARM DC ON -->",
                "<!-- hh:mm:ss KVD Main ALARM ON -->",
                "<!-- hh:mm:ss KVD Prealarm ON -->",
                "<!-- hh:mm:ss KVD Overspeed Alarm OFF -->",
                "<!-- hh:mm:ss KVD Main ALARM DC OFF -->",
                "<!-- hh:mm:ss KVD Main ALARM OFF -->",
                "<!-- hh:mm:ss KVD Prealarm OFF -->",
                "<REC1> hh:mm:ss 39 723 1234 38 12 </REC1>", ""]
        self.assertEqual(masked(plant.log()).split("\r\n"), log_header(name) + body)

        when = "##;mm-dd-yyyy;hh:mm:ss;"
        self.assertEqual(plant.events(), [
            when + "Tyxo Logger software started !",
            when + "KVD Engine 1 ## Measure started ",
            when + "KVD Engine 1 ## Sync signal Error",
            when + "KVD Engine 1 ## Overspeed Alarm ON",
            when + "KVD Engine 1 ## Main Alarm DC ON",
            when + "KVD Engine 1 ## Main Alarm ON",
            when + "KVD 1 Prealarm ON",
            when + "KVD Engine 1 ## Overspeed Alarm OFF",
            when + "KVD Engine 1 ## Main Alarm DC OFF",
            when + "KVD Engine 1 ## Main Alarm OFF",
            when + "KVD Engine 1 ## Prealarm OFF", ""])

        ports = [text for text in plant.debug() if re.fullmatch(r"\S+ COM\d+", text)]
        self.assertIn("ports/COM1 COM1", ports)
        # The alert's sound is not there; its player says so whenever it comes to it.
        silence = "PlaySoundA: no such file"
        wait_for(lambda: silence in plant.debug(), what="the missing sound")
        self.assertEqual([text for text in plant.debug() if text != silence],
                         ["Programmstart", *ports, "LRC Error", "write parameter OK"])
        self.assertEqual(plant.debug().count(silence), 1)

    def test_frames_in_single_bytes_and_in_one_piece_are_the_same_frames(self):
        plant = self.start()
        chance = random.Random(1)
        bodies = [parameter_frame()] + [measured_values(index, 500 + index) for index in range(100)]
        data = b"".join(map(frame, bodies))
        while data:
            size = chance.choice([1, 1, 2, 3, 17, 200])
            plant.lines[1].raw(data[:size])
            data = data[size:]
        records = wait_for(lambda: len(plant.records()) == 100 and plant.records(), what="100 records")
        expected = [f"<REC1> hh:mm:ss {index} {500 + index} 1234 38 12 </REC1>" for index in range(100)]
        self.assertEqual([masked(record) for record in records], expected)

    def test_a_killed_program_has_lost_no_line(self):
        for round_ in range(5):
            with self.subTest(round=round_):
                plant = self.start()
                plant.lines[1].send(parameter_frame())
                sent = 40 + 17 * round_
                for index in range(sent):
                    plant.lines[1].send(measured_values(index % 100, index))
                wait_for(lambda: len(plant.records()) >= sent - 1, what="the records")
                plant.kill()
                log = plant.log()
                self.assertTrue(log.endswith("</REC1>\r\n"))
                speeds = [int(record.split()[3]) for record in plant.records()]
                self.assertEqual(speeds, list(range(len(speeds))))
                self.assertGreaterEqual(len(speeds), sent - 1)
                plant.stop()

    def test_four_channels_at_the_pace_of_their_lines_lose_nothing(self):
        plant = self.start(channels=4)
        for line in plant.lines.values():
            line.send(parameter_frame())
        load_before = plant.processor_seconds()
        begin = time.monotonic()
        count = 300
        for index in range(count):
            for number, line in plant.lines.items():
                line.send(measured_values(index % 100, number * 1000 + index))
        duration = time.monotonic() - begin
        for number in plant.lines:
            wait_for(lambda: len(plant.records(number)) == count, what=f"all records of channel {number}")
            speeds = [int(record.split()[3]) for record in plant.records(number)]
            self.assertEqual(speeds, [number * 1000 + index for index in range(count)])
        load = (plant.processor_seconds() - load_before) / duration
        print(f"{4 * count / duration:.0f} frames a second, processor load {100 * load:.1f} %")


if __name__ == "__main__":
    unittest.main()
