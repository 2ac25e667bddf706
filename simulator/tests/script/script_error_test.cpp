// The messages about an invalid script, and the lines that they name.
#include "script/script_text.h"

#include <gtest/gtest.h>

namespace {

/// The error about a rule in line 3, without its opening brace.
std::string errorIn(const std::string& list, const std::string& members) {
    return errorOf("{\"version\": 1,\n\"" + list + "\": [\n{" + members + "}]}");
}

std::string errorOfCommand(const std::string& members) {
    return errorIn("commands", members);
}

std::string errorOfEvent(const std::string& members) {
    return errorIn("events", members);
}

std::string errorOfRecord(const std::string& members) {
    return errorIn("records", members);
}

std::string errorOfStop(const std::string& members) {
    return errorOf("{\"version\": 1,\n\"stop\":\n{" + members + "}}");
}

TEST(ScriptErrorTest, RequiresTheVersion) {
    EXPECT_EQ("2: \"version\" is missing", errorOf("\n{}"));
    EXPECT_EQ("2: \"version\" has to be 1", errorOf("{\n\"version\": 2}"));
    EXPECT_EQ("1: \"version\" has to be 1", errorOf(R"({"version": 0})"));
    EXPECT_EQ("1: \"version\" has to be 1", errorOf(R"({"version": "1"})"));
    EXPECT_EQ("1: \"version\" has to be 1", errorOf(R"({"version": null})"));
    EXPECT_EQ("1: \"version\" has to be 1", errorOf(R"({"version": 1.5})"));
    EXPECT_EQ("1: \"version\" has to be 1", errorOf(R"({"version": 18446744073709551617})"));
}

TEST(ScriptErrorTest, RequiresAnObjectOfKnownMembers) {
    EXPECT_EQ("3: \"comands\" is not known here; known are: version, commands, events, records, "
              "stop",
              errorOf("{\"version\": 1,\n\n\"comands\": []}"));
    EXPECT_EQ("1: \"commands\" has to be a list", errorOf(R"({"version": 1, "commands": {}})"));
    EXPECT_EQ("1: \"events\" has to be a list", errorOf(R"({"version": 1, "events": null})"));
    EXPECT_EQ("1: \"records\" has to be a list", errorOf(R"({"version": 1, "records": "x"})"));
    EXPECT_EQ("2: an object is wanted here", errorOf("{\"version\": 1,\n\"stop\": []}"));
    EXPECT_EQ("2: an object is wanted here", errorOf("{\"version\": 1, \"commands\":\n[[]]}"));
    EXPECT_EQ("2: an object is wanted here", errorOf("{\"version\": 1, \"events\":\n[null]}"));
    EXPECT_EQ("2: an object is wanted here", errorOf("{\"version\": 1, \"records\":\n[7]}"));
    EXPECT_EQ("3: \"reply\" is not known here; known are: command, nth, delay_ms, result, "
              "send_result, answer",
              errorOfCommand(R"("command": "Create", "reply": 1)"));
    EXPECT_EQ("3: \"drop\" is not known here; known are: at_ms, after, nth, delay_ms, event, "
              "fields, bytes, size",
              errorOfEvent(R"("at_ms": 1, "event": "CaInfoNotify", "drop": true)"));
    EXPECT_EQ("3: \"at_ms\" is not known here; known are: event, nth, fields, bytes, size, drop, "
              "copies",
              errorOfRecord(R"("event": "CaInfoNotify", "drop": true, "at_ms": 1)"));
    EXPECT_EQ("3: \"delay_ms\" is not known here; known are: at_ms, from, nth, send_result",
              errorOfStop(R"("from": "Create", "delay_ms": 1)"));
    EXPECT_EQ("3: \"size\" is not known here; known are: offset, hex",
              errorOfRecord(R"("event": "CaInfoNotify", "bytes": {"hex": "00", "size": 1})"));
}

TEST(ScriptErrorTest, RequiresNamesOfMessages) {
    EXPECT_EQ("3: \"command\" is missing", errorOfCommand(R"("result": 1)"));
    EXPECT_EQ("3: \"command\" has to be the name of a command", errorOfCommand(R"("command": 1)"));
    EXPECT_EQ("3: \"selectchannel\" is the name of no command",
              errorOfCommand(R"("command": "selectchannel")"));
    EXPECT_EQ("3: \"CreateReply\" is the name of no command",
              errorOfCommand(R"("command": "CreateReply")"));
    EXPECT_EQ("3: \"event\" is missing", errorOfEvent(R"("at_ms": 1)"));
    EXPECT_EQ("3: \"event\" has to be the name of an event",
              errorOfEvent(R"("at_ms": 1, "event": {})"));
    EXPECT_EQ("3: \"Create\" is the name of no event",
              errorOfEvent(R"("at_ms": 1, "event": "Create")"));
    EXPECT_EQ("3: \"event\" is missing", errorOfRecord(R"("drop": true)"));
    EXPECT_EQ("3: \"event\" has to be the name of an event",
              errorOfRecord(R"("event": 268435590, "drop": true)"));
    EXPECT_EQ("3: \"\" is the name of no event", errorOfRecord(R"("event": "", "drop": true)"));
    EXPECT_EQ("4: \"Scan\" is the name of no command",
              errorOfEvent("\"event\": \"CaInfoNotify\",\n\"after\": \"Scan\""));
    EXPECT_EQ("4: \"CaInfoNotify\" is the name of no command",
              errorOfStop("\n\"from\": \"CaInfoNotify\""));
    // A name on one line, however it is written, and not the whole of a long one.
    EXPECT_EQ("3: \"a?b?\" is the name of no command",
              errorOfCommand(R"("command": "a\nb\u0000")"));
    EXPECT_EQ("3: \"" + std::string(60, 'x') + "...\" is the name of no command",
              errorOfCommand("\"command\": \"" + std::string(1000, 'x') + "\""));
}

TEST(ScriptErrorTest, RequiresNumbersWithinTheirLimits) {
    const auto with = [](const std::string& member) {
        return errorOfCommand("\"command\": \"BMLStartTvLinkReq\",\n" + member);
    };
    const std::string nth = "4: \"nth\" has to be a whole number from 1 to 4294967295";
    EXPECT_EQ(nth, with(R"("nth": 0)"));
    EXPECT_EQ(nth, with(R"("nth": 4294967296)"));
    EXPECT_EQ(nth, with(R"("nth": -1)"));
    EXPECT_EQ(nth, with(R"("nth": 1.5)"));
    EXPECT_EQ(nth, with(R"("nth": 1e300)"));
    EXPECT_EQ(nth, with(R"("nth": 18446744073709551615)"));
    EXPECT_EQ(nth, with(R"("nth": "1")"));
    EXPECT_EQ(nth, with(R"("nth": true)"));
    EXPECT_EQ(nth, with(R"("nth": null)"));
    EXPECT_EQ(nth, with(R"("nth": [1])"));
    const std::string delay = "4: \"delay_ms\" has to be a whole number from 0 to 3600000";
    EXPECT_EQ(delay, with(R"("delay_ms": -1)"));
    EXPECT_EQ(delay, with(R"("delay_ms": 3600001)"));
    const std::string byte = "4: \"result\" has to be a whole number from 0 to 255";
    EXPECT_EQ(byte, with(R"("result": -1)"));
    EXPECT_EQ(byte, with(R"("result": 256)"));
    const std::string sent =
        "4: \"send_result\" has to be a whole number from -2147483648 to 2147483647";
    EXPECT_EQ(sent, with(R"("send_result": -2147483649)"));
    EXPECT_EQ(sent, with(R"("send_result": 2147483648)"));
    EXPECT_EQ("3: \"result\" has to be a whole number from -2147483648 to 2147483647",
              errorOfCommand(R"("command": "Create", "result": 2147483648)"));
    EXPECT_EQ("3: \"at_ms\" has to be a whole number from 0 to 3600000",
              errorOfEvent(R"("at_ms": 3600001, "event": "CaInfoNotify")"));
    EXPECT_EQ("3: \"at_ms\" has to be a whole number from 0 to 3600000",
              errorOfStop("\"at_ms\": -1"));
    EXPECT_EQ("3: \"event\" has to be a whole number from 0 to 4294967295",
              errorOfEvent(R"("at_ms": 0, "event": -1)"));
    EXPECT_EQ("3: \"event\" has to be a whole number from 0 to 4294967295",
              errorOfEvent(R"("at_ms": 0, "event": 4294967296)"));
    EXPECT_EQ("3: \"size\" has to be a whole number from 0 to 65536",
              errorOfEvent(R"("at_ms": 0, "event": 1, "size": 65537)"));
    EXPECT_EQ("3: \"size\" has to be a whole number from 0 to 65536",
              errorOfRecord(R"("event": "CaInfoNotify", "size": -1)"));
}

TEST(ScriptErrorTest, RequiresMeaningfulRulesOfCommands) {
    EXPECT_EQ("4: \"answer\" has to be true or false",
              errorOfCommand("\"command\": \"Create\",\n\"answer\": 0"));
    EXPECT_EQ("4: \"send_result\" 0 would say that the command was taken",
              errorOfCommand("\"command\": \"Create\",\n\"send_result\": 0"));
    EXPECT_EQ("4: no event answers this command: give it a \"send_result\"",
              errorOfCommand("\"command\": \"BMLKeyEventNotify\",\n\"result\": 1"));
    const std::string one =
        "3: only one of \"result\", \"send_result\" and \"answer\": false makes sense";
    EXPECT_EQ(one, errorOfCommand(R"("command": "Create", "result": 1, "send_result": 1)"));
    EXPECT_EQ(one, errorOfCommand(R"("command": "Create", "result": 1, "answer": false)"));
    EXPECT_EQ(one, errorOfCommand(R"("command": "Create", "send_result": 1, "answer": false)"));
    const std::string none = "4: \"delay_ms\" delays an answer, and there is none";
    EXPECT_EQ(none, errorOfCommand("\"command\": \"BMLAuthReply\",\n\"delay_ms\": 1"));
    EXPECT_EQ(none, errorOfCommand("\"command\": \"Create\", \"answer\": false,\n\"delay_ms\": 1"));
    EXPECT_EQ(none,
              errorOfCommand("\"command\": \"Create\", \"send_result\": 1,\n\"delay_ms\": 1"));
    EXPECT_EQ("", errorOfCommand(R"("command": "Create", "answer": false, "delay_ms": 0)"));
    EXPECT_EQ("", errorOfCommand(R"("command": "Release_Sync", "answer": false, "delay_ms": 1)"));
    EXPECT_EQ("", errorOfCommand(R"("command": "Release_Sync", "send_result": 1, "delay_ms": 1)"));
}

TEST(ScriptErrorTest, RequiresOneOccasion) {
    EXPECT_EQ("3: either \"at_ms\" or \"after\" is needed",
              errorOfEvent("\"event\":\n\"CaInfoNotify\""));
    EXPECT_EQ("3: either \"at_ms\" or \"after\" is needed",
              errorOfEvent(R"("event": "CaInfoNotify", "at_ms": 1, "after": "Create")"));
    EXPECT_EQ("3: either \"at_ms\" or \"from\" is needed", errorOfStop(""));
    EXPECT_EQ("3: either \"at_ms\" or \"from\" is needed",
              errorOfStop(R"("at_ms": 1, "from": "Create")"));
    EXPECT_EQ("4: \"nth\" goes with \"after\"",
              errorOfEvent("\"event\": \"CaInfoNotify\", \"at_ms\": 1,\n\"nth\": 1"));
    EXPECT_EQ("4: \"delay_ms\" goes with \"after\"",
              errorOfEvent("\"event\": \"CaInfoNotify\", \"at_ms\": 1,\n\"delay_ms\": 1"));
    EXPECT_EQ("4: \"nth\" goes with \"from\"", errorOfStop("\"at_ms\": 1,\n\"nth\": 1"));
}

TEST(ScriptErrorTest, RequiresKnownFields) {
    const auto with = [](const std::string& field) {
        return errorOfRecord("\"event\": \"ScanNotify\", \"fields\": {\n" + field + "}");
    };
    EXPECT_EQ("4: TS_SCAN_NOTIFY has no field \"channel\"; it has: handle, result, channnel, "
              "network, result_channnel_num",
              with(R"("channel": 1)"));
    EXPECT_EQ("4: handle: 65536 is outside the field's 0 to 65535", with(R"("handle": 65536)"));
    EXPECT_EQ("4: network.partialsvc[1]: the field takes a number",
              with(R"("network.partialsvc[1]": "1")"));
    EXPECT_EQ("4: network.ts_name: the field takes a text", with(R"("network.ts_name": 1)"));
    EXPECT_EQ("4: network.ts_name: the text takes 45 bytes, the field has 44",
              with("\"network.ts_name\": \"" + std::string(45, 'x') + "\""));
    EXPECT_EQ("", with("\"network.ts_name\": \"" + std::string(44, 'x') + "\""));
    EXPECT_EQ("4: network.ts_name: the text has half of a character",
              with(R"("network.ts_name": "\udc00")"));
    const std::string neither = "4: handle: a whole number or a text is wanted here";
    for (const char* value : {"1.5", "1e300", "true", "null", "[1]", "{}"}) {
        EXPECT_EQ(neither, with("\"handle\": " + std::string(value))) << value;
    }
    // The first one in the file, not in alphabetical order.
    EXPECT_EQ("4: result: the field takes a number",
              with("\"result\": \"x\",\n\"channnel\": \"y\""));
    EXPECT_EQ("4: \"fields\" has to be an object",
              errorOfRecord("\"event\": \"ScanNotify\", \"fields\":\n[]"));
    EXPECT_EQ("4: an event that is not known has no fields",
              errorOfEvent("\"at_ms\": 1, \"event\": 1, \"fields\":\n{}"));
}

TEST(ScriptErrorTest, RequiresBytes) {
    const auto with = [](const std::string& bytes) {
        return errorOfRecord("\"event\": \"CaInfoNotify\", \"bytes\":\n" + bytes);
    };
    EXPECT_EQ("4: an object is wanted here", with("\"00\""));
    EXPECT_EQ("4: \"hex\" is missing", with("{\"offset\":\n1}"));
    const std::string digits = "5: \"hex\" has to be hexadecimal digits, two for each byte";
    EXPECT_EQ(digits, with("{\n\"hex\": \"\"}"));
    EXPECT_EQ(digits, with("{\n\"hex\": \"012\"}"));
    EXPECT_EQ(digits, with("{\n\"hex\": \"0g\"}"));
    EXPECT_EQ(digits, with("{\n\"hex\": 12}"));
    EXPECT_EQ("4: \"offset\" has to be a whole number from 0 to 65536",
              with(R"({"offset": 65537, "hex": "00"})"));
    EXPECT_EQ("5: a record has at most 65536 bytes", with("{\"offset\": 65536,\n\"hex\": \"00\"}"));
    EXPECT_EQ("4: a record has at most 65536 bytes",
              with("{\"hex\": \"" + std::string(131074, '0') + "\"}"));
}

TEST(ScriptErrorTest, RequiresAnEffect) {
    const std::string nothing = "3: nothing is done to the record: \"fields\", \"bytes\", \"size\" "
                                "or \"drop\" is needed";
    EXPECT_EQ(nothing, errorOfRecord(R"("event": "CaInfoNotify")"));
    EXPECT_EQ(nothing, errorOfRecord(R"("event": "CaInfoNotify", "drop": false)"));
    EXPECT_EQ(nothing, errorOfRecord(R"("event": "CaInfoNotify", "fields": {})"));
    EXPECT_EQ("3: \"copies\" has to be a whole number from 1 to 100",
              errorOfRecord(R"("event": "CaInfoNotify", "copies": 0)"));
    EXPECT_EQ("3: an event that is dropped has no copies",
              errorOfRecord(R"("event": "CaInfoNotify", "drop": true, "copies": 1)"));
    EXPECT_EQ("3: \"drop\" has to be true or false",
              errorOfRecord(R"("event": "CaInfoNotify", "drop": 1)"));
}

TEST(ScriptErrorTest, ReportsTheFirstOfSeveralMistakes) {
    const std::string commands =
        "\"commands\": [\n{\"nth\": 0,\n\"command\": \"Nothing\",\n\"answer\": 1}\n]";
    const std::string stop = "\"stop\": {\n\"from\": \"Nowhere\"}";
    EXPECT_EQ("3: \"nth\" has to be a whole number from 1 to 4294967295",
              errorOf("{\n" + commands + ",\n" + stop + "}"));
    EXPECT_EQ("3: \"Nowhere\" is the name of no command",
              errorOf("{\n" + stop + ",\n" + commands + "}"));
    // The error is about the misspelt member, not about the missing one.
    EXPECT_EQ("4: \"comand\" is not known here; known are: command, nth, delay_ms, result, "
              "send_result, answer",
              errorOfCommand("\n\"comand\": \"Create\""));
    // No mistake is reported that follows from another one.
    EXPECT_EQ("4: \"Nothing\" is the name of no event",
              errorOfEvent("\"at_ms\": 1, \"fields\": {\"handle\": 1},\n\"event\": \"Nothing\""));
}

} // namespace
