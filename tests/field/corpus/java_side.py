"""Java sides of which something is missing: jars beside which the bridge's own does not fit."""
import pathlib
import re
import subprocess
import zipfile

from .runs import ROOT

SERVICE = "tenrik/service/dtvserver/"
VALUES = SERVICE + "type/"
REPLIES = SERVICE + "events/response/"
NOTICES = SERVICE + "events/notify/"
REQUESTS = SERVICE + "events/request/"


class JavaSides:
    """Makes jars from the bridge's own. A class is named as in JNI."""

    def __init__(self, jar, folder):
        self.jar = pathlib.Path(jar)
        self.folder = pathlib.Path(folder)
        self.made = {}

    def without(self, name):
        """The jar without a class."""
        return self.jar_of(f"without-{name}", {name: None})

    def renamed(self, name, old, new):
        """The jar in which a member of a class has another name, of the same length."""
        if len(old) != len(new):
            raise ValueError(f"{old} and {new} have to be of one length")
        with zipfile.ZipFile(self.jar) as jar:
            contents = jar.read(name + ".class")
        # A name in the constant pool: its length in two bytes, then the text.
        length = len(old).to_bytes(2, "big")
        if length + old.encode() not in contents:
            raise ValueError(f"{name} has no {old}")
        changed = contents.replace(length + old.encode(), length + new.encode())
        return self.jar_of(f"renamed-{name}-{old}", {name: changed})

    def longer(self, name):
        """The jar in which the constructor of a record takes one int more."""
        key = f"longer-{name}"
        if key not in self.made:
            source = (ROOT / "java" / (name + ".java")).read_text(encoding="utf-8")
            simple = name.rsplit("/", 1)[1]
            changed, count = re.subn(rf"\brecord {simple}\(", f"record {simple}(int extension, ", source)
            if count != 1:
                raise ValueError(f"{name} is no record")
            folder = self.folder / key.replace("/", ".")
            folder.mkdir()
            (folder / (simple + ".java")).write_text(changed, encoding="utf-8")
            subprocess.run(["javac", "-J-XX:TieredStopAtLevel=1", "--release", "17", "-encoding", "UTF-8",
                            "-cp", self.jar, "-d", folder, folder / (simple + ".java")],
                           check=True, timeout=60)
            self.jar_of(key, {name: (folder / (name + ".class")).read_bytes()})
        return self.made[key]

    def jar_of(self, key, changes):
        """The jar with some classes replaced; None: left out."""
        if key not in self.made:
            path = self.folder / (key.replace("/", ".") + ".jar")
            with zipfile.ZipFile(self.jar) as old, zipfile.ZipFile(path, "w") as new:
                for entry in old.namelist():
                    name = entry.removesuffix(".class")
                    if name not in changes:
                        new.writestr(entry, old.read(entry))
                    elif changes[name] is not None:
                        new.writestr(entry, changes[name])
            self.made[key] = path
        return self.made[key]
