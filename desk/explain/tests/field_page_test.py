#!/usr/bin/env python3
"""The page about logs shows what the programs print: docs/field.md and the log beside it.

usage: field_page_test.py ROOT BUILD
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT, BUILD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
LOG = "docs/field/receiver.log.gz"
PAGE = (ROOT / "docs/field.md").read_text(encoding="utf-8")


def run(program, *arguments):
    return subprocess.run([BUILD / "bin" / program, *arguments], cwd=ROOT, capture_output=True, text=True,
                          timeout=60, check=False)


class FieldPage(unittest.TestCase):
    def test_the_report_is_what_explain_prints(self):
        report = re.search(r"```\n(" + re.escape(LOG) + r"\n.*?)```", PAGE, re.DOTALL).group(1)
        shown, rest = report.split("    ...\n")
        self.assertEqual("", rest)
        printed = run("dtv-explain", LOG)
        self.assertEqual(1, printed.returncode, printed.stderr)
        self.assertEqual(shown, printed.stdout[:len(shown)])
        self.assertEqual([], [line for line in printed.stdout.splitlines() if len(line) > 80])

    def test_the_rules_are_those_that_there_are(self):
        rules = set(re.findall(r'^RULE\(\w+, "([a-z-]+)"', (ROOT / "desk/explain/rules.def").read_text(), re.MULTILINE))
        table = PAGE[PAGE.index("| Severity | Rules |"):PAGE.index("A finding follows")]
        self.assertEqual(rules, set(re.findall(r"`([a-z-]+)`", table)))

    def test_the_keys_are_those_of_the_document(self):
        document = json.loads(run("dtv-explain", "--json", LOG).stdout)
        sections = PAGE[PAGE.index("## JSON"):]
        described = set(re.findall(r"`(\w+)`", sections))
        keys = set(document) | set(document["findings"][0]) | set(document["sessions"][0]) \
            | set(document["latencies"][0]) | set(document["losses"][0])
        self.assertEqual(set(), keys - described)

    def test_the_capture_has_what_the_log_has(self):
        with tempfile.TemporaryDirectory() as folder:
            capture = pathlib.Path(folder) / "failure.pcapng"
            made = run("dtv-explain", "--capture", capture, LOG)
            self.assertEqual((0, ""), (made.returncode, made.stderr))
            again = json.loads(run("dtv-explain", "--json", capture).stdout)
            first = again["findings"][0]
            self.assertEqual(("service-stopped", "ControlScreenDisplay"), (first["rule"], first["subject"]))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
