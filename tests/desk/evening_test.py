"""The evening as a person or a script uses it: its text, figures, trace and exit status."""
import json
import re
import subprocess
import unittest

from desk import BUILD, DeskTest, command, environment, width
from stated_numbers import CALLBACKS, NATIVES
from trace_lines import same_everywhere

REFUSALS = {
    "Create with start type 5": "PARAM_NG",
    "Create with a delay of 1000": "PARAM_NG",
    "Select channel 63": "PARAM_NG",
    "Select without a channel": "PARAM_NG",
    "Record while nothing is received": "result 1, not now",
    "Stop playback while nothing is played": "result 1, not now",
    "Release the plane of the data once more": "result 1, not now",
    "Turn the captions on once more": "result 1, not now",
    "Delay the picture by 101 ms of 100": "PARAM_NG",
    "Answer a mail that was not asked for": "NG",
    "Select another channel meanwhile": "result 1, not now",
    "Play programme 99": "result 5, no such thing",
    "Ask the released session for its log": "result -1, unknown session",
}
NEVER_CALLED = ["onEvDtvsvBroadcastFatalErrorNotify", "onEvDtvsvCaptionFatalErrorNotify"]
RECEIVED = CALLBACKS - len(NEVER_CALLED)
TITLES = ["Switching on", "Tuning", "Watching", "Planes", "Captions", "Sound", "Signal",
          "Data broadcasting", "Recording", "Playback", "Two sessions at once", "Switching off",
          "What the evening did"]
# The name of a native in its first trace line.
NATIVE_LINE = re.compile(r"^,TENRIK,desk    ,FUNCSTART,(dtvSvLib\w+)\(\),", re.MULTILINE)


class Evening(DeskTest):
    def evening(self, *arguments, **more):
        return self.run_desk("evening", *arguments, **more)

    def traced(self, seed):
        trace = self.folder / f"trace-{seed}-{len(list(self.folder.iterdir()))}"
        run = self.evening("--seed", seed, output=trace,
                           environ=environment(DTV_LOG_FILE=trace, DTV_LOG_MASK="0xffff"))
        self.assertEqual(0, run.returncode, run.stderr)
        return run.stdout, trace.read_text(encoding="utf-8", errors="surrogateescape")

    def test_shows_everything_on_eighty_columns(self):
        run = self.evening()
        self.assertEqual("", run.stderr)
        self.assertEqual(0, run.returncode)
        lines = run.stdout.split("\n")
        self.assertEqual([], [line for line in lines if width(line) > 80])
        self.assertNotIn("\x1b", run.stdout)
        self.assertNotIn("\r", run.stdout)
        self.assertEqual(TITLES, [line[3:] for line in lines if line.startswith("== ")])
        self.assertIn("On the air: br-sp-SaoPaulo, 35 UHF stations on channels 13 to 62.", lines)
        self.assertIn("    [########################################] 35 found", lines)
        self.assertIn(f"natives called          {NATIVES} of {NATIVES}", lines)
        self.assertRegex(run.stdout,
                         rf"\ncallbacks received      {RECEIVED} of {CALLBACKS}, \d{{3}} events\n")
        self.assertIn("callbacks never called  2, by design:\n    "
                      + "\n    ".join(NEVER_CALLED) + "\n", run.stdout)
        self.assertIn("refusals provoked       13, and all came back as they should:", lines)
        for what, how in REFUSALS.items():
            self.assertIn(f"    {what:<44} {how}", lines)
            self.assertIn(f"> {what}\n  ! refused: {how}\n", run.stdout)
        self.assertEqual(["Everything was answered as it should be.", ""], lines[-2:])

    def test_shows_what_a_viewer_wants_to_know(self):
        text = self.evening("--seed", 3).stdout
        for part in ["> Select 32  Rede Brasil\n  < receiving channel 32, service 0\n",
                     "    now       ", "    next      ", "looking at channel 33",
                     "> Change their language\n  < language 2\n", "  < bad\n", "  < good again\n",
                     "> Keep it as \"Programa gravado 録画\"\n  < programme 1\n",
                     "    a damaged place, error 1\n", "  < the end is reached\n",
                     "  < session 1 receives channel 14\n  < session 2 receives channel 51\n"]:
            self.assertIn(part, text)

    def test_draws_on_a_terminal(self):
        run = self.evening("--terminal")
        self.assertEqual(0, run.returncode, run.stderr)
        self.assertIn("\x1b[1m> Create a session\x1b[0m", run.stdout)
        # The bar is drawn for each of the channels 13 to 62, in its place.
        bars = re.findall(r"\r    \[[#.]{40}\] \d+ found", run.stdout)
        self.assertEqual(50, len(bars))
        self.assertIn("\r    [....................", bars[0])

    def test_quiet_prints_only_the_table(self):
        run = self.evening("--quiet")
        self.assertEqual(0, run.returncode, run.stderr)
        self.assertTrue(run.stdout.startswith("\n== What the evening did\nnatives called "))
        self.assertNotIn("> Create a session", run.stdout)

    def test_json_prints_only_an_object(self):
        run = self.evening("--json", "--seed", 5)
        self.assertEqual(0, run.returncode, run.stderr)
        figures = json.loads(run.stdout)
        self.assertIs(True, figures["ok"])
        self.assertIsNone(figures["failure"])
        self.assertEqual(5, figures["seed"])
        self.assertEqual({"called": NATIVES, "of": NATIVES, "missing": []}, figures["natives"])
        events = figures["callbacks"].pop("events")
        self.assertEqual({"received": RECEIVED, "of": CALLBACKS, "never": NEVER_CALLED,
                          "missing": []}, figures["callbacks"])
        self.assertGreater(events, 300)
        self.assertEqual(REFUSALS, figures["refusals"])
        self.assertEqual(66, figures["replies"])
        self.assertGreater(figures["clock"], 40)
        self.assertGreater(figures["most_events_waiting"], 0)

    def test_same_seed_same_evening(self):
        text, trace = self.traced(7)
        again, trace_again = self.traced(7)
        self.assertEqual(re.sub("time taken .*", "", text), re.sub("time taken .*", "", again))
        first, second = (same_everywhere(lines).split("\n") for lines in (trace, trace_again))
        self.assertEqual([], [pair for pair in zip(first, second) if pair[0] != pair[1]][:3])
        self.assertEqual(len(first), len(second))
        other, _ = self.traced(8)
        self.assertNotEqual(text.replace("seed", ""), other.replace("seed", ""))
        self.assertNotEqual(re.findall("C/N .*", text), re.findall("C/N .*", other))

    def test_trace_has_every_native_and_the_copies_of_its_errors(self):
        text, trace = self.traced(9)
        self.assertEqual(NATIVES, len(set(NATIVE_LINE.findall(trace))))
        # The bridge's copies on standard output: ERROR lines of another layout, to the last one.
        copy = re.compile(r"(?m)^\w+\( *\d+\):<[^>]{8,}>ERROR     \[\w+\(\): *\d+\] ")
        self.assertTrue(copy.search(trace), trace[-1000:])
        self.assertNotIn("ERROR", text)

    def test_errors_of_the_bridge_leave_the_output_valid(self):
        script = self.folder / "script.json"
        script.write_text('{"version": 1, "records": [{"event": "ScanNotify", "size": 3}]}')
        trace = self.folder / "trace"
        run = self.evening("--json", "--script", script, output=trace)
        json.loads(run.stdout)
        self.assertIn("ERROR", trace.read_text(encoding="utf-8", errors="surrogateescape"))

    def test_a_failure_is_reported(self):
        script = self.folder / "script.json"
        script.write_text('{"version": 1, "commands": [{"command": "SetCapDisplay", "result": 7}]}')
        run = self.evening("--json", "--script", script)
        self.assertEqual(1, run.returncode)
        self.assertEqual("run: Place the captions: the service answered with result 7.\n",
                         run.stderr)
        figures = json.loads(run.stdout)
        self.assertIs(False, figures["ok"])
        self.assertEqual("Place the captions: the service answered with result 7.",
                         figures["failure"])
        self.assertIn("TerminateRec", figures["natives"]["missing"])
        self.assertNotIn("SetCapDisplay", figures["natives"]["missing"])
        shown = self.evening("--script", script)
        self.assertEqual(1, shown.returncode)
        self.assertIn("\nNot everything was answered as it should be.\n", shown.stdout)
        self.assertEqual([], [line for line in shown.stdout.split("\n") if width(line) > 80])

    def test_a_service_that_stops_answering_ends_the_evening(self):
        script = self.folder / "script.json"
        script.write_text('{"version": 1, "stop": {"from": "StartPlay"}}')
        run = self.evening("--quiet", "--script", script)
        self.assertEqual(1, run.returncode)
        self.assertEqual("run: Play programme 99: no BG_EV_DTVSV_START_PLAY_REPLY came.\n",
                         run.stderr)

    def test_live(self):
        run = self.evening("--live", "10", "--quiet")
        self.assertEqual("", run.stderr)
        self.assertEqual(0, run.returncode)

    def test_capture_has_every_message(self):
        capture = self.folder / "capture.pcapng"
        run = self.evening("--seed", 4, "--json", environ=environment(DTV_CAPTURE_FILE=capture))
        self.assertEqual(0, run.returncode, run.stderr)
        figures = json.loads(run.stdout)
        shown = subprocess.run([BUILD / "bin/dtv-show", capture], capture_output=True, text=True,
                               encoding="utf-8", timeout=60, check=True).stdout
        events = re.findall(r"(?m)^\d\d:\d\d:\d\d\.\d{6}  DtvEvent-1 .*<- \w+", shown)
        self.assertEqual(figures["callbacks"]["events"], len(events))
        self.assertIn("-> SelectChannel 0x10000006", shown)
        self.assertEqual([], [line for line in shown.split("\n") if width(line) > 80])

    def test_nothing_on_the_air(self):
        (self.folder / "xx-Nowhere").write_text("# nothing\n")
        run = self.evening("--city", "xx-Nowhere", tables=self.folder)
        self.assertEqual(0, run.returncode, run.stderr)
        self.assertIn("    Nothing is on the air there, so there is nothing to watch.\n", run.stdout)

    def test_every_kind_of_city(self):
        for city in ["br-rj-RioDeJaneiro", "br-df-Brasilia", "br-mg-Luz"]:
            run = self.evening("--city", city, "--quiet")
            self.assertEqual((0, ""), (run.returncode, run.stderr), city)

    def test_a_start_that_fails(self):
        script = self.folder / "bad.json"
        script.write_text('{\n"version": 1,\n"comands": []}')
        for arguments, reason in [
                (["--city", "nowhere"], "run: no channel table is called \"nowhere\" in "),
                (["--guide", "/nowhere"], "run: "),
                (["--script", script], f"run: {script}:3: \"comands\" is not known here"),
                (["--seed", "x"], "run: Invalid value for option '--seed'"),
                (["--loud"], "run: unknown argument --loud\nTry ./run --help\n"),
                (["loud"], "run: unknown argument loud\nTry ./run --help\n"),
                (["--output", "/nowhere/file"], "run: /nowhere/file: No such file or directory")]:
            with self.subTest(arguments):
                line = [part for part in command("evening") if not (
                    "--guide" in arguments and "guide" in part)]
                if "--output" in arguments:
                    line = line[:-2]
                run = subprocess.run([*line, *map(str, arguments)], env=environment(),
                                     capture_output=True, text=True, timeout=60, check=False)
                self.assertEqual(2, run.returncode)
                self.assertTrue(run.stderr.startswith(reason), run.stderr)
                self.assertEqual("", run.stdout)


if __name__ == "__main__":
    unittest.main()
