#!/usr/bin/python3
"""Measures what is asked for, and writes the table and the file of raw figures."""

import argparse
import json
import os
import re
import sys

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tools", "figures"))
from machine import machine
from operations import Failure, chosen
from programs import Programs, measure_size, run_desk, run_in_one, run_loads
from table import table


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
    parser.add_argument("--library-path", help="where a program of the build finds libraries")
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
    programs = Programs(options.build, options.library_path, options.check)
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
except KeyboardInterrupt:
    sys.exit(130)
except OSError as error:
    # The table has nowhere to go.
    print(f"bench: {error.strerror}", file=sys.stderr)
    os._exit(1)
