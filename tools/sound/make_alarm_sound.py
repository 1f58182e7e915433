"""Makes the sound of the alarm alert: two tones in turns, like a siren, 1.12 s long.

    python3 tools/sound/make_alarm_sound.py FILE

The same bytes come out everywhere: the waves are sums of whole numbers, no machine's sine takes part.
"""

import struct
import sys

RATE = 22050  # samples a second
HIGH, LOW = 960, 770  # Hz
TONE = 0.14  # seconds
TONES = 8
LOUDEST = 30000  # of 32767
SLOPE = 0.006  # seconds from silence to full loudness and back, so that nothing clicks

SCALE = 1 << 15


def wave(phase):
    """One cycle of a rounded wave for a phase of 0 to SCALE - 1: two parabolas, close to a sine."""
    half, place = divmod(2 * phase, SCALE)
    height = 4 * place * (SCALE - place) // SCALE
    return -height if half else height


def tone(frequency):
    """The samples of one tone."""
    count = round(TONE * RATE)
    slope = round(SLOPE * RATE)
    for index in range(count):
        phase = index * frequency * SCALE // RATE
        # The third harmonic makes the tone sharp enough for a noisy room.
        height = (3 * wave(phase % SCALE) + wave(3 * phase % SCALE)) // 3
        loud = min(index, count - 1 - index, slope)
        yield height * LOUDEST * loud // (SCALE * slope)


def samples():
    return [sample for turn in range(TONES) for sample in tone(LOW if turn % 2 else HIGH)]


def wav():
    """The file's content: 16 bits, one channel."""
    data = b"".join(struct.pack("<h", sample) for sample in samples())
    form = struct.pack("<HHIIHH", 1, 1, RATE, 2 * RATE, 2, 16)
    return chunk(b"RIFF", b"WAVE" + chunk(b"fmt ", form) + chunk(b"data", data))


def chunk(name, content):
    return name + struct.pack("<I", len(content)) + content


if __name__ == "__main__":
    with open(sys.argv[1], "wb") as file:
        file.write(wav())
