#!/usr/bin/python3
"""Makes the corpus of hostile records from a folder of inputs: one a line, in hexadecimal.

usage: keep_corpus.py FOLDER

After a campaign the folder build/fuzz/campaigns/records/merged has the inputs that cover the same as
the corpus before and all that was played, as few as libFuzzer finds.
"""

import pathlib
import sys

CORPUS = pathlib.Path(__file__).with_name("corpus.txt")


def main():
    if len(sys.argv) != 2 or not pathlib.Path(sys.argv[1]).is_dir():
        print(__doc__, file=sys.stderr)
        return 2
    inputs = {path.read_bytes() for path in pathlib.Path(sys.argv[1]).iterdir()}
    lines = [data.hex() for data in sorted(inputs, key=lambda data: (len(data), data)) if data]
    if not lines:
        print(f"{sys.argv[1]}: it has no inputs", file=sys.stderr)
        return 1
    CORPUS.write_text("\n".join(lines) + "\n", encoding="ascii")
    print(f"{CORPUS}: {len(lines)} inputs")
    return 0


if __name__ == "__main__":
    sys.exit(main())
