"""What is made of gcov's counts.

usage: coverage_test.py COVERAGE_FOLDER
"""
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, sys.argv.pop(1))
import coverage
import gcov

ROOT = pathlib.Path("/root-of-the-project")


def counted(file, lines, functions=()):
    return {"current_working_directory": "/", "files": [{"file": file, "functions": list(functions), "lines": lines}]}


def line(number, count, branches=(), function="f"):
    return {"line_number": number, "count": count, "function_name": function,
            "branches": [{"count": count, "throw": throw} for count, throw in branches]}


class Counts(unittest.TestCase):
    def add(self, *documents):
        lines = {}
        for document in documents:
            gcov.add(lines, document, ROOT, None)
        return lines

    def test_objects_and_instances_are_added(self):
        file = "/root-of-the-project/src/a/a.h"
        lines = self.add(counted(file, [line(3, 0, [(0, False), (0, False)]), line(3, 2, [(2, False), (0, False)])]),
                         counted(file, [line(3, 1, [(0, False), (1, False)])]))
        self.assertEqual(lines["src/a/a.h", 3].count, 3)
        self.assertEqual(lines["src/a/a.h", 3].branches, {2: [2, 1]})

    def test_what_is_not_of_the_bridge_or_of_the_compiler_is_left(self):
        lines = self.add(counted("/usr/include/a.h", [line(1, 1)]),
                         counted("/root-of-the-project/tests/a.cpp", [line(1, 1)]),
                         counted("/root-of-the-project/src/a/a.cpp",
                                 [line(1, 0, function="_GLOBAL__sub_I_a"), line(2, 1, [(0, True)])]))
        self.assertEqual(list(lines), [("src/a/a.cpp", 2)])
        self.assertEqual(lines["src/a/a.cpp", 2].branches, {}, "no exception is thrown")

    def test_names_are_without_arguments(self):
        for name, plain in (("a::B<3, c::D<4> >::f(int, char*)", "a::B::f"),
                            ("int (anonymous namespace)::g<A>(A) [with A = int]", "g"),
                            ("f(int)::{lambda(char const*)#1}::operator()(char const*) const", "f")):
            self.assertEqual(gcov.plain(name), plain)


class Named(unittest.TestCase):
    def read(self, text):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder, "list")
            file.write_text(text, encoding="utf-8")
            return coverage.read_named(file)

    def test_an_entry(self):
        self.assertEqual(
            self.read("# text\n\nsrc/a.cpp\nf\nif (a) {\nbranch 1 of 2\n  not\n  possible\n"),
            {("src/a.cpp", "f", "if (a) {", "branch 1 of 2"): "not possible"})

    def test_an_entry_without_a_reason_is_refused(self):
        with self.assertRaisesRegex(ValueError, "an entry is"):
            self.read("src/a.cpp\nf\nif (a) {\nbranch 1 of 2\n")


if __name__ == "__main__":
    unittest.main()
