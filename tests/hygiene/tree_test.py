"""A tree is what git keeps of a folder, and without git all but what is built."""

import subprocess
import tempfile
import unittest
from pathlib import Path

from tree import Tree


class TreeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="hygiene-")
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name).resolve()
        for path in ("src/a.h", "build/release/b.h", "plant/c.txt", "tools/plant/__pycache__/d.pyc",
                     ".ci/run", "e.swp", "tools/plant/f.py"):
            (self.root / path).parent.mkdir(parents=True, exist_ok=True)
            (self.root / path).write_text("\n")
        (self.root / ".gitignore").write_text("/build/\n/plant/\n__pycache__/\n*.swp\n")

    def test_without_git_everything_but_what_is_built(self):
        self.assertEqual(Tree(self.root).files,
                         [".ci/run", ".gitignore", "e.swp", "src/a.h", "tools/plant/f.py"])

    def test_inside_another_repository_of_git_as_without(self):
        subprocess.run(["git", "init", "-q", self.root], check=True)
        (self.root / "src/inner").mkdir()
        (self.root / "src/inner/x.h").write_text("\n")
        self.assertEqual(Tree(self.root / "src").files, ["a.h", "inner/x.h"])

    def test_with_git_whatever_is_not_ignored_and_exists(self):
        def git(*words):
            subprocess.run(["git", "-C", self.root, *words], check=True)

        (self.root / "gone.h").write_text("\n")
        git("init", "-q")
        git("add", "src", "gone.h")
        (self.root / "gone.h").unlink()
        self.assertEqual(Tree(self.root).files, [".ci/run", ".gitignore", "src/a.h", "tools/plant/f.py"])


if __name__ == "__main__":
    unittest.main()
