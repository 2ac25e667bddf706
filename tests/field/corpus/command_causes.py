"""Situations in which a command is the cause: refused, not taken, failed or not answered. Each function
gives one situation for each number, from 0; `day` is where the choices come from."""
from .day import CAPTIONS, COMPONENTS, DATA, OFF, ON, VIDEO, Day, broadcast
from .java_side import VALUES
from .situation import Situation

# How a native is called in the log, where that is not "dtvSvLib" and its name.
LOG_NAMES = {"BMLEndTvLink_Sync": "dtvSvLibBMLEndTvLinkReq_Sync",
             "BMLStartTvlinkReply": "dtvSvLibBMLStartTvLinkReply"}


def log_name(native):
    return LOG_NAMES.get(native, "dtvSvLib" + native)


def opened(random):
    """A day up to the place where something goes wrong: something is received."""
    day = Day(random).open()
    if random.random() < 0.5:
        day.scan()
    day.select()
    return day.watch(random.randrange(0, 2))


def refusal(native, line):
    """What shows that an asynchronous native refused an argument: its line, or the result code."""
    name = rf",{log_name(native)}\(\)"
    return [[name + r", *\d+," + line],
            [(rf"FUNCSTART{name}", r"FUNCSTART,getRetCode\(\), *\d+,\(param\)ret = 5")]]


def argument_refused(number, random, _):
    """Symptoms: what the command should have begun is missing, and later commands fail."""
    cases = [
        ("SelectChannel", [broadcast(random.randrange(63, 99))], "physical_channel is too large"),
        ("SelectChannel", [None], "broadcast_info is NULL"),
        ("SetSoundVideoDelay", [random.randrange(101, 500), 20], "video_viltime is too large"),
        ("ControlDecodeAudio", [random.randrange(2, 9)], "onoff too large"),
        ("ChangeCapLang", [random.randrange(9, 40)], "cap_lang is too large"),
        ("ControlDisplayModeReq", [random.randrange(4, 9), 0], "screen_mode is too large"),
        ("ChangeAudioComponent", [random.randrange(9, 99)], "audio_component is too large"),
        ("StartRec", [random.randrange(9, 99)], "medium is too large"),
        ("TerminateRec", [{"save_data": "ON", "title_size": 0, "title_name": "a" * 300}],
         "title_name length = "),
        ("StartPlay", [{"medium": None, "program_number": 1, "resume": "OFF", "interval": 1, "pause": "OFF"}],
         "start_play getEnumValue Error"),
        ("BMLStartTvLinkReq", [1, None], "bml_start_info_obj is NULL"),
    ]
    if number % 4 == 3:
        # A session that is never created: all that follows is sent to session 0, and fails.
        kind, line = random.choice([("Create 7|100", "start_type is too large"),
                                    ("Create 0|1000", "max_delay_time is too large")])
        day = Day(random).step(kind).think()
        day.session = 0
        day.planes().call("SelectChannel", broadcast(32)).call("ControlLNA", 16).call("GetTunerLogStatus")
        return Situation("argument-refused", "Create", day.steps, refusal("Create", line))
    native, arguments, line = cases[number % len(cases)]
    day = opened(random)
    if native == "TerminateRec":
        day.call("StartRec", 0)
    day.call(native, *arguments)
    if native == "StartRec":
        # Nothing is recorded, so its end fails.
        day.call("TerminateRec", {"save_data": "ON", "title_size": 0, "title_name": "Jornal"})
    else:
        day.watch(1)
    return Situation("argument-refused", native, day.steps, refusal(native, line))


def java_field_missing(number, random, java):
    if number % 5 == 4:
        # The commands are sent, but Java gets no result of those that are taken.
        return Situation("java-field-missing", None, opened(random).watch(2).steps,
                         [[r",getRetCode\(\), *\d+,RESULT's field_id is NULL"]],
                         java_side=java.renamed(VALUES + "BG_TE_DTVSVLIB_RESULT", "DTVSVLIB_RESULT_OK",
                                                "DTVSVLIB_RESULT_0K"),
                         also=("result-not-made",))
    cases = [
        ("BROADCAST_INFO", "service_no", "service_nr", "SelectChannel",
         lambda: [{"physical_channel": 32, "service_nr": 0}], "service_no fieldID is NULL"),
        ("BROADCAST_INFO", "physical_channel", "physical_channe1", "StartBroadcastReceiving",
         lambda: [{"physical_channe1": 28, "service_no": 0}], "physical_channel fieldID is NULL"),
        ("TERMINATE_REC_REQ", "title_name", "title_text", "TerminateRec",
         lambda: [{"save_data": "ON", "title_size": 0, "title_text": "Jornal"}],
         "title_name fieldID is NULL"),
        ("START_PLAY", "interval", "distance", "StartPlay",
         lambda: [{"medium": "INTERNAL", "program_number": 1, "resume": "OFF", "distance": 1,
                   "pause": "OFF"}], "interval fieldID is NULL"),
    ]
    name, old, new, native, arguments, line = cases[number % len(cases)]
    day = Day(random).open()
    if name == "BROADCAST_INFO":
        day.call(native, *arguments())
        day.call("GetTunerLogStatus").call(native, *arguments())
    elif native == "TerminateRec":
        day.select().call("StartRec", 0).wait(3000).call(native, *arguments()).call("ControlLNA", 16)
    else:
        day.select().record().stop().call(native, *arguments()).call("PausePlay").call("TerminatePlay")
    return Situation("java-field-missing", native, day.steps, refusal(native, line),
                     java_side=java.renamed(VALUES + "BG_TS_DTVSVLIB_" + name, old, new))


def surface_refused(number, random, _):
    def without(info):
        return {**info, "surface_handle": None}
    cases = [
        ("SetDisplayAll", [without(VIDEO), CAPTIONS, DATA]),
        ("SetCapDisplay", [without(CAPTIONS)]),
        ("SetFirstComponent", [{**COMPONENTS, "video_drawing_info": without(VIDEO)}]),
        ("ControlCap", [1, 1, without(CAPTIONS)]),
        ("SetBMLDisplay", [without(DATA)]),
        ("SetScreenDisplay", [without(VIDEO)]),
    ]
    native, arguments = cases[number % len(cases)]
    day = Day(random).create()
    if native != "SetFirstComponent":
        day.planes()
    if native == "ControlCap":
        day.select()
    day.call(native, *arguments)
    if native == "ControlCap":
        day.call("ChangeCapLang", 1)
    elif native == "SetFirstComponent":
        day.select()
    day.call("ControlScreenDisplay", ON)
    return Situation("surface-refused", native, day.steps, [[
        (rf"FUNCSTART,{log_name(native)}\(\)", r",setSurface\(\), *\d+,surface_object is NULL")]])


def sent(native):
    return rf"FUNCEND  ,{log_name(native)}\(\), *\d+,ret = "


def command_not_taken(number, random, _):
    natives = ["SelectChannel", "StartRec", "ControlLNA", "SetDisplayAll", "Create", "ControlDecodeAudio"]
    native = natives[number % len(natives)]
    result = random.choice([-1, -2, -32, 1, 110])
    script = {"commands": [{"command": native, "send_result": result}]}
    day = Day(random).create()
    if native == "Create":
        day.session = 0
        day.call("SelectChannel", broadcast(24)).call("ControlLNA", 16)
    else:
        day.planes()
        day.call("SetDisplayAll", VIDEO, CAPTIONS, DATA).select().sound().record().signal()
    return Situation("command-not-taken", native, day.steps,
                     [[sent(native) + str(result)]], script)


# 5 is PARAM_NG: the service does not accept the argument.
def also_of(result):
    return ("argument-rejected",) if result == 5 else ()


# Replies whose result is in the log, with what asks for them.
LOGGED_RESULTS = ["ControlLNA", "ControlDecodeAudio", "SetSoundVideoDelay", "ControlScreenDisplay",
                  "ControlCap", "Create", "SetDisplayAll", "GetTunerLogStatus", "StartScan"]


def command_failed(number, random, _):
    result = random.choice([1, 2, 3, 5, 7, -1])
    if number % 5 == 3:
        native = random.choice(["ControlDecodeAudio_Sync", "ControlDecodeScreen_Sync"])
        day = opened(random)
        day.call(native, OFF).call(native, ON).call("GetTunerLogStatus")
        return Situation("command-failed", native, day.steps,
                         [[(rf"FUNCSTART,{log_name(native)}\(\)",
                            rf",{log_name(native)}\(\), *\d+,RECV, reply_data.handle = {result & 0xffff}\b|"
                            rf"com_data->return_value = {result & 0xffffffff}\b|"
                            rf"com_data->return_value = {result}\b")]],
                         {"commands": [{"command": native, "result": result}]}, also=also_of(result))
    if number % 5 == 4:
        # The service refuses by itself: something is asked for that is not there.
        day = opened(random)
        native, arguments = random.choice([
            ("StartPlay", [{"medium": "INTERNAL", "program_number": 77, "resume": "OFF", "interval": 1,
                            "pause": "OFF"}]),
            ("ReleaseDisplay", [2]),
            # The address of a surface that has been released is 0.
            ("SetScreenDisplay", [{**VIDEO, "surface_handle": "0"}])])
        if native == "StartPlay":
            day.stop()
        day.call(native, *arguments)
        if native == "ReleaseDisplay":
            day.call(native, *arguments)
        day.call("GetTunerLogStatus")
        return Situation("command-failed", native, day.steps,
                         [[(rf"FUNCSTART,{log_name(native)}\(\)",
                            r"FUNCSTART,dtvsv_msgid_lib_(common|release_display)_reply", r"result = [^0]")]],
                         also=("command-out-of-place", "argument-rejected"))
    native = LOGGED_RESULTS[number % len(LOGGED_RESULTS)]
    day = Day(random).create()
    if native == "Create":
        day.session = 0
        day.call("SelectChannel", broadcast(16)).call("ControlScreenDisplay", ON)
    else:
        day.planes().call("SetDisplayAll", VIDEO, CAPTIONS, DATA)
        if native == "StartScan":
            day.call("StartScan").call("CancelScan")
        day.select().sound().picture().signal().captions()
    return Situation("command-failed", native, day.steps,
                     [[(rf"FUNCSTART,{log_name(native)}\(\)", rf"result = {result}\b")]],
                     {"commands": [{"command": native, "nth": 1, "result": result}]}, also=also_of(result))


def empty_answer(number, random, _):
    native, message = [("ControlDecodeAudio_Sync", 0x1000003c), ("ControlDecodeScreen_Sync", 0x1000003b),
                       ("Release_Sync", 0x10000038)][number % 3]
    day = opened(random)
    if native == "Release_Sync":
        day.stop().call(native)
        # Java takes it that the session still exists.
        day.call("ControlLNA", 16)
    else:
        day.call(native, OFF).call(native, ON).call("GetTunerLogStatus").close()
    return Situation("empty-answer", native, day.steps,
                     [[rf"FUNCEND  ,{log_name(native)}\(\), *\d+,return DTVSVLIB_RESULT_ABORT_NG"]],
                     environment={"FIELD_EMPTY": f"{message:x}:1"})


def no_reply(number, random, _):
    natives = ["ControlLNA", "SetDisplayAll", "ControlScreenDisplay", "SetTunerLog", "SelectChannel",
               "ControlDecodeAudio", "StartRec", "Create"]
    native = natives[number % len(natives)]
    day = Day(random)
    if native == "Create":
        # The session does not exist: all that follows fails.
        day.session = 0
    day.open().call("SetDisplayAll", VIDEO, CAPTIONS, DATA).select()
    day.signal().picture().sound()
    if native == "StartRec":
        day.call("StartRec", 0)
    day.wait(random.randrange(8000, 20000)).call("GetTunerLogStatus").wait(3000)
    return Situation("no-reply", native, day.steps,
                     [[rf"FUNCSTART,{log_name(native)}\(\)",
                       (rf"FUNCSTART,{log_name(native)}\(\)", r"FUNCSTART,recvEventFromServer\(\)")]],
                     {"commands": [{"command": native, "nth": 1, "answer": False}]})


def slow_reply(number, random, _):
    natives = ["SelectChannel", "ControlLNA", "SetDisplayAll", "GetTunerLogStatus", "ControlScreenDisplay"]
    native = natives[number % len(natives)]
    delay = random.randrange(6000, 25000)
    day = Day(random).open().call("SetDisplayAll", VIDEO, CAPTIONS, DATA).select()
    day.signal().picture()
    day.wait(delay + 5000).sound()
    return Situation("slow-reply", native, day.steps,
                     [[rf"FUNCSTART,{log_name(native)}\(\)",
                       (rf"FUNCSTART,{log_name(native)}\(\)", r"FUNCSTART,recvEventFromServer\(\)")]],
                     {"commands": [{"command": native, "nth": 1, "delay_ms": delay}]})


def service_stopped(number, random, _):
    if number % 4 == 1:
        # Nothing has ever been answered.
        day = Day(random).open().select().signal().picture().sound().wait(12000)
        return Situation("service-stopped", None, day.steps,
                         [[rf"FUNCSTART,{log_name('Create')}\(\)", rf"FUNCSTART,{log_name('ControlLNA')}\(\)",
                           rf"FUNCSTART,{log_name('SetTunerLog')}\(\)"]], {"stop": {"from": "Create"}})
    day = Day(random).open().select().watch(1)
    natives = [("ControlScreenDisplay", [ON]), ("GetTunerLogStatus", []), ("SelectChannel", [broadcast(24)])]
    first, arguments = natives[number % 3]
    nth = 1 + sum(step.startswith(first + " ") for step in day.steps)
    day.call(first, *arguments)
    day.signal().sound().picture().call("SelectChannel", broadcast(32)).wait(12000)
    stop = {"from": first, "nth": nth}
    also = ()
    if number % 4 == 3:
        # Its process is gone: no command is taken any more.
        stop["send_result"] = -32
        also = ("command-not-taken",)
    return Situation("service-stopped", None, day.steps,
                     [[(r"FUNCSTART,recvEventFromServer\(\)", rf"FUNCSTART,{log_name('SetTunerLog')}\(\)"),
                       r"FUNCSTART,recvEventFromServer\(\)", rf"FUNCSTART,{log_name('ControlLNA')}\(\)"]],
                     {"stop": stop}, also=also)


CAUSES = {
    "argument-refused": argument_refused, "java-field-missing": java_field_missing,
    "surface-refused": surface_refused, "command-not-taken": command_not_taken,
    "command-failed": command_failed, "empty-answer": empty_answer, "no-reply": no_reply,
    "slow-reply": slow_reply, "service-stopped": service_stopped,
}
