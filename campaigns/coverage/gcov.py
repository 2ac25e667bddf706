"""What gcov counted of src/: lines and branches, merged over objects and over the instances of templates."""

import dataclasses
import json
import pathlib
import re
import subprocess

# The objects that are made of src/, by their folders below the build's.
OBJECTS = ("src/CMakeFiles/dtv_jni_objects.dir", "src/records/CMakeFiles/dtv_catalogue.dir")
# What the compiler makes by itself: it has no line of its own.
MADE_BY_COMPILER = re.compile(r"_GLOBAL__sub_|__static_initialization_and_destruction|_FINI_|_INIT_")


@dataclasses.dataclass
class Line:
    file: str  # from the root
    number: int
    count: int = 0
    # The functions that have it: of a template its name, without the arguments.
    functions: set = dataclasses.field(default_factory=set)
    # For each number of branches that an instance has here, the counts of these branches.
    branches: dict = dataclasses.field(default_factory=dict)


def forget(build):
    """Forgets what was counted before."""
    for folder in OBJECTS:
        for path in (build / folder).rglob("*.gcda"):
            path.unlink()


def plain(name):
    """A function's name without arguments, of templates as well: harness::Event<5>::f(int) is Event::f."""
    name = re.sub(r"\(anonymous namespace\)::", "", name)
    name = name.split(" [", 1)[0]
    previous = None
    while previous != name:
        previous, name = name, re.sub(r"<[^<>]*>", "", name)
    name = re.sub(r"\{lambda\([^()]*\)#\d+\}", "lambda", name)
    return name.split("(", 1)[0].split(" ")[-1]


def read(build, root):
    """The lines that were counted, by file and number."""
    lines = {}
    for folder in OBJECTS:
        for notes in sorted((build / folder).rglob("*.gcno")):
            done = subprocess.run(
                ["gcov", "--json-format", "--branch-probabilities", "--stdout", str(notes)],
                cwd=notes.parent, capture_output=True, text=True, check=True,
            )
            for document in done.stdout.splitlines():
                add(lines, json.loads(document), root, notes)
    return lines


def add(lines, counted, root, notes):
    for file in counted["files"]:
        path = pathlib.Path(counted["current_working_directory"], file["file"]).resolve()
        # The folder build/.../messages/records leads to src/records.
        if root / "src" not in path.parents:
            continue
        names = {function["name"]: plain(function["demangled_name"]) for function in file["functions"]}
        for entry in file["lines"]:
            name = entry.get("function_name", "")
            if MADE_BY_COMPILER.search(name):
                continue
            key = (str(path.relative_to(root)), entry["line_number"])
            line = lines.setdefault(key, Line(*key))
            line.count += entry["count"]
            line.functions.add(names.get(name, plain(name)))
            taken = [branch["count"] for branch in entry["branches"] if not branch["throw"]]
            if taken:
                merged = line.branches.setdefault(len(taken), [0] * len(taken))
                line.branches[len(taken)] = [sum(pair) for pair in zip(merged, taken)]
