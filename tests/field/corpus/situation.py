"""A situation: what a run does, what is wrong in it, and which lines show that."""
import dataclasses
import re


@dataclasses.dataclass
class Situation:
    """`evidence` lists alternatives; each is a list of patterns. A pattern is a regular expression, of
    whose matches the first shows the cause, or a pair: the first match of its second after the first
    match of its first. A cause can be seen in a log that still has a line for each pattern of one
    alternative."""
    cause: str
    subject: str | None
    steps: list
    evidence: list
    script: dict = dataclasses.field(default_factory=dict)
    environment: dict = dataclasses.field(default_factory=dict)
    java_side: object = None
    city: str = "br-sp-SaoPaulo"
    also: tuple = ()  # other names that a first cause may be given


def find(lines, pattern):
    """The number of the line that a pattern means. Raises when there is none."""
    patterns = (pattern,) if isinstance(pattern, str) else pattern
    start = 0
    for part in patterns:
        expression = re.compile(part)
        for index in range(start, len(lines)):
            if expression.search(lines[index].text):
                start = index + 1
                break
        else:
            raise LookupError(f"no line matches {part} of {pattern}")
    return lines[start - 1].number


def evidence_numbers(lines, situation):
    """For each alternative, the numbers of the lines that show the cause. At least one alternative is
    in the log."""
    found = []
    failures = []
    for alternative in situation.evidence:
        try:
            found.append({find(lines, pattern) for pattern in alternative})
        except LookupError as missing:
            failures.append(str(missing))
    if situation.evidence and not found:
        raise LookupError(f"{situation.cause} {situation.subject}: {'; '.join(failures)}")
    return found
