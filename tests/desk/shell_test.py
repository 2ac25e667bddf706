"""Drives the remote control as a person at a terminal does, and as a script does through a pipe."""

import re
import subprocess
import unittest

import pexpect

import desk
from desk import width
from shell_commands import Commands  # noqa: F401, its tests are run here
from shell_driver import CONTROL, CTRL_C, CTRL_U, LIMIT, TAB, UP, WIDTH, ShellTest, Terminal


class Editing(Terminal):
    """The shell itself, on a terminal."""

    def test_prompt_names_the_current_session(self):
        self.start()
        self.enter("create", "< session 1", "desk 1> ")
        self.enter("create", "< session 2", "desk 2> ")
        self.do("sessions", "    1  receives nothing", "  * 2  receives nothing")
        self.enter("session 1", "desk 1> ")
        self.do("session 7", "! session 7 is not open")
        self.leave()

    def test_prompt_follows_events(self):
        self.start()
        self.do_all("send Create 0 100", "Create returned", "* [1] CREATE_REPLY[result=0]")
        self.enter("send Create 0 100", "Create returned")
        self.expect("* [2] CREATE_REPLY[result=0]")
        self.expect("desk 2> ")
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
        self.do_all("search", "< receiving channel 34", "* [1] network   1634")
        quiet = self.printed().partition("receiving channel 33")[2].partition("events some")[0]
        self.assertNotIn("* [1]", quiet)
        self.assertNotIn("network   1633", self.printed())
        self.leave()

    def test_mistakes_are_reported(self):
        self.start()
        self.do("sing", '! sing: no such command. "help" shows them.')
        self.do("select", "! select: Missing required parameter: 'CHANNEL'.")
        self.do("create x", "! create: Invalid value", "(MAX_DELAY): 'x'")
        self.do("display", "! display: Missing required subcommand")
        self.do("stop --now", "! stop: Unknown option: '--now'")
        self.do("trace", "! trace: Missing required parameter")
        self.do("wait -1", "! not a time: -1.0")
        self.do("wait nan", "! wait: Invalid value")
        self.do("wait Infinity", "! not a time: Infinity")
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
        # A letter is shown once the wait has begun; what is typed before that may be dropped.
        while True:
            self.shell.send("x")
            if self.shell.expect_exact(["x", pexpect.TIMEOUT], timeout=0.2) == 0:
                break
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
        self.assertEqual([line for line in lines if width(line) > WIDTH], [])

    def test_colours_are_for_a_terminal_that_has_them(self):
        colour = re.compile(r"\x1b\[[0-9;]*m")
        for options, wanted in ((), False), (("--terminal",), True):
            with self.subTest(options):
                self.start(*options)
                self.do("sing", "! sing")
                self.do("help", "says more")
                self.do("help select", "CHANNEL")
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
        self.assertEqual([line for line in run.stdout.splitlines() if width(line) > WIDTH], [])

    def test_it_continues_after_a_failure_and_reports_it_at_the_end(self):
        run = self.run_lines("create", "select 63", "select 14")
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.returncode, 1)
        self.assertIn("  ! the bridge refused it: PARAM_NG", run.stdout)
        self.assertIn("  < receiving channel 14, service 0", run.stdout)

    def test_a_command_takes_no_answer_to_another_session(self):
        run = self.run_lines("create", "create", "session 1", "select --no-wait 14", "session 2",
                             "select 32", "sessions")
        self.assertEqual(run.returncode, 0)
        self.assertIn("* [1] SELECT_CHANNEL_REPLY[result=0, physical_channel=14", run.stdout)
        self.assertNotIn("* [2] SELECT_CHANNEL_REPLY", run.stdout)
        self.assertIn("    * 2  receives channel 32", run.stdout)

    def test_a_line_of_the_trace_without_an_end_is_shown_in_parts(self):
        shell = subprocess.Popen(
            self.command(), stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8",
            env=desk.environment())
        self.addCleanup(shell.stdout.close)
        self.addCleanup(shell.wait)
        self.addCleanup(shell.kill)
        shell.stdin.write("trace on\nsessions\n")
        shell.stdin.flush()
        # The trace is being followed.
        self.assertEqual(shell.stdout.readline(), "    no session is open\n")
        with open(self.trace, "a", encoding="utf-8") as file:
            file.write("x" * 70000)
        shown = 0
        while shown < 65536:
            line = shell.stdout.readline()
            self.assertRegex(line, r"^(\| |    )x+\n$")
            shown += line.count("x")
        shell.stdin.close()

    def test_an_unknown_command_is_a_failure(self):
        run = self.run_lines("sing")
        self.assertEqual(run.returncode, 1)
        self.assertIn("! sing: no such command", run.stdout)

    def test_a_refusal_of_send_is_no_failure(self):
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
    unittest.main()
