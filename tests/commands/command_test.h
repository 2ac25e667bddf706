// What the tests of commands share: a fixture, and a short way to compare trace lines.
#pragma once

#include "harness/harness.h"
#include "harness/trace_text.h"

#include <memory>
#include <string>
#include <vector>

namespace commands {

/// The lines of the native method `native`, in the notation of harness/trace_text.h.
#define EXPECT_LINES(native, expected)                                                             \
    EXPECT_TRACE(log->take(), ::harness::nativeTrace(native, expected))

class CommandTest : public testing::Test {
protected:
    void SetUp() override;

    /// Calls a native method (its name without "DtvSvLib_") and returns its answer as a tree,
    /// without the result enumeration's name. A command holds at most 16 references at once, and
    /// releases what it takes from strings and arrays.
    std::string run(const std::string& name, const std::vector<harness::Value>& arguments);
    /// The same for a method whose descriptor cannot be found by reflection.
    std::string run(const std::string& name, const std::string& descriptor,
                    const std::vector<harness::Value>& arguments);

    /// What was sent since the last call, "" for nothing. Kept in `messages`.
    std::string sent();

    std::shared_ptr<harness::ServiceDouble> service;
    std::shared_ptr<harness::LogRecorder> log;
    std::vector<harness::Message> messages;
};

constexpr const char* outOfMemory =
    "throws java.lang.OutOfMemoryError: as if the VM had no memory left";

} // namespace commands
