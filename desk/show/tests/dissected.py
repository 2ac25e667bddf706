"""What tshark shows of a capture with dtv.lua."""
import json
import os
import re
import subprocess
import tempfile


class Item(dict):
    """An object of tshark's, with the keys that it has several times."""

    def __init__(self, pairs):
        super().__init__(pairs)
        self.pairs = pairs


def walk(item):
    """Each field and value of an object of tshark's, in order, with those under them. What is under
    a field with a value has a key of its own."""
    for key, value in item.pairs:
        if isinstance(value, Item):
            if not key.endswith("_tree"):
                yield key, ""
            yield from walk(value)
        else:
            yield key, value


class Message:
    """A packet as tshark shows it."""

    def __init__(self, layers):
        self.fields = list(walk(layers["dtv"])) if isinstance(layers.get("dtv"), Item) else []

    def all(self, name):
        return [value for key, value in self.fields if key == name]

    def one(self, name):
        found = self.all(name)
        if len(found) > 1:
            raise ValueError(f"{name}: {found}")
        return found[0] if found else None

    def has(self, name):
        return any(key == name for key, _ in self.fields)


def environment(home):
    """A program's, in which it finds no settings."""
    return {**os.environ, "HOME": home, "XDG_CONFIG_HOME": home, "LC_ALL": "C.UTF-8"}


def tshark(lua, path, *options, passes=1):
    """What it prints. It has no settings of its own, and Lua no error."""
    with tempfile.TemporaryDirectory() as home:
        done = subprocess.run(["tshark", "-X", f"lua_script:{lua}",
                               *(["-2"] if passes == 2 else []),
                               "-r", str(path), *options], capture_output=True, timeout=500,
                              check=False, env=environment(home))
    errors = done.stderr.decode()
    if done.returncode != 0 or "Lua" in errors or b"Lua Error" in done.stdout:
        raise RuntimeError(f"tshark: {done.returncode} {errors}")
    return done.stdout.decode()


def dissected(lua, path, passes=1):
    document = json.loads(tshark(lua, path, "-T", "json", passes=passes), object_pairs_hook=Item)
    return [Message(packet["_source"]["layers"]) for packet in document]


def record_fields(lua):
    """The types of the fields of the records, by their names as tshark has them."""
    with tempfile.TemporaryDirectory() as home:
        listed = subprocess.run(["tshark", "-G", "fields", "-X", f"lua_script:{lua}"],
                                capture_output=True, timeout=500, check=True,
                                env=environment(home))
    found = {}
    for line in listed.stdout.decode(errors="replace").splitlines():
        words = line.split("\t")
        if words[0] == "F" and re.match(r"dtv\.\w+\.", words[2]):
            found[words[2]] = words[3]
    return found
