"""What the mutants of a source are, and what their list says.

usage: points_test.py MUTANTS_FOLDER
"""
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, sys.argv.pop(1))
import building
import points
import programs
import survivors
from tokens import tokens_of


def mutants(text, operator, file="src/a/a.cpp"):
    """The texts that an operator makes of a text."""
    return [point.applied(text) for point in points.points_of(file, text) if point.operator == operator]


class Tokens(unittest.TestCase):
    def test_comments_are_none(self):
        self.assertEqual([token.text for token in tokens_of("a // 1 == 2\n/* b\n 3 */ c")], ["a", "c"])

    def test_lines_are_counted_through_comments_and_continued_lines(self):
        self.assertEqual([(token.text, token.line) for token in tokens_of("/*\n*/ a\n#define B \\\n  1\nc")],
                         [("a", 2), ("define", 3), ("B", 3), ("1", 4), ("c", 5)])

    def test_directives_are_known(self):
        found = {token.text: token.directive for token in tokens_of("#include <a>\n#define B 1\nc")}
        self.assertEqual((found["a"], found["1"], found["c"]), ("include", "define", ""))

    def test_brackets_are_paired(self):
        tokens = tokens_of("f(a[1], (b))")
        self.assertEqual([token.partner for token in tokens], [-1, 10, -1, 5, -1, 3, -1, 9, -1, 7, 1])


class Operators(unittest.TestCase):
    def test_constants(self):
        self.assertEqual(mutants("int a = 0x1f;", "constant+1"), ["int a = 0x20;"])
        self.assertEqual(mutants("auto a = 10u;", "constant-1"), ["auto a = 9u;"])
        self.assertEqual(mutants("int a = 0;", "constant-1"), [])
        self.assertEqual(mutants("#define A 7\n", "constant+1"), ["#define A 8\n"])

    def test_what_is_checked_while_compiling_is_left(self):
        for text in ("static_assert(a == 1);", "DTV_RECORD_SIZE(A, 8);", "#include <a1>\n", "#if A == 1\n"):
            self.assertEqual([point for point in points.points_of("src/a/a.h", text)
                              if not point.operator.startswith("row")], [], text)

    def test_comparisons(self):
        self.assertEqual(mutants("a = b < c;", "comparison"), ["a = b <= c;", "a = b >= c;"])
        self.assertEqual(mutants("a = b == c;", "comparison"), ["a = b != c;"])

    def test_brackets_of_templates_are_no_comparisons(self):
        for text in ("template <int A>\nvoid f();", "auto a = static_cast<int>(b);", "sp<A> b;"):
            self.assertEqual(mutants(text, "comparison"), [], text)

    def test_references_are_no_logic(self):
        self.assertEqual(mutants("bool f(A&& a) { return a && b; }", "logic"),
                         ["bool f(A&& a) { return a || b; }"])

    def test_signs_and_widths(self):
        self.assertEqual(mutants("uint16_t a;", "sign"), ["int16_t a;"])
        self.assertEqual(mutants("uint16_t a;", "width"), ["uint8_t a;"])
        self.assertEqual(mutants("int a = -b;", "minus-deleted"), ["int a = b;"])

    def test_statements(self):
        text = "void f() {\n    int a = g();\n    if (a)\n        h(1,\n          2);\n    b.c = a;\n    return;\n}"
        self.assertEqual(mutants(text, "statement-deleted"), [
            text.replace("h(1,\n          2);", ";\n"),
            text.replace("b.c = a;", ";"),
        ])

    def test_conditions(self):
        self.assertEqual(mutants("void f() { if (a(b)) { } }", "condition-true"), ["void f() { if (true) { } }"])
        self.assertEqual(mutants("void f() { if (const int a = b(); a != 0) { } }", "condition-true"), [])

    def test_letters_spare_conversions_and_escapes(self):
        self.assertEqual(mutants(r'a("%d\n%-8s%ld");', "letter"), [])
        self.assertEqual(mutants(r'a("%dz");', "letter"), [r'a("%da");'])
        self.assertEqual(mutants(r'a("%dz");', "letter-deleted"), [r'a("%d");'])
        self.assertEqual(mutants('extern "C" int a();', "letter"), [])

    def test_arguments(self):
        self.assertEqual(mutants("f(a, g(b, c));", "swapped"), ["f(g(b, c), a);", "f(a, g(c, b));"])
        self.assertEqual(mutants("f(a, a);", "swapped"), [])
        self.assertEqual(mutants("void f(int a, const B& b);", "swapped"), [])

    def test_rows(self):
        text = "ROW(1, a)\nROW(2, b)\n\nROW(3, c)\n"
        self.assertEqual(mutants(text, "row-deleted"), [
            "\nROW(2, b)\n\nROW(3, c)\n", "ROW(1, a)\n\n\nROW(3, c)\n", "ROW(1, a)\nROW(2, b)\n\n\n"])
        self.assertEqual(mutants(text, "rows-swapped"), ["ROW(2, b)\nROW(1, a)\n\nROW(3, c)\n"])

    def test_lines_stay_where_they_are(self):
        text = "void f() {\n    g(\n        1,\n        2);\n    h(3);\n}\n"
        for point in points.points_of("src/a/a.cpp", text):
            self.assertEqual(point.applied(text).count("\n"), text.count("\n"), point.name)

    def test_names_are_of_file_line_operator_and_number(self):
        found = points.points_of("src/a/a.cpp", "\nint a = 1, b = 2;")
        self.assertEqual([point.name for point in found if point.operator == "constant+1"],
                         ["src/a/a.cpp:2:constant+1:1", "src/a/a.cpp:2:constant+1:2"])


class Choice(unittest.TestCase):
    def setUp(self):
        self.found = points.points_of("src/a/a.cpp", "int a = " + " + ".join(str(i) for i in range(1, 60)) + ";")

    def test_a_seed_says_the_order(self):
        names = [[point.name for point in points.in_order(self.found, seed)] for seed in (1, 1, 2)]
        self.assertEqual(names[0], names[1])
        self.assertNotEqual(names[0], names[2])
        self.assertEqual(sorted(names[0]), sorted(names[2]))

    def test_every_operator_comes_early(self):
        first = [point.operator for point in points.in_order(self.found, 1)[:30]]
        self.assertEqual(set(first), {"constant+1", "constant-1", "arithmetic"})


class Builds(unittest.TestCase):
    def test_checks_are_distinguished_from_what_is_no_program(self):
        check = "a.cpp:1:2: error: static assertion failed: text\n"
        warning = "a.cpp:1:2: error: unused variable 'a' [-Werror=unused-variable]\n"
        other = "a.cpp:1:2: error: expected ';' before 'a'\n"
        self.assertTrue(building.is_by_checks(check + warning))
        self.assertFalse(building.is_by_checks(other))
        self.assertFalse(building.is_by_checks(check + other))
        self.assertFalse(building.is_by_checks(""))

    def test_the_test_that_ran_is_named_when_a_process_dies(self):
        self.assertEqual(programs.failed_tests("[ RUN      ] A.B\n[       OK ] A.B\n[ RUN      ] A.C\n"), ("A.C",))
        self.assertEqual(programs.failed_tests("[  FAILED  ] A/B.C/0 (1 ms)\n[  FAILED  ] A/B.C/0\n"), ("A/B.C/0",))


class Survivors(unittest.TestCase):
    def read(self, text):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder, "list")
            file.write_text(text, encoding="utf-8")
            return survivors.read(file)

    def test_an_entry_is_found_wherever_its_lines_are(self):
        reasons = self.read("# text\n\nsrc/a/a.cpp\n-  a = 1;\n+  a = 2;\n  never\n  read\n")
        key = survivors.key_of("src/a/a.cpp", ["-      a = 1;", "+      a = 2;"])
        self.assertEqual(reasons, {key: "never read"})

    def test_an_entry_without_a_reason_is_refused(self):
        with self.assertRaisesRegex(ValueError, ":5: an entry is"):
            self.read("\nsrc/a/a.cpp\n-a\n+b\n")


if __name__ == "__main__":
    unittest.main()
