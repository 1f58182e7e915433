"""Checks of the repository's sources that no compiler makes.

    hygiene.py [--root FOLDER] [CHECK]...
    hygiene.py --same-as CHECK...

Runs the checks, all of them unless named; a line per finding, and exit code 1 when there is one. The second
form compares a list of checks with those that there are.
"""

import argparse
import sys
from pathlib import Path

import floors
import includes
import names
import texts
from tree import Tree

CHECKS = {check.__name__: check for check in (
    includes.no_qt_in_core,
    includes.core_uses_the_standard_library_only,
    includes.desktop_files_are_known_by_name,
    includes.every_source_is_built,
    includes.no_include_cycle,
    includes.includes_point_downwards,
    floors.floors_are_drawn_as_they_are,
    texts.no_forbidden_words,
    texts.files_are_short,
    texts.folders_are_small,
    texts.lines_are_short,
    texts.headers_say_what_they_are_for,
    texts.tests_say_what_they_are_about,
    texts.texts_end_in_a_line_end,
    texts.texts_have_plain_line_ends,
    names.paths_in_documents_exist,
    names.tests_that_hold_a_line_exist,
    names.decisions_are_those_of_the_sources,
)}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--root", default=Path(__file__).resolve().parents[2])
    parser.add_argument("--same-as", nargs="+", metavar="CHECK", help="are these all the checks?")
    parser.add_argument("check", nargs="*", help="a check's name")
    arguments = parser.parse_args()
    if arguments.same_as:
        different = set(arguments.same_as) ^ set(CHECKS)
        print("Known or given only:", *sorted(different))
        return 1 if different else 0
    unknown = set(arguments.check) - set(CHECKS)
    if unknown:
        parser.error(f"unknown check: {', '.join(sorted(unknown))}")
    tree = Tree(arguments.root)
    if not tree.files:
        parser.error(f"no files in {arguments.root}")
    findings = [finding for name in arguments.check or CHECKS for finding in CHECKS[name](tree)]
    for finding in findings:
        print(finding)
    print(f"{len(findings)} findings in {len(tree.files)} files")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
