#!/usr/bin/env python3
"""Every line that the reader of logs knows is written by the bridge in some test.

usage: written_lines_test.py BUILD KNOWN

Runs the tests of the bridge in BUILD under the strict JNI table. KNOWN is the program that prints the
lines that are known. Each test holds every line that it has the bridge write against what is read back
(tests/harness/read_back.h), and fails when the two differ.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

# The lines that no test can have the bridge write, each with the reason.
NOT_PROVOKED = {
}


def known_lines(program):
    printed = subprocess.run(
        [program, "--gtest_also_run_disabled_tests", "--gtest_filter=*DISABLED_ArePrinted"],
        check=True, capture_output=True, text=True).stdout
    return {line.removeprefix("known|") for line in printed.splitlines() if line.startswith("known|")}


def main():
    build, known = sys.argv[1], known_lines(sys.argv[2])
    if len(known) < 300:
        sys.exit(f"only {len(known)} lines are known")
    with tempfile.TemporaryDirectory() as folder:
        written_file = pathlib.Path(folder) / "written"
        environment = dict(os.environ, DTV_WRITTEN_LINES=str(written_file))
        environment.pop("GTEST_FILTER", None)
        ran = subprocess.run(
            ["ctest", "--test-dir", build, "-R", r"\.strict$", "-L", "^(harness|entry|binding|commands|events|emulated)$",
             "--parallel", str(os.cpu_count() or 1), "--output-on-failure", "--no-tests=error"],
            env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if ran.returncode != 0:
            print(ran.stdout)
            sys.exit("a test of the bridge fails")
        written = set(written_file.read_text(encoding="utf-8").splitlines())
    failed = False
    for line in sorted(known - written - NOT_PROVOKED.keys()):
        print(f"written by no test: {line}")
        failed = True
    for line in sorted(written & NOT_PROVOKED.keys()):
        print(f"written, but stated as one that no test provokes: {line}")
        failed = True
    for line in sorted((written | NOT_PROVOKED.keys()) - known):
        print(f"not known: {line}")
        failed = True
    print(f"{len(known)} lines are known, {len(written & known)} were written, "
          f"{len(NOT_PROVOKED)} cannot be provoked")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
