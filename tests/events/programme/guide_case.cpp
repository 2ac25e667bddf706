#include "events/programme/programme_cases.h"

namespace events {

const Case& guideCase() {
    static const Case made{
        "receive_epg_info",
        0x10000093,
        "dtvsv_msgid_lib_receive_epg_info_notify",
        guideRecord(1).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1).u16(8, 0xB2B1).u16(12, 0xB4B3),
        false,
        "DEBUG |handle = 65244\n"
        "DEBUG |EPG_INFO : svc_id = 46259, after_prg_infoCnt = 1\n"
        "DEBUG |CUR START DATE : year = 33025, month = 33282, day = 33539\n"
        "DEBUG |CUR START TIME : hour = 33796, min = 34053, sec = 34310, mil_sec = 34567\n"
        "DEBUG |CUR DURATION TIME : hour = 37121, min = 37378, sec = 37635, mil_sec = 37892\n"
        "DEBUG |NEXT START DATE : year = 2024, month = 2, day = 29\n"
        "DEBUG |NEXT START TIME : hour = 23, min = 59, sec = 58, mil_sec = 999\n"
        "DEBUG |NEXTDURATION TIME : hour = 1, min = 30, sec = 15, mil_sec = 500\n"
        "DEBUG |NEXT PRG_INFO : evtId = 16909060, start_day_of_week = 4, freeca = 3, nibble_cnt = "
        "2, content_nibble = 145, user_nibble = 90, name_size = 3, name = |B0D0F0|, text_size = "
        "10, text = |T|\n",
        "DEBUG",
        "DEBUG",
        {"147 80", "172 105", "148 81", "172 105", "159 92", "147 80", "172 105", "148 81",
         "172 105", "159 92", "147 80", "172 105", "148 81", "172 105", "159 92", "151 84",
         "96 28"},
        28,
        "onEvDtvsvReceiveEpgInfoNotify BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_EPG_INFO(46259, " +
            std::string(currentTree) + ", " + nextTree + ", 1, [" + followingTree(0) +
            "]), 3301163713L, 45745)"};
    return made;
}

const char* const currentTree =
    "BG_TS_DTVSVLIB_PRG_INFO(-993803583, "
    "BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE(33025, 33282, 33539), "
    "BG_TS_DTVSVLIB_TIME(33796, 34053, 34310, 34567)), 161, "
    "BG_TS_DTVSVLIB_TIME(37121, 37378, 37635, 37892), 162, 7, "
    "bytes[-127, -126, -125, -124, -123, -122, -121], bytes[-15, -14, -13, -12, -11, -10, -9], 6, "
    "\"\\u756a\\u7d44\", 7, \"\\u672c\\u6587.\")";

const char* const nextTree =
    "BG_TS_DTVSVLIB_PRG_INFO(16909060, BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE(2024, 2, 29), "
    "BG_TS_DTVSVLIB_TIME(23, 59, 58, 999)), 4, BG_TS_DTVSVLIB_TIME(1, 30, 15, 500), 3, 2, "
    "bytes[-111, 52], bytes[90, -1], 9, \"\\u3042\\u3044\\u3046\", 10, \"Text of it\")";

std::string followingTree(unsigned index) {
    const std::string number = std::to_string(index);
    return "BG_TS_DTVSVLIB_PRG_INFO(10" + number +
           ", BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE(200" + number + ", 1" + number + ", 2" +
           number + "), BG_TS_DTVSVLIB_TIME(3" + number + ", 4" + number + ", 5" + number + ", 6" +
           number + ")), 7" + number + ", BG_TS_DTVSVLIB_TIME(8" + number + ", 9" + number +
           ", 11" + number + ", 12" + number + "), 13" + number + ", 1, bytes[2" + number +
           "], bytes[3" + number + "], 2, \"N" + number + "\", 3, \"T." + number + "\")";
}

Record guideRecord(unsigned following) {
    Record record(6380);
    record.u16(0, 3).u32(4, 62).u16(8, 2).u16(12, 101).u16(1288, following);
    putProgramme(record, 16,
                 {0xC4C3C2C1,
                  {0x8101, 0x8202, 0x8303},
                  {0x8404, 0x8505, 0x8606, 0x8707},
                  0xA1,
                  {0x9101, 0x9202, 0x9303, 0x9404},
                  0xA2,
                  7,
                  "\x81\x82\x83\x84\x85\x86\x87",
                  "\xF1\xF2\xF3\xF4\xF5\xF6\xF7",
                  u"\u756A\u7D44",
                  u"\u672C\u6587."});
    putProgramme(record, 652,
                 {0x01020304,
                  {2024, 2, 29},
                  {23, 59, 58, 999},
                  4,
                  {1, 30, 15, 500},
                  3,
                  2,
                  "\x91\x34",
                  "\x5A\xFF",
                  u"\u3042\u3044\u3046",
                  u"Text of it"});
    for (unsigned i = 0; i < following && i < 8; ++i) {
        char16_t digit = static_cast<char16_t>(u'0' + i);
        const char content[] = {static_cast<char>(20 + i), 0};
        const char user[] = {static_cast<char>(30 + i), 0};
        putProgramme(record, 1292 + 636 * i,
                     {100 + i,
                      {2000 + i, 10 + i, 20 + i},
                      {30 + i, 40 + i, 50 + i, 60 + i},
                      70 + i,
                      {80 + i, 90 + i, 110 + i, 120 + i},
                      130 + i,
                      1,
                      content,
                      user,
                      std::u16string(u"N") + digit,
                      std::u16string(u"T.") + digit});
    }
    return record;
}

void putProgramme(Record& record, size_t at, const Programme& programme) {
    record.u32(at, programme.evt_id);
    for (size_t i = 0; i < 3; ++i) {
        record.u16(at + 4 + 2 * i, programme.date[i]);
    }
    for (size_t i = 0; i < 4; ++i) {
        record.u16(at + 10 + 2 * i, programme.time[i]);
        record.u16(at + 20 + 2 * i, programme.duration[i]);
    }
    record.u8(at + 18, programme.day_of_week);
    record.u8(at + 28, programme.freeca);
    record.u8(at + 29, programme.nibbles);
    record.raw(at + 30, programme.content);
    record.raw(at + 37, programme.user);
    putText(record, at + 44, programme.name);
    putText(record, at + 244, programme.text);
}

void putText(Record& record, size_t at, const std::u16string& text) {
    record.u32(at, static_cast<uint32_t>(text.size())).units(at + 4, text);
    record.u16(at + 4 + 2 * text.size(), 0);
}

} // namespace events
