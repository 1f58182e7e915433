"""The alarm's sound as it is heard: a real sound server plays it into a sink that is recorded."""

import array
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

from harness import Display, PlantTest, status, wait_for
from side_by_side import run_side_by_side

RELAY_AND_AC = 0x0088
SOUND = pathlib.Path(__file__).parents[2] / "data/ralarm_1.wav"
PERIOD, LENGTH = 1.2, 1.12  # seconds
TOLERANCE = 0.1
NO_SERVER = "PlaySoundA: no sound server"
NO_ANSWER = "PlaySoundA: the sound server does not answer"
RATE = 8000  # of the recording, samples a second
STEP = 40  # samples that are loud or not
LOUD = 1000  # of 32767
PAUSE = 0.03  # seconds of silence between two bursts; two tones of one burst are closer


def bursts(recording):
    """Start and end of each burst, in seconds of the recording."""
    samples = array.array("h", recording[:len(recording) // 2 * 2])
    found = []
    for start in range(0, len(samples), STEP):
        if max(map(abs, samples[start:start + STEP])) < LOUD:
            continue
        begin, end = start / RATE, (start + STEP) / RATE
        if found and begin - found[-1][1] < PAUSE:
            found[-1][1] = end
        else:
            found.append([begin, end])
    return found


class SoundServer:
    """A sound server of its own, whose only sink nobody hears and everything is recorded from."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="tyxo_sound_")
        self.address = f"unix:{self.folder}/native"
        self.environment = {"PATH": os.environ["PATH"], "HOME": self.folder,
                            "PULSE_RUNTIME_PATH": self.folder, "PULSE_SERVER": self.address}
        self.process = self.recorder = None
        self.start()

    def start(self):
        self.process = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
             "--realtime=no", "--high-priority=no",
             f"--load=module-native-protocol-unix auth-anonymous=1 socket={self.folder}/native",
             "--load=module-null-sink sink_name=heard norewinds=1"],
            env=self.environment, stderr=subprocess.DEVNULL)
        wait_for(self.answers, what="the sound server")
        self.file = open(f"{self.folder}/recording", "w+b")
        self.recorder = subprocess.Popen(
            ["parec", "--device=heard.monitor", "--raw", "--format=s16le", f"--rate={RATE}", "--channels=1",
             "--latency-msec=20"], env=self.environment, stdout=self.file, stderr=subprocess.DEVNULL)
        wait_for(self.recording, what="the recording")

    def answers(self):
        return subprocess.run(["pactl", "info"], env=self.environment, capture_output=True).returncode == 0

    def recording(self):
        return os.pread(self.file.fileno(), 1 << 30, 0)

    def bursts(self):
        return bursts(self.recording())

    def wait_for_bursts(self, count):
        """So many that began, the last one not whole."""
        return wait_for(lambda: (found := self.bursts())[count - 1:] and found, 2 * PERIOD * (count + 2),
                        f"{count} bursts")

    def kill(self):
        for process in (self.process, self.recorder):
            process.kill()
            process.wait()
        self.file.close()

    def stop(self):
        if self.process.poll() is None:
            self.kill()
        shutil.rmtree(self.folder)


class Sound(PlantTest):
    @classmethod
    def setUpClass(cls):
        cls.display = Display(window_manager=True)

    def server(self):
        server = SoundServer()
        self.addCleanup(server.stop)
        return server

    def started(self, server):
        plant = self.plant()
        shutil.copy(SOUND, plant.folder / "ralarm_1.wav")
        self.display.environment["PULSE_SERVER"] = server.address
        others = self.display.windows("Tyxo Data Logger")
        plant.start(ready=None)
        wait_for(lambda: len(self.display.windows("Tyxo Data Logger")) > len(others), what="a window")
        return plant

    def raise_alarm(self, plant):
        plant.lines[1].send(status(), status(RELAY_AND_AC))
        self.display.window("^Mainalarm$")

    def confirm(self):
        self.display.confirm_alarm()
        wait_for(lambda: not self.display.windows("^Mainalarm$"), what="the alert's end")

    def check_pace(self, found):
        distances = [round(later[0] - sooner[0], 3) for sooner, later in zip(found, found[1:])]
        print(f"bursts {[round(start, 3) for start, _ in found]}, distances {distances}")
        for distance in distances:
            self.assertAlmostEqual(distance, PERIOD, delta=TOLERANCE)

    def complaints(self, plant):
        return [line for line in plant.debug() if line.startswith("PlaySoundA")]

    def test_the_whole_sound_is_heard_every_1200_ms_until_the_confirmation(self):
        server = self.server()
        plant = self.started(server)
        self.raise_alarm(plant)
        found = server.wait_for_bursts(5)
        self.check_pace(found)
        for start, end in found[:-1]:
            self.assertAlmostEqual(end - start, LENGTH, delta=0.03)
        self.confirm()
        count = len(server.bursts())
        time.sleep(2 * PERIOD)
        self.assertEqual(len(server.bursts()), count)
        self.assertEqual(self.complaints(plant), [])

    def check_outage(self, seconds):
        """Of the servers of two programs, one in an alarm and one between two."""
        servers = [self.server(), self.server()]
        between, during = map(self.started, servers)
        self.raise_alarm(between)
        servers[0].wait_for_bursts(1)
        self.confirm()
        self.raise_alarm(during)
        servers[1].wait_for_bursts(1)
        for server in servers:
            server.kill()
        time.sleep(seconds)
        for server in servers:
            server.start()
        self.check_pace(servers[1].wait_for_bursts(5)[1:])
        self.confirm()
        self.raise_alarm(between)
        self.check_pace(servers[0].wait_for_bursts(4))
        self.assertEqual(self.complaints(between), [])
        if seconds > PERIOD:
            self.assertEqual(self.complaints(during), [NO_SERVER])

    def test_a_server_that_was_away_for_half_a_second_is_found_again(self):
        self.check_outage(0.5)

    def test_a_server_that_was_away_for_3_s_is_found_again(self):
        self.check_outage(3)

    def test_a_server_that_was_away_for_30_s_is_found_again(self):
        self.check_outage(30)

    def test_a_server_that_hangs_is_found_again_and_takes_nothing_from_the_program(self):
        server = self.server()
        plant = self.started(server)
        self.raise_alarm(plant)
        server.wait_for_bursts(1)
        before = self.holdings(plant)
        server.process.send_signal(signal.SIGSTOP)
        wait_for(lambda: self.complaints(plant), what="a complaint")
        time.sleep(2 * PERIOD)
        for now, then in zip(self.holdings(plant), before):
            self.assertLessEqual(now, then + 3)
        server.process.send_signal(signal.SIGCONT)
        count = len(server.bursts())
        self.check_pace(server.wait_for_bursts(count + 4)[-3:])
        self.assertEqual(self.complaints(plant), [NO_ANSWER])

    def test_a_server_that_hangs_does_not_hold_up_the_end(self):
        server = self.server()
        plant = self.started(server)
        server.process.send_signal(signal.SIGSTOP)
        self.raise_alarm(plant)
        time.sleep(PERIOD)
        self.display.ask_to_close(self.display.window("Tyxo Data Logger"))
        lock = self.display.window("stop data logging")
        start = time.monotonic()
        self.display.press(lock, "Tab", "space")
        self.assertEqual(plant.program.wait(5), 0)
        print(f"ended after {time.monotonic() - start:.3f} s, the keys included")
        self.assertLess(time.monotonic() - start, 1)

    def holdings(self, plant):
        """Threads and descriptors of the program."""
        return [len(os.listdir(f"/proc/{plant.program.pid}/{kind}")) for kind in ("task", "fd")]


if __name__ == "__main__":
    run_side_by_side(2, longest=["30_s"])
