#!/usr/bin/env python3
"""Makes logs of the bridge with known causes.

    tests/field/make_corpus.py BUILD OUT [--part open|held-out|all] [--runs N] [--only CAUSE]

Every log comes from a run of the real bridge in BUILD, in which something was made to go wrong, or
nothing was. OUT/labels.json says for each log what it is. A third of the runs is held out: those are
for measuring alone, and nobody who writes rules looks at them.
"""
import argparse
import concurrent.futures
import dataclasses
import gzip
import json
import os
import pathlib
import random
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from corpus import command_causes, evening_causes, event_causes, forms, losses  # noqa: E402
from corpus.java_side import JavaSides  # noqa: E402
from corpus.runs import Runner  # noqa: E402
from corpus.situation import Situation, evidence_numbers  # noqa: E402

CAUSES = {**command_causes.CAUSES, **event_causes.CAUSES}
RUNS = 6  # of each cause
MORE_RUNS = {"none": 15, "argument-refused": 12, "command-failed": 12, "slow-reply": 9, "no-reply": 9,
             "service-stopped": 9, "attach-failed": 3}
VARIANTS = 3
EARLIER = 1_000_000  # is added to the numbers of the lines of a process before
SEEN_BY_TIMES = {"slow-reply"}


def is_held_out(number):
    """Every third run of each cause."""
    return number % 3 == 2


class Base:
    """A run: its lines, what went wrong in it, and which lines show that."""

    def __init__(self, name, number, seed, situation, lines, provoked=False):
        self.name = name
        self.number = number
        self.seed = seed
        self.situation = situation
        self.lines = lines
        self.provoked = provoked
        self.evidence = evidence_numbers(lines, situation)


def is_sound(shown):
    """Whether nothing in a capture has failed or was left unanswered. What a scan finds on a channel and how
    it has ended are no failures."""
    usual = {"ScanNotify", "TerminateScanNotify", "TerminateSearchChannelNotify"}
    return not shown["unanswered"] and all(
        message["value"] == 0 and (message.get("name") in usual or all(
            message.get("fields", {}).get(name, 0) == 0 for name in ("result", "return_value")))
        for message in shown["messages"])


def run_situation(runner, cause, number, java):
    seed = 1000 * sorted(CAUSES).index(cause) + number
    choices = random.Random(f"{cause}-{number}")
    situation = CAUSES[cause](number, choices, java)
    name = f"{cause}-{number}"
    lines, capture = runner.session(name, situation, seed, choices)
    if cause == "none" and not is_sound(runner.messages(capture)):
        raise RuntimeError(f"{name}: something goes wrong in it")
    return Base(name, number, seed, situation, lines)


def run_evening(runner, number, provoked):
    name = f"evening-{'provoked-' if provoked else ''}{number}"
    city = evening_causes.CITIES[number % len(evening_causes.CITIES)]
    lines, capture = runner.evening(name, number, city, {}, *([] if provoked else ["--no-refusals"]))
    if is_sound(runner.messages(capture)) == provoked:
        raise RuntimeError(f"{name}: {'nothing' if provoked else 'something'} goes wrong in it")
    return Base(name, number, number, Situation("none", None, [], []), lines, provoked)


def run_scripted_evening(runner, number):
    situation = evening_causes.situation(number)
    name = f"evening-{situation.cause}-{number}"
    lines, _ = runner.evening(name, number, situation.city, situation.script, "--no-refusals")
    return Base(name, number, number, situation, lines)


def run_all(build, folder, wanted, runs, part):
    """All runs, several at a time."""
    runner = Runner(build, folder)
    java = JavaSides(runner.build / "java/dtvserver.jar", folder)
    tasks = []
    for cause in CAUSES:
        count = runs if runs is not None else MORE_RUNS.get(cause, RUNS)
        tasks += [(run_situation, cause, number, java) for number in range(count)
                  if cause in wanted and is_wanted(number, part)]
    if "none" in wanted and runs is None:
        tasks += [(run_evening, number, provoked) for number in range(6) for provoked in (False, True)
                  if is_wanted(number, part)]
    if runs is None:
        tasks += [(run_scripted_evening, number) for number, make in enumerate(evening_causes.SITUATIONS)
                  if is_wanted(number, part) and make().cause in wanted]
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        return list(pool.map(lambda task: task[0](runner, *task[1:]), tasks))


def is_wanted(number, part):
    return part == "all" or is_held_out(number) == (part == "held-out")


class Log:
    """A log made of a run: variant 0 is whole, 1 lacks levels, 2 has lost something."""

    def __init__(self, base, variant, earlier):
        self.base = base
        self.restarted = False
        self.random = random.Random(f"{base.name}-{variant}")
        self.process = forms.Process(base.lines, self.random)
        self.form = self.random.choice(forms.FORMS + ["raw", "threadtime", "threadtime"])
        if base.situation.cause in SEEN_BY_TIMES and self.random.random() < 0.8:
            self.form = self.random.choice(sorted(forms.TIMED))
        self.levels = "all"
        self.losses = []
        self.entries = [self.process.entry(line) for line in base.lines]
        if self.form != "raw" and self.random.random() < 0.5:
            # The end of the process is seldom in the log of a receiver.
            self.entries = [entry for entry in self.entries if ",TENRIK,VM Thread," not in entry.text]
        level_of = {line.number: line.level for line in base.lines}
        if earlier and self.random.random() < 0.15:
            self.restarted = True
            level_of.update(self.begin_with(self.random.choice(earlier)))
        if variant == 1:
            self.filter_levels(level_of)
        elif variant == 2:
            self.plant_losses()

    def begin_with(self, earlier):
        """Puts a day of the process before this one at the beginning, on which nothing goes wrong. Returns the
        levels of its lines, which get numbers of their own."""
        process = forms.Process(earlier.lines, self.random)
        seconds = earlier.lines[-1].time + self.random.uniform(5, 900)
        lines = [dataclasses.replace(line, number=EARLIER + line.number, time=line.time - seconds)
                 for line in earlier.lines]
        self.entries = [process.entry(line) for line in lines] + self.entries
        return {line.number: line.level for line in lines}

    def filter_levels(self, level_of):
        self.levels = self.random.choice([name for name in losses.LEVELS if name != "all"])
        before = len(self.entries)
        self.entries = losses.filtered(self.entries, self.levels, level_of)
        if len(self.entries) < before and not self.is_empty():
            self.losses.append("levels-missing")

    def plant_losses(self):
        kept = set().union(*self.base.evidence) if self.base.evidence else set()
        kinds = list(losses.PLANTED)
        if self.base.situation.cause in SEEN_BY_TIMES:
            kinds = [kind for kind in kinds if kind not in losses.TIMES]
        self.random.shuffle(kinds)
        if not kept and self.random.random() < 0.5:
            kinds.sort(key=lambda kind: kind != "command-without-reply")
        wanted = 1 + (self.random.random() < 0.3)
        for kind in kinds:
            if len(self.losses) == wanted:
                break
            if losses.TIMES & set(self.losses) and kind in losses.TIMES:
                continue
            if kind in losses.TIMES and self.form not in forms.TIMED:
                self.form = self.random.choice(sorted(forms.TIMED))
            if kind == "chatty" and self.form == "raw":
                self.form = "threadtime"
            if losses.PLANTED[kind](self.entries, self.random, kept):
                self.losses.append(kind)

    def is_empty(self):
        """Whether no line of the bridge is left."""
        return not any(entry.text.startswith(",TENRIK,") for entry in self.entries)

    def also(self):
        """Other names that the first cause may be given."""
        situation = self.base.situation
        if situation.cause == "none" and "command-without-reply" in self.losses:
            # The service may as well not have answered.
            return ["no-reply"]
        return list(situation.also)

    def is_judgeable(self):
        """Whether the lines that show the cause are in the log; where nothing went wrong, whether it is whole."""
        if self.base.situation.cause == "none":
            return not self.losses
        if self.base.situation.cause in SEEN_BY_TIMES and self.form not in forms.TIMED:
            return False
        left = {entry.number for entry in self.entries}
        return any(alternative <= left for alternative in self.base.evidence)

    def evidence_lines(self, line_of):
        """The lines of the log that show the cause, counted from 1; none when they are not in it."""
        for alternative in self.base.evidence:
            if alternative <= set(line_of):
                return sorted(line_of[number] for number in alternative)
        return []

    def write(self, folder, name):
        """Writes the log. Returns its label."""
        entries = self.entries
        if self.form != "raw" and self.random.random() < 0.6:
            share = self.random.uniform(0.02, 0.3)
            # A cut line is the first or the last of the whole log.
            entries = entries[:1] + forms.with_foreign_lines(entries[1:], self.random, share)
        options = {"beginning": self.form != "raw" and "cut-line" not in self.losses
                   and self.random.random() < 0.5,
                   "report": self.form == "threadtime" and "cut-line" not in self.losses
                   and self.random.random() < 0.3,
                   "crlf": self.random.random() < 0.15}
        data, line_of = forms.render(entries, self.form, self.process, self.random, **options)
        if entries and getattr(entries[-1], "cut_end", False):
            data = data.rstrip(b"\r\n")
            data = data[:-self.random.randrange(4, 30)]
        options["compressed"] = self.random.random() < 0.15
        if options["compressed"]:
            data = gzip.compress(data, 1, mtime=0)
            name += ".gz"
        (folder / name).write_bytes(data)
        situation = self.base.situation
        options["restart"] = self.restarted
        form = "+".join([self.form, *(option for option, is_set in options.items() if is_set)])
        return {"log": name, "seed": self.base.seed, "run": self.base.name, "levels": self.levels,
                "form": form, "cause": situation.cause, "subject": situation.subject,
                "also": self.also(), "losses": sorted(self.losses),
                "lines": self.evidence_lines(line_of), "judgeable": self.is_judgeable(),
                "empty": self.is_empty(), "provoked": self.base.provoked,
                "held_out": is_held_out(self.base.number)}


def main():
    parser = argparse.ArgumentParser(description="Makes logs of the bridge with known causes.")
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("out", type=pathlib.Path)
    parser.add_argument("--part", choices=["open", "held-out", "all"], default="all")
    parser.add_argument("--runs", type=int, help="runs of each cause (default: 3 to 15)")
    parser.add_argument("--only", action="append", choices=sorted(CAUSES), help="a cause; may be repeated")
    arguments = parser.parse_args()
    if not (arguments.build / "tests/field/field.jar").exists():
        parser.error(f"{arguments.build} has no tests/field/field.jar: build the target field_java")
    arguments.out.mkdir(parents=True, exist_ok=True)
    begun = time.monotonic()
    with tempfile.TemporaryDirectory() as folder:
        bases = run_all(arguments.build, pathlib.Path(folder), set(arguments.only or CAUSES),
                        arguments.runs, arguments.part)
    labels = []
    for base in bases:
        earlier = [other for other in bases if other.situation.cause == "none" and not other.provoked
                   and is_held_out(other.number) == is_held_out(base.number)]
        for variant in range(VARIANTS):
            log = Log(base, variant, earlier)
            labels.append(log.write(arguments.out, f"{len(labels):03}.log"))
    (arguments.out / "labels.json").write_text(json.dumps(labels, indent=1) + "\n", encoding="utf-8")
    print(f"{len(labels)} logs of {len(bases)} runs in {time.monotonic() - begun:.0f} s")


if __name__ == "__main__":
    main()
