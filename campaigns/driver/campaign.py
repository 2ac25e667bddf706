#!/usr/bin/python3
"""Runs the parts of a campaign one after the other, prints their figures, and keeps them."""

import argparse
import datetime
import os
import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools" / "figures"))

import figures
import page
import parts
import run_part
from machine import machine


def arguments():
    parser = argparse.ArgumentParser(prog="campaign", allow_abbrev=False)
    parser.add_argument("--minutes", type=float)
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--repeat", default="")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--figures", type=pathlib.Path)
    parser.add_argument("--builds", action="store_true", help="prints what has to be built")
    parser.add_argument("--list", action="store_true", help="prints the parts")
    parser.add_argument("--i386-libraries", default="")
    return parser.parse_args()


def refuse(why):
    print(f"campaign: {why}", file=sys.stderr)
    sys.exit(2)


def checked(options):
    """The parts that are wanted."""
    try:
        wanted = parts.chosen(options.only)
    except KeyError as error:
        refuse(error.args[0])
    if options.repeat and len(wanted) != 1:
        refuse("--repeat needs the one part of the round: --only PART")
    if options.minutes is not None and not 0 < options.minutes < 1e5:
        refuse(f"--minutes {options.minutes:g}: it is a number above 0")
    if not 0 <= options.seed < 2**64:
        refuse(f"--seed {options.seed}: it is a number from 0 to 2^64 - 1")
    return wanted


def with_time(wanted, seconds):
    """Those parts for which the time is long enough, and those that are left out for it."""
    kept = list(wanted)
    while kept:
        whole = sum(part.share for part in kept)
        short = [part for part in kept if seconds * part.share / whole < part.least]
        if not short:
            break
        # The one that needs most goes first: what it leaves may do for the others.
        kept.remove(max(short, key=lambda part: part.least))
    return kept, [part for part in wanted if part not in kept]


def row(name, rounds, unit, seconds, findings):
    return f"{name:<13} {rounds:>14} {unit:<12} {seconds:>14} {findings:>9}"


def print_findings(part, seed, report):
    for finding in report["findings"]:
        print("\n".join("    " + line for line in finding["text"].splitlines()))
        if finding["round"]:
            print(f"    repeat: {run_part.repeat_command(part, seed, finding['round'])}")


def entry_of(part, build, options, report, seconds):
    """What is kept of the part's run."""
    where = machine(str(build))
    kept = {
        "title": part.title,
        "rounds": report["rounds"],
        "unit": part.unit,
        "seconds": round(seconds, 1),
        "seed": options.seed,
        "findings": report["findings"],
        "notes": report["notes"],
        "left_out": report["left_out"],
    }
    for name in ("commit", "date", "compiler", "cpu", "cores", "kernel"):
        kept[name] = where[name]
    return kept


def environment_for(part, options):
    if part.build == "i386":
        return {"LD_LIBRARY_PATH": options.i386_libraries}
    return {}


def play(wanted, options):
    """Plays the parts, and returns what is kept of them."""
    entries = {}
    left = (options.minutes or 0) * 60
    shares = sum(part.share for part in wanted)
    print(row("part", "played", "", "time", "findings"), flush=True)
    for part in wanted:
        build = figures.ROOT / "build" / part.build
        given = left * part.share / shares if left > 0 else 0
        shares -= part.share
        began = time.monotonic()
        report, output = run_part.run(
            part, build, options.seed, given, options.jobs, options.repeat,
            environment_for(part, options),
        )
        seconds = time.monotonic() - began
        if options.minutes:
            left = max(left - seconds, 1)
        entries[part.name] = entry_of(part, build, options, report, seconds)
        print(row(part.name, figures.number(report["rounds"]), part.unit,
                  figures.duration(seconds), len(report["findings"])), flush=True)
        print_findings(part, options.seed, report)
        if options.repeat and not report["findings"]:
            print(output, end="")
    return entries


def main():
    options = arguments()
    if options.list:
        for part in parts.PARTS:
            print(f"  {part.name:<13} {part.title}")
        return 0
    wanted = checked(options)
    left_out = []
    if options.minutes:
        wanted, left_out = with_time(wanted, options.minutes * 60)
    if options.builds:
        for build in dict.fromkeys(part.build for part in wanted):
            targets = {part.target for part in wanted if part.build == build}
            print(build, *(["all"] if "all" in targets else []), *sorted(targets - {"all"}))
        return 0
    began = datetime.datetime.now()
    entries = play(wanted, options)
    for part in left_out:
        print(f"{part.name}: left out, it needs {part.least} s: ./campaign --only {part.name}")
    taken = (datetime.datetime.now() - began).total_seconds()
    print(f"seed {options.seed}, {figures.duration(taken)}")
    if not options.repeat:
        path = options.figures or figures.FILE
        try:
            kept = figures.read(path)
            kept["parts"] |= entries
            kept["lines"] = page.count_lines()
            figures.write(path, kept)
            if not options.figures:
                page.refresh()
        except (OSError, ValueError) as error:
            print(f"campaign: {path}: {error}", file=sys.stderr)
            return 1
        print(f"kept in {os.path.relpath(path)}")
    return 1 if any(entry["findings"] for entry in entries.values()) else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
