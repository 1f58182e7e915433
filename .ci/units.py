#!/usr/bin/env python3
"""Writes the sources of a build as few, for clang-tidy: .ci/units.py BUILD INTO

Most of its time goes to the headers of the library and of Qt, so sources that are compiled alike are included
in one, INTO/UnifiedSource_KIND_NUMBER.cpp, where the kind is windows if Qt is in the way, else logic. How
these are compiled stands in INTO/compile_commands.json. Sources that do not go together, say since both have
a function of one name for themselves, come into different ones.

The analyzer looks into included sources only where the name says UnifiedSource.
"""

import json
import re
import shlex
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
OURS = [f"{ROOT}/src/", f"{ROOT}/tools/"]


def sources_of(entry):
    """What an entry of the compile database compiles of ours; CMake, too, makes one source of some."""
    path = entry["file"]
    paths = re.findall(r'^#include "(.*)"', Path(path).read_text(), re.M) if "/Unity/" in path else [path]
    return [path for path in paths if path.startswith(tuple(OURS)) and path.endswith(".cpp")]


def flags_of(entry):
    """Without the precompiled header, which is another compiler's."""
    words = shlex.split(entry["command"])
    words = words[: words.index("-o")]
    if "-include" in words:
        del words[words.index("-include") : words.index("-include") + 2]
    return tuple(words)


def write(unit, sources):
    lines = [f'#include "{path}"\n' for path in sorted(sources)]
    unit.write_text("".join(lines))


def refused(unit, flags):
    """The sources in which the compiler finds an error as they follow others of the unit."""
    done = subprocess.run(["clang++", *flags[1:], "-w", "-ferror-limit=0", "-fsyntax-only", unit],
                          stderr=subprocess.PIPE, text=True, check=False)
    return set(re.findall(r"^(.*\.cpp):\d+:\d+: (?:fatal )?error:", done.stderr, re.M))


def unite(unit, sources, flags):
    """Writes as many of the sources as go together; the others. Errors of a single one are for clang-tidy."""
    together = set(sources)
    write(unit, together)
    while len(together) > 1 and (others := refused(unit, flags) & together) and others != together:
        together -= others
        write(unit, together)
    return sources - together


def main():
    build, into = (Path(word).resolve() for word in sys.argv[1:])
    into.mkdir(parents=True)
    groups = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        groups.setdefault((entry["directory"], flags_of(entry)), set()).update(sources_of(entry))
    entries = []
    for (directory, flags), sources in groups.items():
        kind = "windows" if "-DQT_CORE_LIB" in flags else "logic"
        while sources:
            unit = into / f"UnifiedSource_{kind}_{len(entries)}.cpp"
            sources = unite(unit, sources, flags)
            entries.append({"directory": directory, "file": str(unit), "arguments": [*flags, str(unit)]})
    for kind in ("logic", "windows"):
        if not any(f"_{kind}_" in entry["file"] for entry in entries):
            sys.exit(f"{build} compiles no {kind} of ours")
    (into / "compile_commands.json").write_text(json.dumps(entries, indent=1))


main()
