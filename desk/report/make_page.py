"""Puts the page of a report together, without its data.

usage: make_page.py D3 SCHEMA OUTPUT

D3 is the library for plots and scales, as one file; SCHEMA is what dtv-schema prints.
"""
import pathlib
import sys

PAGE = pathlib.Path(__file__).resolve().parent / "page"
# In the order in which they need one another.
SCRIPTS = ("session", "filter", "list", "message", "lanes", "state", "screen", "plots", "findings", "main")


def as_script(text):
    """A text within a script element: nothing in it may end the element."""
    return text.replace("</script", "<\\/script").replace("<!--", "<\\!--")


def main(d3, schema, output):
    scripts = "\n".join((PAGE / f"{name}.js").read_text(encoding="utf-8") for name in SCRIPTS)
    parts = {
        "@STYLE@": (PAGE / "style.css").read_text(encoding="utf-8"),
        "@SCHEMA@": as_script(pathlib.Path(schema).read_text(encoding="utf-8")),
        "@D3@": as_script(pathlib.Path(d3).read_text(encoding="utf-8")),
        "@SCRIPT@": as_script('(() => {\n"use strict";\n' + scripts + "})();\n"),
    }
    page = (PAGE / "page.html").read_text(encoding="utf-8")
    for place, text in parts.items():
        if page.count(place) != 1:
            sys.exit(f"page.html has {place} not once")
        before, after = page.split(place)
        page = before + text + after
    pathlib.Path(output).write_text(page, encoding="utf-8")


main(*sys.argv[1:])
