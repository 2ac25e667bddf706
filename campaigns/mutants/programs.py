"""The ordinary tests that can see the bridge: how each is run against another library."""

import dataclasses
import json
import os
import pathlib
import re
import signal
import subprocess
import time

LABELS = {"harness", "entry", "binding", "commands", "events", "trace", "records"}
# Those that a mutant of each folder concerns most come first.
FIRST = {
    "commands": ("commands_test", "command_helpers_test", "reply_pointers_test"),
    "events": ("events_test",),
    "binding": ("binding_test", "registry_test", "commands_test", "events_test", "environment_test"),
    "entry": ("load_test", "process_id_test", "commands_test", "events_test"),
    "records": ("commands_test", "events_test"),
}
# The libraries that hold the bridge's objects, and how a program of the tests is given another.
PROBED = {
    "libbinding_probe.so": "DTV_TEST_BINDING_PROBE",
    "libcommand_helpers.so": "DTV_TEST_COMMAND_HELPERS",
}
# They compare what is made of the sources, which a real change makes as well.
LEFT_OUT = ("known_formats_test", "rebuilt_messages_test")
# Tests of the harness alone.
WITHOUT_BRIDGE = ("harness_test", "strict_jni_test")


@dataclasses.dataclass(frozen=True)
class Program:
    name: str  # as ctest has it, without the mode
    target: str  # the program, from the build's folder
    filter: str  # of its tests; empty for all
    mode: str  # "strict", or empty for one without a VM
    labels: frozenset

    @property
    def base(self):
        return self.target.rsplit("/", 1)[-1]


def programs_of(build):
    """The tests of the bridge, as ctest lists them."""
    listed = json.loads(subprocess.run(
        ["ctest", "--show-only=json-v1"], cwd=build, capture_output=True, text=True, check=True
    ).stdout)
    found = []
    for test in listed["tests"]:
        properties = {entry["name"]: entry["value"] for entry in test["properties"]}
        labels = set(properties.get("LABELS", []))
        if not labels & LABELS or "long" in labels:
            continue
        if "command" not in test:
            raise FileNotFoundError(f"{test['name']} is not built in {build}")
        command = [pathlib.Path(word) for word in test["command"]]
        if build / "tests" not in command[0].parents:
            continue
        name, _, mode = test["name"].rpartition(".")
        if mode == "checkjni" or command[0].name in LEFT_OUT + WITHOUT_BRIDGE:
            continue
        if mode != "strict":
            name, mode = test["name"], ""
        only = [str(word)[len("--gtest_filter="):] for word in command if str(word).startswith("--gtest_filter=")]
        found.append(Program(name, str(command[0].relative_to(build)), only[0] if only else "", mode,
                             frozenset(labels)))
    return found


def tests_of(file):
    """The names of the tests in a program."""
    listed = subprocess.run([str(file), "--gtest_list_tests"], capture_output=True, text=True, check=True).stdout
    names, suite = set(), ""
    for line in listed.splitlines():
        text = line.split("#")[0].rstrip()
        if text.startswith("  "):
            names.add(suite + text.strip())
        else:
            suite = text
    return names


def concerned(root, file):
    """The labels of the tests that concern a source, as `./test --for` chooses them; all for what others
    include. The load concerns all."""
    if not file.endswith(".cpp") or file.startswith("src/entry/"):
        return LABELS
    said = subprocess.run(
        ["sh", "-c", '. "$0/tools/concerned.sh" && labels_of "$1"', str(root), file],
        capture_output=True, text=True, check=True,
    ).stdout
    return set(said.strip().split("|"))


def in_order(programs, file):
    """The programs in the order in which they are most likely to see a mutant of the file."""
    parts = file.split("/")
    first = FIRST.get(parts[1], ())
    def rank(program):
        if program.base in first:
            return first.index(program.base)
        return len(first) + (0 if f"/{parts[1]}/" in program.target else 1) + (2 if program.filter else 0)
    return sorted(programs, key=rank)


def first_tests(root, file):
    """A filter for the tests in the folder that is named as the file is; empty when there is none."""
    _, area, name = file.split("/")
    words = name.split(".")[0].split("_")
    suites = set()
    for folder in (root / "tests" / area).glob("*"):
        if folder.is_dir() and folder.name in words:
            for path in folder.glob("*.cpp"):
                text = path.read_text(encoding="utf-8")
                suites.update(re.findall(r"^TEST(?:_F|_P)?\((\w+),", text, re.MULTILINE))
    return ":".join(f"{suite}.*:*/{suite}.*" for suite in sorted(suites))


@dataclasses.dataclass
class Outcome:
    failed: bool
    how: str = ""  # "test", "crash" or "hang"
    tests: tuple = ()
    seconds: float = 0.0


def failed_tests(output):
    found = re.findall(r"^\[  FAILED  \] ([\w/]+\.[\w/]+)", output, re.MULTILINE)
    if not found:
        # The one that was running.
        found = re.findall(r"^\[ RUN      \] ([\w/]+\.[\w/]+)", output, re.MULTILINE)[-1:]
    return tuple(dict.fromkeys(found))


def run(program, file, environment, folder, limit, only="", fail_fast=True):
    """Runs a program, given its file and what its environment has besides."""
    command = [str(file)]
    chosen = only or program.filter
    if chosen:
        command.append(f"--gtest_filter={chosen}")
    if fail_fast:
        command.append("--gtest_fail_fast")
    around = {name: value for name, value in os.environ.items()
              if not name.startswith(("GTEST_", "DTV_", "ASAN_", "UBSAN_"))}
    around |= {"DTV_TEST_READ_BACK": "off", "TMPDIR": str(folder),
               "DTV_TEST_VM_OPTIONS": "-XX:+SuppressFatalErrorMessage"} | environment
    if program.mode:
        around["DTV_TEST_MODE"] = program.mode
    began = time.monotonic()
    log = folder / "output"
    with open(log, "wb") as output, subprocess.Popen(
        command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, cwd=folder,
        env=around, start_new_session=True,
    ) as process:
        hung = False
        try:
            process.wait(limit)
        except subprocess.TimeoutExpired:
            hung = True
        finally:
            # Also what a test has started and left.
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        process.wait()
    seconds = time.monotonic() - began
    text = log.read_text(encoding="utf-8", errors="replace")
    if hung:
        return Outcome(True, "hang", failed_tests(text), seconds)
    if process.returncode < 0:
        return Outcome(True, "crash", failed_tests(text), seconds)
    if process.returncode != 0:
        how = "test" if "[  FAILED  ]" in text else "crash"
        return Outcome(True, how, failed_tests(text), seconds)
    if not re.search(r"^\[  PASSED  \]", text, re.MULTILINE):
        return Outcome(True, "crash", failed_tests(text), seconds)
    return Outcome(False, seconds=seconds)
