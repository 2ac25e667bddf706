"""What dtv-redact and dtv-show --redact do, from outside.

usage: redact_test.py DTV_REDACT DTV_SHOW
"""
import gzip
import json
import os
import pathlib
import resource
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "show" / "tests"))
from capture_file import ANSWER, COMMAND, EVENT, Capture, block  # noqa: E402

REDACT, SHOW = (os.path.abspath(path) for path in sys.argv[1:3])
CALL, PHONEBOOK, AUTH_REPLY, SCAN_NOTIFY = 0x10000049, 0x10000048, 0x10000021, 0x1000007f
NUMBER = b"+55 11 5555-0199"


def call(number=NUMBER):
    return (b"\3\0" + number).ljust(102, b"\0")


def phonebook(number=NUMBER):
    return (bytes(778) + number).ljust(1310, b"\0")


def read(path):
    done = subprocess.run([SHOW, "--json", path], capture_output=True, timeout=60, check=False)
    return json.loads(done.stdout), done.returncode


class Folder(unittest.TestCase):
    maxDiff = 4000

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.file = self.folder / "evening.pcapng"
        self.copy = self.folder / "copy.pcapng"
        self.capture = Capture()
        self.capture.add(EVENT, CALL, call())
        self.capture.add(EVENT, PHONEBOOK, phonebook())
        self.capture.write(self.file)

    def run_redact(self, *arguments, **options):
        done = subprocess.run([REDACT, *map(str, arguments)], capture_output=True, text=True,
                              timeout=60, check=False, cwd=self.folder, **options)
        return done.returncode, done.stdout, done.stderr

    def check_refused(self, error, *arguments):
        before = sorted(path.name for path in self.folder.iterdir())
        status, out, errors = self.run_redact(*arguments)
        self.assertEqual((2, "", f"dtv-redact: {error}"),
                         (status, out, errors.splitlines()[0]))
        self.assertEqual(before, sorted(path.name for path in self.folder.iterdir()))

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())


class Copies(Folder):
    def test_a_copy(self):
        self.assertEqual((0, "copy.pcapng: 2 messages, 2 values replaced\n", ""),
                         self.run_redact("evening.pcapng", "copy.pcapng"))
        self.assertEqual(["copy.pcapng", "evening.pcapng"], self.names())
        self.assertNotIn(NUMBER[:6], self.copy.read_bytes())
        before, after = read(self.file)[0], read(self.copy)[0]
        for one, other in zip(before["messages"], after["messages"], strict=True):
            for key in ("number", "time", "thread", "thread_id", "kind", "id", "value", "size"):
                self.assertEqual(one[key], other[key])
        number = after["messages"][0]["fields"]["phone_number"]
        self.assertEqual((16, True), (len(number), number.isalpha()))
        self.assertEqual(number, after["messages"][1]["fields"]["phone_number"])

    def test_equal_values_in_the_files_of_one_call_and_of_two(self):
        other = self.folder / "other.pcapng"
        capture = Capture()
        capture.add(EVENT, PHONEBOOK, phonebook())
        capture.add(EVENT, PHONEBOOK, phonebook(NUMBER[:-1] + b"8"))
        capture.write(other)

        def numbers(*files):
            return [message["fields"]["phone_number"]
                    for file in files for message in read(file)[0]["messages"]]

        status, _, errors = self.run_redact(self.file, "1", other, "2")
        self.assertEqual((0, ""), (status, errors))
        first = numbers(self.folder / "1", self.folder / "2")
        self.assertEqual([first[0]] * 3, first[:3])
        self.assertNotEqual(first[0], first[3])
        self.run_redact(self.file, "3")
        self.assertNotEqual(first[0], numbers(self.folder / "3")[0])

    def test_standard_input(self):
        with open(self.file, "rb") as file:
            self.assertEqual((0, "copy.pcapng: 2 messages, 2 values replaced\n", ""),
                             self.run_redact("-", "copy.pcapng", stdin=file))

    def test_a_capture_without_messages(self):
        Capture().write(self.file)
        self.assertEqual((0, "copy.pcapng: 0 messages, 0 values replaced\n", ""),
                         self.run_redact("evening.pcapng", "copy.pcapng"))
        self.assertEqual(0, read(self.copy)[1])

    def test_an_earlier_copy_is_replaced(self):
        self.copy.write_text("earlier")
        self.assertEqual(0, self.run_redact(self.file, self.copy)[0])
        self.assertEqual(2, read(self.copy)[0]["count"])

    def test_sections_stay(self):
        first, second = Capture(), Capture()
        first.add(COMMAND, 0x10000006, b"\3\0" + bytes(10))
        second.add(EVENT, 0x10000054, b"\3\0" + bytes(14))
        second.add(COMMAND, 0x10000006, b"\3\0" + bytes(10))
        second.add(EVENT, 0x10000054, b"\3\0" + bytes(14))
        first.blocks += second.blocks
        first.write(self.file)
        self.assertEqual(0, self.run_redact(self.file, self.copy)[0])
        document = read(self.copy)[0]
        self.assertEqual([None, None, None, 3],
                         [message.get("partner") for message in document["messages"]])
        self.assertEqual([1], [one["number"] for one in document["unanswered"]])

    def test_any_time_stays(self):
        header = self.capture.blocks[0]
        # Microseconds; seconds; seconds long before 1970.
        interfaces = [struct.pack("<HHI", 147, 0, 65536),
                      struct.pack("<HHIHHBxxx", 147, 0, 65536, 9, 1, 0),
                      struct.pack("<HHIHHBxxxHHq", 147, 0, 65536, 9, 1, 0, 14, 8, -10**11)]
        blocks = [header] + [block(1, body) for body in interfaces]
        packet = struct.pack("<BBBBIIii16s", 1, 3, 0, 0, 10, CALL, 0, 0, b"evening")
        for number, stamp in [(0, 1774998843123456), (1, 2**40), (1, 2**63), (2, 5), (0, 1)]:
            blocks.append(block(6, struct.pack("<IIIII", number, stamp >> 32, stamp & 0xffffffff,
                                               36, 36) + packet))
        self.file.write_bytes(b"".join(blocks))
        self.assertEqual(0, self.run_redact(self.file, self.copy)[0])
        times = [[(message["time"], message.get("seconds"), message.get("nanoseconds"))
                  for message in read(file)[0]["messages"]] for file in (self.file, self.copy)]
        self.assertEqual(times[0], times[1])
        self.assertEqual("2026-03-31T23:14:03.123456000Z", times[1][0][0])
        self.assertEqual(-2**63, times[1][2][1])

    def test_what_other_writers_put_into_the_file(self):
        secret = b"by Maria Souza, maria@example.org"
        option = struct.pack("<HH", 1, len(secret)) + secret + bytes(-len(secret) % 4)
        header = block(0x0a0d0d0a, struct.pack("<IHHq", 0x1a2b3c4d, 1, 0, -1) + option)
        interface = block(1, struct.pack("<HHI", 147, 0, 65536) +
                          struct.pack("<HHB3x", 9, 1, 9) + option)
        packet = self.capture.blocks[2]
        packet = block(6, packet[8:-4] + option)
        names = block(4, option)
        self.file.write_bytes(header + interface + names + packet + block(5, option))
        status, out, errors = self.run_redact("evening.pcapng", "copy.pcapng")
        self.assertEqual((0, "copy.pcapng: 1 message, 1 value replaced\n"
                             "copy.pcapng: without 2 blocks and 3 options that libDtv does not "
                             "write\n", ""), (status, out, errors))
        self.assertNotIn(b"Maria", self.copy.read_bytes())
        self.assertEqual((1, 0), (read(self.copy)[0]["count"], read(self.copy)[1]))

    def test_the_notes_of_the_desk(self):
        def comment(text):
            return struct.pack("<HH", 1, len(text)) + text + bytes(-len(text) % 4)

        session = b"city=br-sp-SaoPaulo\nseed=20\nclock=1774998843\nversion=1.0"
        blocks = [block(0x0a0d0d0a, struct.pack("<IHHq", 0x1a2b3c4d, 1, 0, -1) + comment(session)),
                  self.capture.blocks[1],
                  block(6, self.capture.blocks[2][8:-4] + comment(b"incomplete=1")),
                  block(0x0a0d0d0a, struct.pack("<IHHq", 0x1a2b3c4d, 1, 0, -1) +
                        comment(b"seed=7\nauthor=Maria")),
                  self.capture.blocks[1],
                  block(6, self.capture.blocks[3][8:-4] + comment(b"Maria"))]
        self.file.write_bytes(b"".join(blocks))
        status, out, errors = self.run_redact("evening.pcapng", "copy.pcapng")
        self.assertEqual((0, "copy.pcapng: 2 messages, 2 values replaced\n"
                             "copy.pcapng: without 0 blocks and 2 options that libDtv does not "
                             "write\n", ""), (status, out, errors))
        copy = self.copy.read_bytes()
        for kept in (comment(session), comment(b"incomplete=1"), comment(b"seed=7")):
            self.assertEqual(1, copy.count(kept))
        self.assertNotIn(b"Maria", copy)
        self.assertEqual((2, 0), (read(self.copy)[0]["count"], read(self.copy)[1]))

    def test_the_name_of_a_thread_ends_at_its_zero(self):
        capture = Capture()
        capture.add(COMMAND, 0x10000000, bytes(4), name=b"main\0Maria")
        capture.write(self.file)
        self.assertEqual(0, self.run_redact(self.file, self.copy)[0])
        self.assertNotIn(b"Maria", self.copy.read_bytes())
        self.assertEqual("main", read(self.copy)[0]["messages"][0]["thread"])

    def test_other_tools_read_it(self):
        self.assertEqual(0, self.run_redact(self.file, self.copy)[0])
        done = subprocess.run(["tcpdump", "--count", "-r", self.copy], capture_output=True,
                              text=True, timeout=60, check=False)
        self.assertEqual((0, "2 packets\n"), (done.returncode, done.stdout))

    def test_the_list(self):
        status, out, _ = self.run_redact("--list")
        self.assertEqual((0, 21), (status, len(out.splitlines())))
        self.assertIn(["ScanNotify", "network.ts_name", "station"],
                      [line.split() for line in out.splitlines()])


class Damage(Folder):
    def test_a_file_that_is_cut(self):
        size = self.file.stat().st_size
        self.file.write_bytes(self.file.read_bytes()[:-4])
        self.assertEqual(
            (1, "copy.pcapng: 1 message, 1 value replaced\n",
             f"dtv-redact: evening.pcapng: the file ends at byte {size - 4}, in the middle of the "
             f"block at byte 232\n"), self.run_redact("evening.pcapng", "copy.pcapng"))
        self.assertEqual((1, 0), (read(self.copy)[0]["count"], read(self.copy)[1]))

    def test_bytes_between_blocks(self):
        secret = b"maria@example.org..."
        self.capture.blocks.insert(3, secret)
        self.capture.write(self.file)
        status, out, errors = self.run_redact("evening.pcapng", "copy.pcapng")
        self.assertEqual((1, "copy.pcapng: 2 messages, 2 values replaced\n"), (status, out))
        self.assertIn("; dropped 20 bytes, to byte 252\n", errors)
        self.assertNotIn(secret, self.copy.read_bytes())
        self.assertEqual((2, 0), (read(self.copy)[0]["count"], read(self.copy)[1]))

    def test_packets_that_are_no_messages(self):
        self.capture.add_packet(b"\2" + b"maria@example.org".ljust(40))
        self.capture.add_packet(b"\1maria@example.org")
        self.capture.add_packet(b"")
        self.capture.write(self.file)
        status, out, errors = self.run_redact("evening.pcapng", "copy.pcapng")
        self.assertEqual((1, "copy.pcapng: 2 messages, 2 values replaced\n"), (status, out))
        self.assertEqual(3, errors.count("; dropped\n"))
        self.assertNotIn(b"maria", self.copy.read_bytes())

    def test_what_is_no_capture(self):
        for content, what in [(b"", "the file is empty"),
                              (b"Maria\0", "this is not a pcapng file: no section header at byte 0")]:
            self.file.write_bytes(content)
            self.assertEqual((1, "", f"dtv-redact: evening.pcapng: {what}\n"
                                     "dtv-redact: evening.pcapng: there is nothing to copy\n"),
                             self.run_redact("evening.pcapng", "copy.pcapng"))
            self.assertEqual(["evening.pcapng"], self.names())

    def test_one_bad_file_of_two(self):
        (self.folder / "bad").write_bytes(b"Maria\0")
        status, out, _ = self.run_redact("bad", "1", "evening.pcapng", "2")
        self.assertEqual((1, "2: 2 messages, 2 values replaced\n"), (status, out))
        self.assertEqual(["2", "bad", "evening.pcapng"], self.names())


class Refusals(Folder):
    def test_arguments(self):
        self.check_refused("no file is given")
        self.check_refused("no copy is named for evening.pcapng", "evening.pcapng")
        self.check_refused("unknown option --what", "--what")
        self.check_refused("--list takes no file and no option", "evening.pcapng", "--list")
        self.check_refused("the name of a file is empty", "evening.pcapng", "")
        self.check_refused("a copy needs the name of a file", "evening.pcapng", "-")
        self.check_refused("standard input can be copied once", "-", "1", "-", "2")
        self.assertEqual((0, ""), self.run_redact("--help")[::2])

    def test_files_that_are_not_there(self):
        self.check_refused("cannot open none: No such file or directory", "none", "copy")
        self.check_refused(". is a directory", ".", "copy")

    def test_a_copy_that_is_a_file_of_the_call(self):
        os.link(self.file, self.folder / "link")
        for name in ("evening.pcapng", "./evening.pcapng", "link", str(self.file)):
            self.check_refused(f"the copy {name} would replace evening.pcapng", "evening.pcapng",
                               name)
        (self.folder / "other").write_bytes(self.file.read_bytes())
        self.check_refused("the copy other would replace other", "evening.pcapng", "other",
                           "other", "more")
        self.check_refused("two copies have the name ./1", "evening.pcapng", "1", "other", "./1")
        self.assertEqual((2, 0), (read(self.file)[0]["count"], read(self.file)[1]))

    def test_a_copy_that_is_no_regular_file(self):
        (self.folder / "folder").mkdir()
        os.mkfifo(self.folder / "pipe")
        os.symlink("nowhere", self.folder / "symlink")
        for name in ("folder", "pipe", "symlink", "/dev/full"):
            self.check_refused(f"{name} is there already, and is no regular file",
                               "evening.pcapng", name)

    def test_a_copy_in_no_folder(self):
        self.assertEqual((1, "", "dtv-redact: evening.pcapng: cannot write none/copy: "
                                 "No such file or directory\n"),
                         self.run_redact("evening.pcapng", "none/copy"))

    def test_a_file_that_becomes_too_large(self):
        for i in range(100):
            self.capture.add(EVENT, PHONEBOOK, phonebook(b"%d" % i))
        self.capture.write(self.file)

        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (50000, 50000))

        failure = (1, "", "dtv-redact: evening.pcapng: cannot write copy.pcapng: File too large\n")
        self.assertEqual(failure, self.run_redact("evening.pcapng", "copy.pcapng",
                                                  preexec_fn=limit))
        self.assertEqual(["evening.pcapng"], self.names())
        self.copy.write_text("earlier")
        self.assertEqual(failure, self.run_redact("evening.pcapng", "copy.pcapng",
                                                  preexec_fn=limit))
        self.assertEqual("earlier", self.copy.read_text())
        self.assertEqual(["copy.pcapng", "evening.pcapng"], self.names())

    def test_an_output_that_cannot_be_written(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([REDACT, self.file, self.copy], stdout=full,
                                  stderr=subprocess.PIPE, timeout=60, check=False)
        self.assertEqual((1, b"dtv-redact: cannot write to standard output\n"),
                         (done.returncode, done.stderr))

    def test_an_interrupt(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with subprocess.Popen([REDACT, "-", "copy.pcapng"], stdin=subprocess.PIPE,
                                  cwd=self.folder) as process:
                process.stdin.write(self.file.read_bytes())
                process.stdin.flush()
                end = time.monotonic() + 30
                while self.names() == ["evening.pcapng"] and time.monotonic() < end:
                    time.sleep(0.01)
                self.assertEqual(2, len(self.names()), "the temporary file")
                process.send_signal(number)
                self.assertEqual(-number, process.wait(30))
            self.assertEqual(["evening.pcapng"], self.names())


LINE = (",TENRIK,DtvEvent-1,DEBUG    ,dtvsv_msgid_lib_bml_call_req(), 215,CALL_REQ : "
        "phone_number = |{}|")
OTHER = "11-21 22:13:37.123  123   45 I Mailer  : to Maria"
HEADER = "11-21 22:13:37.123  456   78 D Dtv_jni : "


class Logs(Folder):
    def setUp(self):
        super().setUp()
        self.log = self.folder / "log"
        self.log.write_bytes("\n".join(["--------- beginning of main", OTHER,
                                        HEADER + LINE.format(NUMBER.decode()), ""]).encode())

    def lines(self):
        return self.copy.read_text().split("\n")

    def test_a_log_and_a_capture_of_one_session(self):
        status, out, errors = self.run_redact("log", "copy.pcapng", "evening.pcapng", "2")
        self.assertEqual((0, "copy.pcapng: 3 lines, 1 of the bridge, 1 understood\n"
                             "2: 2 messages, 2 values replaced\n", ""), (status, out, errors))
        number = read(self.folder / "2")[0]["messages"][0]["fields"]["phone_number"]
        first, second, third, last = self.lines()
        self.assertEqual(("--------- beginning of main", HEADER + LINE.format(number), ""),
                         (first, third, last))
        self.assertEqual((OTHER[:41], len(OTHER)), (second[:41], len(second)))
        self.assertNotIn("Maria", second)

    def test_the_lines_of_other_programs(self):
        self.assertEqual(0, self.run_redact("--keep-others", "log", "copy.pcapng")[0])
        self.assertEqual(OTHER, self.lines()[1])
        self.assertNotIn(NUMBER.decode(), self.lines()[2])

    def test_compressed_and_with_carriage_returns(self):
        text = self.log.read_bytes().replace(b"\n", b"\r\n")[:-2]
        self.log.write_bytes(gzip.compress(text))
        self.assertEqual(0, self.run_redact("log", "copy.pcapng")[0])
        self.assertEqual([27, len(OTHER), len(HEADER + LINE) + 14],
                         [len(line) for line in self.lines()], "the last line has no end")

    def test_standard_input(self):
        with open(self.log, "rb") as log:
            status, out, errors = self.run_redact("--log", "-", "copy.pcapng", stdin=log)
        self.assertEqual((0, "copy.pcapng: 3 lines, 1 of the bridge, 1 understood\n", ""),
                         (status, out, errors))

    def test_damaged_files(self):
        compressed = gzip.compress(self.log.read_bytes() * 1000)
        for content, error, is_made in [
                (compressed[:-9], "the compressed data is cut", True),
                (b"", "the file is empty", False),
                (gzip.compress(self.file.read_bytes()),
                 "this is a compressed capture: decompress it first", False),
                (b"Maria " * 20000 + b"\n", "line 1 is longer than 65536 bytes; its rest is left "
                                            "out", True)]:
            self.log.write_bytes(content)
            status, out, errors = self.run_redact("log", "copy.pcapng")
            self.assertEqual((1, f"dtv-redact: log: {error}"), (status, errors.splitlines()[0]))
            self.assertEqual((is_made, is_made), (self.copy.exists(), out != ""))
            if is_made:
                self.assertNotIn(b"Maria", self.copy.read_bytes())
                self.copy.unlink()

    def test_a_copy_that_becomes_too_large(self):
        self.log.write_bytes(self.log.read_bytes() * 1000)

        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (50000, 50000))

        self.assertEqual((1, "", "dtv-redact: log: cannot write copy.pcapng: File too large\n"),
                         self.run_redact("log", "copy.pcapng", preexec_fn=limit))
        self.assertEqual(["evening.pcapng", "log"], self.names())


class Show(Folder):
    def show(self, *arguments):
        done = subprocess.run([SHOW, *arguments, self.file], capture_output=True, timeout=60,
                              check=False)
        self.assertEqual((0, b""), (done.returncode, done.stderr))
        return done.stdout

    def test_the_three_forms(self):
        for form in ([], ["--brief"], ["--json"]):
            plain, redacted = self.show(*form), self.show("--redact", *form)
            self.assertEqual(len(plain), len(redacted))
            self.assertEqual(form != ["--brief"], NUMBER in plain)
            for number in (NUMBER, NUMBER.hex().encode(), NUMBER.hex(" ").encode()):
                self.assertNotIn(number, redacted)
        one, other = (json.loads(self.show("--json", "--redact"))["messages"] for _ in range(2))
        number = one[0]["fields"]["phone_number"]
        self.assertEqual(number, one[1]["fields"]["phone_number"])
        self.assertEqual(number.encode().hex(), one[0]["record"][4:36])
        self.assertNotEqual(number, other[0]["fields"]["phone_number"])

    def test_public_texts(self):
        capture = Capture()
        capture.add(EVENT, SCAN_NOTIFY, (bytes(16) + b"TV Sul").ljust(132, b"\0"))
        capture.add(COMMAND, AUTH_REPLY, (bytes(5) + b"1234").ljust(404, b"\0"))
        capture.add(ANSWER, AUTH_REPLY, b"1234567890", value=-1)
        capture.write(self.file)
        messages = json.loads(self.show("--json", "--redact"))["messages"]
        self.assertEqual("TV Sul", messages[0]["fields"]["network"]["ts_name"])
        self.assertNotEqual("1234", messages[1]["fields"]["pass"])
        self.assertNotIn(b"12345".hex(), messages[2]["record"])

    def test_options_that_exclude_it(self):
        for option in ("--list", "--wireshark"):
            done = subprocess.run([SHOW, "--redact", option] +
                                  ([self.file] if option == "--wireshark" else []),
                                  capture_output=True, timeout=60, check=False)
            self.assertEqual(2, done.returncode)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
