#!/usr/bin/env python3
"""Every line that the reader of logs knows is written by the bridge in some test.

usage: written_lines_test.py BUILD ROWS

Runs the tests of the bridge in BUILD under the strict JNI table. ROWS is the file of the lines that are
known. Each test holds every line that it has the bridge write against what is read back
(tests/harness/read_back.h), and fails when the two differ.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

# The lines that no test can have the bridge write, each with the reason.
NOT_PROVOKED = {
    "DEBUG||end_type getEnumValue Error, ret = %d":
        "an end of the input that cannot be read is sent as the text's size, and no line says so",
}


ROW = re.compile(r'^TRACE_CALL\((\w+), "([^"]*)", "[^"]*", \d+, "([^"]*)"\)$')


def known_lines(rows):
    lines = set()
    for row in pathlib.Path(rows).read_text(encoding="utf-8").splitlines():
        found = ROW.match(row)
        if found is None:
            sys.exit(f"{rows}: no row of a line: {row}")
        lines.add("|".join(found.groups()))
    return lines


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
    for line, reason in NOT_PROVOKED.items():
        print(f"cannot be provoked: {line}: {reason}")
    print(f"{len(known)} lines are known, {len(written & known)} were written, "
          f"{len(NOT_PROVOKED)} cannot be provoked")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
