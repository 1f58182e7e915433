"""Every check finds what it is for, and nothing in a sound tree."""

import tempfile
import unittest
from pathlib import Path

from floors import BEGIN, END
from hygiene import CHECKS
from texts import FOLDER_LINES, MOST_FILES, MOST_LINES
from tree import Tree

ABOUT = "#pragma once\n// Says what the header is for.\n\n"
PICTURE = """\
              app  link  platform  basics
    app        \\    ○
    link            \\                ●
    platform                \\        ○
    basics                           \\
"""
# A small repository with nothing to find, core and desktop.
SOUND = {
    "src/CMakeLists.txt": "add_library(tyxo_core STATIC\n  basics/a.cpp\n  link/b.cpp)\n"
                          "add_library(tyxo_desktop STATIC app/c_view.cpp platform/desktop/d.cpp)\n",
    "src/basics/a.h": ABOUT + "#include <string>\n",
    "src/basics/a.cpp": '#include "basics/a.h"\n',
    "src/link/b.h": ABOUT + '#include "basics/a.h"\n',
    "src/link/b.cpp": '#include "link/b.h"\n',
    "tests/link/b_test.cpp": "// What b does.\n\nTEST_P(b, holds) {}\nTEST(b,\n     holds_too) {}\n",
    "src/app/c_view.h": ABOUT + '#include <QWidget>\n#include "link/b.h"\n',
    "src/app/c_view.cpp": '#include "app/c_view.h"\n',
    "src/platform/desktop/d.cpp": '#include <QTimer>\n#include <unistd.h>\n#include "basics/a.h"\n',
    "tests/settings/golden/old.ini": "[section]\r\nkey=1",
    "docs/architecture.md": f"Before.\n{BEGIN}\n{PICTURE}\n{END}Behind.\n",
    "LICENSE": "A text of others.\n",
    "run": "#!/bin/sh\n",
}


class HygieneTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="hygiene-")
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        for path, content in SOUND.items():
            self.write(path, content)

    def write(self, path, content):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content if isinstance(content, bytes) else content.encode())

    def append(self, path, content):
        self.write(path, SOUND[path] + content)

    def findings(self, check):
        return list(CHECKS[check](Tree(self.root)))

    def expect(self, check, *beginnings):
        """The check finds these places, each given by the beginning of its line, and no others."""
        findings = self.findings(check)
        self.assertEqual(len(findings), len(beginnings), findings)
        for finding, beginning in zip(findings, beginnings):
            self.assertTrue(finding.startswith(beginning), finding)

    def test_a_sound_tree_has_no_findings(self):
        for check in CHECKS:
            with self.subTest(check):
                self.expect(check)

    def test_qt_in_a_core_source(self):
        for header in ("<QString>", "<QtCore/QString>", '"qcustomplot.h"', "<qglobal.h>"):
            with self.subTest(header):
                self.append("src/link/b.cpp", f"  #  include {header}\n")
                self.expect("no_qt_in_core", "src/link/b.cpp:2:")

    def test_qt_in_a_header_that_the_core_reaches_over_another(self):
        self.append("src/basics/a.h", '#include "deep.h"\n')
        self.write("src/basics/deep.h", ABOUT + "#include <QString>\n")
        self.expect("no_qt_in_core", "src/basics/deep.h:4:")

    def test_a_desktop_header_in_the_core(self):
        self.append("src/link/b.cpp", '#include "link/lamp_view.h"\n')
        self.write("src/link/lamp_view.h", ABOUT)
        self.expect("no_qt_in_core", "src/link/lamp_view.h:")

    def test_a_header_of_the_machine_in_the_core(self):
        self.append("src/basics/a.cpp", "#include <unistd.h>\n")
        self.expect("core_uses_the_standard_library_only", "src/basics/a.cpp:2:")

    def test_a_file_with_qt_and_another_name(self):
        self.write("src/displays/paint.h", ABOUT + "#include <QPainter>\n#include <QColor>\n")
        self.write("src/app/mainfrm.cpp", "#include <QString>\n")
        self.write("src/app/main.cpp", "#include <QApplication>\n")
        self.expect("desktop_files_are_known_by_name", "src/app/mainfrm.cpp:1:", "src/displays/paint.h:4:")

    def test_a_source_in_no_target(self):
        self.write("src/link/forgotten.cpp", "\n")
        self.expect("every_source_is_built", "src/link/forgotten.cpp:")

    def test_two_headers_that_include_each_other(self):
        self.append("src/basics/a.h", '#include "basics/z.h"\n')
        self.write("src/basics/z.h", ABOUT + '#include "a.h"\n')
        self.expect("no_include_cycle", "src/basics/a.h -> src/basics/z.h -> src/basics/a.h")

    def test_a_circle_of_tools(self):
        self.write("tools/plant/one.h", '#include "two.h"\n')
        self.write("tools/plant/two.h", '#include "three.h"\n')
        self.write("tools/plant/three.h", '#include "one.h"\n')
        self.expect("no_include_cycle", "tools/plant/one.h -> tools/plant/two.h -> tools/plant/three.h -> ")

    def test_an_include_of_a_floor_above(self):
        self.append("src/basics/a.cpp", '#include "link/b.h"\n')
        self.expect("includes_point_downwards", "src/basics/a.cpp:2:")

    def test_the_desktop_platform_is_on_the_floor_of_its_folder(self):
        self.append("src/platform/desktop/d.cpp", '#include "platform/t.h"\n#include "link/b.h"\n')
        self.write("src/platform/t.h", ABOUT)
        self.expect("includes_point_downwards", "src/platform/desktop/d.cpp:5:")

    def test_displays_and_gateway_do_not_know_each_other(self):
        self.write("src/displays/x.h", ABOUT + '#include "gateway/y.h"\n')
        self.write("src/gateway/y.h", ABOUT)
        self.write("src/gateway/z.h", ABOUT + '#include "displays/w.h"\n#include "y.h"\n')
        self.write("src/displays/w.h", ABOUT)
        self.expect("includes_point_downwards", "src/displays/x.h:4:", "src/gateway/z.h:4:")

    def test_every_floor_includes_those_below_only(self):
        floors = ["basics", "controls", "platform", "widgets", "settings", "gateway", "logging", "dialogs",
                  "app"]
        for upper, lower in zip(floors[1:], floors):
            with self.subTest(upper):
                self.write(f"src/{upper}/up.h", ABOUT + f'#include "{lower}/down.h"\n')
                self.write(f"src/{lower}/down.h", ABOUT)
                self.expect("includes_point_downwards")
                self.write(f"src/{upper}/up.h", ABOUT)
                self.write(f"src/{lower}/down.h", ABOUT + f'#include "{upper}/up.h"\n')
                self.expect("includes_point_downwards", f"src/{lower}/down.h:4:")
                self.write(f"src/{lower}/down.h", ABOUT)

    def test_a_folder_without_a_floor(self):
        self.write("src/misc/x.h", ABOUT)
        self.expect("includes_point_downwards", "src/misc/x.h:")

    def test_an_arrow_that_is_not_drawn(self):
        self.append("src/app/c_view.cpp", '#include "basics/a.h"\n')
        self.expect("floors_are_drawn_as_they_are", "docs/architecture.md:")

    def test_an_arrow_that_is_drawn_only(self):
        self.write("src/platform/desktop/d.cpp", "\n")
        self.expect("floors_are_drawn_as_they_are", "docs/architecture.md:")

    def test_an_arrow_of_the_core_that_is_drawn_as_one_of_the_desktop(self):
        self.write("src/app/wiring.h", ABOUT + '#include "link/b.h"\n')
        self.expect("floors_are_drawn_as_they_are", "docs/architecture.md:")

    def test_an_arrow_up_is_neither_drawn_in_silence_nor_allowed(self):
        self.append("src/basics/a.cpp", '#include "link/b.h"\n')
        self.expect("floors_are_drawn_as_they_are", "docs/architecture.md:")
        self.expect("includes_point_downwards", "src/basics/a.cpp:2:")

    def test_a_page_without_the_picture(self):
        for content in ("Nothing.\n", BEGIN, END):
            with self.subTest(content):
                self.write("docs/architecture.md", content)
                self.expect("floors_are_drawn_as_they_are", "docs/architecture.md: no place")
        (self.root / "docs/architecture.md").unlink()
        self.expect("floors_are_drawn_as_they_are", "docs/architecture.md: ")

    def test_a_path_that_does_not_exist(self):
        for words in ("src/link/gone.cpp", "tests/settings/golden/*.xlg", "src/*/deep/b.h", "src/li*.h",
                      "link/gone", "python3 tools/gone.py -v", "docs/gone/"):
            with self.subTest(words):
                self.write("README.md", f"A line.\nLook at `{words}`.\n")
                self.write("docs/page.md", "Sound.\n")
                self.expect("paths_in_documents_exist", "README.md:2:")
                self.write("docs/page.md", f"Look at `src/link/b.h` and `{words}`.\n")
                self.write("README.md", "Sound.\n")
                self.expect("paths_in_documents_exist", "docs/page.md:1:")

    def test_paths_that_exist(self):
        for words in ("src/link/b.cpp", "src/link", "src/link/", "src/*/b.h", "src/link/*", "link/b.h",
                      "link/b", "tests/settings/golden/old.ini", "cd src/link && ls", "build/release/gone",
                      "ports/COM1"):
            with self.subTest(words):
                self.write("docs/page.md", f"Look at `{words}`.\nNot meant: src/link/gone.cpp\n")
                self.expect("paths_in_documents_exist")

    def test_a_remark_with_a_test_that_does_not_exist(self):
        for remark in ("// Looks like a mistake and stays: so (b.gone)\n",
                       "int x; ///< Looks like a mistake and stays: so (b.gone).\n",
                       "/// Text. Looks like a mistake and stays: so\n/// (b.holds,\n/// b.gone) and so.\n"):
            with self.subTest(remark):
                self.append("src/link/b.cpp", remark)
                self.expect("tests_that_hold_a_line_exist", "src/link/b.cpp:2: there is no test b.gone")

    def test_a_remark_in_other_words(self):
        for remark in ("// Looks like a mistake, and stays: so\n", "int x; // It looks like a mistake\n"):
            with self.subTest(remark):
                self.append("src/link/b.cpp", remark)
                self.expect("tests_that_hold_a_line_exist", "src/link/b.cpp:2: write ")

    def test_remarks_that_are_right(self):
        for remark in ("// Looks like a mistake and stays: so (b.holds)\n",
                       "// Looks like a mistake and stays: so (really)\n// (b.holds,\n// b.holds_too).\n",
                       "// Looks like a mistake and stays: so\n\n// (b.gone)\n",
                       "// Looks like a mistake and stays: so\nint x; // (b.gone)\n",
                       "// No remark (b.gone).\n"):
            with self.subTest(remark):
                self.append("src/link/b.cpp", remark)
                self.expect("tests_that_hold_a_line_exist")

    def test_remarks_and_rows_of_decisions(self):
        row, source = "| It | `src/link/b.cpp` | `b.holds` |\n", "src/link/b.cpp:2:"
        page, behind = "docs/decisions.md:3:", "docs/decisions.md:4:"
        for remark, rows, *expected in (
                ("so (b.holds)", row),
                ("so (b.holds,\n// b.holds_too)", row.replace("holds`", "holds`, `b.holds_too`")),
                ("so", "", source),
                ("so (b.holds)", "", source),
                ("so (b.holds)", row.replace("`", ""), source),
                ("so (b.holds, b.holds_too)", row, source),
                ("so (b.holds)", row + row.replace("holds", "gone"), behind, behind),
                ("so (b.holds)", row.replace("holds`", "holds`, `b.gone`"), page),
                ("so (b.holds)", row.replace(".cpp`", ".cpp`, `src/link/b.h`"), page),
                ("so (b.holds)", row.replace("b.cpp", "b.h"), source, page, page)):
            with self.subTest(remark=remark, rows=rows):
                self.append("src/link/b.cpp", f"// Looks like a mistake and stays: {remark}\n")
                self.write("docs/decisions.md", "| What | Where | Test |\n|---|---|---|\n" + rows)
                self.expect("decisions_are_those_of_the_sources", *expected)

    def test_forbidden_words(self):
        for words in ("TO" "DO: later", "// FIX" "ME", "XX" "X", "HA" "CK", "GTEST_" "SKIP()", "Q" "SKIP(1)",
                      "DISABLED" "_Test", "@skip" "Test", "/ro" "ot", "ls /ro" "ot/x", "cd /ho" "me/somebody",
                      '"/ho' 'me/x/y"'):
            with self.subTest(words):
                self.write("docs/page.md", f"A line.\nThen {words}\n")
                self.expect("no_forbidden_words", "docs/page.md:2:")

    def test_words_that_look_forbidden(self):
        for words in ("network/port", "a/home/x", "the folder /home", "tests/root.h", "/rootless",
                      "mktemp XXXXXX", "a todo list", "disabled_label"):
            with self.subTest(words):
                self.write("docs/page.md", f"{words}\n")
                self.expect("no_forbidden_words")

    def test_a_forbidden_word_in_a_file_name(self):
        self.write("docs/TO" "DO.md", "\n")
        self.expect("no_forbidden_words", "docs/TO" "DO.md:")

    def test_words_of_others_stay(self):
        self.write("LICENSE", "HA" "CK\n")
        self.expect("no_forbidden_words")

    def test_a_long_file(self):
        self.write("tools/x/long.cpp", "\n" * MOST_LINES)
        self.write("tools/x/shorter.cpp", "\n" * (MOST_LINES - 1))
        self.write("run", "#!/bin/sh\n" + "\n" * MOST_LINES)
        self.write("docs/page.md", "\n" * 1000)
        self.expect("files_are_short", "run:", "tools/x/long.cpp:")

    def test_a_large_folder(self):
        for number in range(MOST_FILES):
            self.write(f"tools/x/{number}.h", "\n")
            self.write(f"tests/golden/{number}.txt", "\n")
        self.write("tests/golden/more.txt", "\n")
        self.expect("folders_are_small")
        self.write("tools/x/more.h", "\n")
        self.expect("folders_are_small", "tools/x: 51 files")

    def test_a_folder_with_many_lines(self):
        self.write("src/displays/x.cpp", "\n" * (FOLDER_LINES["src/displays"] - 1))
        self.write("src/displays/picture.svg", "\n" * 400)
        self.expect("folders_are_small")
        self.write("src/displays/sub/y.h", "#pragma once\n")
        self.expect("folders_are_small", "src/displays: ")

    def test_a_long_line(self):
        self.write("bench/x.cpp", "x" * 110 + "\n" + "\u00e4" * 110 + "\n" + "x" * 111 + "\n")
        self.write("tests/hygiene/x.py", "x" * 111 + "\n")
        self.write("tests/settings/golden/x.cpp", "x" * 500 + "\n")
        self.expect("lines_are_short", "bench/x.cpp:3:", "tests/hygiene/x.py:1:")

    def test_a_long_line_of_a_table(self):
        table = "x" * 240 + "\n"
        self.write("src/link/b.cpp", f"// clang-format off\n{table}x{table}// clang-format on\n{table}")
        self.expect("lines_are_short", "src/link/b.cpp:3:", "src/link/b.cpp:5:")

    def test_a_header_without_guard_or_comment(self):
        for content, place in (("// Says what it is for.\n#pragma once\n", 1),
                               ("", 1),
                               ("#pragma once\n", 2),
                               ("#pragma once\n//\n", 2),
                               ("#pragma once\n\n// Says what it is for.\n", 2),
                               ("#pragma once\n#include <string>\n", 2)):
            with self.subTest(content):
                self.write("src/link/b.h", content)
                self.expect("headers_say_what_they_are_for", f"src/link/b.h:{place}:")

    def test_a_test_without_a_comment(self):
        self.write("tests/link/b_test.cpp", "// What this test is about.\n")
        self.write("tests/system/c_test.py", '"""What this test is about."""\n')
        self.expect("tests_say_what_they_are_about")
        for path, content in (("tests/link/b_test.cpp", '#include "link/b.h"\n// Too late for words.\n'),
                              ("tests/link/b_test.cpp", "// Words\n"),
                              ("bench/b_bench.cpp", ""),
                              ("tests/system/c_test.py", "import b\n")):
            with self.subTest(content):
                self.write(path, content)
                self.expect("tests_say_what_they_are_about", f"{path}:1:")
                self.write(path, '"""Of something."""\n' if path.endswith(".py") else "// Of something.\n")

    def test_a_text_without_its_last_line_end(self):
        self.write("docs/page.md", "one\ntwo")
        self.write("packaging/icon.png", b"\x89PNG\0")
        self.write("docs/empty.txt", "")
        self.expect("texts_end_in_a_line_end", "docs/page.md:")

    def test_carriage_returns(self):
        self.write("docs/page.md", "one\r\ntwo\n")
        self.expect("texts_have_plain_line_ends", "docs/page.md:")


if __name__ == "__main__":
    unittest.main()
