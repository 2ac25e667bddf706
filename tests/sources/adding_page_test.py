"""Applies the example of docs/adding.md to a copy of the sources, builds it, and runs its tests.

usage: adding_page_test.py SOURCES FOLDER

FOLDER takes the copy and its build. Every block of code of the page is applied, in the order of the
page: after a line of a file that exists, or as a new file.
"""
import pathlib
import re
import shutil
import subprocess
import sys

BLOCK = re.compile(
    r"`(?P<file>[\w./-]+)`,\s+(?:after\s+the\s+line\s+that\s+begins\s+with\s+`(?P<anchor>[^`]+)`"
    r"|a\s+new\s+file):\n\n(?P<indent> *)```[\w+]+\n(?P<code>.*?)\n *```\n",
    re.DOTALL)
TESTS = "sleep_timer_test"
LEFT_OUT = shutil.ignore_patterns(".git", "build")


def blocks(page):
    """The blocks of code of the page: file, anchor or None, text."""
    found = []
    for match in BLOCK.finditer(page):
        indent = match["indent"]
        lines = [line[len(indent):] if line.startswith(indent) else line
                 for line in match["code"].split("\n")]
        found.append((match["file"], match["anchor"], "\n".join(lines) + "\n"))
    return found


def apply(tree, file, anchor, text):
    """Inserts a block into the copy. Exits with a message when it does not fit."""
    path = tree / file
    if anchor is None:
        if path.exists():
            raise SystemExit(f"{file} is called a new file, but exists")
        path.write_text(text, encoding="utf-8")
        return
    lines = path.read_text(encoding="utf-8").split("\n")
    places = [number for number, line in enumerate(lines) if line.strip().startswith(anchor)]
    if not places:
        raise SystemExit(f"{file} has no line that begins with {anchor}")
    lines[places[0] + 1:places[0] + 1] = text.rstrip("\n").split("\n")
    path.write_text("\n".join(lines), encoding="utf-8")


def run(*command):
    print("+", *command, flush=True)
    subprocess.run(command, check=True)


def main(sources, folder):
    sources, folder = pathlib.Path(sources), pathlib.Path(folder)
    # As in a clone, so that a compiler cache knows what the example leaves as it is.
    tree = folder / "sources"
    build = tree / "build/gcc"
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(sources, tree, ignore=LEFT_OUT, symlinks=True)
    page = (sources / "docs/adding.md").read_text(encoding="utf-8")
    found = blocks(page)
    fences = len(re.findall(r"^ *```", page, re.MULTILINE))
    if 2 * len(found) != fences:
        raise SystemExit(f"{fences} lines of the page begin or end a block of code, "
                         f"but {len(found)} blocks name their place")
    for block in found:
        apply(tree, *block)
    run("cmake", "--preset", "gcc", "-S", str(tree), "-DDTV_BUILD_DESK=OFF")
    run("cmake", "--build", str(build), "--target", TESTS)
    run("ctest", "--test-dir", str(build), "--output-on-failure", "--no-tests=error",
        "-R", f"^{TESTS}")
    shutil.rmtree(folder)


if __name__ == "__main__":
    main(*sys.argv[1:])
