"""Situations in which an event, the Java side or the load of the bridge is the cause."""
from .command_causes import opened
from .day import Day
from .java_side import NOTICES, REPLIES, SERVICE, VALUES
from .situation import Situation


# Events of a session whose lines hold its handle, with the names of their handlers.
SESSION_EVENTS = [("CapStatusNotify", "cap_status_notify"), ("BmlStatusNotify", "bml_status_notify"),
                  ("PlayErrorNotify", "play_error_notify")]


def handler(name):
    return rf",dtvsv_msgid_lib_{name}\(\)"


def record_size(number, random, _):
    cases = [("ScanNotify", "scan_notify", 3, 132), ("NetworkInfoNotify", "network_info_notify", 60, 124),
             ("ReceiveEpgInfoNotify", "receive_epg_info_notify", 700, 6380),
             ("SelectChannelReply", "select_channel_reply", 2, 16),
             ("ReceiveSensitivityNotify", "receive_sensitivity_notify", 12, 20),
             ("ComponentInfoNotify", "component_info_notify", 9, 16)]
    name, function, short, usual = cases[number % len(cases)]
    size = random.choice([short, usual + random.randrange(1, 9)])
    day = Day(random).open()
    if name == "ScanNotify":
        day.call("StartScan").call("CancelScan")
    day.select().watch(1)
    return Situation("record-size", name, day.steps,
                     [[handler(function) + rf", *\d+,recv_size err!, recv_size = {size}\b"]],
                     {"records": [{"event": name, "size": size}]})


def record_count(number, random, _):
    cases = [("ServiceInfoNotify", "svc_cnt", 9, "service_info_notify", "ERROR svc_cnt is over count"),
             ("NetworkInfoNotify", "network.partialsvc_cnt", 8, "network_info_notify",
              "ERROR partialsvc_cnt is over count"),
             ("ReceiveEpgInfoNotify", "after_prg_infoCnt", 9, "receive_epg_info_notify",
              "ERROR after_prg_infoCnt is over count"),
             ("ScanNotify", "network.partialsvc_cnt", 9, "scan_notify",
              "ERROR partialsvc_cnt is over count")]
    name, field, least, function, line = cases[number % len(cases)]
    day = Day(random).open()
    if name == "ScanNotify":
        day.call("StartScan").call("CancelScan")
    day.select().watch(1)
    return Situation("record-count", name, day.steps, [[handler(function) + r", *\d+," + line]],
                     {"records": [{"event": name, "fields": {field: random.randrange(least, 200)}}]})


def record_text(number, random, _):
    cases = [("ScanNotify", "scan_notify"), ("NetworkInfoNotify", "network_info_notify"),
             ("ServiceInfoNotify", "service_info_notify")]
    name, function = cases[number % len(cases)]
    field = {"ScanNotify": "network.ts_name", "NetworkInfoNotify": "network.ts_name",
             "ServiceInfoNotify": "service[0].name"}[name]
    day = Day(random).step("refuse-text Canal fantasma").open()
    if name == "ScanNotify":
        day.call("StartScan").call("CancelScan")
    day.select().watch(1)
    return Situation("record-text", name, day.steps,
                     [[(rf"FUNCSTART{handler(function)}", r",OrgNewStringUTF\(\), *\d+,Failure, ret is NULL")]],
                     {"records": [{"event": name, "fields": {field: "Canal fantasma"}}]})


def unknown_event(number, random, _):
    event = [0x10000075, 0x100000a0 + random.randrange(80), 0x12345678, 0x1000007a][number % 4]
    day = opened(random)
    if number % 2:
        rule = {"after": "SelectChannel", "nth": 1, "delay_ms": 300}
    else:
        rule = {"at_ms": random.randrange(2000, 6000)}
    return Situation("unknown-event", None, day.watch(2).steps,
                     [[rf"FUNCSTART,recvEventFromServer\(\).*event_id = {event:x},"]],
                     {"events": [{**rule, "event": event, "bytes": {"hex": "0100000000000000"}}]})


def class_missing(number, random, java):
    names = [REPLIES + "BG_EV_DTVSV_SELECT_CHANNEL_REPLY", VALUES + "BG_TS_DTVSVLIB_NETWORK_INFO",
             NOTICES + "BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY", VALUES + "BG_TS_DTVSVLIB_PRG_INFO",
             REPLIES + "BG_EV_DTVSV_CREATE_REPLY", SERVICE + "BGCallBack"]
    name = names[number % len(names)]
    day = Day(random).open().select().watch(2)
    return Situation("class-missing", name.rsplit("/", 1)[1], day.steps,
                     [[rf"setJavaClass, Can't find class : {name}$"]], java_side=java.without(name))


def method_missing(number, random, java):
    callbacks = [("onEvDtvsvSelectChannelReply", "onEvDtvsvSelectChannelRep1y"),
                 ("onEvDtvsvReceiveSensitivityNotify", "onEvDtvsvReceiveSensitivityNotice"),
                 ("onEvDtvsvServiceInfoNotify", "onEvDtvsvServiceInfoNotlfy")]
    constructors = [VALUES + "BG_TS_DTVSVLIB_NETWORK_INFO", REPLIES + "BG_EV_DTVSV_CREATE_REPLY",
                    NOTICES + "BG_EV_DTVSV_SERVICE_INFO_NOTIFY"]
    day = Day(random).open().select().watch(2)
    if number % 2:
        name = constructors[number // 2 % len(constructors)]
        return Situation("method-missing", name.rsplit("/", 1)[1], day.steps,
                         [[r"setJavaMethod, GetMethodID error!.*method_name = <init>"]],
                         java_side=java.longer(name))
    old, new = callbacks[number // 2 % len(callbacks)]
    return Situation("method-missing", old, day.steps,
                     [[rf"setJavaMethod, GetMethodID error!.*method_name = {old},"]],
                     java_side=java.renamed(SERVICE + "BGCallBack", old, new))


def native_missing(number, random, java):
    day = Day(random)
    for _ in range(random.randrange(0, 2)):
        day.step("load").wait(2000)
    evidence = [[r"registerNatives\(\), *\d+,registerNatives, failed for"]]
    if number % 3 == 2:
        return Situation("native-missing", "DtvServerProxy", day.steps, evidence,
                         java_side=java.without(SERVICE + "DtvServerProxy"), also=("load-failed",))
    old, new = [("DtvSvLib_SetTunerLog", "DtvSvLib_SetTunerLoq"),
                ("DtvSvLib_Release_Sync", "DtvSvLib_Release_Wait")][number % 3]
    return Situation("native-missing", "DtvServerProxy", day.steps, evidence,
                     java_side=java.renamed(SERVICE + "DtvServerProxy", old, new), also=("load-failed",))


def load_failed(number, random, _):
    day = Day(random, load=False).wait(random.randrange(300, 2000))
    for _ in range(1 + number % 3):
        day.step("load-old-vm").wait(random.randrange(500, 4000))
    if number % 2:
        # A later attempt succeeds.
        day.step("load").wait(500).open().select()
    return Situation("load-failed", None, day.steps, [[r",JNI_OnLoad\(\), *\d+,GetEnv failed"]])


def callback_threw(number, random, _):
    callback, function, subject = [
        ("onEvDtvsvSelectChannelReply", "select_channel_reply", "SelectChannelReply"),
        ("onEvDtvsvServiceInfoNotify", "service_info_notify", "ServiceInfoNotify"),
        ("onEvDtvsvReceiveSensitivityNotify", "receive_sensitivity_notify", "ReceiveSensitivityNotify"),
    ][number % 3]
    nth = random.randrange(0, 3)
    day = Day(random).step(f"throw {callback} {nth}").open().select().select().watch(1).select()
    return Situation("callback-threw", subject, day.steps,
                     [[(rf"FUNCSTART{handler(function)}", r"java\.lang\.IllegalStateException")]])


def thread_table_full(number, random, _):
    day = Day(random).open().select().watch(3)
    for _ in range(number % 2):
        day.select().watch(2)
    return Situation("thread-table-full", None, day.steps,
                     [[r",recvEventFromServer\(\), *\d+,env is NULL!"], [r",FUNCEND  ,getJNIEnv\(\)"]],
                     environment={"FIELD_THREADS": str(random.randrange(23, 40))})


def attach_failed(number, random, _):
    """The VM takes no further thread. The events of the first thread still arrive."""
    day = Day(random).step("refuse-threads").open().select().watch(2 + number % 3)
    return Situation("attach-failed", None, day.steps,
                     [[r",TENRIK,DtvEvent-\d+ *,ERROR    ,getJNIEnv\(\), *\d+,AttachCurrentThread\(\) error!"]],
                     environment={"FIELD_THREADS": str(random.randrange(2, 5))})


def event_after_release(number, random, _):
    name, function = SESSION_EVENTS[number % len(SESSION_EVENTS)]
    day = opened(random).stop()
    release = ["Release", "Release_Sync"][number % 2]
    day.call(release)
    day.wait(6000)
    # Another session goes on.
    day.session = 2
    day.open().select()
    return Situation("event-after-release", name, day.steps,
                     [[(rf"FUNCSTART,dtvSvLib{release}\(\)", rf"{handler(function)}.*handle = 1\b")]],
                     {"events": [{"after": release, "delay_ms": random.randrange(1500, 5000),
                                  "event": name, "fields": {"handle": 1}}]})


def event_without_session(number, random, _):
    name, function = SESSION_EVENTS[number % len(SESSION_EVENTS)]
    handle = random.randrange(3, 60)
    day = opened(random).watch(1)
    if number % 2:
        rule = {"after": "SelectChannel", "nth": 1, "delay_ms": random.randrange(100, 900)}
    else:
        rule = {"after": "SetFirstComponent", "delay_ms": random.randrange(10, 300)}
    return Situation("event-without-session", name, day.steps,
                     [[rf"{handler(function)}.*handle = {handle}\b"]],
                     {"events": [{**rule, "event": name, "fields": {"handle": handle}}]})


def none(number, random, _):
    """A day on which nothing goes wrong."""
    day = Day(random).open()
    if number % 2:
        day.scan()
    day.select().watch(2 + number % 4).close()
    return Situation("none", None, day.steps, [])


CAUSES = {
    "record-size": record_size, "record-count": record_count, "record-text": record_text,
    "unknown-event": unknown_event, "class-missing": class_missing, "method-missing": method_missing,
    "native-missing": native_missing, "load-failed": load_failed, "callback-threw": callback_threw,
    "thread-table-full": thread_table_full, "attach-failed": attach_failed,
    "event-after-release": event_after_release, "event-without-session": event_without_session,
    "none": none,
}
