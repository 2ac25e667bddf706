"""Runs of the real bridge, and their lines with the times of the service's clock."""
import dataclasses
import json
import os
import pathlib
import re
import subprocess
import time

ROOT = pathlib.Path(__file__).resolve().parents[3]
# For a VM that ends at once: nothing is compiled twice, and the classes of the JDK are shared.
VM = ["-XX:TieredStopAtLevel=1", "-XX:+UseSerialGC", "-Xshare:auto", "-XX:-UsePerfData", "-Xmx128m"]
TABLES = pathlib.Path("/usr/share/dvb/isdb-t")
GUIDE = ROOT / "simulator/data/guide.xml"
LINE = re.compile(r"^,TENRIK,(.{8,}?),(ERROR    |FUNCSTART|FUNCEND  |INFO     |DEBUG    ),(\w+)\(\),")
COPY = re.compile(r"^\w+\( *\d+\):<[^>]{8,}>ERROR     \[\w+\(\): *\d+\] ")


@dataclasses.dataclass
class Line:
    """A line of a log. What has the same number came from the same line of the run."""
    number: int
    time: float  # seconds since the run began
    text: str
    task: str = ""
    level: str = ""  # empty: a line of another program
    function: str = ""

    @property
    def is_bridges(self):
        return self.level != ""


def add_line(lines, seconds, text):
    """Adds what the run wrote next. The texts of a guide are UTF-16, which the trace prints byte by byte: one
    of them may be the end of a line, and what follows is still of the same line of the bridge."""
    match = LINE.match(text)
    before = lines[-1] if lines else None
    if match is not None:
        lines.append(Line(len(lines), seconds, text, match[1], match[2].strip(), match[3]))
    elif before is not None and before.is_bridges and before.function.endswith("_epg_info_notify"):
        lines.append(Line(len(lines), seconds, text, before.task, before.level, before.function))
    else:
        lines.append(Line(len(lines), seconds, text))


class Clock:
    """The service's clock, from the marks among the lines. Lines that come while time passes have the
    time at which it has arrived; each line takes a little time itself."""

    def __init__(self, random):
        self.random = random
        self.now = 0.0  # of the service, in seconds
        self.extra = 0.0  # time in which the service had nothing to do
        self.last = 0.0

    def set(self, mark):
        if mark.startswith("+"):
            self.extra += int(mark[1:]) / 1000
        else:
            self.now = int(mark) / 1000

    def tick(self):
        self.last = max(self.now + self.extra, self.last + self.random.uniform(0.00004, 0.0004))
        return self.last


def read_session(output, random):
    """The lines of a session, in order, with times."""
    clock = Clock(random)
    lines = []
    waiting = None  # the texts that came while time passed
    for text in output.split("\n")[:-1]:
        if text == "\1":
            waiting = []
        elif text.startswith("\1"):
            clock.set(text[1:])
            for held in waiting or []:
                add_line(lines, clock.tick(), held)
            waiting = None
        elif waiting is not None:
            waiting.append(text)
        else:
            add_line(lines, clock.tick(), text)
    return lines


def environment(**more):
    return {**os.environ, "LC_ALL": "C.UTF-8", "DTV_LOG_MASK": "0xffff", **more}


class Runner:
    """Starts runs of a build. `folder` is for their files."""

    def __init__(self, build, folder):
        self.build = pathlib.Path(build).resolve()
        self.folder = folder
        self.faults = self.build / "tests/field/libfield_faults.so"

    def file(self, name, contents):
        path = self.folder / name
        path.write_text(contents, encoding="utf-8")
        return path

    def session(self, name, situation, seed, random):
        """Runs the steps of a situation. Returns the lines, and the file of the capture."""
        steps = self.file(name + ".steps", "\n".join(situation.steps) + "\n")
        script = self.file(name + ".json", json.dumps({"version": 1, **situation.script})) \
            if situation.script else ""
        capture = self.folder / (name + ".pcapng")
        java = situation.java_side
        run = subprocess.run(
            ["java", *VM, "-cp", f"{self.build}/tests/field/field.jar:"
             f"{java or self.build / 'java/dtvserver.jar'}:{self.build}/java/desk.jar", "field.Session",
             self.build / "lib", self.faults, TABLES / situation.city, GUIDE, script, str(seed), steps],
            env=environment(LD_PRELOAD=str(self.faults), DTV_CAPTURE_FILE=str(capture),
                            **situation.environment),
            capture_output=True, timeout=120, check=False)
        output = run.stderr.decode("utf-8", "surrogateescape")
        if run.returncode != 0:
            raise RuntimeError(f"{name}: status {run.returncode}: {output[-2000:]}")
        return read_session(output, random), capture

    def evening(self, name, seed, city, script, *options):
        """An evening in stepped time; its lines have the times at which they were written. A script that is
        not empty ends it early. Returns the lines, and the file of the capture."""
        if script:
            options += ("--script", self.file(name + ".json", json.dumps({"version": 1, **script})))
        read, write = os.pipe()
        capture = self.folder / (name + ".pcapng")
        with subprocess.Popen(
                ["java", *VM, "-cp", f"{self.build}/java/dtvserver.jar:{self.build}/java/desk.jar",
                 "tenrik.desk.Main", "evening", "--libraries", self.build / "lib", "--tables", TABLES,
                 "--guide", GUIDE, "--output", "/dev/null", "--quiet", "--seed", str(seed), "--city",
                 city, *options], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, pass_fds=[write],
                env=environment(DTV_LOG_FILE=f"/dev/fd/{write}", DTV_CAPTURE_FILE=str(capture))) as run:
            os.close(write)
            lines = self.stamped(read)
            errors = run.stderr.read().decode()
        if run.returncode not in ((0, 1) if script else (0,)):
            raise RuntimeError(f"{name}: status {run.returncode}: {errors}")
        return lines, capture

    @staticmethod
    def stamped(descriptor):
        lines = []
        begun = time.monotonic()
        with open(descriptor, "rb") as pipe:
            for text in pipe:
                add_line(lines, time.monotonic() - begun,
                         text.decode("utf-8", "surrogateescape").rstrip("\n"))
        return lines

    def messages(self, capture):
        """What a capture holds, as ./run show --json tells it."""
        shown = subprocess.run([self.build / "bin/dtv-show", "--json", capture], capture_output=True,
                               timeout=60, check=False)
        return json.loads(shown.stdout.decode("utf-8", "replace"))
