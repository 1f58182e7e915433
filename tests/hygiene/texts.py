"""Checks of names and texts. Each takes a tree and yields its findings."""

import re
from collections import Counter

# Marks of unfinished work, skipped tests, home folders. Put together from pieces, so that this file does not
# find itself.
FORBIDDEN = [re.compile(pattern) for pattern in (
    r"\b(TO" r"DO|FIX" r"ME|XX" r"X|HA" r"CK)\b",
    r"GTEST_" r"SKIP|Q" r"SKIP|DISABLED" r"_|skip" r"Test",
    r"(^|[^A-Za-z0-9_.])/(home/\w|ro" r"ot\b)",
)]
# Texts that others wrote and that stay as they are.
FOREIGN = {"LICENSE"}

CODE = (".h", ".cpp", ".py", ".sh", ".cmake", "CMakeLists.txt")
CODE_FOLDERS = ("src", "tools", "tests", "bench")
MOST_LINES = 330
MOST_FILES = 50
# Folders that shall not grow beyond one subject: less lines than these.
FOLDER_LINES = {"src/displays": 3000}
LONGEST_LINE = 110
LONGEST_TABLE_LINE = 240


def is_code(tree, path):
    """Sources, and scripts without a suffix."""
    if tree.is_data(path):
        return False
    if path.split("/")[0] in CODE_FOLDERS and path.endswith(CODE):
        return True
    return "." not in path.split("/")[-1] and tree.bytes(path).startswith(b"#!")


def no_forbidden_words(tree):
    for path in tree.files:
        for pattern in FORBIDDEN:
            if pattern.search(path):
                yield f"{path}: a forbidden word in the name"
        if path in FOREIGN or not tree.is_text(path):
            continue
        for number, line in enumerate(tree.lines(path), 1):
            for pattern in FORBIDDEN:
                match = pattern.search(line)
                if match:
                    yield f"{path}:{number}: forbidden: {match[0].strip()}"


def files_are_short(tree):
    for path in tree.files:
        if is_code(tree, path) and len(tree.lines(path)) >= MOST_LINES:
            yield f"{path}: {len(tree.lines(path))} lines, and less than {MOST_LINES} are allowed"


def folders_are_small(tree):
    files = Counter(path.rpartition("/")[0] for path in tree.files if not tree.is_data(path))
    for folder, count in sorted(files.items()):
        if count > MOST_FILES:
            yield f"{folder}: {count} files, and at most {MOST_FILES} are allowed"
    for folder, limit in FOLDER_LINES.items():
        lines = sum(len(tree.lines(path)) for path in tree.under("src") if path.startswith(f"{folder}/"))
        if lines >= limit:
            yield f"{folder}: {lines} lines, and less than {limit} are allowed"


def lines_are_short(tree):
    for path in filter(lambda path: is_code(tree, path), tree.files):
        limit = LONGEST_LINE
        for number, line in enumerate(tree.lines(path), 1):
            if "clang-format off" in line:
                limit = LONGEST_TABLE_LINE
            elif "clang-format on" in line:
                limit = LONGEST_LINE
            if len(line) > limit:
                yield f"{path}:{number}: {len(line)} characters, and at most {limit} are allowed"


def headers_say_what_they_are_for(tree):
    for path in tree.under("src", suffixes=(".h",)):
        lines = tree.lines(path) + ["", ""]
        words = re.findall(r"[A-Za-z]{2,}", lines[1])
        if lines[0] != "#pragma once":
            yield f"{path}:1: does not begin with #pragma once"
        elif not re.match(r"(//|/\*)", lines[1]) or len(words) < 2:
            yield f"{path}:2: no comment that says what the header is for"


def tests_say_what_they_are_about(tree):
    for path in tree.under("tests", "tools", "bench", suffixes=("_test.cpp", "_test.py", "_bench.cpp")):
        first = tree.text(path).partition("\n")[0]
        words = re.findall(r"[A-Za-z]{2,}", first)
        if not first.startswith('"""' if path.endswith(".py") else "// ") or len(words) < 2:
            yield f"{path}:1: no comment that says what the test is about"


def texts_end_in_a_line_end(tree):
    for path in tree.files:
        content = tree.bytes(path)
        if content and tree.is_text(path) and not tree.is_data(path) and not content.endswith(b"\n"):
            yield f"{path}: no line end at the end"


def texts_have_plain_line_ends(tree):
    for path in tree.files:
        if tree.is_text(path) and not tree.is_data(path) and b"\r" in tree.bytes(path):
            yield f"{path}: carriage returns"
