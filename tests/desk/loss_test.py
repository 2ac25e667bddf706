"""What libDtv does when a file of its log or its capture cannot be written: the file, what is printed,
and the exit status of the process."""
import os
import pathlib
import re
import resource
import signal
import subprocess
import sys
import tempfile
import unittest

SAMPLE, SHOW = (pathlib.Path(sys.argv.pop(1)).resolve() for _ in range(2))
LINE = re.compile(rb"\d+ \d+ x{60}\n")


class Loss(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.log = pathlib.Path(folder.name) / "log"
        self.capture = pathlib.Path(folder.name) / "capture"

    def sample(self, threads=1, count=100, status=0, limit=None, loss_status=None, **files):
        """Runs the program, in which no file grows beyond a limit in bytes."""
        def confine():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        environ = {**os.environ, "DTV_LOG_FILE": "/dev/null",
                   **{name: str(value) for name, value in files.items()}}
        if loss_status is not None:
            environ["DTV_LOSS_STATUS"] = str(loss_status)
        return subprocess.run([SAMPLE, str(threads), str(count), str(status)], env=environ,
                              stderr=subprocess.PIPE, text=True, preexec_fn=confine, timeout=60,
                              check=False)

    def test_nothing_is_printed_about_complete_files(self):
        run = self.sample(loss_status=3, DTV_LOG_FILE=self.log, DTV_CAPTURE_FILE=self.capture)
        self.assertEqual((0, ""), (run.returncode, run.stderr))
        self.assertEqual(101, len(self.log.read_bytes().splitlines()))

    def test_a_log_on_a_full_disk(self):
        run = self.sample(loss_status=3, DTV_LOG_FILE="/dev/full")
        self.assertEqual("libDtv: the log ends, for /dev/full cannot be written: "
                         "No space left on device\n"
                         "libDtv: /dev/full: No space left on device; kept 0 of 101 lines\n",
                         run.stderr)
        self.assertEqual(3, run.returncode)

    def test_a_log_with_a_size_limit(self):
        for threads in (1, 8):
            with self.subTest(threads):
                self.log.unlink(missing_ok=True)
                run = self.sample(threads, limit=1000, loss_status=1, DTV_LOG_FILE=self.log)
                self.assertEqual(1, run.returncode)
                kept = self.log.read_bytes()
                lines = kept.splitlines(keepends=True)
                # A line has 65 or 66 bytes, so that 1000 are no whole number of them.
                self.assertEqual(15, len(lines))
                self.assertEqual([], [line for line in lines if not LINE.fullmatch(line)])
                self.assertEqual(f"libDtv: {self.log}: File too large; kept 15 of "
                                 f"{100 * threads + 1} lines", run.stderr.splitlines()[-1])
                self.assertEqual(2, len(run.stderr.splitlines()), run.stderr)

    def test_a_capture_with_a_size_limit(self):
        run = self.sample(limit=5000, loss_status=1, DTV_CAPTURE_FILE=self.capture)
        self.assertEqual(1, run.returncode)
        # Each message has a command of 180 bytes and, because there is no service, an answer of 80.
        self.assertEqual(
            f"libDtv: the capture ends, for {self.capture} cannot be written: no room for a whole "
            f"message\nlibDtv: {self.capture}: no room for a whole message; kept 37 of 200 "
            "messages\n", run.stderr)
        shown = subprocess.run([SHOW, self.capture], stdout=subprocess.PIPE, text=True,
                               stderr=subprocess.PIPE, timeout=60, check=False)
        self.assertEqual("37 messages", shown.stdout.splitlines()[-1])

    def test_a_capture_that_cannot_begin(self):
        run = self.sample(limit=60, loss_status=1, DTV_CAPTURE_FILE=self.capture)
        self.assertEqual(1, run.returncode)
        self.assertIn("; kept 0 of 200 messages\n", run.stderr)

    def test_files_that_cannot_be_opened(self):
        for name in ("DTV_LOG_FILE", "DTV_CAPTURE_FILE"):
            run = self.sample(loss_status=1, **{name: "/nowhere/file"})
            self.assertEqual(1, run.returncode)
            self.assertIn("/nowhere/file: No such file or directory\n", run.stderr)
        run = self.sample(loss_status=1, DTV_CAPTURE_FILE="/dev/full")
        self.assertEqual((1, "libDtv: the capture file /dev/full is not a regular file\n"),
                         (run.returncode, run.stderr))

    def test_the_status_is_changed_only_when_requested(self):
        for wanted in (None, "", "0", "256", "-1", "x", "1x"):
            run = self.sample(loss_status=wanted, DTV_LOG_FILE="/dev/full")
            self.assertEqual(0, run.returncode, wanted)
            self.assertIn("kept 0 of 101 lines", run.stderr)
        run = self.sample(status=7, loss_status=3, DTV_LOG_FILE="/dev/full")
        self.assertEqual(7, run.returncode, "a failure keeps its own status")


if __name__ == "__main__":
    unittest.main()
