"""The version that the program shows is that of the build."""
import re
import subprocess
import unittest

from desk import BUILD, ROOT, VM, DeskTest, environment


class Version(DeskTest):
    def test_the_version_is_the_projects(self):
        project = re.search(r"^project\((\S+) VERSION (\S+) ",
                            (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"), re.MULTILINE)
        wanted = " ".join(project.groups()) + "\n"
        for name in "evening", "shell":
            with self.subTest(name):
                run = self.run_desk(name, "--version")
                self.assertEqual((0, wanted, ""), (run.returncode, run.stdout, run.stderr))
        run = subprocess.run(
            ["java", *VM, "-cp", f"{BUILD}/java/desk.jar", "tenrik.desk.Main", "--version"],
            env=environment(), capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((0, wanted, ""), (run.returncode, run.stdout, run.stderr))


if __name__ == "__main__":
    unittest.main()
