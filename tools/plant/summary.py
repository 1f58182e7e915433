"""What a run of the plant has left: frames received, log lines, events."""

import re
from collections import Counter
from pathlib import Path

CHANNELS = range(1, 5)
RECORDS = ("REC1", "REC2", "REC3")


def frames_received(report):
    """Frames by code that went over each channel's open line, by the last report of the Evaluators."""
    received = {}
    for number, codes in re.findall(r"^channel (\d) frames(.*)$", report, re.MULTILINE):
        received[int(number)] = {code: int(count) for code, count in re.findall(r"(\S+)=(\d+)", codes)}
    return received


def log_lines(text):
    """Lines behind a log's header by their kind: the records, and "comments" of both forms."""
    kinds = Counter()
    for line in text.partition("<LOG>")[2].splitlines():
        record = re.match(r"<(REC\d)>", line)
        if record:
            kinds[record[1]] += 1
        elif line.startswith(("<!--", "<#--")):
            kinds["comments"] += 1
    return kinds


def logged(folder):
    """Log lines of each channel and its files, in the folders "Engine 1" to "Engine 4"."""
    result = {}
    for channel in CHANNELS:
        files = sorted(Path(folder).glob(f"Engine {channel}/*.xlg"))
        kinds = Counter()
        for file in files:
            kinds += log_lines(file.read_text("cp1252", errors="replace"))
        result[channel] = (kinds, files)
    return result


def all_logged(logs):
    """True when every channel has a measured value in its log."""
    return all(logs[channel][0]["REC1"] > 0 for channel in CHANNELS)


def counts(kinds):
    return ", ".join(f"{kinds[kind]} {kind}" for kind in (*RECORDS, "comments"))


def events(folder):
    file = Path(folder) / "TY_all_events.txt"
    return file.read_text("cp1252", errors="replace").splitlines() if file.exists() else []


def summary(plant, report):
    """The whole of it in lines; `plant` is the folder, seen from where its reader is."""
    received = frames_received(report)
    logs = logged(plant / "logs")
    lines = []
    for channel, (kinds, files) in logs.items():
        codes = received.get(channel, {})
        by_code = ", ".join(f"{count} :{code}" for code, count in codes.items())
        lines += [f"Channel {channel}",
                  f"  frames received  {sum(codes.values())} ({by_code})",
                  f"  log lines        {sum(kinds.values())} ({counts(kinds)})",
                  *(f"  log              {file}" for file in files)]
    happened = events(plant / "logs")
    lines += [f"Events         {len(happened)}", *(f"  {event}" for event in happened)]
    pictures = sorted((plant / "pictures").glob("*.png"))
    for name, file in [("Event file", plant / "logs" / "TY_all_events.txt"),
                       ("Settings", plant / "tyxo.ini"),
                       ("Debug output", plant / "debug.log"),
                       ("Evaluators", plant / "evaluator.log"),
                       *(("Picture", picture) for picture in pictures)]:
        if file.exists():
            lines.append(f"{name:<14} {file}")
    return lines
