"""What the Evaluators tell during an operator's day, and the events and records that must come of it."""

import threading

from harness import status

ENGINES = ["Port main", "Starboard main", "Generator 1", "Generator 2"]

# Words of the alarm status: what it is about, its relay, ready.
READY = 0x0020
PREALARM = 0x4000 | 0x0001 | 0x0040 | READY
MAIN_ALARM = 0x8000 | 0x0002 | 0x0080 | READY

WHEN = "##;mm-dd-yyyy;hh:mm:ss;"
BOX = "mm-dd-yyyy hh:mm:ss "
STARTED = WHEN + "Tyxo Logger software started !"
STOPPED = WHEN + "Tyxo Data Logger software stopped !"


def everywhere(text):
    return [f"KVD {engine} ## {text} " for engine in ENGINES]


# What the shift's events were, in their order; the alert's confirmation stands in the box alone.
RESTART = "KVD Generator 1 ## Restart Alarm Inhibit Time"
CONFIRMED = "Mainalarm confirmed by operator!"
BEFORE_CONFIRMATION = [*everywhere("Measure started"),
                       "KVD Port main ## Prealarm DC ON", "KVD Port main ## Prealarm ON",
                       "KVD Starboard main ## Main Alarm DC ON", "KVD Starboard main ## Main Alarm ON"]
AFTER_CONFIRMATION = ["KVD Starboard main ## Main Alarm DC OFF", "KVD Starboard main ## Main Alarm OFF",
                      "KVD Port main ## Prealarm DC OFF", "KVD Port main ## Prealarm OFF",
                      "KVD Generator 1 ## Alarm Inhibit ON", RESTART,
                      "KVD Generator 1 ## Alarm Inhibit OFF",
                      *everywhere("Measure stopped"), *everywhere("Measure started")]


def record(speed):
    return f"<REC1> hh:mm:ss 41 {speed} 1234 38 12 </REC1>"


def comment(text):
    return f"<!-- hh:mm:ss {text} -->"


# What stands behind the header of each channel's log.
LOGS = {1: [record(701), comment("KVD Prealarm DC ON"), comment("KVD Prealarm ON"),
            comment("KVD Prealarm DC OFF"), comment("KVD Prealarm OFF"), record(720),
            comment("Measure Stopped")],
        2: [record(702), comment("KVD Main ALARM DC ON"), comment("KVD Main ALARM ON"), record(710),
            comment("KVD Main ALARM DC OFF"), comment("KVD Main ALARM OFF"), comment("Measure Stopped")],
        3: [record(703), comment("KVD Alarm Inhibit ON"), comment(RESTART), comment("KVD Alarm Inhibit OFF"),
            comment("Measure Stopped")],
        4: [record(704), comment("Measure Stopped"), record(799)]}


class Evaluators(threading.Thread):
    """Tell the state of each channel every second, so that no link is given up; a state that is told again is
    no event."""

    def __init__(self, lines):
        super().__init__(daemon=True)
        self.lines = lines
        self.states = {number: status(READY) for number in lines}
        self.one_at_a_time = threading.Lock()
        self.end = threading.Event()
        self.start()

    def run(self):
        while not self.end.wait(1):
            for number in self.lines:
                self.send(number, self.states[number])

    def send(self, number, *bodies):
        with self.one_at_a_time:
            self.lines[number].send(*bodies)

    def tell(self, number, *word, **more):
        self.states[number] = status(*word, **more)
        self.send(number, self.states[number])
