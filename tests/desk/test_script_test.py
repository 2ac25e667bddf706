"""The arguments of ./test: what it would do with them, and which of them it refuses."""
import pathlib
import subprocess
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILDS = ["gcc", "gcc-sanitized", "gcc-thread", "clang", "clang-sanitized"]
ABIS = ["i386", "armhf"]
FOLDERS = ["src", "java", "platform", "simulator", "sessions", "desk", "tests"]
BENCHMARKS = ["benchmarks"] if (ROOT / "bench").exists() else []


def run(*arguments):
    return subprocess.run([ROOT / "test", *arguments], capture_output=True, text=True, timeout=60,
                          stdin=subprocess.DEVNULL, check=False)


class Arguments(unittest.TestCase):
    def plan(self, *arguments):
        """The stages, each with the commands that it would run."""
        shown = run("--plan", *arguments)
        self.assertEqual((0, ""), (shown.returncode, shown.stderr), arguments)
        stages = {}
        for line in shown.stdout.splitlines():
            if line.startswith("== "):
                commands = stages.setdefault(line[3:], [])
            else:
                commands.append(line.strip())
        return stages

    @staticmethod
    def given_to_ctest(stages):
        """What is given to ctest in each stage, after the number of tests at a time."""
        return {name: command.partition(" --parallel ")[2].partition(" ")[2]
                for name, commands in stages.items() for command in commands
                if command.startswith("ctest ")}

    def test_one_compiler_by_default(self):
        for arguments in ([], ["--only", "gcc"]):
            stages = self.plan(*arguments)
            self.assertEqual(["format", "gcc"], list(stages))
            self.assertEqual(["check_format"], stages["format"])
            self.assertEqual({"gcc": "-LE '^long$'"}, self.given_to_ctest(stages))

    def test_all(self):
        stages = self.plan("--all")
        self.assertEqual(["format", "clang-tidy", *BUILDS, *ABIS, *BENCHMARKS, "campaign"], list(stages))
        self.assertIn("--minutes 3 --seed 1", stages["campaign"][0])
        self.assertEqual(["check_format"], stages["format"])
        self.assertEqual("run_clang_tidy build/lint 2 yes",
                         self.plan("--all", "--jobs", "2")["clang-tidy"][-1])
        self.assertEqual("", self.given_to_ctest(stages)["gcc"])
        self.assertIn("--target concurrent_use_test", stages["gcc-thread"][1])
        self.assertTrue(stages["gcc-thread"][2].startswith("ctest --preset gcc-thread "))
        self.assertTrue(stages["gcc-thread"][2].endswith(" -R '^concurrent_use_test'"))
        self.assertEqual("-L '^emulated$'", self.given_to_ctest(stages)["armhf"])
        for build in BUILDS:
            self.assertEqual(["configure", "cmake", "ctest"],
                             [command.split()[0] for command in stages[build]])
        for abi in ABIS:
            self.assertEqual(f"same_evening {abi}", stages[abi][-1])

    def test_options_are_accepted_in_any_position(self):
        for arguments in (["--only", "gcc", "-R", "sync"], ["-R", "sync", "--only", "gcc"],
                          ["-R", "--only", "gcc", "sync"], ["--only=gcc", "-R", "sync"]):
            with self.subTest(arguments):
                stages = self.plan(*arguments)
                self.assertEqual(["format", "gcc"], list(stages))
                self.assertEqual({"gcc": "-R sync"}, self.given_to_ctest(stages))

    def test_builds_and_architectures_are_collected(self):
        stages = self.plan("-R", "x", "--abi", "armhf", "--only", "clang", "--only", "gcc",
                           "--only", "clang")
        self.assertEqual(["format", "clang", "gcc", "armhf"], list(stages))
        self.assertEqual(["format", "i386"], list(self.plan("--abi=i386")))
        self.assertEqual(["format", "gcc"], list(self.plan("-R", "x")))
        self.assertEqual(["format", "gcc", "gcc-sanitized", "clang", "clang-sanitized", *ABIS],
                         list(self.plan("--all", "-R", "x")))
        self.assertEqual(["format", "gcc-thread", "coverage"],
                         list(self.plan("--only", "gcc-thread", "--only", "coverage")))

    def test_other_arguments_are_passed_to_ctest_unchanged(self):
        stages = self.plan("-R", "two words", "--repeat", "until-fail:3", "--only", "gcc", "-V")
        self.assertEqual("-R 'two words' --repeat until-fail:3 -V", self.given_to_ctest(stages)["gcc"])
        stages = self.plan("--only", "gcc", "--", "--only", "clang", "--help")
        self.assertEqual({"gcc": "--only clang --help"}, self.given_to_ctest(stages))

    def test_an_evening_is_compared_when_all_tests_run(self):
        self.assertNotIn("same_evening armhf", self.plan("--abi", "armhf", "-R", "x")["armhf"])

    def test_the_tests_that_concern_a_source(self):
        for files, labels in [(["src/commands/bml.cpp"], "commands|trace"),
                              (["simulator/tests/desk_client.h", "tools/rows/print_rows.cpp"],
                               "simulator|rows")]:
            arguments = [word for file in files for word in ("--for", ROOT / file)]
            stages = self.plan(*arguments)
            self.assertEqual({"gcc": f"-L '^({labels})$'"}, self.given_to_ctest(stages))
            self.assertEqual(["format", "clang"], list(self.plan("--only", "clang", *arguments)))

    def test_every_source_is_known_to_concern_tests(self):
        files = [str(file.relative_to(ROOT)) for folder in FOLDERS
                 for file in sorted((ROOT / folder).rglob("*.*"))
                 if file.suffix in {".cpp", ".h", ".def", ".java", ".py", ".sh"}]
        self.assertGreater(len(files), 500)
        unknown = subprocess.run(
            ["sh", "-c", '. tools/concerned.sh; for file; do labels_of "$file" >/dev/null || '
             'echo "$file"; done', "sh", *files], cwd=ROOT, capture_output=True, text=True,
            timeout=60, check=True).stdout.split()
        self.assertEqual([], unknown)

    def test_jobs(self):
        for command in self.plan("-R", "x", "--only", "gcc", "--jobs", "7")["gcc"][1:]:
            self.assertIn(" --parallel 7 ", command)

    def test_lint(self):
        stages = self.plan("--lint", "--jobs", "3")
        self.assertEqual(["format", "clang-tidy"], list(stages))
        self.assertEqual("run_clang_tidy build/lint 3 no", stages["clang-tidy"][-1])
        stages = self.plan("--all-files", "--lint", "--jobs", "3")
        self.assertEqual("run_clang_tidy build/lint 3 yes", stages["clang-tidy"][-1])

    def test_lint_checks_headers_through_sources(self):
        def sources_of(*files):
            shown = subprocess.run(["sh", "-eu", "-c", '. tools/lint.sh; sources_of "$@"', "sh",
                                    *files], cwd=ROOT, capture_output=True, text=True, timeout=60,
                                   check=True)
            return shown.stdout.splitlines(), shown.stderr
        self.assertEqual((["desk/show/main.cpp", "desk/show/message.cpp"], ""), sources_of(
            "desk/show/message.h", "desk/show/message.cpp", "desk/show/main.cpp"))
        # Only headers include this one; another of the same name is in another folder.
        found, errors = sources_of("sessions/bytes.h")
        self.assertEqual(("", 1), (errors, len(found)))
        self.assertTrue(found[0].startswith("sessions/"), found)
        self.assertEqual(([], "test: no source includes desk/show/none.h: clang-tidy does not see "
                          "it\n"), sources_of("desk/show/none.h"))

    def test_invalid_arguments_are_refused_in_one_line(self):
        builds = " ".join([*BUILDS, "coverage"])
        for arguments, reason in [
                (["--only", "gc"], f"--only gc: it is one of {builds}"),
                (["-R", "sync", "--only", "gc"], f"--only gc: it is one of {builds}"),
                (["--only", "gcc clang"], f"--only gcc clang: it is one of {builds}"),
                (["--only="], f"--only : it is one of {builds}"),
                (["--abi", "x86"], "--abi x86: it is one of i386 armhf"),
                (["--jobs", "0"], "--jobs 0: it is a number above 0"),
                (["--jobs", "many"], "--jobs many: it is a number above 0"),
                (["--jobs", "-1"], "--jobs -1: it is a number above 0"),
                (["--only"], "--only needs a value"),
                (["-R", "sync", "--abi"], "--abi needs a value"),
                (["--jobs"], "--jobs needs a value"),
                (["--all-files"], "--all-files goes with --lint"),
                (["--lint", "--only", "gcc"],
                 "--lint goes with none of --all, --only, --abi and --for"),
                (["--lint", "--all"], "--lint goes with none of --all, --only, --abi and --for"),
                (["--all", "--abi", "armhf"], "--all goes with none of --only, --abi and --for"),
                (["--for", "nothing"], "--for nothing: there is no such file"),
                (["--for"], "--for needs a value"),
                (["--for", ROOT / "README.md"],
                 f"no test is known to concern {ROOT}/README.md: ./test runs them all"),
                (["--lint", "-R", "x"], "--lint runs no tests: -R has no meaning there")]:
            with self.subTest(arguments):
                shown = run("--plan", *arguments)
                self.assertEqual((2, "", f"test: {reason}\n"),
                                 (shown.returncode, shown.stdout, shown.stderr))

    def test_help(self):
        for option in ("--help", "-h"):
            shown = run("-R", "sync", option)
            self.assertEqual((0, ""), (shown.returncode, shown.stderr))
            self.assertTrue(shown.stdout.startswith("usage: ./test "))


if __name__ == "__main__":
    unittest.main()
