// The two fatal-error notifications: placeholders that reach nothing in Java.
#include "harness/event_trace.h"

#include <climits>
#include <ostream>

namespace events {
namespace {

using namespace harness;

struct FatalError {
    const char* name;
    int event_id;
    const char* handler;
};

std::ostream& operator<<(std::ostream& out, const FatalError& event) {
    return out << event.name;
}

class FatalErrors : public testing::TestWithParam<FatalError> {
protected:
    void SetUp() override {
        prepareEvents();
        log = LogRecorder::install();
    }

    static std::string start(const std::string& fields) { return "START\nDEBUG |" + fields + "\n"; }

    void expectRefused(const char* record, int size, const char* fields) {
        SCOPED_TRACE(size);
        Calls frames("PushLocalFrame");
        StdoutCapture output;
        EXPECT_EQ(deliver(GetParam().event_id, fromHex(record), size), 1);
        EXPECT_TRACE(log->take(), refused(GetParam().event_id, size, GetParam().handler,
                                          start(fields) + "DEBUG |recv_size err!, recv_size = " +
                                              std::to_string(size)));
        EXPECT_EQ(output.take(), "");
        EXPECT_EQ(frames.made(), 1);
    }

    CallbackRecorder callbacks;
    Calls new_objects{"NewObjectV"};
    Calls static_calls{"CallStaticVoidMethodV"};
    std::shared_ptr<LogRecorder> log;
};

INSTANTIATE_TEST_SUITE_P(Both, FatalErrors,
                         testing::Values(FatalError{"Broadcast", 0x10000097,
                                                    "dtvsv_msgid_lib_broadcast_fatal_error_notify"},
                                         FatalError{"Caption", 0x10000099,
                                                    "dtvsv_msgid_lib_caption_fatal_error_notify"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(FatalErrors, CallNothing) {
    StdoutCapture output;
    EXPECT_EQ(deliver(GetParam().event_id, fromHex("0380")), 0);
    EXPECT_TRACE(log->take(), delivered(GetParam().event_id, 2, GetParam().handler,
                                        start("handle = 32771, fatal_info = T.B.D") + "END"));
    EXPECT_EQ(output.take(), "");
    EXPECT_TRUE(callbacks.take().empty());
    EXPECT_EQ(new_objects.made(), 0);
    EXPECT_EQ(static_calls.made(), 0);
}

TEST_P(FatalErrors, HandleIsUnsigned) {
    EXPECT_EQ(deliver(GetParam().event_id, fromHex("ffff")), 0);
    EXPECT_TRACE(log->take(), delivered(GetParam().event_id, 2, GetParam().handler,
                                        start("handle = 65535, fatal_info = T.B.D") + "END"));
}

TEST_P(FatalErrors, OtherSizesAreRefused) {
    expectRefused("0380 ee", 3, "handle = 32771, fatal_info = T.B.D");
    expectRefused("0380 eeeeeeeeeeeeeeeeeeeeeeeeeeee", 16, "handle = 32771, fatal_info = T.B.D");
    expectRefused("0380 eeee", 1, "handle = 3, fatal_info = T.B.D");
    expectRefused("03", 1, "handle = 3, fatal_info = T.B.D");
    expectRefused("0380 eeee", 0, "handle = 0, fatal_info = T.B.D");
    expectRefused("", 0, "handle = 0, fatal_info = T.B.D");
    expectRefused("0380 eeee", -1, "handle = 0, fatal_info = T.B.D");
    expectRefused("0380 eeee", INT_MIN, "handle = 0, fatal_info = T.B.D");
    EXPECT_TRUE(callbacks.take().empty());
    EXPECT_EQ(new_objects.made(), 0);
    EXPECT_EQ(static_calls.made(), 0);
}

TEST_P(FatalErrors, NullRecordIsRefused) {
    EXPECT_EQ(dtv::deliverEvent(GetParam().event_id, nullptr, 2), 1);
    EXPECT_TRACE(log->take(), refused(GetParam().event_id, 2));
    EXPECT_TRUE(callbacks.take().empty());
}

} // namespace
} // namespace events
