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


def ended_badly(process, output):
    """What is wrong with how the process ended; nothing when it ended as it should."""
    if process.returncode in (0, 1):
        return ""
    if process.returncode < 0:
        how = f"ended by {signal.Signals(-process.returncode).name}"
    else:
        how = f"ended with status {process.returncode}"
    return "\n".join([how, *output.splitlines()[-20:]])


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
        report = {"rounds": 0, "notes": {}, "findings": [], "left_out": []}
        try:
            report |= json.loads(report_file.read_text(encoding="utf-8"))
        except (OSError, ValueError):
            if process.returncode in (0, 1):
                report["findings"].append({"round": "", "text": "left no report"})
    wrong = "did not end in time" if late else ended_badly(process, output)
    if wrong:
        report["findings"].append({"round": repeated, "text": wrong})
    elif not report["rounds"] and not repeated:
        report["findings"].append({"round": "", "text": "played no round"})
    return report, output
