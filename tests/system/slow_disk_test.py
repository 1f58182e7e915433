"""Logs and event file on a disk whose syncs or writes take 3 seconds, and on one that goes away."""

import os
import pathlib
import subprocess
import tempfile
import time

from harness import PlantTest, frame, measured_values, parameter_frame, status, wait_for
from side_by_side import run_side_by_side

SECONDS = 3
GRANTED = 0.2  # for the reaction to a frame on a machine with other work


class SlowDisk(PlantTest):
    def slow_plant(self, **settings):
        """A plant whose logs and event file lie on the slow disk, which is still fast."""
        store = pathlib.Path(tempfile.mkdtemp(prefix="tyxo_store_"))
        plant = self.plant(logpath__1="./slow/logs/", evtpath="./slow/events/", **settings)
        mount = plant.folder / "slow"
        for folder in (mount, store / "logs", store / "events"):
            folder.mkdir()
        self.slow_down(store, 0)
        disk = subprocess.Popen([os.environ["SYSTEM_PYTHON"], "-B", "slow_disk.py", store, mount])

        def away():
            subprocess.run(["fusermount3", "-u", "-z", mount], check=False, stderr=subprocess.DEVNULL)
            disk.wait()
            subprocess.run(["rm", "-r", store], check=True)

        # The program goes first: the plant's own end comes behind this one and finds nothing to do.
        self.addCleanup(away)
        self.addCleanup(lambda: (plant.program.kill(), plant.program.wait()))
        wait_for(lambda: os.path.ismount(mount), what="the slow disk")
        return plant, store

    @staticmethod
    def slow_down(store, seconds, what="sync_seconds"):
        (store / what).write_text(str(seconds))

    @staticmethod
    def syncs(store):
        path = store / "syncs"
        return path.read_text().splitlines() if path.exists() else []

    def events(self, store):
        path = store / "events/TY_all_events.txt"
        return path.read_bytes().decode("cp1252").split("\r\n") if path.exists() else []

    def log(self, store):
        return "".join(path.read_bytes().decode("cp1252") for path in (store / "logs").glob("*/*.xlg"))

    def speeds(self, store):
        lines = self.log(store).split("\r\n")[:-1]  # the last one may be on its way
        return [int(line.split()[3]) for line in lines if line.startswith("<REC1> ")]

    def worst_delay(self, plant, seconds):
        """Of channel 2's records, on the fast disk, behind alarms and values of channel 1 on the slow one."""
        worst, count, end = 0.0, 0, time.monotonic() + seconds
        log = open(plant.folder / "logs" / plant.names[2] / plant.log_names(2)[0], encoding="cp1252")
        self.addCleanup(log.close)
        while time.monotonic() < end:
            count += 1
            alarm = status(0x2020 if count % 2 else 0x20)
            plant.lines[1].raw(frame(alarm) + frame(measured_values(speed=count)))
            time.sleep(0.005)
            plant.lines[2].raw(frame(measured_values(speed=count)))
            sent = time.monotonic()
            new = ""
            while f" 41 {count} " not in new:
                self.assertLess(time.monotonic() - sent, 10)
                time.sleep(0.001)
                new += log.read()
            worst = max(worst, time.monotonic() - sent)
        return worst, count

    def started(self):
        plant, store = self.slow_plant(channels=2)
        plant.start()
        for line in plant.lines.values():
            line.send(parameter_frame())
        wait_for(lambda: "<LOG>" in self.log(store) and "<LOG>" in plant.log(2), what="the logs")
        return plant, store

    def nothing_is_lost(self, store, alarms):
        self.slow_down(store, 0)
        wait_for(lambda: sum("Overspeed" in line for line in self.events(store)) == alarms, 20, "all alarms")
        wait_for(lambda: len(self.speeds(store)) == alarms, 20, "all records")
        self.assertEqual(self.speeds(store), list(range(1, alarms + 1)))

    def test_a_sync_of_three_seconds_delays_no_frame(self):
        plant, store = self.started()
        self.slow_down(store, SECONDS)
        worst, alarms = self.worst_delay(plant, 3 * SECONDS)
        syncs = len(self.syncs(store))
        print(f"{alarms} alarms and records beside {syncs} syncs of {SECONDS} s each, "
              f"worst delay of a frame {1000 * worst:.0f} ms")
        self.assertGreaterEqual(syncs, 3)
        self.assertLess(worst, GRANTED)
        self.nothing_is_lost(store, alarms)

    def test_a_write_of_three_seconds_delays_no_frame(self):
        plant, store = self.started()
        self.slow_down(store, SECONDS, "write_seconds")
        worst, alarms = self.worst_delay(plant, 2 * SECONDS)
        print(f"{alarms} alarms and records beside writes of {SECONDS} s each, "
              f"worst delay of a frame {1000 * worst:.0f} ms")
        self.assertLess(worst, GRANTED)
        self.slow_down(store, 0, "write_seconds")
        self.nothing_is_lost(store, alarms)

    def test_a_disk_that_is_unmounted_and_comes_back_is_taken_up_again(self):
        plant, store = self.slow_plant()
        plant.start()
        plant.lines[1].send(parameter_frame(), measured_values(speed=1))
        wait_for(lambda: " 41 1 " in self.log(store), what="the first record")
        mount = plant.folder / "slow"
        subprocess.run(["fusermount3", "-u", "-z", mount], check=True)
        for second in range(3):
            time.sleep(1.1)
            plant.lines[1].send(measured_values(speed=100 + second))
        disk = subprocess.Popen([os.environ["SYSTEM_PYTHON"], "-B", "slow_disk.py", store, mount])
        self.addCleanup(disk.wait)
        self.addCleanup(lambda: subprocess.run(["fusermount3", "-u", "-z", mount], check=False,
                                               stderr=subprocess.DEVNULL))
        wait_for(lambda: os.path.ismount(mount), what="the disk's return")
        time.sleep(1.1)
        plant.lines[1].send(measured_values(speed=200))
        wait_for(lambda: " 41 200 " in self.log(store), what="the record on the disk that came back")
        self.assertEqual(self.log(store).count("<LOG>"), 1)
        self.assertTrue(any(line.startswith("log opened anew : ") for line in plant.debug()))


if __name__ == "__main__":
    run_side_by_side(3)
