#!/usr/bin/env python3
"""Writes a row for each line that the bridge can write to the trace: what the preprocessor makes of
its sources has the whole formats.

usage: extract_trace_calls.py ROOT FILE COMPILER...

ROOT is the folder of the sources, FILE is what is written; the compiler's words have to preprocess
all sources to standard output. A row is

    TRACE_CALL(level word, function, source file, source line, "message format")

with an empty function for a line that is written on behalf of others.
"""

import pathlib
import re
import subprocess
import sys

PREFIX = '",TENRIK,%-8s,%s,%s(),%4d,"'
STRING = r'"(?:[^"\\]|\\.)*"'
MARKER = re.compile(r'^# (\d+) "([^"]*)"')
LEVEL = re.compile(r"\((?:\w+::)*k(\w+)\)\.mask,\s*$")
WRITER = re.compile(r"\s*,\s*DtvSvCom_GetMyTaskName\(\),\s*\([\w:]+\)\.word,\s*(" + STRING + r"|\w+)")
WORDS = {"Error": "ERROR", "FuncStart": "FUNCSTART", "FuncEnd": "FUNCEND", "Info": "INFO",
         "Debug": "DEBUG"}
# What may stand before parentheses and a brace and is no function.
NO_FUNCTION = {"if", "for", "while", "switch", "catch", "decltype", "alignof", "sizeof"}


def places(preprocessed, root):
    """The lines of the sources themselves, each with its file and number."""
    file, number = None, 0
    for line in preprocessed.splitlines():
        marker = MARKER.match(line)
        if marker:
            path = pathlib.Path(marker.group(2)).absolute()
            file = path.relative_to(root) if path.is_relative_to(root) else None
            number = int(marker.group(1))
            continue
        if file is not None:
            yield str(file), number, line
        number += 1


class Functions:
    """Follows the braces of a source, and knows the function that a place is in."""

    ATTRIBUTE = re.compile(r"__attribute__\s*\(\((?:[^()]|\([^()]*\))*\)\)")
    TOKEN = re.compile(STRING + r"|'(?:[^'\\]|\\.)*'|\w+|\S")

    def __init__(self):
        self.scopes = []  # of each open brace: the name of its function, or None
        self.header = []  # tokens since the last brace or semicolon
        self.parentheses = 0

    def read(self, text):
        for token in self.TOKEN.findall(self.ATTRIBUTE.sub(" ", text)):
            if token == "{" and self.parentheses == 0:
                self.scopes.append(self.name_of(self.header))
                self.header = []
            elif token == "}" and self.parentheses == 0:
                self.scopes.pop()
                self.header = []
            elif token == ";" and self.parentheses == 0:
                self.header = []
            else:
                self.parentheses += (token == "(") - (token == ")")
                self.header.append(token)

    @staticmethod
    def name_of(header):
        if "(" not in header or header[0] in NO_FUNCTION or "=" in header:
            return None
        name = header[header.index("(") - 1]
        return name if re.fullmatch(r"\w+", name) else None

    def current(self):
        return next((name for name in reversed(self.scopes) if name), "")


def calls(preprocessed, root):
    """The trace calls: level word, function, file, line, format."""
    functions, opened = Functions(), None
    # A call may take several lines: they are joined, and its place is that of its first one.
    text, starts = "", []
    for file, number, line in places(preprocessed, root):
        starts.append((len(text), file, number))
        text += line + "\n"
    read = 0
    place = 0
    for found in re.finditer(re.escape(PREFIX) + r"((?:\s*" + STRING + r")*)", text):
        while place + 1 < len(starts) and starts[place + 1][0] <= found.start():
            place += 1
        if opened != starts[place][1]:
            functions, opened = Functions(), starts[place][1]
            read = next(at for at, file, _ in starts if file == opened)
        functions.read(text[read:found.start()])
        read = found.start()
        level = LEVEL.search(text, max(0, found.start() - 80), found.start())
        writer = WRITER.match(text, found.end())
        name = writer.group(1) if writer else ""
        if name == "__func__":
            name = functions.current()
        elif name.startswith('"'):
            name = name[1:-1]
        else:
            name = ""
        message = "".join(part[1:-1] for part in re.findall(STRING, found.group(1)))
        yield (WORDS[level.group(1)] if level else "DEBUG", name, opened, starts[place][2], message)


def main():
    root, target, compiler = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3:]
    preprocessed = subprocess.run(compiler, stdout=subprocess.PIPE, text=True, check=True).stdout
    rows = {}
    for level, function, file, number, message in calls(preprocessed, root):
        rows.setdefault((level, function, message), (file, number))
    if not rows:
        sys.exit(f"{sys.argv[0]}: no trace call was found")
    with open(target, "w", encoding="utf-8") as out:
        for (level, function, message), (file, number) in rows.items():
            print(f'TRACE_CALL({level}, "{function}", "{file}", {number}, "{message}")', file=out)


if __name__ == "__main__":
    main()
