"""Builds the bridge with one source changed: the objects that the change reaches, relinked with the others.

Everything is compiled without optimization, with the other options of the build, and in a copy of src/. The
objects of a header's mutants are made from several sources at once."""

import json
import pathlib
import re
import shlex
import shutil
import subprocess

OBJECTS = "src/CMakeFiles/dtv_jni_objects.dir/"
PROBES = {
    "libbinding_probe.so": "tests/binding/CMakeFiles/binding_probe.dir/probe.cpp.o",
    "libcommand_helpers.so": "tests/commands/CMakeFiles/command_helpers.dir/framework/command_helpers.cpp.o",
}
CATALOGUE = "src/records/libdtv_catalogue.a"
# Seconds for one step of the build; a constant expression can have become one without an end.
LIMIT = 120


class Refused(Exception):
    """The build ends. By its own checks: a static_assert, a warning, the comparison of the rows; or not."""

    def __init__(self, output, by_checks):
        super().__init__(output)
        self.by_checks = by_checks


def output_of(command, folder):
    """What a command of the build prints; ends with Refused when it fails."""
    try:
        done = subprocess.run(
            command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
            errors="replace", shell=isinstance(command, str), timeout=LIMIT, check=False,
        )
    except subprocess.TimeoutExpired:
        raise Refused(f"not done in {LIMIT} s", False) from None
    if done.returncode != 0:
        raise Refused(done.stdout, is_by_checks(done.stdout))
    return done.stdout


def is_by_checks(output):
    """Whether each error is one of a check that the sources or the build's options state. What is no C++ at
    all is reported without the name of a warning."""
    errors = [line for line in output.splitlines() if re.search(r"\berror: ", line)]
    stated = [line for line in errors
              if "static assertion failed" in line or "[-Werror" in line]
    return bool(errors) and bool(stated) and len(stated) == len(errors)


class Build:
    """What is known of a build's folder, read from its ninja file."""

    def __init__(self, folder, root):
        self.folder, self.root = folder, root
        self.commands = {}
        for entry in json.loads((folder / "compile_commands.json").read_text(encoding="utf-8")):
            words = shlex.split(entry["command"])
            self.commands[words[words.index("-o") + 1]] = words
        self.objects = sorted(name for name in self.commands if name.startswith(OBJECTS))
        self.depends = self._depends()
        self.links = {}

    def _depends(self):
        """For each object the sources of the project that it is made from, as paths from the root."""
        depends, current = {}, None
        records = f"{self.folder}/messages/records/"
        for line in output_of(["ninja", "-t", "deps"], self.folder).splitlines():
            if line.startswith("    "):
                path = line.strip().replace(records, f"{self.root}/src/records/")
                if not pathlib.Path(path).is_absolute():
                    path = str((self.folder / path).resolve())
                if current is not None and path.startswith(f"{self.root}/"):
                    current.add(path[len(str(self.root)) + 1:])
            elif ": #deps" in line:
                current = depends.setdefault(line.split(":")[0], set())
        return depends

    def source_of(self, name):
        """The source of an object, from the root."""
        words = self.commands[name]
        return str(pathlib.Path(words[words.index("-c") + 1]).relative_to(self.root))

    def link_of(self, target):
        """The command that links a target, without the shell's words around it."""
        if target not in self.links:
            lines = output_of(["ninja", "-t", "commands", target], self.folder).splitlines()
            line = lines[-1].removeprefix(": && ").removesuffix(" && :")
            self.links[target] = shlex.split(line)
        return self.links[target]


class Workshop:
    """A folder in which mutants are built one after the other. What is not mutated comes from `base`, the
    workshop of the unchanged sources."""

    def __init__(self, build, folder, base=None, keeps=False):
        self.build, self.folder, self.base = build, folder, base
        if not keeps:
            shutil.rmtree(folder, ignore_errors=True)
            (folder / "objects").mkdir(parents=True)
            (folder / "optimized").mkdir()
            shutil.copytree(build.root / "src", folder / "src")
        self.programs = set()  # those that are linked here
        self.made = {}  # objects of the build's names, as they are linked here
        self.changed = ""

    def change(self, file, text):
        """Puts a text in the place of a source's; the change before is undone."""
        if self.changed:
            shutil.copyfile(self.build.root / self.changed, self.folder / self.changed)
        self.made, self.programs, self.changed = {}, set(), file
        for path in (self.folder / "objects").iterdir():
            path.unlink()
        for path in self.folder.glob("*.so"):
            path.unlink()
        if file:
            (self.folder / file).write_text(text, encoding="utf-8")

    def compile(self, words, source, made, level="-O0"):
        """Compiles one source with the options of an object, in place of src/ the copy."""
        options = [word.replace(f"{self.build.root}/src", f"{self.folder}/src")
                   .replace(f"{self.build.folder}/messages", f"{self.folder}/src")
                   for word in words[:words.index("-o")] if not word.endswith("ccache")]
        # A precompiled header is only taken with the options that it was compiled with.
        if not any("cmake_pch" in word for word in options):
            options = [word for word in options if not re.fullmatch(r"-O\w|-g\w*", word)] + [level]
        output_of([*options, "-fno-diagnostics-color", "-o", str(made), "-c", str(source)], self.build.folder)

    def one(self, name):
        """Compiles an object of the build by itself."""
        made = self.folder / "objects" / (re.sub(r"\W", "_", name) + ".o")
        source = self.build.source_of(name)
        copied = self.folder / source
        path = copied if copied.exists() else self.build.root / source
        if "/Unity/" in source:
            path = self.unity(path)
        self.compile(self.build.commands[name], path, made)
        self.made[name] = made

    def unity(self, path):
        """A source of the build that includes others, with the copies in their places."""
        copy = self.folder / "objects" / ("unity_" + re.sub(r"\W", "_", str(path)) + ".cxx")
        text = path.read_text(encoding="utf-8")
        copy.write_text(text.replace(f"{self.build.root}/src/", f"{self.folder}/src/"), encoding="utf-8")
        return copy

    def group(self, names):
        """Compiles several objects as one, which is linked in the place of each."""
        made = self.folder / "objects" / self.group_name(names)
        self.compile(self.build.commands[names[0]], self.together(names), made)
        for name in names:
            self.made[name] = made

    @staticmethod
    def group_name(names):
        return re.sub(r"\W", "_", names[0]) + ("_group.o" if len(names) > 1 else ".o")

    def together(self, names):
        """A source that includes those of several objects."""
        together = self.folder / "objects" / "group.cpp"
        together.write_text("".join(
            f'#include "{self.folder / self.build.source_of(name)}"\n' for name in names), encoding="utf-8")
        return together

    def is_unchanged(self, optimized):
        """Whether the objects that the change reaches are those of the unchanged sources, to the byte: then
        it changes nothing. To be asked when they have been compiled."""
        groups = {}
        for name, made in self.made.items():
            if name.startswith(OBJECTS):
                groups.setdefault(made, []).append(name)
        if not groups:
            return False
        for made, names in groups.items():
            if optimized:
                made, before = self.optimized(names), self.base.optimized(names, self.folder / "objects")
            else:
                before = self.base.folder / "objects" / made.name
            if made.read_bytes() != before.read_bytes():
                return False
        return True

    def optimized(self, names, scratch=None):
        """Compiles objects as one with optimization. Of the unchanged sources it is done once."""
        made = self.folder / "optimized" / self.group_name(names)
        if scratch is None:
            self.compile(self.build.commands[names[0]], self.together(names), made, "-O2")
        elif not made.exists():
            # Several threads may do so.
            source = scratch / "group.cpp"
            source.write_text("".join(
                f'#include "{self.folder / self.build.source_of(name)}"\n' for name in names), encoding="utf-8")
            new = scratch / "unchanged_optimized.o"
            self.compile(self.build.commands[names[0]], source, new, "-O2")
            new.replace(made)
        return made

    def link(self, words, target, replaced):
        """Links a target with some of its inputs replaced."""
        output = words.index("-o")
        words = words[:output] + words[output + 2:]
        words = list(dict.fromkeys(str(replaced.get(word, word)) for word in words))
        if "-fuse-ld=lld" not in words:
            words.append("-fuse-ld=lld")
        # The other libraries are the build's.
        output_of([*words, f"-Wl,-rpath,{self.build.folder}/lib", "-o", str(self.folder / target)],
                  self.build.folder)

    def reached(self, file, names):
        return [name for name in names if file in self.build.depends.get(name, ())]

    def objects(self):
        """Compiles the objects that the changed source reaches, once."""
        names = self.reached(self.changed, self.build.objects)
        if len(names) == 1:
            members = [names]
        else:
            members = [group for group in self.base.groups if set(group) & set(names)] if names else []
        for group in members:
            if group[0] in self.made:
                continue
            if len(group) == 1:
                self.one(group[0])
            else:
                self.group(group)

    def find_groups(self):
        """Which objects can be compiled as one: those of a folder, without those that do not go with them."""
        made = dict(self.made)
        self.groups = []
        folders = {}
        for name in self.build.objects:
            folders.setdefault(pathlib.Path(name).parent, []).append(name)
        for members in folders.values():
            members = list(members)
            while True:
                try:
                    self.group(members)
                    break
                except Refused as refused:
                    odd = self._redefining(members, str(refused))
                    members.remove(odd)
                    self.groups.append([odd])
            self.groups.append(members)
        self.made = made

    def _redefining(self, members, output):
        for line in output.splitlines():
            if ": error: " in line:
                for name in members:
                    if self.build.source_of(name) in line:
                        return name
        raise Refused(output, False)

    def linked_objects(self):
        """What stands for each object of the build."""
        return {name: self.made.get(name) or self.base.made[name] for name in self.build.objects}

    def library(self):
        """Compiles and links the bridge, once."""
        if (self.folder / "libDtv_jni.so").exists():
            return
        if self.base is not None:
            self.objects()
        self.link(self.build.link_of("lib/libDtv_jni.so"), "libDtv_jni.so", self.linked_objects())

    def probe(self, name):
        """Links a library of the tests that has the bridge's objects; answers its file."""
        own = PROBES[name]
        file = self.folder / name
        if not file.exists():
            if self.base is not None:
                self.objects()
            if self.changed in self.build.depends[own]:
                self.one(own)
            target = f"{own.split('/CMakeFiles')[0]}/{name}"
            self.link(self.build.link_of(target), name, self.linked_objects() | self.made)
        return file

    def program(self, target, objects):
        """Links a test program with some of its objects made from the changed sources, and with the
        catalogue of these; answers its file."""
        for name in objects:
            if name not in self.made:
                self.one(name)
        replaced = dict(self.made)
        for name in objects:
            if "dtv_catalogue.dir" in name:
                replaced[CATALOGUE] = self.made[name]
        made = pathlib.Path(target).name
        self.link(self.build.link_of(target), made, replaced)
        self.programs.add(self.folder / made)
        return self.folder / made

    def compare_rows(self):
        """The build's comparison of the rows with the class files."""
        rows = self.folder / "rows.txt"
        source = self.build.root / "tools" / "rows" / "print_rows.cpp"
        output_of(["g++", "-std=c++17", "-E", "-P", f"-I{self.folder}/src", str(source), "-o", str(rows)],
                  self.build.folder)
        classes = self.build.folder / "rows" / "classes"
        jar = self.build.folder / "java" / "dtvserver.jar"
        try:
            output_of(["java", "-Xshare:auto", "-XX:TieredStopAtLevel=1", "-XX:+UseSerialGC", "-cp",
                       str(classes), "rows.CompareRows", str(rows), str(jar)], self.build.folder)
        except Refused as refused:
            raise Refused(str(refused), True) from None
