"""The evening without the commands that are sent to be refused: nothing in it is refused, fails or
stays unanswered."""
import json
import pathlib
import re
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desk"))
from desk import BUILD, ROOT, DeskTest  # noqa: E402

# What says that a command or an event has failed, besides the level ERROR.
FAILURE = re.compile(r"is too large|is NULL|getEnumValue Error|out of value| NG\b|err!|over count"
                     r"|\(param\)ret = [1-9]|FUNCEND  ,dtvSvLib\w+\(\), *\d+,ret = [^0]|ABORT_NG")
# The end of the process: the VM's own thread has no environment.
AT_END = re.compile(r"^,TENRIK,VM Thread,ERROR    ,getJNIEnv\(\)")


class NoRefusals(DeskTest):
    def evening(self, *arguments):
        trace = self.folder / "trace"
        capture = self.folder / "capture"
        run = subprocess.run([ROOT / "run", "--build", BUILD, "--json", "--trace", trace, "--capture",
                              capture, *arguments], capture_output=True, text=True, encoding="utf-8",
                             timeout=60, check=False)
        self.assertEqual((0, ""), (run.returncode, run.stderr))
        lines = trace.read_text(encoding="utf-8", errors="surrogateescape").split("\n")
        shown = json.loads(subprocess.run(
            [BUILD / "bin/dtv-show", "--json", capture], capture_output=True, text=True,
            encoding="utf-8", timeout=60, check=True).stdout)
        return json.loads(run.stdout), [line for line in lines if line.startswith(",")], shown

    def failures(self, lines):
        return [line for line in lines if not AT_END.search(line)
                and (FAILURE.search(line) or ",ERROR    ," in line)]

    def test_nothing_is_refused_or_fails(self):
        for city, seed in [("br-sp-SaoPaulo", 20), ("br-mg-Luz", 3)]:
            figures, lines, shown = self.evening("--no-refusals", "--seed", str(seed), "--city", city)
            self.assertEqual({}, figures["refusals"])
            self.assertEqual([], figures["natives"]["missing"])
            self.assertEqual([], self.failures(lines))
            self.assertEqual([], shown["unanswered"])
            messages = shown["messages"]
            self.assertEqual({0}, {message["value"] for message in messages})
            self.assertEqual({0}, {value for message in messages if message["kind"] != "command"
                                   for name, value in message.get("fields", {}).items()
                                   if name in ("result", "return_value") and "partner" in message})

    def test_the_usual_evening_is_seen_to_fail(self):
        figures, lines, _ = self.evening("--seed", "20")
        self.assertEqual(13, len(figures["refusals"]))
        self.assertNotEqual([], self.failures(lines))

    def test_the_table_says_so(self):
        run = subprocess.run([ROOT / "run", "--build", BUILD, "--no-refusals"], capture_output=True,
                             text=True, encoding="utf-8", timeout=60, check=True)
        self.assertIn("\nrefusals provoked       0\n", run.stdout)
        self.assertNotIn("refused", run.stdout)


if __name__ == "__main__":
    unittest.main()
