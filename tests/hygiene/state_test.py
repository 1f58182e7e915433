"""All state of the core begins anew with a fresh world: whatever it can write to is in that list."""

import re
import subprocess
import sys
import unittest
from pathlib import Path

LIBRARY, SIMULATION = sys.argv.pop(), sys.argv.pop()

# What no fresh world has to make anew, because no value outlives the call that wrote it.
NO_STATE = {
    "(anonymous namespace)::hidden": "a constant that holds its own address",
    "Ini::(anonymous namespace)::change": "empty outside of a change",
    "log::(anonymous namespace)::line": "the memory of the line that is being written",
    "polar::sample_point(tyxo::canvas const&, double, int)::all": "constants that are computed once",
    "polar::step_point(tyxo::canvas const&, double, int)::all": "constants that are computed once",
}


def writable_objects(table):
    """The names of the objects outside of read-only sections, in a table of nm's System V form."""
    for line in table.splitlines():
        fields = [field.strip() for field in line.split("|")]
        if len(fields) == 7 and fields[3] == "OBJECT" and re.match(r"\.t?(bss|data)(?!\.rel\.ro)", fields[6]):
            name = fields[0].removeprefix("tyxo::").replace("[abi:cxx11]", "")
            if not name.startswith(("guard variable", "DW.ref.")):
                yield name


def renewed_objects(source):
    return set(re.findall(r"[\w:]+", re.search(r"\n    renew\(([^;]*)\);", source)[1]))


class State(unittest.TestCase):
    def test_a_fresh_world_renews_all_that_the_core_writes_to(self):
        table = subprocess.run(["nm", "--demangle", "--format=sysv", LIBRARY], check=True, text=True,
                               capture_output=True).stdout
        renewed = renewed_objects(Path(SIMULATION).read_text())
        self.assertEqual(set(writable_objects(table)) - set(NO_STATE), renewed)

    def test_constants_are_no_state(self):
        rows = ["tyxo::a|0|d|OBJECT|8||.data.rel.ro", "tyxo::b|0|r|OBJECT|8||.rodata",
                "tyxo::c()|0|T|FUNC|8||.text", "guard variable for tyxo::d|0|b|OBJECT|8||.bss"]
        self.assertEqual(list(writable_objects("\n".join(rows))), [])

    def test_variables_are_state(self):
        rows = ["tyxo::a[abi:cxx11]|0|u|OBJECT|8||.bss._ZN1aE",
                "tyxo::(anonymous namespace)::b|0|b|OBJECT|8||.bss", "tyxo::c|0|d|OBJECT|8||.data.rel.local",
                "tyxo::d|0|b|OBJECT|8||.tbss"]
        self.assertEqual(list(writable_objects("\n".join(rows))), ["a", "(anonymous namespace)::b", "c", "d"])


if __name__ == "__main__":
    unittest.main()
