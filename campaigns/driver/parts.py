"""The parts of a campaign: what each runs, with which build, and for how long."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Part:
    """One part. It takes --seed, --seconds, --jobs, --repeat and --report: see rounds/run.h."""

    name: str
    title: str
    # What it counts.
    unit: str
    # The build it needs, by its folder below build/; and what of it is built.
    build: str
    target: str
    # What is run, from the build's folder; a script is run by Python.
    command: tuple
    # Its part of the time, beside those of the others.
    share: int
    # Seconds below which it shows nothing, so that it is left out of a campaign that is too short.
    least: int = 1

    @property
    def script(self):
        return self.command[0].endswith(".py")


def program(name):
    return f"campaigns/{name}/campaign_{name}"


PARTS = (
    Part("torture", "every call made to fail", "rounds", "gcc", "campaign_torture",
         (program("torture"),), 20),
    Part("torture-i386", "the same on i386", "rounds", "i386", "campaign_torture",
         (program("torture"),), 20),
    Part("records", "hostile records", "records", "fuzz", "campaign_records",
         (program("records"),), 40),
    Part("arguments", "hostile arguments", "calls", "gcc", "campaign_arguments",
         (program("arguments"),), 10),
    Part("soak", "soak", "round trips", "gcc", "campaign_soak", (program("soak"),), 15),
    Part("soak-thread", "soak, ThreadSanitizer", "round trips", "gcc-thread", "campaign_soak",
         (program("soak"),), 20, least=10),
    Part("endings", "endings of the process", "processes", "gcc", "campaign_endings",
         ("campaigns/endings/endings.py",), 15),
    Part("faults", "faults of the service", "scripts", "gcc", "campaign_faults",
         ("campaigns/faults/faults.py",), 20),
    Part("coverage", "coverage of src/", "lines", "coverage", "all",
         ("campaigns/coverage/coverage.py",), 15, least=240),
    Part("mutants", "mutants of src/", "mutants", "gcc", "all",
         ("campaigns/mutants/mutants.py",), 60, least=600),
)


def chosen(names):
    """The parts of these names, in the order of the table; all when there are none."""
    known = [part.name for part in PARTS]
    for name in names:
        if name not in known:
            raise KeyError(f"--only {name}: it is one of {', '.join(known)}")
    return [part for part in PARTS if not names or part.name in names]
