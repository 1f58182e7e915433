"""The programs are built so that mistakes with memory end them, as far as it is seen in the built files.

    hardening_test.py BUILD PROGRAM...
"""

import json
import re
import subprocess
import sys
import unittest
from pathlib import Path

BUILD, *PROGRAMS = map(Path, sys.argv[1:])


class Hardening(unittest.TestCase):
    def in_each(self, option, assertion):
        """Asserts something of what readelf says of each program."""
        self.assertTrue(PROGRAMS)
        for program in PROGRAMS:
            text = subprocess.run(["readelf", "--wide", option, program], check=True, text=True,
                                  capture_output=True).stdout
            with self.subTest(program.name):
                assertion(text)

    def segment_is(self, name, rights):
        def assertion(text):
            row = re.search(rf"^ *{name} +(?:0x[0-9a-f]+ +){{5}}([RWE ]+?) +0x", text, re.M)
            self.assertIsNotNone(row, f"no segment {name}")
            self.assertEqual(row[1], rights)
        self.in_each("--segments", assertion)

    def has(self, option, pattern):
        def assertion(text):
            self.assertTrue(re.search(pattern, text), f"readelf {option} says nothing like {pattern}")
        self.in_each(option, assertion)

    def test_they_may_lie_anywhere_in_memory(self):
        self.has("--file-header", r"Type: +DYN ")
        self.has("--dynamic", r"FLAGS_1\).*\bPIE\b")

    def test_addresses_of_functions_are_found_at_the_start(self):
        self.has("--dynamic", r"FLAGS_1\).*\bNOW\b")

    def test_and_cannot_be_changed_from_then_on(self):
        self.segment_is("GNU_RELRO", "R")

    def test_no_stack_can_be_run(self):
        self.segment_is("GNU_STACK", "RW")

    def test_functions_notice_an_overwritten_stack(self):
        self.has("--dyn-syms", r" UND __stack_chk_fail\b")

    def test_containers_check_their_subscripts(self):
        self.has("--dyn-syms", r" UND \w*__glibcxx_assert_fail")

    def test_the_c_library_knows_the_size_of_what_it_fills(self):
        # The program itself has no call whose size is unknown when it is compiled, so none that checks it.
        self.has("--dyn-syms", r" UND __(?!stack)\w+_chk\b| UND _ZN7QWidgetC2E")
        commands = [entry["command"] for entry in json.loads((BUILD / "compile_commands.json").read_text())]
        commands = [command for command in commands if re.search(r" -o (src|tools)/(?!.*_verify_)", command)]
        self.assertTrue(any(" -o src/CMakeFiles/tyxo.dir/" in command for command in commands))
        for command in commands:
            self.assertIn(" -D_FORTIFY_SOURCE=3 ", command)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
