"""The evening while the service's time passes by itself: which speeds are accepted, and that it succeeds
with a fast clock on a busy machine."""
import re
import subprocess
import sys
import unittest

from desk import DeskTest
from stated_numbers import CALLBACKS, NATIVES

# Keeps a processor busy until it is killed.
BUSY = [sys.executable, "-c", "while True: pass"]


class LiveTest(DeskTest):
    def live(self, *speed, more=()):
        return self.run_desk("evening", "--quiet", *more, "--live", *speed)


class Busy(LiveTest):
    def test_every_speed_on_a_busy_machine(self):
        for _ in range(2):
            busy = subprocess.Popen(BUSY)
            self.addCleanup(busy.wait)
            self.addCleanup(busy.kill)
        for speed in ["50", "100", "200", "500", "1000"] * 2 + ["1e300"]:
            with self.subTest(speed):
                run = self.live(speed)
                self.assertEqual((0, ""), (run.returncode, run.stderr), run.stdout)
                self.assertIn(f"natives called          {NATIVES} of {NATIVES}\n", run.stdout)
                self.assertIn(f"callbacks received      {CALLBACKS - 2} of {CALLBACKS}, ", run.stdout)


class Live(LiveTest):
    def test_an_invalid_speed_is_refused(self):
        for speed in ["0", "-1", "-0.5", "nan", "NaN", "inf", "Infinity", "-Infinity", "1e999",
                      "1e-999", "abc", "10f", "0x10", "1,5", ""]:
            with self.subTest(speed):
                run = self.live(speed)
                self.assertEqual(2, run.returncode)
                self.assertEqual("", run.stdout)
                self.assertEqual("run: Invalid value for option '--live': "
                                 f"\"{speed}\" is not a finite number above 0\n"
                                 "Try ./run --help\n", run.stderr)

    def test_a_refusal_is_not_taken_for_a_late_command(self):
        # Results that mean "not now", as a command that comes too late gets.
        script = self.folder / "script.json"
        script.write_text('{"version": 1, "commands": [{"command": "PausePlay", "result": 1}]}')
        run = self.live("20", more=["--script", script])
        self.assertEqual(1, run.returncode)
        self.assertEqual("run: Pause: the service answered with result 1.\n", run.stderr)

    def test_time_passes_as_fast_as_requested(self):
        run = self.live("10")
        self.assertEqual((0, ""), (run.returncode, run.stderr))
        taken, clock = re.search(r"time taken +([\d.]+) s, ([\d.]+) s", run.stdout).groups()
        # The program's own time is added to it.
        self.assertGreater(float(taken), float(clock) / 10 - 0.2)
        self.assertGreater(float(clock), 40)


if __name__ == "__main__":
    unittest.main()
