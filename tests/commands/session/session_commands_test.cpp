// Opening and closing a session, the scan, and the commands with only a session handle.
#include "commands/command_rows.h"

#include <thread>

namespace {

using namespace harness;
using namespace commands;

const Sent creations[] = {
    Sent("DtvSvLib_Create", {4, 999}, "dtvSvLibCreate", "",
         {"SEND, start_type = 4 max_delay_time = 999"}, "10000000: 04 00 e7 03"),
    Sent("DtvSvLib_Create", {0, 0}, "dtvSvLibCreate", "",
         {"SEND, start_type = 0 max_delay_time = 0"}, "10000000: 00 00 00 00"),
    Sent("DtvSvLib_Create", {-1, -5}, "dtvSvLibCreate", "",
         {"SEND, start_type = 255 max_delay_time = 65531"}, "10000000: ff 00 fb ff"),
    Sent("DtvSvLib_Create", {-254, -65279}, "dtvSvLibCreate", "",
         {"SEND, start_type = 2 max_delay_time = 257"}, "10000000: 02 00 01 01"),
    Sent("DtvSvLib_Create", {lowest, lowest}, "dtvSvLibCreate", "",
         {"SEND, start_type = 0 max_delay_time = 0"}, "10000000: 00 00 00 00")};
INSTANTIATE_TEST_SUITE_P(Create, SentCommands, testing::ValuesIn(creations), rowName<Sent>);

// When both are too large, the message names the first.
const Refused refused_creations[] = {Refused("DtvSvLib_Create", {5, 0}, "dtvSvLibCreate", "",
                                             "start_type is too large : 5, ret = 5"),
                                     Refused("DtvSvLib_Create", {256, 65536}, "dtvSvLibCreate", "",
                                             "start_type is too large : 256, ret = 5"),
                                     Refused("DtvSvLib_Create", {highest, 0}, "dtvSvLibCreate", "",
                                             "start_type is too large : 2147483647, ret = 5"),
                                     Refused("DtvSvLib_Create", {0, 1000}, "dtvSvLibCreate", "",
                                             "max_delay_time is too large : 1000, ret = 5"),
                                     Refused("DtvSvLib_Create", {-1, 65536}, "dtvSvLibCreate", "",
                                             "max_delay_time is too large : 65536, ret = 5"),
                                     Refused("DtvSvLib_Create", {4, highest}, "dtvSvLibCreate", "",
                                             "max_delay_time is too large : 2147483647, ret = 5")};
INSTANTIATE_TEST_SUITE_P(Create, RefusedCommands, testing::ValuesIn(refused_creations),
                         rowName<Refused>);

const Sent handles[] = {Sent("DtvSvLib_Release", {3}, "dtvSvLibRelease", "hdl = 3",
                             {"SEND, dtvsv_handle = 3"}, "10000001: 03 00"),
                        Sent("DtvSvLib_StartScan", {4660}, "dtvSvLibStartScan", "hdl = 4660",
                             {"SEND, dtvsv_handle = 4660"}, "10000002: 34 12"),
                        Sent("DtvSvLib_CancelScan", {65535}, "dtvSvLibCancelScan", "hdl = 65535",
                             {"SEND, dtvsv_handle = 65535"}, "10000003: ff ff"),
                        Sent("DtvSvLib_TerminateBroadcastReceiving", {0},
                             "dtvSvLibTerminateBroadcastReceiving", "hdl = 0",
                             {"SEND, dtvsv_handle = 0"}, "10000005: 00 00"),
                        Sent("DtvSvLib_CancelSearchChannel", {258}, "dtvSvLibCancelSearchChannel",
                             "hdl = 258", {"SEND, dtvsv_handle = 258"}, "10000009: 02 01")};
INSTANTIATE_TEST_SUITE_P(Handle, SentCommands, testing::ValuesIn(handles), rowName<Sent>);

const Sent wide_handles[] = {
    Sent("DtvSvLib_Release", {65536}, "dtvSvLibRelease", "hdl = 65536", {"SEND, dtvsv_handle = 0"},
         "10000001: 00 00"),
    Sent("DtvSvLib_StartScan", {65539}, "dtvSvLibStartScan", "hdl = 65539",
         {"SEND, dtvsv_handle = 3"}, "10000002: 03 00"),
    Sent("DtvSvLib_CancelScan", {-1}, "dtvSvLibCancelScan", "hdl = -1",
         {"SEND, dtvsv_handle = 65535"}, "10000003: ff ff"),
    Sent("DtvSvLib_TerminateBroadcastReceiving", {lowest}, "dtvSvLibTerminateBroadcastReceiving",
         "hdl = -2147483648", {"SEND, dtvsv_handle = 0"}, "10000005: 00 00"),
    Sent("DtvSvLib_CancelSearchChannel", {highest}, "dtvSvLibCancelSearchChannel",
         "hdl = 2147483647", {"SEND, dtvsv_handle = 65535"}, "10000009: ff ff")};
INSTANTIATE_TEST_SUITE_P(WideHandle, SentCommands, testing::ValuesIn(wide_handles), rowName<Sent>);

TEST_F(Commands, AskForNoAnswerAndCarryNoSurface) {
    call("DtvSvLib_Create", {1, 10});
    call("DtvSvLib_Release", {3});
    std::vector<Message> messages = service->take();
    ASSERT_EQ(messages.size(), 2U);
    for (const Message& message : messages) {
        EXPECT_FALSE(message.sync);
        EXPECT_EQ(message.reply_capacity, 0);
        EXPECT_FALSE(message.had_references);
    }
}

TEST_F(Commands, WriteNothingToStandardOutput) {
    StdoutCapture output;
    call("DtvSvLib_Create", {5, 0});
    call("DtvSvLib_StartScan", {3});
    service->setResult(-1);
    call("DtvSvLib_StartScan", {3});
    EXPECT_EQ(output.take(), "");
}

TEST_F(Commands, KeepNothing) {
    int globals = StrictJni::globalsMade();
    call("DtvSvLib_Create", {5, 0});
    call("DtvSvLib_StartScan", {3});
    EXPECT_EQ(StrictJni::globalsMade(), globals);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(Commands, ComeFromAnyThread) {
    constexpr int rounds = 200;
    // Each thread sends commands of one handle; every record must arrive whole.
    auto send = [](int handle) {
        void* own = nullptr;
        JavaVM* vm = VirtualMachine::instance().vm();
        ASSERT_EQ(vm->AttachCurrentThread(&own, nullptr), JNI_OK);
        for (int i = 0; i < rounds; ++i) {
            EXPECT_EQ(call("DtvSvLib_StartScan", {handle}), ok);
        }
        EXPECT_EQ(vm->DetachCurrentThread(), JNI_OK);
    };
    std::thread first(send, 0x1111);
    std::thread second(send, 0x2222);
    first.join();
    second.join();
    int firsts = 0;
    int seconds = 0;
    for (const std::string& text : service->takeTexts()) {
        firsts += text == "10000002: 11 11" ? 1 : 0;
        seconds += text == "10000002: 22 22" ? 1 : 0;
    }
    EXPECT_EQ(firsts, rounds);
    EXPECT_EQ(seconds, rounds);
    EXPECT_EQ(log->take().size(), 2U * rounds * 5U);
}

} // namespace
