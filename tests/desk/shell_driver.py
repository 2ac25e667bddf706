"""Starts the remote control for its tests, and types lines into it."""

import re
import tempfile

import pexpect

import desk

LIMIT = 60  # seconds
WIDTH = 80

UP = "\x1bOA"
TAB = "\t"
CTRL_C = "\x03"
CTRL_D = "\x04"
CTRL_U = "\x15"
# The terminal sequences at the start of the editing of a line and at its end. The prompt is drawn
# again for every event; only after the first sequence it is a new one.
PROMPT = r"\x1b\[\?1h\x1b=desk( \d+)?> "
TAKEN = "\x1b[?1l\x1b>"
# Moves of the cursor, colours and the like.
CONTROL = re.compile(r"\x1b\[[0-9;?]*[A-Za-z]|\x1b[=>]")


class ShellTest(desk.DeskTest):
    """A test with a trace and a history of its own."""

    def setUp(self):
        super().setUp()
        self.trace = self.folder / "trace"
        self.trace.touch()
        self.history = self.folder / "history"

    def command(self, *options):
        return desk.command("shell", "--seed", "1", *options, output=self.trace)

    def environment(self):
        return desk.environment(TERM="xterm", DTV_LOG_FILE=self.trace, DTV_LOG_MASK="0xffff")


class Terminal(ShellTest):
    """The shell on a terminal."""

    def start(self, *options):
        """Starts it, and waits until it takes input."""
        self.output = tempfile.TemporaryFile("w+", encoding="utf-8", dir=self.folder)
        self.addCleanup(self.output.close)
        arguments = self.command("--history", self.history, *options)
        self.shell = pexpect.spawn(
            arguments[0], arguments[1:], env=self.environment(), dimensions=(24, WIDTH),
            encoding="utf-8", timeout=LIMIT)
        # Its delay before each line is for programs that ask for passwords.
        self.shell.delaybeforesend = None
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
