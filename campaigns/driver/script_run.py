"""One run of a part that is a script: the options and the report that rounds/run.h has for programs."""

import argparse
import json
import os
import pathlib
import random
import sys
import time


class Run:
    """What the part was asked to do, what it counted, what it found."""

    def __init__(self, part):
        self.part = part
        parser = argparse.ArgumentParser(prog=part, allow_abbrev=False)
        parser.add_argument("--build", type=pathlib.Path, required=True, help="the build's folder")
        parser.add_argument("--seed", type=int, default=1)
        parser.add_argument("--seconds", type=float, default=0)
        parser.add_argument("--jobs", type=int, default=1)
        parser.add_argument("--repeat", default="")
        parser.add_argument("--report", type=pathlib.Path)
        options = parser.parse_args()
        self.build = options.build.resolve()
        self.seed = options.seed
        self.seconds = options.seconds
        self.jobs = max(1, options.jobs)
        self.repeated = options.repeat
        self._report_file = options.report
        self._began = time.monotonic()
        self._rounds = 0
        self._notes = {}
        self._findings = []
        self._left_out = []

    def random(self, name):
        """Random numbers for one purpose: the same for the same seed and name."""
        return random.Random(f"{self.seed}/{name}")

    def elapsed(self):
        return time.monotonic() - self._began

    def has_time(self):
        return self.seconds <= 0 or self.elapsed() < self.seconds

    def wants(self, round_name):
        """Whether the round is to be played: there is time for it, and no other alone is asked for."""
        return self.repeated == round_name if self.repeated else self.has_time()

    def played(self, round_name, wrong=""):
        """Counts a round. A text says what was wrong with it: it is a finding."""
        self._rounds += 1
        if wrong:
            self._findings.append({"round": round_name, "text": wrong})
            print(f"{round_name}: {wrong}", flush=True)

    def finding(self, round_name, text):
        """What is wrong besides the rounds; the name of a round, if one of them shows it."""
        self._findings.append({"round": round_name, "text": text})
        print(f"{round_name}: {text}" if round_name else text, flush=True)

    def note(self, name, value):
        """A figure besides, for the page."""
        self._notes[name] = value

    def left_out(self, what):
        """What was not tested, in a sentence."""
        self._left_out.append(what)

    def end(self):
        """Writes the report, and ends the process with the status of the run."""
        if self.repeated and not self._rounds:
            print(f"{self.part}: --repeat {self.repeated}: seed {self.seed} has no such round",
                  file=sys.stderr)
            sys.exit(2)
        if self._report_file:
            made = self._report_file.with_name(self._report_file.name + ".new")
            made.write_text(json.dumps({
                "rounds": self._rounds,
                "notes": self._notes,
                "findings": self._findings,
                "left_out": self._left_out,
            }), encoding="utf-8")
            os.replace(made, self._report_file)
        sys.exit(1 if self._findings else 0)
