"""Makes the table of the figures, 80 columns wide."""

import statistics

from operations import GROUPS

# Beside which variant the ratio is, and the columns after it: their heading and variant.
FLOOR = {"events": "floor", "commands": "floor-lookups"}
COLUMNS = {
    "events": [("hand", "hand"), ("JNA", "jna"), ("JNR", "jnr"), ("FFM", "ffm")],
    "commands": [
        ("look", "hand-lookups"),
        ("kept", "floor"),
        ("hand", "hand"),
        ("JNAd", "jna-direct"),
        ("JNA", "jna"),
        ("JNR", "jnr"),
        ("FFM", "ffm"),
    ],
    "calls": [
        ("JNI", "jni"),
        ("JNAd", "jna-direct"),
        ("JNA", "jna"),
        ("JNR", "jnr"),
        ("FFM", "ffm"),
    ],
    "threads": [("bridge", "bridge"), ("floor", "floor"), ("hand", "hand")],
}
NAME_WIDTH = 23
LINE = 80


def median(variant):
    return statistics.median(variant["rounds"])


def spread(variant):
    """Half the distance of the quartiles, in percent of the median."""
    lower, _, upper = statistics.quantiles(variant["rounds"], n=4)
    return 50 * (upper - lower) / median(variant)


def cell(operation, variant, width):
    """A median, or a dash for what is not there."""
    found = operation["variants"].get(variant)
    return f"{median(found):{width}.0f}" if found else f"{'-':>{width}}"


def compared_rows(group, operations):
    """The bridge beside its floor, then the others."""
    # The commands have one aim in common, and no column for it.
    width = 6 if group == "events" else 5
    heading = group + (", ns" if group == "events" else ", ns, aim 1.10")
    yield (
        f"{heading:{NAME_WIDTH}}{'bridge':>6}{'+-%':>4}{'floor':>6}{'ratio':>6}"
        + (f"{'aim':>5}" if group == "events" else "")
        + "".join(f"{column:>{width}}" for column, _ in COLUMNS[group])
    )
    for operation in operations:
        variants = operation["variants"]
        bridge = variants["bridge"]
        floor = variants[FLOOR[group]]
        aim = GROUPS[group][operation["name"]]
        yield (
            f"{operation['name']:{NAME_WIDTH}}{median(bridge):6.0f}{spread(bridge):4.0f}"
            f"{median(floor):6.0f}{median(bridge) / median(floor):6.2f}"
            + (f"{f'{aim:.2f}' if aim else '':>5}" if group == "events" else "")
            + "".join(cell(operation, name, width) for _, name in COLUMNS[group])
        )


def plain_rows(group, operations):
    """Columns of figures, one a variant."""
    columns = COLUMNS.get(group) or [(name, name) for name in operations[0]["variants"]]
    widths = [max(8, len(heading) + 2) for heading, _ in columns]
    yield f"{group + ', ' + operations[0]['unit']:{NAME_WIDTH}}" + "".join(
        f"{heading:>{width}}" for (heading, _), width in zip(columns, widths)
    )
    for operation in operations:
        yield f"{operation['name']:{NAME_WIDTH}}" + "".join(
            cell(operation, name, width) for (_, name), width in zip(columns, widths)
        )


def desk_rows(operations):
    """Times a call, and how many a second where time that passes was measured."""
    yield f"{'at the desk':{NAME_WIDTH}}{'filtered':>12}{'written':>12}"
    for operation in operations:
        name, _, clock = operation["name"].partition(", ")
        values = [median(operation["variants"][variant]) for variant in ("filtered", "written")]
        if clock == "wall":
            cells = [f"{1e9 / value:,.0f}/s" for value in values]
            name += "s" if name.endswith("trip") else ""
        else:
            cells = [f"{value:.0f} ns" for value in values]
            name += ", CPU"
        yield f"{name:{NAME_WIDTH}}" + "".join(f"{cell:>12}" for cell in cells)


def missing_rows(operations):
    """Why there is a dash in place of a figure; the file has the whole reason."""
    reasons = {}
    for operation in operations:
        reasons.update(operation["missing"])
    for variant, reason in reasons.items():
        yield f"{variant}: {reason.replace('java.lang.', '')}"[:LINE]


def table(result):
    """The lines of the table."""
    where = result["machine"]
    yield f"{where['date']}, commit {where['commit']}"
    yield f"{where['cpu']}, {where['cores']} cores, Linux {where['kernel']}"
    if where["vm"]:
        yield where["vm"]
    yield f"{where['compiler']}, JNA {where['jna']}, JNR-FFI {where['jnr-ffi']}"
    for group in GROUPS:
        operations = [o for o in result["operations"] if o["group"] == group]
        if not operations:
            continue
        yield ""
        if group in FLOOR:
            yield from compared_rows(group, operations)
        elif group == "desk":
            yield from desk_rows(operations)
        else:
            yield from plain_rows(group, operations)
    missing = list(missing_rows(result["operations"]))
    if missing:
        yield ""
        yield "not there"
        yield from missing
