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
import tempfile

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
    # Groups that are measured whole.
    "calls": {},
    "threads": {},
    "memory": {},
    "load": {},
    "size": {},
    "desk": {},
}
# Those that dtv-bench measures in one run.
IN_ONE_RUN = ("events", "commands", "calls", "threads", "memory")

# Beside which variant the ratio is, and the columns after it: their heading and variant.
FLOOR = {"events": "floor", "commands": "floor-lookups"}
COLUMNS = {
    "events": [("hand", "hand"), ("JNA", "jna"), ("JNR", "jnr"), ("FFM", "ffm")],
    "commands": [
        ("look", "hand-lookups"),
        ("kept", "floor"),
        ("hand", "hand"),
        ("JNAd", "jna-direct"),
        ("JNA", "jna"),
        ("JNR", "jnr"),
        ("FFM", "ffm"),
    ],
    "calls": [
        ("JNI", "jni"),
        ("JNAd", "jna-direct"),
        ("JNA", "jna"),
        ("JNR", "jnr"),
        ("FFM", "ffm"),
    ],
    "threads": [("bridge", "bridge"), ("floor", "floor"), ("hand", "hand")],
}
NAME_WIDTH = 23
LINE = 80


class Failure(Exception):
    """Something that ends the run, with the status that it ends with."""

    def __init__(self, message, status):
        super().__init__(message)
        self.status = status


def names():
    return [name for group in GROUPS for name in (group, *GROUPS[group])]


def chosen(only):
    """The groups that are wanted in whole or in part, and the operations of those that have some."""
    for name in only:
        if name not in names():
            raise Failure(f"--only {name}: it is one of\n  " + "\n  ".join(names()), 2)
    groups = [
        group
        for group, operations in GROUPS.items()
        if not only or group in only or not operations.keys().isdisjoint(only)
    ]
    operations = [
        operation
        for group in groups
        for operation in GROUPS[group]
        if not only or group in only or operation in only
    ]
    return groups, operations


# ---- Running.


def run_program(command, environment):
    """What a program prints as JSON. Its progress and its failed checks go to standard error."""
    with tempfile.TemporaryFile("w+", encoding="utf-8") as output:
        with subprocess.Popen(
            command, stdout=output, stderr=subprocess.PIPE, text=True, env=environment
        ) as program:
            for line in program.stderr:
                # The VM's word about the foreign interface is known.
                if "incubator modules" not in line:
                    print(line, end="", file=sys.stderr, flush=True)
        if program.returncode != 0:
            raise Failure("the benchmarks failed", 1 if program.returncode == 1 else 2)
        output.seek(0)
        return json.load(output)


class Programs:
    """The programs of a build."""

    def __init__(self, build, launcher, check):
        self.build = build
        self.launcher = launcher
        self.check = check

    def run(self, program, *arguments, **environment):
        folder = f"{self.build}/benchmarks"
        with open(f"{folder}/class-path.txt", encoding="utf-8") as file:
            class_path = file.read()
        return run_program(
            [
                *self.launcher,
                f"{folder}/bin/{program}",
                "--library", f"{self.build}/lib/libDtv_jni.so",
                "--peers", f"{folder}/lib/libbench_peers.so",
                "--class-path", class_path,
                *(["--check"] if self.check else []),
                *arguments,
            ],
            {**os.environ, **environment},
        )


def add(result, more):
    """Adds what one program has measured to all that was."""
    result["operations"] += more["operations"]
    for outcome, number in more["checks"].items():
        result["checks"][outcome] += number


def run_in_one(programs, groups, operations, result):
    """What is timed in one process with the hand-written bridge."""
    wanted = operations + [group for group in groups if group in IN_ONE_RUN and not GROUPS[group]]
    if not wanted:
        return
    add(result, programs.run("dtv-bench", *(word for name in wanted for word in ("--only", name))))
    measured = {word for done in result["operations"] for word in (done["name"], done["group"])}
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


# ---- Where it ran.


def output_of(*command):
    try:
        done = subprocess.run(command, capture_output=True, check=True, text=True, cwd=ROOT)
    except (OSError, subprocess.CalledProcessError):
        return ""
    return done.stdout.strip()


def version_of(package):
    return output_of("dpkg-query", "--show", "--showformat=${Version}", package)


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
        "jna": version_of("libjna-java"),
        "jnr-ffi": version_of("libjnr-ffi-java"),
    }


# ---- The table.


def median(variant):
    return statistics.median(variant["rounds"])


def spread(variant):
    """Half the distance of the quartiles, in percent of the median."""
    lower, _, upper = statistics.quantiles(variant["rounds"], n=4)
    return 50 * (upper - lower) / median(variant)


def cell(operation, variant, width):
    """A median, or a dash for what is not there."""
    found = operation["variants"].get(variant)
    return f"{median(found):{width}.0f}" if found else f"{'-':>{width}}"


def compared_rows(group, operations):
    """The bridge beside its floor, then the others."""
    # The commands have one aim in common, and no column for it.
    width = 6 if group == "events" else 5
    heading = group + (", ns" if group == "events" else ", ns, aim 1.10")
    yield (
        f"{heading:{NAME_WIDTH}}{'bridge':>6}{'+-%':>4}{'floor':>6}{'ratio':>6}"
        + (f"{'aim':>5}" if group == "events" else "")
        + "".join(f"{column:>{width}}" for column, _ in COLUMNS[group])
    )
    for operation in operations:
        variants = operation["variants"]
        bridge = variants["bridge"]
        floor = variants[FLOOR[group]]
        aim = GROUPS[group][operation["name"]]
        yield (
            f"{operation['name']:{NAME_WIDTH}}{median(bridge):6.0f}{spread(bridge):4.0f}"
            f"{median(floor):6.0f}{median(bridge) / median(floor):6.2f}"
            + (f"{f'{aim:.2f}' if aim else '':>5}" if group == "events" else "")
            + "".join(cell(operation, name, width) for _, name in COLUMNS[group])
        )


def plain_rows(group, operations):
    """Columns of figures, one a variant."""
    columns = COLUMNS.get(group) or [(name, name) for name in operations[0]["variants"]]
    widths = [max(8, len(heading) + 2) for heading, _ in columns]
    yield f"{group + ', ' + operations[0]['unit']:{NAME_WIDTH}}" + "".join(
        f"{heading:>{width}}" for (heading, _), width in zip(columns, widths)
    )
    for operation in operations:
        yield f"{operation['name']:{NAME_WIDTH}}" + "".join(
            cell(operation, name, width) for (_, name), width in zip(columns, widths)
        )


def desk_rows(operations):
    """Times a call, and how many a second where time that passes was measured."""
    yield f"{'at the desk':{NAME_WIDTH}}{'filtered':>12}{'written':>12}"
    for operation in operations:
        name, _, clock = operation["name"].partition(", ")
        values = [median(operation["variants"][variant]) for variant in ("filtered", "written")]
        if clock == "wall":
            cells = [f"{1e9 / value:,.0f}/s" for value in values]
            name += "s" if name.endswith("trip") else ""
        else:
            cells = [f"{value:.0f} ns" for value in values]
            name += ", CPU"
        yield f"{name:{NAME_WIDTH}}" + "".join(f"{cell:>12}" for cell in cells)


def missing_rows(operations):
    """Why there is no figure."""
    reasons = {}
    for operation in operations:
        reasons.update(operation["missing"])
    for variant, reason in reasons.items():
        yield f"{variant} is missing: {reason}"[:LINE]


def table(result):
    """The lines of the table."""
    where = result["machine"]
    yield f"{where['date']}, commit {where['commit']}"
    yield f"{where['cpu']}, {where['cores']} cores, Linux {where['kernel']}"
    yield f"{where['java']}, {where['compiler']}"
    yield f"JNA {where['jna']}, JNR-FFI {where['jnr-ffi']}"
    for group in GROUPS:
        operations = [o for o in result["operations"] if o["group"] == group]
        if not operations:
            continue
        yield ""
        if group in FLOOR:
            yield from compared_rows(group, operations)
            yield from missing_rows(operations)
        elif group == "desk":
            yield from desk_rows(operations)
        else:
            yield from plain_rows(group, operations)


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


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", required=True)
    parser.add_argument("--small", help="a build for size, of the library alone")
    parser.add_argument("--launcher", default="", help="what a program of the build is started with")
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--groups", action="store_true", help="prints the groups that are wanted, and does no more")
    parser.add_argument("--json")
    parser.add_argument("--page")
    parser.add_argument("--check", action="store_true")
    return parser.parse_args()


def measure(options, groups, operations):
    result = {
        "machine": machine(options.build),
        "operations": [],
        "checks": {"held": 0, "failed": 0},
    }
    programs = Programs(options.build, shlex.split(options.launcher), options.check)
    run_in_one(programs, groups, operations, result)
    if "load" in groups:
        run_loads(programs, result)
    if "size" in groups:
        builds = {"Release": options.build, "MinSizeRel": options.small}
        measure_size(result, {kind: build for kind, build in builds.items() if build})
    if "desk" in groups:
        run_desk(programs, result)
    return result


def main():
    options = arguments()
    groups, operations = chosen(options.only)
    if options.groups:
        print(" ".join(groups))
        return
    if options.json:
        # What cannot be written is known before anything is measured.
        write_file(options.json, "")
    result = measure(options, groups, operations)
    if options.json:
        write_file(options.json, json.dumps(result, indent=1) + "\n")
    if options.check:
        print(f"{result['checks']['held']} self-checks held; too short a run for figures")
        return
    lines = list(table(result))
    print("\n".join(lines), flush=True)
    if options.page:
        refresh_page(options.page, lines)


try:
    main()
except Failure as failure:
    print(f"bench: {failure}", file=sys.stderr)
    sys.exit(failure.status)
except BrokenPipeError:
    sys.exit(1)
