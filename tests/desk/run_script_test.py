"""The script ./run: what it refuses, what it does when files cannot be written, what remains on the
disk, and builds at the same time."""
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import stat
import subprocess
import time
import unittest

import pexpect

from desk import BUILD, ROOT, DeskTest

LIMIT = 60  # seconds
NOBODY = 65534


class Arguments(DeskTest):
    def run_script(self, *arguments, limit=None, **more):
        """Runs it on the build of these tests; no file grows beyond a limit in bytes."""
        def confine():
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        return subprocess.run([ROOT / "run", "--build", BUILD, *arguments], text=True,
                              stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=LIMIT,
                              preexec_fn=confine, check=False,
                              **{"stdout": subprocess.PIPE, **more})

    def test_invalid_arguments_are_refused_in_one_line(self):
        log = self.folder / "log"
        for arguments, reason in [
                (["--capture", "/dev/full"],
                 "--capture needs a regular file, which /dev/full is not"),
                (["--trace", "/nowhere/x"],
                 "--trace cannot write /nowhere/x: Directory nonexistent"),
                (["--capture", "/nowhere/x"],
                 "--capture cannot write /nowhere/x: Directory nonexistent"),
                (["--trace", self.folder], f"--trace cannot write {self.folder}: Is a directory"),
                (["--trace", log, "--capture", log], f"--trace and --capture name one file: {log}"),
                (["--report", "/dev/full"],
                 "--report needs a regular file, which /dev/full is not"),
                (["--build", self.folder], f"there is no build in {self.folder}")]:
            with self.subTest(arguments):
                run = self.run_script(*arguments)
                self.assertEqual((2, "", f"run: {reason}\n"),
                                 (run.returncode, run.stdout, run.stderr))
        for option in ("--trace", "--capture", "--guide", "--build", "--report"):
            for arguments in ([option], [option + "="]):
                run = self.run_script(*arguments)
                self.assertEqual((2, "", f"run: {option} needs a value\nTry ./run --help\n"),
                                 (run.returncode, run.stdout, run.stderr))

    def test_a_report_of_the_evening(self):
        page, temporary = self.folder / "page.html", self.folder / "temporary"
        temporary.mkdir()
        run = self.run_script("--quiet", "--seed", "20", "--report", page, env={**os.environ, "TMPDIR": str(temporary)})
        self.assertEqual(0, run.returncode, run.stderr)
        self.assertRegex(run.stderr, r"\A\S+page.html: 443 messages, \d+ calls, \d{4} lines, \d+ bytes\n\Z")
        self.assertIn("Everything was answered as it should be.", run.stdout)
        self.assertIn("DTV session", page.read_text(encoding="utf-8"))
        self.assertEqual([], list(temporary.iterdir()))

    def test_a_report_that_cannot_be_written(self):
        run = self.run_script("--quiet", "--report", "/nowhere/page.html")
        self.assertEqual(1, run.returncode)
        self.assertIn("dtv-report: ", run.stderr)
        self.assertIn("/nowhere/page.html", run.stderr)

    def test_a_report_is_of_the_evening(self):
        run = subprocess.run([ROOT / "run", "shell", "--report", "page"], capture_output=True, text=True,
                             stdin=subprocess.DEVNULL, timeout=LIMIT, check=False)
        self.assertEqual((2, "run: --report is of the evening: ./run report FILE\nTry ./run --help\n"),
                         (run.returncode, run.stderr))

    def test_a_trace_on_a_full_disk(self):
        run = self.run_script("--quiet", "--trace", "/dev/full")
        self.assertEqual(1, run.returncode)
        self.assertRegex(run.stderr, r"\A"
                         "libDtv: the log ends, for /dev/full cannot be written: "
                         "No space left on device\n"
                         r"libDtv: /dev/full: No space left on device; kept 0 of \d{4} lines\n\Z")
        self.assertIn("Everything was answered as it should be.", run.stdout)

    def test_files_with_a_size_limit(self):
        trace, capture = self.folder / "trace", self.folder / "capture"
        run = self.run_script("--quiet", "--trace", trace, "--capture", capture, limit=100 * 1024)
        self.assertEqual(1, run.returncode)
        kept = re.search(r"trace: File too large; kept (\d+) of \d{4} lines\n", run.stderr)
        lines = trace.read_bytes().splitlines(keepends=True)
        self.assertTrue(kept, run.stderr)
        # The bridge's copies on standard output are in the file as well, of another layout; the last
        # may be cut.
        logged = [line for line in lines if line.startswith(b",")]
        self.assertEqual(int(kept[1]), len(logged))
        self.assertEqual([], [line for line in [*logged, *lines[:-1]] if not line.endswith(b"\n")])
        kept = re.search(r"capture: .*; kept (\d+) of \d{3} messages\n", run.stderr)
        self.assertTrue(kept, run.stderr)
        shown = subprocess.run([ROOT / "run", "show", "--build", BUILD, capture], text=True,
                               capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual(1, shown.returncode)
        self.assertEqual(f"{kept[1]} messages", shown.stdout.splitlines()[-1])

    def test_complete_files_are_no_failure(self):
        run = self.run_script("--quiet", "--trace", self.folder / "trace", "--capture",
                              self.folder / "capture")
        self.assertEqual((0, ""), (run.returncode, run.stderr))

    def explained(self, log):
        done = subprocess.run([ROOT / "run", "explain", "--build", BUILD, "--json", log],
                              capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual((1, b""), (done.returncode, done.stderr))
        return [(finding["rule"], finding.get("subject"), finding["lines"])
                for finding in json.loads(done.stdout)["findings"]]

    def test_a_redacted_copy_of_an_evening(self):
        capture, copy = self.folder / "capture", self.folder / "copy"
        trace, other = self.folder / "trace", self.folder / "other"
        self.assertEqual(0, self.run_script("--quiet", "--capture", capture, "--trace",
                                            trace).returncode)
        done = subprocess.run([ROOT / "run", "redact", "--build", BUILD, capture, copy], text=True,
                              capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        self.assertRegex(done.stdout, r"/copy: \d{3} messages, \d\d values replaced\n\Z")
        shown = [subprocess.run([ROOT / "run", "show", "--build", BUILD, "--brief", file],
                                capture_output=True, timeout=LIMIT, check=True).stdout
                 for file in (capture, copy)]
        self.assertEqual(shown[0], shown[1])
        secret = "segredo".encode()
        self.assertIn(secret, capture.read_bytes())
        self.assertNotIn(secret, copy.read_bytes())
        done = subprocess.run([ROOT / "run", "replay", "--build", BUILD, copy], text=True,
                              capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        self.assertRegex(done.stdout, r"replay: (\d{3}) of \1 messages, no divergence\n\Z")
        subprocess.run([ROOT / "run", "redact", "--build", BUILD, trace, other], timeout=LIMIT,
                       stdout=subprocess.DEVNULL, check=True)
        self.assertIn(secret, trace.read_bytes())
        self.assertNotIn(secret, other.read_bytes())
        self.assertEqual(self.explained(trace), self.explained(other))
        self.assertGreater(len(self.explained(trace)), 0)

    def test_standard_output_on_a_full_disk(self):
        for option in ("--quiet", "--json"):
            with open("/dev/full", "wb") as full:
                run = self.run_script(option, stdout=full)
            self.assertEqual((1, "run: standard output: No space left on device\n"),
                             (run.returncode, run.stderr))

    def test_standard_output_that_is_closed(self):
        script = f'exec "{ROOT}/run" --build "{BUILD}" --json >&-'
        run = subprocess.run(["sh", "-c", script], stderr=subprocess.PIPE, text=True,
                             timeout=LIMIT, check=False)
        self.assertEqual((1, "run: standard output is closed\n"), (run.returncode, run.stderr))


class Ending(DeskTest):
    """The shell leaves nothing on the disk, however it ends."""

    def start(self):
        temporary = self.folder / "temporary"
        temporary.mkdir(exist_ok=True)
        environ = {**os.environ, "TMPDIR": str(temporary), "TERM": "xterm"}
        shell = pexpect.spawn(str(ROOT / "run"), ["shell", "--build", str(BUILD)], env=environ,
                              encoding="utf-8", timeout=LIMIT, dimensions=(24, 80))
        shell.delaybeforesend = None
        self.addCleanup(shell.close, force=True)
        shell.expect("desk> ")
        self.assertEqual([], list(temporary.iterdir()))
        return shell, temporary

    def test_shows_the_trace(self):
        shell, _ = self.start()
        shell.send("trace dtvSvLibCreate\r")
        shell.expect("desk> ")
        shell.send("create\r")
        shell.expect(r"\| ,TENRIK,.*FUNCSTART,dtvSvLibCreate")
        shell.expect("desk 1> ")
        shell.sendcontrol("d")
        shell.expect(pexpect.EOF)
        shell.close()
        self.assertEqual(0, shell.exitstatus)

    def test_its_memory_is_limited(self):
        shell, _ = self.start()
        flags = subprocess.run(["jcmd", str(shell.pid), "VM.flags"], capture_output=True, text=True,
                               timeout=LIMIT, check=True).stdout
        largest = re.search(r"-XX:MaxHeapSize=(\d+)", flags)
        self.assertTrue(largest, flags)
        self.assertLessEqual(int(largest[1]), 256 * 1024 * 1024)

    def test_ctrl_c_abandons_only_the_line(self):
        shell, _ = self.start()
        shell.send("exi\x03")
        shell.expect("desk> ")
        shell.send("create\r")
        shell.expect("desk 1> ")
        shell.sendcontrol("d")
        shell.expect(pexpect.EOF)
        shell.close()
        self.assertEqual(0, shell.exitstatus)

    def test_signals(self):
        for number in (signal.SIGHUP, signal.SIGTERM, signal.SIGKILL):
            with self.subTest(number):
                shell, temporary = self.start()
                shell.kill(number)
                shell.expect(pexpect.EOF)
                shell.close()
                # The script and the VM are one process, so no process remains.
                self.assertFalse(shell.isalive())
                self.assertEqual([], list(temporary.iterdir()))
                self.assertEqual([], list(pathlib.Path("/tmp").glob(f"hsperfdata_*/{shell.pid}")))

    def test_a_terminal_that_is_closed(self):
        shell, temporary = self.start()
        number = shell.pid
        shell.close(force=False)
        for _ in range(100):
            if not pathlib.Path(f"/proc/{number}").exists():
                break
            time.sleep(0.1)
        self.assertFalse(pathlib.Path(f"/proc/{number}").exists())
        self.assertEqual([], list(temporary.iterdir()))


class Building(DeskTest):
    """With a cmake of the test's own, which takes two seconds and builds a program for `show`."""
    CMAKE = """#!/bin/sh
[ "$1" = --build ] || exit 0
echo begin >>"$CMAKE_RECORD"
sleep 2
mkdir -p "$2/bin"
printf '#!/bin/sh\\necho shown\\n' >"$2/bin/dtv-show"
chmod +x "$2/bin/dtv-show"
echo end >>"$CMAKE_RECORD"
"""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o755)
        self.sources = self.folder / "sources"
        self.sources.mkdir()
        shutil.copy(ROOT / "run", self.sources)
        shutil.copytree(ROOT / "tools", self.sources / "tools")
        programs = self.folder / "programs"
        programs.mkdir()
        (programs / "cmake").write_text(self.CMAKE)
        (programs / "cmake").chmod(0o755)
        self.record = self.folder / "record"
        self.environ = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}",
                        "CMAKE_RECORD": str(self.record)}

    def start(self, **more):
        return subprocess.Popen([self.sources / "run", "show"], env=self.environ, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                cwd=self.folder, **more)

    def test_two_at_once_build_one_after_the_other(self):
        runs = [self.start(), self.start()]
        ended = [(*run.communicate(timeout=LIMIT), run.returncode) for run in runs]
        self.assertEqual([("shown\n", 0)] * 2, [(out, status) for out, _, status in ended])
        self.assertEqual("begin\nend\n" * 2, self.record.read_text())
        self.assertEqual(["", f"run: waiting for another run that builds in {self.sources}"
                          "/build/run\n"], sorted(errors for _, errors, _ in ended))

    def test_a_killed_build_does_not_block_the_next_one(self):
        run = self.start(start_new_session=True)
        while not self.record.exists():
            time.sleep(0.05)
        os.killpg(run.pid, signal.SIGKILL)
        run.communicate(timeout=LIMIT)
        out, errors = self.start().communicate(timeout=LIMIT)
        self.assertEqual(("shown\n", ""), (out, errors))

    def test_a_folder_of_another_user(self):
        folder = self.sources / "build" / "run"
        folder.mkdir(parents=True)
        folder.chmod(stat.S_IRUSR | stat.S_IXUSR | stat.S_IROTH | stat.S_IXOTH)
        self.addCleanup(folder.chmod, 0o755)
        run = self.start(**({"user": NOBODY, "group": NOBODY} if os.getuid() == 0 else {}))
        out, errors = run.communicate(timeout=LIMIT)
        self.assertEqual((2, "", f"run: {folder} cannot be written: Permission denied; "
                          "--build FOLDER uses a build as it is\n"),
                         (run.returncode, out, errors))
        self.assertFalse(self.record.exists())


if __name__ == "__main__":
    unittest.main()
