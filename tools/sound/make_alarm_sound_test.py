"""The alarm's sound: the file in the repository is what the program makes, and it is what an alarm needs."""

import io
import math
import struct
import subprocess
import sys
import tempfile
import unittest
import wave
from pathlib import Path

import make_alarm_sound

HERE = Path(__file__).resolve().parent
FILE = HERE.parents[1] / "data" / "ralarm_1.wav"


def power(samples, frequency, rate):
    """How much of a frequency is in the samples."""
    turn = 2 * math.pi * frequency / rate
    real = sum(sample * math.cos(turn * index) for index, sample in enumerate(samples))
    imaginary = sum(sample * math.sin(turn * index) for index, sample in enumerate(samples))
    return (real * real + imaginary * imaginary) / len(samples)


class AlarmSoundTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with wave.open(io.BytesIO(FILE.read_bytes())) as file:
            cls.form = file.getparams()
            data = file.readframes(cls.form.nframes)
        cls.samples = struct.unpack(f"<{cls.form.nframes}h", data)

    def tones(self):
        """The file in pieces of one tone each."""
        length = round(make_alarm_sound.TONE * self.form.framerate)
        return [self.samples[start:start + length] for start in range(0, len(self.samples), length)]

    def test_the_program_makes_the_file_byte_for_byte(self):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder) / "again.wav"
            subprocess.run([sys.executable, "-B", HERE / "make_alarm_sound.py", file], check=True)
            self.assertEqual(file.read_bytes(), FILE.read_bytes())

    def test_it_is_16_bits_on_one_channel(self):
        self.assertEqual((self.form.nchannels, self.form.sampwidth, self.form.framerate), (1, 2, 22050))
        self.assertEqual(self.form.comptype, "NONE")

    def test_it_ends_before_it_starts_anew(self):
        self.assertGreater(self.form.nframes / self.form.framerate, 1.0)
        self.assertLess(self.form.nframes / self.form.framerate, 1.2)

    def test_two_tones_take_turns(self):
        frequencies = range(200, 4000, 10)
        for turn, samples in enumerate(self.tones()):
            powers = {frequency: power(samples, frequency, self.form.framerate) for frequency in frequencies}
            strongest = max(powers, key=powers.get)
            self.assertEqual(strongest, 770 if turn % 2 else 960)
        self.assertEqual(len(self.tones()), 8)

    def test_it_is_loud_and_not_clipped(self):
        for samples in self.tones():
            peak = max(map(abs, samples))
            self.assertGreater(peak, 20000)
            self.assertLess(peak, 32767)

    def test_nothing_clicks(self):
        for samples in self.tones():
            self.assertEqual((samples[0], samples[-1]), (0, 0))
            self.assertLess(max(abs(sample) for sample in samples[:20]), 5000)


if __name__ == "__main__":
    unittest.main()
