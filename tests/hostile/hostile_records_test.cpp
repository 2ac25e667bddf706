// The records that the campaign of hostile records keeps, each played once.
#include "records/input.h"
#include "records/target.h"

#include "harness/harness.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

using namespace harness;

/// The input that is played, for a process that ends in the middle of it.
char playing[8192];

void say(const char* what) {
    const char* const texts[] = {what, ": ./campaign --only records --repeat ", playing, "\n"};
    for (const char* const text : texts) {
        [[maybe_unused]] const ssize_t count = ::write(2, text, std::strlen(text));
    }
}

void endByFault(const char* text) {
    say(text);
    _exit(70);
}

TEST(HostileRecords, CorpusGetsTheAnswersThatItIsToGet) {
    ASSERT_EQ(Product::load(), "");
    std::vector<std::vector<uint8_t>> inputs;
    ASSERT_TRUE(hostile::readCorpus(HOSTILE_CORPUS, inputs));
    StdoutCapture no_lines_of_errors;
    {
        hostile::Target target(&endByFault);
        std::signal(SIGABRT, [](int) { say("the process ended"); });
        for (const std::vector<uint8_t>& data : inputs) {
            const hostile::Input input = hostile::readInput(data.data(), data.size());
            const std::string name = hostile::asHex(data.data(), data.size());
            std::snprintf(playing, sizeof playing, "%s", name.c_str());
            const std::string wrong = target.play(input);
            EXPECT_EQ(wrong, "") << hostile::described(input) << "\n" << name;
        }
        std::signal(SIGABRT, SIG_DFL);
    }
}

/// The corpus is to have each event, delivered and refused.
TEST(HostileRecords, CorpusHasEveryEvent) {
    std::vector<std::vector<uint8_t>> inputs;
    ASSERT_TRUE(hostile::readCorpus(HOSTILE_CORPUS, inputs));
    for (size_t i = 0; i < hostile::kEventCount; ++i) {
        const hostile::EventLimits& event = hostile::kEvents[i];
        bool taken = false;
        bool refused = event.form == hostile::EventLimits::kReply;
        for (const std::vector<uint8_t>& data : inputs) {
            hostile::Input input = hostile::readInput(data.data(), data.size());
            if (input.id == event.id && !input.null) {
                input.bytes.resize(hostile::kLongestRecord);
                (hostile::expected(input.id, input.bytes.data(), input.size).result == 0
                     ? taken
                     : refused) = true;
            }
        }
        EXPECT_TRUE(taken) << event.callback;
        EXPECT_TRUE(refused) << event.callback;
    }
}

} // namespace
