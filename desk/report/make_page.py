"""Puts the page of a report together, without its data.

usage: make_page.py D3 SCHEMA JAVA OUTPUT

D3 is the library for plots and scales, as one file; SCHEMA is what dtv-schema prints;
JAVA is the folder of the Java side, whose records name their components.
"""
import json
import pathlib
import re
import sys

PAGE = pathlib.Path(__file__).resolve().parent / "page"
# In the order in which they need one another.
SCRIPTS = ("session", "filter", "list", "java", "message", "lanes", "state", "screen", "plots", "findings", "main")


def as_script(text):
    """A text within a script element: nothing in it may end the element."""
    return text.replace("</script", "<\\/script").replace("<!--", "<\\!--")


RECORD = re.compile(r"^public record (\w+)\(([^)]*)\)", re.MULTILINE)


def components_of(folder):
    """The names of the components of each Java record."""
    found = {}
    for path in sorted(pathlib.Path(folder).rglob("*.java")):
        for name, parameters in RECORD.findall(path.read_text(encoding="utf-8")):
            found[name] = [parameter.split()[-1] for parameter in parameters.split(",") if parameter.strip()]
    return found


def schema_of(printed, java):
    schema = json.loads(pathlib.Path(printed).read_text(encoding="utf-8"))
    schema["components"] = components_of(java)
    schema["objects"] = json.loads((PAGE.parent / "java_objects.json").read_text(encoding="utf-8"))
    for made in schema["objects"].values():
        if len(schema["components"].get(made[0], [])) != len(made) - 1:
            sys.exit(f"java_objects.json has not what {made[0]} takes")
    return json.dumps(schema, separators=(",", ":"))


def main(d3, schema, java, output):
    scripts = "\n".join((PAGE / f"{name}.js").read_text(encoding="utf-8") for name in SCRIPTS)
    parts = {
        "@STYLE@": (PAGE / "style.css").read_text(encoding="utf-8"),
        "@SCHEMA@": as_script(schema_of(schema, java)),
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
