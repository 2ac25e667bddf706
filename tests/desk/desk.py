"""What the tests of the desk share: how its program is started, and how a line is measured."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unicodedata
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(sys.argv.pop(1)).resolve() if len(sys.argv) > 1 else ROOT / "build/run"

# For a VM that ends after a second: nothing is compiled twice, and the classes of the JDK are shared.
VM = ["-XX:TieredStopAtLevel=1", "-XX:+UseSerialGC", "-Xshare:auto", "-XX:-UsePerfData"]


def command(name, *arguments, output="/dev/null", tables="/usr/share/dvb/isdb-t"):
    """The command line of one of the desk's commands."""
    return ["java", *VM, "-cp", f"{BUILD}/java/dtvserver.jar:{BUILD}/java/desk.jar", "tenrik.desk.Main",
            name, "--libraries", str(BUILD / "lib"), "--tables", str(tables),
            "--guide", str(ROOT / "simulator/data/guide.xml"), "--output", str(output),
            *map(str, arguments)]


def environment(**more):
    """The environment in which the run script starts it; what is None is not set."""
    variables = {**os.environ, "LC_ALL": "C.UTF-8", "DTV_LOG_FILE": "/dev/null", **more}
    return {name: str(value) for name, value in variables.items() if value is not None}


def width(line):
    """Columns of a terminal that a line takes."""
    return sum(0 if unicodedata.combining(character) or unicodedata.category(character) == "Cf"
               else 2 if unicodedata.east_asian_width(character) in "WF" else 1
               for character in line)


class DeskTest(unittest.TestCase):
    """A test with a folder of its own, which is removed after it."""
    maxDiff = 4000

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_desk(self, name, *arguments, environ=None, **more):
        """Runs a command to its end. Its output is text, with the ends of lines as they are."""
        run = subprocess.run(command(name, *arguments, **more), env=environ or environment(),
                             capture_output=True, timeout=300, check=False)
        run.stdout = run.stdout.decode("utf-8")
        run.stderr = run.stderr.decode("utf-8")
        return run
