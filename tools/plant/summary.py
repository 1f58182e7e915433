"""What a run of the plant has left: frames, log lines, events, and what the plant controller received."""

import re
from collections import Counter
from pathlib import Path

CHANNELS = range(1, 5)
BLOCKS = (1, 8, 3, 4)  # in the order in which they are sent
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


def frames_at_controller(report):
    """Frames by block that the plant controller received of each channel, by its last report."""
    received = {}
    for number, counted in re.findall(r"^channel (\d) frames(.*)$", report, re.MULTILINE):
        received[int(number)] = {int(block): int(count)
                                 for block, count in re.findall(r"(\d+)=(\d+)", counted)}
    return received


def last_words(report):
    """What the controller's registers said of each channel in its last report: lines without the channel."""
    last = report[max(report.rfind("channel 1 frames"), 0):]
    words = {}
    for number, line in re.findall(r"^channel (\d): (.*)$", last, re.MULTILINE):
        words.setdefault(int(number), []).append(line)
    return words


def controller_table(report):
    """The frames by channel and block, and beneath what the registers hold."""
    received = frames_at_controller(report)
    words = last_words(report)
    lines = ["Plant controller",
             "  channel  " + "".join(f"{f'block {block}':>9}" for block in BLOCKS) + "      all"]
    for channel in CHANNELS:
        counted = [received.get(channel, {}).get(block, 0) for block in BLOCKS]
        lines.append(f"  {channel:>7}  " + "".join(f"{count:>9}" for count in counted) + f"{sum(counted):>9}")
    for channel in CHANNELS:
        lines += [f"  channel {channel}: {line}" for line in words.get(channel, [])]
    return lines


def summary(plant, report, controller_report=""):
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
    lines += controller_table(controller_report)
    pictures = sorted((plant / "pictures").glob("*.png"))
    for name, file in [("Event file", plant / "logs" / "TY_all_events.txt"),
                       ("Settings", plant / "tyxo.ini"),
                       ("Debug output", plant / "debug.log"),
                       ("Evaluators", plant / "evaluator.log"),
                       ("Controller", plant / "controller.log"),
                       *(("Picture", picture) for picture in pictures)]:
        if file.exists():
            lines.append(f"{name:<14} {file}")
    return lines
