#!/usr/bin/python3
"""Processes that end in every way while their threads send commands and receive events."""

import concurrent.futures
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "campaigns" / "driver"))

from script_run import Run  # noqa: E402

# What main ends with where the way lets it choose.
STATUS = 37
# The ways, what endings.Busy is asked for, and the status of the process.
WAYS = {
    "System.exit": ("System.exit", {STATUS}),
    "main-returns": ("main-returns", {0}),
    "Runtime.halt": ("Runtime.halt", {STATUS}),
    "SIGTERM": ("signal", {128 + signal.SIGTERM}),
    # The VM may not have its handler yet.
    "SIGTERM-while-loading": ("signal", {128 + signal.SIGTERM, -signal.SIGTERM}),
    "main-throws": ("main-throws", {1}),
    "thread-throws": ("thread-throws", {STATUS}),
    "service-gone": ("service-gone", {STATUS}),
}
EACH = 100
# Seconds that a process may take: many times what it needs on a busy machine.
LONGEST = 60
# A process that has not become busy by then has failed before the end that is looked at.
LOADING_MILLISECONDS = 700
BUSY_MILLISECONDS = 120

# The lines that a process may print; any other one is a finding.
ALLOWED = [re.compile(pattern) for pattern in (
    r"loading$", r"busy$", r"ending \d+ \d+$",
    # The bridge's copy of an ERROR line: the process ends on a thread that the VM no longer knows.
    r"JNIDtvSvLibListener\( *\d+\):<[^>]*>ERROR     \[getJNIEnv\(\): *\d+\] "
    r"AttachCurrentThread(\(\))? error!( index=\d+)?$",
    r'Exception in thread "main" java.lang.IllegalStateException: thrown out of main$',
    r"\tat endings\.Busy\.",
)]
VM_NOT_STARTED = "Error occurred during initialization of VM"
# What is a finding also within a line of those.
CRASH = re.compile(r"fatal error|SIGSEGV|SIGBUS|SIGABRT|hs_err|double free|corrupt|terminate called"
                   r"|pure virtual|AddressSanitizer|ThreadSanitizer|Assertion", re.IGNORECASE)


class Process:
    """One process, from its start to its end."""

    def __init__(self, build, way, random):
        self.way, self.statuses = WAYS[way]
        self.loading = way == "SIGTERM-while-loading"
        senders, deliverers = random.randint(2, 12), random.randint(1, 20)
        self.moment = random.uniform(0, BUSY_MILLISECONDS)
        self.while_loading = random.uniform(0, LOADING_MILLISECONDS) / 1000
        self.traced = random.random() < 0.3
        self.described = (f"{senders} sending and {deliverers} delivering threads, "
                          + (f"{self.while_loading * 1000:.0f} ms after the start"
                             if self.loading else f"{self.moment:.0f} ms after they were busy"))
        self.command = [
            "java", "-Xmx64m", "-XX:+UseSerialGC", "-XX:TieredStopAtLevel=1", "-XX:-UsePerfData",
            "-cp", ":".join(str(build / jar) for jar in (
                "java/dtvserver.jar", "java/desk.jar", "campaigns/endings/endings.jar")),
            "endings.Busy", str(build / "lib"), "/usr/share/dvb/isdb-t/br-sp-SaoPaulo",
            str(ROOT / "simulator/data/guide.xml"), self.way, str(int(self.moment)),
            str(senders), str(deliverers), str(random.randint(1, 2**31 - 1))]
        self.calls = self.events = 0
        self.before_main = False
        # Seconds from the end that was asked for to the end of the process.
        self.taken = 0.0

    def run(self):
        """What was wrong; empty when nothing was."""
        with tempfile.TemporaryDirectory(prefix="endings-") as folder:
            wrong = self.run_in(pathlib.Path(folder))
            left = [name for name in os.listdir(folder) if name != "output"]
            if left:
                wrong += f"\nleft {', '.join(sorted(left))}"
        return f"{self.described}:{wrong}" if wrong else ""

    def run_in(self, folder):
        environment = os.environ | {"LC_ALL": "C.UTF-8", "DTV_LOG_FILE": "/dev/null"}
        if self.traced:
            environment["DTV_LOG_MASK"] = "0xffff"
        lines = []
        with subprocess.Popen(self.command, cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              encoding="utf-8", errors="replace") as process:
            killed = threading.Timer(LONGEST, process.kill)
            killed.start()
            if self.loading:
                threading.Timer(self.while_loading, self.terminate, [process]).start()
            ended = time.monotonic()
            for line in process.stdout:
                lines.append(line.rstrip("\n"))
                if line == "busy\n" and self.way == "signal" and not self.loading:
                    time.sleep(self.moment / 1000)
                    ended = time.monotonic()
                    self.terminate(process)
                elif line.startswith("ending "):
                    ended = time.monotonic()
            process.wait()
            if not self.loading:
                self.taken = time.monotonic() - ended
            late = not killed.is_alive()
            killed.cancel()
        return self.check(process.returncode, lines, late)

    @staticmethod
    def terminate(process):
        if process.poll() is None:
            process.send_signal(signal.SIGTERM)

    def check(self, status, lines, late):
        self.before_main = self.loading and "loading" not in lines
        # The VM that is ended before it has started itself says so, and nothing of ours is loaded yet.
        if self.before_main and status == 1 and lines and lines[0] == VM_NOT_STARTED and not any(
                map(CRASH.search, lines)):
            return ""
        wrong = ""
        if late:
            wrong += f"\ndid not end within {LONGEST} s"
        elif status not in self.statuses:
            wrong += f"\nended with status {status}"
        if self.way != "signal" and not any(line.startswith("ending ") for line in lines):
            wrong += "\nended before it was to"
        odd = [line for line in lines if not any(allowed.match(line) for allowed in ALLOWED)
               or CRASH.search(line)]
        if odd:
            wrong += "\nprinted\n" + "\n".join("  " + line for line in odd[:40])
        for line in lines:
            if line.startswith("ending "):
                _, calls, events = line.split()
                self.calls, self.events = int(calls), int(events)
        return wrong


def main():
    run = Run("endings")
    counts = dict.fromkeys(WAYS, 0)
    longest = 0.0
    calls = events = before_main = 0
    rounds = ((way, number) for number in range(1, EACH + 1) for way in WAYS)

    def play(way, number):
        name = f"{way}/{number}"
        if not run.wants(name):
            return None
        process = Process(run.build, way, run.random(name))
        return way, name, process, process.run()

    with concurrent.futures.ThreadPoolExecutor(run.jobs) as pool:
        for played in pool.map(lambda one: play(*one), rounds):
            if played is None:
                continue
            way, name, process, wrong = played
            run.played(name, wrong)
            counts[way] += 1
            longest = max(longest, process.taken)
            calls += process.calls
            events += process.events
            before_main += process.before_main
    for way, count in counts.items():
        run.note(way, count)
    run.note("SIGTERM before main began", before_main)
    run.note("longest time to end, s", round(longest, 2))
    run.note("natives called before", calls)
    run.note("events received before", events)
    run.left_out("What a device's own runtime does when a process ends: these are processes of the "
                 "JDK's VM.")
    run.left_out("A VM that ends while delivery threads are attached waits for them: main returns "
                 "and throws after the service was closed.")
    run.end()


if __name__ == "__main__":
    main()
