"""Output that cannot be written: the program reports it once, also by its exit status."""
import os
import subprocess
import unittest

from desk import DeskTest, command, environment


def closed():
    """Closes standard output in the new process."""
    os.close(1)


class Output(DeskTest):
    def into(self, stdout, name, *arguments, text="", **more):
        run = subprocess.run(command(name, *arguments), env=environment(), input=text,
                             stdout=stdout, stderr=subprocess.PIPE, encoding="utf-8", timeout=300,
                             check=False, **more)
        return run.returncode, run.stderr

    def test_a_full_disk(self):
        for name, *arguments in [("evening",), ("evening", "--quiet"), ("evening", "--json"),
                                 ("shell",)]:
            with self.subTest(name, arguments=arguments), open("/dev/full", "w") as full:
                self.assertEqual((1, "run: standard output: No space left on device\n"),
                                 self.into(full, name, *arguments, text="sessions\n"))

    def test_a_closed_output(self):
        for name, *arguments in [("evening", "--quiet"), ("evening", "--json"), ("shell",)]:
            with self.subTest(name, arguments=arguments):
                self.assertEqual((1, "run: standard output: Bad file descriptor\n"),
                                 self.into(None, name, *arguments, text="sessions\n",
                                           preexec_fn=closed))

    def test_a_failed_start_keeps_its_status(self):
        with open("/dev/full", "w") as full:
            status, errors = self.into(full, "evening", "--live", "0")
        self.assertEqual(2, status)
        self.assertNotIn("standard output", errors)

    def test_a_reader_that_closes_the_pipe_ends_the_shell(self):
        run = subprocess.Popen(command("shell"), env=environment(), stdin=subprocess.PIPE,
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(run.stderr.close)
        self.addCleanup(run.wait)
        self.addCleanup(run.kill)
        run.stdin.write(b"sessions\n")
        run.stdin.flush()
        self.assertEqual(b"    no session is open\n", run.stdout.readline())
        run.stdout.close()
        # More commands than it may read after that, without an end of the input.
        run.stdin.write(b"sessions\n" * 100)
        run.stdin.flush()
        self.assertEqual(1, run.wait(60))
        self.assertEqual(b"run: standard output: Broken pipe\n", run.stderr.read())
        try:
            run.stdin.close()
        except BrokenPipeError:
            pass

    def test_an_input_that_cannot_be_read(self):
        folder = os.open(self.folder, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        run = subprocess.run(command("shell"), env=environment(), stdin=folder,
                             capture_output=True, encoding="utf-8", timeout=60, check=False)
        self.assertEqual((1, "run: standard input: Is a directory\n"),
                         (run.returncode, run.stderr))


if __name__ == "__main__":
    unittest.main()
