// The programme guide of a service: its objects, its counts, its size.
#include "events/programme/programme_cases.h"

namespace {

using namespace events;
using harness::deliver;
using harness::FailJni;
using harness::StrictJni;

class Guide : public EveryEvent {};
INSTANTIATE_TEST_SUITE_P(Event, Guide, testing::Values(guide), nameOf);

TEST_P(Guide, IsDelivered) {
    isDelivered();
}

TEST_P(Guide, OneByteShortOrLongIsRefused) {
    oneByteShortOrLong();
}

TEST_P(Guide, AnyLengthIsSafe) {
    anyLengthIsSafe();
}

TEST_P(Guide, ObjectThatCannotBeBuilt) {
    constructionFails(FailJni::Leaves::exception);
    constructionFails(FailJni::Leaves::nothing);
}

TEST_P(Guide, CallbackThatThrowsWasCalled) {
    callbackThrows();
}

class GuideCounts : public EventTest {
protected:
    /// The lines before the size is checked, of guideRecord(count).
    static std::string fields(unsigned count) {
        return "DEBUG |handle = 3\n"
               "DEBUG |EPG_INFO : svc_id = 101, after_prg_infoCnt = " +
               std::to_string(count) +
               "\n"
               "DEBUG |CUR START DATE : year = 33025, month = 33282, day = 33539\n"
               "DEBUG |CUR START TIME : hour = 33796, min = 34053, sec = 34310, mil_sec = 34567\n"
               "DEBUG |CUR DURATION TIME : hour = 37121, min = 37378, sec = 37635, mil_sec = "
               "37892\n"
               "DEBUG |NEXT START DATE : year = 2024, month = 2, day = 29\n"
               "DEBUG |NEXT START TIME : hour = 23, min = 59, sec = 58, mil_sec = 999\n"
               "DEBUG |NEXTDURATION TIME : hour = 1, min = 30, sec = 15, mil_sec = 500\n"
               "DEBUG |NEXT PRG_INFO : evtId = 16909060, start_day_of_week = 4, freeca = 3, "
               "nibble_cnt = 2, content_nibble = 145, user_nibble = 90, name_size = 3, name = "
               "|B0D0F0|, text_size = 10, text = |T|\n";
    }
    static std::string programmes(int count) {
        std::string lines;
        for (int i = 0; i < count; ++i) {
            lines += "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\nNEW 159 92\n";
        }
        return lines;
    }
    /// The lines after the programmes have been built.
    static constexpr const char* rest = "NEW 151 84\nNEW 96 28\nSTATIC 28\nEND |ret = 0\n";

    static std::string event(const std::string& count, const std::string& following) {
        return std::string("onEvDtvsvReceiveEpgInfoNotify "
                           "BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(3, BG_TS_DTVSVLIB_EPG_INFO(101, ") +
               currentTree + ", " + nextTree + ", " + count + ", [" + following + "]), 62L, 2)";
    }
};

TEST_F(GuideCounts, NoFollowingProgramme) {
    expectDelivered(guide, guideRecord(0), event("0", ""), fields(0) + programmes(2) + rest);
}

TEST_F(GuideCounts, EightFollowingProgrammes) {
    StrictJni::resetPeakLocals();
    expectDelivered(guide, guideRecord(8),
                    event("8", followingTree(0) + ", " + followingTree(1) + ", " +
                                   followingTree(2) + ", " + followingTree(3) + ", " +
                                   followingTree(4) + ", " + followingTree(5) + ", " +
                                   followingTree(6) + ", " + followingTree(7)),
                    fields(8) + programmes(10) + rest);
    EXPECT_LE(StrictJni::peakLocals(), 256);
}

TEST_F(GuideCounts, NineAreRefused) {
    for (unsigned count : {9U, 256U, 65535U}) {
        expectRefused(guide, guideRecord(count),
                      fields(count) + "DEBUG |ERROR after_prg_infoCnt is over count\n");
    }
    expectStillDelivered(guide);
}

TEST_F(GuideCounts, TheSizeIsCheckedFirst) {
    Record record = guideRecord(9);
    expect(guide, record.bytes(), 6379, 1, "",
           "START\n" + fields(9) + "DEBUG |recv_size err!, recv_size = 6379\n");
}

TEST_F(GuideCounts, FieldsSentInPartAreLoggedAsSent) {
    expect(guide, guide.record.bytes(), 0, 1, "",
           "START\n"
           "DEBUG |handle = 0\n"
           "DEBUG |EPG_INFO : svc_id = 0, after_prg_infoCnt = 0\n"
           "DEBUG |CUR START DATE : year = 0, month = 0, day = 0\n"
           "DEBUG |CUR START TIME : hour = 0, min = 0, sec = 0, mil_sec = 0\n"
           "DEBUG |CUR DURATION TIME : hour = 0, min = 0, sec = 0, mil_sec = 0\n"
           "DEBUG |NEXT START DATE : year = 0, month = 0, day = 0\n"
           "DEBUG |NEXT START TIME : hour = 0, min = 0, sec = 0, mil_sec = 0\n"
           "DEBUG |NEXTDURATION TIME : hour = 0, min = 0, sec = 0, mil_sec = 0\n"
           "DEBUG |NEXT PRG_INFO : evtId = 0, start_day_of_week = 0, freeca = 0, nibble_cnt = 0, "
           "content_nibble = 0, user_nibble = 0, name_size = 0, name = ||, text_size = 0, text = "
           "||\n"
           "DEBUG |recv_size err!, recv_size = 0\n");
    // The record ends within the next programme's name, two of its units sent.
    expect(guide, guide.record.bytes(), 703, 1, "",
           "START\n"
           "DEBUG |handle = 65244\n"
           "DEBUG |EPG_INFO : svc_id = 46259, after_prg_infoCnt = 0\n"
           "DEBUG |CUR START DATE : year = 33025, month = 33282, day = 33539\n"
           "DEBUG |CUR START TIME : hour = 33796, min = 34053, sec = 34310, mil_sec = 34567\n"
           "DEBUG |CUR DURATION TIME : hour = 37121, min = 37378, sec = 37635, mil_sec = 37892\n"
           "DEBUG |NEXT START DATE : year = 2024, month = 2, day = 29\n"
           "DEBUG |NEXT START TIME : hour = 23, min = 59, sec = 58, mil_sec = 999\n"
           "DEBUG |NEXTDURATION TIME : hour = 1, min = 30, sec = 15, mil_sec = 500\n"
           "DEBUG |NEXT PRG_INFO : evtId = 16909060, start_day_of_week = 4, freeca = 3, nibble_cnt "
           "= 2, content_nibble = 145, user_nibble = 90, name_size = 3, name = |B0D|, text_size = "
           "0, text = ||\n"
           "DEBUG |recv_size err!, recv_size = 703\n");
}

/// The next programme with another number of nibbles, of seven that are there.
class GuideNibbles : public GuideCounts {
protected:
    void expectNibbles(unsigned count, const std::string& to_java) {
        SCOPED_TRACE(count);
        Record record = guideRecord(0);
        record.u8(652 + 29, count)
            .raw(652 + 30, "\x11\x12\x13\x14\x15\x16\x97")
            .raw(652 + 37, "\x21\x22\x23\x24\x25\x26\xA7");
        std::string next =
            "BG_TS_DTVSVLIB_PRG_INFO(16909060, BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE(2024, "
            "2, 29), BG_TS_DTVSVLIB_TIME(23, 59, 58, 999)), 4, BG_TS_DTVSVLIB_TIME(1, 30, 15, "
            "500), 3, " +
            to_java + ", 9, \"\\u3042\\u3044\\u3046\", 10, \"Text of it\")";
        expectDelivered(
            guide, record,
            std::string("onEvDtvsvReceiveEpgInfoNotify BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(3, "
                        "BG_TS_DTVSVLIB_EPG_INFO(101, ") +
                currentTree + ", " + next + ", 0, []), 62L, 2)",
            "DEBUG |handle = 3\n"
            "DEBUG |EPG_INFO : svc_id = 101, after_prg_infoCnt = 0\n"
            "DEBUG |CUR START DATE : year = 33025, month = 33282, day = 33539\n"
            "DEBUG |CUR START TIME : hour = 33796, min = 34053, sec = 34310, mil_sec = 34567\n"
            "DEBUG |CUR DURATION TIME : hour = 37121, min = 37378, sec = 37635, mil_sec = 37892\n"
            "DEBUG |NEXT START DATE : year = 2024, month = 2, day = 29\n"
            "DEBUG |NEXT START TIME : hour = 23, min = 59, sec = 58, mil_sec = 999\n"
            "DEBUG |NEXTDURATION TIME : hour = 1, min = 30, sec = 15, mil_sec = 500\n"
            "DEBUG |NEXT PRG_INFO : evtId = 16909060, start_day_of_week = 4, freeca = 3, "
            "nibble_cnt "
            "= " +
                std::to_string(count) +
                ", content_nibble = 17, user_nibble = 33, name_size = 3, name = |B0D0F0|, "
                "text_size = 10, text = |T|\n" +
                programmes(2) + rest);
    }
};

TEST_F(GuideNibbles, AreAtMostSeven) {
    expectNibbles(0, "0, bytes[], bytes[]");
    expectNibbles(1, "1, bytes[17], bytes[33]");
    expectNibbles(6, "6, bytes[17, 18, 19, 20, 21, 22], bytes[33, 34, 35, 36, 37, 38]");
    const std::string seven =
        "7, bytes[17, 18, 19, 20, 21, 22, -105], bytes[33, 34, 35, 36, 37, 38, -89]";
    expectNibbles(7, seven);
    expectNibbles(8, seven);
    expectNibbles(128, seven);
    expectNibbles(255, seven);
}

} // namespace
