"""The file of the figures: for each part its last run, and where it was made."""

import json
import os
import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
FILE = ROOT / "docs" / "testing" / "figures.json"


def read(path):
    """The figures of a file; none when there is no such file."""
    try:
        return json.loads(path.read_text(encoding="utf-8"))
    except FileNotFoundError:
        return {"parts": {}}


def write(path, figures):
    """Puts a whole file in the place of the one before, so that a full disk loses nothing."""
    path.parent.mkdir(parents=True, exist_ok=True)
    made = path.with_name(path.name + ".new")
    made.write_text(json.dumps(figures, indent=1) + "\n", encoding="utf-8")
    os.replace(made, path)


def number(value):
    """A figure as people read it."""
    if isinstance(value, float) and not value.is_integer():
        return f"{value:,.2f}"
    if isinstance(value, (int, float)):
        return f"{int(value):,}"
    return str(value)


def duration(seconds):
    seconds = round(seconds)
    if seconds < 60:
        return f"{seconds} s"
    if seconds < 3600:
        return f"{seconds // 60} min {seconds % 60:02} s"
    return f"{seconds // 3600} h {seconds % 3600 // 60:02} min"
