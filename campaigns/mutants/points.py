"""What can be changed in a source: mutation points, each with a name that says where it is."""

import dataclasses
import hashlib
import random
import re

from tokens import split_at_commas, tokens_of

# Each change of a comparison moves its limit, or turns it round.
COMPARISONS = {
    "==": ("!=",), "!=": ("==",),
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
}
LOGIC = {"&&": "||", "||": "&&"}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "<<": ">>", ">>": "<<", "&": "|", "|": "&"}
STEPS = {"++": "--", "--": "++", "+=": "-=", "-=": "+="}
SIGNS = {"int8_t": "uint8_t", "int16_t": "uint16_t", "int32_t": "uint32_t", "uint8_t": "int8_t",
         "uint16_t": "int16_t", "uint32_t": "int32_t"}
WIDTHS = {"int8_t": "int16_t", "int16_t": "int8_t", "int32_t": "int16_t", "uint8_t": "uint16_t",
          "uint16_t": "uint8_t", "uint32_t": "uint16_t", "jint": "jshort", "jlong": "jint"}
# What is no part of the program: it is checked while compiling, and gone after that.
CHECKS = ("static_assert", "DTV_RECORD_SIZE", "DTV_FIELD_AT")
# What a statement that can be deleted does not begin with.
NO_STATEMENT = frozenset(
    "alignas auto break case class const constexpr continue default delete do else enum explicit extern "
    "for friend goto if inline mutable namespace operator private protected public return static "
    "static_assert struct switch template typedef typename union using virtual volatile while".split()
)


@dataclasses.dataclass(frozen=True)
class Point:
    file: str  # from the root
    line: int
    operator: str
    number: int  # among those of the operator in the line, from 1
    start: int
    end: int
    new: str

    @property
    def name(self):
        return f"{self.file}:{self.line}:{self.operator}:{self.number}"

    def applied(self, text):
        return text[:self.start] + self.new + text[self.end:]


class Finder:
    """Finds the points of one source."""

    def __init__(self, file, text):
        self.file, self.text = file, text
        self.tokens = tokens_of(text)
        self.found = []
        self.checked = self._checked()
        self.in_body = self._bodies()

    def add(self, operator, line, start, end, new):
        if self.text[start:end] != new:
            self.found.append((operator, line, start, end, new))

    def replace(self, operator, token, new):
        self.add(operator, token.line, token.start, token.end, new)

    def neighbours(self, index):
        """The tokens before and after one, of the same directive or of none."""
        def of(other):
            if not 0 <= other < len(self.tokens):
                return None
            token = self.tokens[other]
            return token if token.directive_at == self.tokens[index].directive_at else None
        return of(index - 1), of(index + 1)

    def is_spaced(self, token):
        """Whether it is between blanks, as clang-format has an operator of two values."""
        return self.text[token.start - 1:token.start].isspace() and self.text[token.end:token.end + 1].isspace()

    def _checked(self):
        """The numbers of the tokens that are gone when the program runs."""
        inside = set()
        for index, token in enumerate(self.tokens[:-1]):
            opening = self.tokens[index + 1]
            if token.text in CHECKS and opening.text == "(" and opening.partner > 0:
                inside.update(range(index, opening.partner + 1))
        return inside

    def _bodies(self):
        """The numbers of the tokens in the bodies of functions and macros."""
        inside = set()
        for index, token in enumerate(self.tokens):
            if token.text == "{" and token.partner > 0 and index > 0:
                before = self.tokens[index - 1].text
                if before in (")", "const", "noexcept", "else", "do", "override") or index in inside:
                    inside.update(range(index, token.partner + 1))
            if token.directive == "define":
                inside.add(index)
        return inside

    def _is_changeable(self, index):
        token = self.tokens[index]
        if index in self.checked or token.directive not in ("", "define"):
            return False
        before, _ = self.neighbours(index)
        # The name that is defined, "define" itself, and a macro's parameters.
        if token.directive == "define":
            return before is not None and token.text != "define" and before.text != "define"
        return True

    def points(self):
        for index, token in enumerate(self.tokens):
            if not self._is_changeable(index):
                continue
            if token.kind == "number":
                self.constant(token)
            elif token.kind == "string":
                self.letter(index, token)
            elif token.kind == "character":
                self.character(token)
            elif token.kind == "name":
                self.name(index, token)
            else:
                self.operator(index, token)
        self.rows()
        numbers, points = {}, []
        for operator, line, start, end, new in sorted(self.found, key=lambda found: found[2:]):
            number = numbers[operator, line] = numbers.get((operator, line), 0) + 1
            points.append(Point(self.file, line, operator, number, start, end, new))
        return points

    def constant(self, token):
        number = re.fullmatch(r"(0[xX][0-9a-fA-F']+|[0-9']+)([uUlL]*)", token.text)
        if not number:
            return
        digits = number[1].replace("'", "")
        value = int(digits, 16 if digits[:2] in ("0x", "0X") else 10)
        form = "{:#x}{}" if digits[:2] in ("0x", "0X") else "{}{}"
        self.replace("constant+1", token, form.format(value + 1, number[2]))
        if value > 0:
            self.replace("constant-1", token, form.format(value - 1, number[2]))

    def letter(self, index, token):
        before, _ = self.neighbours(index)
        if before is not None and before.text == "extern":
            return
        # Neither escapes nor conversions: the letters that are shown.
        hidden = re.sub(r"\\.|%[-0-9.]*l*[a-z]", lambda match: "\0" * len(match[0]), token.text)
        places = [place for place, letter in enumerate(hidden) if letter.isalnum() or letter in " ,.:=;/|()"]
        if not places:
            return
        digest = hashlib.sha256(f"{self.file}:{token.text}:{token.line}".encode()).digest()
        place = places[digest[0] % len(places)]
        letter = token.text[place]
        other = {"z": "a", "Z": "A", "9": "0"}.get(letter) or (
            chr(ord(letter) + 1) if letter.isalnum() else "_")
        self.replace("letter", token, token.text[:place] + other + token.text[place + 1:])
        self.replace("letter-deleted", token, token.text[:place] + token.text[place + 1:])

    def character(self, token):
        inner = token.text[token.text.index("'") + 1:-1]
        other = {r"\0": r"\1", r"\n": r"\t"}.get(inner) or (chr(ord(inner) + 1) if len(inner) == 1 else "")
        if other and other not in "'\\":
            self.replace("character", token, token.text.replace(inner, other, 1))

    def name(self, index, token):
        before, after = self.neighbours(index)
        if token.text in SIGNS:
            self.replace("sign", token, SIGNS[token.text])
        if token.text in WIDTHS:
            self.replace("width", token, WIDTHS[token.text])
        if token.text in ("true", "false"):
            self.replace("truth", token, "false" if token.text == "true" else "true")
        if token.text in ("if", "while") and after is not None and after.text == "(":
            self.condition(index + 1)
        if index in self.in_body and before is not None and token.text not in NO_STATEMENT:
            self.statement(index, before)
        if after is not None and after.text in "({" and token.text not in ("if", "while", "for", "switch"):
            self.arguments(index + 1)

    def condition(self, opening):
        first, last = opening + 1, self.tokens[opening].partner - 1
        texts = [token.text for token in self.tokens[first:last + 1]]
        if last < first or ";" in texts or texts[0] in ("const", "auto"):
            return
        start, end = self.tokens[first].start, self.tokens[last].end
        if any(text in ("=", "JNIEnv") for text in texts):
            return
        for value in ("true", "false"):
            self.add(f"condition-{value}", self.tokens[opening].line, start, end, value)

    def statement(self, index, before):
        """A statement of a call or of a new value, whole."""
        if before.text not in (";", "{", "}", ")", "else"):
            return
        if before.text == ")" and not self._ends_condition(index - 1):
            return
        end, works = index, False
        while end < len(self.tokens) and self.tokens[end].text != ";":
            token = self.tokens[end]
            if token.directive_at != self.tokens[index].directive_at or token.text in ("{", "}"):
                return
            if end > index and token.kind == "name" and self._declares(end):
                return
            works = works or token.text in ("(", "=", "+=", "-=", "++", "--", "|=")
            end = token.partner + 1 if token.partner > end else end + 1
        if works and end < len(self.tokens):
            start, stop = self.tokens[index].start, self.tokens[end].end
            kept = re.sub(r"[^\n\\]", "", self.text[start:stop])
            self.add("statement-deleted", self.tokens[index].line, start, stop, ";" + kept)

    def _ends_condition(self, closing):
        opening = self.tokens[closing].partner
        return opening > 0 and self.tokens[opening - 1].text in ("if", "while", "for", "constexpr")

    def _declares(self, index):
        """Whether a name follows its type."""
        before = self.tokens[index - 1]
        return before.kind == "name" or before.text in (">", "*", "&") and not self.is_spaced(before)

    def arguments(self, opening):
        if self.tokens[opening].partner < 0:
            return
        arguments = split_at_commas(self.tokens, opening)
        for (first, last), (other, end) in zip(arguments, arguments[1:]):
            one = self.text[self.tokens[first].start:self.tokens[last].end]
            two = self.text[self.tokens[other].start:self.tokens[end].end]
            if self._is_parameter(first, last) or self._is_parameter(other, end):
                continue
            between = self.text[self.tokens[last].end:self.tokens[other].start]
            if "#" in one + two + between or self._sort(first, one) != self._sort(other, two):
                continue
            self.add("swapped", self.tokens[first].line, self.tokens[first].start, self.tokens[end].end,
                     two + between + one)

    def _sort(self, first, text):
        """Arguments of different sorts cannot change places."""
        if self.tokens[first].kind == "string":
            return "text"
        return text if text in ("env", "env_", "__func__", "function", "handler", "*this") else ""

    def _is_parameter(self, first, last):
        return last > first and self.tokens[last].kind == "name" and self._declares(last)

    def operator(self, index, token):
        before, after = self.neighbours(index)
        if before is None or after is None:
            return
        is_value = before.kind in ("name", "number", "character") or before.text in (")", "]")
        if token.text in STEPS:
            self.replace("arithmetic", token, STEPS[token.text])
        elif token.text == "!" and (after.kind == "name" or after.text == "("):
            self.replace("not-deleted", token, "")
        elif token.text == "-" and not is_value and after.kind in ("name", "number"):
            self.replace("minus-deleted", token, "")
        elif not is_value or before.text == "template" or not self.is_spaced(token):
            return
        for new in COMPARISONS.get(token.text, ()):
            self.replace("comparison", token, new)
        if token.text in LOGIC:
            self.replace("logic", token, LOGIC[token.text])
        if token.text in ARITHMETIC:
            self.replace("arithmetic", token, ARITHMETIC[token.text])

    def rows(self):
        """Rows of tables: macros at the beginning of a line. One is deleted, or changes places with the next."""
        rows = []
        for index, token in enumerate(self.tokens[:-1]):
            at_edge = token.start == 0 or self.text[token.start - 1] == "\n"
            opening = self.tokens[index + 1]
            if (at_edge and token.directive_at < 0 and re.fullmatch("[A-Z][A-Z_]+", token.text)
                    and opening.text == "(" and opening.partner > 0):
                last = self.tokens[opening.partner]
                after = self.neighbours(opening.partner)[1]
                rows.append((token, after if after is not None and after.text == ";" else last))
        for first, last in rows:
            kept = re.sub(r"[^\n]", "", self.text[first.start:last.end])
            self.add("row-deleted", first.line, first.start, last.end, kept)
        for (first, last), (other, end) in zip(rows, rows[1:]):
            between = self.text[last.end:other.start]
            if first.text == other.text and between == "\n":
                one, two = self.text[first.start:last.end], self.text[other.start:end.end]
                self.add("rows-swapped", first.line, first.start, end.end, two + between + one)


def points_of(file, text):
    return Finder(file, text).points()


def in_order(points, seed):
    """All points in the order in which a seed takes them: many kinds of changes of many files come first,
    more of the larger groups than of the smaller ones."""
    groups = {}
    for point in points:
        groups.setdefault((point.file, point.operator), []).append(point)
    weighed = []
    for key, group in sorted(groups.items()):
        draw = random.Random(f"{seed}/{key[0]}/{key[1]}")
        draw.shuffle(group)
        for rank, point in enumerate(group):
            weighed.append(((rank + draw.random()) / len(group) ** 0.5, point.name, point))
    return [point for _, _, point in sorted(weighed)]
