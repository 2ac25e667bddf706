"""The driver of campaigns, with parts of the test's own.

usage: driver_test.py DRIVER_FOLDER
"""
import contextlib
import io
import json
import pathlib
import sys
import tempfile
import unittest
from unittest import mock

DRIVER = str(pathlib.Path(sys.argv[1]).resolve())
sys.path.insert(0, DRIVER)
import campaign
import figures
import page
import parts
import run_part

PART = '''
import sys
sys.path.insert(0, {driver!r})
from script_run import Run

run = Run("part")
{body}
run.end()
'''


class Driver(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.figures = self.folder / "figures.json"
        self.parts = []
        self.enterContext(mock.patch.object(parts, "PARTS", self.parts))

    def enterContext(self, context):
        entered = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return entered

    def add(self, name, body, **more):
        script = self.folder / f"{name}.py"
        script.write_text(PART.format(driver=DRIVER, body=body), encoding="utf-8")
        self.parts.append(parts.Part(name, f"the part {name}", "rounds", "none", "all",
                                     (str(script),), **({"share": 1} | more)))

    def run_driver(self, *arguments):
        """The status and what was printed, errors after the rest."""
        printed, errors = io.StringIO(), io.StringIO()
        command = ["campaign", "--figures", str(self.figures), *arguments]
        with mock.patch.object(sys, "argv", command), contextlib.redirect_stdout(printed), \
                contextlib.redirect_stderr(errors):
            try:
                status = campaign.main()
            except SystemExit as end:
                status = end.code
        return status, printed.getvalue() + errors.getvalue()

    def kept(self):
        return json.loads(self.figures.read_text(encoding="utf-8"))["parts"]

    def test_keeps_what_the_parts_report(self):
        self.add("one", "run.played('a')\nrun.played('b')\nrun.note('speed', 12.5)\n"
                        "run.left_out('nothing of c')")
        status, printed = self.run_driver("--seed", "7")
        self.assertEqual(status, 0, printed)
        self.assertRegex(printed, r"\none +2 rounds +0 s +0\n")
        entry = self.kept()["one"]
        self.assertEqual(entry["rounds"], 2)
        self.assertEqual(entry["seed"], 7)
        self.assertEqual(entry["notes"], {"speed": 12.5})
        self.assertEqual(entry["left_out"], ["nothing of c"])
        self.assertEqual(entry["findings"], [])
        for name in ("commit", "date", "compiler", "cpu", "kernel"):
            self.assertIn(name, entry)

    def test_a_part_that_is_not_played_keeps_its_figures(self):
        self.add("one", "run.played('a')")
        self.add("two", "run.played('a')")
        self.run_driver()
        self.run_driver("--only", "two", "--seed", "9")
        self.assertEqual(self.kept()["one"]["seed"], 1)
        self.assertEqual(self.kept()["two"]["seed"], 9)

    def test_a_finding_names_the_command_that_repeats_it(self):
        self.add("one", "run.played('a/1', 'it was 3')")
        status, printed = self.run_driver("--seed", "7")
        self.assertEqual(status, 1)
        self.assertIn("    it was 3\n    repeat: ./campaign --only one --seed 7 --repeat a/1\n", printed)
        self.assertEqual(self.kept()["one"]["findings"], [{"round": "a/1", "text": "it was 3"}])

    def test_repeats_one_round_and_keeps_nothing(self):
        self.add("one", "for name in ('a', 'b'):\n    if run.wants(name):\n        run.played(name, name)")
        status, printed = self.run_driver("--only", "one", "--repeat", "b")
        self.assertEqual(status, 1)
        self.assertIn("    b\n", printed)
        self.assertNotIn("    a\n", printed)
        self.assertFalse(self.figures.exists())
        status, printed = self.run_driver("--only", "one", "--repeat", "c")
        self.assertEqual(status, 1)
        self.assertIn("seed 1 has no such round", printed)

    def test_an_end_that_is_none_is_a_finding(self):
        for body, text in (
            ("import os, signal\nrun.played('a')\nos.kill(os.getpid(), signal.SIGSEGV)", "ended by SIGSEGV"),
            ("print('the last line')\nsys.exit(3)", "ended with status 3\n    the last line\n"),
            ("raise KeyError('here')", "KeyError: 'here'"),
            ("sys.exit(0)", "left no report"),
            ("pass", "played no round"),
        ):
            with self.subTest(body):
                self.parts.clear()
                self.add("one", body)
                status, printed = self.run_driver()
                self.assertEqual(status, 1)
                self.assertIn(text, printed)

    def test_a_part_that_does_not_end_is_ended(self):
        self.add("one", "import time\nrun.played('a')\ntime.sleep(60)")
        self.add("two", "run.played('a')")
        with mock.patch.object(run_part, "GRACE", 1):
            status, printed = self.run_driver("--minutes", "0.05")
        self.assertEqual(status, 1)
        self.assertIn("did not end in time", printed)
        self.assertEqual(self.kept()["two"]["rounds"], 1)

    def test_shares_the_time(self):
        self.add("one", "run.played('a')\nrun.note('seconds', run.seconds)", share=1)
        self.add("two", "run.played('a')\nrun.note('seconds', run.seconds)", share=3)
        self.run_driver("--minutes", "2")
        self.assertAlmostEqual(self.kept()["one"]["notes"]["seconds"], 30, delta=1)
        # What the first left is for the second.
        self.assertAlmostEqual(self.kept()["two"]["notes"]["seconds"], 120, delta=3)

    def test_leaves_out_a_part_that_needs_more_time(self):
        self.add("one", "run.played('a')\nrun.note('seconds', run.seconds)", share=1)
        self.add("long", "run.played('a')", share=3, least=100)
        status, printed = self.run_driver("--minutes", "2")
        self.assertEqual(status, 0)
        self.assertIn("long: left out, it needs 100 s: ./campaign --only long\n", printed)
        self.assertAlmostEqual(self.kept()["one"]["notes"]["seconds"], 120, delta=1)
        self.assertNotIn("long", self.kept())

    def test_refuses_wrong_arguments(self):
        self.add("one", "run.played('a')")
        for arguments, text in (
            (["--only", "other"], "--only other: it is one of one"),
            (["--repeat", "a", "--minutes", "0"], "--minutes 0: it is a number above 0"),
            (["--minutes", "nan"], "--minutes nan: it is a number above 0"),
            (["--minutes", "x"], "invalid float value: 'x'"),
            (["--seed", "-1"], "--seed -1: it is a number from 0 to 2^64 - 1"),
            (["--jobs", "0"], "--jobs 0: it is a number above 0"),
            (["--minutes", "0.001"], "--minutes 0.001 is too short for one: it needs 1 s"),
            (["--what"], "unrecognized arguments: --what"),
        ):
            with self.subTest(arguments):
                status, printed = self.run_driver(*arguments)
                self.assertEqual(status, 2)
                self.assertIn(text, printed)
        self.add("two", "run.played('a')")
        status, printed = self.run_driver("--repeat", "a")
        self.assertEqual(status, 2)
        self.assertIn("--repeat needs the one part of the round: --only PART", printed)

    def test_says_when_the_figures_cannot_be_kept(self):
        self.add("one", "run.played('a')")
        self.figures = pathlib.Path("/proc/figures.json")
        status, printed = self.run_driver()
        self.assertEqual(status, 1)
        self.assertIn("the figures cannot be kept: /proc/figures.json", printed)
        self.figures = self.folder / "broken.json"
        self.figures.write_text("{", encoding="utf-8")
        status, printed = self.run_driver()
        self.assertEqual(status, 1)
        self.assertEqual(self.figures.read_text(encoding="utf-8"), "{")

    def test_the_table_fits_the_terminal(self):
        for part in parts.chosen([]):
            self.assertLessEqual(len(part.name), 13)
        line = campaign.row("torture-i386", "100,000,000", "round trips", "12 min 34 s", 12)
        self.assertLessEqual(len(line), 80)

    def test_the_page_takes_the_figures_between_its_marks(self):
        self.add("one", "run.played('a')\nrun.note('speed', 1234567)\nrun.left_out('nothing of c')")
        self.run_driver()
        text = page.filled("Before\n<!-- one -->\nold\n<!-- end of one -->\nbetween\n"
                           "<!-- left out -->\n<!-- end of left out -->\n<!-- two -->\nold\n<!-- end of two -->\n",
                           figures.read(self.figures))
        self.assertEqual(text, "Before\n<!-- one -->\n| Figure | |\n| --- | ---: |\n| speed | 1,234,567 |\n"
                               "<!-- end of one -->\nbetween\n<!-- left out -->\n- one: nothing of c\n"
                               "<!-- end of left out -->\n<!-- two -->\nNot run.\n<!-- end of two -->\n")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
