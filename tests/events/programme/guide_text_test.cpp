// Names and texts of the guide: UTF-16 units, counted by the record and clamped to their fields.
#include "events/programme/programme_cases.h"

namespace {

using namespace events;

/// Of the next programme.
constexpr size_t nameAt = 652 + 44;
constexpr size_t textAt = 652 + 244;

class GuideText : public EventTest {
protected:
    /// Delivers the record and expects these ends of the next programme's line and object.
    void expectNext(const Record& record, const std::string& logged, const std::string& to_java) {
        expectDelivered(
            guide, record,
            std::string("onEvDtvsvReceiveEpgInfoNotify BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(3, "
                        "BG_TS_DTVSVLIB_EPG_INFO(101, ") +
                currentTree +
                ", BG_TS_DTVSVLIB_PRG_INFO(16909060, "
                "BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE(2024, 2, 29), "
                "BG_TS_DTVSVLIB_TIME(23, 59, 58, 999)), 4, BG_TS_DTVSVLIB_TIME(1, 30, 15, 500), 3, "
                "2, bytes[-111, 52], bytes[90, -1], " +
                to_java + "), 0, []), 62L, 2)",
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
            "= 2, content_nibble = 145, user_nibble = 90, " +
                logged +
                "\n"
                "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\nNEW 159 92\n"
                "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\nNEW 159 92\n"
                "NEW 151 84\nNEW 96 28\nSTATIC 28\nEND |ret = 0\n");
    }
};

TEST_F(GuideText, OfSizeZeroIsEmpty) {
    expectNext(guideRecord(0).u32(nameAt, 0).u32(textAt, 0),
               "name_size = 0, name = |B0D0F0|, text_size = 0, text = |T|", "0, \"\", 0, \"\"");
}

/// Only the size determines where a text ends, not a NUL and not the text's own length.
TEST_F(GuideText, EndsAtItsSize) {
    expectNext(guideRecord(0).u32(nameAt, 1).u32(textAt, 4),
               "name_size = 1, name = |B0D0F0|, text_size = 4, text = |T|",
               "3, \"\\u3042\", 4, \"Text\"");
    expectNext(guideRecord(0).u32(nameAt, 5).u16(nameAt + 12, 0x44),
               "name_size = 5, name = |B0D0F0|, text_size = 10, text = |T|",
               "12, \"\\u3042\\u3044\\u3046\\u0000D\", 10, \"Text of it\"");
}

TEST_F(GuideText, UnitsArePassedUnchanged) {
    Record record = guideRecord(0);
    // A NUL first, halves of pairs in the wrong order, a pair, a byte-order mark, a unit that is no
    // character.
    putText(record, nameAt, {0x0000, 0xDE00, 0xD83D, 0xD83D, 0xDE00, 0xFEFF, 0xFFFF});
    // Single halves of pairs at both ends, and NULs between and after the units.
    putText(record, textAt, {0xD83D, 0x0041, 0x0000, 0x0000, 0xDC00, 0x00E9, 0x0000});
    expectNext(record, "name_size = 7, name = ||, text_size = 7, text = |=\\xD8A|",
               "20, \"\\u0000\\ude00\\ud83d\\ud83d\\ude00\\ufeff\\uffff\", "
               "15, \"\\ud83dA\\u0000\\u0000\\udc00\\u00e9\\u0000\"");
}

TEST_F(GuideText, FullNameOfNinetyEightUnits) {
    Record record = guideRecord(0);
    for (size_t i = 0; i < 97; ++i) {
        record.u16(nameAt + 4 + 2 * i, 0x4141);
    }
    record.u16(nameAt + 4 + 2 * 97, 0x7A7A);
    std::string bytes = std::string(194, 'A') + "zz";
    std::string units;
    for (int i = 0; i < 97; ++i) {
        units += "\\u4141";
    }
    auto expectSize = [&](uint32_t size, const std::string& logged, const std::string& to_java) {
        SCOPED_TRACE(size);
        expectNext(record.u32(nameAt, size),
                   "name_size = " + logged + ", name = |" + bytes + "|, text_size = 10, text = |T|",
                   to_java + ", 10, \"Text of it\"");
    };
    expectSize(97, "97", "291, \"" + units + "\"");
    const std::string full = "294, \"" + units + "\\u7a7a\"";
    expectSize(98, "98", full);
    expectSize(99, "99", full);
    expectSize(196, "196", full);
    expectSize(0x7FFFFFFF, "2147483647", full);
    expectSize(0x80000000, "-2147483648", full);
    expectSize(0xFFFFFFFF, "-1", full);
}

TEST_F(GuideText, FullTextOfOneHundredAndNinetyFourUnits) {
    Record record = guideRecord(0);
    for (size_t i = 0; i < 193; ++i) {
        record.u16(textAt + 4 + 2 * i, 0x4141);
    }
    record.u16(textAt + 4 + 2 * 193, 0x7A7A);
    std::string bytes = std::string(386, 'A') + "zz";
    std::string units;
    for (int i = 0; i < 193; ++i) {
        units += "\\u4141";
    }
    auto expectSize = [&](uint32_t size, const std::string& logged, const std::string& to_java) {
        SCOPED_TRACE(size);
        expectNext(record.u32(textAt, size),
                   "name_size = 3, name = |B0D0F0|, text_size = " + logged + ", text = |" + bytes +
                       "|",
                   "9, \"\\u3042\\u3044\\u3046\", " + to_java);
    };
    expectSize(193, "193", "579, \"" + units + "\"");
    const std::string full = "582, \"" + units + "\\u7a7a\"";
    expectSize(194, "194", full);
    expectSize(195, "195", full);
    expectSize(388, "388", full);
    expectSize(0x80000000, "-2147483648", full);
    expectSize(0xFFFFFFFF, "-1", full);
}

/// All ones: the greatest sizes and numbers in all ten programmes, and no end of any text.
TEST_F(GuideText, IsClampedInEveryProgramme) {
    std::string logged_name;
    std::string name;
    std::string logged_text;
    std::string text;
    for (int i = 0; i < 98; ++i) {
        logged_name += "\\xFF\\xFF";
        name += "\\uffff";
    }
    for (int i = 0; i < 194; ++i) {
        logged_text += "\\xFF\\xFF";
        text += "\\uffff";
    }
    const std::string programme =
        "BG_TS_DTVSVLIB_PRG_INFO(-1, BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE(65535, 65535, "
        "65535), BG_TS_DTVSVLIB_TIME(65535, 65535, 65535, 65535)), 255, "
        "BG_TS_DTVSVLIB_TIME(65535, 65535, 65535, 65535), 255, 7, bytes[-1, -1, -1, -1, -1, -1, "
        "-1], bytes[-1, -1, -1, -1, -1, -1, -1], 294, \"" +
        name + "\", 582, \"" + text + "\")";
    std::string following = programme;
    std::string built;
    for (int i = 0; i < 7; ++i) {
        following += ", " + programme;
    }
    for (int i = 0; i < 10; ++i) {
        built += "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\nNEW 159 92\n";
    }
    expectDelivered(
        guide, Record(6380).fill(0, 6380, 0xFF).u16(1288, 8),
        "onEvDtvsvReceiveEpgInfoNotify BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(65535, "
        "BG_TS_DTVSVLIB_EPG_INFO(65535, " +
            programme + ", " + programme + ", 8, [" + following + "]), 4294967295L, 65535)",
        "DEBUG |handle = 65535\n"
        "DEBUG |EPG_INFO : svc_id = 65535, after_prg_infoCnt = 8\n"
        "DEBUG |CUR START DATE : year = 65535, month = 65535, day = 65535\n"
        "DEBUG |CUR START TIME : hour = 65535, min = 65535, sec = 65535, mil_sec = 65535\n"
        "DEBUG |CUR DURATION TIME : hour = 65535, min = 65535, sec = 65535, mil_sec = 65535\n"
        "DEBUG |NEXT START DATE : year = 65535, month = 65535, day = 65535\n"
        "DEBUG |NEXT START TIME : hour = 65535, min = 65535, sec = 65535, mil_sec = 65535\n"
        "DEBUG |NEXTDURATION TIME : hour = 65535, min = 65535, sec = 65535, mil_sec = 65535\n"
        "DEBUG |NEXT PRG_INFO : evtId = -1, start_day_of_week = 255, freeca = 255, nibble_cnt = "
        "255, content_nibble = 255, user_nibble = 255, name_size = -1, name = |" +
            logged_name + "|, text_size = -1, text = |" + logged_text + "|\n" + built +
            "NEW 151 84\nNEW 96 28\nSTATIC 28\nEND |ret = 0\n");
}

} // namespace
