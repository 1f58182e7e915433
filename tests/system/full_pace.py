"""Four lines at their full pace, and what must have become of all that was sent."""

import os
import select
import threading
import time

from harness import curve, frame, measured_values, parameter_frame, status, wait_for

PACE = 3840  # bytes a second: what a line at 38,400 baud carries
PIECE = 128
MOST = 6000  # the speed counts the values, up to this, and then anew
ALARM = {False: 0x20, True: 0x2020}
AT_ONCE = 2.0  # s: a value's way to the log on a machine with other work
OVERSPEED = "Overspeed Alarm O"


def counted(number):
    """What the number-th value of a line tells as its speed; the first one has number 1."""
    return (number - 1) % MOST + 1


class Feeder(threading.Thread):
    """Sends a line's frames at its full pace: values, changes of the alarm, curves; the speed counts."""

    def __init__(self, line):
        super().__init__(daemon=True)
        self.line, self.ended = line, False
        self.sent = []  # when the last byte of each value was sent

    def turn(self, number):
        yield frame(measured_values(speed=counted(number)))
        yield frame(status(ALARM[number % 2 == 1]))
        if number % 5 == 0:
            yield b"".join(map(frame, curve("03", [number % 1000] * 256)))

    def write(self, data):
        """False if the feeder was ended meanwhile. A line that is not read makes it wait."""
        while data and not self.ended:
            if select.select([], [self.line.master], [], 0.1)[1]:
                done = os.write(self.line.master, data[:PIECE])
                data = data[done:]
                self.due += done / PACE
                time.sleep(max(0, self.due - time.monotonic()))
            else:
                self.due = time.monotonic()
        return not data

    def run(self):
        self.due = time.monotonic()
        if not self.write(frame(parameter_frame())):
            return
        while not self.ended:
            for index, data in enumerate(self.turn(len(self.sent) + 1)):
                if not self.write(data):
                    return
                if index == 0:
                    self.sent.append(time.monotonic())

    def end(self):
        self.ended = True
        self.join()


class Watcher(threading.Thread):
    """Follows the newest log of a channel and notes when each value came."""

    def __init__(self, plant, number):
        super().__init__(daemon=True)
        names = wait_for(lambda: plant.log_names(number), what="a log")
        self.file = open(plant.folder / "logs" / plant.names[number] / names[-1], "rb", buffering=0)
        self.ended = False
        self.arrived = []

    def run(self):
        rest = b""
        while not self.ended:
            data = rest + self.file.read()
            now = time.monotonic()
            *lines, rest = data.split(b"\r\n")
            self.arrived += [now] * sum(line.startswith(b"<REC1>") for line in lines)
            time.sleep(0.004)

    def end(self):
        self.ended = True
        self.join()
        self.file.close()


class FullPace:
    """A plant whose lines are all fed, and followed; a context that ends with the feeding."""

    def __init__(self, plant):
        self.plant = plant
        self.feeders = {number: Feeder(line) for number, line in plant.lines.items()}
        self.watchers = {}

    def __enter__(self):
        for feeder in self.feeders.values():
            feeder.start()
        try:
            for number in self.feeders:
                wait_for(lambda: self.plant.records(number), what=f"records of channel {number}")
                self.watchers[number] = Watcher(self.plant, number)
                self.watchers[number].start()
        except BaseException:
            self.__exit__()
            raise
        self.begun = time.monotonic()
        return self

    def __exit__(self, *_):
        for thread in [*self.feeders.values(), *self.watchers.values()]:
            thread.ended = True
        for thread in [*self.feeders.values(), *self.watchers.values()]:
            thread.end()

    def settle(self):
        """Ends the feeding and waits until the last value is in its log."""
        for feeder in self.feeders.values():
            feeder.ended = True
        for feeder in self.feeders.values():
            feeder.end()
        for number, feeder in self.feeders.items():
            arrived = self.watchers[number].arrived
            wait_for(lambda: len(arrived) >= len(feeder.sent), 20,
                     f"value {len(feeder.sent)} of channel {number}, {len(arrived)} are there")

    def values(self):
        return sum(len(feeder.sent) for feeder in self.feeders.values())

    def worst_delay(self):
        """Of any value on its way to the log behind the program's start, in seconds."""
        return max(came - sent for number, feeder in self.feeders.items()
                   for came, sent in zip(self.watchers[number].arrived, feeder.sent) if sent > self.begun)

    def check(self, test):
        """Every value is in its log once, in order, and every change of the alarm in log and event file."""
        for number, feeder in self.feeders.items():
            told = [int(record.split()[3]) for record in self.plant.records(number)]
            test.assertEqual(told, [counted(index + 1) for index in range(len(feeder.sent))])
            sent = len(feeder.sent)
            wait_for(lambda: self.alarms(number)[0] >= sent - 1, what="the last change but one")
            wait_for(lambda: len(set(self.alarms(number))) == 1, what="as many events as comments")
            test.assertIn(self.alarms(number)[0], (sent, sent - 1))

    def alarms(self, number):
        """How many changes of the alarm log and event file tell."""
        events = self.plant.text("events/TY_all_events.txt")
        return (self.plant.log(number).count(OVERSPEED),
                events.count(f"{self.plant.names[number]} ## {OVERSPEED}"))
