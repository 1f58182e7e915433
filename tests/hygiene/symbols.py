"""Tells whether an archive or a program needs Qt: symbols.py [--expect] FILE...

Exit code 0 when none of the files does; with --expect, when each of them does.
"""

import re
import subprocess
import sys

# Classes and namespaces (QString::..., vtable for QObject) and functions (qt_assert(...)), demangled.
QT_NAME = re.compile(r"(?<![\w:])(Q[A-Z]\w*|Qt[A-Z]\w*|qt_\w+|q[A-Z]\w*(?=\())")


def qt_symbols(listing):
    """The undefined names of Qt in what `nm --demangle --undefined-only` tells."""
    names = (line.split(" U ", 1)[1] for line in listing.splitlines() if " U " in line)
    return [name for name in names if QT_NAME.search(name)]


def qt_libraries(listing):
    """The libraries of Qt in what `readelf --dynamic` tells."""
    return re.findall(r"\(NEEDED\).*\[(libQt[^\]]*)\]", listing)


def told_by(*words):
    return subprocess.run(words, check=True, capture_output=True, text=True).stdout


def needs(file):
    if file.endswith(".a"):
        return qt_symbols(told_by("nm", "--demangle", "--undefined-only", file))
    return qt_libraries(told_by("readelf", "--wide", "--dynamic", file))


def main(words):
    expected = words[:1] == ["--expect"]
    files = words[1:] if expected else words
    wrong = 0
    for file in files:
        found = needs(file)
        print(f"{file}: {len(found)} needs of Qt", *found[:20], sep="\n  ")
        wrong += bool(found) != expected
    return 1 if wrong or not files else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
