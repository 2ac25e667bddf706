// The commands that wait for the service's answer, and the objects made from it.
#include "commands/command_test.h"

namespace {

using namespace commands;
using namespace harness;

struct Synchronous {
    const char* name; ///< the Java name without "DtvSvLib_"
    const char* log_name;
    std::vector<Value> arguments;
    const char* id;
    const char* record;
    const char* send_line;
    const char* reply_class; ///< without "BG_TS_DTVSVLIB_"
    const char* row;         ///< of its constructor, and its class
};

const std::vector<Synchronous>& plainCommands() {
    static const std::vector<Synchronous> rows = {
        {"Release_Sync",
         "dtvSvLibRelease_Sync",
         {3},
         "10000038",
         "03 00",
         "SEND, dtvsv_handle = 3",
         "RELEASE_REPLY_SYNC_INFO",
         "209 128"},
        {"CancelScan_Sync",
         "dtvSvLibCancelScan_Sync",
         {3},
         "10000039",
         "03 00",
         "SEND, dtvsv_handle = 3",
         "CANCEL_SCAN_SYNC_INFO",
         "210 129"},
        {"TerminateBroadcastReceiving_Sync",
         "dtvSvLibTerminateBroadcastReceiving_Sync",
         {3},
         "1000003a",
         "03 00",
         "SEND, dtvsv_handle = 3",
         "TERMINATE_BROADCAST_RECEIVING_REPLY_SYNC_INFO",
         "211 130"},
        {"ControlDecodeScreen_Sync",
         "dtvSvLibControlDecodeScreen_Sync",
         {3, 1},
         "1000003b",
         "03 00 01 00",
         "SEND, dtvsv_handle = 3, onoff = 1",
         "CONTROL_DECODE_SCREEN_SYNC_INFO",
         "212 131"},
        {"ControlDecodeAudio_Sync",
         "dtvSvLibControlDecodeAudio_Sync",
         {3, 1},
         "1000003c",
         "03 00 01 00",
         "SEND, TERMINATE_PLAY : dtvsv_handle = 3",
         "CONTROL_DECODE_AUDIO_SYNC_INFO",
         "213 132"},
        {"BMLEndTvLink_Sync",
         "dtvSvLibBMLEndTvLinkReq_Sync",
         {3},
         "1000003f",
         "03 00",
         "SEND, dtvsv_handle = 3",
         "END_TVLINK_SYNC_INFO",
         "216 135"},
        {"TerminatePlay_Sync",
         "dtvSvLibTerminatePlay_Sync",
         {3},
         "10000041",
         "03 00",
         "SEND, TERMINATE_PLAY : dtvsv_handle = 3",
         "TERMINATE_PLAY_REPLY_SYNC_INFO",
         "218 137"},
    };
    return rows;
}

class PlainSynchronous : public CommandTest, public testing::WithParamInterface<int> {
protected:
    const Synchronous& row = plainCommands()[static_cast<size_t>(GetParam())];

    std::string run() { return CommandTest::run(row.name, row.arguments); }
    std::string object(const std::string& arguments) const {
        return std::string("BG_TS_DTVSVLIB_") + row.reply_class + "(" + arguments + ")";
    }
    /// The lines up to the send, and what was sent.
    std::string begin() const { return std::string("START |hdl = 3\nDEBUG |") + row.send_line; }
    std::string command() const { return std::string(row.id) + " sync: " + row.record; }
    std::string id() const { return std::string("0x") + row.id; }
    std::string build() const { return std::string("NEW ") + row.row; }
    std::string fail() const { return std::string("NEWFAIL ") + row.row; }
    std::string withoutReply() const {
        return "START makeComReplyObjSync|\n"
               "START makeComReplyObjSync|make param NG message_id = " +
               id() + "\n" + build() + "\nEND makeComReplyObjSync|\n";
    }
};

INSTANTIATE_TEST_SUITE_P(, PlainSynchronous, testing::Range(0, 7), [](const auto& info) {
    return std::string(plainCommands()[static_cast<size_t>(info.param)].name);
});

TEST_P(PlainSynchronous, TheAnswerBecomesTheObject) {
    service->setReply(fromHex("0900 7766 8877 6655"));
    EXPECT_EQ(run(), object("1432778632, 9"));
    EXPECT_EQ(sent(), command());
    EXPECT_LINES(row.log_name, begin() + R"(
        DEBUG |RECV, reply_size = 8
        DEBUG |RECV, reply_data.handle = 30600
        DEBUG |RECV, reply_data.return_value = 1719074825
        END |ret = 0
        START makeComReplyObjSync|
        START makeComSubReplyObjSync|message_id = )" +
                                   id() + R"(
        DEBUG makeComSubReplyObjSync|retvalue = 0
        DEBUG makeComSubReplyObjSync|com_data->handle = 9
        DEBUG makeComSubReplyObjSync|com_data->return_value = 1432778632
        )" + build() + R"(
        END makeComSubReplyObjSync|
        END makeComReplyObjSync|)");
}

TEST_P(PlainSynchronous, NoAnswerGivesAbort) {
    EXPECT_EQ(run(), object("16, 3"));
    EXPECT_EQ(sent(), command());
    EXPECT_LINES(row.log_name, begin() + R"(
        DEBUG |RECV, reply_size = 0
        DEBUG |RECV, reply_data.handle = 0
        DEBUG |RECV, reply_data.return_value = 0
        END |return DTVSVLIB_RESULT_ABORT_NG
        )" + withoutReply());
}

TEST_P(PlainSynchronous, FailedSendGivesOne) {
    service->setResult(-1);
    service->setReply(fromHex("0900 0000 0500 0000"));
    EXPECT_EQ(run(), object("1, 3"));
    EXPECT_EQ(sent(), command());
    EXPECT_LINES(row.log_name, begin() + "\n" + withoutReply() + "END |ret = -1");
    service->setResult(7);
    EXPECT_EQ(run(), object("1, 3"));
    EXPECT_LINES(row.log_name, begin() + "\n" + withoutReply() + "END |ret = 7");
}

TEST_P(PlainSynchronous, AnAnswerThatCannotBeBuiltGivesZero) {
    service->setReply(fromHex("0900 0000 0500 0000"));
    FailJni fail_once("NewObjectV", 0, FailJni::Leaves::nothing);
    EXPECT_EQ(run(), object("0, 3"));
    EXPECT_EQ(sent(), command());
    EXPECT_LINES(row.log_name, begin() + R"(
        DEBUG |RECV, reply_size = 8
        DEBUG |RECV, reply_data.handle = 5
        DEBUG |RECV, reply_data.return_value = 9
        END |ret = 0
        START makeComReplyObjSync|
        START makeComSubReplyObjSync|message_id = )" +
                                   id() + R"(
        DEBUG makeComSubReplyObjSync|retvalue = 0
        DEBUG makeComSubReplyObjSync|com_data->handle = 9
        DEBUG makeComSubReplyObjSync|com_data->return_value = 5
        )" + fail() + R"(
        DEBUG makeComSubReplyObjSync|makeComSubReplyObjSync NG, com ret_call = 1
        START makeComReplyObjSync|make param NG message_id = )" +
                                   id() + "\n" + build() + "\nEND makeComReplyObjSync|");
}

TEST_P(PlainSynchronous, AConstructorThatThrowsEndsTheAnswer) {
    service->setReply(fromHex("0900 0000 0500 0000"));
    FailJni fail_once("NewObjectV");
    EXPECT_EQ(run(), outOfMemory);
    EXPECT_EQ(sent(), command());
    EXPECT_LINES(row.log_name, begin() + R"(
        DEBUG |RECV, reply_size = 8
        DEBUG |RECV, reply_data.handle = 5
        DEBUG |RECV, reply_data.return_value = 9
        END |ret = 0
        START makeComReplyObjSync|
        START makeComSubReplyObjSync|message_id = )" +
                                   id() + R"(
        DEBUG makeComSubReplyObjSync|retvalue = 0
        DEBUG makeComSubReplyObjSync|com_data->handle = 9
        DEBUG makeComSubReplyObjSync|com_data->return_value = 5
        )" + fail());
}

TEST_P(PlainSynchronous, AConstructorThatThrowsAfterAFailedSend) {
    service->setResult(1);
    FailJni fail_once("NewObjectV");
    EXPECT_EQ(run(), outOfMemory);
    EXPECT_EQ(sent(), command());
    EXPECT_LINES(row.log_name, begin() + R"(
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = )" +
                                   id() + "\n" + fail());
}

TEST_P(PlainSynchronous, AnObjectThatCannotBeBuiltIsNull) {
    service->setResult(1);
    FailJni fail_once("NewObjectV", 0, FailJni::Leaves::nothing);
    EXPECT_EQ(run(), "null");
    EXPECT_EQ(sent(), command());
    EXPECT_LINES(row.log_name, begin() + R"(
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = )" +
                                   id() + "\n" + fail() + R"(
        END makeComReplyObjSync|makeComReplyObjSync CallMethod NG, ret_call = 1
        END |ret = 1)");
}

/// What counts as an empty answer: no bytes and nothing where the handle is looked for.
TEST_P(PlainSynchronous, AnswersOfOddSizes) {
    struct Odd {
        const char* bytes;
        std::optional<int> size;
        const char* object;
    };
    const Odd answers[] = {
        {"0900 0000 0100 0000", 0, "1, 9"},             // no size, but a handle is there
        {"0900 0000 0000 0100", 0, "16, 3"},            // none where it is looked for
        {"0900 0000 0100 0000", std::nullopt, "1, 9"},  // a size that was never written
        {"0900 0000 0000 0100", std::nullopt, "16, 3"}, //
        {"0000 0000 0000 0000", 0, "16, 3"},            //
        {"0000 0000 0000 0000", 8, "0, 0"},             // a size makes it an answer
        {"0000 0000 0000 0000", 1, "0, 0"},             //
        {"0000 0000 0000 0000", -1, "0, 0"},            //
        {"0900 0000", 4, "0, 9"},                       // what was not sent is zero
        {"ffff 0000 feff ffff", 8, "-2, 65535"},        // the handle has no sign, the value has
    };
    for (const Odd& odd : answers) {
        SCOPED_TRACE(odd.bytes);
        service->setReply(fromHex(odd.bytes), odd.size);
        EXPECT_EQ(run(), object(odd.object));
        EXPECT_EQ(sent(), command());
    }
}

TEST_P(PlainSynchronous, ValuesOfTheAnswerInTheLines) {
    service->setReply(fromHex("feff ffff fdff ffff"), 2147483647);
    EXPECT_EQ(run(), object("-3, 65534"));
    std::vector<TraceLine> lines = log->takeOf(row.log_name);
    EXPECT_TRACE(lines, nativeTrace(row.log_name, begin() + R"(
        DEBUG |RECV, reply_size = 2147483647
        DEBUG |RECV, reply_data.handle = 65533
        DEBUG |RECV, reply_data.return_value = -2
        END |ret = 0)"));
}

TEST_P(PlainSynchronous, TheHandleIsCutTo16Bits) {
    std::vector<Value> arguments = row.arguments;
    arguments[0] = 0x12340003;
    EXPECT_EQ(CommandTest::run(row.name, arguments), object("16, 3"));
    EXPECT_EQ(sent(), command());
    std::vector<TraceLine> lines = log->takeOf(row.log_name);
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0].message, "hdl = 305397763");
    EXPECT_EQ(lines[1].message, row.send_line);
}

class DecodeSynchronous : public CommandTest, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(, DecodeSynchronous,
                         testing::Values("ControlDecodeScreen_Sync", "ControlDecodeAudio_Sync"));

TEST_P(DecodeSynchronous, RefusesOnoffAboveOne) {
    std::string native = std::string("dtvSvLib") + GetParam();
    EXPECT_EQ(run(GetParam(), {3, 2}), "PARAM_NG");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES(native, R"(
        START |hdl = 3
        RESULT 5
        DEBUG |onoff too large : 2, ret = 5)");
    EXPECT_EQ(run(GetParam(), {3, 2147483647}), "PARAM_NG");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES(native, R"(
        START |hdl = 3
        RESULT 5
        DEBUG |onoff too large : 2147483647, ret = 5)");
}

TEST_F(CommandTest, OnoffOfDecodeScreenPassesWhenNegative) {
    EXPECT_EQ(run("ControlDecodeScreen_Sync", {3, -2}),
              "BG_TS_DTVSVLIB_CONTROL_DECODE_SCREEN_SYNC_INFO(16, 3)");
    EXPECT_EQ(sent(), "1000003b sync: 03 00 fe 00");
    EXPECT_EQ(log->take()[1].message, "SEND, dtvsv_handle = 3, onoff = 254");
    EXPECT_EQ(run("ControlDecodeScreen_Sync", {3, 0}),
              "BG_TS_DTVSVLIB_CONTROL_DECODE_SCREEN_SYNC_INFO(16, 3)");
    EXPECT_EQ(sent(), "1000003b sync: 03 00 00 00");
}

TEST_F(CommandTest, OnoffOfDecodeAudioPassesWhenNegative) {
    EXPECT_EQ(run("ControlDecodeAudio_Sync", {3, -2147483647 - 1}),
              "BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO(16, 3)");
    EXPECT_EQ(sent(), "1000003c sync: 03 00 00 00");
    EXPECT_EQ(run("ControlDecodeAudio_Sync", {3, -1}),
              "BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO(16, 3)");
    EXPECT_EQ(sent(), "1000003c sync: 03 00 ff 00");
}

} // namespace
