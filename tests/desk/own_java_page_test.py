"""The commands that docs/own-java.md prints work as they are printed, in a fresh copy of the sources."""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs/own-java.md"


class Page(unittest.TestCase):
    def test_its_commands(self):
        blocks = re.findall(r"^```sh\n(.*?)^```$", PAGE.read_text(encoding="utf-8"), re.M | re.S)
        self.assertEqual(2, len(blocks), "the script's way and the way without it")
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder) / "copy"
            shutil.copytree(ROOT, copy, symlinks=True,
                            ignore=shutil.ignore_patterns("build", ".git", "__pycache__"))
            environ = {name: value for name, value in os.environ.items()
                       if not name.startswith("DTV_")}
            # One shell for all blocks: a variable that one block sets is used in the next.
            run = subprocess.run(["sh", "-eu", "-c", "\n".join(blocks)], cwd=copy, env=environ,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT, text=True, timeout=900, check=False)
        self.assertEqual(0, run.returncode, run.stdout)
        self.assertIn("Everything was answered as it should be.", run.stdout)
        self.assertEqual(2, len(re.findall(r"(?m)^OK \(\d+ tests?\)$", run.stdout)), run.stdout)


if __name__ == "__main__":
    unittest.main()
