"""One mutant after the other: it is built, and the tests are run against it until one fails."""

import difflib
import hashlib
import json
import os
import pathlib
import threading
import time

import building
import programs

# Seconds that a program of the tests may take at least, and at most how many times what it takes otherwise.
LEAST_LIMIT, TIMES = 30, 10
# What the build compares with class files: see tools/rows/print_rows.cpp.
ROWS = ("src/binding/java_names.h", "src/binding/class_table.def", "src/commands/native_table.def",
        "src/commands/field_table.def")


def sources(root):
    """The sources that are mutated, by their paths from the root."""
    return {
        str(path.relative_to(root)): path.read_text(encoding="utf-8")
        for path in sorted((root / "src").rglob("*")) if path.suffix in (".cpp", ".h", ".def")
    }


def digest_of(parts):
    digest = hashlib.sha256()
    for part in parts:
        digest.update(part if isinstance(part, bytes) else part.encode())
        digest.update(b"\0")
    return digest.hexdigest()[:16]


class Player:
    """Plays mutants. Of several threads each has a workshop of its own."""

    def __init__(self, root, build, folder):
        self.root, self.folder = root, folder
        self.texts = sources(root)
        self.build = building.Build(build, root)
        self.programs = programs.programs_of(build)
        targets = sorted({program.target for program in self.programs})
        self.tests = digest_of([*((build / target).read_bytes() for target in targets),
                                *(f"{program.name} {sorted(program.labels)}" for program in self.programs)])
        self.mutated = digest_of(name + text for name, text in self.texts.items())
        self.seconds = {}  # that each program takes
        self.probes = {}  # the library of the tests that a program has the bridge's objects in
        self.linked = {}  # the objects of each program that knows sources of the bridge
        self._names = {}
        self._own = threading.local()
        self._workshops = 0
        self._lock = threading.Lock()

    def prepare(self, jobs):
        """Builds the unchanged sources as mutants are built; answers what is wrong with that, if anything."""
        for target in {program.target for program in self.programs}:
            self.linked[target] = self._own_objects(target)
            for word in self.build.link_of(target):
                if word.rsplit("/", 1)[-1] in programs.PROBED:
                    self.probes[target] = word.rsplit("/", 1)[-1]
        # It is the same until a source or a test changes.
        kept = self.folder / "unchanged.json"
        try:
            known = json.loads(kept.read_text(encoding="utf-8"))
        except (OSError, ValueError):
            known = {}
        state = [self.mutated, self.tests, str(self.build.folder)]
        same = known.get("state") == state
        kept.unlink(missing_ok=True)
        self.base = building.Workshop(self.build, self.folder / "unchanged", keeps=same)
        if same:
            self.base.groups, self.seconds = known["groups"], known["seconds"]
            self.base.made = {name: pathlib.Path(made) for name, made in known["made"].items()}
            wrong = []
        else:
            wrong = self._make_unchanged(jobs)
        if not wrong:
            made = {name: str(file) for name, file in self.base.made.items()}
            kept.write_text(json.dumps({"state": state, "groups": self.base.groups, "made": made,
                                        "seconds": self.seconds}), encoding="utf-8")
        return wrong

    def _make_unchanged(self, jobs):
        self.base.change("", "")
        in_threads(jobs, [(self.base.one, name) for name in self.build.objects])
        self.base.find_groups()
        wrong = []
        def check(program):
            outcome = self.run(program, self.base, LEAST_LIMIT * TIMES)
            self.seconds[program.name] = outcome.seconds
            if outcome.failed:
                wrong.append(f"{program.name} fails without a change: {', '.join(outcome.tests)}")
        self.base.library()
        for name in building.PROBES:
            self.base.probe(name)
        in_threads(jobs, [(check, program) for program in self.programs])
        return wrong

    def _own_objects(self, target):
        """The objects that a program is linked with and that are made from sources of the bridge."""
        words = self.build.link_of(target)
        names = [word for word in words if word in self.build.depends]
        if building.CATALOGUE in words and "records_test" in target:
            names += [name for name in self.build.depends if "dtv_catalogue.dir" in name]
        return names

    def still_holds(self, result):
        """Whether a result of earlier tests is one of these tests as well."""
        if result["result"] == "survived":
            return result["state"] == self.tests
        if result["result"] != "killed":
            return True
        names = self.names_of(result["program"])
        return bool(names) and set(result["tests"]) <= names

    def names_of(self, name):
        """The names of a program's tests."""
        if name not in self._names:
            self._names[name] = set()
            for program in self.programs:
                if program.name == name:
                    self._names[name] = programs.tests_of(self.build.folder / program.target)
        return self._names[name]

    def workshop(self):
        if not hasattr(self._own, "workshop"):
            with self._lock:
                self._workshops += 1
                number = self._workshops
            self._own.workshop = building.Workshop(self.build, self.folder / f"job{number}", self.base)
        return self._own.workshop

    def run(self, program, workshop, limit, only="", fail_fast=True):
        """Runs a program against what the workshop has made."""
        environment = {}
        file = self.build.folder / program.target
        mine = workshop.reached(workshop.changed, self.linked.get(program.target, ()))
        library = self.probes.get(program.target)
        if library:
            environment = {programs.PROBED[library]: str(workshop.probe(library)),
                           "LD_LIBRARY_PATH": str(workshop.folder)}
        elif program.mode:
            workshop.library()
            environment = {"DTV_JNI_LIBRARY": str(workshop.folder / "libDtv_jni.so")}
        if mine:
            made = workshop.folder / program.base
            file = made if made in workshop.programs else workshop.program(program.target, mine)
        folder = workshop.folder / "run" / program.name.replace("/", "_")
        folder.mkdir(parents=True, exist_ok=True)
        return programs.run(program, file, environment, folder, limit, only, fail_fast)

    def sees(self, program, file):
        """Whether a program can see a change of the file at all."""
        reached = any(file in self.build.depends.get(name, ()) for name in self.build.objects)
        return reached if program.mode else any(
            file in self.build.depends[name] for name in self.linked.get(program.target, ()))

    def play(self, point, hint=None, thorough=False):
        """One mutant. Answers what is kept of it; thorough: every program is run to its end."""
        began = time.monotonic()
        workshop = self.workshop()
        text = self.texts[point.file]
        workshop.change(point.file, point.applied(text))
        kept = {"name": point.name, "result": "survived", "diff": diff_of(point, text), "state": self.tests}
        try:
            self._build_and_run(point, workshop, kept, hint, thorough)
        except building.Refused as refused:
            kept["result"] = "refused" if refused.by_checks else "no program"
            kept["why"] = first_error(str(refused))
        kept["seconds"] = round(time.monotonic() - began, 2)
        return kept

    def _build_and_run(self, point, workshop, kept, hint, thorough):
        labels = programs.concerned(self.root, point.file)
        ordered = programs.in_order(
            [program for program in self.programs if program.labels & labels and self.sees(program, point.file)],
            point.file)
        if point.file in ROWS:
            workshop.compare_rows()
        if point.operator.startswith("row") and point.file.startswith("src/records/") and point.file.endswith(".h"):
            # A row there is seen by the catalogue alone.
            ordered.sort(key=lambda program: bool(program.mode))
        else:
            # It may be refused, which takes less time than the tests.
            workshop.objects()
            if workshop.is_unchanged(optimized=False):
                kept["result"] = "the same"
                return
        if hint:
            for program in ordered:
                if program.name == hint[0] and self._fails(program, workshop, kept, only=hint[1]):
                    return
        if point.file.startswith("src/events/") and not thorough:
            # The longest program: the tests of the family come first.
            only = programs.first_tests(self.root, point.file)
            if only and self._fails(ordered[0], workshop, kept, only=only):
                return
        for number, program in enumerate(ordered):
            if number == 1 and kept["result"] == "survived" and workshop.is_unchanged(optimized=True):
                kept["result"] = "the same"
                return
            if self._fails(program, workshop, kept, thorough=thorough) and not thorough:
                return

    def _fails(self, program, workshop, kept, only="", thorough=False):
        limit = max(LEAST_LIMIT, TIMES * self.seconds.get(program.name, LEAST_LIMIT))
        try:
            outcome = self.run(program, workshop, limit, only, fail_fast=not thorough)
        except building.Refused as refused:
            # The test itself no longer compiles: it states what the header must have.
            kept |= {"result": "refused", "why": first_error(str(refused))}
            return True
        if not outcome.failed:
            return False
        if kept["result"] != "killed":
            kept |= {"result": "killed", "program": program.name, "mode": program.mode, "how": outcome.how,
                     "tests": list(outcome.tests)}
        kept.setdefault("failed", []).append(f"{program.name} ({outcome.how}): {', '.join(outcome.tests)}")
        return True


def in_threads(jobs, steps):
    """Does the steps, each a function and its argument, with as many threads; the first failure is raised."""
    steps, failures, lock = list(steps), [], threading.Lock()
    def work():
        while True:
            with lock:
                if not steps or failures:
                    return
                function, argument = steps.pop(0)
            try:
                function(argument)
            except Exception as error:  # pylint: disable=broad-except
                failures.append(error)
    threads = [threading.Thread(target=work) for _ in range(jobs)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failures:
        raise failures[0]


def diff_of(point, text):
    """The lines that a mutant changes: those removed with -, those added with +."""
    before, after = text.splitlines(), point.applied(text).splitlines()
    return [line for line in difflib.unified_diff(before, after, n=0, lineterm="")
            if line[:1] in "+-" and line[:3] not in ("---", "+++")]


def first_error(output):
    lines = output.splitlines()
    found = [line for line in lines if "error: " in line] or lines
    return found[0].strip() if found else ""


class Journal:
    """The results of a seed, a line each as they come, so that the rest can follow later.

    With other sources it begins from the start. With other tests, survivors are played again, and what was
    killed by a test that is no longer there."""

    def __init__(self, path, player):
        self.path = path
        self.results, self.hints = {}, {}
        head = {"mutated": player.mutated}
        lines = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
        old = []
        for line in lines:
            try:
                old.append(json.loads(line))
            except ValueError:
                break  # the end of a line that was being written
        same = bool(old) and old[0] == head
        for result in old[1:]:
            if result.get("program") and result.get("tests"):
                self.hints["\n".join(result["diff"])] = (result["program"], ":".join(result["tests"]))
            if same and player.still_holds(result):
                self.results[result["name"]] = result
        path.parent.mkdir(parents=True, exist_ok=True)
        new = path.with_name(path.name + ".new")
        kept = [json.dumps(result) + "\n" for result in self.results.values()]
        new.write_text(json.dumps(head) + "\n" + "".join(kept), encoding="utf-8")
        os.replace(new, path)

    def add(self, result):
        self.results[result["name"]] = result
        with open(self.path, "a", encoding="utf-8") as file:
            file.write(json.dumps(result) + "\n")
