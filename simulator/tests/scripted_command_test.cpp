// Rules of a script for commands.
#include "stepped_client.h"

#include "records/status_records.h"
#include "script/script_text.h"

namespace {

using namespace simulator;

class ScriptedCommandTest : public SteppedTest {
protected:
    /// Connects a simulator to libDtv with these rules for commands.
    void rule(const std::string& rules) {
        follow(R"({"version": 1, "commands": [)" + rules + "]}");
    }

    /// The result of a command to the tuner's amplifier, which nothing refuses.
    int tryOut(int handle) {
        EXPECT_EQ(0, send(command_id::kControlLNA, handle, 1));
        return awaitResult(event_id::kControlLNAReply);
    }

    /// Sends a synchronous command that is not answered; returns what the sender got.
    int exchangeRefused(int command_id, int handle) {
        TS_COMMON_SYNC_REPLY reply{77, {}, 78};
        const int sent =
            exchangeInto(reply, command_id, TS_HANDLE_REQ{static_cast<uint16_t>(handle)});
        EXPECT_EQ(77, reply.handle) << "nothing is written";
        EXPECT_EQ(78, reply.return_value);
        return sent;
    }
};

TEST_F(ScriptedCommandTest, ChangesNothingWithoutARule) {
    EXPECT_EQ(1, openReceiving());
    EXPECT_EQ(185, now());
    EXPECT_EQ(0, send(command_id::kControlLNA, 1, 1));
    EXPECT_EQ(190, await(event_id::kControlLNAReply).moment);
}

TEST_F(ScriptedCommandTest, DelaysAReply) {
    rule(R"({"command": "SelectChannel", "delay_ms": 700})");
    const int handle = openSession();
    EXPECT_EQ(60, now());
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
    EXPECT_EQ(0, send(command_id::kControlLNA, handle, 1));
    const TimedEvent reply = await(event_id::kSelectChannelReply);
    EXPECT_EQ(885, reply.moment);
    EXPECT_EQ(kDone, reply.event.as<TS_SERVICE_REPLY>().result);
    // Replies keep the order of their commands.
    EXPECT_EQ(885, await(event_id::kControlLNAReply).moment);
    EXPECT_EQ(895, await(event_id::kGoodSensNotify).moment);
}

TEST_F(ScriptedCommandTest, DelaysCreation) {
    rule(R"({"command": "Create", "delay_ms": 3600000})");
    EXPECT_EQ(1, openSession());
    EXPECT_EQ(3600060, now());
}

TEST_F(ScriptedCommandTest, GivesAResultInsteadOfCarryingOut) {
    rule(R"({"command": "StartScan", "result": 7, "delay_ms": 40})");
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    const TimedEvent reply = await(event_id::kStartScanReply);
    EXPECT_EQ(105, reply.moment);
    EXPECT_EQ(7, reply.event.as<TS_START_SCAN_REPLY>().result);
    EXPECT_EQ(handle, reply.event.as<TS_START_SCAN_REPLY>().handle);
    EXPECT_EQ(0, reply.event.as<TS_START_SCAN_REPLY>().channel_num);
    EXPECT_TRUE(until(10000).empty());
    EXPECT_EQ(0, send(command_id::kCancelScan, handle));
    EXPECT_EQ(kNotNow, awaitResult(event_id::kTerminateScanNotify)) << "nothing is scanned";
}

TEST_F(ScriptedCommandTest, GivesAResultAboutAnUnknownSession) {
    rule(R"({"command": "PausePlay", "result": 0})");
    EXPECT_EQ(0, send(command_id::kPausePlay, 900));
    const auto reply = await(event_id::kPausePlayReply).event.as<TS_COMMON_REPLY>();
    EXPECT_EQ(900, reply.handle);
    EXPECT_EQ(kDone, reply.result);
}

TEST_F(ScriptedCommandTest, GivesAResultOfOneByte) {
    rule(R"({"command": "BMLStartTvLinkReq", "result": 200})");
    TS_START_TV_LINK_REQ link{};
    link.handle = 1;
    EXPECT_EQ(0, send(command_id::kBMLStartTvLinkReq, link));
    EXPECT_EQ(200,
              await(event_id::kBmlStartTvlinkReply).event.as<TS_BML_START_TVLINK_REPLY>().result);
}

TEST_F(ScriptedCommandTest, OpensNoSessionWhenItGivesAResult) {
    rule(R"({"command": "Create", "nth": 1, "result": 0})");
    EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
    const auto reply = await(event_id::kCreateReply).event.as<TS_COMMON_REPLY>();
    EXPECT_EQ(0, reply.handle);
    EXPECT_EQ(0, reply.result);
    EXPECT_EQ(1, openSession()) << "it is the first";
}

TEST_F(ScriptedCommandTest, ClosesNoSessionWhenItGivesAResult) {
    rule(R"({"command": "Release", "nth": 1, "result": 0},
            {"command": "Release_Sync", "nth": 1, "result": 0})");
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kRelease, handle));
    EXPECT_EQ(0, awaitResult(event_id::kReleaseReply));
    EXPECT_EQ(kDone, tryOut(handle));
    EXPECT_EQ(0, exchangeResult(command_id::kRelease_Sync, handle));
    EXPECT_EQ(kDone, tryOut(handle));
    EXPECT_EQ(0, exchangeResult(command_id::kRelease_Sync, handle));
    EXPECT_EQ(kUnknownHandle, tryOut(handle));
}

TEST_F(ScriptedCommandTest, GivesAResultToASynchronousCommand) {
    rule(R"({"command": "TerminateRec_Sync", "result": -3})");
    TS_TERMINATE_REC_SYNC_REPLY reply{};
    TS_TERMINATE_REC_REQ request{};
    request.handle = 5;
    EXPECT_EQ(0, exchangeInto(reply, command_id::kTerminateRec_Sync, request));
    EXPECT_EQ(5, reply.handle);
    EXPECT_EQ(-3, reply.result);
    EXPECT_EQ(0, reply.program_no);
}

TEST_F(ScriptedCommandTest, DoesNotTakeACommand) {
    rule(R"({"command": "StartScan", "send_result": -5},
            {"command": "Release_Sync", "send_result": 9},
            {"command": "BMLKeyEventNotify", "send_result": 4})");
    const int handle = openSession();
    EXPECT_EQ(-5, send(command_id::kStartScan, handle));
    EXPECT_EQ(9, exchangeRefused(command_id::kRelease_Sync, handle));
    TS_KEY_EVENT_REQ key{};
    key.handle = static_cast<uint16_t>(handle);
    EXPECT_EQ(4, send(command_id::kBMLKeyEventNotify, key));
    EXPECT_TRUE(until(10000).empty());
    EXPECT_EQ(kDone, tryOut(handle)) << "nothing was carried out";
}

TEST_F(ScriptedCommandTest, TakesACommandWithoutAnswering) {
    rule(R"({"command": "StartScan", "answer": false},
            {"command": "Release_Sync", "answer": false},
            {"command": "BMLKeyEventNotify", "answer": false})");
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    EXPECT_EQ(1, exchangeRefused(command_id::kRelease_Sync, handle));
    TS_KEY_EVENT_REQ key{};
    key.handle = static_cast<uint16_t>(handle);
    EXPECT_EQ(0, send(command_id::kBMLKeyEventNotify, key)) << "no browser runs, but it is taken";
    EXPECT_TRUE(until(10000).empty());
    EXPECT_EQ(kDone, tryOut(handle)) << "nothing was carried out";
    EXPECT_EQ(0, send(command_id::kCancelScan, handle));
    EXPECT_EQ(kNotNow, awaitResult(event_id::kTerminateScanNotify));
}

TEST_F(ScriptedCommandTest, FollowsTheFirstRuleThatFits) {
    rule(R"({"command": "ControlLNA", "nth": 2, "result": 5},
            {"command": "ControlLNA", "nth": 4},
            {"command": "ControlLNA", "result": 6},
            {"command": "ControlLNA", "nth": 3, "result": 7})");
    const int handle = openSession();
    EXPECT_EQ(6, tryOut(handle));
    EXPECT_EQ(5, tryOut(handle));
    EXPECT_EQ(6, tryOut(handle));
    EXPECT_EQ(kDone, tryOut(handle)) << "a rule without an effect counts too";
    EXPECT_EQ(6, tryOut(handle));
    EXPECT_EQ(5U, service().arrivals(command_id::kControlLNA));
}

TEST_F(ScriptedCommandTest, CountsASynchronousCommandByItself) {
    rule(R"({"command": "TerminatePlay", "nth": 1, "result": 5},
            {"command": "TerminatePlay_Sync", "nth": 2, "result": 6})");
    const int handle = openSession();
    EXPECT_EQ(kNotNow, exchangeResult(command_id::kTerminatePlay_Sync, handle));
    EXPECT_EQ(0, send(command_id::kTerminatePlay, handle));
    EXPECT_EQ(5, awaitResult(event_id::kTerminatePlayReply));
    EXPECT_EQ(6, exchangeResult(command_id::kTerminatePlay_Sync, handle));
    EXPECT_EQ(1U, service().arrivals(command_id::kTerminatePlay));
    EXPECT_EQ(2U, service().arrivals(command_id::kTerminatePlay_Sync));
}

TEST_F(ScriptedCommandTest, CountsNoMessageOfTheWrongSize) {
    rule(R"({"command": "ControlLNA", "nth": 1, "result": 5})");
    const int handle = openSession();
    EXPECT_EQ(1, send(command_id::kControlLNA, handle));
    EXPECT_EQ(0U, service().arrivals(command_id::kControlLNA));
    EXPECT_EQ(5, tryOut(handle));
}

TEST_F(ScriptedCommandTest, DelaysASynchronousCommand) {
    rule(R"({"command": "TerminatePlay_Sync", "delay_ms": 1500},
            {"command": "Release_Sync", "delay_ms": 100, "answer": false},
            {"command": "CancelScan_Sync", "delay_ms": 10, "send_result": 8})");
    const int handle = openReceiving();
    EXPECT_EQ(185, now());
    EXPECT_EQ(kNotNow, exchangeResult(command_id::kTerminatePlay_Sync, handle));
    EXPECT_EQ(1685, now());
    // Events of that time were delivered before the answer.
    std::vector<int> arrived;
    while (const std::optional<Event> event = listener().next(std::chrono::milliseconds{0})) {
        arrived.push_back(event->id);
    }
    EXPECT_EQ(
        (std::vector<int>{0x1000008b, 0x1000008f, 0x10000090, 0x10000091, 0x10000092, 0x10000094,
                          0x10000095, 0x10000088, 0x10000096, 0x1000008e, 0x1000008f}),
        arrived);
    EXPECT_EQ(1, exchangeRefused(command_id::kRelease_Sync, handle));
    EXPECT_EQ(1785, now());
    EXPECT_EQ(8, exchangeRefused(command_id::kCancelScan_Sync, handle));
    EXPECT_EQ(1795, now());
}

TEST_F(ScriptedCommandTest, DelaysTheDeliveringThread) {
    rule(R"({"command": "TerminatePlay_Sync", "delay_ms": 100})");
    const int handle = openSession();
    int answer = 77;
    listener().setCallback([&](const Event& event) {
        if (event.id == event_id::kStartScanReply) {
            answer = exchangeResult(command_id::kTerminatePlay_Sync, handle);
        }
    });
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    // The scan continues while the callback waits, and its events are delivered when the callback
    // has returned.
    EXPECT_EQ(165, await(event_id::kStartScanReply).moment);
    EXPECT_EQ(kNotNow, answer);
    EXPECT_EQ(13U, countOf(until(165), event_id::kScanNotify));
    EXPECT_GT(std::chrono::seconds{4}, std::chrono::steady_clock::now() - begun)
        << "it waits for itself";
}

TEST_F(ScriptedCommandTest, DelaysASynchronousCommandInScaledTime) {
    simulator::Options fast = options(); // a hundred times as fast as in reality
    fast.script = scriptOf(R"({"version": 1, "commands": [
        {"command": "TerminatePlay_Sync", "delay_ms": 5000}]})");
    start(std::move(fast));
    const int handle = create();
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(kNotNow, exchange(command_id::kTerminatePlay_Sync, handle).return_value);
    EXPECT_LE(std::chrono::milliseconds{50}, std::chrono::steady_clock::now() - begun);
}

TEST_F(ScriptedCommandTest, AnswersByTheStateAtTheEndOfTheDelay) {
    follow(R"({"version": 1,
               "commands": [{"command": "TerminatePlay_Sync", "delay_ms": 100}],
               "events": [{"at_ms": 70, "event": "CaInfoNotify"}]})");
    const int handle = openSession();
    listener().setCallback([&](const Event& event) {
        if (event.id == event_id::kCaInfoNotify) {
            EXPECT_EQ(0, send(command_id::kRelease, handle));
        }
    });
    EXPECT_EQ(kUnknownHandle, exchangeResult(command_id::kTerminatePlay_Sync, handle));
    const TimedEvent released = await(event_id::kReleaseReply);
    EXPECT_EQ(kDone, released.event.as<TS_COMMON_REPLY>().result);
}

} // namespace
