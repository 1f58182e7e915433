"""Logs read in the plainest way, to compare with what a database makes of them."""

import datetime
import re
from pathlib import Path
from typing import NamedTuple

LINE = re.compile(r"<(REC\d)> (\d\d:\d\d:\d\d) ([\d ]+?) +</REC\d>|<(!|#)-- (\d\d:\d\d:\d\d) (.*) -->")


class Row(NamedTuple):
    """A record, its values as numbers; or a comment or note, whose value is its text."""

    location: str
    at: datetime.datetime
    name: str
    line: int
    kind: str
    value: object


def location_of(name):
    return re.fullmatch(r"\d+Qu_(.+)\.xlg", name)[1]


def name_of(path):
    return bytes(path).rpartition(b"/")[2].decode("cp1252")


def numbers_of(path, tag):
    """Those of a line of the header."""
    found = re.search(rf"<{tag}>([^<]*)</{tag}>", Path(path).read_bytes().decode("cp1252"))
    return found[1].split()


def rows_of(path):
    """The whole lines of a log, in their order."""
    name = name_of(path)
    date = datetime.datetime.strptime(name[:8], "%Y%m%d")
    rows, last = [], datetime.time()
    for number, line in enumerate(Path(path).read_bytes().decode("cp1252").split("\r\n"), 1):
        found = LINE.fullmatch(line)
        if not found:
            continue
        record, record_time, numbers, mark, comment_time, text = found.groups()
        time = datetime.time.fromisoformat(record_time or comment_time)
        if last.hour - time.hour > 12:  # behind midnight
            date += datetime.timedelta(days=1)
        last = time
        kind = record or {"!": "comment", "#": "note"}[mark]
        value = tuple(map(int, numbers.split())) if record else text
        rows.append(Row(location_of(name), datetime.datetime.combine(date, time), name, number, kind, value))
    return rows
