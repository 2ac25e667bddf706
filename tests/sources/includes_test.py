"""Every include of the sources stays inside its folder or goes to one below it.

usage: includes_test.py SOURCES

A folder that is not listed fails, and so does a class (a source with its header) that includes
another which, through others, includes it.
"""
import pathlib
import re
import sys

# Folder: what its files may include, by the text of the include. A text that ends with a slash is a
# folder.
ALLOWED = {
    "src/records": ["records/"],
    "src/binding": ["binding/", "entry/trace.h", "records/message_table.def"],
    "src/commands": ["commands/", "binding/", "records/", "entry/trace.h"],
    "src/events": ["events/", "binding/", "records/", "entry/trace.h"],
    "src/entry": ["entry/", "commands/", "binding/", "records/"],
    "platform/android": [],
    "platform/include": [],
    "platform/include/android_runtime": [],
    "platform/include/gui": [],
    "platform/dtv": ["./", "records/"],
    "simulator/on_air": ["on_air/"],
    "simulator/messages": ["messages/", "records/"],
    "simulator/service": ["service/", "messages/", "on_air/", "dtv/exchange.h"],
    "simulator/receiver": ["receiver/", "service/", "messages/", "on_air/", "records/"],
    "simulator/script": ["script/", "messages/", "records/"],
    "simulator": ["./", "script/", "receiver/", "service/", "messages/", "on_air/", "records/",
                  "dtv/exchange.h"],
    "desk/native": ["./", "simulator.h", "script/", "records/", "replay/"],
    "sessions": ["sessions/", "records/"],
    "sessions/log": ["sessions/", "records/", "commands/native_table.def", "trace_calls.def"],
    "desk/redact": ["desk/redact/", "sessions/", "records/"],
    "replay": ["replay/", "sessions/", "desk/show/", "records/", "dtv/exchange.h"],
    "desk/explain": ["desk/explain/", "desk/show/", "sessions/", "records/",
                     "binding/class_table.def"],
    "desk/show": ["desk/show/", "desk/pictures/", "sessions/", "records/"],
    "desk/report": ["desk/report/", "desk/pictures/", "desk/explain/", "sessions/", "records/",
                    "desk/show/"],
    "desk/pictures": ["desk/pictures/", "desk/show/", "sessions/", "records/"],
    "desk/show/wireshark": ["enumerations.def", "enumerations.h", "layouts.h", "records/"],
}
# The bridge is for itself: these alone include more of it than the messages. The first two are the
# libraries of tests that link its objects.
INSIDERS = ["tests/binding/probe.h", "tests/binding/probe.cpp",
            "tests/commands/framework/command_helpers.cpp", "tools/rows/print_rows.cpp"]
INCLUDE = re.compile(r'^#include "([^"]+)"', re.MULTILINE)
# Where the text of an include is looked up, after the folder of the file that holds it.
ROOTS = ["src", "simulator", "platform", "."]


def sources(root):
    for top in ("src", "platform", "simulator", "sessions", "replay", "desk"):
        for path in sorted((root / top).rglob("*")):
            if path.suffix in (".h", ".cpp", ".def") and "tests" not in path.relative_to(root).parts:
                yield path


def intruders(root):
    """What the tests and tools include of src/ besides the messages, where they may not."""
    for top in ("tests", "tools", "simulator/tests", "sessions/tests", "replay/tests", "campaigns",
                "desk/explain/tests", "desk/redact/tests", "desk/report/tests", "desk/show/tests"):
        for path in sorted((root / top).rglob("*")):
            name = str(path.relative_to(root))
            if path.suffix not in (".h", ".cpp") or name in INSIDERS:
                continue
            for include in INCLUDE.findall(path.read_text(encoding="utf-8")):
                places = [path.parent, root / "tests"]
                if ((root / "src" / include).is_file() and not include.startswith("records/")
                        and not any((place / include).is_file() for place in places)):
                    yield f"{name}: includes {include} of src/"


def allowed(folder, include):
    for rule in ALLOWED[folder]:
        if rule == "./" and "/" not in include:
            return True
        if include == rule or (rule.endswith("/") and include.startswith(rule)):
            return True
    return False


def find_target(root, path, include):
    for place in [path.parent] + [root / name for name in ROOTS]:
        target = place / include
        if target.is_file():
            return target.resolve()
    return None


def circle(graph):
    """A list of classes that include one another in a circle, or None."""
    done, under_way = set(), []

    def visit(path):
        if path in under_way:
            return under_way[under_way.index(path):] + [path]
        if path in done:
            return None
        under_way.append(path)
        for target in graph.get(path, []):
            found = visit(target)
            if found:
                return found
        under_way.pop()
        done.add(path)
        return None

    for path in graph:
        found = visit(path)
        if found:
            return found
    return None


def main(folder):
    root = pathlib.Path(folder).resolve()
    wrong, graph = list(intruders(root)), {}
    for path in sources(root):
        room = str(path.parent.relative_to(root))
        name = path.relative_to(root)
        if room not in ALLOWED:
            wrong.append(f"{name}: {room} is not in the list of this test")
            continue
        unit = graph.setdefault(path.with_suffix(""), set())
        for include in INCLUDE.findall(path.read_text(encoding="utf-8")):
            if not allowed(room, include):
                wrong.append(f"{name}: includes {include}, which {room} may not")
            target = find_target(root, path, include)
            if target is None:
                wrong.append(f"{name}: includes {include}, which does not exist")
            elif target.with_suffix("") != path.with_suffix(""):
                unit.add(target.with_suffix(""))
    found = circle(graph)
    if found:
        wrong.append("in a circle: " + " -> ".join(str(path.relative_to(root)) for path in found))
    names = {}
    for path in (root / "src").rglob("*.*"):
        if path.name != "CMakeLists.txt":
            names.setdefault(path.name, []).append(str(path.relative_to(root)))
    wrong += [f"two files of one name: {' and '.join(paths)}" for paths in names.values()
              if len(paths) > 1]
    for line in wrong:
        print(line)
    print(f"{len(graph)} classes")
    return 1 if wrong or len(graph) < 70 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
