"""How many rows a second `packaging/fleet/load` brings into PostgreSQL, how many bytes a row takes there, and
how long the queries take. `bench/fleet_load.py --help` tells the arguments.

The server is one of its own in the folder for temporary files, as Debian sets it up. The logs are those of
engines at work: measured values every 0.1 s, a curve every 2 s.
"""

import argparse
import datetime
import math
import random
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
XLG = ROOT / "build" / "release" / "xlg"
GOLDEN = ROOT / "tests" / "logging" / "golden" / "six_cylinders_in_line.xlg"
sys.path.insert(0, str(ROOT / "tests" / "fleet"))

from fleet_server import Server  # noqa: E402

TABLES = ("records", "curves")
LONG = 4 * 3600  # seconds that a step may take
PERIOD = {"from": "2026-07-01", "to": "2026-08-01"}
QUERIES = {
    "alarms_per_week": PERIOD,
    "cylinder_drift": PERIOD | {"record": "REC2", "half_width": 3},
    "hours_above": PERIOD | {"value": "tsignal", "threshold": 60, "longest": 10},
    "link_gaps": PERIOD | {"least": 60},
    "worst_cycles": {"month": "2026-07-01", "record": "REC2", "cycles": 20},
}


def write_log(path, chance, hours):
    """Values that wander, and waves for curves."""
    head = GOLDEN.read_bytes().partition(b"<LOG>\r\n")[0]
    moment = datetime.datetime(2026, 7, 2)
    signal, speed, voltage = 50, 1480, 1234
    with path.open("w", encoding="cp1252", newline="") as log:
        log.write(head.decode("cp1252") + "<LOG>\r\n")
        for second in range(hours * 3600):
            at = f"{moment + datetime.timedelta(seconds=second):%H:%M:%S}"
            for _ in range(10):
                signal = min(max(signal + chance.randint(-1, 1), 20), 120)
                speed += chance.randint(-2, 2)
                voltage = min(max(voltage + chance.randint(-9, 9), 0), 9999)
                values = (signal, max(speed, 0), voltage, signal // 2, signal // 9)
                log.write(f"<REC1> {at} {' '.join(map(str, values))} </REC1>\r\n")
            if second % 2 == 0:
                tag, middle = ("REC2", 500) if second % 4 == 0 else ("REC3", 3000)
                wave = " ".join(str(int(middle + middle / 9 * math.sin(sample / 7) + chance.randint(-9, 9)))
                                for sample in range(256))
                log.write(f"<{tag}> {at} {wave}  </{tag}>\r\n")


def count_of(server, table):
    return int(server.ask(f"SELECT count(*) FROM fleet.{table}", timeout=LONG)[0][0])


def sizes(server):
    """Bytes on the disk."""
    for table in TABLES:
        count = count_of(server, table)
        told = server.ask(f"""SELECT sum(pg_total_relation_size(relid)), sum(pg_indexes_size(relid))
                              FROM pg_partition_tree('fleet.{table}')""")
        whole, index = map(int, told[0])
        print(f"{table}: {count:,} rows, {whole / count:.1f} bytes a row, {index / count:.1f} of them index")


def measure(server, paths):
    begin = time.monotonic()
    code, _, complaint = server.load(*paths)
    passed = time.monotonic() - begin
    if code != 0:
        raise RuntimeError(complaint)
    megabytes = sum(path.stat().st_size for path in paths) / 1e6
    rows = sum(count_of(server, table) for table in TABLES)
    print(f"{megabytes:.0f} MB of logs in {passed:.1f} s, {megabytes / passed:.1f} MB a second, "
          f"{rows / passed:,.0f} rows a second")
    sizes(server)
    begin = time.monotonic()
    server.load(*paths)
    print(f"loaded again, nothing new: {time.monotonic() - begin:.2f} s")
    server.ask("VACUUM ANALYZE")
    for name, parameters in QUERIES.items():
        begin = time.monotonic()
        server.query(name, **parameters)
        print(f"{name}: {time.monotonic() - begin:.2f} s")


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("--engines", type=int, default=4)
    parser.add_argument("--hours", type=int, default=6, help="of each engine, 24 at most")
    parser.add_argument("--logs", type=Path, help="keeps the logs there")
    wanted = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        logs = wanted.logs or Path(folder)
        paths = [logs / f"20260702Qu_Engine {number}.xlg" for number in range(wanted.engines)]
        for number, path in enumerate(paths):
            write_log(path, random.Random(number), wanted.hours)
        server = Server(XLG, fsync="on")
        try:
            measure(server, paths)
        finally:
            server.remove()


if __name__ == "__main__":
    main()
