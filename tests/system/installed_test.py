"""The program where it is installed: what it finds there, and what its desktop and its starter need."""

import configparser
import gzip
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from desktops import Desktop
from harness import Display, Plant, measured_values, parameter_frame, status, wait_for
from side_by_side import run_side_by_side
from sound_test import SoundServer

RELAY_AND_AC = 0x0088


class Installed(unittest.TestCase):
    def setUp(self):
        self.prefix = pathlib.Path(tempfile.mkdtemp(prefix="tyxo_installed_"))
        self.addCleanup(shutil.rmtree, self.prefix)
        self.install("tyxo")
        self.display = None

    def install(self, component):
        subprocess.run(["cmake", "--install", os.environ["BUILD"], "--prefix", self.prefix,
                        "--component", component], check=True, stdout=subprocess.DEVNULL)

    def on(self, display):
        self.display = display
        self.addCleanup(display.stop)

    def plant(self):
        plant = Plant(self.display)
        self.addCleanup(plant.stop)
        plant.executable = self.prefix / "bin/tyxo"
        return plant

    def complaints(self, plant):
        return [line for line in plant.debug() if line.startswith("PlaySoundA")]

    def test_the_sound_in_the_working_folder_comes_before_the_installed_one(self):
        self.on(Display())
        server = SoundServer()
        self.addCleanup(server.stop)
        self.display.environment["PULSE_SERVER"] = server.address
        plant = self.plant()
        own = plant.folder / "ralarm_1.wav"
        own.write_bytes(b"RIFF")
        plant.start()
        plant.lines[1].send(parameter_frame(), status(RELAY_AND_AC))
        wait_for(lambda: self.complaints(plant), what="a word on the plant's own file")
        self.assertEqual(self.complaints(plant), ["PlaySoundA: the file cannot be played"])
        self.assertEqual(server.bursts(), [])
        own.unlink()
        server.wait_for_bursts(2)
        (self.prefix / "share/tyxo/ralarm_1.wav").unlink()
        wait_for(lambda: len(self.complaints(plant)) > 1, what="a word on no file at all")
        self.assertEqual(self.complaints(plant)[1:], ["PlaySoundA: no such file"])

    def test_a_wayland_desktop_is_told_the_name_of_the_installed_entry(self):
        self.on(Desktop("weston"))
        self.display.environment["WAYLAND_DEBUG"] = "client"
        plant = self.plant()
        plant.start(ready=None)
        told = "set_app_id(\""
        line = wait_for(lambda: next((line for line in plant.debug() if told in line), None), what="its name")
        name = line.partition(told)[2].partition('"')[0]
        entry = configparser.ConfigParser(interpolation=None)
        self.assertTrue(entry.read(self.prefix / f"share/applications/{name}.desktop"), name)
        entry = entry["Desktop Entry"]
        icons = self.prefix / "share/icons/hicolor"
        self.assertTrue((icons / f"scalable/apps/{entry['Icon']}.svg").exists())
        self.assertEqual(len(list(icons.glob(f"*x*/apps/{entry['Icon']}.png"))), 9)
        self.assertTrue((self.prefix / "bin" / entry["Exec"]).exists())
        self.assertTrue((self.prefix / f"share/metainfo/{name}.metainfo.xml").exists())

    def test_everything_that_names_a_version_names_the_same(self):
        components = ["tyxo", "xlg", "xlg-view"]
        for component in components[1:]:
            self.install(component)
        share = self.prefix / "share"
        cache = (pathlib.Path(os.environ["BUILD"]) / "CMakeCache.txt").read_text()
        version = re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.+)$", cache, re.M)[1]
        found = {}
        for metainfo in share.glob("metainfo/*.xml"):
            found[metainfo.name] = re.search(r'<release version="(.+?)"', metainfo.read_text())[1]
        for component in components:
            changelog = gzip.open(share / f"doc/{component}/changelog.Debian.gz", "rt").read()
            found[component] = re.match(r"tyxo \((.+)-\d+\)", changelog)[1]
        for page in share.glob("man/man1/*"):
            found[page.name] = re.search(r'^\.TH .* "Tyxo (\d.*?)"', gzip.open(page, "rt").read(), re.M)[1]
        self.assertEqual(found, dict.fromkeys(found, version))
        self.assertEqual(len(found), 9)

    def starter(self, *words, **options):
        return subprocess.run([self.prefix / "bin/tyxo-plant", *words], stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE, text=True, check=False, **options)

    def test_the_starter_makes_a_plant_of_four_channels(self):
        self.on(Display())
        home = self.prefix / "home of an operator"
        home.mkdir()
        with Started(self.prefix, self.display.environment | {"HOME": str(home)}) as program:
            plant = home / "tyxo"
            wait_for(lambda: list(plant.glob("logs/*")), what="the event file")
            wait_for(lambda: self.display.windows("Tyxo Data Logger"), what="a window")
            self.assertEqual(os.readlink(f"/proc/{program.pid}/exe"), str(self.prefix / "bin/tyxo"))
            settings = (plant / "tyxo.ini").read_text()
            for number in range(1, 5):
                self.assertIn(f"comport {number}={number}\n", settings)
            self.assertEqual(settings, (self.prefix / "share/tyxo/tyxo.ini").read_text())

    def test_the_starter_leaves_a_plant_as_it_is(self):
        self.on(Display())
        plant = self.plant()
        before = plant.text("tyxo.ini")
        with Started(self.prefix, self.display.environment, plant.folder):
            def recorded():
                plant.lines[1].send(parameter_frame(), status(), measured_values())
                return plant.records()

            wait_for(recorded, what="a record")
            self.assertEqual(plant.text("tyxo.ini"), before)

    def test_the_starter_knows_one_folder_and_no_options(self):
        (self.prefix / "bin/tyxo").write_text("#!/bin/sh\nexit 3\n")
        for words in (["--help"], ["-h"], ["one", "two"], [""]):
            done = self.starter(*words, cwd=self.prefix)
            self.assertEqual((done.returncode, done.stderr), (64, "usage: tyxo-plant [FOLDER]\n"), words)
        self.assertEqual(self.starter("one", cwd=self.prefix).returncode, 3)
        self.assertTrue((self.prefix / "one/tyxo.ini").exists())


class Started:
    """The program by its starter, for the time of a block; it ends in order."""

    def __init__(self, prefix, environment, *words):
        self.process = subprocess.Popen([prefix / "bin/tyxo-plant", *words], env=environment,
                                        stderr=subprocess.DEVNULL)

    def __enter__(self):
        return self.process

    def __exit__(self, kind, *_):
        self.process.terminate()
        code = self.process.wait(10)
        if kind is None and code != 0:
            raise AssertionError(f"ended with code {code}")


if __name__ == "__main__":
    run_side_by_side(2)
