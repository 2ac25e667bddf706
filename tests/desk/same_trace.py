"""Compares the traces of two evenings of the same seed, from builds for two architectures.

usage: same_trace.py [OPTION]... TRACE OTHER

They are to be the same as `./run same` compares them with these options, and those of a whole
evening.
"""
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
EVENING = 5000  # lines; an evening has more


def main(*arguments):
    status = subprocess.run([ROOT / "run", "same", *arguments], check=False).returncode
    if status == 0 and pathlib.Path(arguments[-1]).read_bytes().count(b"\n") < EVENING:
        print(f"an evening has more than {EVENING} lines")
        return 1
    return status


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
