// A guide makes more references than any other event. None remains after the event, however it
// ends.
#include "events/programme/programme_cases.h"

namespace {

using namespace events;
using harness::deliver;
using harness::EventThread;
using harness::FailJni;
using harness::LogRecorder;
using harness::StrictJni;

class GuideFailure : public EventTest {
protected:
    static std::string programmes(int count) {
        std::string lines;
        for (int i = 0; i < count; ++i) {
            lines += "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\nNEW 159 92\n";
        }
        return lines;
    }
    static constexpr const char* begun = "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\n";
};

TEST_F(GuideFailure, TextThatCannotBeMade) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        for (int text = 0; text < 6; ++text) {
            SCOPED_TRACE(text);
            FailJni fail("NewString", text, leaves);
            expectRefused(guide, guide.record,
                          guide.fields + programmes(text / 2) + begun + "NOTEXT OrgNewString\n");
            EXPECT_TRUE(fail.fired());
        }
    }
    expectStillDelivered(guide);
}

TEST_F(GuideFailure, EmptyTextThatCannotBeMade) {
    Record record = guide.record;
    FailJni fail("NewString");
    expectRefused(guide, record.u32(16 + 44, 0), guide.fields + begun + "NOTEXT OrgNewString\n");
    EXPECT_TRUE(fail.fired());
}

TEST_F(GuideFailure, NibblesThatCannotBeMade) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        for (int array = 0; array < 6; ++array) {
            SCOPED_TRACE(array);
            FailJni fail("NewByteArray", array, leaves);
            expectRefused(guide, guide.record, guide.fields + programmes(array / 2) + begun);
            EXPECT_TRUE(fail.fired());
        }
    }
    expectStillDelivered(guide);
}

TEST_F(GuideFailure, ArrayOfProgrammesThatCannotBeMade) {
    Record record = guideRecord(0);
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("NewObjectArray", 0, leaves);
        EXPECT_EQ(deliver(guide.id, record.bytes()), 1);
        EXPECT_TRUE(fail.fired());
        std::vector<harness::TraceLine> lines = log->take();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.back().literal(),
                  "JNIDtvSvLibListener|256|5|FUNCEND  |recvEventFromServer|");
        EXPECT_NE(lines[lines.size() - 2].function, "DoListenerEvent");
        for (const harness::TraceLine& line : lines) {
            EXPECT_EQ(line.message.find("NG"), std::string::npos) << line.literal();
            EXPECT_EQ(line.message.find("CallStaticMethod"), std::string::npos) << line.literal();
        }
        EXPECT_TRUE(callbacks->take().empty());
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
    expectStillDelivered(guide);
}

/// The references of a delivered guide are released with one call: nine objects for each programme,
/// their array, the guide and the event.
TEST_F(GuideFailure, ReleasesAllReferencesOfADeliveredGuideTogether) {
    for (unsigned following : {0U, 8U}) {
        int deleted = StrictJni::calls("DeleteLocalRef");
        int popped = StrictJni::calls("PopLocalFrame");
        EXPECT_EQ(deliver(guide.id, guideRecord(following).bytes()), 0);
        EXPECT_EQ(StrictJni::calls("DeleteLocalRef") - deleted, 0);
        EXPECT_EQ(StrictJni::calls("PopLocalFrame") - popped, 2) << "its own and the event's";
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
}

/// When the guide can have no frame of its own, the references are released one by one.
TEST_F(GuideFailure, DropsReferencesOneByOneWithoutAFrame) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        int deleted = StrictJni::calls("DeleteLocalRef");
        int popped = StrictJni::calls("PopLocalFrame");
        FailJni fail("PushLocalFrame", 1, leaves);
        EXPECT_EQ(deliver(guide.id, guideRecord(8).bytes()), 0);
        EXPECT_TRUE(fail.fired());
        EXPECT_EQ(StrictJni::calls("DeleteLocalRef") - deleted, 93);
        EXPECT_EQ(StrictJni::calls("PopLocalFrame") - popped, 1);
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
}

/// Ten thousand guides in a row that fail at another place each time, on one thread that the bridge
/// attached.
TEST_F(GuideFailure, TenThousandInARow) {
    const Record record = guideRecord(8);
    log.reset();
    dtv::setLogSink(nullptr);
    dtv::setLogLevelMask(0);
    StrictJni::resetPeakLocals();
    int failed = 0;
    int fired = 0;
    int most_alive = 0;
    EventThread thread;
    thread.run([&] {
        for (int i = 0; i < 10000; ++i) {
            const char* function = "NewObjectV"; // 52 of them
            int place = i % 52;
            if (i % 4 == 1) {
                function = "NewString"; // 20
                place = i % 20;
            } else if (i % 4 == 2) {
                function = "NewByteArray"; // 20
                place = i % 20;
            } else if (i % 64 == 3) {
                function = "NewObjectArray";
                place = 0;
            }
            FailJni fail(function, place,
                         i % 500 == 0 ? FailJni::Leaves::exception : FailJni::Leaves::nothing);
            failed += deliver(guide.id, record.bytes()) == 1;
            fired += fail.fired();
            most_alive = std::max(most_alive, StrictJni::liveLocals());
        }
        EXPECT_EQ(deliver(guide.id, record.bytes()), 0);
        EXPECT_LE(StrictJni::peakLocals(), 256);
    });
    EXPECT_EQ(failed, 10000);
    EXPECT_EQ(fired, 10000);
    EXPECT_EQ(most_alive, 0);
    EXPECT_EQ(callbacks->take().size(), 1U);
    log = LogRecorder::install();
    expectStillDelivered(guide);
}

TEST_F(GuideFailure, TwoHundredThatThrewOrWereDelivered) {
    const Record record = guideRecord(8);
    log.reset();
    dtv::setLogSink(nullptr);
    dtv::setLogLevelMask(0);
    int delivered = 0;
    int most_alive = 0;
    EventThread thread;
    thread.run([&] {
        for (int i = 0; i < 200; ++i) {
            if (i % 20 == 7) {
                callbacks->throwNext();
            }
            delivered += deliver(guide.id, record.bytes()) == 0;
            most_alive = std::max(most_alive, StrictJni::liveLocals());
        }
    });
    EXPECT_EQ(delivered, 200);
    EXPECT_EQ(most_alive, 0);
    EXPECT_EQ(callbacks->take().size(), 200U);
    EXPECT_LE(StrictJni::peakLocals(), 256);
    log = LogRecorder::install();
}

} // namespace
