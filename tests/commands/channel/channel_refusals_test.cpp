// The three commands that name a service by its channel: what is refused, and with which messages.
#include "commands/command_rows.h"

namespace {

using namespace harness;
using namespace commands;

struct Native {
    const char* name;
    const char* function;
    bool operation; ///< takes a third argument
};

void PrintTo(const Native& native, std::ostream* to) {
    *to << native.name;
}

class ChannelRefusals : public Commands, public testing::WithParamInterface<Native> {
protected:
    std::vector<Value> arguments(jobject info) const {
        std::vector<Value> all{65539, info};
        if (GetParam().operation) {
            all.emplace_back(1);
        }
        return all;
    }

    void expectRefusal(jobject info, const std::string& refusal) {
        EXPECT_EQ(call(GetParam().name, arguments(info)), param_ng);
        EXPECT_EQ(service->takeTexts(), Texts{});
        EXPECT_TRACE(log->take(), refusedTrace(GetParam().function, "hdl = 65539", refusal));
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }

    static jobject info(int channel, int service_number) {
        return newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {channel, service_number});
    }
};

TEST_P(ChannelRefusals, ChannelAboveTheLast) {
    expectRefusal(info(63, 0), "physical_channel is too large : 63, ret = 5");
    expectRefusal(info(65536, 0), "physical_channel is too large : 65536, ret = 5");
    expectRefusal(info(highest, 0), "physical_channel is too large : 2147483647, ret = 5");
}

TEST_P(ChannelRefusals, ServiceAboveTheLast) {
    expectRefusal(info(62, 3), "service_no is too large : 3, ret = 5");
    expectRefusal(info(-1, 65536), "service_no is too large : 65536, ret = 5");
    expectRefusal(info(0, highest), "service_no is too large : 2147483647, ret = 5");
}

TEST_P(ChannelRefusals, ChannelIsCheckedBeforeTheServiceIsLookedUp) {
    int look_ups = StrictJni::calls("GetFieldID");
    expectRefusal(info(63, 3), "physical_channel is too large : 63, ret = 5");
    EXPECT_EQ(StrictJni::calls("GetFieldID") - look_ups, 1);
}

TEST_P(ChannelRefusals, NoClass) {
    FailJni fail("GetObjectClass", 0, FailJni::Leaves::nothing);
    expectRefusal(info(62, 2), "broadcast_info class is NULL, ret = 5");
}

TEST_P(ChannelRefusals, NoChannelField) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("GetFieldID", 0, leaves);
        expectRefusal(info(62, 2), "physical_channel fieldID is NULL, ret = 5");
    }
}

TEST_P(ChannelRefusals, NoServiceField) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("GetFieldID", 1, leaves);
        expectRefusal(info(62, 2), "service_no fieldID is NULL, ret = 5");
    }
}

TEST_P(ChannelRefusals, AnObjectOfAnotherClass) {
    // A caller through JNI may pass an object of any class: neither field exists in it.
    expectRefusal(newObject("BG_TS_DTVSVLIB_DATE", "(III)V", {2011, 7, 24}),
                  "physical_channel fieldID is NULL, ret = 5");
}

std::string nativeName(const testing::TestParamInfo<Native>& row) {
    return row.param.function;
}

INSTANTIATE_TEST_SUITE_P(
    Each, ChannelRefusals,
    testing::Values(Native{"DtvSvLib_StartBroadcastReceiving", "dtvSvLibStartBroadcastReceiving",
                           false},
                    Native{"DtvSvLib_SelectChannel", "dtvSvLibSelectChannel", false},
                    Native{"DtvSvLib_StartSearchChannel", "dtvSvLibStartSearchChannel", true}),
    nativeName);

class NullChannel : public Commands {
protected:
    void expectRefusal(const std::string& command, const std::vector<Value>& arguments,
                       const std::string& refusal) {
        int classes = StrictJni::calls("GetObjectClass");
        EXPECT_EQ(call("DtvSvLib_" + command, arguments), param_ng);
        EXPECT_EQ(service->takeTexts(), Texts{});
        EXPECT_TRACE(log->take(), refusedTrace("dtvSvLib" + command, "hdl = 3", refusal));
        EXPECT_EQ(StrictJni::calls("GetObjectClass"), classes)
            << "GetObjectClass is not called for null";
    }
};

TEST_F(NullChannel, IsLoggedAsNullWhereReceptionStartsAndSearches) {
    expectRefusal("StartBroadcastReceiving", {3, nullptr}, "broadcast_info is NULL, ret = 5");
    expectRefusal("StartSearchChannel", {3, nullptr, 300}, "broadcast_info is NULL, ret = 5");
}

TEST_F(NullChannel, HasNoClassWhereAChannelIsSelected) {
    expectRefusal("SelectChannel", {3, nullptr}, "broadcast_info class is NULL, ret = 5");
}

} // namespace
