#!/usr/bin/python3
"""Runs the parts of a campaign one after the other, prints their figures, and keeps them."""

import argparse
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


def refuse(why, status=2):
    print(f"campaign: {why}", file=sys.stderr)
    sys.exit(status)


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
    if options.jobs < 1:
        refuse(f"--jobs {options.jobs}: it is a number above 0")
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


def keep(options, name, entry):
    """Puts the figures of a part in the place of those of its last run."""
    path = options.figures or figures.FILE
    try:
        kept = figures.read(path)
        kept["parts"][name] = entry
        kept["lines"] = page.count_lines()
        figures.write(path, kept)
        if not options.figures:
            page.refresh()
    except (OSError, ValueError, KeyError) as error:
        refuse(f"the figures cannot be kept: {path}: {error}", 1)


def play(wanted, options):
    """Plays the parts one after the other, and returns how much was found."""
    left = (options.minutes or 0) * 60
    shares = sum(part.share for part in wanted)
    found = 0
    print(row("part", "played", "", "time", "findings"), flush=True)
    for part in wanted:
        build = figures.ROOT / "build" / part.build
        # What a part leaves of its time is for those after it.
        given = left * part.share / shares
        shares -= part.share
        began = time.monotonic()
        report, output = run_part.run(
            part, build, options.seed, given, options.jobs, options.repeat,
            environment_for(part, options),
        )
        seconds = time.monotonic() - began
        if options.minutes:
            left = max(left - seconds, 1)
        found += len(report["findings"])
        print(row(part.name, figures.number(report["rounds"]), part.unit,
                  figures.duration(seconds), len(report["findings"])), flush=True)
        print_findings(part, options.seed, report)
        if options.repeat:
            print(output, end="")
        else:
            keep(options, part.name, entry_of(part, build, options, report, seconds))
    return found


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
        if not wanted:
            refuse(f"--minutes {options.minutes:g} is too short for {left_out[0].name}: "
                   f"it needs {left_out[0].least} s")
    if options.builds:
        for build in dict.fromkeys(part.build for part in wanted):
            targets = {part.target for part in wanted if part.build == build}
            print(build, *(["all"] if "all" in targets else []), *sorted(targets - {"all"}))
        return 0
    began = time.monotonic()
    found = play(wanted, options)
    for part in left_out:
        print(f"{part.name}: left out, it needs {part.least} s: ./campaign --only {part.name}")
    print(f"seed {options.seed}, {figures.duration(time.monotonic() - began)}, findings: {found}")
    if not options.repeat:
        print(f"kept in {os.path.relpath(options.figures or figures.FILE)}")
    return 1 if found else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        # What was played to its end is kept.
        sys.exit(130)
