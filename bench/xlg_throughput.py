"""What `xlg` reads a second, beside `wc -l` on the same file.

The file is a golden log whose lines are repeated: curves take most of it, as in a log of a running engine.
Another one has measured values alone, the shortest lines. Both lie in memory. The best of some rounds counts.
"""

import argparse
import os
import resource
import subprocess
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
XLG = ROOT / "build" / "release" / "xlg"
GOLDEN = ROOT / "tests" / "logging" / "golden" / "six_cylinders_in_line.xlg"


def repeated(path, head, lines, size):
    """A file of this size at least: the head, and the lines over and over."""
    piece = lines * max(1, 1_000_000 // len(lines))
    with path.open("wb") as file:
        file.write(head)
        while file.tell() < size:
            file.write(piece)
    return path


def seconds(words):
    """Wall and processor time of a command."""
    def processor():
        usage = resource.getrusage(resource.RUSAGE_CHILDREN)
        return usage.ru_utime + usage.ru_stime

    begin, used = time.monotonic(), processor()
    subprocess.run(words, check=True, stdout=subprocess.DEVNULL)
    return time.monotonic() - begin, processor() - used


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--megabytes", type=int, default=1000, help="of each file; 1000 unless told")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="files at a time, at most")
    arguments = parser.parse_args()
    head, _, lines = GOLDEN.read_bytes().partition(b"<LOG>\r\n")
    head += b"<LOG>\r\n"
    with tempfile.TemporaryDirectory(dir="/dev/shm") as folder:
        size = arguments.megabytes * 1_000_000
        curves = repeated(Path(folder, "curves.xlg"), head, lines, size)
        record = lines.partition(b"\n")[0] + b"\n"
        values = repeated(Path(folder, "values.xlg"), head, record, size)
        rows = {}
        for path, name in ((curves, "curves"), (values, "measured values")):
            rows[f"wc -l, {name}"] = 1, ["wc", "-l", path]
            rows[f"check, {name}"] = 1, [XLG, "check", path]
        rows["summary, curves"] = 1, [XLG, "summary", curves]
        rows["csv, measured values"] = 1, [XLG, "csv", values]
        rows["csv, curves"] = 1, [XLG, "csv", "--what", "curves", curves]
        for jobs in sorted({2, arguments.jobs}):
            rows[f"check, {jobs} x curves, --jobs {jobs}"] = jobs, [XLG, "check", "--jobs", str(jobs),
                                                                   *[curves] * jobs]
        best = {}
        for _ in range(arguments.rounds):
            for name, (_, words) in rows.items():
                best[name] = min(best.get(name, (1e9, 1e9)), seconds(words))
        print(f"{'':36} {'MB/s':>8} {'s processor':>12}")
        for name, (files, _) in rows.items():
            wall, processor = best[name]
            print(f"{name:36} {files * arguments.megabytes / wall:8.0f} {processor:12.2f}")


if __name__ == "__main__":
    main()
