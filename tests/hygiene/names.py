"""Checks of names that one file gives of others. Each takes a tree and yields its findings."""

import re

from includes import FLOORS

FOLDERS = ("src", "tests", "tools", "docs", "bench", "packaging")
CODE_SPAN = re.compile(r"`([^`\n]+)`")
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


def tests_that_hold_a_line_exist(tree):
    """Remarks on what looks like a mistake have one form, and the tests that they name exist."""
    known = {f"{suite}.{name}" for path in tree.under("tests", suffixes=(".cpp",))
             for suite, name in TEST.findall(tree.text(path))}
    for path in tree.under("src"):
        for number, words in remarks(tree.lines(path)):
            if not words.startswith(STAYS):
                yield f"{path}:{number}: write \"{STAYS}...\""
            for named in re.findall(r"\(([^()]*)\)", words):
                for name in named.split(", "):
                    if re.fullmatch(r"\w+\.\w+", name) and name not in known:
                        yield f"{path}:{number}: there is no test {name}"
