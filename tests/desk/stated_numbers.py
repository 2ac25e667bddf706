"""How many natives and callbacks there are: as tests/entry/java_tables.h states it."""
import pathlib
import re

HEADER = pathlib.Path(__file__).resolve().parents[1] / "entry" / "java_tables.h"
STATED = dict(re.findall(r"constexpr int (\w+) = (\d+);", HEADER.read_text(encoding="utf-8")))
NATIVES = int(STATED["nativeCount"])
CALLBACKS = int(STATED["callbackCount"])
