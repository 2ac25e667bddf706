// The order of a description's JNI calls, in cases in which a failure between two of them shows it.
#include "events/programme/programme_cases.h"

#include <algorithm>

namespace {

using namespace events;
using harness::deliver;
using harness::FailJni;
using harness::JniCall;
using harness::ObservedJni;

class NetworkOrder : public EveryEvent {};
INSTANTIATE_TEST_SUITE_P(Event, NetworkOrder, testing::Values(networkCase(), scanCase()), nameOf);

/// Both strings, then their lengths, then the check of the count, then the array.
TEST_P(NetworkOrder, IsMadeInOrder) {
    const Case& of = GetParam();
    std::vector<std::string> names = {"NewStringUTF", "NewStringUTF", "GetStringUTFLength",
                                      "GetStringUTFLength"};
    auto made = [&of](const Record& record) {
        std::vector<std::string> calls;
        ObservedJni observed([&calls](const JniCall& call) {
            for (const char* wanted :
                 {"NewStringUTF", "GetStringUTFLength", "NewIntArray", "SetIntArrayRegion"}) {
                if (std::string(call.function) == wanted) {
                    calls.emplace_back(wanted);
                }
            }
        });
        deliver(of.id, record.bytes());
        return calls;
    };
    const size_t count_at = of.id == networkCase().id ? 106 : 110;
    EXPECT_EQ(made(Record(of.record).u16(count_at, 9)), names) << "refused for its count";
    names.insert(names.end(), {"NewIntArray", "SetIntArrayRegion"});
    EXPECT_EQ(made(of.record), names);
    log->clear();
    callbacks->take();
}

class GuideOrder : public EventTest {};

/// The programmes that follow are all built, with their lines, before the array that holds them.
TEST_F(GuideOrder, FollowingProgrammesComeBeforeTheirArray) {
    const Case& guide = guideCase();
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("NewObjectArray", 0, leaves);
        std::string lines = guide.fields;
        for (int programme = 0; programme < 3; ++programme) {
            lines += "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\nNEW 159 92\n";
        }
        expectRefused(guide, guide.record, lines);
        EXPECT_TRUE(fail.fired());
    }
    expectStillDelivered(guide);
}

TEST_F(GuideOrder, ArrayIsMadeAfterTheLastProgrammeAndBeforeTheGuide) {
    std::vector<std::string> calls;
    {
        ObservedJni observed([&calls](const JniCall& call) {
            const std::string name = call.function;
            if (name == "NewObjectV" || name == "NewObjectArray" ||
                name == "SetObjectArrayElement") {
                calls.push_back(name);
            }
        });
        EXPECT_EQ(deliver(guideCase().id, guideRecord(2).bytes()), 0);
    }
    // Five objects for each of four programmes, then the array, its elements, the guide, the event.
    const auto array = std::find(calls.begin(), calls.end(), "NewObjectArray");
    EXPECT_EQ(std::count(calls.begin(), array, "NewObjectV"), 20);
    EXPECT_EQ(std::count(array, calls.end(), "NewObjectV"), 2);
    EXPECT_EQ(std::count(array, calls.end(), "SetObjectArrayElement"), 2);
    log->clear();
    callbacks->take();
}

} // namespace
