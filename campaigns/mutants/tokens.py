"""The tokens of a C++ source, as far as it takes to find what can be changed in it."""

import dataclasses
import re

TOKEN = re.compile(
    r"""(?P<space>(?:[ \t\f\v]|\\\n)+)
      | (?P<newline>\n)
      | (?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<string>(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*")
      | (?P<character>(?:u8|u|U|L)?'(?:\\.|[^'\\\n])*')
      | (?P<number>\.?[0-9](?:'?[0-9a-zA-Z_.])*)
      | (?P<name>[A-Za-z_][A-Za-z0-9_]*)
      | (?P<operator><<=|>>=|->\*|\.\.\.|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||\+=|-=|\*=|/=|%=|&=
          |\|=|\^=|\#\#|.)""",
    re.VERBOSE | re.DOTALL,
)
OPENING = {"(": ")", "[": "]", "{": "}"}


@dataclasses.dataclass
class Token:
    kind: str
    text: str
    start: int
    line: int
    # The directive that it belongs to, as "define"; empty for the text of the source.
    directive: str = ""
    # Whether it is a number of each of the directives: two directives never share one.
    directive_at: int = -1
    # The number of the token that ends what this one opens, or the reverse; -1: there is none.
    partner: int = -1

    @property
    def end(self):
        return self.start + len(self.text)


def tokens_of(text):
    """The tokens without spaces and comments; those of a directive say which directive that is."""
    found = []
    line, at_start, directive, directive_at, is_named = 1, True, "", -1, True
    for match in TOKEN.finditer(text):
        kind, piece = match.lastgroup, match.group()
        if kind == "newline":
            at_start, directive, directive_at = True, "", -1
        elif kind not in ("space", "comment"):
            if at_start and piece == "#" and directive_at < 0:
                directive_at, is_named = match.start(), False
            elif directive_at >= 0 and not is_named:
                directive, is_named = piece, True
                found.append(Token(kind, piece, match.start(), line, directive, directive_at))
            else:
                found.append(Token(kind, piece, match.start(), line, directive, directive_at))
            at_start = False
        line += piece.count("\n")
    pair(found)
    return found


def pair(tokens):
    """Finds for each bracket the other one. Those of a directive are by themselves."""
    stacks = {}
    for index, token in enumerate(tokens):
        stack = stacks.setdefault(token.directive_at, [])
        if token.text in OPENING and token.kind == "operator":
            stack.append(index)
        elif token.text in OPENING.values() and token.kind == "operator":
            if stack and OPENING[tokens[stack[-1]].text] == token.text:
                other = stack.pop()
                token.partner, tokens[other].partner = other, index


def split_at_commas(tokens, opening):
    """The arguments between a bracket and its partner, each as the numbers of its first and last token."""
    arguments, first, index = [], opening + 1, opening + 1
    closing = tokens[opening].partner
    while index < closing:
        if tokens[index].partner > index:
            index = tokens[index].partner
        elif tokens[index].text == ",":
            arguments.append((first, index - 1))
            first = index + 1
        index += 1
    arguments.append((first, closing - 1))
    return [(begin, end) for begin, end in arguments if begin <= end]
