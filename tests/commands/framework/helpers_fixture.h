// The product's helpers on a listener of the test's own, under the rules of the strict table.
#pragma once

#include "commands/framework/command_helpers.h"
#include "harness/harness.h"

#include <cstdlib>

namespace commands {

class Helpers : public testing::Test {
protected:
    void SetUp() override {
        harness::VirtualMachine& machine = harness::VirtualMachine::instance();
        const char* const other = std::getenv("DTV_TEST_COMMAND_HELPERS");
        harness::StrictJni::watch(other != nullptr ? other : COMMAND_HELPERS_FILE);
        log = harness::LogRecorder::install();
        newListener(machine.vm());
        log->clear();
        harness::StrictJni::forgetLocals();
    }

    void TearDown() override {
        // References that a helper does not release would stay in the test's frame, as they do in a
        // native method's.
        EXPECT_EQ(harness::StrictJni::liveLocals(), 0);
        harness::StrictJni::forgetLocals();
    }

    std::shared_ptr<harness::LogRecorder> log;
};

} // namespace commands
