"""The packages of the desk's program: which may use which, by what the compiled classes use."""
import collections
import re
import subprocess
import unittest

from desk import BUILD, ROOT

TOP = "tenrik.desk"
# Each package with those that it may use. Of the top package only the command line, Main, knows the
# commands: they are parts of its own.
MAY_USE = {
    TOP: {f"{TOP}.core"},
    f"{TOP}.core": set(),
    f"{TOP}.evening": {f"{TOP}.core"},
    f"{TOP}.send": {f"{TOP}.core"},
    f"{TOP}.shell": {f"{TOP}.core", f"{TOP}.send"},
}
COMMAND_LINE = f"{TOP}.Main"
COMMANDS = {f"{TOP}.evening", f"{TOP}.shell"}
# A line of jdeps: a class, and one that it uses.
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
        cls.uses = {(user, used) for user, used in uses if used in cls.classes}

    def test_every_class_is_looked_at(self):
        sources = {".".join(source.relative_to(ROOT / "desk").with_suffix("").parts)
                   for source in (ROOT / "desk/tenrik").rglob("*.java")}
        self.assertGreater(len(sources), 50)
        self.assertEqual(set(MAY_USE), {package(name) for name in sources})
        self.assertEqual(sources, self.classes)

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
            # Packages that use none of the rest are taken away, until none is left.
            lowest = {name for name in set(below) | set().union(*below.values())
                      if not below.get(name)}
            self.assertTrue(lowest, f"these use each other: {dict(below)}")
            below = {name: used - lowest for name, used in below.items() if name not in lowest}


if __name__ == "__main__":
    unittest.main()
