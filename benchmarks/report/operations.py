"""The operations that can be measured, and the choice among them."""

# What can be measured: the operations of each group, with what the bridge aims at beside its floor.
GROUPS = {
    "events": {
        "CREATE_REPLY": 1.15,
        "NETWORK_INFO": 1.15,
        "SERVICE_INFO": 1.15,
        "GUIDE": 1.05,
        "MAIL_REQ": None,
    },
    "commands": {
        "SelectChannel": 1.10,
        "ControlDecodeAudio": 1.10,
        "ControlDecodeAudio_Sync": 1.10,
        "SetDisplay_All": 1.10,
        "BMLReadNvramReply": 1.10,
    },
    # Groups that are measured whole.
    "calls": {},
    "threads": {},
    "memory": {},
    "load": {},
    "size": {},
    "desk": {},
}


class Failure(Exception):
    """Something that ends the run, with the status that it ends with."""

    def __init__(self, message, status):
        super().__init__(message)
        self.status = status


def names():
    return [name for group in GROUPS for name in (group, *GROUPS[group])]


def chosen(only):
    """The groups that are wanted in whole or in part, and the operations of those that have some."""
    for name in only:
        if name not in names():
            raise Failure(f"--only {name}: it is one of\n  " + "\n  ".join(names()), 2)
    groups = [
        group
        for group, operations in GROUPS.items()
        if not only or group in only or not operations.keys().isdisjoint(only)
    ]
    operations = [
        operation
        for group in groups
        for operation in GROUPS[group]
        if not only or group in only or operation in only
    ]
    return groups, operations
