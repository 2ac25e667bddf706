"""The pictures that dtv-show makes of a capture and of a log, held against what it says of them as JSON.

usage: pictures_test.py BUILD [CLASS]

The trace for Perfetto is decoded by protoc with the public field numbers of trace.proto.
"""
import collections
import datetime
import gzip
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parents[1] / "show" / "tests"))
from capture_file import COMMAND, EVENT, REFUSED, Capture  # noqa: E402

ROOT = HERE.parents[2]
BUILD = os.path.abspath(sys.argv[1])
SHOW = os.path.join(BUILD, "bin", "dtv-show")
LOG = str(ROOT / "docs" / "field" / "receiver.log.gz")
CREATE, CREATE_REPLY = 0x10000000, 0x1000004f


def show(*arguments, status=0):
    done = subprocess.run([SHOW, *arguments], capture_output=True, text=True, timeout=120, check=False)
    if status is not None and done.returncode != status:
        raise AssertionError(f"{arguments}: status {done.returncode}: {done.stderr}")
    return done


def time_of(message):
    """Nanoseconds since 1970."""
    whole, fraction = message["time"].rstrip("Z").split(".")
    moment = datetime.datetime.fromisoformat(whole).replace(tzinfo=datetime.timezone.utc)
    return int(moment.timestamp()) * 10**9 + int(fraction)


TOKEN = re.compile(r'\s*(?:(\w+) \{|(\})|(\w+): (".*"|\S+)\n)')


def unquoted(text):
    """A value of protoc's text format. Bytes are written as octal numbers there."""
    if not text.startswith('"'):
        return text if text.startswith("TYPE_") else int(text)
    octal = re.compile(rb'\\([0-7]{3}|[ntr"\'\\])')
    plain = {b"n": b"\n", b"t": b"\t", b"r": b"\r"}

    def byte(match):
        code = match[1]
        return bytes([int(code, 8)]) if len(code) == 3 else plain.get(code, code)
    return octal.sub(byte, text[1:-1].encode()).decode()


def parsed(text):
    """What protoc prints, as dictionaries of lists."""
    root = collections.defaultdict(list)
    stack = [root]
    position = 0
    text = text.rstrip()  + "\n"
    while position < len(text.rstrip()):
        token = TOKEN.match(text, position)
        if token is None:
            raise AssertionError(f"not understood: {text[position:position + 80]!r}")
        position = token.end()
        if token[1]:
            inner = collections.defaultdict(list)
            stack[-1][token[1]].append(inner)
            stack.append(inner)
        elif token[2]:
            stack.pop()
        else:
            stack[-1][token[3]].append(unquoted(token[4]))
    return root


class Trace:
    """A trace, decoded: tracks, slices in the order of their begins, counters, lines."""

    def __init__(self, path):
        with open(path, "rb") as file:
            text = subprocess.run(["protoc", f"--proto_path={HERE}", "--decode=Trace", "trace.proto"],
                                  stdin=file, capture_output=True, text=True, check=True).stdout
        self.packets = parsed(text)["packet"]
        # A field that the schema does not have is printed by its number.
        self.unknown = re.findall(r"^ *\d+(?::| \{)", text, re.MULTILINE)
        self.tracks, self.slices, self.values, self.lines = {}, [], collections.defaultdict(list), []
        open_slices = collections.defaultdict(list)
        for packet in self.packets:
            for track in packet["track_descriptor"]:
                self.tracks[track["uuid"][0]] = track
            for line in packet["android_log"]:
                self.lines += line["events"]
            for event in packet["track_event"]:
                self.take(event, packet["timestamp"][0], open_slices)
        self.unended = [each for slices in open_slices.values() for each in slices]

    def take(self, event, time, open_slices):
        track = event["track_uuid"][0]
        if event["type"] == ["TYPE_COUNTER"]:
            self.values[self.tracks[track]["name"][0]].append((time, event["counter_value"][0]))
        elif event["type"] == ["TYPE_SLICE_BEGIN"]:
            begun = {
                "name": event["name"][0], "category": event["categories"][0], "begin": time,
                "track": track, "flow": event["flow_ids"], "last_flow": event["terminating_flow_ids"],
                "depth": len(open_slices[track]),
                "notes": {note["name"][0]: (note["int_value"] + note["string_value"])[0]
                          for note in event["debug_annotations"]},
            }
            open_slices[track].append(begun)
            self.slices.append(begun)
        else:
            open_slices[track].pop()["end"] = time

    def thread(self, each):
        return self.tracks[each["track"]]["thread"][0]["thread_name"][0]


class Perfetto(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(dir=FOLDER)
        path = os.path.join(cls.folder.name, "evening.pftrace")
        cls.printed = show("--perfetto", path, EVENING).stdout
        cls.trace = Trace(path)
        cls.document = json.loads(show("--json", EVENING).stdout)
        cls.messages = {message["number"]: message for message in cls.document["messages"]}

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def write(self, *arguments, status=0):
        path = os.path.join(self.folder.name, "trace")
        show("--perfetto", path, *arguments, status=status)
        return Trace(path)

    def test_has_no_field_that_the_schema_lacks(self):
        self.assertEqual([], self.trace.unknown)
        self.assertEqual({1}, {packet["trusted_packet_sequence_id"][0] for packet in self.trace.packets})
        self.assertEqual([1], self.trace.packets[0]["sequence_flags"])

    def test_has_a_slice_for_each_command_and_event(self):
        expected = [(message["number"], message["name"], message["thread"])
                    for message in self.messages.values() if message["kind"] in ("command", "event")]
        shown = sorted((each["notes"]["message"], each["name"], self.trace.thread(each))
                       for each in self.trace.slices)
        self.assertEqual(expected, shown)
        self.assertIn(f"{len(self.messages)} messages, {len(expected)} calls, 0 lines", self.printed)
        self.assertEqual([], self.trace.unended)

    def test_slices_have_the_times_of_their_messages(self):
        ends = {message["partner"]: message for message in self.messages.values()
                if message["kind"] in ("answer", "refused")}
        for each in self.trace.slices:
            number = each["notes"]["message"]
            self.assertEqual(time_of(self.messages[number]), each["begin"])
            self.assertEqual(time_of(ends.get(number, self.messages[number])), each["end"])

    def test_arrows_lead_from_commands_to_their_replies(self):
        expected = {(message["partner"], message["number"]) for message in self.messages.values()
                    if message["kind"] == "event" and message.get("partner")}
        self.assertGreater(len(expected), 50)
        begins = {flow: each["notes"]["message"] for each in self.trace.slices for flow in each["flow"]}
        shown = {(begins[flow], each["notes"]["message"])
                 for each in self.trace.slices for flow in each["last_flow"]}
        self.assertEqual(expected, shown)

    def test_failures_have_a_category(self):
        for each in self.trace.slices:
            message = self.messages[each["notes"]["message"]]
            failed = (message["kind"] == "event" and message.get("partner") and
                      message["fields"].get("result", 0) != 0)
            if failed:
                self.assertEqual("failed", each["category"], message)
                self.assertEqual(f"result = {message['fields']['result']}", each["notes"]["failure"])
            self.assertEqual(each["category"] == "failed", "failure" in each["notes"])

    def test_counters_have_the_signal(self):
        for counter, name, field in (("C/N", "ReceiveSensitivityNotify", "cn"),
                                     ("IF gain", "TunerSensitivityDataNotify", "ifagc")):
            expected = [(time_of(message), message["fields"][field])
                        for message in self.messages.values()
                        if message["kind"] == "event" and message["name"] == name]
            self.assertTrue(expected)
            self.assertEqual(expected, self.trace.values[counter])
        values = [value for _, value in self.trace.values["commands that wait"]]
        self.assertEqual(len(self.document["unanswered"]), values[-1])
        self.assertTrue(all(abs(after - before) == 1 for before, after in zip([0] + values, values)))

    def test_shows_what_the_filter_takes(self):
        trace = self.write("--only", "SelectChannel", "--only", "SelectChannelReply", EVENING)
        self.assertEqual({"SelectChannel", "SelectChannelReply"}, {each["name"] for each in trace.slices})

    def test_a_damaged_capture_is_shown_as_far_as_it_goes(self):
        path = os.path.join(self.folder.name, "cut.pcapng")
        whole = pathlib.Path(EVENING).read_bytes()
        pathlib.Path(path).write_bytes(whole[:len(whole) // 2])
        trace = self.write(path, status=1)
        self.assertGreater(len(trace.slices), 50)
        done = show("--perfetto", os.path.join(self.folder.name, "t"), path, status=1)
        self.assertRegex(done.stderr, r"^dtv-show: .*cut.pcapng: .+\n$")

    def test_loses_nothing_when_it_cannot_write(self):
        for output, text in (("/dev/full", "/dev/full"), ("/no/folder/t", "/no/folder/t"),
                             (self.folder.name, self.folder.name)):
            done = show("--perfetto", output, EVENING, status=None)
            self.assertIn(done.returncode, (1, 2))
            self.assertIn(text, done.stderr)


class Written(unittest.TestCase):
    """What is made of files that need no evening."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(dir=FOLDER)
        self.addCleanup(self.folder.cleanup)

    def write(self, *arguments, status=0):
        path = os.path.join(self.folder.name, "trace")
        show("--perfetto", path, *arguments, status=status)
        return Trace(path)

    def test_names_what_failed(self):
        capture = Capture()
        capture.add(COMMAND, CREATE, bytes(4), value=-1)
        capture.add(EVENT, CREATE_REPLY, b"\1\0\0\0\5\0\0\0", thread=11)
        capture.add(EVENT, CREATE_REPLY, b"\1\0\0\0", thread=12)
        capture.add(REFUSED, CREATE_REPLY, value=1, size=4, thread=12)
        capture.add(EVENT, CREATE_REPLY, b"\1\0\0\0\0\0\0\0", thread=11)
        path = pathlib.Path(self.folder.name) / "failed.pcapng"
        capture.write(path)
        trace = self.write(str(path))
        self.assertEqual(["not sent: -1", "result = 5", "refused: 1", None],
                         [each["notes"].get("failure") for each in trace.slices])

    def test_a_log_gives_durations_and_its_lines(self):
        trace = self.write(LOG)
        with gzip.open(LOG, "rt", encoding="utf-8") as file:
            lines = [line for line in file if ",TENRIK,ERROR" not in line or " I stdout" not in line]
        of_bridge = [line for line in lines if ",TENRIK," in line]
        self.assertEqual(len(of_bridge), len(trace.lines))
        for line, shown in zip(of_bridge, trace.lines):
            self.assertTrue(line.rstrip("\n").endswith(shown["message"][0]), (line, shown))
        self.assertEqual([], trace.unended)
        self.assertTrue(any(each["end"] > each["begin"] for each in trace.slices))
        natives = [each for each in trace.slices if each["category"] == "native"]
        self.assertTrue(all(re.fullmatch(r"\w+:\d+", each["notes"]["source"]) for each in natives))
        for each in trace.slices:
            self.assertLessEqual(each["begin"], each["end"])

    def test_names_of_any_bytes_stay_texts(self):
        capture = Capture()
        capture.add(COMMAND, CREATE, bytes(4), name=b"a\xff\n\"\\\xc3\xa7")
        path = pathlib.Path(self.folder.name) / "names.pcapng"
        capture.write(path)
        trace = self.write(str(path))
        # As on a terminal.
        self.assertEqual(['a\\xff\\x0a\\"\\\\ç'], [trace.thread(each) for each in trace.slices])

    def test_says_what_it_cannot_read(self):
        empty = os.path.join(self.folder.name, "empty")
        pathlib.Path(empty).write_bytes(b"")
        output = os.path.join(self.folder.name, "none")
        for path, status in ((empty, 1), ("/no/such/file", 2), (self.folder.name, 2)):
            done = show("--perfetto", output, path, status=status)
            self.assertRegex(done.stderr, r"^dtv-show: .+\n$")
            self.assertFalse(os.path.exists(output))


class Mermaid(unittest.TestCase):
    def test_has_an_arrow_for_each_message(self):
        document = json.loads(show("--json", "--session", "1", EVENING).stdout)
        lines = show("--mermaid", "--session", "1", EVENING).stdout.splitlines()
        self.assertEqual("sequenceDiagram", lines[0])
        arrow = re.compile(r"    (?:T\d+(?:->>|-x|--x)S|S(?:-->>|--x)T\d+): (\d+) (\w+)")
        arrows = [arrow.match(line) for line in lines]
        shown = [(int(match[1]), match[2]) for match in arrows if match]
        expected = [(message["number"], message["name"]) for message in document["messages"]]
        self.assertEqual(expected[:400], shown)
        others = [line for line, match in zip(lines[1:], arrows[1:]) if not match]
        for line in others:
            self.assertRegex(line, r"^    (participant (T\d+|S) as |Note over S: )[^;:%]+$|#\d+;")

    def test_says_how_many_it_leaves_out(self):
        count = json.loads(show("--json", EVENING).stdout)["count"]
        last = show("--mermaid", EVENING).stdout.splitlines()[-1]
        self.assertEqual(f"    Note over S: {count - 400} more messages are left out", last)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as FOLDER:
        EVENING = os.path.join(FOLDER, "evening.pcapng")
        if "Written" not in sys.argv:
            subprocess.run([ROOT / "run", "--build", BUILD, "--quiet", "--seed", "20", "--capture", EVENING],
                           check=True, timeout=120, stdin=subprocess.DEVNULL)
        unittest.main(argv=[sys.argv[0], *sys.argv[2:]])
