// A Java side whose proxy lacks a native: the VM binds those before it and refuses the rest. The
// load is refused, and none stays bound to a library that the VM unloads.
#include "harness/event_trace.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace {

using namespace harness;
using testing::HasSubstr;

/// The proxy that lacks natives is found before the whole one.
const bool lacking_first =
    ::setenv("DTV_TEST_VM_OPTIONS", "-Djava.class.path=" LACKING_CLASS_PATH, 1) == 0;

TEST(LackingNative, RefusesTheLoadAndLeavesNoneBound) {
    ASSERT_TRUE(lacking_first);
    auto log = LogRecorder::install();
    const std::string refusal = Product::load();
    // The part that names the method differs between VMs.
    EXPECT_THAT(refusal, HasSubstr("java.lang.NoSuchMethodError"));
    EXPECT_THAT(refusal, HasSubstr("DtvSvLib_StartScan"));
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|JNI_OnLoad|
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|pid = <pid>, threadid = <tid>
        Dtv_jni|128|5|FUNCSTART|registerNatives|
        Dtv_jni|1024|5|DEBUG    |registerNatives|registerNatives, failed for 'tenrik/service/dtvserver/DtvServerProxy'
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|registerNatives failed
        Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|
    )");
    EXPECT_EQ(StrictJni::calls("UnregisterNatives"), 1);
    EXPECT_EQ(StrictJni::globalsMade(), 0);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_THAT(call("DtvSvLib_Create", {0, 0}), HasSubstr("java.lang.UnsatisfiedLinkError"));
    EXPECT_THAT(call("DtvSvLib_Release", {3}), HasSubstr("java.lang.UnsatisfiedLinkError"));
}

} // namespace
