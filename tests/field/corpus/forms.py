"""The forms in which people have a log: the desk's own trace, the text forms of logcat, and what is
around them."""
import datetime
import re


# The members of the listener, which write under its name; everything else writes as the natives do.
LISTENER = {"recvEventFromServer", "DoListenerEvent", "getJNIEnv", "freeJNIEnv", "detachJNIEnv", "CallMethod",
            "setJavaClass", "setJavaMethod", "NewFieldObject", "SetObjectField", "SetIntField",
            "OrgNewString", "OrgNewStringUTF", "convJStringToChar", "convJStringToUTF16"}
FORMS = ["raw", "brief", "tag", "process", "thread", "time", "threadtime", "long"]
TIMED = {"time", "threadtime", "long"}
FOREIGN = [
    ("I", "ActivityManager", 248, "Displayed tenrik.tv/.LiveActivity: +812ms"),
    ("D", "dalvikvm", 1877, "GC_CONCURRENT freed 1204K, 44% free 4211K/7431K, external 1005K/1230K"),
    ("W", "InputManagerService", 248, "Window already focused, ignoring focus gain"),
    ("D", "WifiService", 248, "acquireWifiLockLocked: WifiLock{NetworkLocation type=2}"),
    ("E", "MediaScanner", 933, "Error opening directory '/mnt/sdcard/.private/', skipping: No such file"),
    ("I", "TunerDaemon", 101, "agc=1187, lock=1, ret = -1"),
    ("V", "AlarmManager", 248, "sending alarm PendingIntent{40a3c1e8: null}"),
    ("W", "KeyCharacterMap", 1877, "No keyboard for id 0,,"),
]


class Entry:
    """A line of a log in no form yet. `number` is that of the run's line; None: it has none."""

    def __init__(self, number, time, text, priority, tag, pid, tid, wrapped=True):
        self.number = number
        self.time = time
        self.text = text
        self.priority = priority
        self.tag = tag
        self.pid = pid
        self.tid = tid
        self.wrapped = wrapped  # False: it is written as it is in every form


class Process:
    """Numbers of the process and its threads on the receiver, and the time at which the run began."""

    def __init__(self, lines, random):
        # The bridge writes the number of its process when it is loaded.
        numbers = (re.search(r"JNI_OnLoad\(\), *\d+,pid = (\d+)", line.text) for line in lines)
        self.pid = next(int(number[1]) for number in numbers if number)
        self.tids = {}
        self.begin = datetime.datetime(2012, random.randrange(1, 12), random.randrange(1, 28),
                                       random.randrange(0, 23), random.randrange(0, 59),
                                       random.randrange(0, 59), random.randrange(0, 999999))

    def tid(self, task):
        return self.tids.setdefault(task, self.pid + 1 + 3 * len(self.tids) if self.tids else self.pid)

    def entry(self, line):
        if not line.is_bridges:
            return Entry(line.number, line.time, line.text, "W", "System.err", self.pid, self.pid)
        tag = "JNIDtvSvLibListener" if line.function in LISTENER or line.function.startswith("dtvsv_msgid") \
            else "Dtv_jni"
        return Entry(line.number, line.time, line.text, "E" if line.level == "ERROR" else "W", tag, self.pid,
                     self.tid(line.task))


def with_foreign_lines(entries, random, share):
    """Lines of other programs between those of the log."""
    mixed = []
    for entry in entries:
        if random.random() < share:
            priority, tag, pid, text = random.choice(FOREIGN)
            mixed.append(Entry(None, entry.time, text, priority, tag, pid, pid + random.randrange(0, 9)))
        mixed.append(entry)
    return mixed


def clock(entry, process):
    moment = process.begin + datetime.timedelta(seconds=entry.time)
    return f"{moment:%m-%d %H:%M:%S}.{moment.microsecond // 1000:03}"


def wrap(entry, form, process):
    """The lines of an entry in a form."""
    if not entry.wrapped or form == "raw":
        return [entry.text]
    if form == "brief":
        return [f"{entry.priority}/{entry.tag:<8}({entry.pid:5}): {entry.text}"]
    if form == "tag":
        return [f"{entry.priority}/{entry.tag:<8}: {entry.text}"]
    if form == "process":
        return [f"{entry.priority}({entry.pid:5}) {entry.text}  ({entry.tag})"]
    if form == "thread":
        return [f"{entry.priority}({entry.pid:5}:{entry.tid:5}) {entry.text}"]
    if form == "time":
        return [f"{clock(entry, process)} {entry.priority}/{entry.tag:<8}({entry.pid:5}): {entry.text}"]
    if form == "threadtime":
        return [f"{clock(entry, process)} {entry.pid:5} {entry.tid:5} {entry.priority} {entry.tag:<8}: "
                f"{entry.text}"]
    return [f"[ {clock(entry, process)} {entry.pid:5}:{entry.tid:5} {entry.priority}/{entry.tag:<8} ]",
            entry.text, ""]


def bug_report(process, random):
    """What is before and after the lines of the log in a bug report."""
    head = ["=" * 56, f"== dumpstate: {process.begin:%Y-%m-%d %H:%M:%S}", "=" * 56, "",
            "Build: TV-2.3.7-1138", "Kernel: Linux version 2.6.35.7 (build@tv)", "",
            "------ UPTIME (uptime) ------",
            f"up time: {random.randrange(1, 9)} days, 02:11:31, idle time: 1 days, sleep time: 03:10:02",
            "[uptime: 0.1s elapsed]", "", "------ MEMORY INFO (/proc/meminfo) ------",
            "MemTotal:         391852 kB", "MemFree:           11096 kB", "",
            "------ SYSTEM LOG (logcat -v threadtime -d *:v) ------"]
    tail = ["[logcat: 0.8s elapsed]", "", "------ EVENT LOG (logcat -b events -v threadtime -d *:v) ------",
            f"{process.begin:%m-%d %H:%M:%S}.011   248   260 I battery_level: [78,3914,322]",
            "", "------ VM TRACES JUST NOW (/data/anr/traces.txt) ------",
            "\"main\" prio=5 tid=1 NATIVE", "  at android.os.MessageQueue.nativePollOnce(Native Method)"]
    return head, tail


def render(entries, form, process, random, *, beginning=False, report=False, crlf=False):
    """The bytes of the log, and by the numbers of its lines in the run where they are, from 1."""
    head, tail = bug_report(process, random) if report else ([], [])
    lines = list(head)
    if beginning:
        lines += ["--------- beginning of /dev/log/system", "--------- beginning of main"]
    line_of = {}
    for entry in entries:
        wrapped = wrap(entry, form, process)
        if entry.number is not None:
            # In the long form the text follows the line with the time.
            line_of[entry.number] = len(lines) + (2 if len(wrapped) > 1 else 1)
        lines += wrapped
    end = "\r\n" if crlf else "\n"
    return "".join(line + end for line in lines + tail).encode("utf-8", "surrogateescape"), line_of
