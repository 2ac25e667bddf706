"""The mutants that are known to survive, each with the reason: survivors.txt.

An entry is the file, the lines that go (-) and come (+), and the reason, indented. Line numbers are not
part of it, so that it stays true when the source moves.

    src/events/event.cpp
    -    return a;
    +    return b;
      why nothing differs
"""

import pathlib

FILE = pathlib.Path(__file__).with_name("survivors.txt")


def key_of(file, diff):
    """What an entry is found by."""
    return (file, *(line[0] + line[1:].strip() for line in diff))


def read(path=FILE):
    """The reasons by the keys of the entries. ValueError says what is no entry."""
    reasons, block = {}, []
    for number, line in enumerate([*path.read_text(encoding="utf-8").splitlines(), ""], 1):
        if line.startswith("#"):
            continue
        if line.strip():
            block.append(line)
        elif block:
            diff = [entry for entry in block[1:] if entry[0] in "+-"]
            reason = " ".join(entry.strip() for entry in block[1:] if entry[0] == " ")
            if not diff or not reason or not block[0].startswith("src/"):
                raise ValueError(f"{path}:{number}: an entry is a file, its lines, and a reason")
            reasons[key_of(block[0].strip(), diff)] = reason
            block = []
    return reasons
