// Loads in which something is missing: refused ones, and those that continue without a part of the
// Java side.
#include "entry/java_tables.h"
#include "entry/vm_probes.h"

#include "harness/harness.h"

#include <gmock/gmock.h>

namespace {

using namespace harness;
using testing::HasSubstr;

int deliverCreateReply() {
    uint8_t record[8] = {3, 0, 0, 0, 0, 0, 0, 0};
    return dtv::deliverEvent(0x1000004f, record, 8);
}

/// The lines that report that something could not be looked up.
std::vector<std::string> failures(const std::vector<TraceLine>& lines) {
    std::vector<std::string> found;
    for (const TraceLine& line : lines) {
        if (line.message.find("Can't find class") != std::string::npos ||
            line.message.find("error!") != std::string::npos) {
            found.push_back(line.literal());
        }
    }
    return found;
}

int count(const std::vector<TraceLine>& lines, const std::string& function) {
    int found = 0;
    for (const TraceLine& line : lines) {
        found += line.function == function ? 1 : 0;
    }
    return found;
}

TEST(RefusedLoad, ByAVmThatLacksJni1_4) {
    auto log = LogRecorder::install();
    VersionProbe version(true);
    EXPECT_THAT(Product::load(), HasSubstr("java.lang.UnsatisfiedLinkError"));
    EXPECT_EQ(version.asked(), 1);
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|JNI_OnLoad|
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|pid = <pid>, threadid = <tid>
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|GetEnv failed
        Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|
    )");
    EXPECT_EQ(deliverCreateReply(), dtv::noListener);
    EXPECT_THAT(call("DtvSvLib_Release", {1}), HasSubstr("java.lang.UnsatisfiedLinkError"));
}

TEST(RefusedLoad, WithoutTheProxy) {
    auto log = LogRecorder::install();
    EXPECT_THAT(Product::loadWithout({"tenrik.service.dtvserver.DtvServerProxy"}),
                HasSubstr("DtvServerProxy"));
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|JNI_OnLoad|
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|pid = <pid>, threadid = <tid>
        Dtv_jni|128|5|FUNCSTART|registerNatives|
        Dtv_jni|1024|5|DEBUG    |registerNatives|registerNatives, failed for 'tenrik/service/dtvserver/DtvServerProxy'
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|registerNatives failed
        Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|
    )");
    EXPECT_EQ(deliverCreateReply(), dtv::noListener);
    EXPECT_EQ(StrictJni::calls("FindClass"), 1) << "only the class whose natives are unregistered";
    EXPECT_EQ(StrictJni::globalsMade(), 0);
}

TEST(RefusedLoad, WhenTheVmRefusesAMethod) {
    auto log = LogRecorder::install();
    RegistrationRecorder registered(true);
    EXPECT_EQ(Product::load(), "java.lang.NoSuchMethodError: refused by the test");
    EXPECT_EQ(registered.kept().size(), 1U);
    EXPECT_EQ(StrictJni::calls("DeleteLocalRef"), 2)
        << "the class, and the exception that is pending";
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|JNI_OnLoad|
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|pid = <pid>, threadid = <tid>
        Dtv_jni|128|5|FUNCSTART|registerNatives|
        Dtv_jni|1024|5|DEBUG    |registerNatives|registerNatives, failed for 'tenrik/service/dtvserver/DtvServerProxy'
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|registerNatives failed
        Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|
    )");
    EXPECT_EQ(deliverCreateReply(), dtv::noListener);
}

TEST(PartialLoad, WithoutOneEventClass) {
    auto log = LogRecorder::install();
    ASSERT_EQ(
        Product::loadWithout({"tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY"}),
        "");
    std::vector<TraceLine> lines = log->take();
    EXPECT_EQ(
        failures(lines),
        (std::vector<std::string>{
            "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, Can't find class : "
            "tenrik/service/dtvserver/events/response/BG_EV_DTVSV_CREATE_REPLY",
            "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID error!, "
            "class_id = 47, method_id = 114, attr_id = 0, type_id = 0, method_name = <init>, "
            "signature = (II)V"}));
    EXPECT_EQ(count(lines, "setJavaClass"), 278);
    EXPECT_EQ(count(lines, "setJavaMethod"), 220);
    EXPECT_EQ(lines.back().literal(), "Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|");
    EXPECT_EQ(StrictJni::calls("FindClass"), expected::classCount);
    EXPECT_EQ(StrictJni::calls("GetMethodID"), 135) << "nothing is looked up in a missing class";
    EXPECT_EQ(StrictJni::calls("GetStaticMethodID"), expected::callbackCount);
    EXPECT_EQ(StrictJni::globalsMade(), expected::classCount - 1);
    EXPECT_EQ(StrictJni::liveLocals(), 0);

    // The event of the missing class ends where its row is empty; the others arrive.
    EXPECT_EQ(deliverCreateReply(), 1);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|pid = <pid>, threadid = <tid>, event_id = 1000004f, recv_size = 8
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|Got JNIEnv! threadid=<tid> env=<ptr>
        JNIDtvSvLibListener|128|5|FUNCSTART|DoListenerEvent|
        JNIDtvSvLibListener|128|5|FUNCSTART|dtvsv_msgid_lib_common_reply|
        JNIDtvSvLibListener|1024|5|DEBUG    |dtvsv_msgid_lib_common_reply|dtvsv_handle = 3, result = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 114, class_id = 0, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, NewObject error!
        JNIDtvSvLibListener|1024|5|DEBUG    |dtvsv_msgid_lib_common_reply|CallMethod NG, ret = 1
        JNIDtvSvLibListener|256|5|FUNCEND  |recvEventFromServer|
    )");
    EXPECT_EQ(StrictJni::calls("NewObjectV"), 0);
    EXPECT_EQ(StrictJni::calls("CallStaticVoidMethodV"), 0);
    uint8_t record[8] = {4, 0, 0, 0, 1, 0, 0, 0};
    EXPECT_EQ(dtv::deliverEvent(0x10000050, record, 8), 0);
    EXPECT_EQ(StrictJni::calls("NewObjectV"), 1);
    EXPECT_EQ(StrictJni::calls("CallStaticVoidMethodV"), 1);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST(PartialLoad, WithoutTheCallbackClass) {
    auto log = LogRecorder::install();
    ASSERT_EQ(Product::loadWithout({"tenrik.service.dtvserver.BGCallBack"}), "");
    std::vector<TraceLine> lines = log->take();
    EXPECT_EQ(failures(lines).size(), 1U + expected::callbackCount)
        << "the class, and both lines of its callbacks";
    EXPECT_EQ(count(lines, "setJavaClass"), 278);
    EXPECT_EQ(count(lines, "setJavaMethod"), expected::methodCount + expected::callbackCount);
    EXPECT_EQ(StrictJni::calls("GetStaticMethodID"), 0);
    EXPECT_EQ(StrictJni::calls("GetMethodID"), expected::constructorCount);

    // The event is built; its callback's row is empty, takes the construction branch, and fails.
    EXPECT_EQ(deliverCreateReply(), 1);
    std::vector<std::string> said;
    for (const TraceLine& line : log->take()) {
        if (line.function == "CallMethod" || line.function == "dtvsv_msgid_lib_common_reply") {
            said.push_back(line.message);
        }
    }
    EXPECT_EQ(said,
              (std::vector<std::string>{"", "dtvsv_handle = 3, result = 0",
                                        "CallMethod, method_id = 114, class_id = 47, attr_id = 0",
                                        "CallMethod, NewObject",
                                        "CallMethod, method_id = 45, class_id = 0, attr_id = 0",
                                        "CallMethod, NewObject", "CallMethod, NewObject error!",
                                        "CallMethod NG, ret = 1"}));
    EXPECT_EQ(StrictJni::liveLocals(), 0) << "the event's object ended with the event";
}

TEST(PartialLoad, WithoutEveryValueAndEventClass) {
    std::vector<std::string> hidden;
    for (size_t id = 1; id <= 137; ++id) {
        std::string name = expected::classes[id];
        for (char& c : name) {
            c = c == '/' ? '.' : c;
        }
        hidden.push_back(name);
    }
    auto log = LogRecorder::install();
    ASSERT_EQ(Product::loadWithout(hidden), "");
    std::vector<TraceLine> lines = log->take();
    EXPECT_EQ(count(lines, "setJavaClass"), 278);
    EXPECT_EQ(failures(lines).size(), 137U + 136U);
    EXPECT_EQ(StrictJni::calls("GetStaticMethodID"), expected::callbackCount);
    EXPECT_EQ(StrictJni::calls("FindClass"), expected::classCount);
    EXPECT_EQ(StrictJni::calls("GetMethodID"), 0);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_EQ(lines.back().literal(), "Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|");
}

TEST(PartialLoad, WhenAGlobalReferenceCannotBeHad) {
    VirtualMachine::instance();
    auto log = LogRecorder::install();
    {
        FailJni fail("NewGlobalRef", 73);
        ASSERT_EQ(Product::load(), "");
    }
    std::vector<TraceLine> lines = log->take();
    EXPECT_EQ(failures(lines),
              (std::vector<std::string>{
                  "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaClass|setJavaClass, NewGlobalRef "
                  "error! : class_id = 73",
                  "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID "
                  "error!, class_id = 73, method_id = 140, attr_id = 0, type_id = 0, method_name = "
                  "<init>, signature = (II)V"}));
    EXPECT_EQ(StrictJni::globalsMade(), expected::classCount - 1);
    EXPECT_EQ(StrictJni::calls("GetMethodID"), 135);
}

TEST(PartialLoad, WhenACallbackIsMissing) {
    VirtualMachine::instance();
    auto log = LogRecorder::install();
    {
        FailJni fail("GetStaticMethodID", 45);
        ASSERT_EQ(Product::load(), "");
    }
    EXPECT_EQ(
        failures(log->take()),
        (std::vector<std::string>{
            "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID error!, "
            "class_id = 0, method_id = 45, attr_id = 1, type_id = 0, method_name = "
            "onEvDtvsvCreateReply, signature = "
            "(Ltenrik/service/dtvserver/events/response/BG_EV_DTVSV_CREATE_REPLY;)V"}));
    CallbackRecorder callbacks;
    EXPECT_EQ(deliverCreateReply(), 1);
    EXPECT_TRUE(callbacks.take().empty());
    EXPECT_EQ(StrictJni::calls("CallStaticVoidMethodV"), 0);
}

TEST(PartialLoad, WhenAConstructorIsMissing) {
    VirtualMachine::instance();
    auto log = LogRecorder::install();
    {
        FailJni fail("GetMethodID", 0);
        ASSERT_EQ(Product::load(), "");
    }
    EXPECT_EQ(
        failures(log->take()),
        (std::vector<std::string>{
            "JNIDtvSvLibListener|1024|5|DEBUG    |setJavaMethod|setJavaMethod, GetMethodID error!, "
            "class_id = 1, method_id = 68, attr_id = 0, type_id = 0, method_name = <init>, "
            "signature = (II)V"}));
    EXPECT_EQ(StrictJni::calls("GetMethodID"), expected::constructorCount)
        << "the others are still looked up";
}

TEST(PartialLoad, WhenNoFrameCanBeHad) {
    if (mode() == Mode::checkJni) {
        GTEST_SKIP() << "-Xcheck:jni warns of the many references that the VM's own frame gets";
    }
    VirtualMachine::instance();
    auto log = LogRecorder::install();
    {
        FailJni fail("PushLocalFrame");
        ASSERT_EQ(Product::load(), "");
        EXPECT_TRUE(fail.fired());
    }
    EXPECT_TRUE(failures(log->take()).empty()) << "everything is looked up without it";
    EXPECT_EQ(StrictJni::calls("PopLocalFrame"), 0) << "the caller's frame stays";
    EXPECT_EQ(StrictJni::calls("FindClass"), expected::classCount);
    EXPECT_EQ(StrictJni::globalsMade(), expected::classCount);
    EXPECT_EQ(deliverCreateReply(), 0);
}

} // namespace
