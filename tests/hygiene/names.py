"""Checks of names that one file gives of others. Each takes a tree and yields its findings."""

import re

from includes import FLOORS

FOLDERS = ("src", "tests", "tools", "docs", "bench", "packaging")
CODE_SPAN = re.compile(r"`([^`\n]+)`")


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
