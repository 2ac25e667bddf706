#!/usr/bin/env python3
"""How well logs with known causes are explained.

    tests/field/score.py CORPUS --analyser COMMAND...   the figures of the logs of make_corpus.py
    tests/field/score.py --cities N --build BUILD --analyser COMMAND...
                                                        evenings in which nothing goes wrong

The command gets the name of a log and prints JSON. Exit status 0 when everything is at least what it has
to be, 1 when not, 2 when it cannot be measured. Nothing is printed about single logs that are held out.
"""
import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys
import tempfile

LEAST = 0.95
FEW = 20  # of fewer logs than these, one may be wrong
TIMEOUT = 60  # seconds for a log
# A gap and a clock that was set look alike.
NAMED_AS = {"gap": {"gap", "time-jump"}, "time-jump": {"gap", "time-jump"}}
STATUS_CLEAN = 0
TOLD_AS_REFUSAL = {"provoked", "refused", "info"}


class Verdict:
    """What the analyser says about a log, beside what is true of it."""

    def __init__(self, label, answer):
        self.label = label
        self.status = answer["status"]
        self.losses = {loss["kind"] for loss in answer["losses"]}
        self.findings = answer["findings"]
        self.first = next((finding for finding in self.findings if finding["caused_by"] is None), None)

    @property
    def rule(self):
        return self.first["rule"] if self.first else "none"

    @property
    def is_scored(self):
        """Whether the first cause can be told from this log at all."""
        return not self.label["provoked"] and not self.label["empty"] and (
            self.label["judgeable"] or self.label["cause"] == "none")

    @property
    def is_right(self):
        return self.rule == self.label["cause"] or self.rule in self.label["also"]

    @property
    def names_subject(self):
        """Whether the subject names that of the label. A class may have its packages before it, and a member
        its class."""
        subject = self.first.get("subject") if self.first else None
        return subject is not None and self.label["subject"] in subject.replace(".", "/").split("/")

    @property
    def is_called_clean(self):
        """Called clean although something is missing in it."""
        return self.status == STATUS_CLEAN and bool(self.label["losses"] or self.label["empty"])

    @property
    def has_false_finding(self):
        """A finding in a log that is whole and in which nothing goes wrong."""
        label = self.label
        return label["cause"] == "none" and not label["losses"] and not label["provoked"] \
            and not label["empty"] and bool(self.findings)

    def named(self, kind):
        return bool(self.losses & NAMED_AS.get(kind, {kind}))


def analyse(analyser, log):
    """The answer about a log. Raises ValueError when there is none that can be read."""
    run = subprocess.run([*analyser, log], capture_output=True, timeout=TIMEOUT, check=False)
    try:
        answer = json.loads(run.stdout)
    except ValueError as error:
        raise ValueError(f"{log}: exit status {run.returncode}, no JSON: {error}: "
                         f"{run.stderr.decode(errors='replace')[:300]}") from error
    if answer.get("version") != 1 or answer["status"] != run.returncode:
        raise ValueError(f"{log}: version {answer.get('version')}, status {answer.get('status')}, "
                         f"exit status {run.returncode}")
    return answer


def analyse_all(analyser, logs):
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        return list(pool.map(lambda log: analyse(analyser, log), logs))


def share(part, whole):
    return part / whole if whole else None


def percent(value):
    return "     -" if value is None else f"{100 * value:5.1f}%"


class Table:
    """Prints figures, and notes those that are too low."""

    def __init__(self):
        self.too_low = []

    def require(self, name, part, whole, least=LEAST):
        value = share(part, whole)
        print(f"{name:<44} {part:4} of {whole:4} {percent(value)}")
        if value is not None and value < least and not (whole < FEW and whole - part <= 1):
            self.too_low.append(name)

    def require_none(self, name, count):
        print(f"{name:<44} {count:4}")
        if count:
            self.too_low.append(name)


def print_causes(verdicts):
    print(f"{'cause':<24} {'logs':>5} {'right':>6} {'precision':>9} {'recall':>7} {'subject':>8}")
    given = collections.Counter()
    given_right = collections.Counter()
    for verdict in verdicts:
        name = verdict.label["cause"] if verdict.is_right else verdict.rule
        given[name] += 1
        given_right[name] += verdict.is_right
    for cause in sorted({verdict.label["cause"] for verdict in verdicts}):
        own = [verdict for verdict in verdicts if verdict.label["cause"] == cause]
        right = [verdict for verdict in own if verdict.is_right]
        subjects = [verdict for verdict in right if verdict.label["subject"] is not None]
        print(f"{cause:<24} {len(own):5} {len(right):6}   "
              f"{percent(share(given_right[cause], given[cause]))}  {percent(share(len(right), len(own)))}  "
              f"{percent(share(sum(verdict.names_subject for verdict in subjects), len(subjects)))}")


def print_mistakes(verdicts, corpus):
    """The open logs whose first cause is wrong or whose losses are not named."""
    for verdict in verdicts:
        label = verdict.label
        if label["held_out"]:
            continue
        missed = [kind for kind in label["losses"] if not verdict.named(kind)]
        wrong = verdict.is_scored and not verdict.is_right
        if wrong or missed or verdict.is_called_clean or verdict.has_false_finding:
            print(f"  {corpus / label['log']} ({label['run']}, {label['form']}, {label['levels']}): "
                  f"{label['cause']} {label['subject'] or ''}, said: {verdict.rule}"
                  f"{'; not named: ' + ', '.join(missed) if missed else ''}"
                  f"{'; called clean' if verdict.is_called_clean else ''}")


def print_part(title, verdicts, table):
    """The figures of one part of the corpus."""
    print(f"\n== {title}: {len(verdicts)} logs")
    scored = [verdict for verdict in verdicts if verdict.is_scored]
    print_causes(scored)
    table.require(f"{title}: first cause", sum(verdict.is_right for verdict in scored), len(scored))
    for kind in sorted({kind for verdict in verdicts for kind in verdict.label["losses"]}):
        lossy = [verdict for verdict in verdicts if kind in verdict.label["losses"]]
        table.require(f"{title}: {kind} named", sum(verdict.named(kind) for verdict in lossy), len(lossy))
    whole = [verdict for verdict in verdicts if not verdict.label["losses"] and not verdict.label["empty"]]
    unplanted = collections.Counter(kind for verdict in whole for kind in verdict.losses)
    print(f"{title + ': whole logs with a loss named':<44} "
          f"{sum(bool(verdict.losses) for verdict in whole):4} of {len(whole):4}  "
          f"{', '.join(f'{kind} {count}' for kind, count in sorted(unplanted.items()))}".rstrip())
    hidden = [verdict for verdict in verdicts if not verdict.is_scored and not verdict.label["provoked"]]
    print(f"{title + ': cause not in the log, one claimed':<44} "
          f"{sum(verdict.first is not None and not verdict.is_right for verdict in hidden):4} "
          f"of {len(hidden):4}")
    table.require_none(f"{title}: lossy logs called clean",
                       sum(verdict.is_called_clean for verdict in verdicts))
    table.require_none(f"{title}: clean logs with findings",
                       sum(verdict.has_false_finding for verdict in verdicts))
    provoked = [verdict for verdict in verdicts
                if verdict.label["provoked"] and not verdict.label["losses"]]
    table.require(f"{title}: provoked refusals said to be so",
                  sum(all(finding["severity"] in TOLD_AS_REFUSAL for finding in verdict.findings)
                      for verdict in provoked), len(provoked))


def score(corpus, analyser):
    labels = json.loads((corpus / "labels.json").read_text(encoding="utf-8"))
    answers = analyse_all(analyser, [corpus / label["log"] for label in labels])
    verdicts = [Verdict(label, answer) for label, answer in zip(labels, answers)]
    table = Table()
    for title, held_out in (("open", False), ("held out", True)):
        part = [verdict for verdict in verdicts if verdict.label["held_out"] == held_out]
        if part:
            print_part(title, part, table)
    print_mistakes(verdicts, corpus)
    return table.too_low


def run_city(build, city, folder):
    log = folder / f"{city}.log"
    root = pathlib.Path(__file__).resolve().parents[2]
    subprocess.run([root / "run", "--build", build, "--quiet", "--no-refusals", "--seed", "1", "--city", city,
                    "--trace", log], check=True, capture_output=True, timeout=120)
    return log


def score_cities(count, build, analyser):
    """Evenings without refusals, of cities from all over the list."""
    names = sorted(path.name for path in pathlib.Path("/usr/share/dvb/isdb-t").glob("br-*"))
    cities = names[::len(names) // count][:count]
    table = Table()
    with tempfile.TemporaryDirectory() as folder:
        with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
            logs = list(pool.map(lambda city: run_city(build, city, pathlib.Path(folder)), cities))
        answers = analyse_all(analyser, logs)
    findings = {city: [finding["rule"] for finding in answer["findings"]]
                for city, answer in zip(cities, answers) if answer["findings"]}
    for city, rules in findings.items():
        print(f"  {city}: {', '.join(rules)}")
    print(f"{'evenings without refusals':<44} {len(answers):4}")
    table.require_none("evenings with findings", len(findings))
    return table.too_low


def main():
    parser = argparse.ArgumentParser(description="How well logs with known causes are explained.")
    parser.add_argument("corpus", type=pathlib.Path, nargs="?")
    parser.add_argument("--cities", type=int, default=0)
    parser.add_argument("--build", type=pathlib.Path)
    parser.add_argument("--analyser", nargs=argparse.REMAINDER, required=True,
                        help="the command, with its options; the last option here")
    arguments = parser.parse_args()
    if not arguments.corpus and not (arguments.cities and arguments.build):
        parser.error("a corpus is needed, or --cities and --build")
    try:
        too_low = score(arguments.corpus, arguments.analyser) if arguments.corpus else []
        if arguments.cities:
            too_low += score_cities(arguments.cities, arguments.build, arguments.analyser)
    except (OSError, ValueError, KeyError, subprocess.SubprocessError) as error:
        print(f"score: {error}", file=sys.stderr)
        sys.exit(2)
    if too_low:
        print(f"\nnot as it has to be: {', '.join(too_low)}")
    sys.exit(1 if too_low else 0)


if __name__ == "__main__":
    main()
