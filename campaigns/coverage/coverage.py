#!/usr/bin/python3
"""Coverage of src/ by the ordinary tests: every line, and every branch that branches.txt does not name.

usage: coverage.py --build BUILD [--jobs N] [--repeat FILE:LINE] [--report FILE]

BUILD is the folder of the preset "coverage". The tests of the bridge are run in it, without those with
the label "long". A branch is named by its file, its function, the text of its line and its number there:

    src/entry/trace.h
    JNI_OnLoad
      the text of the line
    branch 2 of 2
      why no test takes it
"""

import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "campaigns" / "driver"))

import gcov
from script_run import Run

NAMED = pathlib.Path(__file__).with_name("branches.txt")
# The tests that load the bridge, or link its objects.
LABELS = "^(harness|records|entry|binding|commands|events|trace)$"


def run_tests(build, jobs):
    """Runs them; what fails is said, as the tests are those of ./test."""
    done = subprocess.run(
        ["ctest", "--preset", "coverage", "--test-dir", str(build), "-L", LABELS, "-LE", "^long$",
         "--parallel", str(jobs)],
        cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace", check=False,
    )
    if done.returncode != 0:
        return "the tests fail:\n" + "\n".join(done.stdout.splitlines()[-20:])
    return ""


def read_named(path=NAMED):
    """The reasons of the branches that no test takes, by (file, function, text, branch)."""
    reasons, block = {}, []
    for number, line in enumerate([*path.read_text(encoding="utf-8").splitlines(), ""], 1):
        if line.startswith("#"):
            continue
        if line.strip():
            block.append(line.strip())
        elif block:
            if len(block) < 5 or not block[3].startswith("branch "):
                raise ValueError(f"{path}:{number}: an entry is a file, a function, a line, a branch, a reason")
            reasons[tuple(block[:4])] = " ".join(block[4:])
            block = []
    return reasons


def branches_of(line, texts):
    """The branches of a line as (name for branches.txt, whether it is taken)."""
    text = texts[line.file][line.number - 1].strip()
    function = " or ".join(sorted(line.functions))
    for of, counts in sorted(line.branches.items()):
        for index, count in enumerate(counts, 1):
            yield (line.file, function, text, f"branch {index} of {of}"), count > 0


def check(run, lines):
    texts = {file: (ROOT / file).read_text(encoding="utf-8").splitlines() for file, _ in lines}
    reasons = read_named()
    covered, taken, named, seen = 0, 0, set(), set()
    for (file, number), line in sorted(lines.items()):
        text = texts[file][number - 1].strip()
        if run.repeated not in ("", f"{file}:{number}"):
            continue
        run.played(f"{file}:{number}", "" if line.count else f"is not run: {text}")
        covered += line.count > 0
        for name, is_taken in branches_of(line, texts):
            seen.add((name, is_taken))
            taken += is_taken
            if not is_taken and name in reasons:
                named.add(name)
            elif not is_taken and line.count:
                run.finding(f"{file}:{number}", "is not taken, and not named in branches.txt:\n" + "\n".join(name))
    if run.repeated:
        return
    for name in sorted(reasons.keys() - named):
        what = "is taken" if (name, True) in seen else "is not there"
        run.finding("", f"campaigns/coverage/branches.txt: this branch {what}:\n" + "\n".join(name))
    run.note("lines that have code", len(lines))
    run.note("lines that are run", covered)
    run.note("branches", taken + sum(not is_taken for _, is_taken in seen))
    run.note("branches that are taken", taken)
    run.note("branches not taken, each named with its reason", len(named))


def main():
    run = Run("coverage")
    gcov.forget(run.build)
    wrong = run_tests(run.build, run.jobs)
    if wrong:
        run.finding("", wrong)
    check(run, gcov.read(run.build, ROOT))
    run.left_out("coverage is counted in a build without optimization; constant expressions and static checks, "
                 "which the compiler computes, are not counted")
    run.end()


if __name__ == "__main__":
    main()
