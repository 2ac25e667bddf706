// What builds the objects of events, in cases that no event reaches.
#include "binding/listener.h"
#include "harness/trace_text.h"

namespace {

using namespace harness;

class Builder : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
    }
    std::shared_ptr<LogRecorder> log;
};

/// The wrong size is logged once, and nothing is asked of the VM.
TEST_F(Builder, OfARecordOfTheWrongSizeMakesNothing) {
    int calls = 0;
    int made = -1;
    {
        ObservedJni observed([&](const JniCall&) { ++calls; });
        made = bindingProbe().madeOfWrongSize(bindingProbe().loaded(), env());
    }
    EXPECT_EQ(made, 0);
    EXPECT_EQ(calls, 0);
    EXPECT_TRACE(log->take(),
                 "JNIDtvSvLibListener|1024|5|DEBUG    |handler|recv_size err!, recv_size = 3");
}

TEST_F(Builder, ArrayOfAMissingClassFailsWithoutAJniCall) {
    Listener empty = Listener::made();
    log->clear();
    int calls = 0;
    {
        ObservedJni observed([&](const JniCall&) { ++calls; });
        EXPECT_FALSE(empty.makesArrayOfMissingClass());
    }
    EXPECT_EQ(calls, 0);
    EXPECT_TRACE(log->take(), "");
}

/// It keeps account of 96 references. More would live until the native frame ends; nothing else is
/// overwritten.
TEST_F(Builder, KeepsAccountOfSoManyReferencesAlone) {
    EXPECT_TRUE(bindingProbe().makeStrings(bindingProbe().loaded(), env(), 96));
    EXPECT_EQ(StrictJni::liveLocals(), 96) << "what is not delivered is not dropped here";
    StrictJni::forgetLocals();
    EXPECT_TRUE(bindingProbe().makeStrings(bindingProbe().loaded(), env(), 200));
    EXPECT_EQ(StrictJni::liveLocals(), 200);
    StrictJni::forgetLocals();
    EXPECT_TRACE(log->take(), "");
}

} // namespace
