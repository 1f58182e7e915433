"""The registers that four channels must have at the plant controller, from the frames that were sent."""

import random

from harness import curve, hex4, measured_values, parameter_frame, status

BASE = 1000
PER_CHANNEL = 110
UNTOUCHED = 0xDEAD  # what stands in registers before anything is written
GAINS = (999, 25, 50, 100, 225, 450)
ADC_OFFSET = 479
HALF_WINDOW = 1


class Channel:
    """One engine with its last values, and the frames that tell them."""

    def __init__(self, number, strokes, cylinders, layout, order, angle, level, dc_percent, firmware, values,
                 alarm, error):
        chance = random.Random(number)
        self.number, self.strokes, self.cylinders, self.layout = number, strokes, cylinders, layout
        self.order, self.angles = order, [0] + [angle] * (cylinders - 1)
        self.level, self.dc_percent, self.firmware = level, dc_percent, firmware
        self.values, self.alarm, self.error = values, alarm, error
        middle = round(60 / (700 * 256 * self.tick()))
        self.angacc = [middle + chance.randint(-60, 60) for _ in range(256)]
        self.angacc[80:90] = [100] * 10  # faster than can be told
        full = GAINS[level] * dc_percent // 100
        self.thermo = [max(0, ADC_OFFSET + chance.randint(-full, full)) for _ in range(256)]
        self.thermo[120:130] = [ADC_OFFSET + 3 * full] * 10  # more than can be told

    def frames(self):
        settings = parameter_frame(self.order, self.angles)
        settings = (settings[:3] + hex4(self.level, 2, 750, 900, self.strokes, self.cylinders, self.layout) +
                    settings[31:-4] + hex4(self.dc_percent))
        return [settings, status(self.alarm, self.error).replace("V1.22", self.firmware),
                *curve("03", self.thermo), *curve("04", self.angacc), measured_values(*self.values)]

    def tick(self):
        return 0.0000004 if self.firmware[1] == "2" else 0.000000333

    def cylinder_angles(self):
        order = list(self.order)
        if self.layout == 2 and order[0] <= 100:
            order = [entry - 1 for entry in order]
        elif self.layout == 2:
            order = [2 * (entry - 101) + 1 if entry < 200 else 2 * (entry - 200) for entry in order]
        angles = [0] * self.cylinders
        for place, cylinder in enumerate(order):
            if 1 <= cylinder <= self.cylinders:
                angles[cylinder - 1] = sum(self.angles[:place + 1])
        return angles

    def windows(self):
        """The samples that stand for each cylinder."""
        turn = 720 if self.strokes == 4 else 360
        for angle in self.cylinder_angles():
            place = round(angle * 255 / turn)
            if place + HALF_WINDOW > 255:
                yield [place]  # at the end of the curve a single one
            else:
                yield [sample % 256 for sample in range(place - HALF_WINDOW, place + HALF_WINDOW + 1)]

    def speeds(self):
        def rpm(count):
            return 60 / (count * 256 * self.tick())

        mean = round(rpm(round(sum(self.angacc) / 256)) * 100)
        shown, differences = [0] * 24, [0] * 24
        for cylinder, window in enumerate(self.windows()):
            speed = rpm(round(sum(self.angacc[sample] for sample in window) / len(window)))
            told = speed <= 4000
            shown[cylinder] = round(speed) if told else 4000
            differences[cylinder] = round(((round(speed * 100) if told else 0) - mean) / 100)
        return shown + differences

    def thermosignals(self):
        full = GAINS[self.level] * self.dc_percent / 100
        percent = [abs((raw - ADC_OFFSET) * 100 / full) for raw in self.thermo]
        total = 0
        for value in percent:
            total = round(value + total)
        mean = round(total / 256)
        shown, differences = [0] * 24, [0] * 24
        for cylinder, window in enumerate(self.windows()):
            signal = round(sum(round(percent[sample]) for sample in window) / len(window))
            shown[cylinder] = min(signal, 200)
            differences[cylinder] = signal - mean
        return shown + differences

    def registers(self):
        words = [self.number, *self.values, self.number, self.alarm, self.error, UNTOUCHED,
                 self.number, self.cylinders, *self.speeds(), self.number, self.cylinders,
                 *self.thermosignals()]
        assert len(words) == PER_CHANNEL
        return [word & 0xFFFF for word in words]


def bank_order(cylinders):
    return [100 * (1 + index % 2) + 1 + index // 2 for index in range(cylinders)]


PLANT = (
    Channel(1, 4, 6, 4, [1, 5, 3, 6, 2, 4], 120, 3, 80, "V1.22", (41, 723, 1234, 38, 12), 0x0020, 0x0000),
    Channel(2, 4, 16, 2, bank_order(16), 45, 1, 100, "V1.22", (199, 65, 32767, 6553, 0), 0xE1EF, 0xF03C),
    Channel(3, 2, 5, 4, [1, 4, 3, 2, 5], 72, 5, 40, "V2.10", (0, 6553, 0, 1, 6553), 0x8082, 0x0063),
    Channel(4, 4, 24, 2, list(range(1, 25)), 30, 2, 90, "V2.10", (7, 1, 2, 3, 4), 0xFFFF, 0xFFFF))
