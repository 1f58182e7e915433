"""The picture of the floors in docs/architecture.md, drawn from the includes of src.

    floors.py          prints the picture
    floors.py --write  puts it into the page
"""

import sys
from pathlib import Path

from includes import DESKTOP, FLOORS, floor_of
from tree import Tree

PAGE = "docs/architecture.md"
BEGIN = "<!-- The picture of the floors, by tests/hygiene/floors.py -->\n"
END = "<!-- The end of the picture -->\n"
CORE, DESKTOP_ONLY = "●", "○"


def arrows(tree):
    """What includes what: pairs of floors, and whether a file of the core is among those that include."""
    found = {}
    for path in tree.under("src"):
        for _, header in tree.included(path):
            if floor_of(path) is not None and floor_of(header) is not None:
                pair = path.split("/")[1], header.split("/")[1]
                found[pair] = found.get(pair, False) or not DESKTOP.fullmatch(path)
    return found


def picture(tree):
    """A row for each floor that has files, the highest first, with a mark below each floor it includes."""
    here = {path.split("/")[1] for path in tree.under("src") if floor_of(path) is not None}
    names = sorted(here, key=lambda name: (-FLOORS[name], name))
    found = arrows(tree)

    def mark(row, column):
        if row == column:
            return "\\"
        return {None: "", True: CORE, False: DESKTOP_ONLY}[found.get((row, column))]

    room = max(map(len, names), default=0)
    rows = [[" " * room, *names]]
    rows += [[row.ljust(room), *(mark(row, column).center(len(column)) for column in names)] for row in names]
    return "".join(("    " + "  ".join(row)).rstrip() + "\n" for row in rows)


def parts_of_page(text):
    """The page before, in and after its picture. Failure: there is no place for one."""
    before, begin, rest = text.partition(BEGIN)
    drawn, end, after = rest.partition(END)
    if not begin or not end:
        raise ValueError("no place for the picture of the floors")
    return before + begin, drawn, end + after


def floors_are_drawn_as_they_are(tree):
    try:
        drawn = parts_of_page(tree.text(PAGE))[1]
    except (FileNotFoundError, ValueError) as reason:
        yield f"{PAGE}: {reason}"
        return
    if drawn.strip("\n") != picture(tree).strip("\n"):
        yield f"{PAGE}: the includes have changed; python3 tests/hygiene/floors.py --write draws them anew"


def main(words):
    tree = Tree(Path(__file__).resolve().parents[2])
    if words == ["--write"]:
        before, _, after = parts_of_page(tree.text(PAGE))
        (tree.root / PAGE).write_text(f"{before}\n{picture(tree)}\n{after}", encoding="utf-8")
    else:
        print(picture(tree), end="")


if __name__ == "__main__":
    main(sys.argv[1:])
