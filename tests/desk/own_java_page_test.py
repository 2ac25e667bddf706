"""The commands that docs/own-java.md prints work as they are printed, in a fresh copy of the sources.

usage: own_java_page_test.py [BUILD]

With a build, the copy's ./run takes its files in place of building; otherwise it builds.
"""
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs/own-java.md"
BUILD = pathlib.Path(sys.argv.pop(1)).resolve() if len(sys.argv) > 1 else None
# A cmake that builds by copying.
CMAKE = """#!/bin/sh
set -eu
[ "$1" = --build ] || exit 0
for part in java lib bin; do
    mkdir "$2/$part"
done
cp {build}/java/*.jar "$2/java"
cp {build}/lib/*.so "$2/lib"
cp {build}/bin/* "$2/bin"
"""


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
            if BUILD:
                programs = pathlib.Path(folder) / "programs"
                programs.mkdir()
                (programs / "cmake").write_text(CMAKE.format(build=shlex.quote(str(BUILD))))
                (programs / "cmake").chmod(0o755)
                environ["PATH"] = f"{programs}:{environ['PATH']}"
            # One shell for all blocks: a variable that one block sets is used in the next.
            run = subprocess.run(["sh", "-eu", "-c", "\n".join(blocks)], cwd=copy, env=environ,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT, text=True, timeout=900, check=False)
        self.assertEqual(0, run.returncode, run.stdout)
        self.assertIn("Everything was answered as it should be.", run.stdout)
        self.assertEqual(2, len(re.findall(r"(?m)^OK \(\d+ tests?\)$", run.stdout)), run.stdout)


if __name__ == "__main__":
    unittest.main()
