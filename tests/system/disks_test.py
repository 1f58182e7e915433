"""Disks that are full, refuse or are unmounted, and folders that are moved or deleted under the program while
it logs at full pace: what the disk does not take is lost as whole lines, and what comes behind its return is
logged. ROUNDS in the environment says how often, SEED repeats the moments.

The disks are small file systems in memory, in a name space of the suite's own.
"""

import errno
import os
import random
import re
import shutil
import subprocess
import sys
import time

from full_pace import Feeder, counted
from harness import PlantTest, wait_for
from side_by_side import run_side_by_side

ROUNDS = int(os.environ.get("ROUNDS", "1"))
SEED = int(os.environ.get("SEED", random.randrange(1 << 32)))
NEW_NAMES = "TYXO_OWN_MOUNTS"
AWAY = 1.5  # s
BACK = 2.5  # s
RETURN = 2.0  # s until a disk that is back is taken up: a path is looked at once a second
ERRORS = [errno.EROFS, errno.EIO] if ROUNDS == 1 else [errno.EROFS, errno.EIO, errno.ENOSPC, errno.EDQUOT]
LINE = re.compile(r"<REC1> \d\d:\d\d:\d\d( \d+){5} </REC1>|<REC2> \d\d:\d\d:\d\d( \d+){256}  </REC2>|"
                  r"<!-- \d\d:\d\d:\d\d .* -->")


def mount(*words):
    subprocess.run(["mount", *map(str, words)], check=True)


class Disks(PlantTest):
    def setUp(self):
        self.chance = random.Random(SEED)

    def small_disk(self, kilobytes=2000):
        """A plant with the logs of its four channels on a file system of its own."""
        paths = {f"logpath__{number}": "./disk/logs/" for number in range(1, 5)}
        plant = self.plant(channels=4, **paths)
        disk = plant.folder / "disk"
        disk.mkdir()
        mount("-t", "tmpfs", "-o", f"size={kilobytes}k", "tmpfs", disk)
        (disk / "logs").mkdir()
        self.addCleanup(subprocess.run, ["umount", "-l", disk], stderr=subprocess.DEVNULL, check=False)
        return plant, disk

    def measure(self, what, plant, disk, rounds):
        """The rounds are pairs of functions: the fault, and its end."""
        feeders = {number: Feeder(line) for number, line in plant.lines.items()}
        plant.start()
        for feeder in feeders.values():
            feeder.start()
        away = []
        wait_for(lambda: len(self.logs(disk)) == 4, what="the logs")
        for begin, end in rounds:
            time.sleep(self.chance.uniform(0.2, 0.5))
            gone = time.monotonic()
            begin()
            time.sleep(AWAY)
            end()
            away.append((gone, time.monotonic() + RETURN))
            time.sleep(BACK)
        time.sleep(0.5)
        for feeder in feeders.values():
            feeder.end()
        time.sleep(0.5)
        self.assertIsNone(plant.program.poll())
        self.check(what, plant, disk, feeders, away)

    def logs(self, disk):
        return sorted(disk.rglob("*.xlg"))

    def check(self, what, plant, disk, feeders, away):
        lost = sent = 0
        for number, feeder in feeders.items():
            speeds = []
            for log in disk.rglob(f"{plant.names[number]}*/*.xlg"):
                speeds += self.speeds_of(log)
            for index, when in enumerate(feeder.sent):
                if counted(index + 1) in speeds:
                    continue
                self.assertTrue(any(gone - 0.1 < when < back for gone, back in away),
                                f"channel {number}: value {index + 1} is lost beside the fault")
                lost += 1
            self.assertEqual(len(speeds), len(set(speeds)), "a value twice")
            self.assertIn(counted(len(feeder.sent)), speeds, "the last value is there")
            sent += len(feeder.sent)
        print(f"SEED={SEED}: {what} {len(away)} times for {AWAY:g} s: {sent} values, {lost} of the time of "
              f"the fault lost, none else")

    def speeds_of(self, log):
        text = log.read_bytes().decode("cp1252")
        self.assertRegex(text, r"\A<\?xml version", f"a log without a header: {log}")
        self.assertEqual(text.count("<LOG>\r\n"), 1)
        *lines, rest = text.split("<LOG>\r\n")[1].split("\r\n")
        self.assertEqual(rest, "", "a torn line")
        for line in lines:
            self.assertTrue(LINE.fullmatch(line), f"a torn line: {line[:80]!r}")
        return [int(line.split()[3]) for line in lines if line.startswith("<REC1>")]

    def test_a_full_disk_and_room_again(self):
        plant, disk = self.small_disk()

        def fill():
            with open(disk / "ballast", "wb", buffering=0) as ballast:
                try:
                    while ballast.write(b"x" * 1000):
                        pass
                except OSError:
                    return

        self.measure("disk full", plant, disk, [(fill, (disk / "ballast").unlink)] * ROUNDS)

    def test_a_disk_that_takes_nothing_and_takes_it_again(self):
        """As a disk does that the system has made read-only behind an error, or a share."""
        plant, disk = self.small_disk()
        store, refused = disk / "store", disk / "store" / "refused"
        store.mkdir()
        server = subprocess.Popen([os.environ["SYSTEM_PYTHON"], "-B", "slow_disk.py", store, disk / "logs"])
        self.addCleanup(server.wait)
        self.addCleanup(subprocess.run, ["umount", "-l", disk / "logs"], check=False)
        wait_for(lambda: os.path.ismount(disk / "logs"), what="the disk")

        def refuse(number):
            (store / "writing").write_text(str(number))
            (store / "writing").rename(refused)

        rounds = [(lambda number=number: refuse(number), refused.unlink) for number in ERRORS * ROUNDS]
        self.measure("disk that refuses", plant, store, rounds)

    def test_an_unmounted_disk_and_mounted_again(self):
        plant, disk = self.small_disk()
        store = plant.folder / "store"
        store.mkdir()
        mount("--bind", disk, store)
        self.addCleanup(subprocess.run, ["umount", "-l", store], stderr=subprocess.DEVNULL, check=False)
        self.measure("disk unmounted", plant, store,
                     [(lambda: subprocess.run(["umount", "-l", disk], check=True),
                       lambda: mount("--bind", store, disk))] * ROUNDS)

    def test_a_moved_folder_and_back(self):
        plant, disk = self.small_disk()
        logs = disk / "logs"

        def back():
            for new in logs.glob("*/*.xlg"):  # what was begun meanwhile is kept beside the old ones
                kept = disk / "meanwhile" / str(time.monotonic_ns()) / new.parent.name
                kept.mkdir(parents=True)
                new.rename(kept / new.name)
            shutil.rmtree(logs, ignore_errors=True)
            (disk / "moved").rename(logs)

        self.measure("folder moved", plant, disk, [(lambda: logs.rename(disk / "moved"), back)] * ROUNDS)

    def test_a_deleted_folder_and_made_again(self):
        plant, disk = self.small_disk()
        kept = disk / "kept"

        def delete():
            shutil.copytree(disk / "logs", kept / str(time.monotonic_ns()))
            shutil.rmtree(disk / "logs")

        self.measure("folder deleted", plant, disk,
                     [(delete, lambda: (disk / "logs").mkdir(exist_ok=True))] * ROUNDS)


if __name__ == "__main__":
    os.environ["SEED"] = str(SEED)  # the cases' own
    if NEW_NAMES not in os.environ:
        os.environ[NEW_NAMES] = "1"
        names = ["unshare", "--mount"] + (["--map-root-user"] if os.getuid() else [])
        os.execvp("unshare", [*names, sys.executable, "-B", *sys.argv])
    run_side_by_side(3)
