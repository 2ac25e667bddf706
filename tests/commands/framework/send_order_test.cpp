// In which order a command does what can be seen from outside: its lines, its send, and what it
// releases afterwards.
#include "commands/every_command.h"
#include "entry/java_tables.h"
#include "harness/sequence.h"

#include <algorithm>
#include <set>

namespace {

using namespace commands;
using namespace harness;

class SendOrder : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Product::load(), ""); }
};

TEST_F(SendOrder, TheTableHasEveryNative) {
    jobject none = javaSurface(0);
    std::multiset<std::string> called;
    for (const EveryCommand& command : everyCommand(none, none, none)) {
        called.insert("DtvSvLib_" + command.name);
    }
    std::multiset<std::string> declared;
    for (const expected::Native& native : expected::natives) {
        declared.insert(native.name);
    }
    EXPECT_EQ(called, declared);
}

TEST_F(SendOrder, EveryCommandLogsWhatItSendsAndThenSendsIt) {
    NativeSurface surface;
    for (const EveryCommand& command :
         everyCommand(surface.java(), surface.java(), surface.java())) {
        SCOPED_TRACE(command.name);
        LocalFrame frame;
        Sequence sequence;
        callNative("DtvSvLib_" + command.name, command.arguments);
        std::vector<std::string> steps = sequence.take();
        const size_t send = placeOf(steps, "send ");
        ASSERT_LT(send, steps.size());
        size_t lines = 0;
        for (size_t place = 0; place < steps.size(); ++place) {
            EXPECT_FALSE(place > send && steps[place].compare(0, 5, "send ") == 0) << "sent twice";
            if (steps[place].find("|SEND, ") != std::string::npos) {
                ++lines;
                EXPECT_LT(place, send) << steps[place];
            }
        }
        EXPECT_GT(lines, 0U);
        EXPECT_NE(steps[send - 1].find("|SEND, "), std::string::npos) << steps[send - 1];
        EXPECT_LT(send, placeOf(steps, "FUNCEND dtvSvLib"));
    }
}

/// A delay that the new session's bound allows, set while Create is being sent.
TEST_F(SendOrder, CreateSetsTheBoundOfTheDelaysBeforeItSends) {
    const std::string ok = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK";
    const std::string param_ng = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG";
    Sequence sequence;
    EXPECT_EQ(call("DtvSvLib_Create", {0, 0}), ok);
    EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {3, 600, 600}), param_ng);
    std::string during;
    sequence.onSend([&during](const dtv::Command& command) {
        if (command.message_id == 0x10000000) {
            during = call("DtvSvLib_SetSoundVideoDelay", {3, 600, 600});
        }
    });
    EXPECT_EQ(call("DtvSvLib_Create", {0, 600}), ok);
    EXPECT_EQ(during, ok);
    EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {3, 601, 0}), param_ng);
}

} // namespace
