"""Evenings of the desk that end at what goes wrong in them. Nothing in them is refused on purpose."""
from .command_causes import log_name, sent
from .event_causes import handler
from .situation import Situation

CITIES = ["br-sp-SaoPaulo", "br-rj-RioDeJaneiro", "br-mg-Luz", "br-df-Brasilia"]


def failed(native, result):
    return Situation("command-failed", native, [], [[
        (rf"FUNCSTART,{log_name(native)}\(\)", rf"result = {result}\b")]],
        {"commands": [{"command": native, "nth": 1, "result": result}]})


def not_taken(native, result):
    return Situation("command-not-taken", native, [], [[sent(native) + str(result)]],
                     {"commands": [{"command": native, "send_result": result}]})


def wrong_size(event, function, size):
    return Situation("record-size", event, [], [[
        handler(function) + rf", *\d+,recv_size err!, recv_size = {size}\b"]],
        {"records": [{"event": event, "size": size}]})


def wrong_count(event, field, function, line):
    return Situation("record-count", event, [], [[handler(function) + r", *\d+," + line]],
                     {"records": [{"event": event, "fields": {field: 120}}]})


def unknown(event, after):
    return Situation("unknown-event", None, [], [[rf"FUNCSTART,recvEventFromServer\(\).*event_id = {event:x},"]],
                     {"events": [{"after": after, "event": event, "delay_ms": 20, "bytes": {"hex": "0100"}}]})


SITUATIONS = [
    lambda: failed("SetCapDisplay", 7), lambda: not_taken("StartRec", -1),
    lambda: wrong_size("TerminateRecReply", "terminate_rec_reply", 5), lambda: unknown(0x10000079, "StartPlay"),
    lambda: failed("ControlLNA", 2), lambda: not_taken("BMLKeyEventNotify", -11),
    lambda: wrong_count("ServiceInfoNotify", "svc_cnt", "service_info_notify", "ERROR svc_cnt is over count"),
    lambda: wrong_size("NetworkInfoNotify", "network_info_notify", 128), lambda: failed("StartPlay", 5),
]


def situation(number):
    """The situation with a number, in one of the cities."""
    made = SITUATIONS[number % len(SITUATIONS)]()
    made.city = CITIES[number % len(CITIES)]
    return made
