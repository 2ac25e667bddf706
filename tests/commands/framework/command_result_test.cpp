// What Java gets back: the constant for what the send returned, or null when there is none.
#include "commands/command_rows.h"

namespace {

using namespace harness;
using namespace commands;

/// While it lives, a constant of the result enumeration is another object, or null.
class ReplacedConstant {
public:
    ReplacedConstant(const char* name, jobject other) : of(findClass("BG_TE_DTVSVLIB_RESULT")) {
        id = env()->GetStaticFieldID(of, name,
                                     "Ltenrik/service/dtvserver/type/BG_TE_DTVSVLIB_RESULT;");
        before = env()->GetStaticObjectField(of, id);
        env()->SetStaticObjectField(of, id, other);
    }
    ~ReplacedConstant() { env()->SetStaticObjectField(of, id, before); }
    ReplacedConstant(const ReplacedConstant&) = delete;
    ReplacedConstant& operator=(const ReplacedConstant&) = delete;

private:
    jclass of;
    jfieldID id = nullptr;
    jobject before = nullptr;
};

class CommandResult : public Commands {
protected:
    /// A call that returns null and throws nothing.
    void expectNull(const std::string& native, const std::vector<Value>& arguments) {
        EXPECT_EQ(callNative(native, arguments), nullptr);
        EXPECT_EQ(lastThrown(), "");
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
};

TEST_F(CommandResult, OnlyZeroIsOk) {
    struct {
        int returned;
        const char* text;
    } const rows[] = {{1, "1"},
                      {-1, "-1"},
                      {2, "2"},
                      {5, "5"},
                      {16, "16"},
                      {256, "256"},
                      {65536, "65536"},
                      {lowest, "-2147483648"},
                      {highest, "2147483647"}};
    for (const auto& row : rows) {
        service->setResult(row.returned);
        EXPECT_EQ(call("DtvSvLib_StartScan", {3}), ng) << row.text;
        EXPECT_TRACE(log->take(), sentTrace("dtvSvLibStartScan", "hdl = 3",
                                            {"SEND, dtvsv_handle = 3"}, "1", row.text));
    }
    service->setResult(0);
    EXPECT_EQ(call("DtvSvLib_StartScan", {3}), ok);
    EXPECT_TRACE(log->take(),
                 sentTrace("dtvSvLibStartScan", "hdl = 3", {"SEND, dtvsv_handle = 3"}, "0", "0"));
}

TEST_F(CommandResult, NoServiceIsNg) {
    dtv::setServiceEndpoint(nullptr);
    EXPECT_EQ(call("DtvSvLib_StartScan", {3}), ng);
    EXPECT_TRACE(log->take(),
                 sentTrace("dtvSvLibStartScan", "hdl = 3", {"SEND, dtvsv_handle = 3"}, "1", "-1"));
}

TEST_F(CommandResult, IsLookedUpForEachCommand) {
    int fields = StrictJni::calls("GetStaticFieldID");
    int reads = StrictJni::calls("GetStaticObjectField");
    EXPECT_EQ(call("DtvSvLib_StartScan", {3}), ok);
    EXPECT_EQ(call("DtvSvLib_StartScan", {3}), ok);
    EXPECT_EQ(StrictJni::calls("GetStaticFieldID") - fields, 2);
    EXPECT_EQ(StrictJni::calls("GetStaticObjectField") - reads, 2);
    {
        ReplacedConstant cancel("DTVSVLIB_RESULT_OK",
                                constant("BG_TE_DTVSVLIB_RESULT", "DTVSVLIB_RESULT_CANCEL"));
        EXPECT_EQ(call("DtvSvLib_StartScan", {3}), "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_CANCEL");
    }
    EXPECT_EQ(call("DtvSvLib_StartScan", {3}), ok);
}

TEST_F(CommandResult, ConstantMissingAfterTheSend) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        {
            FailJni fail("GetStaticFieldID", 0, leaves);
            expectNull("DtvSvLib_StartScan", {3});
        }
        EXPECT_EQ(service->takeTexts(), Texts{"10000002: 03 00"});
        EXPECT_TRACE(log->take(), R"(
            Dtv_jni|128|5|FUNCSTART|dtvSvLibStartScan|hdl = 3
            Dtv_jni|1024|5|DEBUG    |dtvSvLibStartScan|SEND, dtvsv_handle = 3
            Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 0
            Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field_id is NULL, ret = 0
            Dtv_jni|256|5|FUNCEND  |dtvSvLibStartScan|ret = 0
        )");
    }
}

TEST_F(CommandResult, ConstantMissingAfterAFailedSend) {
    service->setResult(-7);
    {
        FailJni fail("GetStaticFieldID");
        expectNull("DtvSvLib_ControlLNA", {3, 17});
    }
    EXPECT_EQ(service->takeTexts(), Texts{"1000001a: 03 00 11 00"});
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibControlLNA|hdl = 3
        Dtv_jni|1024|5|DEBUG    |dtvSvLibControlLNA|SEND, LNA_MODE : dtvsv_handle = 3, lna_mode = 17
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 1
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field_id is NULL, ret = 0
        Dtv_jni|256|5|FUNCEND  |dtvSvLibControlLNA|ret = -7
    )");
}

TEST_F(CommandResult, ConstantMissingForARefusal) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        {
            FailJni fail("GetStaticFieldID", 0, leaves);
            expectNull("DtvSvLib_ControlLNA", {3, 18});
        }
        EXPECT_EQ(service->takeTexts(), Texts{});
        EXPECT_TRACE(log->take(), R"(
            Dtv_jni|128|5|FUNCSTART|dtvSvLibControlLNA|hdl = 3
            Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 5
            Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field_id is NULL, ret = 0
            Dtv_jni|1024|5|DEBUG    |dtvSvLibControlLNA|lna_mode is over, lna_mode = 18
        )");
    }
}

TEST_F(CommandResult, ConstantIsNull) {
    {
        ReplacedConstant none("DTVSVLIB_RESULT_OK", nullptr);
        expectNull("DtvSvLib_PausePlay", {3});
    }
    EXPECT_EQ(service->takeTexts(), Texts{"10000032: 03 00"});
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibPausePlay|hdl = 3
        Dtv_jni|1024|5|DEBUG    |dtvSvLibPausePlay|SEND, PAUSE_PLAY : dtvsv_handle = 3
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 0
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field's object NULL, ret = 0
        Dtv_jni|256|5|FUNCEND  |dtvSvLibPausePlay|ret = 0
    )");
    {
        ReplacedConstant none("DTVSVLIB_RESULT_NG", nullptr);
        service->setResult(3);
        expectNull("DtvSvLib_PausePlay", {3});
    }
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibPausePlay|hdl = 3
        Dtv_jni|1024|5|DEBUG    |dtvSvLibPausePlay|SEND, PAUSE_PLAY : dtvsv_handle = 3
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 1
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field's object NULL, ret = 0
        Dtv_jni|256|5|FUNCEND  |dtvSvLibPausePlay|ret = 3
    )");
}

TEST_F(CommandResult, ConstantOfARefusalIsNull) {
    ReplacedConstant none("DTVSVLIB_RESULT_PARAM_NG", nullptr);
    expectNull("DtvSvLib_SelectChannel", {3, nullptr});
    EXPECT_EQ(service->takeTexts(), Texts{});
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibSelectChannel|hdl = 3
        Dtv_jni|128|5|FUNCSTART|getRetCode|(param)ret = 5
        Dtv_jni|1024|5|DEBUG    |getRetCode|RESULT's field's object NULL, ret = 0
        Dtv_jni|1024|5|DEBUG    |dtvSvLibSelectChannel|broadcast_info class is NULL, ret = 5
    )");
}

} // namespace
