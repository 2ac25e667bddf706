"""Runs the programs of a build, and gathers what they measure."""

import json
import os
import re
import subprocess
import sys
import tempfile

from operations import GROUPS, Failure

# Those that dtv-bench measures in one run.
IN_ONE_RUN = ("events", "commands", "calls", "threads", "memory")


def run_program(command, environment):
    """What a program prints as JSON. Its progress and its failed checks go to standard error."""
    with tempfile.TemporaryFile("w+", encoding="utf-8") as output:
        with subprocess.Popen(
            command, stdout=output, stderr=subprocess.PIPE, text=True, env=environment
        ) as program:
            for line in program.stderr:
                # The VM's warning about the foreign interface says nothing new.
                if "incubator modules" not in line:
                    print(line, end="", file=sys.stderr, flush=True)
        if program.returncode != 0:
            raise Failure("the benchmarks failed", 1 if program.returncode == 1 else 2)
        output.seek(0)
        return json.load(output)


class Programs:
    """The programs of a build."""

    def __init__(self, build, library_path, check):
        self.build = build
        self.environment = {"LD_LIBRARY_PATH": library_path} if library_path else {}
        self.check = check

    def run(self, program, *arguments, **environment):
        folder = f"{self.build}/benchmarks"
        with open(f"{folder}/class-path.txt", encoding="utf-8") as file:
            class_path = file.read()
        return run_program(
            [
                f"{folder}/bin/{program}",
                "--library", f"{self.build}/lib/libDtv_jni.so",
                "--peers", f"{folder}/lib/libbench_peers.so",
                "--class-path", class_path,
                *(["--check"] if self.check else []),
                *arguments,
            ],
            {**os.environ, **self.environment, **environment},
        )


def add(result, more):
    """Adds what one program has measured to all that was."""
    result["operations"] += more["operations"]
    result["machine"]["vm"] = more["vm"]
    for outcome, number in more["checks"].items():
        result["checks"][outcome] += number


def run_in_one(programs, groups, operations, result):
    """What is timed in one process with the hand-written bridge."""
    wanted = operations + [group for group in groups if group in IN_ONE_RUN and not GROUPS[group]]
    if not wanted:
        return
    add(result, programs.run("dtv-bench", *(argument for name in wanted for argument in ("--only", name))))
    measured = {done[key] for done in result["operations"] for key in ("name", "group")}
    missing = set(wanted) - measured
    if missing:
        raise Failure("not measured: " + ", ".join(sorted(missing)), 1)


def run_loads(programs, result):
    """Loads, each in a process of its own, in turn."""
    print("load", file=sys.stderr, flush=True)
    rounds = {"bridge": [], "look-ups": [], "look-ups again": []}
    for _ in range(1 if programs.check else 7):
        for what in ("bridge", "look-ups"):
            load = programs.run("dtv-bench", "--load", what)["operations"][0]
            for variant, series in load["variants"].items():
                if what == "look-ups" or variant == what:
                    rounds[variant] += series["rounds"]
    load["variants"] = {
        variant: {"batch": 1, "rounds": values} for variant, values in rounds.items()
    }
    result["operations"].append(load)


def run_desk(programs, result):
    """What the desk's own libDtv and the simulator add. Its log goes to a file that is not kept."""
    with tempfile.TemporaryDirectory(dir=programs.build) as folder:
        add(result, programs.run("dtv-bench-desk", DTV_LOG_FILE=os.path.join(folder, "log")))


def measure_size(result, builds):
    """The library as it is shipped, without symbols."""
    for kind, build in builds.items():
        library = f"{build}/lib/libDtv_jni.so"
        with tempfile.TemporaryDirectory() as folder:
            stripped = os.path.join(folder, "stripped.so")
            subprocess.run(["strip", "-o", stripped, library], check=True)
            size = os.path.getsize(stripped)
        listed = subprocess.run(
            ["readelf", "-rW", library], capture_output=True, check=True, text=True
        ).stdout
        sections = re.findall(r"section '(\S+)' at offset \S+ contains (\d+) entr", listed)
        values = {"bytes, stripped": size}
        values.update({f"in {name}": int(count) for name, count in sections})
        result["operations"].append(
            {
                "name": kind,
                "group": "size",
                "unit": "bytes, relocations",
                "variants": {
                    name: {"batch": 1, "rounds": [value]} for name, value in values.items()
                },
                "missing": {},
            }
        )
