"""Compares the traces of two evenings of the same seed, from builds for two architectures.

usage: same_trace.py TRACE OTHER

They are to be the same line for line, but for processes, threads and addresses.
"""
import pathlib
import sys

from trace_lines import same_everywhere


def main(first, second):
    traces = [same_everywhere(pathlib.Path(name).read_bytes().decode("utf-8", "surrogateescape"))
              .split("\n") for name in (first, second)]
    for number, (here, there) in enumerate(zip(*traces), 1):
        if here != there:
            print(f"line {number} differs:\n  {first}: {here!r}\n  {second}: {there!r}")
            return 1
    lengths = [len(trace) - 1 for trace in traces]
    if lengths[0] != lengths[1] or lengths[0] < 5000:
        print(f"{first} has {lengths[0]} lines, {second} has {lengths[1]}; "
              "an evening has more than 5000")
        return 1
    print(f"the same trace of {lengths[0]} lines")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
