"""Loads logs that are there into PostgreSQL, a month of them for instance, and finds every row again: as many
per engine, day and kind, and of each file the same rows, byte for byte as they stand in the log and as
`xlg csv` tells them. Then it loads them once more, and asks the five queries. The logs have to be sound.
`bench/fleet_month.py --help` tells the arguments.

The server is one of its own in the folder for temporary files, as Debian sets it up.
"""

import argparse
import csv
import datetime
import hashlib
import subprocess
import sys
import time
from collections import Counter
from concurrent.futures import ProcessPoolExecutor, ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
XLG = ROOT / "build" / "release" / "xlg"
sys.path.insert(0, str(ROOT / "tests" / "fleet"))

from fleet_load import LONG, QUERIES, sizes  # noqa: E402
from fleet_server import FLEET, Server  # noqa: E402

PLANT = "Plant"

# What a kind of row looks like to the database, as `xlg csv` tells it but for the T within its time.
ROWS = {
    "records": "concat_ws(',', line, at, tsignal, speed, tvoltage, teff_dc, teff_ac)",
    "curves": "concat_ws(',', line, at, record, array_to_string(samples, ','))",
    "comments": "concat_ws(',', line, at, kind, text)",
}


class Rows:
    """Of one kind in one file: their number, on each day, and their SHA-256."""

    def __init__(self):
        self.days = Counter()
        self.sum = hashlib.sha256()

    def take(self, text, dates):
        """Whole lines."""
        self.sum.update(text)
        for date in dates:
            if found := text.count(b",%s " % date):
                self.days[date.decode()] += found

    def told(self):
        return dict(self.days), self.sum.hexdigest()


def dates_of(path):
    """The day of its name, and the next one, in which its last line may lie."""
    day = datetime.datetime.strptime(path.name[:8], "%Y%m%d").date()
    return [b"%d-%02d-%02d" % (date.year, date.month, date.day)
            for date in (day, day + datetime.timedelta(days=1))]


def whole_lines(stream):
    """What comes, cut behind lines."""
    rest = b""
    while block := stream.read(1 << 20):
        text, end, tail = (rest + block).rpartition(b"\n")
        if end:
            yield text + end
        rest = tail
    if rest:
        yield rest


def rows_in_log(path):
    """Read in the plainest way, without the log tool; for each kind."""
    rows = {kind: Rows() for kind in ROWS}
    waiting = {kind: [] for kind in ROWS}
    dates = dates_of(path)
    date, last = dates[0], b"00"
    with path.open("rb") as log:
        for number, line in enumerate(log, 1):
            if line.startswith(b"<REC1> "):
                kind, at, values = "records", line[7:15], line[16:-10].replace(b" ", b",")
            elif line.startswith((b"<REC2> ", b"<REC3> ")):
                kind, at, values = "curves", line[7:15], line[1:5] + b"," + line[16:-11].replace(b" ", b",")
            elif line.startswith((b"<!-- ", b"<#-- ")):
                word = "comment" if line.startswith(b"<!") else "note"
                kind, at, values = "comments", line[5:13], f"{word},{line[14:-6].decode('cp1252')}".encode()
            else:
                continue
            if at[:2] < last and int(last) - int(at[:2]) > 12:  # behind midnight
                date = dates[1]
            last = at[:2]
            waiting[kind].append(b"%d,%s %s,%s\n" % (number, date, at, values))
            if len(waiting[kind]) > 5000:
                rows[kind].take(b"".join(waiting[kind]), dates)
                waiting[kind].clear()
    for kind, rest in waiting.items():
        rows[kind].take(b"".join(rest), dates)
    return {kind: found.told() for kind, found in rows.items()}


def rows_in_table(path, kind):
    """As `xlg csv` tells them, without the name of the file."""
    rows = Rows()
    front = b"%s," % bytes(path)
    with subprocess.Popen([XLG, "csv", "--what", kind, "--jobs", "1", "--", path],
                          stdout=subprocess.PIPE) as reader:
        reader.stdout.readline()
        for text in whole_lines(reader.stdout):
            if kind == "comments":
                told = csv.reader(text.decode().split("\r\n")[:-1])
                text = b"".join(",".join(row).encode() + b"\n" for row in told)
            else:
                text = text.replace(b"\r\n", b"\n")
            text = text.removeprefix(front).replace(b"\n" + front, b"\n")
            rows.take(at_with_blank(text, dates_of(path)), dates_of(path))
    if reader.returncode != 0:
        raise RuntimeError(f"{path}: xlg ended with {reader.returncode}")
    return rows.told()


def at_with_blank(text, dates):
    for date in dates:
        text = text.replace(b",%sT" % date, b",%s " % date)
    return text


def rows_in_database(server, path, kind):
    rows = Rows()
    first = dates_of(path)[0].decode()
    query = f"""COPY (SELECT {ROWS[kind]} FROM fleet.{kind}
        WHERE engine = (SELECT engine FROM fleet.files WHERE name = '{path.name}')
          AND file = (SELECT id FROM fleet.files WHERE name = '{path.name}')
          AND at >= '{first}' AND at < '{first}'::date + interval '2 days' ORDER BY line) TO STDOUT"""
    with subprocess.Popen(["psql", "-X", "--set=ON_ERROR_STOP=1", "-c", query], stdout=subprocess.PIPE,
                          env=server.environment) as asked:
        for text in whole_lines(asked.stdout):
            rows.take(text, dates_of(path))
    if asked.returncode != 0:
        raise RuntimeError(f"{path}: psql ended with {asked.returncode}")
    return rows.told()


def load_all(server, groups):
    """One loader for each group of paths; what they say."""
    words = [FLEET / "load", "--plant", PLANT]
    begin = time.monotonic()
    loaders = [subprocess.Popen([*words, *paths], env=server.environment, stdout=subprocess.PIPE, text=True)
               for paths in groups]
    said = [loader.communicate(timeout=LONG)[0] for loader in loaders]
    codes = {loader.returncode for loader in loaders}
    if codes != {0}:
        raise RuntimeError(f"the loaders ended with {codes}")
    return "".join(said), time.monotonic() - begin


def rows_per_day(server, kind):
    told = server.ask(f"""SELECT location, at::date, count(*) FROM fleet.{kind}
        JOIN fleet.engines ON engines.id = engine GROUP BY location, at::date""", timeout=LONG)
    return {(location, day): int(count) for location, day, count in told}


def find_again(server, paths, jobs):
    """Every row of every log."""
    begin = time.monotonic()
    total = 0
    with ProcessPoolExecutor(jobs) as pool:
        in_logs = list(pool.map(rows_in_log, paths))
    with ThreadPoolExecutor(jobs) as pool:
        for kind in ROWS:
            mine = [rows[kind] for rows in in_logs]
            told = pool.map(lambda path, kind=kind: rows_in_table(path, kind), paths)
            stored = pool.map(lambda path, kind=kind: rows_in_database(server, path, kind), paths)
            other = [path.name for path, *three in zip(paths, mine, told, stored) if three[1:] != three[:-1]]
            if other:
                raise RuntimeError(f"{kind} differ: {other}")
            wanted = Counter()
            for path, (days, _) in zip(paths, mine):
                for day, count in days.items():
                    wanted[path.parent.name, day] += count
            if rows_per_day(server, kind) != dict(wanted):
                raise RuntimeError(f"{kind}: other numbers per engine and day")
            total += sum(wanted.values())
            print(f"{kind}: {sum(wanted.values()):,} rows of {len(paths)} logs, on {len(wanted)} days of "
                  "engines, all found again", flush=True)
    return total, time.monotonic() - begin


def find_events_again(server, paths):
    for path in paths:
        told = subprocess.run([XLG, "events", "--csv", path], check=True, capture_output=True).stdout
        wanted = [(line, at.replace("T", " "), text)
                  for _, line, at, text in list(csv.reader(told.decode().splitlines()))[1:]]
        found = server.ask(f"""SELECT line, at, text FROM fleet.events JOIN fleet.files ON files.id = file
                               WHERE name = '{path.name}' ORDER BY line""")
        if found != wanted:
            raise RuntimeError(f"{path}: other events")
        print(f"events: {len(wanted):,} rows, all found again")


def ask_queries(server, month):
    period = {"from": month, "to": f"{datetime.date.fromisoformat(month) + datetime.timedelta(days=31)}"}
    for name, parameters in QUERIES.items():
        changed = {key: period.get(key, month if key == "month" else value)
                   for key, value in parameters.items()}
        begin = time.monotonic()
        rows = server.query(name, timeout=LONG, **changed)
        print(f"{name}: {time.monotonic() - begin:.1f} s, {len(rows)} rows", flush=True)


def measure(server, folder, jobs):
    """All of it; `folder` has a folder of logs for each engine, and event files."""
    paths = sorted(folder.rglob("*.xlg"))
    events = sorted(folder.rglob("TY_all_events.txt"))
    engines = sorted({path.parent for path in paths})
    groups = [engines[job::jobs] for job in range(min(jobs, len(engines)))]
    groups[0] += events
    megabytes = sum(path.stat().st_size for path in paths) / 1e6
    _, passed = load_all(server, groups)
    print(f"{megabytes:,.0f} MB of {len(paths)} logs in {passed:.0f} s by {len(groups)} loaders, "
          f"{megabytes / passed:.1f} MB a second", flush=True)
    total, took = find_again(server, paths, jobs)
    find_events_again(server, events)
    print(f"{total:,} rows, {total / passed:,.0f} loaded a second; found again in {took:.0f} s", flush=True)
    sizes(server)
    said, passed = load_all(server, groups)
    print(f"loaded again: {passed:.1f} s, {said.count('nothing new')} of {len(paths + events)} files with "
          "nothing new", flush=True)
    forget_and_load(server, paths)
    server.ask("VACUUM ANALYZE", timeout=LONG)
    ask_queries(server, f"{paths[0].name[:4]}-{paths[0].name[4:6]}-01")


def forget_and_load(server, paths):
    """What the database knew of the last day's files is forgotten: the keys keep their rows from doubling."""
    last_day = [path for path in paths if path.name[:8] == paths[-1].name[:8]]
    before = {kind: rows_per_day(server, kind) for kind in ROWS}
    names = ", ".join(f"'{path.name}'" for path in last_day)
    server.ask(f"""UPDATE fleet.files SET bytes = 0, record_line = 0, curve_line = 0, comment_line = 0
                   WHERE name IN ({names})""")
    said, passed = load_all(server, [last_day])
    after = {kind: rows_per_day(server, kind) for kind in ROWS}
    if after != before or said.count("no new rows") != len(last_day):
        raise RuntimeError(f"rows were doubled: {said}")
    print(f"the last day's {len(last_day)} files forgotten and loaded again: {passed:.1f} s, no row doubled",
          flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("folder", type=Path, help="with a folder of logs for each engine")
    parser.add_argument("--jobs", type=int, default=2, help="loaders side by side")
    wanted = parser.parse_args()
    server = Server(XLG, fsync="on")
    try:
        measure(server, wanted.folder.resolve(), wanted.jobs)
    finally:
        server.remove()


if __name__ == "__main__":
    main()
