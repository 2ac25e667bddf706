"""What ./run replay prints and how it ends, a Java side of one's own, and an evening of 20 seeds.

usage: replay_test.py BUILD COMPARE [TEST]...

COMPARE is the program that compares captures.
"""
import json
import pathlib
import shutil
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desk"))
COMPARE = sys.argv.pop(2)

import desk  # noqa: E402 - takes the folder of the build from the arguments

EXAMPLE = desk.ROOT / "desk/example"


class ReplayTest(desk.DeskTest):
    def record(self, capture, seed):
        run = self.run_desk("evening", "--quiet", "--seed", seed,
                            environ=desk.environment(DTV_CAPTURE_FILE=capture))
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def replay(self, *arguments, **variables):
        run = subprocess.run(desk.command("replay", *arguments),
                             env=desk.environment(**variables), capture_output=True,
                             timeout=300, check=False, encoding="utf-8")
        return run.returncode, run.stdout, run.stderr

    def compare(self, replayed, *captures):
        names = self.folder / "list"
        names.write_text("".join(f"{capture}\n" for capture in captures))
        run = subprocess.run([COMPARE, replayed, names], capture_output=True, check=False,
                             encoding="utf-8")
        self.assertEqual(run.returncode, 0, run.stdout)
        return run.stdout


class Evenings(ReplayTest):
    def test_an_evening_of_twenty_seeds_is_the_same_when_it_is_replayed(self):
        captures = [self.folder / f"{seed}.pcapng" for seed in range(1, 21)]
        for seed, capture in enumerate(captures, 1):
            self.record(capture, seed)
        replayed = self.folder / "replayed.pcapng"
        status, output, errors = self.replay(*captures, DTV_CAPTURE_FILE=replayed)
        self.assertEqual((status, errors), (0, ""))
        lines = output.splitlines()
        self.assertEqual(len(lines), 21)
        for line in lines[:-1]:
            self.assertRegex(line, r"^replay: (\d+) of \1 messages, no divergence$")
        self.assertEqual(lines[-1], "replay: 20 captures, 20 the same, 0 diverged, 0 not replayed")
        self.assertRegex(self.compare(replayed, *captures), "messages of 20 captures are the same")


class Replay(ReplayTest):
    recorded = None

    def setUp(self):
        super().setUp()
        if Replay.recorded is None:
            self.record(self.folder / "evening.pcapng", 20)
            Replay.recorded = (self.folder / "evening.pcapng").read_bytes()
        self.evening = self.folder / "evening.pcapng"
        self.evening.write_bytes(Replay.recorded)

    def test_the_capture_says_what_the_session_was(self):
        self.assertIn(b"city=br-sp-SaoPaulo\nseed=20\nclock=1775080800\nversion=", Replay.recorded)

    def test_what_shows_nothing_is_not_replayed(self):
        empty = self.folder / "empty.pcapng"
        empty.write_bytes(b"")
        no_message = self.folder / "none.pcapng"
        no_message.write_bytes(Replay.recorded[:Replay.recorded.index(b"\x06\0\0\0", 60)])
        damaged = self.folder / "damaged.pcapng"
        damaged.write_bytes(Replay.recorded[:-5])
        for file, said in ((empty, "the file is empty"),
                           (no_message, "it holds no message: a replay of it would show nothing"),
                           (damaged, "the file ends at byte"),
                           (self.folder / "nothing", "No such file or directory"),
                           (self.folder, "the file cannot be read beyond byte 0")):
            status, output, errors = self.replay(file)
            self.assertEqual((status, output), (2, ""), file)
            self.assertTrue(errors.startswith(f"run: {file}: {said}"), errors)

    def test_a_bad_file_does_not_keep_the_others_from_being_replayed(self):
        status, output, errors = self.replay(self.folder / "nothing", self.evening)
        self.assertEqual(status, 2)
        self.assertTrue(output.endswith("1 the same, 0 diverged, 1 not replayed\n"), output)
        self.assertIn("No such file", errors)

    def changed(self, name, old, new):
        """A copy in which the first bytes `old` are other ones, as many."""
        bytes_ = bytearray(Replay.recorded)
        at = bytes_.index(old)
        bytes_[at:at + len(new)] = new
        file = self.folder / name
        file.write_bytes(bytes_)
        return file

    def test_a_command_that_cannot_be_sent_is_a_divergence(self):
        # The first command, Create, has the number 0x10000000 and a record of 4 bytes.
        unknown = self.changed("unknown.pcapng", b"\0\0\0\x10\0\0\0\0\x04\0\0\0",
                               b"\x08\0\0\x10\0\0\0\0\x04\0\0\0")
        status, output, errors = self.replay("--wait", "1", unknown)
        self.assertEqual((status, errors), (1, ""))
        lines = output.splitlines()
        self.assertEqual(lines[0].split(": ", 1)[1], "the first divergence is at message 1:")
        self.assertEqual(lines[1], "0x10000008 on thread desk did not come: no native sends it")
        self.assertRegex(lines[-1], r"^replay: \d+ of \d+ messages, [12] divergences?$")
        self.assertLessEqual(len(lines), 20)
        for line in lines[1:]:
            self.assertLessEqual(desk.width(line), 80)

    def test_the_report_is_json_when_asked_for(self):
        status, output, errors = self.replay("--json", self.evening, self.evening)
        self.assertEqual((status, errors), (0, ""))
        reports = [json.loads(line) for line in output.splitlines()]
        self.assertEqual(len(reports), 2)
        for report in reports:
            self.assertEqual(report["version"], 1)
            self.assertEqual(report["status"], 0)
            self.assertEqual(report["file"], str(self.evening))
            self.assertEqual(report["messages"], report["passed"])
            self.assertEqual(sum(report["divergences"].values()), 0)
            self.assertNotIn("first", report)

    def test_time_passes_as_it_is_asked_for(self):
        for wrong in ("", "x", "x0", "x-1", "xInfinity", "fast", "10"):
            status, _, errors = self.replay("--time", wrong, self.evening)
            self.assertEqual(status, 2, wrong)
            self.assertIn("--time", errors)
        for wrong in ("", "0", "-1", "1e9", "soon"):
            status, _, errors = self.replay("--wait", wrong, self.evening)
            self.assertEqual(status, 2, wrong)
            self.assertIn("--wait", errors)
        status, _, errors = self.replay("--time", "x100", self.evening)
        self.assertEqual((status, errors), (0, ""))

    def test_a_simulated_service_takes_unknown_commands(self):
        status, output, errors = self.replay("--unknown", "simulate", self.evening)
        self.assertEqual((status, errors), (0, ""))
        self.assertTrue(output.endswith("no divergence\n"))
        bare = self.changed("bare.pcapng", b"seed=20", b"seal=20")
        status, output, errors = self.replay("--unknown", "simulate", bare)
        self.assertEqual((status, output), (2, ""))
        self.assertIn('its section header has no "seed"', errors)
        status, output, errors = self.replay("--unknown", "other", self.evening)
        self.assertEqual((status, output), (2, ""))

    def test_another_version_is_said(self):
        version = self.changed("version.pcapng", b"version=1", b"version=7")
        status, output, errors = self.replay(version)
        self.assertEqual(status, 0)
        self.assertRegex(errors, "^run: .*/version.pcapng was taken with version 7.*; this is 1.*\n$")
        self.assertIn("no divergence", output)

    def test_a_capture_that_was_made_of_a_log_replays(self):
        trace, capture = self.folder / "trace", self.folder / "log.pcapng"
        run = self.run_desk("evening", "--quiet", "--seed", "20", environ=desk.environment(
            DTV_LOG_FILE=trace, DTV_LOG_MASK="0xffff"))
        self.assertEqual(run.returncode, 0)
        subprocess.run([desk.BUILD / "bin/dtv-explain", "--capture", capture, trace], check=True,
                       capture_output=True)
        status, output, errors = self.replay("--fill", capture)
        self.assertEqual((status, errors), (0, ""), output)
        self.assertRegex(output, r"^replay: (\d+) of \1 messages, no divergence\n$")
        status, output, errors = self.replay(capture)
        self.assertEqual((status, errors), (0, ""), output)
        self.assertRegex(output, r"^replay: \d+ of \d+ messages, no divergence, \d+ left out\n$")

    def test_a_redacted_copy_replays(self):
        copy, replayed = self.folder / "copy.pcapng", self.folder / "replayed.pcapng"
        subprocess.run([desk.BUILD / "bin/dtv-redact", self.evening, copy], check=True,
                       capture_output=True)
        self.assertIn(b"city=br-sp-SaoPaulo\nseed=20\nclock=1775080800\nversion=", copy.read_bytes())
        status, output, errors = self.replay(copy, DTV_CAPTURE_FILE=replayed)
        self.assertEqual((status, errors), (0, ""), output)
        self.compare(replayed, copy)

    def test_the_script_writes_to_no_file_that_is_replayed(self):
        for option in ("--capture", "--trace"):
            run = subprocess.run([desk.ROOT / "run", "replay", "--build", desk.BUILD, option,
                                  self.evening, self.evening], capture_output=True, check=False)
            self.assertEqual(run.returncode, 2)
            self.assertIn(b"is to be replayed, and nothing is written to it", run.stderr)
            self.assertEqual(self.evening.read_bytes(), Replay.recorded)

    def test_the_script_replays_with_trace_and_capture(self):
        trace, capture = self.folder / "trace", self.folder / "capture"
        run = subprocess.run([desk.ROOT / "run", "replay", "--build", desk.BUILD, "--trace", trace,
                              "--capture", capture, self.evening], capture_output=True, check=False)
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertIn(b"no divergence\n", run.stdout)
        self.assertIn(b"dtvSvLibSelectChannel", trace.read_bytes())
        self.compare(capture, self.evening)


class OwnJava(desk.DeskTest):
    """A Java side of one's own, recorded against the simulated service and replayed."""

    def setUp(self):
        super().setUp()
        self.capture = self.folder / "own.pcapng"
        jars = f"{desk.BUILD}/java/dtvserver.jar:{desk.BUILD}/java/desk.jar"
        classes = self.folder / "classes"
        source = pathlib.Path(__file__).parent / "java/OwnJava.java"
        subprocess.run(["javac", "-Xlint:all", "-Werror", "-encoding", "UTF-8", "-d", classes, "-cp",
                        jars, EXAMPLE / "ChannelList.java", source], check=True)
        self.java = ["java", *desk.VM, f"-Ddtv.libraries={desk.BUILD}/lib", "-cp",
                     f"{classes}:{jars}", "OwnJava"]

    def run_own(self, *arguments, **variables):
        run = subprocess.run([*self.java, *arguments], env=desk.environment(**variables),
                             capture_output=True, timeout=120, check=False, encoding="utf-8")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        return run.stdout.splitlines()

    def test_gets_what_was_recorded(self):
        saw = self.run_own("record", EXAMPLE, DTV_CAPTURE_FILE=self.capture)
        self.assertEqual(saw[:2], ["[Um, Dois, Três]", "[scan: result 7]"])
        replayed = self.run_own("replay", self.capture)
        self.assertEqual(replayed[:2], saw[:2])
        self.assertRegex(replayed[2], r"^replay: (\d+) of \1 messages, no divergence$")
        self.assertEqual(replayed[3], "true")
        self.assertEqual(replayed[4:8], replayed[:4])

        other = self.run_own("replay", self.capture, "other")
        self.assertEqual(other[2], "DTVSVLIB_RESULT_NG")
        self.assertEqual(other[4], "PausePlay on thread java came; the capture has none there")
        self.assertIn("divergences: 1 unexpected", other)
        self.assertIn("false", other)

        # Its channel table is in that folder.
        simulated = self.run_own("replay", self.capture, "other", EXAMPLE)
        self.assertEqual(simulated[2], "DTVSVLIB_RESULT_OK")
        self.assertEqual(simulated[4], other[4])


if __name__ == "__main__":
    if not shutil.which("javac"):
        sys.exit("javac is missing")
    unittest.main()
