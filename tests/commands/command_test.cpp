#include "commands/command_test.h"

namespace commands {

using namespace harness;

void CommandTest::SetUp() {
    ASSERT_EQ(Product::load(), "");
    service = ServiceDouble::serve();
    log = LogRecorder::install();
}

std::string CommandTest::run(const std::string& name, const std::vector<Value>& arguments) {
    return run(name, "", arguments);
}

std::string CommandTest::run(const std::string& name, const std::string& descriptor,
                             const std::vector<Value>& arguments) {
    LocalFrame frame;
    log->clear();
    StrictJni::resetPeakLocals();
    jobject answer = callNative("DtvSvLib_" + name, descriptor, arguments);
    EXPECT_LE(StrictJni::peakLocals(), 16) << name;
    EXPECT_EQ(StrictJni::unreleased(), 0) << name;
    if (!lastThrown().empty()) {
        return "throws " + lastThrown();
    }
    std::string text = tree(answer);
    std::string result = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_";
    return text.compare(0, result.size(), result) == 0 ? text.substr(result.size()) : text;
}

std::string CommandTest::sent() {
    messages = service->take();
    std::string text;
    for (const Message& message : messages) {
        text += (text.empty() ? "" : "\n") + message.text();
    }
    return text;
}

} // namespace commands
