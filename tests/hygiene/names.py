"""Checks of names that one file gives of others. Each takes a tree and yields its findings."""

import re

from includes import FLOORS

FOLDERS = ("src", "tests", "tools", "docs", "bench", "packaging")
CODE_SPAN = re.compile(r"`([^`\n]+)`")
DECISIONS = "docs/decisions.md"
COMMENT = re.compile(r"(?:^|\s)//[/<]*(.*)")
STAYS = "Looks like a mistake and stays: "
TEST = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\)", re.MULTILINE)


def everything(tree):
    """All files and folders."""
    folders = {path[:end] for path in tree.files for end in range(len(path)) if path[end] == "/"}
    return tree.file_set | folders


def matching(pattern):
    """A path or a glob, whose stars do not reach into sub-folders."""
    return re.compile("[^/]*".join(map(re.escape, pattern.rstrip("/").split("*"))))


def is_page(path):
    return path == "README.md" or re.fullmatch(r"docs/[^/]+\.md", path)


def paths_in_documents_exist(tree):
    """Paths from the root of the repository, and those of the floors without "src/" and perhaps a suffix."""
    there = everything(tree)
    sources = {re.sub(r"^src/", "", path) for path in there if path.startswith("src/")}
    sources |= {re.sub(r"\.(h|cpp)$", "", path) for path in sources}
    for page in filter(is_page, tree.files):
        for number, line in enumerate(tree.lines(page), 1):
            for word in " ".join(CODE_SPAN.findall(line)).split():
                top, slash, _ = word.partition("/")
                known = there if top in FOLDERS else sources if top in FLOORS else None
                if slash and known is not None and not any(map(matching(word).fullmatch, known)):
                    yield f"{page}:{number}: there is no {word}"


def remarks(lines):
    """What comments say of lines that look like a mistake: line number, and the comment from there on."""
    comments = [COMMENT.search(line) for line in lines]
    for index, comment in enumerate(comments):
        if comment and "looks like a mistake" in comment[1].lower():
            words = comment[1][comment[1].lower().index("looks like a mistake"):]
            for following, line in zip(comments[index + 1:], lines[index + 1:]):
                if following is None or not line.lstrip().startswith("//"):
                    break
                words += " " + following[1].strip()
            yield index + 1, words


def named_tests(words):
    """The tests in the brackets of a remark."""
    for named in re.findall(r"\(([^()]*)\)", words):
        yield from (name for name in named.split(", ") if re.fullmatch(r"\w+\.\w+", name))


def tests_that_hold_a_line_exist(tree):
    """Remarks on what looks like a mistake have one form, and the tests that they name exist."""
    known = {f"{suite}.{name}" for path in tree.under("tests", suffixes=(".cpp",))
             for suite, name in TEST.findall(tree.text(path))}
    for path in tree.under("src"):
        for number, words in remarks(tree.lines(path)):
            if not words.startswith(STAYS):
                yield f"{path}:{number}: write \"{STAYS}...\""
            for name in named_tests(words):
                if name not in known:
                    yield f"{path}:{number}: there is no test {name}"


def decisions(tree):
    """Rows of the page's table: line number, files and tests, which are the last two cells."""
    for number, line in enumerate(tree.lines(DECISIONS), 1) if DECISIONS in tree.file_set else ():
        files, tests = ([""] * 2 + [CODE_SPAN.findall(cell) for cell in line.split("|")[:-1]])[-2:]
        if files or tests:
            yield number, files, tests


def decisions_are_those_of_the_sources(tree):
    """Remarks on what looks like a mistake name a test and have a row with it; each row has its remark."""
    rows = list(decisions(tree))
    decided = {(path, test) for _, files, tests in rows for path in files for test in tests}
    marked = set()
    for path in tree.under("src"):
        for number, words in remarks(tree.lines(path)):
            tests = list(named_tests(words))
            marked |= {(path, test) for test in tests}
            if not tests:
                yield f"{path}:{number}: names no test"
            for test in tests:
                if (path, test) not in decided:
                    yield f"{path}:{number}: no row of {DECISIONS} has this file and {test}"
    for number, files, tests in rows:
        pairs = {(path, test) for path in files for test in tests} & marked
        for name in sorted({*files, *tests} - {name for pair in pairs for name in pair}):
            yield f"{DECISIONS}:{number}: no remark stands behind {name}"
