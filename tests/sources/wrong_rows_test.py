"""Rows that contradict each other do not compile, and the compiler prints the reason.

usage: wrong_rows_test.py SOURCES COMPILER INCLUDE_FOLDER...

Each case changes one row in a copy of src/ and compiles the source that must fail.
"""
import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

MESSAGES = "records/message_table.def"
CLASSES = "binding/class_table.def"
NATIVES = "commands/native_table.def"
FIELDS = "commands/field_table.def"

# What is wrong: file, the text that is replaced, its replacement, the source that is compiled, and
# a text of the compiler's error.
CASES = {
    "a command with the number of an event": (
        MESSAGES, "COMMAND(0x10000007,", "COMMAND(0x10000050,", "commands/channel.cpp",
        "all in the commands' range"),
    "a command after the commands' range": (
        MESSAGES, "EXCHANGE(0x10000041,", "EXCHANGE(0x100000a0,", "commands/channel.cpp",
        "all in the commands' range"),
    "two commands of one number": (
        MESSAGES, "COMMAND(0x10000007,", "COMMAND(0x10000006,", "commands/channel.cpp",
        "each id once"),
    "an event with the number of a command": (
        MESSAGES, "EVENT(0x10000042,", "EVENT(0x10000041,", "commands/channel.cpp",
        "all in the events' range"),
    "two events of one number": (
        MESSAGES, "REPLY(0x10000050,", "REPLY(0x1000004f,", "commands/channel.cpp",
        "each id once"),
    "one reply event for two commands": (
        MESSAGES, "TS_HANDLE_REQ, ReleaseReply", "TS_HANDLE_REQ, CreateReply",
        "commands/channel.cpp", "a reply event belongs to one command"),
    "a reply event that is no event": (
        MESSAGES, "TS_HANDLE_REQ, ReleaseReply", "TS_HANDLE_REQ, ReleaseRepl",
        "commands/channel.cpp", "kReleaseRepl"),
    "a command without its native method": (
        NATIVES, "NATIVE(StartPlay,", "// NATIVE(StartPlay,", "entry/native_methods.cpp",
        "every command has its native method"),
    "a native method without its command": (
        MESSAGES, "COMMAND(0x10000030, StartPlay,", "// COMMAND(0x10000030, StartPlay,",
        "entry/native_methods.cpp", "kAnswerOfStartPlay"),
    "a native method that is stated twice": (
        NATIVES, "NATIVE(Release, dtvSvLibRelease, INT,",
        "NATIVE(StartScan, dtvSvLibRelease, INT,", "entry/native_methods.cpp",
        "kNativeOfStartScan"),
    "a native method that answers another class": (
        NATIVES, "NATIVE(Release_Sync, dtvSvLibRelease_Sync, INT, BG_TS_DTVSVLIB_RELEASE_REPLY",
        "NATIVE(Release_Sync, dtvSvLibRelease_Sync, INT, BG_TS_DTVSVLIB_CANCEL_SCAN",
        "entry/native_methods.cpp", "Release_Sync answers what its message says"),
    "a function with other parameters than its row": (
        NATIVES, "NATIVE(StartRec, dtvSvLibStartRec, INT INT,",
        "NATIVE(StartRec, dtvSvLibStartRecording, INT INT,", "commands/scalar.cpp",
        "dtvSvLibStartRec"),
    "a synchronous reply that no answer is made of": (
        MESSAGES, "CancelScan_Sync, TS_HANDLE_REQ, TS_COMMON_SYNC_REPLY",
        "CancelScan_Sync, TS_HANDLE_REQ, TS_COMMON_REPLY", "commands/sync_reply.cpp",
        "TS_COMMON_REPLY is not a record that answers are made of"),
    "a class id that is left out": (
        CLASSES, "VALUE(72, BG_TS", "VALUE(73, BG_TS", "events/event.cpp",
        "in the order of their class ids"),
    "a method id that is given twice": (
        CLASSES, "BG_EV_DTVSV_CAP_STATUS_NOTIFY, 88,", "BG_EV_DTVSV_CAP_STATUS_NOTIFY, 87,",
        "events/event.cpp", "each once"),
    "an event whose class has no row": (
        MESSAGES, "cap_status_notify, BG_EV_DTVSV_CAP_STATUS_NOTIFY",
        "cap_status_notify, BG_EV_DTVSV_CAP_STATE_NOTIFY", "events/event.cpp",
        "BG_EV_DTVSV_CAP_STATE_NOTIFY"),
    "a constructor with a wider parameter": (
        CLASSES, 'BG_EV_DTVSV_CAP_STATUS_NOTIFY, 88, "(II)V"',
        'BG_EV_DTVSV_CAP_STATUS_NOTIFY, 88, "(IJ)V"', "events/status.cpp",
        "the constructor takes these arguments"),
    "a constructor with another class of object": (
        CLASSES, 'BG_TS_DTVSVLIB_SCAN_RESULT, 164, "(I" VALUE_TYPE(BG_TS_DTVSVLIB_NETWORK_INFO)',
        'BG_TS_DTVSVLIB_SCAN_RESULT, 164, "(I" VALUE_TYPE(BG_TS_DTVSVLIB_SERVICE_INFO)',
        "events/programme.cpp", "the constructor takes these arguments"),
    "a constructor with a String for an array": (
        CLASSES, 'STRING_TYPE "II[I)V"', 'STRING_TYPE "II" STRING_TYPE ")V"',
        "events/programme.cpp", "the constructor takes these arguments"),
    "a reply whose class takes more": (
        CLASSES, 'BG_EV_DTVSV_CREATE_REPLY, 114, "(II)V"',
        'BG_EV_DTVSV_CREATE_REPLY, 114, "(III)V"', "events/reception.cpp",
        "a reply's class takes a handle and a result"),
    "a handler that no row names": (
        MESSAGES, "TS_CHANGE_STATUS_NOTIFY, cap_status_notify,",
        "TS_CHANGE_STATUS_NOTIFY, cap_state_notify,", "events/status.cpp",
        "dtvsv_msgid_lib_cap_status_notify"),
    "result constants out of order": (
        FIELDS, "RESULT_CONSTANT(1, DTVSVLIB_RESULT_NG)", "RESULT_CONSTANT(2, DTVSVLIB_RESULT_NG)",
        "commands/command.cpp", "constants are in code order"),
    "a field that no row states": (
        FIELDS, "INT_FIELD(BG_TS_DTVSVLIB_START_PLAY, interval)",
        "INT_FIELD(BG_TS_DTVSVLIB_START_PLAY, intervals)", "commands/playback.cpp", "interval"),
    "a field of another kind": (
        FIELDS, "INT_FIELD(BG_TS_DTVSVLIB_START_PLAY, interval)",
        "SURFACE_FIELD(BG_TS_DTVSVLIB_START_PLAY, interval)", "commands/playback.cpp", "readInt"),
}


# What the sources include that is not of src/, compiled once for all cases.
HEADERS = ["jni.h", "DtvSvCom.h", "DtvSvLibListener.h", "cstdint", "cstring", "string", "string_view",
           "type_traits", "vector"]


def compile_source(compile_with, tree, source):
    return subprocess.run([*compile_with, "-fsyntax-only", f"-I{tree}", str(tree / source)],
                          capture_output=True, text=True, env={**os.environ, "LC_ALL": "C"},
                          check=False)


def compile_headers(compiler, folders, place):
    """The command that compiles a source, with the headers compiled in a folder."""
    command = [compiler, "-std=c++17", "-fno-exceptions", "-fno-rtti",
               "-Werror=missing-declarations"]
    for folder in folders:
        command += ["-isystem", folder]
    header = pathlib.Path(place) / "platform.h"
    header.write_text("".join(f"#include <{name}>\n" for name in HEADERS), encoding="utf-8")
    subprocess.run([*command, "-x", "c++-header", str(header), "-o", f"{header}.gch"], check=True)
    return [*command, "-include", str(header)]


def try_case(sources, compile_with, name):
    """What is wrong with the compiler's answer to a case, or nothing."""
    file, old, new, source, printed = CASES[name]
    with tempfile.TemporaryDirectory() as folder:
        tree = pathlib.Path(folder) / "src"
        shutil.copytree(sources / "src", tree)
        text = (tree / file).read_text(encoding="utf-8")
        if text.count(old) != 1:
            return f"{name}: {file} has {text.count(old)} times {old}"
        (tree / file).write_text(text.replace(old, new), encoding="utf-8")
        result = compile_source(compile_with, tree, source)
    if result.returncode == 0:
        return f"{name}: {source} compiles"
    if printed not in result.stderr:
        return f"{name}: the compiler does not print {printed!r}:\n{result.stderr[:2000]}"
    return None


def main(sources, compiler, *folders):
    sources = pathlib.Path(sources)
    with (tempfile.TemporaryDirectory() as place,
          concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool):
        compile_with = compile_headers(compiler, folders, place)
        used = sorted({case[3] for case in CASES.values()})
        for source, result in zip(used, pool.map(
                lambda source: compile_source(compile_with, sources / "src", source), used)):
            if result.returncode != 0:
                print(f"{source} does not compile unchanged:\n{result.stderr[:2000]}")
                return 1
        wrong = [answer for answer in pool.map(
            lambda name: try_case(sources, compile_with, name), CASES) if answer]
    for answer in wrong:
        print(answer)
    print(f"{len(CASES) - len(wrong)} of {len(CASES)} wrong rows are refused")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
