// Which messages belong together.
#include "sessions/pairing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using sessions::Link;
using sessions::Message;
using sessions::Moment;
using sessions::Pairing;
using testing::ElementsAre;

constexpr int kCreate = 0x10000000;
constexpr int kStartScan = 0x10000002;
constexpr int kCancelScan = 0x10000003;
constexpr int kSelectChannel = 0x10000006;
constexpr int kReleaseSync = 0x10000038;
constexpr int kTerminateRecSync = 0x10000040;
constexpr int kRelease = 0x10000001;
constexpr int kReleaseReply = 0x10000050;
constexpr int kCreateReply = 0x1000004f;
constexpr int kStartScanReply = 0x10000051;
constexpr int kSelectChannelReply = 0x10000054;
constexpr int kScanNotify = 0x1000007f;

constexpr uint32_t kMain = 10;
constexpr uint32_t kDelivery = 20;

/// Makes the messages of one session; each is 1000 ns after the one before it.
class Session {
public:
    Link command(int id, std::vector<uint8_t> record, uint32_t thread = kMain) {
        return add(Message::Kind::kCommand, id, 0, std::move(record), thread);
    }
    Link answer(int id, int value, std::vector<uint8_t> record = {}, uint32_t thread = kMain) {
        return add(Message::Kind::kAnswer, id, value, std::move(record), thread);
    }
    Link event(int id, std::vector<uint8_t> record, uint32_t thread = kDelivery) {
        return add(Message::Kind::kEvent, id, 0, std::move(record), thread);
    }
    Link refusal(int id, uint32_t thread = kDelivery) {
        return add(Message::Kind::kRefusedEvent, id, 1, {}, thread);
    }

    /// The numbers of the commands that wait; an ambiguous one is followed by a question mark.
    std::vector<std::string> open() const {
        std::vector<std::string> numbers;
        for (const sessions::OpenCommand& command : pairing.open()) {
            numbers.push_back(std::to_string(command.number) + (command.ambiguous ? "?" : ""));
        }
        return numbers;
    }

    Pairing pairing;
    Moment now{1774998843, 0};
    uint32_t step = 1000; ///< nanoseconds

private:
    Link add(Message::Kind kind, int id, int value, std::vector<uint8_t> record, uint32_t thread) {
        Message message;
        message.time = now;
        message.kind = static_cast<uint8_t>(kind);
        message.id = id;
        message.value = value;
        message.size = static_cast<int32_t>(record.size());
        message.record = std::move(record);
        message.thread_id = thread;
        now.nanoseconds += step;
        return pairing.add(message);
    }
};

/// "3 <- 1, 2000 ns, session 5, ambiguous"
std::string text(const Link& link) {
    std::string result = std::to_string(link.number);
    if (link.partner != 0) {
        result += " <- " + std::to_string(link.partner);
    }
    if (link.latency) {
        result += ", " + std::to_string(*link.latency) + " ns";
    }
    if (link.session) {
        result += ", session " + std::to_string(*link.session);
    }
    return result + (link.ambiguous ? ", ambiguous" : "");
}

TEST(Pairing, GivesAnAnswerToTheCommandOfItsThread) {
    Session session;
    EXPECT_EQ(text(session.command(kReleaseSync, {5, 0})), "1, session 5");
    EXPECT_THAT(session.open(), ElementsAre("1"));
    EXPECT_EQ(text(session.command(kReleaseSync, {6, 0}, 11)), "2, session 6");
    EXPECT_EQ(text(session.answer(kReleaseSync, 0, {5, 0, 0, 0, 0, 0, 0, 0})),
              "3 <- 1, 2000 ns, session 5");
    EXPECT_EQ(text(session.answer(kReleaseSync, -1, {}, 11)), "4 <- 2, 2000 ns, session 6")
        << "the session of its command";
    EXPECT_THAT(session.open(), ElementsAre());
}

TEST(Pairing, GivesNoAnswerToAnotherCommand) {
    Session session;
    EXPECT_EQ(text(session.answer(kReleaseSync, 0, {5, 0, 0, 0, 0, 0, 0, 0})), "1, session 5")
        << "none was sent";
    session.command(kReleaseSync, {5, 0});
    EXPECT_EQ(text(session.answer(kTerminateRecSync, 0)), "3") << "of another id";
    EXPECT_EQ(text(session.answer(kReleaseSync, 0, {}, 11)), "4") << "of another thread";
    EXPECT_EQ(text(session.answer(kReleaseSync, 0)), "5 <- 2, 3000 ns, session 5");
    EXPECT_EQ(text(session.answer(kReleaseSync, 0)), "6") << "answered already";
    session.command(kReleaseSync, {5, 0});
    session.command(kCancelScan, {5, 0});
    EXPECT_EQ(text(session.answer(kReleaseSync, 0)), "9") << "a later command is the last one";
    EXPECT_THAT(session.open(), ElementsAre("7"));
}

TEST(Pairing, GivesAReplyToTheCommandOfItsSession) {
    Session session;
    EXPECT_EQ(text(session.command(kSelectChannel, {3, 0, 0, 0, 1})), "1, session 3");
    EXPECT_EQ(text(session.command(kSelectChannel, {4, 1, 0, 0, 1})), "2, session 260");
    EXPECT_EQ(text(session.command(kStartScan, {3, 0})), "3, session 3");
    EXPECT_THAT(session.open(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(text(session.event(kSelectChannelReply, {4, 1, 0, 0})),
              "4 <- 2, 2000 ns, session 260");
    EXPECT_EQ(text(session.event(kStartScanReply, {3, 0})), "5 <- 3, 2000 ns, session 3");
    EXPECT_EQ(text(session.event(kScanNotify, {3, 0})), "6, session 3") << "no reply";
    EXPECT_THAT(session.open(), ElementsAre("1"));
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "7 <- 1, 6000 ns, session 3");
    EXPECT_THAT(session.open(), ElementsAre());
}

TEST(Pairing, LeavesAReplyWithoutACommandAlone) {
    Session session;
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "1, session 3");
    session.command(kSelectChannel, {3, 0});
    EXPECT_EQ(text(session.event(kSelectChannelReply, {4, 0})), "3, session 4");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "4 <- 2, 2000 ns, session 3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "5, session 3");
    session.command(kCancelScan, {3, 0});
    EXPECT_THAT(session.open(), ElementsAre()) << "no event follows this one";
}

TEST(Pairing, MarksTwoOpenCommandsOfOneKindAsAmbiguous) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kSelectChannel, {3, 0}, 11);
    session.command(kSelectChannel, {4, 0});
    EXPECT_THAT(session.open(), ElementsAre("1?", "2?", "3"));
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})),
              "4 <- 1, 3000 ns, session 3, ambiguous");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {4, 0})), "5 <- 3, 2000 ns, session 4");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})),
              "6 <- 2, 4000 ns, session 3, ambiguous");
    session.command(kSelectChannel, {3, 0});
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "8 <- 7, 1000 ns, session 3");
}

TEST(Pairing, WaitsForNoReplyToACommandThatWasNotTaken) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kSelectChannel, {3, 0}, 11);
    EXPECT_THAT(session.open(), ElementsAre("1?", "2?"));
    EXPECT_EQ(text(session.answer(kSelectChannel, -1, {}, 11)), "3 <- 2, 1000 ns, session 3");
    EXPECT_THAT(session.open(), ElementsAre("1")) << "there is but one";
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "4 <- 1, 3000 ns, session 3");

    session.command(kSelectChannel, {3, 0});
    EXPECT_EQ(text(session.answer(kSelectChannel, -1)), "6 <- 5, 1000 ns, session 3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "7, session 3");

    session.command(kSelectChannel, {3, 0});
    EXPECT_EQ(text(session.answer(kSelectChannel, 0)), "9 <- 8, 1000 ns, session 3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "10 <- 8, 2000 ns, session 3")
        << "it was taken, whatever was written of it";
}

TEST(Pairing, KeepsAnEarlierAmbiguityAfterARefusal) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kSelectChannel, {3, 0}, 11);
    session.command(kSelectChannel, {3, 0}, 12);
    session.answer(kSelectChannel, -1, {}, 12);
    EXPECT_THAT(session.open(), ElementsAre("1?", "2?"));
    EXPECT_EQ(text(session.answer(kSelectChannel, -1)), "5 <- 1, 4000 ns, session 3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})),
              "6 <- 2, 4000 ns, session 3, ambiguous");
}

TEST(Pairing, AsksForNoHandleWhereTheRequestHasNone) {
    Session session;
    EXPECT_EQ(text(session.command(kCreate, {0, 0, 0, 0})), "1");
    EXPECT_EQ(text(session.event(kCreateReply, {9, 0, 0, 0, 0, 0, 0, 0})),
              "2 <- 1, 1000 ns, session 9");
    session.command(kCreate, {0, 0, 0, 0});
    session.command(kCreate, {0, 0, 0, 0});
    EXPECT_EQ(text(session.event(kCreateReply, {9, 0, 0, 0, 0, 0, 0, 0})),
              "5 <- 3, 2000 ns, session 9, ambiguous");
    EXPECT_EQ(text(session.event(kCreateReply, {7})), "6 <- 4, 2000 ns, ambiguous")
        << "its own handle is not needed either";
}

TEST(Pairing, PairsNothingWhoseHandleIsCut) {
    Session session;
    EXPECT_EQ(text(session.command(kSelectChannel, {3})), "1");
    EXPECT_EQ(text(session.command(kSelectChannel, {})), "2");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3})), "3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {})), "4");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "5, session 3");
    EXPECT_THAT(session.open(), ElementsAre("1", "2"));
    EXPECT_EQ(text(session.answer(kSelectChannel, -1)), "6 <- 2, 4000 ns") << "by its thread";
    EXPECT_THAT(session.open(), ElementsAre("1"));
}

TEST(Pairing, GivesARefusalToTheEventOfItsThread) {
    Session session;
    EXPECT_EQ(text(session.event(kScanNotify, {3, 0})), "1, session 3");
    EXPECT_EQ(text(session.event(kScanNotify, {4, 0}, 21)), "2, session 4");
    session.command(kCancelScan, {3, 0}, kDelivery);
    EXPECT_EQ(text(session.refusal(kScanNotify)), "4 <- 1, 3000 ns, session 3")
        << "a callback may send commands";
    EXPECT_EQ(text(session.refusal(kScanNotify)), "5") << "refused already";
    EXPECT_EQ(text(session.refusal(kStartScanReply, 21)), "6") << "of another id";
    EXPECT_EQ(text(session.refusal(kScanNotify, 21)), "7 <- 2, 5000 ns, session 4");
    EXPECT_EQ(text(session.refusal(kScanNotify, 22)), "8") << "of another thread";
}

TEST(Pairing, AllowsTimesThatGoBack) {
    Session session;
    session.now = {1774998843, 500};
    session.command(kSelectChannel, {3, 0});
    session.now = {1774998842, 999999999};
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "2 <- 1, -501 ns, session 3");
    session.now = {std::numeric_limits<int64_t>::min(), 0};
    session.command(kSelectChannel, {3, 0});
    session.now = {1774998842, 0};
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "4 <- 3, session 3")
        << "beyond 64 bits";
}

TEST(Pairing, CountsWhatIsNoMessage) {
    Session session;
    session.pairing.pass();
    EXPECT_EQ(text(session.command(kSelectChannel, {3, 0})), "2, session 3");
    session.pairing.pass();
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "4 <- 2, 1000 ns, session 3");
}

TEST(Pairing, GivesUpWhatWaitsWhenItsSessionIsReleased) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kSelectChannel, {4, 0});
    session.command(kStartScan, {3, 0});
    session.command(kRelease, {3, 0});
    session.command(kSelectChannel, {3, 0}, 11);
    EXPECT_EQ(text(session.event(kStartScanReply, {3, 0})), "6 <- 3, 3000 ns, session 3")
        << "before the release is carried out";
    EXPECT_EQ(text(session.event(kReleaseReply, {3, 0, 0, 0, 0, 0, 0, 0})),
              "7 <- 4, 3000 ns, session 3");
    EXPECT_THAT(session.open(), ElementsAre("1?", "2", "5?"));
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0, 0, 0, 1, 0, 0, 0})),
              "8 <- 5, 3000 ns, session 3, ambiguous")
        << "sent after the release, it is answered with an error";
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "9, session 3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {4, 0})), "10 <- 2, 8000 ns, session 4");
    EXPECT_THAT(session.open(), ElementsAre("1?"));
}

TEST(Pairing, GivesUpNothingForAReleaseThatFails) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kRelease, {3, 0});
    session.event(kReleaseReply, {3, 0, 0, 0, 1, 0, 0, 0});
    session.command(kRelease, {3, 0});
    session.event(kReleaseReply, {3, 0, 0, 0, 0, 0, 0}); // ends before the result does
    session.command(kReleaseSync, {3, 0});
    session.answer(kReleaseSync, 0, {3, 0, 0, 0, 0xff, 0xff, 0xff, 0xff});
    session.command(kReleaseSync, {3, 0});
    session.answer(kReleaseSync, -1, {3, 0, 0, 0, 0, 0, 0, 0});
    session.command(kReleaseSync, {3, 0});
    session.answer(kReleaseSync, 0);
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "12 <- 1, 11000 ns, session 3");
}

TEST(Pairing, GivesUpWhatWaitsAfterASynchronousRelease) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kReleaseSync, {3, 0});
    session.command(kReleaseSync, {3, 0}, 11);
    session.command(kStartScan, {3, 0}, 12);
    session.answer(kReleaseSync, 0, {3, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_THAT(session.open(), ElementsAre("1", "3", "4"));
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "6, session 3");
    EXPECT_EQ(text(session.answer(kReleaseSync, 0, {}, 11)), "7 <- 3, 4000 ns, session 3")
        << "its thread still waits";
    EXPECT_EQ(text(session.event(kStartScanReply, {3, 0})), "8 <- 4, 4000 ns, session 3");
    EXPECT_EQ(text(session.answer(kSelectChannel, -1)), "9") << "no longer the last command";
    EXPECT_THAT(session.open(), ElementsAre("1"));
}

TEST(Pairing, GivesUpWhatAnEarlierSessionWithTheHandleLeft) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kSelectChannel, {4, 0});
    session.command(kCreate, {0, 0, 0, 0});
    session.event(kCreateReply, {4, 0, 0, 0, 5, 0, 0, 0}); // not done
    session.command(kCreate, {0, 0, 0, 0});
    session.event(kCreateReply, {3, 0, 0, 0, 0, 0, 0, 0});
    session.command(kSelectChannel, {3, 0});
    EXPECT_THAT(session.open(), ElementsAre("1", "2", "7"));
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "8 <- 7, 1000 ns, session 3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {4, 0})), "9 <- 2, 7000 ns, session 4");
    EXPECT_THAT(session.open(), ElementsAre("1"));
}

TEST(Pairing, KnowsOfACommandThatWasNotTakenAfterTheReleaseToo) {
    Session session;
    session.command(kSelectChannel, {3, 0}, 11);
    session.command(kRelease, {3, 0});
    session.event(kReleaseReply, {3, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_THAT(session.open(), ElementsAre("1"));
    EXPECT_EQ(text(session.answer(kSelectChannel, -1, {}, 11)), "4 <- 1, 3000 ns, session 3");
    EXPECT_THAT(session.open(), ElementsAre());
}

TEST(Pairing, PairsNothingWithAnEarlierSection) {
    Session session;
    session.command(kSelectChannel, {3, 0});
    session.command(kReleaseSync, {3, 0});
    session.event(kScanNotify, {3, 0});
    session.pairing.beginSection();
    EXPECT_EQ(text(session.answer(kReleaseSync, 0, {3, 0, 0, 0, 0, 0, 0, 0})), "4, session 3");
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})), "5, session 3");
    EXPECT_EQ(text(session.refusal(kScanNotify)), "6");
    EXPECT_EQ(text(session.command(kSelectChannel, {3, 0})), "7, session 3");
    EXPECT_THAT(session.open(), ElementsAre("1", "2", "7"));
}

TEST(Pairing, TakesAnswersThatCannotBe) {
    Session session;
    session.command(kReleaseReply, {3, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(text(session.answer(kReleaseReply, 0, {3, 0, 0, 0, 0, 0, 0, 0})),
              "2 <- 1, 1000 ns, session 3");
}

TEST(Pairing, PassesOverUnknownMessages) {
    Session session;
    EXPECT_EQ(text(session.command(0x10000008, {3, 0})), "1");
    EXPECT_EQ(text(session.answer(0x10000008, -1)), "2 <- 1, 1000 ns");
    EXPECT_EQ(text(session.event(0x10000075, {3, 0})), "3");
    EXPECT_EQ(text(session.refusal(0x10000075)), "4 <- 3, 1000 ns");
    Message message;
    message.kind = 9;
    message.id = kSelectChannel;
    message.record = {3, 0};
    EXPECT_EQ(text(session.pairing.add(message)), "5");
    EXPECT_THAT(session.open(), ElementsAre());
}

TEST(Pairing, KeepsNothingOfWhatIsDone) {
    Session session;
    session.step = 0;
    for (int i = 0; i < 100000; ++i) {
        const auto handle = static_cast<uint8_t>(i % 200);
        session.command(kSelectChannel, {handle, 0});
        session.event(kSelectChannelReply, {handle, 0});
        session.command(kReleaseSync, {handle, 0});
        session.answer(kReleaseSync, 0, {handle, 0, 0, 0, 0, 0, 0, 0});
    }
    EXPECT_THAT(session.open(), ElementsAre());
    EXPECT_EQ(text(session.event(kScanNotify, {3, 0})), "400001, session 3");
}

TEST(Pairing, KeepsPaceWithoutReplies) {
    Session session;
    session.step = 0;
    for (int i = 0; i < 200000; ++i) {
        session.command(kSelectChannel, {3, 0});
    }
    EXPECT_EQ(session.pairing.open().size(), 200000u);
    EXPECT_EQ(text(session.event(kSelectChannelReply, {3, 0})),
              "200001 <- 1, 0 ns, session 3, ambiguous");
}

TEST(Pairing, KeepsNoMoreWaitingThanItMay) {
    Session oldest;
    for (uint8_t handle = 1; handle <= 3; ++handle) {
        oldest.command(kStartScan, {handle, 0});
        oldest.pairing.keepWaiting(2, Pairing::GiveUp::kOldest);
    }
    EXPECT_EQ(oldest.pairing.takeGivenUp().at(0).number, 1U);
    EXPECT_EQ(oldest.event(kStartScanReply, {1, 0}).partner, 0U);
    EXPECT_EQ(oldest.event(kStartScanReply, {2, 0}).partner, 2U);
    EXPECT_EQ(oldest.event(kStartScanReply, {3, 0}).partner, 3U);

    Session newest;
    for (uint8_t handle = 1; handle <= 3; ++handle) {
        newest.command(kStartScan, {handle, 0});
        newest.pairing.keepWaiting(2, Pairing::GiveUp::kNewest);
    }
    EXPECT_EQ(newest.event(kStartScanReply, {3, 0}).partner, 0U);
    EXPECT_EQ(newest.event(kStartScanReply, {1, 0}).partner, 1U);
    newest.command(kStartScan, {3, 0});
    newest.pairing.keepWaiting(2, Pairing::GiveUp::kNewest);
    EXPECT_EQ(newest.event(kStartScanReply, {3, 0}).partner, 6U);
}

} // namespace
