"""The repository's files and their include lines."""

import os
import re
import subprocess
from functools import cached_property
from pathlib import Path, PurePosixPath

NOT_OURS = {".git", ".cache", "__pycache__"}
NOT_OURS_AT_THE_TOP = NOT_OURS | {"build", "plant"}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
# Files that are data for tests: their bytes are what they are.
DATA_FOLDERS = {"golden", "fixtures", "corpus", "data"}


class Tree:
    """A repository or a part of one, with or without git. Paths are texts relative to its root."""

    def __init__(self, root):
        self.root = Path(root).resolve()

    @cached_property
    def files(self):
        """All files of the repository: tracked ones and new ones, but none that is built or ignored."""
        paths = self._listed_by_git()
        return sorted(self._walked() if paths is None else paths)

    def _listed_by_git(self):
        def git(*words):
            done = subprocess.run(["git", "-C", self.root, *words], capture_output=True, check=False)
            return done.stdout.decode() if done.returncode == 0 else None

        try:
            top = git("rev-parse", "--show-toplevel")
            if top is None or Path(top.strip()) != self.root:
                return None
            listing = git("ls-files", "-z", "--cached", "--others", "--exclude-standard")
        except FileNotFoundError:
            return None
        return {path for path in listing.split("\0") if path and (self.root / path).is_file()}

    def _walked(self):
        for folder, folders, names in os.walk(self.root):
            others = NOT_OURS_AT_THE_TOP if Path(folder) == self.root else NOT_OURS
            folders[:] = [name for name in folders if name not in others]
            for name in names:
                yield (Path(folder) / name).relative_to(self.root).as_posix()

    def bytes(self, path):
        return (self.root / path).read_bytes()

    def text(self, path):
        return self.bytes(path).decode("utf-8", errors="replace")

    def lines(self, path):
        return self.text(path).splitlines()

    def under(self, *folders, suffixes=(".h", ".cpp")):
        """Files in these folders with one of the suffixes."""
        return [path for path in self.files if path.split("/")[0] in folders and path.endswith(suffixes)]

    def is_text(self, path):
        return b"\0" not in self.bytes(path)

    def is_data(self, path):
        return bool(DATA_FOLDERS & set(PurePosixPath(path).parts[:-1]))

    def includes(self, path):
        """The include lines: line number, "<" or '"', and the name."""
        for number, line in enumerate(self.lines(path), 1):
            match = INCLUDE.match(line)
            if match:
                yield number, match[1], match[2]

    def included(self, path):
        """The repository's own files that the file includes: line number and path."""
        top = path.split("/")[0]
        for number, kind, name in self.includes(path):
            beside = (PurePosixPath(path).parent / name).as_posix()
            for candidate in (beside, f"{top}/{name}", f"src/{name}"):
                if kind == '"' and candidate in self.file_set:
                    yield number, candidate
                    break

    @cached_property
    def file_set(self):
        return set(self.files)
