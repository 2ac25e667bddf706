"""The logs with known causes, and the program that measures how they are explained: the lines that a
label names show its cause, and the figures are those of the answers."""
import gzip
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

FOLDER = pathlib.Path(__file__).resolve().parent
BUILD = pathlib.Path(sys.argv.pop(1)).resolve()

# What one of the lines that show a cause says.
SHOWN = {
    "argument-refused": r"too large|is NULL, ret = 5|length = |getEnumValue Error|\(param\)ret = 5",
    "java-field-missing": r"fieldID is NULL|field_id is NULL|\(param\)ret = 5",
    "surface-refused": r"surface_object is NULL",
    "command-not-taken": r"FUNCEND  ,dtvSvLib\w+\(\), *\d+,ret = (-|[1-9])",
    "command-failed": r"result = (-|[1-9])|RECV, reply_data.handle = [1-9]|return_value = [1-9]",
    "empty-answer": r"return DTVSVLIB_RESULT_ABORT_NG",
    "no-reply": r"FUNCSTART,dtvSvLib", "slow-reply": r"FUNCSTART,dtvSvLib",
    "service-stopped": r"FUNCSTART,dtvSvLib",
    "record-size": r"recv_size err!", "record-count": r"is over count",
    "record-text": r"OrgNewStringUTF\(\), *\d+,Failure, ret is NULL",
    "unknown-event": r"recvEventFromServer\(\).*event_id = ", "class-missing": r"Can't find class : ",
    "method-missing": r"GetMethodID error!", "native-missing": r"registerNatives, failed for",
    "load-failed": r"GetEnv failed", "callback-threw": r"IllegalStateException",
    "thread-table-full": r"env is NULL!|FUNCEND  ,getJNIEnv",
    "attach-failed": r"AttachCurrentThread\(\) error!",
    "event-after-release": r"dtvsv_msgid_lib_\w+\(\).*handle = 1\b",
    "event-without-session": r"dtvsv_msgid_lib_\w+\(\).*handle = \d+",
}

# Answers with what the labels say. "spoil" is changed by the tests.
ORACLE = """
import json, pathlib, sys
spoil = {spoil!r}
log = pathlib.Path(sys.argv[1])
label = next(one for one in json.loads((log.parent / "labels.json").read_text())
             if one["log"] == log.name)
cause = label["cause"]
if spoil == cause:
    cause = "unheard-of"
known = cause != "none" and label["judgeable"]
findings = [{{"id": 1, "rule": cause, "subject": label["subject"], "severity": "error", "lines": [1],
             "cause_of": [], "caused_by": None}}] if known else []
losses = [{{"kind": kind, "line": 1}} for kind in label["losses"] if kind != spoil]
status = 1 if findings else 2 if losses or label["empty"] else 0
if spoil == "clean":
    status = 0
print(json.dumps({{"version": 1, "status": status, "losses": losses, "findings": findings}}))
sys.exit(status)
"""


def contents(log):
    data = log.read_bytes()
    return (gzip.decompress(data) if log.suffix == ".gz" else data).decode("utf-8", "surrogateescape")


class Corpus(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.corpus = cls.folder / "corpus"
        subprocess.run([sys.executable, FOLDER / "make_corpus.py", BUILD, cls.corpus, "--runs", "1"],
                       check=True, timeout=300, stdout=subprocess.DEVNULL)
        cls.labels = json.loads((cls.corpus / "labels.json").read_text())

    def measure(self, spoil="", labels=None):
        """The result of measuring an analyser that answers with the labels."""
        oracle = self.folder / "oracle.py"
        oracle.write_text(ORACLE.format(spoil=spoil))
        if labels is not None:
            (self.corpus / "labels.json").write_text(json.dumps(labels))
            self.addCleanup((self.corpus / "labels.json").write_text, json.dumps(self.labels))
        return subprocess.run([sys.executable, FOLDER / "score.py", self.corpus, "--analyser",
                               sys.executable, oracle], capture_output=True, text=True, timeout=300,
                              check=False)

    def test_the_lines_show_the_cause(self):
        self.assertEqual(set(SHOWN) | {"none"}, {label["cause"] for label in self.labels})
        for label in self.labels:
            if label["cause"] == "none" or not label["judgeable"]:
                continue
            lines = contents(self.corpus / label["log"]).split("\n")
            shown = [lines[number - 1] for number in label["lines"]]
            self.assertTrue(any(re.search(SHOWN[label["cause"]], line) for line in shown), (label, shown))

    def test_a_cause_that_is_not_in_the_log_is_not_to_be_judged(self):
        # Causes whose lines are written for nothing else.
        visible = ["surface-refused", "empty-answer", "record-size", "record-count", "record-text",
                   "class-missing", "method-missing", "native-missing", "load-failed", "callback-threw",
                   "thread-table-full"]
        for label in self.labels:
            text = contents(self.corpus / label["log"])
            if label["cause"] in visible and not label["judgeable"]:
                self.assertNotRegex(text, SHOWN[label["cause"]], label)

    def test_the_marks_of_losses(self):
        found = set()
        for label in self.labels:
            text = contents(self.corpus / label["log"])
            found |= set(label["losses"])
            self.assertEqual("chatty" in label["losses"], "uid=10045(u0_a45) " in text, label)
            self.assertEqual(label["empty"], ",TENRIK," not in text, label)
            if "levels-missing" in label["losses"]:
                self.assertLess(len(set(re.findall(
                    r",(ERROR    |FUNCSTART|FUNCEND  |INFO     |DEBUG    ),", text))), 5)
        self.assertLessEqual({"levels-missing", "chatty", "cut-line"}, found)

    def test_right_answers_pass(self):
        run = self.measure()
        self.assertEqual((0, ""), (run.returncode, run.stderr), run.stdout)
        self.assertRegex(run.stdout, r"\nopen: first cause +(\d+) of +\1 100\.0%\n")

    def test_wrong_answers_do_not(self):
        for spoil, low in [("argument-refused", "open: first cause"), ("clean", "open: lossy logs called"),
                           ("chatty", "open: chatty named")]:
            run = self.measure(spoil)
            self.assertEqual(1, run.returncode, run.stderr)
            self.assertIn("\nnot as it has to be: ", run.stdout)
            self.assertIn(low, run.stdout.rsplit("not as it has to be: ", 1)[1])

    def test_a_finding_in_a_clean_log_fails(self):
        changed = [{**label, "cause": "none", "losses": [], "levels": "all"}
                   if label["cause"] == "record-size" else label for label in self.labels]
        oracle = self.folder / "false.py"
        oracle.write_text('import json\nprint(json.dumps({"version": 1, "status": 1, "losses": [], '
                          '"findings": [{"rule": "record-size", "subject": None, "severity": "error", '
                          '"caused_by": None}]}))\nraise SystemExit(1)\n')
        (self.corpus / "labels.json").write_text(json.dumps(changed))
        self.addCleanup((self.corpus / "labels.json").write_text, json.dumps(self.labels))
        run = subprocess.run([sys.executable, FOLDER / "score.py", self.corpus, "--analyser", sys.executable,
                              oracle], capture_output=True, text=True, timeout=300, check=False)
        self.assertEqual(1, run.returncode, run.stderr)
        self.assertIn("open: clean logs with findings", run.stdout.rsplit("not as it has to be: ", 1)[1])

    def test_nothing_is_said_about_logs_that_are_held_out(self):
        held_out = [{**label, "held_out": True} for label in self.labels]
        run = self.measure("argument-refused", held_out)
        self.assertEqual(1, run.returncode, run.stderr)
        self.assertIn("held out: first cause", run.stdout)
        self.assertNotIn(str(self.corpus), run.stdout)

    def test_an_answer_that_cannot_be_read_is_no_figure(self):
        for command in (["/bin/true"], ["/bin/echo", '{"version": 2}'], ["/nowhere/explain"]):
            run = subprocess.run([sys.executable, FOLDER / "score.py", self.corpus, "--analyser", *command],
                                 capture_output=True, text=True, timeout=300, check=False)
            self.assertEqual(2, run.returncode, run.stdout)
            self.assertRegex(run.stderr, r"\Ascore: ")


if __name__ == "__main__":
    unittest.main()
