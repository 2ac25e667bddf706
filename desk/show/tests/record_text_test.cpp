// Records as text: every kind of field, and records that are shorter or longer than they should be.
#include "desk/show/quoted_text.h"
#include "desk/show/record_text.h"
#include "sessions/tests/hex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;
using testing::ElementsAre;

std::vector<std::string> linesOf(const Record& layout, const std::vector<uint8_t>& bytes) {
    return show::recordLines(layout, view(bytes), 4);
}

std::vector<std::string> linesOf(const Record& layout, const std::string& hex) {
    return linesOf(layout, fromHex(hex));
}

const Record& layoutOf(const char* message) {
    return *catalogue::find(message)->record;
}

Record recordOf(const char* name, size_t size, std::vector<Field> fields) {
    Record record;
    record.name = name;
    record.size = size;
    record.fields = std::move(fields);
    return record;
}

TEST(RecordText, ShowsNumbersWithAndWithoutSign) {
    EXPECT_THAT(linesOf(layoutOf("SetSoundVideoDelay"), "ffff 0080 0080"),
                ElementsAre("    handle         65535", //
                            "    video_viltime  32768", //
                            "    audio_viltime  -32768"));
    const Record numbers = recordOf("NUMBERS", 30,
                                    {{"byte", 0, 1, 1, Kind::kUnsigned, nullptr},
                                     {"signed_byte", 1, 1, 1, Kind::kSigned, nullptr},
                                     {"four", 2, 4, 1, Kind::kUnsigned, nullptr},
                                     {"signed_four", 6, 4, 1, Kind::kSigned, nullptr},
                                     {"eight", 10, 8, 1, Kind::kUnsigned, nullptr},
                                     {"signed_eight", 18, 8, 1, Kind::kSigned, nullptr},
                                     {"pair", 26, 2, 2, Kind::kSigned, nullptr}});
    EXPECT_THAT(linesOf(numbers, "80 80 00000080 00000080 0000000000000080 0000000000000080 "
                                 "ffff 0100"),
                ElementsAre("    byte          128", //
                            "    signed_byte   -128",
                            "    four          2147483648",           //
                            "    signed_four   -2147483648",          //
                            "    eight         9223372036854775808",  //
                            "    signed_eight  -9223372036854775808", //
                            "    pair          -1, 1"));
}

TEST(RecordText, ShowsWhatIsNotKnown) {
    const Record point = recordOf(
        "POINT", 2,
        {{"x", 0, 1, 1, Kind::kUnsigned, nullptr}, {"y", 1, 1, 1, Kind::kUnsigned, nullptr}});
    const Record record = recordOf("RECORD", 22,
                                   {{"number", 0, 2, 1, Kind::kUnsigned, nullptr},
                                    {"list", 2, 1, 3, Kind::kUnsigned, nullptr},
                                    {"bytes", 5, 3, 1, Kind::kBytes, nullptr},
                                    {"text", 8, 4, 1, Kind::kText, nullptr},
                                    {"wide", 12, 4, 1, Kind::kUtf16Text, nullptr},
                                    {"points", 16, 2, 3, Kind::kRecord, &point}});
    const auto lines = [&record](const std::string& known) {
        std::vector<bool> bytes;
        for (const char c : known) {
            bytes.push_back(c == '1');
        }
        return show::recordLines(record,
                                 view(fromHex("0100 020304 050607 61620000 63000000 "
                                              "0000 0102 0000")),
                                 4, bytes);
    };
    EXPECT_THAT(lines("1111111111111111111111"),
                ElementsAre("    number  1", "    list    2, 3, 4", "    bytes   05 06 07",
                            "    text    \"ab\"", "    wide    \"c\"", "    points[1]",
                            "        x  1", "        y  2",
                            "    points  2 of 3 elements are all zero"));
    EXPECT_THAT(lines("1010110101111110011111"),
                ElementsAre("    number  unknown", "    list    2, unknown, 4",
                            "    bytes   05 ?? 07", "    text    unknown", "    wide    unknown",
                            "    points[0]", "        x  unknown", "        y  0", "    points[1]",
                            "        x  1", "        y  2",
                            "    points  1 of 3 elements is all zero"));
    EXPECT_THAT(lines("0000000011101111000000"),
                ElementsAre("    number  unknown", "    list    unknown", "    bytes   unknown",
                            "    text    \"ab\"", "    wide    \"c\"", "    points  unknown"));
}

TEST(RecordText, ShowsReservedBytesThatAreNotZero) {
    EXPECT_THAT(linesOf(layoutOf("ReleaseDisplay"), "0300 01 05"),
                ElementsAre("    handle  3", //
                            "    value   1", //
                            "    reserved at 3  0x05"));
    EXPECT_THAT(linesOf(layoutOf("SelectChannel"), "0300 0001 20000000 0000 0000"),
                ElementsAre("    handle            3",         //
                            "    reserved at 2     0x00 0x01", //
                            "    physical_channel  32",        //
                            "    service_no        0"));
}

TEST(RecordText, ShowsBytesOnAsManyLinesAsNeeded) {
    std::vector<uint8_t> record(116, 0);
    record[0] = 3;
    record[50] = 7;
    for (size_t i = 0; i < 64; ++i) {
        record[51 + i] = static_cast<uint8_t>(i);
    }
    EXPECT_THAT(
        linesOf(layoutOf("BmlWriteNvramReq"), record),
        ElementsAre(
            "    handle          3",    //
            "    affiliation_id  0",    //
            "    network_id      0",    //
            "    ts_name         \"\"", //
            "    block_no        7",
            "    data            00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10 11 12 13",
            "                    14 15 16 17 18 19 1a 1b 1c 1d 1e 1f 20 21 22 23 24 25 26 27",
            "                    28 29 2a 2b 2c 2d 2e 2f 30 31 32 33 34 35 36 37 38 39 3a 3b",
            "                    3c 3d 3e 3f"));
}

TEST(RecordText, ShowsTextsToTheirEndOrThatOfTheField) {
    const Record texts = recordOf(
        "TEXTS", 12,
        {{"first", 0, 6, 1, Kind::kText, nullptr}, {"second", 6, 6, 1, Kind::kText, nullptr}});
    EXPECT_THAT(linesOf(texts, "41 42 00 43 44 45  61 62 63 64 65 66"),
                ElementsAre("    first   \"AB\"", //
                            "    second  \"abcdef\""));
    // A quote, a backslash, an escape, a new line; half a character and a wrong byte.
    EXPECT_THAT(linesOf(texts, "22 5c 1b 0a 7f 78  c3a9 c3 ff e3 81"),
                ElementsAre("    first   \"\\\"\\\\\\x1b\\x0a\\x7fx\"",
                            "    second  \"\xc3\xa9\\xc3\\xff\\xe3\\x81\""));
}

TEST(RecordText, ShowsUtf16Texts) {
    const Record texts = recordOf("TEXTS", 24, {{"text", 0, 24, 1, Kind::kUtf16Text, nullptr}});
    // Two halves of a character that are alone, the end, and something after it.
    EXPECT_THAT(linesOf(texts, "4100 e900 0a00 8500 4230 3dd8 00de 3dd8 4200 00dc 0000 4300"),
                ElementsAre("    text  \"A\xc3\xa9\\x0a\\u0085\xe3\x81\x82\xf0\x9f\x98\x80"
                            "\\ud83dB\\udc00\""));
    EXPECT_THAT(linesOf(texts, "0001 00d8 61"),
                ElementsAre("    text  \"\xc4\x80\\ud800\\x61\"",
                            "    the record ends here, 5 of 24 bytes"));
}

TEST(RecordText, ShowsLongTextsOnSeveralLines) {
    std::vector<uint8_t> record(102, 'x');
    record[0] = 3;
    record[1] = 0;
    record[60] = '"';
    EXPECT_THAT(linesOf(layoutOf("BmlCallReq"), record),
                ElementsAre("    handle        3",
                            "    phone_number  "
                            "\"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\\\"\"",
                            "                  \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\""));
    // Each of these takes two columns.
    const Record wide = recordOf("WIDE", 99, {{"text", 0, 99, 1, Kind::kText, nullptr}});
    std::string hex;
    std::string line;
    for (int i = 0; i < 33; ++i) {
        hex += "e38182";
        line += "\xe3\x81\x82";
    }
    EXPECT_THAT(linesOf(wide, hex), ElementsAre("    text  \"" + line + "\""));
    EXPECT_THAT(show::recordLines(wide, view(fromHex(hex)), 8),
                ElementsAre("        text  \"" + line.substr(0, 96) + "\"",
                            "              \"\xe3\x81\x82\""));
}

TEST(RecordText, ShowsRecordsInRecords) {
    EXPECT_THAT(
        linesOf(layoutOf("SetCapDisplay"), "0300 4001 b400 01 07 10 14 02 03 0a00 0b00 ff 80"),
        ElementsAre("    handle  3",               //
                    "    cap",                     //
                    "        surface_width   320", //
                    "        surface_height  180", //
                    "        screen_rotate   1",   //
                    "        reserved at 5   0x07", "        cap_info",
                    "            font_size         16", //
                    "            characters_num    20", //
                    "            lines_num         2",  //
                    "            separator_size    3",  //
                    "            position_x        10", //
                    "            position_y        11", //
                    "            background_color  255", "            background_alpha  128"));
}

TEST(RecordText, ShowsArraysOfNumbersAsLists) {
    const Record array = recordOf("ARRAY", 80, {{"list", 0, 4, 20, Kind::kUnsigned, nullptr}});
    std::vector<uint8_t> record(80, 0xff);
    record[0] = record[1] = record[2] = record[3] = 0;
    EXPECT_THAT(
        linesOf(array, record),
        ElementsAre("    list  0, 4294967295, 4294967295, 4294967295, 4294967295, 4294967295,",
                    "          4294967295, 4294967295, 4294967295, 4294967295, 4294967295,",
                    "          4294967295, 4294967295, 4294967295, 4294967295, 4294967295,",
                    "          4294967295, 4294967295, 4294967295, 4294967295"));
    EXPECT_THAT(
        linesOf(array, "01000000 02000000 0300"),
        ElementsAre("    list  1, 2, only 0x03 0x00", "    the record ends here, 10 of 80 bytes"));
}

TEST(RecordText, CountsTheEmptyElementsOfAnArray) {
    std::vector<uint8_t> record(436, 0);
    record[0] = 3;
    record[16] = 2;
    record[20] = 9;                // the first service's number
    record[20 + 2 * 52 + 8] = 'A'; // the third one's name
    const std::vector<std::string> expected = {
        "    handle            3", //
        "    physical_channel  0", //
        "    service_no        0", //
        "    ts_id             0", //
        "    svc_cnt           2", //
        "    service[0]",
        "        service_id  9", //
        "        name_size   0",
        "        name        \"\"", //
        "    service[2]",
        "        service_id  0", //
        "        name_size   0",
        "        name        \"A\"",
        "    service           6 of 8 elements are all zero"};
    EXPECT_EQ(linesOf(layoutOf("ServiceInfoNotify"), record), expected);

    record[20 + 52] = 1;
    std::vector<uint8_t> some = record;
    some.resize(20 + 4 * 52 + 5);
    const std::vector<std::string> lines = linesOf(layoutOf("ServiceInfoNotify"), some);
    ASSERT_EQ(lines.size(), 22u);
    EXPECT_EQ(lines[17], "    service[4]") << "it is not whole";
    EXPECT_EQ(lines[18], "        service_id  0");
    EXPECT_EQ(lines[19], "        name_size   only 0x00");
    EXPECT_EQ(lines[20], "    service           1 of 8 elements is all zero");
    EXPECT_EQ(lines[21], "    the record ends here, 233 of 436 bytes");
}

TEST(RecordText, ShowsWhereAShortRecordEnds) {
    const Record& layout = layoutOf("SelectChannel");
    EXPECT_THAT(linesOf(layout, ""), ElementsAre("    the record ends here, 0 of 12 bytes"));
    EXPECT_THAT(linesOf(layout, "03"), ElementsAre("    handle            only 0x03",
                                                   "    the record ends here, 1 of 12 bytes"));
    EXPECT_THAT(linesOf(layout, "0300 00"),
                ElementsAre("    handle            3", "    the record ends here, 3 of 12 bytes"));
    EXPECT_THAT(linesOf(layout, "0300 0000 200000"),
                ElementsAre("    handle            3", //
                            "    physical_channel  only 0x20 0x00 0x00",
                            "    the record ends here, 7 of 12 bytes"));
    EXPECT_THAT(linesOf(layoutOf("BmlCallReq"), "0300 3131"),
                ElementsAre("    handle        3", //
                            "    phone_number  \"11\"",
                            "    the record ends here, 4 of 102 bytes"));
    EXPECT_THAT(linesOf(layoutOf("SetDisplayAll"), "0300 4001 b400 01 02 4001 b4"),
                ElementsAre("    handle  3", //
                            "    screen",
                            "        surface_width   320", //
                            "        surface_height  180", //
                            "        screen_rotate   1",   //
                            "        screen_mode     2",   //
                            "    cap",
                            "        surface_width   320", //
                            "        surface_height  only 0xb4",
                            "    the record ends here, 11 of 30 bytes"));
}

TEST(RecordText, ShowsTheBytesAfterALongRecord) {
    EXPECT_THAT(linesOf(layoutOf("Release"), "0300 00 01 02"),
                ElementsAre("    handle  3", //
                            "    surplus  00 01 02"));
    EXPECT_THAT(
        linesOf(layoutOf("SelectChannel"),
                "0300 0000 20000000 0000 0000 0102030405060708090a0b0c0d0e0f10111213141516"),
        ElementsAre("    handle            3",  //
                    "    physical_channel  32", //
                    "    service_no        0",
                    "    surplus           01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10 "
                    "11 12 13",
                    "                      14 15 16"));
}

TEST(RecordText, DumpsBytesOfUnknownMeaning) {
    const std::vector<uint8_t> bytes =
        fromHex("00 1f 20 41 7e 7f 80 ff 30 31 32 33 34 35 36 37 38");
    EXPECT_THAT(
        show::dumpLines(view(bytes), 2),
        ElementsAre("  0000  00 1f 20 41 7e 7f 80 ff 30 31 32 33 34 35 36 37  .. A~...01234567",
                    "  0010  38                                               8"));
    EXPECT_THAT(show::dumpLines({}, 2), ElementsAre());
}

TEST(RecordText, StaysWithinTheLines) {
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const catalogue::Message& message : *messages) {
            const std::vector<uint8_t> record(message.record->size + 40, 0xff);
            for (const std::string& line : linesOf(*message.record, record)) {
                EXPECT_LE(show::columnsOf(line), 80u) << message.name << line;
            }
        }
    }
}

TEST(QuotedText, RefusesEveryWrongUtf8) {
    const auto shown = [](const std::string& hex) {
        const std::vector<uint8_t> bytes = fromHex(hex);
        return show::quotedLines(show::utf8Glyphs(view(bytes)), 80);
    };
    EXPECT_THAT(shown("7e c2a0 efbfbf f48fbfbf"),
                ElementsAre("\"~\xc2\xa0\xef\xbf\xbf\xf4\x8f\xbf\xbf\""));
    EXPECT_THAT(shown("c080 c1bf"), ElementsAre("\"\\xc0\\x80\\xc1\\xbf\"")) << "too long";
    EXPECT_THAT(shown("e09fbf f08fbfbf"), ElementsAre("\"\\xe0\\x9f\\xbf\\xf0\\x8f\\xbf\\xbf\""));
    EXPECT_THAT(shown("eda080"), ElementsAre("\"\\xed\\xa0\\x80\"")) << "a surrogate";
    EXPECT_THAT(shown("f4908080 f8"), ElementsAre("\"\\xf4\\x90\\x80\\x80\\xf8\"")) << "beyond";
    EXPECT_THAT(shown("c29b"), ElementsAre("\"\\xc2\\x9b\"")) << "begins a terminal's sequence";
    EXPECT_THAT(shown("e381 41"), ElementsAre("\"\\xe3\\x81A\""));
}

} // namespace
