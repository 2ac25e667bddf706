#!/usr/bin/python3
"""Puts the figures of a file into docs/testing.md, or says that the page holds others.

usage: page.py [--check]
"""

import re
import subprocess
import sys

import figures
import parts

PAGE = figures.ROOT / "docs" / "testing.md"
# The code whose lines are counted, by what it is.
COUNTED = {
    "the bridge": ("src",),
    "tests and campaigns": ("tests", "campaigns", "simulator/tests", "sessions/tests",
                            "replay/tests", "desk/explain/tests"),
}
SOURCES = (".cpp", ".h", ".def", ".java", ".py", ".sh")


def count_lines():
    """Lines of the sources, by what they are."""
    counted = {}
    for what, folders in COUNTED.items():
        listed = subprocess.run(
            ["git", "ls-files", *folders], cwd=figures.ROOT, capture_output=True, text=True, check=True
        ).stdout.split()
        counted[what] = sum(
            len((figures.ROOT / name).read_bytes().splitlines())
            for name in listed
            if name.endswith(SOURCES) and (figures.ROOT / name).exists()
        )
    return counted


def table_of_parts(kept):
    lines = ["| Part | Played | Findings | Time | Seed | Commit | Date |",
             "| --- | ---: | ---: | ---: | ---: | --- | --- |"]
    for part in parts.PARTS:
        entry = kept["parts"].get(part.name)
        if entry is None:
            lines.append(f"| {part.name}: {part.title} | not run | | | | | |")
            continue
        lines.append(
            f"| {part.name}: {part.title} | {figures.number(entry['rounds'])} {entry['unit']} "
            f"| {len(entry['findings'])} | {figures.duration(entry['seconds'])} | {entry['seed']} "
            f"| `{entry['commit']}` | {entry['date'][:10]} |"
        )
    return lines


def table_of_notes(entry):
    lines = ["| Figure | |", "| --- | ---: |"]
    lines += [f"| {name} | {figures.number(value)} |" for name, value in entry["notes"].items()]
    return lines


def machines(kept):
    """Where the parts were run, each place once."""
    places = {}
    for name, entry in kept["parts"].items():
        place = f"{entry['cpu']}, {entry['cores']} processors, Linux {entry['kernel']}, {entry['compiler']}"
        places.setdefault(place, []).append(name)
    return [f"- {', '.join(names)}: {place}" for place, names in places.items()]


def left_out(kept):
    return [
        f"- {name}: {what}" for name, entry in kept["parts"].items() for what in entry["left_out"]
    ]


def blocks(kept):
    """What is between the page's marks, by their names."""
    made = {"parts": table_of_parts(kept), "machines": machines(kept), "left out": left_out(kept)}
    lines = kept.get("lines", {})
    made["lines"] = ["| Lines of | |", "| --- | ---: |"]
    made["lines"] += [f"| {what} | {figures.number(count)} |" for what, count in lines.items()]
    for name, entry in kept["parts"].items():
        made[name] = table_of_notes(entry) if entry["notes"] else []
    return made


def filled(text, kept):
    """The page with these figures."""
    made = blocks(kept)

    def fill(match):
        lines = made.get(match[1], ["Not run."])
        return f"<!-- {match[1]} -->\n" + "".join(line + "\n" for line in lines) + f"<!-- end of {match[1]} -->"

    return re.sub(r"<!-- ([a-z0-9 -]+) -->\n.*?<!-- end of \1 -->", fill, text, flags=re.DOTALL)


def refresh():
    text = PAGE.read_text(encoding="utf-8")
    new = filled(text, figures.read(figures.FILE))
    if new != text:
        PAGE.write_text(new, encoding="utf-8")


def main():
    if sys.argv[1:] == ["--check"]:
        text = PAGE.read_text(encoding="utf-8")
        if filled(text, figures.read(figures.FILE)) != text:
            print(f"{PAGE} has other figures than {figures.FILE}: run campaigns/driver/page.py")
            return 1
        return 0
    if sys.argv[1:]:
        print(__doc__, file=sys.stderr)
        return 2
    refresh()
    return 0


if __name__ == "__main__":
    sys.exit(main())
