#!/usr/bin/env python3
"""Drives the remote control as a person at a terminal does, and as a script does through a pipe.

usage: shell_test.py BUILD [unittest's own arguments]

BUILD is the build folder: java/*.jar and lib/ are used from there. java comes from PATH.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unicodedata
import unittest

import pexpect

BUILD = ""
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
LIMIT = 60  # seconds
WIDTH = 80

UP = "\x1bOA"
TAB = "\t"
CTRL_C = "\x03"
CTRL_D = "\x04"
CTRL_U = "\x15"
# What a terminal is told when a line begins to be edited and when it has been taken. The prompt is
# drawn again for every event, but only after this it is a new one.
PROMPT = r"\x1b\[\?1h\x1b=desk( \d+)?> "
TAKEN = "\x1b[?1l\x1b>"
# Moves of the cursor, colours and the like.
CONTROL = re.compile(r"\x1b\[[0-9;?]*[A-Za-z]|\x1b[=>]")


def columns(text):
    """How many columns of a terminal a text takes."""
    return sum(0 if unicodedata.combining(character) or unicodedata.category(character) == "Cc"
               else 2 if unicodedata.east_asian_width(character) in "WF" else 1
               for character in text)


class ShellTest(unittest.TestCase):
    """Gives each test a folder of its own."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="shell-test-")
        self.addCleanup(shutil.rmtree, self.folder)
        self.trace = os.path.join(self.folder, "trace")
        open(self.trace, "w", encoding="utf-8").close()
        self.history = os.path.join(self.folder, "history")

    def command(self, *options):
        return ["java", "-cp",
                os.path.join(BUILD, "java", "dtvserver.jar") + ":"
                + os.path.join(BUILD, "java", "desk.jar"),
                "tenrik.desk.Main", "shell", "--libraries", os.path.join(BUILD, "lib"),
                "--tables", "/usr/share/dvb/isdb-t",
                "--guide", os.path.join(ROOT, "simulator", "data", "guide.xml"),
                "--output", self.trace, "--seed", "1", *options]

    def environment(self):
        return {**os.environ, "LC_ALL": "C.UTF-8", "TERM": "xterm",
                "DTV_LOG_FILE": self.trace, "DTV_LOG_MASK": "0xffff"}


class Terminal(ShellTest):
    """The shell on a terminal."""

    def start(self, *options):
        """Starts it, and waits until it can be typed at."""
        self.output = tempfile.TemporaryFile("w+", encoding="utf-8", dir=self.folder)
        self.addCleanup(self.output.close)
        arguments = self.command("--history", self.history, *options)
        self.shell = pexpect.spawn(
            arguments[0], arguments[1:], env=self.environment(), dimensions=(24, WIDTH),
            encoding="utf-8", timeout=LIMIT)
        self.shell.logfile_read = self.output
        self.addCleanup(self.shell.close, force=True)
        self.prompt()

    def prompt(self):
        self.shell.expect(PROMPT)

    def expect(self, text):
        self.shell.expect_exact(text)

    def enter(self, line, *texts):
        """Types a line and waits for what it prints, in order."""
        self.shell.send(line + "\r")
        self.expect(TAKEN)
        for text in texts:
            self.expect(text)

    def do(self, line, *texts):
        """The same, and waits for the next prompt."""
        self.enter(line, *texts)
        self.prompt()

    def do_all(self, line, *texts):
        """The same, where the texts and the prompt may come in any order."""
        self.enter(line)
        patterns = [re.escape(text) for text in texts] + [PROMPT]
        while patterns:
            patterns.pop(self.shell.expect(patterns))

    def leave(self):
        """Leaves with Ctrl-D."""
        self.shell.send(CTRL_D)
        self.shell.expect(pexpect.EOF)
        self.shell.close()
        self.assertEqual(self.shell.exitstatus, 0)

    def printed(self):
        self.output.flush()
        self.output.seek(0)
        return self.output.read()

    def test_prompt_names_the_current_session(self):
        self.start()
        self.enter("create", "< session 1", "desk 1> ")
        self.enter("create", "< session 2", "desk 2> ")
        self.do("sessions", "    1  receives nothing", "  * 2  receives nothing")
        self.enter("session 1", "desk 1> ")
        self.do("session 7", "! session 7 is not open")
        self.leave()

    def test_two_sessions_receive_different_stations(self):
        self.start()
        self.do("create", "< session 1")
        self.do("scan", "< 35 stations found", "32  Rede Brasil")
        self.do("create", "< session 2")
        self.do("select 14", "< receiving 14  RBI TV, service 0")
        self.do("session 1")
        self.do("select 32", "< receiving 32  Rede Brasil, service 0")
        self.do("sessions", "* 1  receives 32  Rede Brasil", "2  receives 14  RBI TV")
        self.enter("release", "< released", "desk 2> ")
        self.leave()

    def test_commands_are_completed(self):
        self.start()
        self.shell.send("creat" + TAB)
        self.expect("create ")
        self.enter("")
        self.expect("< session 1")
        self.prompt()
        self.shell.send("display mo" + TAB)
        self.expect("mode ")
        self.shell.send(TAB)
        for mode in ("full", "normal", "wide", "zoom"):
            self.expect(mode)
        self.shell.send(CTRL_U + "release --sy" + TAB)
        self.expect("--sync ")
        self.shell.send(CTRL_U)
        self.leave()

    def test_channels_are_completed_after_a_scan(self):
        self.start()
        self.do("create", "< session 1")
        self.do("scan", "< 35 stations found")
        self.shell.send("select 3" + TAB)
        self.expect("(Rede Brasil)")
        self.enter("2")
        self.expect("< receiving 32  Rede Brasil, service 0")
        self.prompt()
        self.leave()

    def test_natives_and_their_arguments_are_completed(self):
        self.start()
        self.do("create", "< session 1")
        self.shell.send("send SelectCh" + TAB)
        self.expect("SelectChannel ")
        self.shell.send(TAB)
        self.expect(". ")
        self.shell.send(TAB)
        self.expect('{"physical_channel": 0, "service_no": 0}')
        self.do_all("", "SelectChannel returned DTVSVLIB_RESULT_OK",
                    "SELECT_CHANNEL_REPLY[result=5, physical_channel=0, service_no=0]")
        self.leave()

    def test_typed_lines_are_kept(self):
        self.start()
        self.do("sessions", "no session is open")
        self.do("recordings", "nothing was recorded and kept")
        self.do(UP, "nothing was recorded and kept")
        self.do(UP + UP, "no session is open")
        self.leave()
        self.start()
        self.do(UP, "no session is open")
        self.do(UP + UP, "nothing was recorded and kept")
        self.leave()

    def test_a_history_of_something_else_does_no_harm(self):
        with open(self.history, "w", encoding="utf-8") as file:
            file.write("not a line that was typed\n")
        self.start()
        self.do("sessions", "no session is open")
        self.leave()

    def test_a_station_is_found_and_received(self):
        self.start()
        self.do("select 32", '! no session is open; "create" opens one')
        self.do("channels", "no station is known")
        self.do("create 50", "< session 1")
        self.do("scan", "< 35 stations found", "14  RBI TV", "32  Rede Brasil")
        self.do("channels", "14  RBI TV", "32  Rede Brasil")
        self.do("epg", "! nothing was received yet")
        self.do("select 32", "< receiving 32  Rede Brasil, service 0")
        self.do("epg", "32  Rede Brasil", "now   19:00   0 h 30 min  Jornal da noite",
                "next  19:30   2 h 15 min  Futebol ao vivo")
        self.do("search down", "< receiving 31  Ideal TV")
        self.do("select 37", "! the service answered with result 5, no such thing")
        self.do("select 63", "! the bridge refused it: PARAM_NG, an argument is not allowed")
        self.do("stop", "< stopped")
        self.do("stop", "! the service answered with result 1, not now")
        self.do("select --start 14", "< receiving 14  RBI TV, service 0")
        self.do("stop --sync", "< stopped")
        self.do("scan --no-wait", "< sent")
        self.do("wait 0.1")
        self.do("scan --cancel", "< cancelled")
        self.do("scan --cancel --sync", "! the service answered with result 1, not now")
        self.do("release --sync", "< released")
        self.leave()

    def test_events_are_shown_above_the_line_that_is_typed(self):
        self.start()
        self.do("create", "< session 1")
        self.do("select 32", "< receiving channel 32, service 0")
        self.shell.send("sess")
        # The guide comes last; the line is drawn again below it.
        self.expect("* [1] now       19:00  Jornal da noite")
        self.expect("next      19:30  Futebol ao vivo")
        self.shell.expect(r"desk 1> sess$")
        self.enter("ions")
        self.expect("* 1  receives channel 32")
        self.prompt()
        self.leave()

    def test_events_are_chosen(self):
        self.start()
        self.do("create", "< session 1")
        self.do("events all")
        self.enter("select 32", "* [1] SELECT_CHANNEL_REPLY[result=0, physical_channel=32",
                   "* [1] RECEIVE_SENSITIVITY_NOTIFY[")
        self.expect("* [1] RECEIVE_EPG_INFO_NOTIFY[")
        self.do("events none")
        self.do("search", "< receiving channel 33")
        self.do("wait 2")
        self.do("events some")
        self.do("search", "< receiving channel 34")
        self.expect("* [1] network   1634")
        quiet = self.printed().partition("receiving channel 33")[2].partition("events some")[0]
        self.assertNotIn("* [1]", quiet)
        self.assertNotIn("network   1633", self.printed())
        self.leave()

    def test_captions_sound_and_planes(self):
        self.start()
        self.do("create 40", "< session 1")
        self.do("captions on", "! the service answered with result 1, not now")
        self.do("display first --captions", "< set")
        self.do("select 32", "< receiving")
        self.expect("* [1] captions  on")
        self.do("captions suspend --sync", "< suspended")
        self.do("captions resume", "< resumed")
        self.do("captions language language_2", "< changed")
        self.do("captions language 9", "! captions language: ", "9 is none of LANGUAGE_1 (0)")
        self.do("captions off", "< off")
        self.do("display place", "< placed")
        self.do("display place data", "< placed")
        self.do("display mode wide 1", "< changed")
        self.do("display show", "< shown")
        self.do("display hide", "< hidden")
        self.do("display release captions", "< released")
        self.do("decode picture off", "< not decoding")
        self.do("decode picture on --sync", "< decoding")
        self.do("decode sound off --sync", "< not decoding")
        self.do("sound component 1", "< switched")
        self.do("sound dual sub", "< switched")
        self.do("sound delay 40 40", "< delayed")
        self.do("sound delay 41 40", "! the bridge refused it: PARAM_NG")
        self.do("signal lna 16", "< set")
        self.do("signal log on", "< logged")
        self.do("signal log status", "< logged")
        self.do("signal log off", "< not logged")
        self.do("signal log status", "< not logged")
        self.leave()

    def test_requests_of_a_document_are_answered(self):
        self.start()
        self.do("create", "< session 1")
        self.do("select 32", "< receiving")
        self.do("requests", "nothing is asked for")
        self.do_all("data on", "< on",
                    "? [1] asks for permission: PERMISSION_REQ[permit_type=1, task_id=101]")
        self.do("requests", "[1] permission: PERMISSION_REQ[permit_type=1, task_id=101]")
        self.do("answer mail", "! nothing of that is asked for")
        self.do_all("answer permission", "< permission answered", "? [1] asks for auth: ")
        self.do_all("answer --refuse", "< auth refused", "? [1] asks for write_nvram: ")
        self.do_all("answer auto on", *("< " + kind + " answered" for kind in (
            "write_nvram", "read_nvram", "start_fep", "mail", "phonebook", "call", "schedule",
            "browser", "save_picture", "start_tvlink", "enrol_tvlink")))
        self.do("answer auto off")
        self.do("requests", "nothing is asked for")
        self.do("data key blue", "< sent")
        self.do("data key BLUE release", "< sent")
        self.do("data suspend --sync", "< suspended")
        self.do("data resume", "< resumed")
        self.do("data restart", "< restarted")
        self.do("data off", "< off")
        self.do("data link http://example.com/receitas", "< shown")
        self.do("data unlink --sync", "< left")
        self.do("data unlink", "! the service answered with result 1, not now")
        self.leave()

    def test_a_recording_is_made_and_played(self):
        self.start()
        self.do("create", "< session 1")
        self.do("record start", "! the service answered with result 1, not now")
        self.do("select 32", "< receiving")
        self.do("record start card", "< recording")
        self.do("record discard --sync", "< thrown away")
        self.do("record start", "< recording")
        self.do("stop", "! the service answered with result 1, not now")
        # Long enough to be still under way at any speed below.
        self.do("wait 3")
        self.do('record stop "Programa  #1"', "< kept", "< programme 1")
        self.do("recordings", "1  internal  Programa  #1")
        self.do("stop", "< stopped")
        self.do("play 2", "! the service answered with result 5, no such thing")
        self.do("play 1 --paused", "< paused")
        self.do("slide", "< moved")
        self.do("move --back", "< moved")
        self.do("resume", "< playing")
        self.do("speed 3", "! the bridge refused it: PARAM_NG")
        self.do("speed x", "! x is no speed")
        self.do("speed 20/10 --back", "< speed 20/10")
        self.do("pause", "< paused")
        self.enter("resume")
        self.expect("< playing")
        self.prompt()
        self.do_all("skip 10", "< skipped", "* [1] playback has reached the end")
        self.do("end", "< ended")
        self.do("end --sync", "! the service answered with result 1, not now")
        self.leave()

    def test_natives_are_called_with_any_arguments(self):
        self.start()
        self.do("send --list", "Create(int start_type, int max_delay_time)",
                "SelectChannel(int handle, BROADCAST_INFO broadcast_info)",
                "TerminateRec_Sync(int handle, TERMINATE_REC_REQ terminate_rec)")
        self.do("send Release .", '! handle: there is no session that "." could stand for')
        self.do("send DtvSvLib_Create 0x0 100", "Create returned DTVSVLIB_RESULT_OK")
        self.do('send SelectChannel . {"physical_channel": 63}',
                "SelectChannel returned DTVSVLIB_RESULT_PARAM_NG")
        self.do("send SelectChannel . null", "SelectChannel returned DTVSVLIB_RESULT_PARAM_NG")
        self.do('send SelectChannel 1 {"channel": 32}', "! broadcast_info: no component channel in",
                '{"physical_channel": 0,')
        self.do('send SelectChannel . {"physical_channel": 32.5}', "32.5 is no int")
        self.do("send SelectChannel .", "! 1 argument given, of 2: SelectChannel(int handle,")
        self.do("send SelectChannels .", "! SelectChannels: no such native")
        self.do('send SelectChannel . {"physical_channel": 32', "! the line lacks a closing")
        self.do("send Create 99999999999 0", "! start_type: 99999999999 is no int")
        self.do("send Create 0 1000", "Create returned DTVSVLIB_RESULT_PARAM_NG")
        self.do("send ControlDecodeScreen_Sync . 2",
                "ControlDecodeScreen_Sync returned DTVSVLIB_RESULT_PARAM_NG")
        self.do('send ControlBML . CONTROL_TYPE.ON {"surface_handle": "new", "screen_rotate":'
                ' "ROTATE_90"}', "ControlBML returned DTVSVLIB_RESULT_OK")
        self.do('send ControlBML . 1 {"surface_handle": "new", "screen_rotate": 4}',
                "screen_rotate: 4 is none of", "ROTATE_0 (0)")
        self.do("send ControlBML . CONTROL_TYPE.MAYBE null", "MAYBE is none of OFF (0)")
        self.do('send BMLReadNvramReply . {"bml_end_type": "OK", "ts_name": "x", "nvram_data":'
                ' [1, 256]}', "nvram_data: 256 is no byte")
        self.do('send BMLReadNvramReply . {"bml_end_type": 0, "ts_name": "x", "nvram_data":'
                ' "0g"}', "neither a list of bytes")
        # Good arguments, but nobody has asked for it.
        self.do('send BMLReadNvramReply . {"bml_end_type": 0, "ts_name": "x", "nvram_data":'
                ' "01ff"}', "BMLReadNvramReply returned DTVSVLIB_RESULT_NG")
        self.do("send Release_Sync .", "Release_Sync returned", "return_value=0")
        self.do("sessions", "no session is open")
        self.leave()

    def test_the_trace_is_shown_while_it_is_on(self):
        self.start()
        self.do("create", "< session 1")
        self.do("trace on")
        self.enter("signal lna 16")
        self.expect("FUNCSTART,dtvSvLibControlLNA()")
        self.expect("FUNCEND  ,dtvSvLibControlLNA()")
        # The end of the event's way up.
        self.expect("CallMethod, CallStaticMethod")
        self.do("trace off")
        self.do("signal lna 17", "< set")
        self.do("trace dtvSvLibSetTunerLog")
        self.enter("signal log on")
        self.expect("FUNCSTART,dtvSvLibSetTunerLog()")
        self.expect("FUNCEND  ,dtvSvLibSetTunerLog()")
        self.do("trace off")
        self.leave()
        printed = self.printed()
        self.assertEqual(printed.count("FUNCSTART,dtvSvLibControlLNA()"), 1)
        self.assertIn("recvEventFromServer", printed)
        filtered = printed.partition("trace dtvSvLibSetTunerLog")[2]
        self.assertNotIn("recvEventFromServer", filtered)
        with open(self.trace, encoding="utf-8") as file:
            self.assertEqual(file.read().count("FUNCSTART,dtvSvLibControlLNA()"), 2)

    def test_what_is_wrong_is_said(self):
        self.start()
        self.do("sing", '! sing: no such command. "help" shows them.')
        self.do("select", "! select: Missing required parameter: 'CHANNEL'.")
        self.do("create x", "! create: Invalid value", "(MAX_DELAY): 'x'")
        self.do("display", "! display: Missing required subcommand")
        self.do("stop --now", "! stop: Unknown option: '--now'")
        self.do("trace", "! trace: Missing required parameter")
        self.leave()

    def test_help(self):
        self.start()
        self.do("help", "create ", "scan ", "select ", "captions ", "send ", "trace ",
                '"help COMMAND" says more')
        self.do("help select", "Usage: select", "CHANNEL", "[SERVICE]", "--no-wait")
        self.do("help display mode", "MODE", "NORMAL, FULL, ZOOM, WIDE")
        self.do("help nothing", "! nothing: no such command")
        self.leave()

    def test_ctrl_c_abandons_the_line_and_the_waiting(self):
        self.start()
        self.shell.send("exi" + CTRL_C)
        self.prompt()
        self.enter("wait 1000")
        self.shell.send("x")
        self.expect("x")
        self.shell.send(CTRL_C)
        self.expect("! abandoned")
        self.prompt()
        self.do("sessions", "no session is open")
        self.leave()

    def test_exit_and_quit_leave(self):
        for word in ("exit", "quit"):
            with self.subTest(word):
                self.start()
                self.shell.send(word + "\r")
                self.shell.expect(pexpect.EOF)
                self.shell.close()
                self.assertEqual(self.shell.exitstatus, 0)

    def test_no_line_is_wider_than_the_terminal(self):
        self.start()
        self.do("create", "< session 1")
        self.do("trace on")
        self.do("events all")
        self.do("scan", "< 35 stations found")
        self.do("select 38", "< receiving")
        self.do_all("data on", "PERMISSION_REQ")
        self.do_all("answer auto on", "< enrol_tvlink answered")
        self.do("epg", "next")
        self.do("help", "says more")
        self.do("help send", "Example")
        self.do("send --list", "TerminateRec_Sync")
        self.do("channels", "14  RBI TV")
        self.shell.send("select 3" + TAB)
        self.expect("Rede Brasil")
        self.shell.send(CTRL_U)
        self.leave()
        lines = re.split(r"[\r\n]+", CONTROL.sub("", self.printed()))
        self.assertGreater(len(lines), 500)
        self.assertEqual([line for line in lines if columns(line) > WIDTH], [])

    def test_colours_are_for_a_terminal_that_has_them(self):
        colour = re.compile(r"\x1b\[[0-9;]*3[0-7][0-9;]*m")
        for options, wanted in ((), False), (("--terminal",), True):
            with self.subTest(options):
                self.start(*options)
                self.do("sing", "! sing")
                self.shell.send("se" + TAB)
                self.expect("ssions")
                self.shell.send(CTRL_U)
                self.leave()
                self.assertEqual(bool(colour.search(self.printed())), wanted)


class Pipe(ShellTest):
    """The shell without a terminal."""

    def run_lines(self, *lines):
        return subprocess.run(
            self.command(), input="\n".join(lines) + "\n", env=self.environment(), check=False,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8", timeout=4 * LIMIT)

    def test_commands_are_read_line_by_line(self):
        run = self.run_lines("# finds a station", "", "create", "scan", "select 32  # the best",
                             "epg", "stop --sync")
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.returncode, 0)
        answers = [line for line in run.stdout.splitlines() if line.startswith("  <")]
        self.assertEqual(answers, ["  < session 1", "  < 35 stations found",
                                   "  < receiving 32  Rede Brasil, service 0", "  < stopped"])
        self.assertIn("now   19:00   0 h 30 min  Jornal da noite", run.stdout)
        self.assertNotIn("desk", run.stdout)
        self.assertNotIn("create", run.stdout)
        self.assertNotIn("\x1b", run.stdout)
        self.assertNotIn("\r", run.stdout)
        self.assertEqual([line for line in run.stdout.splitlines() if columns(line) > WIDTH], [])

    def test_it_goes_on_after_a_failure_and_tells_it_at_the_end(self):
        run = self.run_lines("create", "select 63", "select 14")
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.returncode, 1)
        self.assertIn("  ! the bridge refused it: PARAM_NG", run.stdout)
        self.assertIn("  < receiving channel 14, service 0", run.stdout)

    def test_an_unknown_command_is_a_failure(self):
        run = self.run_lines("sing")
        self.assertEqual(run.returncode, 1)
        self.assertIn("! sing: no such command", run.stdout)

    def test_a_refusal_that_is_asked_for_is_none(self):
        run = self.run_lines("send Create 5 100", "exit", "sing")
        self.assertEqual(run.returncode, 0)
        self.assertIn("Create returned DTVSVLIB_RESULT_PARAM_NG", run.stdout)
        self.assertNotIn("sing", run.stdout)

    def test_a_wrong_start_has_a_status_of_its_own(self):
        run = subprocess.run(
            self.command("--city", "nowhere"), stdin=subprocess.DEVNULL, check=False,
            env=self.environment(), stdout=subprocess.PIPE, stderr=subprocess.PIPE,
            encoding="utf-8", timeout=LIMIT)
        self.assertEqual(run.returncode, 2)
        self.assertIn("nowhere", run.stderr)


if __name__ == "__main__":
    if len(sys.argv) < 2 or not os.path.isdir(os.path.join(sys.argv[1], "java")):
        sys.exit(__doc__)
    BUILD = os.path.abspath(sys.argv.pop(1))
    unittest.main(verbosity=2)
