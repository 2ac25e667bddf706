"""What dtv-explain does, from outside.

usage: explain_test.py DTV_EXPLAIN
"""
import gzip
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "show" / "tests"))
from capture_file import COMMAND, EVENT, Capture  # noqa: E402

EXPLAIN = os.path.abspath(sys.argv[1])
CREATE, CREATE_REPLY, CONTROL_LNA, LNA_REPLY = 0x10000000, 0x1000004f, 0x1000001a, 0x10000065
RELEASE, RELEASE_REPLY = 0x10000001, 0x10000050

LOAD = """\
desk FUNCSTART JNI_OnLoad 124
desk DEBUG JNI_OnLoad 125 pid = 3109, threadid = a1dfe6c0
desk FUNCSTART registerNatives 71
desk FUNCEND registerNatives 93 ret = 0
desk FUNCEND JNI_OnLoad 128
"""
CREATED = """\
desk FUNCSTART dtvSvLibCreate 129
desk DEBUG dtvSvLibCreate 30 SEND, start_type = 0 max_delay_time = 100
desk FUNCSTART getRetCode 42 (param)ret = 0
desk FUNCEND getRetCode 64
desk FUNCEND dtvSvLibCreate 141 ret = 0
"""
RELEASED = CREATED.replace("Create", "Release").replace(
    "start_type = 0 max_delay_time = 100", "dtvsv_handle = 1")
REFUSED = """\
desk FUNCSTART dtvSvLibSelectChannel 129 hdl = 1
desk FUNCSTART getRetCode 42 (param)ret = 5
desk FUNCEND getRetCode 64
desk DEBUG dtvSvLibSelectChannel 68 physical_channel is too large : 63, ret = 5
"""
NOT_TAKEN = RELEASED.replace("dtvSvLibRelease 141 ret = 0", "dtvSvLibRelease 141 ret = -1")


def reply(number):
    return f"""\
Event FUNCSTART recvEventFromServer 49 pid = 1, threadid = a1, event_id = {number:x}, recv_size = 8
Event FUNCSTART getJNIEnv 42
Event INFO getJNIEnv 58 Got JNIEnv! threadid=a1 env=0x1
Event FUNCSTART DoListenerEvent 69
Event FUNCSTART dtvsv_msgid_lib_common_reply 12
Event DEBUG dtvsv_msgid_lib_common_reply 13 dtvsv_handle = 1, result = 0
Event FUNCEND dtvsv_msgid_lib_common_reply 24 ret = 0
Event FUNCEND DoListenerEvent 88
Event FUNCEND recvEventFromServer 64
"""


def log_of(*parts):
    """Lines of the trace: thread, level, function, source line, message."""
    lines = []
    for line in "".join(parts).splitlines():
        thread, level, function, source, *message = line.split(" ", 4)
        lines.append(f",TENRIK,{thread:8},{level:9},{function}(),{source:>4},{''.join(message)}\n")
    return "".join(lines).encode()


BEGIN = (LOAD, CREATED, reply(CREATE_REPLY))
CLEAN = log_of(*BEGIN, RELEASED, reply(RELEASE_REPLY))
FOUND = log_of(*BEGIN, REFUSED, NOT_TAKEN, RELEASED, reply(RELEASE_REPLY))
CUT = CLEAN[:-12]


def handle(number):
    return number.to_bytes(2, "little") + bytes(2)


class Folder(unittest.TestCase):
    maxDiff = 4000

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, name, content):
        path = self.folder / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(content)
        return path

    def explain(self, *arguments, status, error="", **others):
        """What it prints. On standard error there has to be `error`, and nothing without one."""
        done = subprocess.run([EXPLAIN, *arguments], capture_output=True, timeout=60, check=False,
                              **others)
        said = done.stderr.decode()
        self.assertEqual(done.returncode, status, (done.stdout, said))
        self.assertIn(error, said)
        self.assertEqual(bool(error), bool(said), said)
        return done.stdout.decode()


class Arguments(Folder):
    def test_help(self):
        text = self.explain("--help", status=0)
        self.assertTrue(text.startswith("usage: ./run explain "))
        self.assertEqual(text, self.explain("-h", status=0))
        self.assertLessEqual(max(map(len, text.splitlines())), 80)

    def test_wrong_ones(self):
        log = self.file("a.log", CLEAN)
        other = self.file("b.log", CLEAN)
        for arguments, error in (
                ((), "which log?"),
                (("--no-such", log), "there is no option --no-such"),
                (("-x", log), "there is no option -x"),
                (("--json=1", log), "--json takes no value"),
                (("--only", "no-such-rule", log), "--only needs the name of a rule"),
                (("--only=", log), "--only needs the name of a rule"),
                (("--only",), "--only needs"),
                (("--around", "0", log), "--around needs the number of a line, not 0"),
                (("--around", "-1", log), "--around needs the number of a line"),
                (("--around", "1x", log), "--around needs the number of a line"),
                (("--around", "1", log, other), "--around shows the lines of one log"),
                (("--around", "1", "--json", log), "--around shows the lines of one log"),
                (("--slow", "0", log), "--slow needs a number of seconds"),
                (("--slow", "nan", log), "--slow needs a number of seconds"),
                (("--slow", "86401", log), "--slow needs a number of seconds"),
                (("--jobs", "0", log), "--jobs needs a number from 1 to 64"),
                (("--jobs", "65", log), "--jobs needs a number from 1 to 64"),
                (("--ndjson=", log), "--ndjson needs the name of a file"),
                (("--json", log, other), "--json and --only are for one log"),
                (("--only", "error", self.folder), "--json and --only are for one log")):
            with self.subTest(arguments=arguments):
                self.assertEqual(self.explain(*arguments, status=2, error=error), "")

    def test_after_two_dashes_names_of_files_begin(self):
        self.file("--json", CLEAN)
        text = self.explain("--", "--json", status=0, cwd=self.folder)
        self.assertTrue(text.startswith("--json\n"))

    def test_only(self):
        log = self.file("a.log", FOUND)
        self.assertIn("argument-refused", self.explain(log, status=1))
        for only, shown in (("argument-refused", True), ("provoked", True), ("SelectChannel", True),
                            ("error", False), ("Release", False)):
            for form in (("--only", only), (f"--only={only}",)):
                text = self.explain(*form, log, status=1)
                self.assertEqual("argument-refused:" in text, shown, text)
                self.assertEqual("command-not-taken:" in text, not shown, text)
        found = json.loads(self.explain("--only", "error", "--json", log, status=1))["findings"]
        self.assertEqual([each["rule"] for each in found], ["command-not-taken"])

    def test_slow(self):
        times = CLEAN.decode().splitlines(True)
        place = len(log_of(LOAD, CREATED).splitlines())
        log = self.file("a.log", "".join(
            f"11-21 22:00:0{0 if i < place else 3}.000 D/dtv ( 3109): {line}"
            for i, line in enumerate(times)).encode())
        self.assertIn("slow-reply", self.explain(log, status=1))
        self.assertIn("slow-reply", self.explain("--slow=3", log, status=1))
        self.assertNotIn("slow-reply", self.explain("--slow", "3.001", log, status=0))


class Around(Folder):
    def around(self, line, content, **others):
        return self.explain("--around", str(line), self.file("a.log", content),
                            **{"status": 0, **others})

    def test_first_last_and_beyond(self):
        last = len(CLEAN.splitlines())
        first = self.around(1, CLEAN).splitlines()
        self.assertEqual(first[0], ">       1 desk FUNCSTART JNI_OnLoad():124")
        self.assertEqual(len([line for line in first if line[1:9].strip().isdigit()]), 11)
        end = self.around(last, CLEAN)
        self.assertIn(f"\n>{last:8} Event FUNCEND recvEventFromServer():64\n", end)
        self.assertIn(f"line {last} is of ReleaseReply, session 1, on Event: lines {last - 8} to {last}",
                      end)
        self.around(last + 1, CLEAN, status=2, error=f"a.log has {last} lines")
        self.around(1, b"", status=2, error="a.log has 0 lines")
        self.around(10**19, CLEAN, status=2, error=f"a.log has {last} lines")

    def test_within_a_text_of_several_lines(self):
        text = log_of("desk DEBUG dtvSvLibTerminateRec 37 SEND, TERMINATE_REC : save_data = 1, "
                      "title_size = 7, title_name = one\n").replace(b"one", b"one\ntwo")
        before = len(log_of(*BEGIN).splitlines())
        text = log_of(*BEGIN) + text + log_of(RELEASED)
        for line in (before + 1, before + 2):
            shown = self.around(line, text)
            self.assertEqual([each[:9] for each in shown.splitlines() if each.startswith(">")],
                             [f">{before + 1:8}"], shown)

    def test_lines_of_other_programs(self):
        shown = self.around(2, b"one\ntwo \x1b[2J\nthree\n")
        self.assertEqual(shown, "        1 one\n>       2 two \\x1b[2J\n        3 three\n")

    def test_what_has_no_lines(self):
        capture = self.folder / "a.pcapng"
        Capture().write(capture)
        self.explain("--around", "1", capture, status=2, error="is a capture and has no lines")
        self.explain("--around", "1", self.folder, status=2, error="Is a directory")
        self.explain("--around", "1", self.folder / "none", status=2,
                     error="No such file or directory")

    def test_from_standard_input(self):
        shown = self.explain("--around", "1", "-", status=0, input=CLEAN)
        self.assertEqual(shown.splitlines()[0], ">       1 desk FUNCSTART JNI_OnLoad():124")


class Files(Folder):
    def test_statuses(self):
        self.assertIn("Nothing was found.", self.explain(self.file("a.log", CLEAN), status=0))
        self.assertIn("What was found: 2 causes", self.explain(self.file("b.log", FOUND), status=1))
        self.assertIn("cut-line", self.explain(self.file("c.log", CUT), status=2))

    def test_what_cannot_be_read(self):
        none = self.folder / "none.log"
        self.assertIn("it cannot be read: No such file",
                      self.explain(none, status=2, error="none.log: No such file or directory"))
        self.assertIn("No such file", json.loads(
            self.explain("--json", none, status=2, error="No such file"))["error"])
        self.explain("", status=2, error="No such file or directory")
        self.explain("-", status=2, error="Bad file descriptor",
                     preexec_fn=lambda: os.close(0))

    @unittest.skipUnless(os.geteuid() == 0, "another user is needed")
    def test_what_may_not_be_read(self):
        self.file("logs/a.log", CLEAN).chmod(0)
        self.file("logs/b/b.log", CLEAN).parent.chmod(0)
        self.file("logs/c.log", CLEAN)
        self.folder.chmod(0o755)
        (self.folder / "logs").chmod(0o755)
        as_nobody = {"user": 65534, "group": 65534, "cwd": "/"}
        self.explain(self.folder / "logs/a.log", status=2, error="Permission denied", **as_nobody)
        text = self.explain(self.folder / "logs", status=2, error="b: Permission denied", **as_nobody)
        self.assertIn("2 logs: 0 with findings, 1 clean, 1 cannot be judged", text)

    def test_what_holds_nothing(self):
        for content in (b"", b"\n", b"\0" * 4096, os.urandom(100000), b"nothing of it\n" * 1000):
            text = self.explain(self.file("a.log", content), status=2)
            self.assertIn("No line is of the bridge", text)

    def test_gzip(self):
        whole = gzip.compress(FOUND * 20)
        self.explain(self.file("a.gz", whole), status=1)
        text = self.explain(self.file("b.gz", whole[:-9]), status=1)
        self.assertIn("the compressed data is cut", text)
        damaged = bytearray(gzip.compress(CLEAN))
        damaged[len(damaged) // 2] ^= 0xff
        done = subprocess.run([EXPLAIN, self.file("c.gz", bytes(damaged))], capture_output=True,
                              timeout=60, check=False)
        self.assertIn(done.returncode, (1, 2))
        self.assertIn(b"damaged", done.stdout)
        text = self.explain(self.file("d.gz", gzip.compress(CLEAN)[:-4]), status=2)
        self.assertIn("damaged", text)

    def test_standard_input(self):
        text = self.explain("-", status=1, input=FOUND)
        self.assertTrue(text.startswith("standard input\n"))
        self.explain("-", status=0, input=gzip.compress(CLEAN))
        self.explain("-", status=2, input=b"")

    def test_pipe(self):
        """All of it is explained, also what comes first."""
        pipe = self.folder / "pipe"
        os.mkfifo(pipe)
        writer = threading.Thread(target=lambda: pipe.write_bytes(FOUND * 100))
        writer.start()
        text = self.explain(pipe, status=1)
        writer.join()
        lines = len(FOUND.splitlines()) * 100
        self.assertIn(f"{lines} lines, {lines} of the bridge, {lines} understood", text)

    def test_several(self):
        clean, found = self.file("a.log", CLEAN), self.file("b.log", FOUND)
        text = self.explain(clean, found, found, status=1)
        self.assertIn("3 logs: 2 with findings, 1 clean, 0 cannot be judged\n", text)
        self.assertIn("     2  command-not-taken Release\n", text)
        self.assertIn("2 logs: 0 with findings, 2 clean", self.explain(clean, clean, status=0))
        none = self.folder / "none"
        self.assertIn("No such file or directory", self.explain(clean, none, status=2))
        self.assertIn("1 with findings", self.explain(found, none, status=1))

    def test_folder(self):
        self.file("logs/a.log", CLEAN)
        self.file("logs/b.log", FOUND)
        self.file("logs/c.gz", gzip.compress(FOUND)[:40])
        self.file("logs/d.log", b"")
        self.file("logs/e/f.log", CUT)
        os.mkfifo(self.folder / "logs/pipe")
        os.symlink(self.folder / "logs", self.folder / "logs/again")
        os.symlink("nowhere", self.folder / "logs/dangling")
        text = self.explain(self.folder / "logs", status=1)
        self.assertIn("5 logs: 1 with findings, 1 clean, 3 cannot be judged\n", text)
        for jobs in "1", "2", "64":
            self.assertEqual(text, self.explain("--jobs", jobs, self.folder / "logs", status=1))
        (self.folder / "empty").mkdir()
        self.assertIn("0 logs", self.explain(self.folder / "empty", status=2))


class Captures(Folder):
    def capture(self, *, answered):
        capture = Capture()
        capture.add(COMMAND, CREATE, bytes(8))
        capture.add(EVENT, CREATE_REPLY, handle(1) + bytes(4), thread=20)
        capture.add(COMMAND, CONTROL_LNA, handle(1) + bytes(4))
        if answered:
            capture.add(EVENT, LNA_REPLY, handle(1) + bytes(4), thread=20)
        capture.add(COMMAND, RELEASE, handle(1))
        capture.add(EVENT, RELEASE_REPLY, handle(1) + bytes(4), thread=20)
        path = self.folder / "evening.pcapng"
        capture.write(path)
        return path

    def test_statuses(self):
        self.assertIn("a capture of 6 messages", self.explain(self.capture(answered=True), status=0))
        text = self.explain(self.capture(answered=False), status=1)
        self.assertIn("error no-reply: ControlLNA, session 1", text)
        self.assertIn("    message 3\n", text)

    def test_cut(self):
        path = self.capture(answered=True)
        whole = path.read_bytes()
        path.write_bytes(whole[:-20])
        self.assertIn("damaged", self.explain(path, status=2))
        for size in range(4, len(whole), 7):
            path.write_bytes(whole[:size])
            done = subprocess.run([EXPLAIN, path], capture_output=True, timeout=60, check=False)
            self.assertIn(done.returncode, (1, 2), (size, done))

    def test_neither_from_a_pipe_nor_compressed(self):
        content = self.capture(answered=True).read_bytes()
        self.explain("-", status=2, input=content, error="a capture has to be a file")
        self.explain(self.file("a.gz", gzip.compress(content)), status=2,
                     error="a capture has to be a file")


class Outputs(Folder):
    def test_json(self):
        document = json.loads(self.explain("--json", self.file("a.log", FOUND), status=1))
        self.assertEqual(document["version"], 1)
        self.assertEqual(document["status"], 1)
        self.assertEqual([each["rule"] for each in document["findings"]],
                         ["command-not-taken", "argument-refused"])

    def test_ndjson(self):
        logs = [self.file(f"{i:02}.log", (CLEAN, FOUND, CUT)[i % 3]) for i in range(30)]
        out = self.folder / "out.ndjson"
        self.explain("--ndjson", out, *logs, status=1)
        objects = [json.loads(line) for line in out.read_text().splitlines()]
        self.assertEqual(sorted(each["file"] for each in objects if each["type"] == "log"),
                         [str(log) for log in logs])
        self.assertEqual([each["status"] for each in objects if each["type"] == "log"].count(1), 10)
        self.assertEqual(sum(each["type"] == "finding" for each in objects), 20)
        self.assertEqual(sum(each["type"] == "session" for each in objects), 30)
        self.explain("--ndjson", out, logs[0], status=0)
        self.assertEqual(len(out.read_text().splitlines()), 2)

    def test_ndjson_that_cannot_be_written(self):
        log = self.file("a.log", FOUND)
        self.explain("--ndjson", "/dev/full", log, status=2, error="cannot write all of /dev/full")
        self.explain("--ndjson", "/dev/full", log, log, status=2,
                     error="cannot write all of /dev/full")
        self.explain("--ndjson", self.folder, log, status=2, error="Is a directory")
        self.explain("--ndjson", self.folder / "no/file", log, status=2, error="No such file")

    def test_a_log_is_not_overwritten(self):
        log = self.file("logs/a.log", FOUND)
        other = self.file("logs/b.log", FOUND)
        os.symlink(log, self.folder / "link")
        for out, logs in ((log, [log]), (log, [log, other]), (log, [log.parent]),
                          (self.folder / "link", [log])):
            self.explain("--ndjson", out, *logs, status=2, error="is one of the logs")
        self.explain("--capture", log, log, status=2, error=str(log))
        self.assertEqual(log.read_bytes(), FOUND)

    def test_standard_output_that_cannot_be_written(self):
        log = self.file("a.log", CLEAN)
        for arguments in (("--help",), (log,), ("--json", log), (log, log), ("--around", "1", log)):
            with self.subTest(arguments=arguments), open("/dev/full", "wb") as full:
                for output in ({"stdout": full}, {"preexec_fn": lambda: os.close(1)}):
                    done = subprocess.run([EXPLAIN, *arguments], stderr=subprocess.PIPE, timeout=60,
                                          check=False, **output)
                    self.assertEqual((done.returncode, done.stderr),
                                     (2, b"dtv-explain: cannot write to standard output\n"))



if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
