// A Java side without the result enumeration: commands are sent, and Java gets null. The bridge is
// loaded from that Java side, so each test needs a process of its own.
#include "commands/command_rows.h"

namespace {

using namespace harness;
using namespace commands;

class ResultMissing : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Product::loadWithout({"tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT"}),
                  "");
        service = ServiceDouble::serve();
        log = LogRecorder::install();
    }

    void expectNull(const std::string& native, const std::string& arguments_descriptor,
                    const std::vector<Value>& arguments) {
        EXPECT_EQ(
            callNative(native, arguments_descriptor + "Ltype/BG_TE_DTVSVLIB_RESULT;", arguments),
            nullptr);
        EXPECT_EQ(lastThrown(), "");
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }

    std::shared_ptr<ServiceDouble> service;
    std::shared_ptr<LogRecorder> log;
};

TEST_F(ResultMissing, ACommandIsSent) {
    expectNull("DtvSvLib_Release", "(I)", {3});
    EXPECT_EQ(service->takeTexts(), Texts{"10000001: 03 00"});
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibRelease|hdl = 3
        Dtv_jni|1024|5|DEBUG    |dtvSvLibRelease|SEND, dtvsv_handle = 3
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 0
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL
        Dtv_jni|256|5|FUNCEND  |dtvSvLibRelease|ret = 0
    )");
}

TEST_F(ResultMissing, ACommandIsNotDelivered) {
    service->setResult(-1);
    expectNull("DtvSvLib_Create", "(II)", {1, 2});
    EXPECT_EQ(service->takeTexts(), Texts{"10000000: 01 00 02 00"});
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibCreate|
        Dtv_jni|1024|5|DEBUG    |dtvSvLibCreate|SEND, start_type = 1 max_delay_time = 2
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 1
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL
        Dtv_jni|256|5|FUNCEND  |dtvSvLibCreate|ret = -1
    )");
}

TEST_F(ResultMissing, ACommandIsRefused) {
    expectNull("DtvSvLib_StartRec", "(II)", {3, 2});
    EXPECT_EQ(service->takeTexts(), Texts{});
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibStartRec|hdl = 3
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 5
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL
        Dtv_jni|1024|5|DEBUG    |dtvSvLibStartRec|medium is too large : 2, ret = 5
    )");
    expectNull("DtvSvLib_StartBroadcastReceiving", "(ILtype/BG_TS_DTVSVLIB_BROADCAST_INFO;)",
               {3, nullptr});
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibStartBroadcastReceiving|hdl = 3
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 5
        Dtv_jni|1024|5|DEBUG    |getRetCode|class is NULL
        Dtv_jni|1024|5|DEBUG    |dtvSvLibStartBroadcastReceiving|broadcast_info is NULL, ret = 5
    )");
}

} // namespace
