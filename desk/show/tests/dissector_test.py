"""What tshark shows of a capture with dtv.lua is what dtv-show shows of it.

usage: dissector_test.py DTV_SHOW DTV_LUA

The captures are made here: every message, with bytes from a fixed seed.
"""
import json
import os
import pathlib
import random
import re
import struct
import subprocess
import sys
import tempfile
import time
import unittest

from capture_file import ANSWER, COMMAND, EVENT, REFUSED, Capture
from dissected import dissected, record_fields, tshark

SHOW, LUA = (os.path.abspath(path) for path in sys.argv[1:3])
LAST_COMMAND = 0x10000041


def run(*command, **options):
    return subprocess.run(command, capture_output=True, timeout=500, **options)


def known_messages():
    """(id, name, size of the record, size of the answer's record or None)"""
    found = []
    for line in run(SHOW, "--list", check=True).stdout.decode().splitlines():
        words = line.split()
        if words[0].startswith("0x"):
            found.append([int(words[0], 16), words[2], int(words[1]), None])
        else:
            found[-1][3] = int(words[0])
    return found


def shown(path):
    done = run(SHOW, "--json", str(path))
    return json.loads(done.stdout.decode()), done.returncode


def colons(digits):
    return ":".join(digits[i:i + 2] for i in range(0, len(digits), 2))


def flat(fields, path, texts):
    """The fields of dtv-show's as tshark names and writes them. A text of hexadecimal digits may be
    one of bytes: `texts` says which fields are texts."""
    for name, value in fields.items():
        key = f"{path}.{name}"
        for element in value if isinstance(value, list) else [value]:
            if element is None:
                continue  # not known
            if isinstance(element, dict):
                yield key, ""
                yield from flat(element, key, texts)
            elif isinstance(element, int):
                yield key, str(element)
            else:
                yield key, element if key in texts else colons(element)


def nanoseconds(text):
    whole, fraction = re.fullmatch(r"(-?\d+)\.(\d{9})", text).groups()
    return int(whole) * 10**9 + (-1 if whole.startswith("-") else 1) * int(fraction)


class CaptureTest(unittest.TestCase):
    maxDiff = 4000

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.messages = known_messages()
        cls.fields = record_fields(LUA)
        cls.texts = {name for name, kind in cls.fields.items() if kind == "FT_STRING"}

    def save(self, capture, name="capture.pcapng"):
        path = pathlib.Path(self.folder.name, name)
        capture.write(path)
        return path


class Fields(CaptureTest):
    def compare(self, here, there):
        """A message of dtv-show's with the same one of tshark's."""
        what = f"message {here['number']}: {here}"
        for key, name in [("thread", "thread"), ("name", "name")]:
            self.assertEqual(here.get(key), there.one(f"dtv.{name}"), what)
        for key in ("thread_id", "value", "size", "surfaces", "session", "partner", "left_out",
                    "header_reserved"):
            expected = str(here[key]) if key in here else None
            self.assertEqual(expected, there.one(f"dtv.{key}"), f"{key} of {what}")
        kinds = {"command": 1, "answer": 2, "event": 3, "refused": 4}
        self.assertEqual(str(kinds.get(here["kind"], here["kind"])), there.one("dtv.kind"), what)
        self.assertEqual(here["id"], there.one("dtv.id"), what)
        latency = there.one("dtv.latency")
        self.assertEqual(here.get("latency_ns"), nanoseconds(latency) if latency else None, what)
        ambiguous = {True: "1", False: "0", None: None}[here.get("ambiguous")]
        self.assertEqual(ambiguous, there.one("dtv.ambiguous"), what)
        self.assertEqual(here["record"] and colons(here["record"]), there.one("dtv.record") or "",
                         what)
        surplus = here.get("surplus")
        self.assertEqual(surplus and colons(surplus), there.one("dtv.surplus"), what)
        self.assertEqual([colons(one["bytes"]) for one in here.get("reserved", [])],
                         there.all("dtv.reserved"), what)
        empty_answer = here["kind"] == "answer" and not here["record"]
        for expert, expected in [("ends_at", "ends_at" in here and not empty_answer),
                                 ("has_surplus", "surplus" in here),
                                 ("lacks", "left_out" in here),
                                 ("refused", here["kind"] == "refused"),
                                 ("is_ambiguous", here.get("ambiguous", False)),
                                 ("not_taken", here["kind"] == "answer" and here["value"] != 0)]:
            self.assertEqual(expected, there.has(f"dtv.{expert}"), f"{expert} of {what}")
        path = f"dtv.{here.get('name')}" + (".answer" if here["kind"] == "answer" else "")
        expected = list(flat(here.get("fields", {}), path, self.texts))
        actual = [(key, value) for key, value in there.fields
                  if key.startswith(f"dtv.{here.get('name')}.")]
        self.assertEqual(expected, actual, what)
        return {key for key, _ in actual}

    def compare_all(self, path, passes=1):
        """All messages of a file; returns dtv-show's document, tshark's messages, and the names of
        the fields that were compared."""
        document, _ = shown(path)
        packets = dissected(LUA, path, passes)
        compared = set()
        for message in document["messages"]:
            compared |= self.compare(message, packets[message["number"] - 1])
        return document, packets, compared

    def check_experts(self, path, packets):
        """Expert items are there as well when nothing asks for the fields."""
        lines = tshark(LUA, path, "-Y", "_ws.expert").splitlines()
        self.assertEqual([number for number, packet in enumerate(packets, 1)
                          if packet.has("_ws.expert")], [int(line.split()[0]) for line in lines])
        self.assertGreater(len(lines), 0)

    def test_every_field_of_every_message(self):
        capture, draw = Capture(), random.Random(20)

        def add_each_form(kind, number, size):
            def add(record, **options):
                capture.now += draw.randrange(10**9)
                capture.add(kind, number, record, thread=draw.randrange(2**32),
                            surfaces=draw.randrange(256), value=draw.choice([0, 0, 1, -1]),
                            name=draw.choice([b"", b"desk", b"DtvEvent-1", b"1234567890abcdef",
                                              b"\xff\xe6\x97\xa5\xe6\x97\x1b"]), **options)
            add(bytes(size))
            for _ in range(3):
                add(draw.randbytes(size))
            # Bytes from which many characters come: of one byte to four, some of them cut.
            for _ in range(3):
                parts = [b"A", b"z", b"\x7f", b"\n", b'"', b"\\", "é".encode(), "日".encode(),
                         "📺".encode(), b"\xe6\x97", b"\x3d\xd8\xfa\xdc", b"\0\xd8", b"\0\xdc",
                         b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\xc0\x80"]
                text = b"".join(draw.choice(parts) for _ in range(size))
                add(text[:size])
            for _ in range(4):
                add(draw.randbytes(draw.randrange(size)))
            add(b"")
            add(draw.randbytes(size) + draw.randbytes(draw.randrange(1, 9)))
            add(draw.randbytes(size), left_out=draw.randrange(1, 1000))
            add(b"", size=draw.choice([-1, size]))

        answers = 0
        for number, _, size, answer in self.messages:
            add_each_form(COMMAND if number <= LAST_COMMAND else EVENT, number, size)
            if answer is not None:
                answers += 1
                add_each_form(ANSWER, number, answer)
        path = self.save(capture)
        document, packets, compared = self.compare_all(path)
        self.assertEqual((148, 10), (len(self.messages), answers))
        self.assertEqual(capture.count, len(packets))
        self.assertEqual(capture.count, document["count"])
        with_records = {(message["name"], message["kind"]) for message in document["messages"]
                        if message["fields"]}
        self.assertEqual(158, len(with_records))
        self.assertEqual(set(self.fields), compared)
        print(f"{capture.count} messages, {len(compared)} fields compared", flush=True)
        self.check_experts(path, packets)

    def test_any_bytes(self):
        capture, draw = Capture(), random.Random(4711)
        numbers = [message[0] for message in self.messages] + [0, 0x10000008, 0x7fffffff]
        for _ in range(3000):
            capture.now += draw.randrange(10**6)
            record = draw.randbytes(draw.choice([0, 1, 2, 8, 16, 130, 2600, 6400]))
            packet = bytearray(draw.randbytes(36) + record)
            packet[0:2] = bytes([1, draw.choice([0, 1, 2, 3, 4, 5, 255])])
            packet[8:12] = struct.pack("<I", draw.choice(numbers))
            capture.add_packet(bytes(packet[:draw.choice([len(packet)] * 9 + [20])]),
                               draw.choice([0, 0, 0, 70000]))
        path = self.save(capture)
        document, packets, _ = self.compare_all(path)
        self.assertEqual(capture.count, len(packets))
        self.assertGreater(document["count"], 2000)
        self.check_experts(path, packets)

    def test_partners_and_times(self):
        for seed in range(3):
            capture, draw = Capture(), random.Random(seed)
            numbers = [0x10000000, 0x10000000, 0x10000001, 0x10000002, 0x10000003, 0x10000006,
                       0x10000006, 0x10000038, 0x10000040]
            events = [0x1000004f, 0x1000004f, 0x10000050, 0x10000051, 0x10000054, 0x10000054,
                      0x1000007f]
            for _ in range(1500):
                capture.now += draw.choice([0, 1, 999, 10**6, 10**9 + 1, 10**10, -1, -(10**9) - 1])
                handle = struct.pack("<H", draw.choice([1, 2, 300]))
                # Results: most are 1, for a 0 ends a session.
                done = handle + b"\0\0\0\0\0\0"
                record = draw.choice([handle, handle + b"\0\0\1" + bytes(7), done, handle[:1],
                                      handle + b"\0\0\1" + bytes(7), b""])
                kind = draw.choice([COMMAND, COMMAND, ANSWER, EVENT, EVENT, REFUSED])
                if draw.randrange(100) == 0:
                    capture.add_packet(draw.choice([b"", b"\x02" + bytes(40), b"\x01" * 35]))
                elif kind in (COMMAND, ANSWER):
                    capture.add(kind, draw.choice(numbers), record if kind == COMMAND or
                                draw.randrange(2) else b"", thread=draw.choice([10, 11]),
                                value=draw.choice([0, -1]))
                else:
                    capture.add(kind, draw.choice(events), record if kind == EVENT else b"",
                                thread=draw.choice([20, 21, 10]), value=1)
            path = self.save(capture)
            document, packets, _ = self.compare_all(path, passes=2)
            partners = {}
            for message in document["messages"]:
                if "partner" in message:
                    partners.setdefault(message["partner"], []).append(str(message["number"]))
            self.assertGreater(len(partners), 200)
            self.assertGreater(sum(message.get("ambiguous", False)
                                   for message in document["messages"]), 20)
            for number, packet in enumerate(packets, 1):
                self.assertEqual(partners.get(number, []), packet.all("dtv.answered_in"))
            waiting = [one["number"] for one in document["unanswered"]]
            self.assertGreater(len(waiting), 20)
            self.assertEqual(waiting, [number for number, packet in enumerate(packets, 1)
                                       if packet.has("dtv.unanswered")])
            packets = dissected(LUA, path)
            self.check_experts(path, packets)
            for packet in packets:
                self.assertFalse(packet.has("dtv.unanswered"), "known after the last message only")

    def test_sections(self):
        first, second = Capture(), Capture()
        for capture, thread in ((first, 10), (second, 10)):
            capture.add(EVENT, 0x10000054, b"\3\0" + bytes(14), thread=20)
            capture.add(ANSWER, 0x10000038, b"\3\0" + bytes(6), thread=thread)
            capture.add(COMMAND, 0x10000006, b"\3\0" + bytes(10), thread=thread)
            capture.add(COMMAND, 0x10000038, b"\3\0", thread=thread)
        second.add(EVENT, 0x10000054, b"\3\0" + bytes(14), thread=20)
        first.blocks += second.blocks
        path = self.save(first)
        document, packets, _ = self.compare_all(path)
        self.assertEqual([None] * 8 + [7], [message.get("partner")
                                            for message in document["messages"]])
        self.assertEqual([3, 4, 8], [one["number"] for one in document["unanswered"]])
        self.assertEqual(9, len(packets))

    def test_what_it_does_not_know(self):
        capture = Capture()
        capture.add(COMMAND, 0x10000008, b"\3A")
        capture.add(9, 0x10000001, b"\3\0")
        capture.add_packet(b"\2" + bytes(40))
        capture.add_packet(b"\1" * 35)
        capture.add_packet(b"")
        capture.add(COMMAND, 0x10000001, b"\3\0")
        path = self.save(capture)
        document, packets, _ = self.compare_all(path)
        self.assertEqual([1, 2, 6], [message["number"] for message in document["messages"]])
        self.assertTrue(packets[0].has("dtv.unknown") and packets[1].has("dtv.unknown"))
        lines = tshark(LUA, path, "-T", "fields", "-e", "_ws.col.Info").splitlines()
        self.assertEqual(["0x10000008", "Release", "A message of version 2; this dissector reads "
                          "version 1", "35 bytes; a message begins with 36",
                          "0 bytes; a message begins with 36", "Release h=3"], lines)

    def test_names_of_numbers(self):
        capture = Capture()
        capture.add(COMMAND, 0x1000001f, b"\3\0\x12\2" + bytes(4))
        capture.add(COMMAND, 0x10000011, b"\3\0\1\0")
        capture.add(COMMAND, 0x1000002e, b"\3\0\1\0")
        capture.add(COMMAND, 0x1000000c, b"\3\0" + bytes(4) + b"\3\x63")
        path = self.save(capture)
        shown_names = tshark(LUA, path, "-V")
        for line in ["key_code: ENTER (18)", "key_type: REPEAT (2)", "value: ON (1)",
                     "value: CARD (1)", "screen_rotate: ROTATE_270 (3)", "screen_mode: Unknown (99)"]:
            self.assertIn(f"        {line}\n", shown_names)
        self.assertEqual("1\n", tshark(LUA, path, "-Y", 'dtv.BMLKeyEventNotify.key_code == "ENTER"',
                                       "-T", "fields", "-e", "frame.number"))

    def test_filters_and_flow_graph(self):
        capture = Capture()
        capture.add(COMMAND, 0x10000006, b"\3\0\0\0\x20\0\0\0\1\0\0\0", thread=4711)
        capture.now += 2 * 10**9
        capture.add(EVENT, 0x10000054, b"\3\0\0\0\5\0\0\0" + bytes(8), thread=4720)
        capture.add(REFUSED, 0x10000054, value=1, thread=4720)
        path = self.save(capture)
        for wanted, numbers in [("dtv.SelectChannel.service_no == 1", "1"), ("dtv.latency > 1", "2"),
                                ("dtv.refused", "3"), ("dtv.session == 3", "1 2 3"),
                                ("dtv.result != 0", "2"), ('dtv.id == "SelectChannelReply"', "2 3"),
                                ("dtv.partner == 1", "2"), ('dtv.name contains "Reply"', "2 3")]:
            self.assertEqual(numbers.split(), tshark(
                LUA, path, "-Y", wanted, "-T", "fields", "-e", "frame.number").split(), wanted)
        lines = [re.sub(r"\s+", " ", line).strip()
                 for line in tshark(LUA, path, "-q", "-z", "flow,any,network").splitlines()]
        drawn = [line for line in lines if "DTV: " in line]
        self.assertEqual(["SelectChannel h=3", "SelectChannelReply h=3 r=5",
                          "SelectChannelReply refused h=3 ret=1"],
                         [line.split("DTV: ")[1] for line in drawn])
        self.assertIn("0.0.47.11", " ".join(lines))
        self.assertIn("0.0.47.20", " ".join(lines))
        self.assertEqual(3, sum("---" in line for line in lines))

    def test_what_a_log_does_not_have(self):
        capture = Capture()
        # Two sessions wait; the log has the handle of one of the two replies.
        for handle in (3, 4, 5):
            capture.add(COMMAND, 0x10000006, struct.pack("<H", handle) + bytes(10))
        capture.add(EVENT, 0x10000054, bytes(4) + b"\5\0\0\0" + bytes(8), thread=4720,
                    comment=b"incomplete=0-1,8")
        capture.add(EVENT, 0x10000054, b"\4\0" + bytes(14), thread=4720,
                    comment=b"by=nobody\nincomplete=4,12-15")
        capture.add(EVENT, 0x10000054, bytes(16), thread=4720, comment=b"incomplete=yes")
        path = self.save(capture)
        document, packets, _ = self.compare_all(path)
        self.assertEqual([
            ["handle", "physical_channel"], ["result", "service_no"],
            ["handle", "result", "physical_channel", "service_no"]],
            [packet.all("dtv.unknown_field") for packet in packets[3:]])
        self.assertEqual([(1, 3, True), (2, 4, False), (3, 5, False)],
                         [(one["partner"], one["session"], one["ambiguous"])
                          for one in document["messages"][3:]])
        self.assertEqual([{"handle": None, "result": 5, "physical_channel": None, "service_no": 0},
                          {"handle": 4, "result": None, "physical_channel": 0, "service_no": None},
                          dict.fromkeys(("handle", "result", "physical_channel", "service_no"))],
                         [one["fields"] for one in document["messages"][3:]])
        self.assertEqual("4", tshark(LUA, path, "-Y", "dtv.result == 5", "-T", "fields", "-e",
                                     "frame.number").strip())
        self.assertEqual("", tshark(LUA, path, "-Y", "dtv.result == 0"))

    def test_the_commands_that_are_printed(self):
        capture = Capture()
        capture.add(COMMAND, 0x10000001, b"\3\0")
        path = self.save(capture, "it's one.pcapng")
        lines = run(SHOW, "--wireshark", path.name, cwd=path.parent,
                    check=True).stdout.decode().splitlines()
        quoted = "'" + str(path).replace("'", "'\\''") + "'"
        script = pathlib.Path(SHOW).parent.parent / "share" / "dtv.lua"
        self.assertEqual([f"wireshark -X lua_script:{script} {quoted}",
                          f"tshark -X lua_script:{script} -r {quoted}"], lines)
        printed = run("sh", "-c", lines[1], check=True).stdout.decode()
        self.assertIn("DTV 38 Release h=3", printed)
        done = run(SHOW, "--wireshark", "none")
        self.assertEqual((2, b"dtv-show: cannot open none: No such file or directory\n"),
                         (done.returncode, done.stderr))
        done = run(SHOW, "--wireshark", str(path.parent))
        self.assertEqual((2, f"dtv-show: {path.parent} is no regular file\n".encode()),
                         (done.returncode, done.stderr))


class Many(CaptureTest):
    def test_a_hundred_thousand_messages(self):
        capture = Capture()
        for i in range(25000):
            handle = struct.pack("<H", i % 7)
            for kind, number, record, thread in [
                    (COMMAND, 0x10000006, handle + bytes(10), 10),
                    (EVENT, 0x10000054, handle + bytes(14), 20),
                    (COMMAND, 0x10000038, handle, 10), (ANSWER, 0x10000038, handle + bytes(6), 10)]:
                capture.now += 1000
                capture.add(kind, number, record, thread=thread)
        path = self.save(capture)
        begun = time.monotonic()
        listed = tshark(LUA, path).count("\n")
        taken = time.monotonic() - begun
        self.assertEqual(100000, listed)
        begun = time.monotonic()
        document, status = shown(path)
        print(f"100000 messages: tshark {taken:.1f} s, dtv-show --json and reading it "
              f"{time.monotonic() - begun:.1f} s", flush=True)
        self.assertEqual((100000, 0), (document["count"], status))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
