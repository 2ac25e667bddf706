// Events whose class, constructor or callback the Java side lacks: that event fails, all others are
// delivered. Each test loads the bridge in a process of its own.
#include "harness/event_trace.h"

namespace events {
namespace {

using namespace harness;

class EventWithoutJava : public testing::Test {
protected:
    /// A call can only be made to fail when there is a VM.
    void SetUp() override { VirtualMachine::instance(); }

    void startTrace() {
        prepareEvents();
        log = LogRecorder::install();
    }

    /// The event fails with this trace and nothing reaches Java.
    /// A row of the method registry that was never resolved reads as a constructor of class 0.
    void expectFailed(int event_id, const char* record, const std::string& handler,
                      const std::string& lines) {
        std::vector<uint8_t> bytes = fromHex(record);
        StdoutCapture output;
        Calls called_back("CallStaticVoidMethodV");
        Calls deleted("DeleteLocalRef");
        Calls described("ExceptionDescribe");
        for (int time = 0; time < 2; time++) {
            EXPECT_EQ(deliver(event_id, bytes), 1);
            EXPECT_TRACE(log->take(),
                         refused(event_id, static_cast<int>(bytes.size()), handler, lines));
        }
        EXPECT_EQ(output.take(), "");
        EXPECT_EQ(called_back.made(), 0);
        EXPECT_EQ(deleted.made(), 0);
        EXPECT_EQ(described.made(), 0);
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }

    void expectDelivered(int event_id, const char* record) {
        Calls called_back("CallStaticVoidMethodV");
        EXPECT_EQ(deliver(event_id, fromHex(record)), 0);
        EXPECT_EQ(called_back.made(), 1);
    }

    std::shared_ptr<LogRecorder> log;
};

constexpr const char* commonHandler = "dtvsv_msgid_lib_common_reply";
constexpr const char* playHandler = "dtvsv_msgid_lib_play_status_notify";

const std::string commonReply = "START\nDEBUG |dtvsv_handle = 3, result = 4\n";
const std::string playStatus =
    "START\nDEBUG |handle = 3\n"
    "DEBUG |PLAY_STATUS_INFO : status = 1, current_time = 2, eof_flag = 4\n";
const std::string failed = "DEBUG |CallMethod NG, ret = 1";

const char* const play_status = "0300 0000 01 000000 02000000 04 000000";

TEST_F(EventWithoutJava, EventClassIsMissing) {
    ASSERT_EQ(
        Product::loadWithout({"tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY"}),
        "");
    startTrace();
    expectFailed(0x1000004f, "0300 0000 04000000", commonHandler,
                 commonReply + "NEWFAIL 114 0\n" + failed);
    expectDelivered(0x10000050, "0300 0000 04000000");
    expectDelivered(0x1000009b, play_status);
}

TEST_F(EventWithoutJava, ValueClassIsMissing) {
    ASSERT_EQ(
        Product::loadWithout({"tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PLAY_STATUS_INFO"}),
        "");
    startTrace();
    expectFailed(0x1000009b, play_status, playHandler, playStatus + "NEWFAIL 207 0\n" + failed);
    expectDelivered(0x10000050, "0300 0000 04000000");
}

TEST_F(EventWithoutJava, AllCallbacksAreMissing) {
    ASSERT_EQ(Product::loadWithout({"tenrik.service.dtvserver.BGCallBack"}), "");
    startTrace();
    expectFailed(0x1000004f, "0300 0000 04000000", commonHandler,
                 commonReply +
                     "NEW 114 47\n"
                     "NEWFAIL 45 0\n" +
                     failed);
    expectFailed(0x10000074, "0300 0000 04000000", commonHandler,
                 commonReply +
                     "NEW 201 119\n"
                     "NEWFAIL 186 0\n" +
                     failed);
    expectFailed(0x1000009b, play_status, playHandler,
                 playStatus +
                     "NEW 207 125\n"
                     "NEW 204 122\n"
                     "NEWFAIL 189 0\n" +
                     failed);
}

// The look-ups are made in the order of the registry, so the number of those that succeed first
// determines the one that fails.
TEST_F(EventWithoutJava, CallbackOfAReplyIsMissing) {
    {
        FailJni fails("GetStaticMethodID", 45);
        ASSERT_EQ(Product::load(), "");
    }
    startTrace();
    expectFailed(0x1000004f, "0300 0000 04000000", commonHandler,
                 commonReply +
                     "NEW 114 47\n"
                     "NEWFAIL 45 0\n" +
                     failed);
    expectDelivered(0x10000050, "0300 0000 04000000");
}

TEST_F(EventWithoutJava, CallbackOfAReplyWithARecordIsMissing) {
    {
        FailJni fails("GetStaticMethodID", 69);
        ASSERT_EQ(Product::load(), "");
    }
    startTrace();
    const std::string handler = "dtvsv_msgid_lib_terminate_rec_reply";
    expectFailed(0x1000006c, "0300 0000 04000000 0500 0600", handler,
                 "START\nDEBUG |handle = 3, result = 4\nDEBUG |TERMINATE_REC_REPLY : program_no = "
                 "5, object_no = 6\n"
                 "NEW 208 126\n"
                 "NEW 193 111\n"
                 "NEWFAIL 178 0\n" +
                     failed);
    expectDelivered(0x1000006b, "0300 0000 00000000 00000000 0000 0000");
}

TEST_F(EventWithoutJava, CallbackOfAStatusWithARecordIsMissing) {
    {
        FailJni fails("GetStaticMethodID", 80);
        ASSERT_EQ(Product::load(), "");
    }
    startTrace();
    expectFailed(0x1000009b, play_status, playHandler,
                 playStatus +
                     "NEW 207 125\n"
                     "NEW 204 122\n"
                     "NEWFAIL 189 0\n" +
                     failed);
    expectDelivered(0x1000009d, "0300 0000 00000000");
}

TEST_F(EventWithoutJava, CallbackOfALaterStatusIsMissing) {
    {
        FailJni fails("GetStaticMethodID", 20);
        ASSERT_EQ(Product::load(), "");
    }
    startTrace();
    const std::string handler = "dtvsv_msgid_lib_cap_status_notify";
    expectFailed(0x10000086, "0300 05 00", handler,
                 "START |recv_size = 4\nDEBUG |handle = 3, change_status = 5\n"
                 "NEW 88 20\n"
                 "NEWFAIL 20 0\n" +
                     failed);
    expectDelivered(0x10000085, "0300 05 00");
}

TEST_F(EventWithoutJava, ConstructorIsMissing) {
    {
        FailJni fails("GetMethodID", 46);
        ASSERT_EQ(Product::load(), "");
    }
    startTrace();
    expectFailed(0x1000004f, "0300 0000 04000000", commonHandler,
                 commonReply + "NEWFAIL 114 0\n" + failed);
    expectDelivered(0x10000050, "0300 0000 04000000");
}

} // namespace
} // namespace events
