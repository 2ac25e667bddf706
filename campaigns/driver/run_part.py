"""Runs one part, and makes of what it leaves the figures of its last run."""

import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

from figures import ROOT

# Seconds that a part may take beyond those it was given: it may end the round that it is in.
GRACE = 120


def command_of(part, build, options):
    if part.script:
        command = [sys.executable, "-B", str(ROOT / part.command[0]), "--build", str(build)]
    else:
        command = [str(build / part.command[0])]
    return command + [*part.command[1:], *options]


def repeat_command(part, seed, round_name):
    return f"./campaign --only {part.name} --seed {seed} --repeat {round_name}"


def how_it_ended(status):
    """What is wrong with the status; nothing for one that a part ends with."""
    if status in (0, 1):
        return ""
    if status < 0:
        return f"ended by {signal.Signals(-status).name}"
    return f"ended with status {status}"


def run(part, build, seed, seconds, jobs, repeated, environment):
    """The report of the part: rounds, notes, findings, left_out, seconds."""
    with tempfile.TemporaryDirectory() as folder:
        report_file = pathlib.Path(folder) / "report.json"
        options = ["--seed", str(seed), "--jobs", str(jobs), "--report", str(report_file)]
        if seconds:
            options += ["--seconds", f"{seconds:.1f}"]
        if repeated:
            options += ["--repeat", repeated]
        log = tempfile.TemporaryFile("w+", encoding="utf-8", errors="replace")
        with log, subprocess.Popen(
            command_of(part, build, options),
            stdout=log,
            stderr=subprocess.STDOUT,
            cwd=folder,
            env=os.environ | environment,
            start_new_session=True,
        ) as process:
            late = False
            try:
                process.wait(seconds * 1.5 + GRACE if seconds else None)
            except subprocess.TimeoutExpired:
                late = True
            except KeyboardInterrupt:
                os.killpg(process.pid, signal.SIGKILL)
                raise
            if late:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
            log.seek(0)
            output = log.read()
        wrong = "did not end in time" if late else how_it_ended(process.returncode)
        report = {"rounds": 0, "notes": {}, "findings": [], "left_out": []}
        try:
            report |= json.loads(report_file.read_text(encoding="utf-8"))
        except (OSError, ValueError):
            wrong = wrong or "left no report"
    if not wrong and not report["rounds"]:
        wrong = "played no round"
    if wrong:
        text = "\n".join([wrong, *output.splitlines()[-20:]])
        report["findings"].append({"round": repeated, "text": text})
    return report, output
