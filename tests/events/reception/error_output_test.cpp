// The copies of ERROR lines on standard output, and that nothing else is written there.
#include "harness/harness.h"

#include <cstdio>

namespace {

using namespace harness;

/// Whether `output` is one copy: "module(  pid):<task    >ERROR     [function():line] message\n",
/// whatever the source line.
testing::AssertionResult isCopy(const std::string& output, const std::string& task,
                                const std::string& function, const std::string& message) {
    char pid[16];
    std::snprintf(pid, sizeof pid, "%5d", static_cast<int>(getpid()));
    std::string head = std::string("JNIDtvSvLibListener(") + pid + "):<" + task + ">ERROR     [" +
                       function + "():";
    size_t close = output.find(']', head.size());
    if (output.compare(0, head.size(), head) != 0 || close == std::string::npos) {
        return testing::AssertionFailure() << output << "does not begin with " << head;
    }
    std::string line = output.substr(head.size(), close - head.size());
    size_t digits = line.find_first_not_of(' ');
    if (line.size() < 4 || digits == std::string::npos || (line.size() > 4 && digits != 0) ||
        line.find_first_not_of("0123456789", digits) != std::string::npos) {
        return testing::AssertionFailure() << output << "has no source line of 4 columns";
    }
    if (output.substr(close) != "] " + message + "\n") {
        return testing::AssertionFailure() << output << "does not end with " << message;
    }
    return testing::AssertionSuccess();
}

std::string ownTask() {
    char name[16];
    pthread_getname_np(pthread_self(), name, sizeof name);
    char padded[32];
    std::snprintf(padded, sizeof padded, "%-8s", name);
    return padded;
}

class ErrorOutput : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Product::load(), "");
        log = LogRecorder::install();
    }

    /// The one ERROR line that was written.
    std::string errorLine() {
        std::string found;
        for (const TraceLine& line : log->take()) {
            EXPECT_EQ(line.fault, "");
            if (line.level == "ERROR    ") {
                EXPECT_EQ(found, "");
                found = line.literal();
            }
        }
        return found;
    }

    std::shared_ptr<LogRecorder> log;
};

TEST_F(ErrorOutput, ThreadOfSlot0CannotBeAttached) {
    EventThread thread;
    thread.run([] { pthread_setname_np(pthread_self(), "abc"); });
    StdoutCapture output;
    FailJni fail("AttachCurrentThread");
    thread.run([] { EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), -1); });
    EXPECT_TRUE(isCopy(output.take(), "abc     ", "getJNIEnv", "AttachCurrentThread error!"));
    EXPECT_EQ(errorLine(),
              "JNIDtvSvLibListener|2|6|ERROR    |getJNIEnv|AttachCurrentThread error!");
}

TEST_F(ErrorOutput, LaterThreadCannotBeAttached) {
    ASSERT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), 0);
    EventThread thread;
    thread.run([] { pthread_setname_np(pthread_self(), "eleven_char"); });
    StdoutCapture output;
    FailJni fail("AttachCurrentThread");
    thread.run([] { EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), -1); });
    EXPECT_TRUE(
        isCopy(output.take(), "eleven_char", "getJNIEnv", "AttachCurrentThread() error! index=1"));
    EXPECT_EQ(errorLine(),
              "JNIDtvSvLibListener|2|6|ERROR    |getJNIEnv|AttachCurrentThread() error! index=1");
}

TEST_F(ErrorOutput, RecordOfAnotherSize) {
    for (int size : {115, 117}) {
        StdoutCapture output;
        EXPECT_EQ(deliver(0x10000044, std::vector<uint8_t>(static_cast<size_t>(size))), 1);
        std::string message = "recv_size err!, recv_size = " + std::to_string(size);
        EXPECT_TRUE(
            isCopy(output.take(), ownTask(), "dtvsv_msgid_lib_bml_write_nvram_req", message));
        EXPECT_EQ(errorLine(), "JNIDtvSvLibListener|2|6|ERROR    |"
                               "dtvsv_msgid_lib_bml_write_nvram_req|" +
                                   message);
    }
}

TEST_F(ErrorOutput, EventThatCannotBeBuilt) {
    StdoutCapture output;
    FailJni fail("NewObjectV");
    EXPECT_EQ(deliver(0x10000044, std::vector<uint8_t>(116)), 1);
    EXPECT_TRUE(isCopy(output.take(), ownTask(), "dtvsv_msgid_lib_bml_write_nvram_req",
                       "CallMethod NG, ret = 1"));
    EXPECT_EQ(errorLine(), "JNIDtvSvLibListener|2|6|ERROR    |dtvsv_msgid_lib_bml_write_nvram_req|"
                           "CallMethod NG, ret = 1");
}

TEST_F(ErrorOutput, TextThatCannotBeMade) {
    StdoutCapture output;
    FailJni fail("NewStringUTF");
    EXPECT_EQ(deliver(0x10000044, std::vector<uint8_t>(116)), 1);
    EXPECT_TRUE(isCopy(output.take(), ownTask(), "dtvsv_msgid_lib_bml_write_nvram_req",
                       "ERROR NewStringUTF"));
    EXPECT_EQ(errorLine(), "JNIDtvSvLibListener|2|6|ERROR    |dtvsv_msgid_lib_bml_write_nvram_req|"
                           "ERROR NewStringUTF");
}

TEST_F(ErrorOutput, NoOtherLevelIsCopied) {
    auto service = ServiceDouble::serve();
    CallbackRecorder callbacks;
    StdoutCapture output;
    EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), 0);
    EXPECT_EQ(deliver(0x10000051, std::vector<uint8_t>(16)), 1) << "a size that is logged at DEBUG";
    {
        FailJni fail("NewObjectV");
        EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), 1);
    }
    EXPECT_EQ(call("DtvSvLib_Create", {5, 0}), "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG");
    service->setResult(-1);
    EXPECT_EQ(call("DtvSvLib_Release", {3}), "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG");
    EXPECT_EQ(output.take(), "");
    EXPECT_EQ(errorLine(), "");
}

TEST(ErrorOutputOfALoad, IsEmpty) {
    StdoutCapture output;
    ASSERT_EQ(Product::load(), "");
    EXPECT_EQ(output.take(), "");
}

} // namespace
