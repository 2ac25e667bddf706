#!/usr/bin/python3
"""Runs the benchmark programs of a build, and makes the table and the file of raw figures."""

import argparse
import datetime
import json
import os
import platform
import re
import shlex
import statistics
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

# What can be measured: the operations of each group, with what the bridge aims at beside its floor.
GROUPS = {
    "events": {
        "CREATE_REPLY": 1.15,
        "NETWORK_INFO": 1.15,
        "SERVICE_INFO": 1.15,
        "GUIDE": 1.05,
        "MAIL_REQ": None,
    },
    "commands": {
        "SelectChannel": 1.10,
        "ControlDecodeAudio": 1.10,
        "ControlDecodeAudio_Sync": 1.10,
        "SetDisplay_All": 1.10,
        "BMLReadNvramReply": 1.10,
    },
}

# The columns of the groups in nanoseconds after bridge and floor: their heading and variant.
FLOOR = {"events": "floor", "commands": "floor-lookups"}
OTHERS = {
    "events": [("hand", "hand")],
    "commands": [("look", "hand-lookups"), ("kept", "floor"), ("hand", "hand")],
}
NAME_WIDTH = 23


class Failure(Exception):
    """Something that ends the run, with the status that it ends with."""

    def __init__(self, message, status):
        super().__init__(message)
        self.status = status


def names():
    return [name for group in GROUPS for name in (group, *GROUPS[group])]


def chosen(only):
    """The operations that are wanted, in the order of the table."""
    for name in only:
        if name not in names():
            raise Failure(f"--only {name}: it is one of\n  " + "\n  ".join(names()), 2)
    return [
        (group, operation)
        for group, operations in GROUPS.items()
        for operation in operations
        if not only or group in only or operation in only
    ]


# ---- Running.


def run_program(arguments, launcher):
    """What a program prints as JSON. Its progress and its failed checks go to standard error."""
    done = subprocess.run([*launcher, *arguments], stdout=subprocess.PIPE, check=False, text=True)
    if done.returncode != 0:
        raise Failure(f"{os.path.basename(arguments[0])} failed", 1 if done.returncode == 1 else 2)
    return json.loads(done.stdout)


def run_bridges(build, launcher, check, operations):
    """The operations that are timed in one process with the hand-written bridge."""
    if not operations:
        return {"operations": [], "checks": {"held": 0, "failed": 0}}
    arguments = [
        f"{build}/benchmarks/bin/dtv-bench",
        "--library", f"{build}/lib/libDtv_jni.so",
        "--class-path", f"{build}/java/dtvserver.jar:{build}/benchmarks/bench.jar",
    ]
    for name in operations:
        arguments += ["--only", name]
    if check:
        arguments.append("--check")
    result = run_program(arguments, launcher)
    missing = set(operations) - {operation["name"] for operation in result["operations"]}
    if missing:
        raise Failure("not measured: " + ", ".join(sorted(missing)), 1)
    return result


# ---- Where it ran.


def output_of(*command):
    try:
        done = subprocess.run(command, capture_output=True, check=True, text=True, cwd=ROOT)
    except (OSError, subprocess.CalledProcessError):
        return ""
    return done.stdout.strip()


def machine(build):
    with open("/proc/cpuinfo", encoding="utf-8") as info:
        model = re.search(r"^model name\s*: (.*)$", info.read(), re.MULTILINE)
    compiler = ""
    with open(f"{build}/CMakeCache.txt", encoding="utf-8") as cache:
        found = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache.read(), re.MULTILINE)
        if found:
            compiler = output_of(found[1], "--version").partition("\n")[0]
    changed = output_of("git", "status", "--porcelain", "--untracked-files=no")
    return {
        "commit": output_of("git", "rev-parse", "--short=12", "HEAD")
        + (" with changes" if changed else ""),
        "date": datetime.datetime.now().astimezone().strftime("%Y-%m-%d"),
        "cpu": model[1] if model else platform.machine(),
        "cores": os.cpu_count(),
        "kernel": platform.release(),
        "compiler": compiler,
        "java": output_of("java", "--version").partition("\n")[0],
    }


# ---- The table.


def median(variant):
    return statistics.median(variant["rounds"])


def spread(variant):
    """Half the distance of the quartiles, in percent of the median."""
    lower, _, upper = statistics.quantiles(variant["rounds"], n=4)
    return 50 * (upper - lower) / median(variant)


def timed_rows(group, operations):
    yield (
        f"{group + ', ns':{NAME_WIDTH}}{'bridge':>7}{'+-%':>4}{'floor':>7}{'ratio':>6}{'aim':>6}"
        + "".join(f"{heading:>6}" for heading, _ in OTHERS[group])
    )
    for operation in operations:
        variants = operation["variants"]
        bridge = variants["bridge"]
        floor = variants[FLOOR[group]]
        aim = GROUPS[group][operation["name"]]
        yield (
            f"{operation['name']:{NAME_WIDTH}}{median(bridge):7.0f}{spread(bridge):4.0f}"
            f"{median(floor):7.0f}{median(bridge) / median(floor):6.2f}"
            f"{f'{aim:.2f}' if aim else '':>6}"
            + "".join(f"{median(variants[name]):6.0f}" for _, name in OTHERS[group])
        )


def table(result):
    """The lines of the table."""
    where = result["machine"]
    yield f"{where['date']}  commit {where['commit']}"
    yield f"{where['cpu']}, {where['cores']} cores, Linux {where['kernel']}"
    yield f"{where['java']}, {where['compiler']}"
    for group in GROUPS:
        operations = [o for o in result["operations"] if o["group"] == group]
        if operations:
            yield ""
            yield from timed_rows(group, operations)


def write_file(path, text):
    """Writes a file whole, or fails."""
    try:
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
    except OSError as error:
        raise Failure(f"{path} cannot be written: {error.strerror}", 1) from error


def refresh_page(path, lines):
    """Puts the table into a page, between its two marks."""
    with open(path, encoding="utf-8") as file:
        page = file.read()
    marked = re.compile(r"(<!-- table -->\n).*?(<!-- end of table -->)", re.DOTALL)
    if not marked.search(page):
        raise Failure(f"{path} has no place for the table", 2)
    block = "```\n" + "\n".join(lines) + "\n```\n"
    write_file(path, marked.sub(lambda marks: marks[1] + block + marks[2], page, count=1))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", required=True)
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--names", action="store_true", help="checks the names and does no more")
    parser.add_argument("--json")
    parser.add_argument("--page")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--launcher", default="", help="what a program of the build is started with")
    options = parser.parse_args()
    wanted = chosen(options.only)
    if options.names:
        return
    if options.json:
        write_file(options.json, "")
    launcher = shlex.split(options.launcher)
    result = {"machine": machine(options.build)}
    result.update(
        run_bridges(options.build, launcher, options.check, [name for _, name in wanted])
    )
    if options.json:
        write_file(options.json, json.dumps(result, indent=1) + "\n")
    if options.check:
        print(f"{result['checks']['held']} self-checks held; too short a run for figures")
        return
    lines = list(table(result))
    print("\n".join(lines))
    sys.stdout.flush()
    if options.page:
        refresh_page(options.page, lines)


try:
    main()
except Failure as failure:
    print(f"bench: {failure}", file=sys.stderr)
    sys.exit(failure.status)
except BrokenPipeError:
    sys.exit(1)
