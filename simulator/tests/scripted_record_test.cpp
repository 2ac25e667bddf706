// Rules of a script for the records of events.
#include "stepped_client.h"

#include "records/bml_records.h"
#include "records/programme_records.h"
#include "records/status_records.h"
#include "script/script_text.h"

#include <utility>
#include <vector>

namespace {

using namespace simulator;
using Bytes = std::vector<uint8_t>;

class ScriptedRecordTest : public SteppedTest {
protected:
    /// Connects a simulator to libDtv with these rules for records.
    void modify(const std::string& rules) {
        follow(R"({"version": 1, "records": [)" + rules + "]}");
    }

    /// The reply to a command that answers 01 00 00 00 00 00 00 00.
    Bytes reply() {
        EXPECT_EQ(0, send(command_id::kControlLNA, 1, 1));
        return await(event_id::kControlLNAReply).event.bytes;
    }
};

TEST_F(ScriptedRecordTest, CanHaveOtherNumbers) {
    modify(R"({"event": "ControlLNAReply", "nth": 1, "fields": {"result": -2, "handle": 515}},
            {"event": "ControlLNAReply", "nth": 2, "fields": {"result": 2147483647}})");
    openSession();
    EXPECT_EQ((Bytes{3, 2, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}), reply());
    EXPECT_EQ((Bytes{1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F}), reply());
    EXPECT_EQ((Bytes{1, 0, 0, 0, 0, 0, 0, 0}), reply());
}

TEST_F(ScriptedRecordTest, CanHaveOtherTexts) {
    modify(R"({"event": "NetworkInfoNotify",
             "fields": {"network.ts_name": "Oculto", "network.ts_name_size": 65535,
                        "network.partialsvc[7]": 258, "physical_channel": 4294967295}},
            {"event": "ServiceInfoNotify", "fields": {"service[1].name": "日本",
                                                      "svc_cnt": 255}})");
    openReceiving();
    const auto network = await(event_id::kNetworkInfoNotify).event.as<TS_NETWORK_INFO_NOTIFY>();
    EXPECT_STREQ("Oculto", network.network.ts_name);
    EXPECT_EQ(65535, network.network.ts_name_size);
    EXPECT_STREQ("Um", network.network.nw_name) << "as it was";
    EXPECT_EQ(258, network.network.partialsvc[7]);
    EXPECT_EQ(0, network.network.partialsvc[6]);
    EXPECT_EQ(4294967295U, network.physical_channel);
    const auto services = await(event_id::kServiceInfoNotify).event.as<TS_SERVICE_INFO_NOTIFY>();
    EXPECT_STREQ("Um", services.service[0].name);
    EXPECT_STREQ("\xE6\x97\xA5\xE6\x9C\xAC", services.service[1].name);
    EXPECT_EQ(255, services.svc_cnt);
}

TEST_F(ScriptedRecordTest, CanHaveOtherBytesAndUtf16Texts) {
    follow(R"({"version": 1, "events": [
        {"at_ms": 100, "event": "ReceiveEpgInfoNotify",
         "fields": {"after[7].name": "aé😀", "after[7].start_time.mil_sec": 999,
                    "current.content_nibble": "01 02 FF"}},
        {"at_ms": 100, "event": "BmlWriteNvramReq", "fields": {"data": "0aF0", "ts_name": "x"}}]})");
    const auto guide =
        await(event_id::kReceiveEpgInfoNotify).event.as<TS_RECEIVE_EPG_INFO_NOTIFY>();
    const char units[] = {'a', 0, '\xE9', 0, '\x3D', '\xD8', '\x00', '\xDE', 0, 0};
    EXPECT_EQ(0, std::memcmp(units, guide.after[7].name, sizeof units));
    EXPECT_EQ(0U, guide.after[7].name_size) << "lengths stay as they are";
    EXPECT_EQ(999, guide.after[7].start_time.mil_sec);
    EXPECT_EQ(1, guide.current.content_nibble[0]);
    EXPECT_EQ(2, guide.current.content_nibble[1]);
    EXPECT_EQ(255, guide.current.content_nibble[2]);
    EXPECT_EQ(0, guide.current.content_nibble[3]);
    const auto nvram = await(event_id::kBmlWriteNvramReq).event.as<TS_WRITE_NVRAM_REQ>();
    EXPECT_EQ(0x0A, nvram.data[0]);
    EXPECT_EQ(0xF0, nvram.data[1]);
    EXPECT_STREQ("x", nvram.ts_name);
}

TEST_F(ScriptedRecordTest, CanHaveBytesThatReplaceFields) {
    modify(R"({"event": "ControlLNAReply", "nth": 1, "bytes": {"hex": "aabb"}},
            {"event": "ControlLNAReply", "nth": 2, "fields": {"result": 1},
             "bytes": {"offset": 5, "hex": "cc"}},
            {"event": "ControlLNAReply", "nth": 3, "bytes": {"offset": 9, "hex": "0102"}},
            {"event": "ControlLNAReply", "nth": 4, "bytes": {"offset": 9, "hex": "0102"},
             "size": 10})");
    openSession();
    EXPECT_EQ((Bytes{0xAA, 0xBB, 0, 0, 0, 0, 0, 0}), reply());
    EXPECT_EQ((Bytes{1, 0, 0, 0, 1, 0xCC, 0, 0}), reply());
    EXPECT_EQ((Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2}), reply());
    EXPECT_EQ((Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0, 1}), reply());
}

TEST_F(ScriptedRecordTest, IsCutOrFilledUp) {
    modify(R"({"event": "ControlLNAReply", "nth": 1, "size": 7},
            {"event": "ControlLNAReply", "nth": 2, "size": 9, "fields": {"result": 1}},
            {"event": "ControlLNAReply", "nth": 3, "size": 0},
            {"event": "ControlLNAReply", "nth": 4, "size": 65536})");
    openSession();
    EXPECT_EQ((Bytes{1, 0, 0, 0, 0, 0, 0}), reply());
    EXPECT_EQ((Bytes{1, 0, 0, 0, 1, 0, 0, 0, 0}), reply());
    EXPECT_EQ((Bytes{}), reply());
    EXPECT_EQ(65536U, reply().size());
}

TEST_F(ScriptedRecordTest, IsNeverSentWhenItIsDropped) {
    modify(R"({"event": "ScanNotify", "nth": 3, "drop": true},
            {"event": "TerminateScanNotify", "drop": true, "size": 4})");
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    const std::vector<TimedEvent> events = until(100000);
    EXPECT_EQ(49U, countOf(events, event_id::kScanNotify));
    EXPECT_EQ(0U, countOf(events, event_id::kTerminateScanNotify));
    ASSERT_LE(4U, events.size());
    EXPECT_EQ(13U, events[1].event.as<TS_SCAN_NOTIFY>().channnel);
    EXPECT_EQ(14U, events[2].event.as<TS_SCAN_NOTIFY>().channnel);
    EXPECT_EQ(16U, events[3].event.as<TS_SCAN_NOTIFY>().channnel);
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    EXPECT_EQ(kDone, awaitResult(event_id::kStartScanReply)) << "the scan has ended all the same";
}

TEST_F(ScriptedRecordTest, FollowsTheFirstRuleThatFits) {
    modify(R"({"event": "ControlLNAReply", "nth": 2, "size": 1},
            {"event": "ControlLNAReply", "size": 2},
            {"event": "ControlLNAReply", "nth": 3, "size": 3})");
    openSession();
    EXPECT_EQ(2U, reply().size());
    EXPECT_EQ(1U, reply().size());
    EXPECT_EQ(2U, reply().size());
}

TEST_F(ScriptedRecordTest, DoesNotApplyToEventsThatTheScriptSends) {
    follow(R"({"version": 1,
               "events": [{"after": "Create", "delay_ms": 60, "event": "ControlLNAReply"}],
               "records": [{"event": "ControlLNAReply", "nth": 1, "size": 2}]})");
    openSession();
    EXPECT_EQ(8U, await(event_id::kControlLNAReply).event.bytes.size());
    EXPECT_EQ((Bytes{1, 0}), reply()) << "it is the first that the service sends";
}

/// Who started the service sees what the script has left, and its change is what is sent.
TEST_F(ScriptedRecordTest, AreSeenAndChangedAfterTheScript) {
    simulator::Options options = SimulatorTest::options();
    options.script = scriptOf(R"({"version": 1, "records": [
        {"event": "ControlLNAReply", "nth": 1, "drop": true},
        {"event": "ControlLNAReply", "nth": 2, "fields": {"result": 7}}]})");
    std::vector<Bytes> seen;
    options.on_event = [&seen](int event_id, Bytes& record) {
        if (event_id == event_id::kControlLNAReply) {
            seen.push_back(record);
            record[5] = 1;
        }
    };
    follow(std::move(options));
    openSession();
    EXPECT_EQ(0, send(command_id::kControlLNA, 1, 1)); // dropped
    EXPECT_EQ((Bytes{1, 0, 0, 0, 7, 1, 0, 0}), reply());
    EXPECT_EQ((std::vector<Bytes>{{1, 0, 0, 0, 7, 0, 0, 0}}), seen);
}

TEST_F(ScriptedRecordTest, CanBeSentMoreThanOnce) {
    modify(R"({"event": "ControlLNAReply", "nth": 2, "copies": 2, "fields": {"result": 9}},
            {"event": "ControlLNAReply", "nth": 3, "drop": true})");
    openSession();
    EXPECT_EQ((Bytes{1, 0, 0, 0, 0, 0, 0, 0}), reply());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ((Bytes{1, 0, 0, 0, 9, 0, 0, 0}),
                  i == 0 ? reply() : await(event_id::kControlLNAReply).event.bytes);
    }
    EXPECT_EQ(0, send(command_id::kControlLNA, 1, 1)); // dropped
    EXPECT_EQ((Bytes{1, 0, 0, 0, 0, 0, 0, 0}), reply());
    const auto count = service().eventCounts().at(event_id::kControlLNAReply);
    EXPECT_EQ(4U, count.caused);
    EXPECT_EQ(1U, count.dropped);
    EXPECT_EQ(2U, count.added);
}

/// What a rule leaves as it is, it does not count.
TEST_F(ScriptedRecordTest, CountsWhatEachRuleHasDone) {
    follow(R"({"version": 1,
        "commands": [{"command": "SetTunerLog", "result": 7}, {"command": "Release"}],
        "events": [{"after": "SetTunerLog", "event": 5, "bytes": {"hex": "01"}}],
        "records": [{"event": "ControlLNAReply", "fields": {"result": 0}},
                    {"event": "SetTunerLogReply", "nth": 2, "fields": {"result": 8}}],
        "stop": {"from": "PausePlay"}})");
    openSession();
    reply();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(0, send(command_id::kSetTunerLog, 1, 1));
        await(event_id::kSetTunerLogReply);
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(0, send(command_id::kPausePlay, 1));
    }
    std::string counts;
    for (const ScriptRun::RuleCount& rule : service().ruleCounts()) {
        counts += rule.place + " " + std::to_string(rule.acted) + "\n";
    }
    EXPECT_EQ("commands[0] 2\ncommands[1] 0\nevents[0] 2\nrecords[0] 0\nrecords[1] 1\nstop 3\n",
              counts);
}

} // namespace
