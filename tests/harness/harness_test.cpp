// The harness itself: what it renders, compares, keeps and captures.
#include "harness/harness.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <DtvSvCom.h>

#include <unistd.h>

namespace {

using namespace harness;
using testing::HasSubstr;
using testing::Not;

std::string sample(int index) {
    JNIEnv* jni = env();
    jclass samples = findClass("harness/TreeSamples");
    jmethodID all = jni->GetStaticMethodID(samples, "all", "()[Ljava/lang/Object;");
    auto array = static_cast<jobjectArray>(jni->CallStaticObjectMethod(samples, all));
    EXPECT_EQ(takeException(), "");
    jobject element = jni->GetObjectArrayElement(array, index);
    EXPECT_EQ(takeException(), "");
    return tree(element);
}

TEST(Tree, Records) {
    EXPECT_EQ(sample(0), R"(Outer(3, Inner(4294967295L, "a\"\\\u3042\u000a\u0000"), bytes[1, -2], )"
                         R"(ints[13, 52], [Inner(0L, null), null], Colour.GREEN))");
}

TEST(Tree, OtherClasses) {
    EXPECT_EQ(sample(1), "Plain(2, true)");
    EXPECT_EQ(sample(2), "[]");
    EXPECT_EQ(sample(3), "bytes[]");
    EXPECT_EQ(tree(nullptr), "null");
}

TEST(JavaObjects, AreMadeAndChanged) {
    EXPECT_EQ(tree(newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {62, 2})),
              "BG_TS_DTVSVLIB_BROADCAST_INFO(62, 2)");
    EXPECT_EQ(tree(newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", {-1, 0})),
              "BG_TS_DTVSVLIB_BROADCAST_INFO(-1, 0)");
    jobject request = newObject("BG_TS_DTVSVLIB_WRITE_NVRAM_REQ", "(IILjava/lang/String;I[B)V",
                                {1, 2, "name", 2, newBytes({1, 255})});
    EXPECT_EQ(tree(request), "BG_TS_DTVSVLIB_WRITE_NVRAM_REQ(1, 2, \"name\", 2, bytes[1, -1])");
    EXPECT_EQ(tree(newObject("BG_TS_DTVSVLIB_PLAY_STATUS_INFO", {1, 4294967295, 2})),
              "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(1, 4294967295L, 2)");
    EXPECT_EQ(tree(newObject("events/response/BG_EV_DTVSV_TERMINATE_REC_REPLY",
                             "(IILtype/BG_TS_DTVSVLIB_TERMINATE_REC_REPLY;)V", {3, 0, nullptr})),
              "BG_EV_DTVSV_TERMINATE_REC_REPLY(3, 0, null)");
}

TEST(JavaObjects, FinalFieldsCanBeSet) {
    jobject probe = newObject("harness/StrictProbe", {});
    EXPECT_EQ(tree(probe), "StrictProbe(7, \"text\")");
    setField(probe, "number", -3);
    setField(probe, "text", nullptr);
    EXPECT_EQ(tree(probe), "StrictProbe(-3, null)");
}

TEST(JavaObjects, ConstantsTakeAnyValueTemporarily) {
    jobject on = constant("BG_TE_DTVSVLIB_RESULT", "DTVSVLIB_RESULT_OK");
    EXPECT_EQ(tree(on), "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK");
    auto value = [&] {
        jfieldID id = env()->GetFieldID(env()->GetObjectClass(on), "value", "I");
        EXPECT_EQ(takeException(), "");
        return env()->GetIntField(on, id);
    };
    int before = value();
    {
        EnumValue odd("BG_TE_DTVSVLIB_RESULT", "DTVSVLIB_RESULT_OK", -77);
        EXPECT_EQ(value(), -77);
        EXPECT_TRUE(env()->IsSameObject(odd.object(), on));
    }
    EXPECT_EQ(value(), before);
    EXPECT_NONFATAL_FAILURE(constant("BG_TE_DTVSVLIB_RESULT", "NONE"), "NoSuchFieldError");
}

TEST(JavaObjects, MistakesFailTheTest) {
    EXPECT_NONFATAL_FAILURE(findClass("type/NO_SUCH"), "NO_SUCH");
    EXPECT_NONFATAL_FAILURE(newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {1}), "too few");
    EXPECT_NONFATAL_FAILURE(newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {1, 2, 3}),
                            "too many");
}

TEST(CallbackRecorder, KeepsWhatReachesTheListener) {
    CallbackRecorder callbacks;
    JNIEnv* jni = env();
    jclass of = findClass("BGCallBack");
    jmethodID id = jni->GetStaticMethodID(
        of, "onEvDtvsvCreateReply",
        "(Ltenrik/service/dtvserver/events/response/BG_EV_DTVSV_CREATE_REPLY;)V");
    ASSERT_EQ(takeException(), "");
    jobject event = newObject("events/response/BG_EV_DTVSV_CREATE_REPLY", {3, 0});
    jni->CallStaticVoidMethod(of, id, event);
    EXPECT_EQ(takeException(), "");
    callbacks.throwNext();
    jni->CallStaticVoidMethod(of, id, event);
    EXPECT_EQ(takeException(), "java.lang.IllegalStateException: thrown by the test");
    EXPECT_TRUE(callbacks.waitFor(2));
    EXPECT_FALSE(callbacks.waitFor(3, std::chrono::milliseconds(10)));
    std::vector<Callback> taken = callbacks.takeAll();
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].text, "onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)");
    EXPECT_EQ(taken[0].thread, "main");
    EXPECT_TRUE(callbacks.take().empty());
}

dtv::LogLine logLine(const char* text) {
    return {2, 5, "Dtv_jni", 1024, ",TENRIK,%-8s,%s,%s(),%4d,x = %d", text};
}

TEST(LogRecorder, SplitsALine) {
    TraceLine line = parseTrace(logLine(",TENRIK,main    ,DEBUG    ,getRetCode(),  12,a, b(),1,c"));
    EXPECT_EQ(line.fault, "");
    EXPECT_EQ(line.task, "main    ");
    EXPECT_EQ(line.level, "DEBUG    ");
    EXPECT_EQ(line.function, "getRetCode");
    EXPECT_EQ(line.line, 12);
    EXPECT_EQ(line.message, "a, b(),1,c");
    EXPECT_EQ(line.literal(), "Dtv_jni|1024|5|DEBUG    |getRetCode|a, b(),1,c");
}

TEST(LogRecorder, FindsFaultyLines) {
    auto fault = [](dtv::LogLine line) { return parseTrace(line).fault; };
    const char* good = ",TENRIK,main    ,DEBUG    ,f(),  12,x = 1";
    EXPECT_EQ(fault(logLine(good)), "");
    EXPECT_NE(fault(logLine(",TENRIK,main,DEBUG    ,f(),  12,x = 1")), "");
    EXPECT_NE(fault(logLine(",TENRIK,main    ,DEBUG,f(),  12,x = 1")), "");
    EXPECT_NE(fault(logLine(",TENRIK,main    ,DEBUG    ,f(),12,x = 1")), "");
    EXPECT_NE(fault(logLine(",TENRIK,main    ,DEBUG    ,f(),    ,x = 1")), "");
    EXPECT_NE(fault(logLine("x = 1")), "");
    dtv::LogLine line = logLine(good);
    line.category = 1;
    EXPECT_NE(fault(line), "");
    line = logLine(good);
    line.kind = 6;
    EXPECT_NE(fault(line), "");
    line = logLine(good);
    line.level_mask = 512;
    EXPECT_NE(fault(line), "");
    line = logLine(good);
    line.format = ",TENRIK,%-8s,%s,%s(),%d,x = %d";
    EXPECT_NE(fault(line), "");
}

TEST(LogRecorder, PlaceholdersMatchWhatChanges) {
    std::string pid = std::to_string(getpid());
    EXPECT_TRUE(matches("pid = <pid>, threadid = <tid>", "pid = " + pid + ", threadid = f00d12"));
    EXPECT_FALSE(matches("pid = <pid>", "pid = " + pid + "0"));
    EXPECT_FALSE(matches("pid = <pid>", "pid = 0"));
    EXPECT_FALSE(matches("threadid = <tid>", "threadid = 0x12"));
    EXPECT_FALSE(matches("threadid = <tid>", "threadid = 7f0012345678"));
    EXPECT_TRUE(matches("env=<ptr> ", "env=0x7f001234 "));
    EXPECT_FALSE(matches("env=<ptr> ", "env=0x7f001234"));
    EXPECT_TRUE(matches("env=<ptr>", "env=(nil)"));
    EXPECT_FALSE(matches("env=<ptr>", "env=7f001234"));
    EXPECT_TRUE(matches("index=<int> tid", "index=-12 tid"));
    EXPECT_FALSE(matches("index=<int>", "index=x"));
    EXPECT_TRUE(matches("<pod>", "<pod>"));
}

void writeTwo(const std::shared_ptr<LogRecorder>& log) {
    (void)log;
    DtvSvCom_Log(2, 5, "Dtv_jni", 128, ",TENRIK,%-8s,%s,%s(),%4d,hdl = %d", "task", "FUNCSTART",
                 "dtvSvLibRelease", 40, 3);
    DtvSvCom_Log(2, 5, "Dtv_jni", 256, ",TENRIK,%-8s,%s,%s(),%4d,", "task", "FUNCEND  ",
                 "dtvSvLibRelease", 41);
}

TEST(LogRecorder, ComparesWithLiterals) {
    auto log = LogRecorder::install();
    writeTwo(log);
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibRelease|hdl = 3
        Dtv_jni|256|5|FUNCEND  |dtvSvLibRelease|
    )");
    writeTwo(log);
    EXPECT_EQ(log->takeOf("dtvSvLibRelease").size(), 2U);
    EXPECT_TRACE(log->take(), "");
    writeTwo(log);
    std::vector<TraceLine> lines = log->take();
    auto compared = traceIs("lines", "", lines, "Dtv_jni|128|5|FUNCSTART|dtvSvLibRelease|hdl = 4");
    EXPECT_FALSE(compared);
    EXPECT_STREQ(compared.message(), "lines differs (- expected, + written):\n"
                                     "  - Dtv_jni|128|5|FUNCSTART|dtvSvLibRelease|hdl = 4\n"
                                     "  + Dtv_jni|128|5|FUNCSTART|dtvSvLibRelease|hdl = 3\n"
                                     "  + Dtv_jni|256|5|FUNCEND  |dtvSvLibRelease|\n");
    lines[1].fault = "planted";
    EXPECT_FALSE(traceIs("lines", "", lines, R"(
        Dtv_jni|128|5|FUNCSTART|dtvSvLibRelease|hdl = 3
        Dtv_jni|256|5|FUNCEND  |dtvSvLibRelease|)"));
}

TEST(StdoutCapture, TakesWhatWasWritten) {
    StdoutCapture output;
    std::printf("by printf\n");
    EXPECT_EQ(output.take(), "by printf\n");
    EXPECT_EQ(write(1, "raw\n", 4), 4);
    EXPECT_EQ(output.take(), "raw\n");
    EXPECT_EQ(output.take(), "");
}

TEST(ServiceDouble, KeepsCommandsAndAnswers) {
    ServiceDouble service;
    const uint8_t record[] = {3, 0, 0xff};
    TS_DTVSV_SP references;
    references.surface[0] = new android::Surface;
    android::sp<android::Surface> second = references.surface[0];
    references.surface_count = 1;
    service.setResult(-4);
    EXPECT_EQ(service.onCommand({0x1000000c, record, 3, &references}), -4);
    std::vector<Message> messages = service.take();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].text(), "1000000c surfaces=1: 03 00 ff");
    EXPECT_EQ(messages[0].surfaces[0].surface, second.get());
    EXPECT_EQ(messages[0].surfaces[0].strong_count, 2);
    EXPECT_EQ(messages[0].surfaces[1].surface, nullptr);

    int size = -1;
    uint8_t answer[8] = {};
    service.setReply(fromHex("0102 0304 05 06 07 08 09"), std::nullopt);
    EXPECT_EQ(service.onSynchronousCommand({0x10000038, record, 2, nullptr}, {answer, 8, &size}),
              -4);
    EXPECT_EQ(hex({answer, answer + 8}), "01 02 03 04 05 06 07 08");
    EXPECT_EQ(size, -1);
    service.setReply({7});
    service.setResult(0);
    EXPECT_EQ(service.onSynchronousCommand({0x10000038, record, 2, nullptr}, {answer, 8, &size}),
              0);
    EXPECT_EQ(size, 1);
    EXPECT_EQ(service.takeTexts(),
              (std::vector<std::string>{"10000038 sync: 03 00", "10000038 sync: 03 00"}));
}

} // namespace
