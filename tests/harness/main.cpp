// The main program of every test binary.
#include "harness/harness.h"

namespace harness {
namespace {

/// Gives each test a frame of local references of its own (the main thread never returns to Java,
/// where references would end), and fails a test that leaves a Java exception to the next one.
class TestEdges : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        pushed = VirtualMachine::exists() && env()->PushLocalFrame(512) == JNI_OK;
    }
    void OnTestEnd(const testing::TestInfo&) override {
        if (VirtualMachine::exists()) {
            EXPECT_EQ(takeException(), "") << "the test left a Java exception pending";
        }
        if (pushed) {
            env()->PopLocalFrame(nullptr);
        }
    }
    bool pushed = false;
};

} // namespace
} // namespace harness

int main(int argc, char** argv) {
    using namespace harness;
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new TestEdges);
    int result = RUN_ALL_TESTS();
    dtv::stopDelivery();
    endEventThreads();
    if (VirtualMachine::exists()) {
        VirtualMachine::instance().destroy();
    }
    return result;
}
