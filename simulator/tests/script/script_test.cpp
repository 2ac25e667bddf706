// The contents of a valid script.
#include "script/script_text.h"

#include "records/message_ids.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;
using Bytes = std::vector<uint8_t>;
using std::chrono::milliseconds;

CommandRule commandOf(const std::string& members) {
    const Script script = scriptOf(R"({"version": 1, "commands": [{)" + members + "}]}");
    EXPECT_EQ(1U, script.commands.size());
    return script.commands.empty() ? CommandRule{} : script.commands.front();
}

EventRule eventOf(const std::string& members) {
    const Script script = scriptOf(R"({"version": 1, "events": [{)" + members + "}]}");
    EXPECT_EQ(1U, script.events.size());
    return script.events.empty() ? EventRule{} : script.events.front();
}

RecordRule recordOf(const std::string& members) {
    const Script script = scriptOf(R"({"version": 1, "records": [{)" + members + "}]}");
    EXPECT_EQ(1U, script.records.size());
    return script.records.empty() ? RecordRule{} : script.records.front();
}

StopRule stopOf(const std::string& members) {
    const Script script = scriptOf(R"({"version": 1, "stop": {)" + members + "}}");
    EXPECT_TRUE(script.stop.has_value());
    return script.stop.value_or(StopRule{});
}

TEST(ScriptTest, IsEmptyWithoutRules) {
    const Script script = scriptOf(R"({"version": 1})");
    EXPECT_TRUE(script.commands.empty());
    EXPECT_TRUE(script.events.empty());
    EXPECT_TRUE(script.records.empty());
    EXPECT_FALSE(script.stop.has_value());
    EXPECT_TRUE(scriptOf(R"({"version": 1, "commands": [], "events": [], "records": []})")
                    .commands.empty());
}

TEST(ScriptTest, ToleratesAByteOrderMarkAndAnyLineEnds) {
    const Script script = scriptOf("\xEF\xBB\xBF{\"version\": 1,\r\n\"stop\": {\"at_ms\": 0,\r\n"
                                   "\"send_result\": 5}}\r\n");
    ASSERT_TRUE(script.stop.has_value());
    EXPECT_EQ(5, script.stop->send_result);
}

TEST(ScriptTest, ReadsACommandRule) {
    const CommandRule plain = commandOf(R"("command": "StartScan")");
    EXPECT_EQ(0x10000002, plain.command_id);
    EXPECT_EQ(std::nullopt, plain.which.nth);
    EXPECT_EQ(0, plain.delay.count());
    EXPECT_EQ(std::nullopt, plain.result);
    EXPECT_EQ(std::nullopt, plain.send_result);
    EXPECT_TRUE(plain.answer);

    const CommandRule full =
        commandOf(R"("command": "TerminateRec_Sync", "nth": 3, "delay_ms": 250, "result": -7)");
    EXPECT_EQ(0x10000040, full.command_id);
    EXPECT_EQ(3U, full.which.nth);
    EXPECT_EQ(250, full.delay.count());
    EXPECT_EQ(-7, full.result);

    EXPECT_EQ(-1, commandOf(R"("command": "Create", "send_result": -1)").send_result);
    EXPECT_FALSE(commandOf(R"("command": "Create", "answer": false)").answer);
    EXPECT_TRUE(commandOf(R"("command": "Create", "answer": true, "result": 1)").answer);
}

TEST(ScriptTest, KeepsTheOrderOfRules) {
    const Script script = scriptOf(R"({"version": 1, "commands": [
        {"command": "Release", "result": 1}, {"command": "Create", "result": 2},
        {"command": "Release", "result": 3}]})");
    ASSERT_EQ(3U, script.commands.size());
    EXPECT_EQ(1, script.commands[0].result);
    EXPECT_EQ(2, script.commands[1].result);
    EXPECT_EQ(3, script.commands[2].result);
}

TEST(ScriptTest, TakesNumbersUpToTheirLimits) {
    EXPECT_EQ(1U, commandOf(R"("command": "Create", "nth": 1)").which.nth);
    EXPECT_EQ(4294967295U, commandOf(R"("command": "Create", "nth": 4294967295)").which.nth);
    EXPECT_EQ(0, commandOf(R"("command": "Create", "delay_ms": 0)").delay.count());
    EXPECT_EQ(3600000, commandOf(R"("command": "Create", "delay_ms": 3600000)").delay.count());
    EXPECT_EQ(2147483647, commandOf(R"("command": "Create", "result": 2147483647)").result);
    EXPECT_EQ(-2147483647 - 1, commandOf(R"("command": "Create", "result": -2147483648)").result);
    EXPECT_EQ(2147483647,
              commandOf(R"("command": "Create", "send_result": 2147483647)").send_result);
    EXPECT_EQ(-2147483647 - 1,
              commandOf(R"("command": "Create", "send_result": -2147483648)").send_result);
    EXPECT_EQ(0, commandOf(R"("command": "BMLStartTvLinkReq", "result": 0)").result);
    EXPECT_EQ(255, commandOf(R"("command": "BMLStartTvLinkReq", "result": 255)").result);
    // Other ways to write whole numbers.
    EXPECT_EQ(200, commandOf(R"("command": "Create", "result": 2e2)").result);
    EXPECT_EQ(-5, commandOf(R"("command": "Create", "result": -5.0)").result);
}

TEST(ScriptTest, ReadsWhenAnEventIsSent) {
    const EventRule timed = eventOf(R"("at_ms": 1500, "event": "CaInfoNotify")");
    EXPECT_EQ(milliseconds{1500}, timed.when.at);
    EXPECT_EQ(0x1000008e, timed.event_id);
    EXPECT_EQ(milliseconds{3600000},
              eventOf(R"("at_ms": 3600000, "event": "CaInfoNotify")").when.at);

    const EventRule after =
        eventOf(R"("after": "StartPlay", "nth": 2, "delay_ms": 3600000, "event": "CaInfoNotify")");
    EXPECT_EQ(std::nullopt, after.when.at);
    EXPECT_EQ(0x10000030, after.when.command_id);
    EXPECT_EQ(2U, after.when.which.nth);
    EXPECT_EQ(3600000, after.when.delay.count());
    const EventRule plain = eventOf(R"("after": "StartPlay", "event": "CaInfoNotify")");
    EXPECT_EQ(std::nullopt, plain.when.which.nth);
    EXPECT_EQ(0, plain.when.delay.count());
}

TEST(ScriptTest, MakesTheRecordOfAnEvent) {
    EXPECT_EQ((Bytes{0, 0, 0, 0}), eventOf(R"("at_ms": 0, "event": "CapStatusNotify")").record);
    EXPECT_EQ((Bytes{0, 0, 9, 0}),
              eventOf(R"("at_ms": 0, "event": "CapStatusNotify", "fields": {"change_status": 9})")
                  .record);
    EXPECT_EQ((Bytes{0, 0, 9, 0xAB}),
              eventOf(R"("at_ms": 0, "event": "CapStatusNotify", "fields": {"change_status": 9},
                         "bytes": {"offset": 3, "hex": "ab"})")
                  .record);
}

TEST(ScriptTest, FindsWhetherARecordNamesASession) {
    const auto names = [](const std::string& members) {
        return eventOf(R"("at_ms": 0, "event": )" + members).names_session;
    };
    EXPECT_FALSE(names(R"("CapStatusNotify")"));
    EXPECT_FALSE(names(R"("CapStatusNotify", "fields": {"change_status": 9})"));
    EXPECT_FALSE(names(R"("CapStatusNotify", "bytes": {"offset": 2, "hex": "01"})"));
    EXPECT_TRUE(names(R"("CapStatusNotify", "bytes": {"offset": 1, "hex": "01"})"));
    EXPECT_TRUE(names(R"("CapStatusNotify", "bytes": {"hex": "01"})"));
    EXPECT_TRUE(names(R"("CapStatusNotify", "fields": {"handle": 0})"));
    EXPECT_TRUE(names("1"));
    EXPECT_FALSE(names("268435590")) << "that is CapStatusNotify";
}

TEST(ScriptTest, TakesTheNumberOfAnEvent) {
    EXPECT_EQ(0, eventOf(R"("at_ms": 0, "event": 0)").event_id);
    EXPECT_EQ(-1, eventOf(R"("at_ms": 0, "event": 4294967295)").event_id);
    const EventRule unknown =
        eventOf(R"("at_ms": 0, "event": 305419896, "bytes": {"offset": 1, "hex": "0aF0 7 1"})");
    EXPECT_EQ(0x12345678, unknown.event_id);
    EXPECT_EQ((Bytes{0, 0x0A, 0xF0, 0x71}), unknown.record);
    EXPECT_EQ((Bytes{}), eventOf(R"("at_ms": 0, "event": 305419896)").record);
    const EventRule known = eventOf(R"("at_ms": 0, "event": 268435590,
                                       "fields": {"change_status": 2})");
    EXPECT_EQ(0x10000086, known.event_id);
    EXPECT_EQ((Bytes{0, 0, 2, 0}), known.record);
}

TEST(ScriptTest, CutsAndFillsUpARecord) {
    const auto sized = [](const std::string& size) {
        return eventOf(R"("at_ms": 0, "event": 7, "bytes": {"offset": 1, "hex": "0A f0"},
                          "size": )" +
                       size)
            .record;
    };
    EXPECT_EQ((Bytes{}), sized("0"));
    EXPECT_EQ((Bytes{0, 0x0A}), sized("2"));
    EXPECT_EQ((Bytes{0, 0x0A, 0xF0}), sized("3"));
    EXPECT_EQ((Bytes{0, 0x0A, 0xF0, 0, 0}), sized("5"));
    EXPECT_EQ(65536U, sized("65536").size());
}

TEST(ScriptTest, TakesBytesUpToTheLargestRecord) {
    EXPECT_EQ(65536U, eventOf(R"("at_ms": 0, "event": 7, "bytes": {"offset": 65535, "hex": "01"})")
                          .record.size());
    EXPECT_EQ(65536U, eventOf(R"("at_ms": 0, "event": 7, "bytes": {"hex": ")" +
                              std::string(131072, 'f') + "\"}")
                          .record.size());
}

TEST(ScriptTest, ReadsARecordRule) {
    const RecordRule dropped = recordOf(R"("event": "ScanNotify", "nth": 4, "drop": true)");
    EXPECT_EQ(0x1000007f, dropped.event_id);
    EXPECT_EQ(4U, dropped.which.nth);
    EXPECT_TRUE(dropped.drop);
    EXPECT_EQ(std::nullopt, dropped.size);
    EXPECT_TRUE(dropped.patches.empty());

    const RecordRule modified = recordOf(R"("event": "ScanNotify", "fields": {"channnel": 258},
                                        "bytes": {"offset": 400, "hex": "01 02"}, "size": 0)");
    EXPECT_EQ(std::nullopt, modified.which.nth);
    EXPECT_FALSE(modified.drop);
    EXPECT_EQ(0U, modified.size);
    ASSERT_EQ(2U, modified.patches.size());
    EXPECT_EQ(8U, modified.patches[0].offset);
    EXPECT_EQ((Bytes{2, 1, 0, 0}), modified.patches[0].bytes);
    EXPECT_EQ(400U, modified.patches[1].offset);
    EXPECT_EQ((Bytes{1, 2}), modified.patches[1].bytes);
}

TEST(ScriptTest, ReadsWhenTheServiceStops) {
    const StopRule timed = stopOf(R"("at_ms": 20)");
    EXPECT_EQ(milliseconds{20}, timed.when.at);
    EXPECT_EQ(0, timed.send_result);
    const StopRule from = stopOf(R"("from": "SelectChannel", "nth": 2, "send_result": -9)");
    EXPECT_EQ(std::nullopt, from.when.at);
    EXPECT_EQ(0x10000006, from.when.command_id);
    EXPECT_EQ(2U, from.when.which.nth);
    EXPECT_EQ(-9, from.send_result);
}

} // namespace
