#!/usr/bin/python3
"""Evenings with random scripts: none crashes or hangs, and what each rule has done is reported."""

import collections
import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "campaigns" / "driver"))

import told  # noqa: E402
from scripts import Messages, Writer  # noqa: E402
from script_run import Run  # noqa: E402

SCRIPTS = 1000
# Seconds that an evening may take: many times what it needs on a busy machine.
LONGEST = 60
TABLES = "/usr/share/dvb/isdb-t"


class Evening:
    """One evening with one script."""

    def __init__(self, build, messages, random):
        self.script = Writer(messages, random).script()
        self.seed = random.randint(0, 1000)
        self.traced = random.random() < 0.5
        self.build = build
        # What became of the rules that took effect, and of the others.
        self.rules = collections.Counter()
        self.differences = 0
        self.taken = 0.0

    def command(self, folder):
        jars = ":".join(str(self.build / "java" / name) for name in ("dtvserver.jar", "desk.jar"))
        return ["java", "-Xmx128m", "-XX:+UseSerialGC", "-XX:TieredStopAtLevel=1", "-XX:-UsePerfData",
                "-cp", jars, "tenrik.desk.Main", "evening", "--libraries", str(self.build / "lib"),
                "--tables", TABLES, "--guide", str(ROOT / "simulator/data/guide.xml"),
                "--output", str(folder / "trace"), "--script", str(folder / "script.json"),
                "--seed", str(self.seed), "--keep-going", "--json"]

    def run(self):
        """What was wrong; empty when nothing was."""
        with tempfile.TemporaryDirectory(prefix="faults-") as name:
            folder = pathlib.Path(name)
            (folder / "script.json").write_text(json.dumps(self.script), encoding="utf-8")
            wrong = self.play(folder)
            odd = sorted(set(os.listdir(folder)) - {"script.json", "trace"})
            if odd:
                wrong += f"\nleft {', '.join(odd)}"
        return f"{json.dumps(self.script)}{wrong}" if wrong else ""

    def play(self, folder):
        environment = os.environ | {"LC_ALL": "C.UTF-8", "DTV_LOG_FILE": str(folder / "trace")}
        if self.traced:
            environment["DTV_LOG_MASK"] = "0xffff"
        began = time.monotonic()
        try:
            run = subprocess.run(self.command(folder), cwd=folder, env=environment,
                                 stdin=subprocess.DEVNULL, capture_output=True, timeout=LONGEST,
                                 check=False)
        except subprocess.TimeoutExpired:
            return f"\ndid not end within {LONGEST} s"
        finally:
            self.taken = time.monotonic() - began
        output = run.stdout.decode("utf-8", errors="replace")
        errors = run.stderr.decode("utf-8", errors="replace")
        try:
            figures = json.loads(output)
        except ValueError:
            figures = None
        if run.returncode not in (0, 1) or figures is None:
            return f"\nended with status {run.returncode}\n" + "\n".join(
                (output + errors).splitlines()[-40:])
        return self.check(run.returncode, errors, figures)

    def check(self, status, errors, figures):
        wrong = ""
        if errors != ("" if figures["ok"] else f"run: {figures['failure']}\n"):
            wrong += f"\nstandard error has\n{errors}"
        differs = bool(figures["differences"] or figures["left_out"])
        if (status == 1) != differs or figures["ok"] == differs:
            wrong += f"\nstatus {status} with {len(figures['differences'])} differences"
        self.differences = len(figures["differences"])
        for count in figures["rules"]:
            if count["acted"] == 0:
                self.rules["rules that nothing fitted"] += 1
                continue
            how = told.how(self.script, count, figures)
            self.rules[how] += 1
            if not how:
                wrong += (f"\n{count['rule']} {count['message']} took effect {count['acted']} times, and "
                          "is not reported")
        return wrong


def main():
    run = Run("faults")
    messages = Messages(run.build)
    rules = collections.Counter()
    longest, most_differences = 0.0, 0

    def play(number):
        name = f"script-{number}"
        if not run.wants(name):
            return None
        evening = Evening(run.build, messages, run.random(name))
        return name, evening, evening.run()

    with concurrent.futures.ThreadPoolExecutor(run.jobs) as pool:
        for played in pool.map(play, range(1, SCRIPTS + 1)):
            if played is None:
                continue
            name, evening, wrong = played
            run.played(name, wrong)
            rules += evening.rules
            most_differences = max(most_differences, evening.differences)
            longest = max(longest, evening.taken)
    run.note(told.REPORTED, rules[told.REPORTED])
    for how in told.EXPLAINED:
        run.note(how, rules[how])
    run.note("rules that nothing fitted", rules["rules that nothing fitted"])
    run.note("most differences in one evening", most_differences)
    run.note("longest evening, s", round(longest, 1))
    run.left_out("Whether contents that a rule changed came to Java as they were changed is not looked "
                 "at here.")
    run.left_out("The scripts are played in stepped time, so that a silent service costs no time.")
    run.end()


if __name__ == "__main__":
    main()
