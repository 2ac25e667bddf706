"""Random scripts for the simulated service, in the format of docs/scripts.md."""

import dataclasses
import re
import subprocess

# Delays in milliseconds: those that the evening has to accept, and those that it has to report. What
# lies between depends on what the service does besides.
SHORT = (1, 700)
LONG = (1500, 150_000)
EVENING = 60_000


@dataclasses.dataclass(frozen=True)
class Message:
    name: str
    size: int


class Messages:
    """The names of the messages, as `./run show --list` has them."""

    def __init__(self, build):
        listed = subprocess.run([build / "bin/dtv-show", "--list"], capture_output=True, text=True,
                                check=True).stdout
        rows = re.findall(r"(?m)^0x([0-9a-f]{8}) +(\d+) (\w+)", listed)
        first_event = 0x10000042
        self.commands = [Message(name, int(size)) for number, size, name in rows
                         if int(number, 16) < first_event]
        self.events = [Message(name, int(size)) for number, size, name in rows
                       if int(number, 16) >= first_event]


def has_no_reply(command):
    """Whether no event replies to the command: the answers to the browser, and the keys."""
    return command == "BMLKeyEventNotify" or (command.startswith("BML") and command.endswith("Reply"))


class Writer:
    """Writes one script after another from one sequence of random numbers."""

    def __init__(self, messages, random):
        self.messages = messages
        self.random = random
        self.kinds = [self.delay, self.refusal, self.failing_send, self.silence, self.corrupt_record,
                      self.lost_event, self.duplicate, self.unexpected_event]

    def script(self):
        script = {"version": 1, "commands": [], "events": [], "records": []}
        for _ in range(self.random.randint(1, 6)):
            key, rule = self.random.choice(self.kinds)()
            script[key].append(rule)
        if self.random.random() < 0.08:
            script["stop"] = self.stop()
        return script

    def command(self):
        return self.random.choice(self.messages.commands).name

    def event(self):
        return self.random.choice(self.messages.events)

    def some(self, rule):
        """The rule, for all messages or for one of the first."""
        if self.random.random() < 0.6:
            rule["nth"] = self.random.choice((1, 1, 1, 2, 2, 3, 5))
        return rule

    def hexadecimal(self, most):
        return self.random.randbytes(self.random.randint(1, most)).hex()

    def delay(self):
        command = self.command()
        while has_no_reply(command):
            command = self.command()
        limits = SHORT if self.random.random() < 0.3 else LONG
        return "commands", self.some({"command": command, "delay_ms": self.random.randint(*limits)})

    def refusal(self):
        command = self.command()
        if has_no_reply(command):
            return self.failing_send()
        if command == "BMLStartTvLinkReq":
            result = self.random.choice((1, 5, 7, 255))
        else:
            result = self.random.choice((0, 1, 5, -1, 7, 2**31 - 1, -2**31))
        return "commands", self.some({"command": command, "result": result})

    def failing_send(self):
        result = self.random.choice((-1, 1, 5, 2**31 - 1, -2**31))
        return "commands", self.some({"command": self.command(), "send_result": result})

    def silence(self):
        return "commands", self.some({"command": self.command(), "answer": False})

    def corrupt_record(self):
        event = self.event()
        rule = {"event": event.name}
        what = self.random.random()
        if what < 0.4:
            rule["size"] = self.random.choice((0, 1, 2, 7, event.size - 1, event.size + 1,
                                               self.random.randint(0, event.size), 65536))
        if what > 0.3:
            # Lengths and counts are at the beginning of most records.
            most = min(event.size - 1, 12) if self.random.random() < 0.5 else event.size - 1
            rule["bytes"] = {"offset": self.random.randint(0, most), "hex": self.hexadecimal(16)}
        return "records", self.some(rule)

    def lost_event(self):
        return "records", self.some({"event": self.event().name, "drop": True})

    def duplicate(self):
        return "records", self.some({"event": self.event().name,
                                     "copies": self.random.choice((1, 1, 2, 5, 100))})

    def unexpected_event(self):
        rule = {"event": self.event().name}
        if self.random.random() < 0.15:
            rule = {"event": self.random.choice((0, 0x10000041, 0x12345678, 2**32 - 1))}
        if self.random.random() < 0.5:
            rule["bytes"] = {"offset": self.random.randint(0, 12), "hex": self.hexadecimal(32)}
        if self.random.random() < 0.2:
            rule["size"] = self.random.choice((0, 1, 3, 8, 65536))
        if self.random.random() < 0.3:
            return "events", rule | {"at_ms": self.random.randint(0, EVENING)}
        return "events", self.some(rule | {"after": self.command(),
                                           "delay_ms": self.random.choice((0, 3, 40, 2000))})

    def stop(self):
        stop = {"send_result": self.random.choice((0, 0, -1, 5))}
        if self.random.random() < 0.3:
            return stop | {"at_ms": self.random.randint(0, EVENING)}
        return self.some(stop | {"from": self.command()})
