"""What is missing in a log, or wrong with its times. Each function takes the entries and changes them; it
says whether there was a place for the loss."""
import re

from .forms import Entry

LEVELS = {"all": None, "no-debug": {"ERROR", "FUNCSTART", "FUNCEND", "INFO"}, "errors": {"ERROR"},
          "start-end": {"FUNCSTART", "FUNCEND"}, "no-info": {"ERROR", "FUNCSTART", "FUNCEND", "DEBUG"},
          "debug-errors": {"ERROR", "DEBUG"}}
UID = "uid=10045(u0_a45)"
START_OF_EVENT = re.compile(r"FUNCSTART,recvEventFromServer\(\)")
END_OF_EVENT = re.compile(r"FUNCEND  ,recvEventFromServer\(\)")
NATIVE = re.compile(r",TENRIK,(.{8,}?),(FUNCSTART|FUNCEND  ),(dtvSvLib\w+)\(\)")
REPLY = re.compile(r"(dtvsv_msgid_lib_\w+_reply|dtvsv_msgid_lib_common_reply)\(\)")


def blocks(entries, first, last):
    """Places from a line that begins something to the line that ends it, on one thread."""
    open_at = {}
    found = []
    for index, entry in enumerate(entries):
        if first(entry.text):
            open_at[entry.tid] = index
        elif last(entry.text) and entry.tid in open_at:
            found.append((open_at.pop(entry.tid), index))
    return found


def events(entries):
    return blocks(entries, START_OF_EVENT.search, END_OF_EVENT.search)


def commands(entries):
    """Calls of natives that have both their lines."""
    def is_start(text):
        match = NATIVE.search(text)
        return match is not None and match[2] == "FUNCSTART"

    def is_end(text):
        match = NATIVE.search(text)
        return match is not None and match[2] != "FUNCSTART"
    return blocks(entries, is_start, is_end)


def untouched(entries, begin, end, kept):
    return not any(entry.number in kept for entry in entries[begin:end + 1])


def choose(places, entries, kept, random):
    """One of the places that hold no line that has to be kept; None when there is none."""
    free = [place for place in places if untouched(entries, *place, kept)]
    return random.choice(free) if free else None


def cut_lines(entries, random, kept):
    """The first line lacks its beginning, or the last one its end; or both."""
    which = random.choice([(0,), (-1,), (0, -1)])
    for index in which:
        if entries[index].number in kept or not entries[index].text.startswith(",TENRIK,"):
            return False
    for index in which:
        entry = entries[index]
        if index == 0:
            entry.text = entry.text[random.randrange(12, max(13, len(entry.text) - 4)):]
            entry.wrapped = False
        else:
            entry.cut_end = True
        entry.number = None
    return True


def without_end(entries, random, kept):
    place = choose([(end, end) for _, end in events(entries) + commands(entries)], entries, kept, random)
    if place is None:
        return False
    del entries[place[0]]
    return True


def without_begin(entries, random, kept):
    place = choose([(begin, begin) for begin, _ in events(entries) + commands(entries)], entries, kept, random)
    if place is None:
        return False
    del entries[place[0]]
    return True


def delete_block(entries, place):
    """Removes the lines of one thread in a place."""
    begin, end = place
    tid = entries[begin].tid
    entries[begin:end + 1] = [entry for entry in entries[begin:end + 1] if entry.tid != tid]


def without_reply(entries, random, kept):
    """The lines of a reply event are not there. Only where nothing else goes wrong: a reply that never came
    leaves the same lines."""
    if kept:
        return False
    replies = [place for place in events(entries)
               if any(REPLY.search(entry.text) for entry in entries[place[0]:place[1]])]
    place = choose(replies, entries, kept, random)
    if place is None:
        return False
    delete_block(entries, place)
    return True


# Commands that a reply event answers, with the ids of the events.
ANSWERED = {"SelectChannel": "54", "ControlLNA": "65", "GetTunerLogStatus": "67", "SetDisplayAll": "56",
            "ControlScreenDisplay": "5c", "StartRec": "6b", "SetSoundVideoDelay": "60"}


def is_answered(entries, place):
    """Whether a command's reply is in the log, before the next command of its kind."""
    native = NATIVE.search(entries[place[0]].text)[3].removeprefix("dtvSvLib")
    for entry in entries[place[1]:]:
        if f"FUNCSTART,dtvSvLib{native}()" in entry.text:
            return False
        if native in ANSWERED and f"event_id = 100000{ANSWERED[native]}," in entry.text:
            return True
    return False


def without_command(entries, random, kept):
    """The lines of a command that is answered by an event are not there."""
    places = [place for place in commands(entries) if is_answered(entries, place)]
    place = choose(places, entries, kept, random)
    if place is None:
        return False
    delete_block(entries, place)
    return True


def identical(entries, random, _):
    """The log service has taken out lines that say the same as the one before."""
    places = [index for index in range(1, len(entries))
              if entries[index].text == entries[index - 1].text and entries[index].number is not None]
    if not places:
        return False
    place = random.choice(places)
    entry = entries[place]
    entries[place] = Entry(None, entry.time, f"{UID} identical 1 line", "I", "chatty", entry.pid, entry.tid)
    return True


def chatty(entries, random, kept):
    """The log service has taken out a run of lines of one process, and says how many."""
    if random.random() < 0.3 and identical(entries, random, kept):
        return True
    count = random.randrange(3, 40)
    begin = random.randrange(len(entries) // 4, max(len(entries) // 4 + 1, len(entries) - count - 2))
    taken = [entry for entry in entries[begin:begin + count] if entry.tag not in ("System.err",)]
    if len(taken) < 3:
        return False
    first = taken[0]
    for entry in taken:
        entries.remove(entry)
    where = random.choice(["", f" {'DtvEvent-1' if random.random() < 0.5 else 'Binder_2'}"])
    entries.insert(begin, Entry(None, first.time, f"{UID}{where} expire {len(taken)} lines", "I", "chatty",
                                first.pid, first.tid))
    return True


def shift(entries, begin, seconds):
    for entry in entries[begin:]:
        entry.time += seconds


def middle(entries, random):
    return random.randrange(len(entries) // 3, 2 * len(entries) // 3)


def time_jump(entries, random, _):
    """The clock is set: back by minutes or hours, or forth by days."""
    seconds = random.choice([-random.uniform(120, 9000), 86400 * random.randrange(2, 40)])
    shift(entries, middle(entries, random), seconds)
    return True


def gap(entries, random, _):
    """Minutes of which there is no line, in the middle of reception."""
    places = [index for index, entry in enumerate(entries)
              if "dtvsv_msgid_lib_receive_sensitivity_notify" in entry.text and "FUNCEND" in entry.text]
    if len(places) < 4:
        return False
    at = places[len(places) // 2]
    while at < len(entries) and not END_OF_EVENT.search(entries[at].text):
        at += 1
    shift(entries, at + 1, random.uniform(240, 900))
    return True


PLANTED = {"cut-line": cut_lines, "begin-without-end": without_end, "end-without-begin": without_begin,
           "command-without-reply": without_reply, "reply-without-command": without_command,
           "chatty": chatty, "time-jump": time_jump, "gap": gap}
TIMES = {"time-jump", "gap"}


def filtered(entries, levels, level_of):
    """The entries of some levels; those of other programs stay."""
    wanted = LEVELS[levels]
    return entries if wanted is None else [
        entry for entry in entries if level_of.get(entry.number, "") in wanted | {""}]
