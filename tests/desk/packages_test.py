"""The packages of the desk's program: which may use which, by the compiled classes and the imports."""
import collections
import re
import subprocess
import unittest

from desk import BUILD, ROOT

TOP = "tenrik.desk"
# Each package with those that it may use. Of the top package only the command line, Main, uses the
# commands, which are its parts.
MAY_USE = {
    TOP: {f"{TOP}.core", f"{TOP}.replay"},
    f"{TOP}.core": set(),
    f"{TOP}.evening": {f"{TOP}.core"},
    f"{TOP}.replay": {f"{TOP}.core", f"{TOP}.send"},
    f"{TOP}.send": {f"{TOP}.core"},
    f"{TOP}.shell": {f"{TOP}.core", f"{TOP}.send"},
}
COMMAND_LINE = f"{TOP}.Main"
COMMANDS = {f"{TOP}.evening", f"{TOP}.shell"}
IMPORT = re.compile(r"^import (?:static )?(tenrik\.desk(?:\.[a-z]\w*)*\.[A-Z]\w*)", re.MULTILINE)
# A line of jdeps: a class, and one that it uses. The classes that an annotation names are left out.
USE = re.compile(r"^ *(tenrik\.desk\.\S+) +-> (\S+)", re.MULTILINE)


def package(name):
    return name.rpartition(".")[0]


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shown = subprocess.run(
            ["jdeps", "-verbose:class", "-filter:none", "--ignore-missing-deps", "--multi-release",
             "base", BUILD / "java/desk.jar"],
            capture_output=True, text=True, timeout=120, check=True).stdout
        uses = {(user.partition("$")[0], used.partition("$")[0])
                for user, used in USE.findall(shown)}
        cls.classes = {user for user, _ in uses}
        cls.sources = {".".join(source.relative_to(ROOT / "desk").with_suffix("").parts): source
                       for source in (ROOT / "desk/tenrik").rglob("*.java")}
        uses |= {(name, used) for name, source in cls.sources.items()
                 for used in IMPORT.findall(source.read_text(encoding="utf-8"))}
        cls.uses = {(user, used) for user, used in uses if used in cls.classes}

    def test_every_class_is_checked(self):
        self.assertGreater(len(self.sources), 50)
        self.assertEqual(set(MAY_USE), {package(name) for name in self.sources})
        self.assertEqual(set(self.sources), self.classes)
        # The command line names its commands only in an annotation.
        self.assertLessEqual({(COMMAND_LINE, f"{TOP}.evening.EveningCommand"),
                              (COMMAND_LINE, f"{TOP}.shell.ShellCommand")}, self.uses)

    def test_no_package_uses_one_above_it(self):
        wrong = [f"{user} -> {used}" for user, used in sorted(self.uses)
                 if package(user) != package(used)
                 and package(used) not in MAY_USE[package(user)]
                 and not (user == COMMAND_LINE and package(used) in COMMANDS)]
        self.assertEqual([], wrong)

    def test_no_packages_use_each_other(self):
        below = collections.defaultdict(set)
        for user, used in self.uses:
            if package(user) != package(used):
                below[package(user)].add(package(used))
        while below:
            # Packages that use none of the rest are removed, until none is left.
            lowest = {name for name in set(below) | set().union(*below.values())
                      if not below.get(name)}
            self.assertTrue(lowest, f"these use each other: {dict(below)}")
            below = {name: used - lowest for name, used in below.items() if name not in lowest}


if __name__ == "__main__":
    unittest.main()
