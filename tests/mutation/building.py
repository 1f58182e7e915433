"""One binary with all mutants: mutated copies of the core's sources, compiled with the core's tests."""

import json
import re
import shutil
import subprocess
from pathlib import Path

from mutants import Source

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "mutation"
TEST_FOLDERS = ("basics", "controls", "link", "settings", "logging", "displays", "gateway", "dialogs", "app",
                "platform")
NINJA = """
builddir = build/mutation
flags = -std=c++20 -w -fpermissive -Wno-narrowing -fwrapv -D_GLIBCXX_ASSERTIONS -I build/mutation/src
here = tests/mutation
rule core
  command = {launcher}g++ $flags -O1 -include $here/mutation.h -MMD -MF $out.d -c $in -o $out
  depfile = $out.d
  deps = gcc
rule header
  command = g++ $flags -O0 -I tests -x c++-header -MMD -MF $out.d $in -o $out
  depfile = $out.d
  deps = gcc
rule test
  command = g++ $flags -O0 -I tests -include build/mutation/tests.h -MMD -MF $out.d -c $in -o $out
  depfile = $out.d
  deps = gcc
rule link
  command = g++ -fuse-ld=gold $in -lgtest -lpthread -o $out
build build/mutation/tests.h.gch: header build/mutation/tests.h
"""
TESTS_HEADER = """#include "{root}/tests/mutation/mutation.h"
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
"""
DECLARED = re.compile(r"build/mutation/(src/[\w/.]+):(\d+):\d+: note: [^\n]*"
                      r"(?:was not initialized with a constant expression|declared here|is not usable as a)")
PLACE = re.compile(r"build/mutation/(src/[\w/.]+):(\d+):")


def core_sources():
    """The core's files, and none of the desktop's."""
    files = [path.relative_to(ROOT) for path in sorted((ROOT / "src").rglob("*"))
             if path.suffix in (".cpp", ".h")]
    return [str(path) for path in files
            if path.parts[1] not in ("widgets", "xlg") and path.parts[1:3] != ("platform", "desktop")
            and not path.stem.endswith("_view") and str(path) != "src/app/main.cpp"]


class Program:
    """The sources with their mutants, and the binary of them."""

    def __init__(self, jobs):
        self.jobs = jobs
        self.sources = {name: Source((ROOT / name).read_text()) for name in core_sources()}
        self.mutants = []
        for name, source in self.sources.items():
            for mutant in source.mutants():
                mutant.number, mutant.file = len(self.mutants), name
                self.mutants.append(mutant)
        self.memory = BUILD / "left_out.json"
        known = json.loads(self.memory.read_text()) if self.memory.exists() else {}
        self.left_out = {name: set() for name in self.sources}
        for name, (text, places) in known.items():
            if name in self.sources and self.sources[name].text == text:
                self.left_out[name] = set(places)
        self.strict = {}

    def write(self):
        """The copies; those that stay the same are not touched."""
        for name, source in self.sources.items():
            text, self.strict[name] = source.written(self.left_out[name])
            put(BUILD / name, text)
        self.memory.write_text(json.dumps({name: [source.text, sorted(self.left_out[name])]
                                           for name, source in self.sources.items()}))

    def build(self):
        """Compiles. What cannot be a mutant that is chosen at run time is left out, and it is tried again."""
        (BUILD / "src").mkdir(parents=True, exist_ok=True)
        put(BUILD / "tests.h", TESTS_HEADER.format(root=ROOT))
        self.write()
        core = self.write_rules()
        for targets in (core, ["build/mutation/core_tests"]):
            while True:
                command = ["ninja", "-k", "0", "-j", str(self.jobs), "-f", "build/mutation/build.ninja"]
                done = subprocess.run(command + targets, cwd=ROOT, text=True, capture_output=True,
                                      check=False)
                if done.returncode == 0:
                    break
                (BUILD / "errors.txt").write_text(done.stdout + done.stderr)
                count = self.leave_out(done.stdout)
                print(f"  {count} more places are left out, they have to be constants", flush=True)
                if count == 0:
                    raise SystemExit("does not compile: see build/mutation/errors.txt")
                self.write()

    def write_rules(self):
        """The input of ninja; the result is the list of the core's objects."""
        launcher = "ccache " if shutil.which("ccache") else ""
        lines, core, tests = [NINJA.format(launcher=launcher)], [], []
        simulation = [f"tests/platform/{path.name}" for path in (ROOT / "tests/platform").glob("*.cpp")
                      if not path.stem.endswith("_test")]
        for name in [name for name in self.sources if name.endswith(".cpp")]:
            core.append(f"build/mutation/{name}.o")
            lines.append(f"build {core[-1]}: core build/mutation/{name}")
        cases = [f"tests/{folder}/{path.name}" for folder in TEST_FOLDERS
                 for path in sorted((ROOT / "tests" / folder).glob("*_test.cpp"))]
        for name in [*simulation, *cases, "tests/mutation/main.cpp"]:
            tests.append(f"build/mutation/{name}.o")
            lines.append(f"build {tests[-1]}: test {name} | build/mutation/tests.h.gch")
        lines.append(f"build build/mutation/core_tests: link {' '.join(core + tests)}\n")
        put(BUILD / "build.ninja", "\n".join(lines))
        return core

    def leave_out(self, output):
        """Reads the compiler's errors; the result is how many places more are left out."""
        before = self.count_left_out()
        blocks = re.split(r"\n(?=FAILED)|(?<=\n)(?=[^\n]*: error: )", output)
        blocks = [block for block in blocks if ": error: " in block]
        # First what has to be known to the compiler: it leads to other errors where it is used.
        for block in blocks:
            for name, line in DECLARED.findall(block):
                self.leave_line_out(name, int(line))
            if "non-‘constexpr’" not in block:
                continue
            for number in re.findall(r"tyxo_mutation::.*\bN = (\d+)", block):
                mutant = self.mutants[int(number)]
                self.left_out[mutant.file].add(mutant.place)
        if self.count_left_out() > before:
            return self.count_left_out() - before
        for block in blocks:
            error = re.findall(PLACE.pattern + r"\d+: error", block)
            for name, line in error + PLACE.findall(block):
                if name in self.sources and self.leave_line_out(name, int(line)):
                    break
        return self.count_left_out() - before

    def count_left_out(self):
        """How many places are left out."""
        return sum(len(places) for places in self.left_out.values())

    def leave_line_out(self, name, line):
        """Leaves out what this line still has; false if it has nothing."""
        source, out = self.sources[name], self.left_out[name]
        strict = self.strict[name]
        new = set()
        for first, last, _ in source.relaxed:
            if source.tokens[first].line == line and (first, last) not in strict:
                new.add(first)
        for mutants, _ in source.sites:
            place = mutants[0].place
            if mutants[0].line == line and not any(first <= place <= last for first, last in strict):
                new.add(place)
        new -= out
        if not new:
            for first, last, _ in source.relaxed:
                if source.tokens[first].line <= line <= source.tokens[last].line:
                    if (first, last) not in strict:
                        new.add(first)
        new -= out
        out |= new
        return bool(new)


def put(path, text):
    """Writes a file if it says something else."""
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text() != text:
        path.write_text(text)
