#!/usr/bin/python3
"""Mutants of src/: whether the tests see it when the bridge is changed in one place.

usage: mutants.py --build BUILD [--seed N] [--jobs N] [--seconds N] [--repeat MUTANT] [--report FILE]

Takes the first WANTED mutants that compile, in the order of the seed. The results come one by one into
build/mutants/SEED.jsonl, so that a run can be stopped and taken up again; with other sources or other
tests it begins from the start.
"""

import collections
import os
import pathlib
import resource
import sys
import threading

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "campaigns" / "driver"))

import points
import rounds
import survivors
from script_run import Run

WANTED = 500
LEAST_KILLED = 0.99


def all_points(player):
    return [point for file, text in player.texts.items() for point in points.points_of(file, text)]


def is_program(result):
    return result["result"] in ("killed", "survived")


def play_all(run, player, journal, order):
    """Plays until WANTED of them are programs, with one thread a job. Answers those that were taken."""
    lock = threading.Lock()
    taken, playing = [], [0]

    def next_point():
        with lock:
            programs = sum(is_program(journal.results[name]) for name in taken if name in journal.results)
            while programs + playing[0] < WANTED and len(taken) < len(order):
                point = order[len(taken)]
                known = journal.results.get(point.name)
                if known is None and not run.has_time():
                    return None
                taken.append(point.name)
                if known is None:
                    playing[0] += 1
                    return point
                programs += is_program(known)
            return None

    def work(_):
        # Another thread's mutant may turn out to be no program, so that one more is wanted.
        while True:
            point = next_point()
            if point is None:
                return
            result = None
            try:
                result = player.play(point, journal.hints.get("\n".join(rounds.diff_of(point, player.texts[point.file]))))
            finally:
                with lock:
                    playing[0] -= 1
                    if result is not None:
                        journal.add(result)
                        say(len(taken), result)

    rounds.in_threads(run.jobs, [(work, None)] * run.jobs)
    return [journal.results[name] for name in taken if name in journal.results]


def say(number, result):
    seen = result.get("tests") or [result.get("why", "")]
    print(f"{number} {result['name']} {result['result']} {result['seconds']} s "
          f"{result.get('program', '')} {' '.join(seen)[:120]}", flush=True)


def survived(result, reasons):
    """What to say of a survivor; nothing when it is a known one."""
    if survivors.key_of(result["name"].split(":")[0], result["diff"]) in reasons:
        return ""
    return "survives:\n" + "\n".join(result["diff"])


def stale(results, reasons, order, texts):
    """Entries of the list that are wrong: of no mutant, or of one that a test sees."""
    made = {survivors.key_of(point.file, rounds.diff_of(point, texts[point.file])) for point in order}
    for key in reasons:
        if key not in made:
            yield "", f"campaigns/mutants/survivors.txt: no mutant is {' '.join(key)}"
    for result in results:
        key = survivors.key_of(result["name"].split(":")[0], result["diff"])
        if result["result"] != "survived" and key in reasons:
            yield result["name"], f"is {result['result']}, and survivors.txt says that it survives"


def report(run, results, order, reasons, texts):
    kinds = collections.Counter(result["result"] for result in results)
    programs = [result for result in results if is_program(result)]
    for result in results:
        if is_program(result):
            run.played(result["name"], survived(result, reasons) if result["result"] == "survived" else "")
    for name, wrong in stale(results, reasons, order, texts):
        run.finding(name, wrong)
    if not programs:
        return
    known = sum(result["result"] == "survived" and not survived(result, reasons) for result in results)
    # Nothing can see those that are listed: they are no part of what tests can kill.
    share = kinds["killed"] / max(1, len(programs) - known)
    if len(programs) >= WANTED and share < LEAST_KILLED:
        run.finding("", f"{100 * share:.1f} % are killed, {100 * LEAST_KILLED:.0f} % are wanted")
    how = collections.Counter(result.get("how") for result in programs)
    run.note("places to change in src/", len(order))
    run.note("mutants that compile", len(programs))
    run.note("killed by a test", kinds["killed"])
    run.note("nothing can see them, each listed with its reason", known)
    run.note("killed of the others, %", round(100 * share, 2))
    run.note("of them by a crash", how["crash"])
    run.note("of them by a hang", how["hang"])
    run.note("refused by the build's own checks, besides", kinds["refused"])
    run.note("compiled to the same code, drawn again", kinds["the same"])
    run.note("no C++ program, drawn again", kinds["no program"])
    run.note("seconds of each, on average", round(sum(result["seconds"] for result in programs) / len(programs), 2))


def repeat(run, player, order):
    """One mutant, with every test that sees it."""
    for point in order:
        if point.name == run.repeated:
            result = player.play(point, thorough=True)
            print("\n".join(result["diff"]))
            print(f"{result['result']} in {result['seconds']} s: {result.get('why', '')}")
            print("\n".join(result.get("failed", [])))
            run.played(point.name, "survives" if result["result"] == "survived" else "")


def main():
    run = Run("mutants")
    # A crash is expected, and its memory is not read.
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    os.environ["LC_ALL"] = "C.UTF-8"
    player = rounds.Player(ROOT, run.build, ROOT / "build" / "mutants" / "work")
    reasons = survivors.read()
    order = points.in_order(all_points(player), run.seed)
    wrong = player.prepare(run.jobs)
    if wrong:
        sys.exit("mutants: " + "\n".join(wrong))
    if run.repeated:
        repeat(run, player, order)
    else:
        journal = rounds.Journal(ROOT / "build" / "mutants" / f"{run.seed}.jsonl", player)
        results = play_all(run, player, journal, order)
        report(run, results, order, reasons, player.texts)
    run.left_out("programs outside the tests of the bridge are not run against mutants: the evening, the "
                 "replays, the shell and the tests of the logs")
    run.left_out("a mutant of a source meets the tests that concern this source, under the strict JNI table; "
                 "-Xcheck:jni is not used")
    run.left_out("tests that compare two things made of the same source (the formats in the library with "
                 "those of the log reader) are not run against mutants")
    run.left_out("mutants are compiled by GCC without optimization and without sanitizers")
    run.end()


if __name__ == "__main__":
    try:
        main()
    except KeyboardInterrupt:
        sys.exit(130)
