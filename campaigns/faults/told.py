"""Whether an evening that was continued reports what a rule of its script has done."""

from scripts import SHORT, has_no_reply

# What is said of a rule that took effect.
REPORTED = "rules reported as differences"
IN_TIME = "delays below a second, accepted"
WANTED = "results that the evening wants there"
NO_ANSWER = "answers left out that no command waits for"
PASSED_ON = "changed contents, passed on to Java"
EXPLAINED = (IN_TIME, WANTED, NO_ANSWER, PASSED_ON)

# The refusals that the evening provokes: a rule with that result changes nothing.
REFUSALS = {("StartRec", 1), ("TerminatePlay_Sync", 1), ("ReleaseDisplay", 1), ("ControlCap", 1),
            ("SelectChannel", 1), ("StartPlay", 5), ("GetTunerLogStatus", -1)}
# The evening sends this command once when nothing has asked for it, so that it is not taken.
NOT_TAKEN = "BMLMailReply"


def names_event(difference, event):
    """Whether the difference is about this class of events."""
    return event in (difference["event"], difference["expected"])


def names_command(difference, command):
    return command in difference["command"].split()


def is_wanted(rule):
    """Whether a rule of commands answers as the evening may want it."""
    if "result" in rule:
        return rule["result"] == 0 or (rule["command"], rule["result"]) in REFUSALS
    if "send_result" in rule and rule["command"] == NOT_TAKEN:
        return True
    # Java gets 1 from a synchronous command that was not taken, whatever the send returned.
    return rule["command"].endswith("_Sync") and (rule["command"], 1) in REFUSALS


def of_command(rule, message, differences):
    if any(names_command(difference, message) for difference in differences):
        return REPORTED
    if "result" in rule or "send_result" in rule or rule.get("answer") is False:
        if is_wanted(rule):
            return WANTED
        return NO_ANSWER if rule.get("answer") is False and has_no_reply(message) else ""
    return IN_TIME if rule["delay_ms"] <= SHORT[1] else ""


def of_record(rule, message, differences):
    if any(names_event(difference, message) for difference in differences):
        return REPORTED
    # As many came as were caused, so what was changed was passed on.
    return PASSED_ON if not rule.get("drop") and "copies" not in rule else ""


def how(script, count, figures):
    """How a rule that took effect is reported or why it is not; empty when it is missing."""
    differences = figures["differences"]
    if count["rule"] == "stop":
        return REPORTED if differences else ""
    key, index = count["rule"].rstrip("]").split("[")
    rule = script[key][int(index)]
    if key == "commands":
        return of_command(rule, count["message"], differences)
    if key == "records":
        return of_record(rule, count["message"], differences)
    return REPORTED if any(names_event(difference, count["message"])
                           for difference in differences) else ""
