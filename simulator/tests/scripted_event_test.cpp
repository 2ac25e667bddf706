// The events that a script sends, and the service that stops.
#include "stepped_client.h"

#include "records/programme_records.h"
#include "records/status_records.h"

namespace {

using namespace simulator;
using Bytes = std::vector<uint8_t>;

class ScriptedEventTest : public SteppedTest {
protected:
    /// Connects a simulator to libDtv that sends these events.
    void sendEvents(const std::string& rules) {
        follow(R"({"version": 1, "events": [)" + rules + "]}");
    }

    void stopWith(const std::string& rule) { follow(R"({"version": 1, "stop": )" + rule + "}"); }

    int awaitCaStatus(int64_t moment, int handle) {
        const TimedEvent arrived = await(event_id::kCaInfoNotify);
        EXPECT_EQ(moment, arrived.moment);
        const auto notify = arrived.event.as<TS_CA_INFO_NOTIFY>();
        EXPECT_EQ(handle, notify.handle);
        return notify.ca_status;
    }

    void release(int handle) {
        EXPECT_EQ(kDone, exchangeResult(command_id::kRelease_Sync, handle));
    }
};

TEST_F(ScriptedEventTest, ComesAtATime) {
    sendEvents(R"({"at_ms": 500, "event": "CaInfoNotify", "fields": {"ca_status": 3}},
                  {"at_ms": 0, "event": "CaInfoNotify", "fields": {"ca_status": 1}},
                  {"at_ms": 500, "event": "CaInfoNotify", "fields": {"ca_status": 4}})");
    EXPECT_EQ(1, awaitCaStatus(0, 0));
    EXPECT_EQ(3, awaitCaStatus(500, 0));
    EXPECT_EQ(4, awaitCaStatus(500, 0));
    EXPECT_FALSE(service().advance());
}

TEST_F(ScriptedEventTest, IsAboutTheSessionThatIsOpenLongest) {
    sendEvents(R"({"at_ms": 200, "event": "CaInfoNotify"}, {"at_ms": 300, "event": "CaInfoNotify"},
                  {"at_ms": 400, "event": "CaInfoNotify"})");
    EXPECT_EQ(1, openSession());
    EXPECT_EQ(2, openSession());
    EXPECT_EQ(0, awaitCaStatus(200, 1));
    release(1);
    EXPECT_EQ(3, openSession());
    EXPECT_EQ(0, awaitCaStatus(300, 2));
    release(2);
    release(3);
    EXPECT_EQ(0, awaitCaStatus(400, 0));
}

TEST_F(ScriptedEventTest, ComesAfterACommandAboutItsSession) {
    sendEvents(R"({"after": "ControlLNA", "nth": 2, "delay_ms": 40, "event": "CaInfoNotify"},
                  {"after": "ControlLNA", "event": "CapStatusNotify"},
                  {"after": "TerminatePlay_Sync", "delay_ms": 7, "event": "GoodSensNotify"})");
    EXPECT_EQ(1, openSession());
    EXPECT_EQ(2, openSession());
    EXPECT_EQ(120, now());
    EXPECT_EQ(0, send(command_id::kControlLNA, 1, 1));
    const TimedEvent first = await(event_id::kCapStatusNotify);
    EXPECT_EQ(120, first.moment);
    EXPECT_EQ((Bytes{1, 0, 0, 0}), first.event.bytes);
    EXPECT_EQ(125, await(event_id::kControlLNAReply).moment);

    EXPECT_EQ(0, send(command_id::kControlLNA, 2, 1));
    EXPECT_EQ((Bytes{2, 0, 0, 0}), await(event_id::kCapStatusNotify).event.bytes);
    EXPECT_EQ(0, awaitCaStatus(165, 2));

    EXPECT_EQ(kNotNow, exchangeResult(command_id::kTerminatePlay_Sync, 2));
    const TimedEvent last = await(event_id::kGoodSensNotify);
    EXPECT_EQ(172, last.moment);
    EXPECT_EQ(2, last.event.as<TS_SENS_NOTIFY>().handle);
    EXPECT_FALSE(service().advance());
}

TEST_F(ScriptedEventTest, IsAboutTheSessionThatACommandOpens) {
    sendEvents(R"({"after": "Create", "event": "CaInfoNotify"})");
    EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
    EXPECT_EQ(0, awaitCaStatus(0, 1));
    EXPECT_EQ(1, await(event_id::kCreateReply).event.as<TS_COMMON_REPLY>().handle);
    EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
    EXPECT_EQ(0, awaitCaStatus(60, 2));
}

TEST_F(ScriptedEventTest, ComesAlsoAfterACommandThatIsRefused) {
    follow(R"({"version": 1,
               "commands": [{"command": "ControlLNA", "send_result": 3},
                            {"command": "Create", "result": 4}],
               "events": [{"after": "ControlLNA", "event": "CaInfoNotify"},
                          {"after": "Create", "event": "CaInfoNotify"}]})");
    EXPECT_EQ(3, send(command_id::kControlLNA, 77, 1));
    EXPECT_EQ(0, awaitCaStatus(0, 77));
    EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
    EXPECT_EQ(0, awaitCaStatus(0, 0));
}

TEST_F(ScriptedEventTest, NamesTheGivenSession) {
    sendEvents(
        R"({"at_ms": 100, "event": "CaInfoNotify", "fields": {"handle": 9}},
           {"at_ms": 101, "event": "CapStatusNotify", "bytes": {"hex": "0708"}},
           {"at_ms": 102, "event": "CapStatusNotify", "bytes": {"offset": 2, "hex": "0708"}})");
    EXPECT_EQ(1, openSession());
    EXPECT_EQ(0, awaitCaStatus(100, 9));
    EXPECT_EQ((Bytes{7, 8, 0, 0}), await(event_id::kCapStatusNotify).event.bytes);
    EXPECT_EQ((Bytes{1, 0, 7, 8}), await(event_id::kCapStatusNotify).event.bytes);
}

TEST_F(ScriptedEventTest, MayBeUnknown) {
    sendEvents(R"({"at_ms": 100, "event": 305419896, "bytes": {"offset": 1, "hex": "01 02"}},
                  {"at_ms": 101, "event": 4294967295},
                  {"at_ms": 102, "event": 268435590})");
    EXPECT_EQ(1, openSession());
    EXPECT_EQ((Bytes{0, 1, 2}), await(0x12345678).event.bytes);
    EXPECT_EQ((Bytes{}), await(-1).event.bytes);
    EXPECT_EQ((Bytes{1, 0, 0, 0}), await(event_id::kCapStatusNotify).event.bytes);
}

TEST_F(ScriptedEventTest, MayBeTooShortOrTooLong) {
    sendEvents(R"({"at_ms": 100, "event": "CapStatusNotify", "size": 3},
                  {"at_ms": 100, "event": "CapStatusNotify", "size": 1},
                  {"at_ms": 100, "event": "CapStatusNotify", "size": 0},
                  {"at_ms": 100, "event": "CapStatusNotify", "size": 6,
                   "fields": {"change_status": 5}},
                  {"at_ms": 100, "event": "CapStatusNotify", "size": 65536})");
    EXPECT_EQ(1, openSession());
    EXPECT_EQ((Bytes{1, 0, 0}), await(event_id::kCapStatusNotify).event.bytes);
    EXPECT_EQ((Bytes{0}), await(event_id::kCapStatusNotify).event.bytes);
    EXPECT_EQ((Bytes{}), await(event_id::kCapStatusNotify).event.bytes);
    EXPECT_EQ((Bytes{1, 0, 5, 0, 0, 0}), await(event_id::kCapStatusNotify).event.bytes);
    EXPECT_EQ(65536U, await(event_id::kCapStatusNotify).event.bytes.size());
}

TEST_F(ScriptedEventTest, ChangesNothingInTheService) {
    sendEvents(R"({"at_ms": 70, "event": "ReleaseReply"})");
    EXPECT_EQ(1, openSession());
    EXPECT_EQ(1, await(event_id::kReleaseReply).event.as<TS_COMMON_REPLY>().handle);
    release(1);
}

TEST_F(ScriptedEventTest, CommandsGoUnansweredFromTheOneThatStops) {
    stopWith(R"({"from": "StartScan"})");
    const int handle = openReceiving();
    EXPECT_EQ(0, send(command_id::kControlLNA, handle, 1));
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    EXPECT_EQ(0, send(command_id::kControlLNA, handle, 1));
    EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
    TS_KEY_EVENT_REQ key{};
    EXPECT_EQ(0, send(command_id::kBMLKeyEventNotify, key));
    TS_COMMON_SYNC_REPLY reply{};
    EXPECT_EQ(1, exchangeInto(reply, command_id::kRelease_Sync,
                              TS_HANDLE_REQ{static_cast<uint16_t>(handle)}));
    // Neither what had begun nor anything new is sent; then no work is left.
    EXPECT_TRUE(until(100000).empty());
    EXPECT_FALSE(service().advance());
}

TEST_F(ScriptedEventTest, StopsWithTheNthAndWithAResult) {
    stopWith(R"({"from": "ControlLNA", "nth": 2, "send_result": -6})");
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kControlLNA, handle, 1));
    EXPECT_EQ(kDone, awaitResult(event_id::kControlLNAReply));
    EXPECT_EQ(-6, send(command_id::kControlLNA, handle, 1));
    EXPECT_EQ(-6, send(command_id::kControlLNA, handle, 1));
    TS_COMMON_SYNC_REPLY reply{};
    EXPECT_EQ(-6, exchangeInto(reply, command_id::kRelease_Sync,
                               TS_HANDLE_REQ{static_cast<uint16_t>(handle)}));
    EXPECT_FALSE(service().advance());
}

TEST_F(ScriptedEventTest, StopsWithASynchronousCommand) {
    stopWith(R"({"from": "CancelScan_Sync"})");
    const int handle = openSession();
    EXPECT_EQ(kNotNow, exchangeResult(command_id::kTerminatePlay_Sync, handle));
    TS_COMMON_SYNC_REPLY reply{};
    EXPECT_EQ(1, exchangeInto(reply, command_id::kCancelScan_Sync,
                              TS_HANDLE_REQ{static_cast<uint16_t>(handle)}));
    EXPECT_EQ(0, send(command_id::kControlLNA, handle, 1));
    EXPECT_FALSE(service().advance());
}

TEST_F(ScriptedEventTest, StopsAtATime) {
    stopWith(R"({"at_ms": 200})");
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    // The reply at 65 ms, then a channel every 8 ms: 65 + 16 * 8 = 193.
    const std::vector<TimedEvent> events = until(100000);
    EXPECT_EQ(17U, countOf(events, event_id::kScanNotify));
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(193, events.back().moment);
    EXPECT_EQ(0, send(command_id::kControlLNA, handle, 1));
    EXPECT_FALSE(service().advance());
}

TEST_F(ScriptedEventTest, StopsWhileASynchronousCommandWaits) {
    follow(R"({"version": 1, "stop": {"at_ms": 200},
               "commands": [{"command": "Release_Sync", "delay_ms": 1000}]})");
    const int handle = openSession();
    TS_COMMON_SYNC_REPLY reply{};
    const TS_HANDLE_REQ request{static_cast<uint16_t>(handle)};
    EXPECT_EQ(1, exchangeInto(reply, command_id::kRelease_Sync, request));
    EXPECT_EQ(1060, now());
    EXPECT_EQ(1, exchangeInto(reply, command_id::kRelease_Sync, request));
    EXPECT_EQ(1060, now()) << "a stopped service does not delay a command";
}

TEST_F(ScriptedEventTest, IsNeitherSentNorModifiedAfterTheStop) {
    follow(R"({"version": 1, "stop": {"from": "ControlLNA", "send_result": 2},
               "commands": [{"command": "ControlLNA", "send_result": 3}],
               "events": [{"after": "ControlLNA", "event": "CaInfoNotify"},
                          {"at_ms": 5000, "event": "CaInfoNotify"}]})");
    const int handle = openSession();
    EXPECT_EQ(2, send(command_id::kControlLNA, handle, 1));
    EXPECT_TRUE(until(10000).empty());
}

} // namespace
