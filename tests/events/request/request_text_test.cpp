// Texts of requests: 8-bit fields of fixed width, whatever bytes a broadcaster sends in them.
#include "events/request/request_cases.h"

#include <utility>

namespace {

using namespace events;
using harness::deliver;
using harness::StrictJni;

class RequestText : public EventTest {
protected:
    /// Delivers a call with these bytes in its field, and expects them in the log and their text in
    /// Java.
    void expectNumber(const Record& record, const std::string& logged, const std::string& to_java) {
        SCOPED_TRACE(logged);
        const Case& of = callCase();
        expectDelivered(of, record,
                        "onEvDtvsvBmlCallReq BG_EV_DTVSV_BML_CALL_REQ(65244, "
                        "BG_TS_DTVSVLIB_CALL_REQ(\"" +
                            to_java + "\"))",
                        "DEBUG |handle = 65244\nDEBUG |CALL_REQ : phone_number = |" + logged +
                            "|\n" + of.delivered());
    }
    void expectText(const std::string& bytes, const std::string& logged,
                    const std::string& to_java) {
        expectNumber(Record(102).u16(0, 0xFEDC).text(2, bytes), logged, to_java);
    }
};

TEST_F(RequestText, WellFormedIsUnchanged) {
    expectText("", "", "");
    expectText("\x01\x1F ~\x7F", "\\x01\\x1F ~\\x7F", "\\u0001\\u001f ~\\u007f");
    expectText("\xC2\x80\xDF\xBF", "\\xC2\\x80\\xDF\\xBF", "\\u0080\\u07ff");
    expectText("\xE0\xA0\x80\xE3\x81\x82\xEF\xBF\xBF",
               "\\xE0\\xA0\\x80\\xE3\\x81\\x82\\xEF\\xBF\\xBF", "\\u0800\\u3042\\uffff");
    expectText("a\xC0\x80"
               "b",
               "a\\xC0\\x80b", "a\\u0000b");
    expectText("\xED\x9F\xBF\xEE\x80\x80", "\\xED\\x9F\\xBF\\xEE\\x80\\x80", "\\ud7ff\\ue000");
}

TEST_F(RequestText, SurrogatesInThreeBytesEach) {
    expectText("\xED\xA0\xBD\xED\xB8\x80", "\\xED\\xA0\\xBD\\xED\\xB8\\x80", "\\ud83d\\ude00");
    expectText("\xED\xA0\x80", "\\xED\\xA0\\x80", "\\ud800");
    expectText("\xED\xBF\xBFz", "\\xED\\xBF\\xBFz", "\\udfffz");
    expectText("\xED\xB8\x80\xED\xA0\xBD", "\\xED\\xB8\\x80\\xED\\xA0\\xBD", "\\ude00\\ud83d");
}

TEST_F(RequestText, FourBytesBecomeAPair) {
    expectText("\xF0\x9F\x98\x80", "\\xF0\\x9F\\x98\\x80", "\\ud83d\\ude00");
    expectText("\xF0\x90\x80\x80", "\\xF0\\x90\\x80\\x80", "\\ud800\\udc00");
    expectText("\xF4\x8F\xBF\xBF", "\\xF4\\x8F\\xBF\\xBF", "\\udbff\\udfff");
    expectText("a\xF3\xA0\x84\x80"
               "b",
               "a\\xF3\\xA0\\x84\\x80b", "a\\udb40\\udd00b");
}

TEST_F(RequestText, FourBytesOutsideTheirRangeAreBytes) {
    expectText("\xF0\x8F\xBF\xBF", "\\xF0\\x8F\\xBF\\xBF", "\\ufffd\\ufffd\\ufffd\\ufffd");
    expectText("\xF0\x80\x80\x80", "\\xF0\\x80\\x80\\x80", "\\ufffd\\ufffd\\ufffd\\ufffd");
    expectText("\xF4\x90\x80\x80", "\\xF4\\x90\\x80\\x80", "\\ufffd\\ufffd\\ufffd\\ufffd");
    expectText("\xF5\x80\x80\x80", "\\xF5\\x80\\x80\\x80", "\\ufffd\\ufffd\\ufffd\\ufffd");
    expectText("\xF7\xBF\xBF\xBF", "\\xF7\\xBF\\xBF\\xBF", "\\ufffd\\ufffd\\ufffd\\ufffd");
    expectText("\xF8\x88\x80\x80\x80", "\\xF8\\x88\\x80\\x80\\x80",
               "\\ufffd\\ufffd\\ufffd\\ufffd\\ufffd");
}

TEST_F(RequestText, OverlongFormsAreBytes) {
    expectText("\xC0\x81", "\\xC0\\x81", "\\ufffd\\ufffd");
    expectText("\xC0\xAF", "\\xC0\\xAF", "\\ufffd\\ufffd");
    expectText("\xC1\x81", "\\xC1\\x81", "\\ufffd\\ufffd");
    expectText("\xC1\xBF", "\\xC1\\xBF", "\\ufffd\\ufffd");
    expectText("\xE0\x80\x80", "\\xE0\\x80\\x80", "\\ufffd\\ufffd\\ufffd");
    expectText("\xE0\x80\x81", "\\xE0\\x80\\x81", "\\ufffd\\ufffd\\ufffd");
    expectText("\xE0\x9F\xBF", "\\xE0\\x9F\\xBF", "\\ufffd\\ufffd\\ufffd");
}

TEST_F(RequestText, InvalidBytesAreOneCharacterEach) {
    expectText("\x80", "\\x80", "\\ufffd");
    expectText("a\xBF"
               "b",
               "a\\xBFb", "a\\ufffdb");
    expectText("\xFE\xFF", "\\xFE\\xFF", "\\ufffd\\ufffd");
    expectText("\xC3\xA9\xA9", "\\xC3\\xA9\\xA9", "\\u00e9\\ufffd");
    // Two-byte codes of another encoding.
    expectText("\xA4\xA2\xA4\xA4", "\\xA4\\xA2\\xA4\\xA4", "\\ufffd\\ufffd\\ufffd\\ufffd");
    expectText("\x82\xA0", "\\x82\\xA0", "\\ufffd\\ufffd");
}

TEST_F(RequestText, SequencesThatAreCut) {
    expectText("\xC3", "\\xC3", "\\ufffd");
    expectText("\xC3(", "\\xC3(", "\\ufffd(");
    expectText("\xE3\x81", "\\xE3\\x81", "\\ufffd\\ufffd");
    expectText("\xE3\x81"
               "a",
               "\\xE3\\x81a", "\\ufffd\\ufffda");
    expectText("\xE3"
               "ab",
               "\\xE3ab", "\\ufffdab");
    expectText("\xE3\xC3\xA9", "\\xE3\\xC3\\xA9", "\\ufffd\\u00e9");
    expectText("\xF0\x9F\x98", "\\xF0\\x9F\\x98", "\\ufffd\\ufffd\\ufffd");
    expectText("\xF0\x9F\x98z", "\\xF0\\x9F\\x98z", "\\ufffd\\ufffd\\ufffdz");
    expectText("\xF0\x9F\xE3\x81\x82", "\\xF0\\x9F\\xE3\\x81\\x82", "\\ufffd\\ufffd\\u3042");
}

TEST_F(RequestText, FullFieldsEndWithTheRecord) {
    const std::string ninety = "123456789012345678901234567890123456789012345678901234567890"
                               "123456789012345678901234567890";
    auto full = [&](const std::string& end) {
        return Record(102).u16(0, 0xFEDC).raw(2, ninety + end);
    };
    expectNumber(full("abcdefghij"), ninety + "abcdefghij", ninety + "abcdefghij");
    // The last byte may be the NUL.
    expectNumber(full(std::string("abcdefghi") + '\0'), ninety + "abcdefghi", ninety + "abcdefghi");
    // A sequence may be cut at the field's end.
    expectNumber(full("abcdefghi\xC3"), ninety + "abcdefghi\\xC3", ninety + "abcdefghi\\ufffd");
    expectNumber(full("abcdefgh\xE3\x81"), ninety + "abcdefgh\\xE3\\x81",
                 ninety + "abcdefgh\\ufffd\\ufffd");
    expectNumber(full("abcdefg\xF0\x9F\x98"), ninety + "abcdefg\\xF0\\x9F\\x98",
                 ninety + "abcdefg\\ufffd\\ufffd\\ufffd");
    // Or it may be complete there.
    expectNumber(full("abcdef\xF0\x9F\x98\x80"), ninety + "abcdef\\xF0\\x9F\\x98\\x80",
                 ninety + "abcdef\\ud83d\\ude00");
}

/// The text of a field becomes at most three times as long.
TEST_F(RequestText, LongFieldOfInvalidBytes) {
    const Case& of = startFepCase();
    std::string logged;
    std::string to_java;
    for (int i = 0; i < 1927; ++i) {
        logged += "\\x9F";
        to_java += "\\ufffd";
    }
    Record record = of.record;
    expectDelivered(of, record.fill(13, 1927, 0x9F),
                    "onEvDtvsvBmlStartFepReq BG_EV_DTVSV_BML_START_FEP_REQ(65244, "
                    "BG_TS_DTVSVLIB_START_FEP_REQ(161, -724315439, 162, \"" +
                        to_java + "\"))",
                    "DEBUG |handle = 65244\n"
                    "DEBUG |START_FEP_REQ : input_type = 161, input_max = -724315439, password_flg "
                    "= 162, data = |" +
                        logged + "|\n" + of.delivered());
}

/// Fields that fill up to their last byte end where the next one begins.
TEST_F(RequestText, AdjacentFieldsStaySeparate) {
    const Case& browser = browserCase();
    expectDelivered(browser, Record(browser.record).fill(6, 1025, 'r').fill(1031, 1025, 'c'),
                    "onEvDtvsvBmlBrowserReq BG_EV_DTVSV_BML_BROWSER_REQ(65244, "
                    "BG_TS_DTVSVLIB_BROWSER_REQ(161, 162, 163, 164, \"" +
                        std::string(1025, 'r') + "\", \"" + std::string(1025, 'c') + "\"))",
                    "DEBUG |handle = 65244\n"
                    "DEBUG |BROWSER_REQ : app_id = 161, permit_av = 162, browser_info = 163, "
                    "full_screen = 164, return_uri = |" +
                        std::string(1025, 'r') + "|, combrowser_uri = |" + std::string(1025, 'c') +
                        "|\n" + browser.delivered());
    const Case& tvlink = startTvlinkCase();
    expectDelivered(tvlink, Record(tvlink.record).fill(6, 1025, 'r').fill(1031, 1025, 'c'),
                    "onEvDtvsvBmlStartTvlinkReq BG_EV_DTVSV_BML_START_TVLINK_REQ(65244, "
                    "BG_TS_DTVSVLIB_START_TVLINK_REQ(161, 162, 163, 164, \"" +
                        std::string(1025, 'r') + "\", \"" + std::string(1025, 'c') + "\"))",
                    "DEBUG |handle = 65244\n"
                    "DEBUG |START_TVLINK_REQ : app_id = 161, permit_av = 162, browser_info = 163, "
                    "full_screen = 164, return_uri = |" +
                        std::string(1025, 'r') + "|, combrowser_uri = |" + std::string(1025, 'c') +
                        "|\n" + tvlink.delivered());
    const Case& mail = mailCase();
    expectDelivered(mail,
                    Record(mail.record).fill(2, 124, 't').fill(126, 400, 'a').fill(526, 2004, 'd'),
                    "onEvDtvsvBmlMailReq BG_EV_DTVSV_BML_MAIL_REQ(65244, "
                    "BG_TS_DTVSVLIB_MAIL_REQ(\"" +
                        std::string(124, 't') + "\", \"" + std::string(400, 'a') + "\", \"" +
                        std::string(2004, 'd') + "\"))",
                    "DEBUG |handle = 65244\nDEBUG |MAIL_REQ : title = |" + std::string(124, 't') +
                        "|, send_address = |" + std::string(400, 'a') + "|, data = |" +
                        std::string(2004, 'd') + "|\n" + mail.delivered());
    const Case& phonebook = phonebookCase();
    expectDelivered(phonebook,
                    Record(phonebook.record)
                        .fill(2, 260, 'n')
                        .fill(262, 516, 'k')
                        .fill(778, 132, 'p')
                        .fill(910, 400, 'm'),
                    "onEvDtvsvBmlPhoneBookReq BG_EV_DTVSV_BML_PHONEBOOK_REQ(65244, "
                    "BG_TS_DTVSVLIB_PHONEBOOK_REQ(\"" +
                        std::string(260, 'n') + "\", \"" + std::string(516, 'k') + "\", \"" +
                        std::string(132, 'p') + "\", \"" + std::string(400, 'm') + "\"))",
                    "DEBUG |handle = 65244\nDEBUG |PHONEBOOK_REQ : name = |" +
                        std::string(260, 'n') + "|, name_kana = |" + std::string(516, 'k') +
                        "|, phone_number = |" + std::string(132, 'p') + "|, mail_address = |" +
                        std::string(400, 'm') + "|\n" + phonebook.delivered());
}

TEST_F(RequestText, FieldsBesideNumbersStaySeparate) {
    const Case& write = writeNvramCase();
    std::string block = write.callback.substr(write.callback.find("bytes["));
    expectDelivered(
        write, Record(write.record).fill(6, 44, 't').u8(50, 'b'),
        "onEvDtvsvBmlWriteNvramReq BG_EV_DTVSV_BML_WRITE_NVRAM_REQ(65244, "
        "BG_TS_DTVSVLIB_WRITE_NVRAM_REQ(161, 45745, \"" +
            std::string(44, 't') + "\", 98, " + block,
        "DEBUG |handle = 65244\n"
        "DEBUG |WRITE_NVRAM_REQ : affiliation_id = 161, network_id = 45745, ts_name = |" +
            std::string(44, 't') + "|, block_no = 98\n" + write.delivered());
    const Case& schedule = scheduleCase();
    expectDelivered(
        schedule, Record(schedule.record).fill(16, 496, 't').fill(512, 976, 'x').u8(1488, 'f'),
        "onEvDtvsvBmlScheduleReq BG_EV_DTVSV_BML_SCHEDULE_REQ(65244, "
        "BG_TS_DTVSVLIB_SCHEDULE_REQ(BG_TS_DTVSVLIB_BML_TIME(33025, 33282, 33539, 33796, 34053, "
        "34310, 34567), \"" +
            std::string(496, 't') + "\", \"" + std::string(976, 'x') + "\", 102))",
        "DEBUG |handle = 65244\n"
        "DEBUG |BML_TINME : date_year = 33025, date_month = 33282, date_day = 33539, date_dow = "
        "33796, date_hour = 34053, date_min = 34310, date_sec = 34567\n"
        "DEBUG |SCHEDULE_REQ : length = 496, title = |" +
            std::string(496, 't') + "|\nDEBUG |SCHEDULE_REQ : length = 976, text = |" +
            std::string(976, 'x') + "|\nDEBUG |SCHEDULE_REQ : alarm_flag = 102\n" +
            schedule.delivered());
    const Case& enrol = enrolTvlinkCase();
    expectDelivered(
        enrol,
        Record(enrol.record).fill(2, 164, 't').fill(166, 244, 'u').fill(410, 524, 'd').u8(934, 'c'),
        "onEvDtvsvBmlEnrolTvlinkReq BG_EV_DTVSV_BML_ENROL_TVLINK_REQ(65244, "
        "BG_TS_DTVSVLIB_ENROL_TVLINK_REQ(\"" +
            std::string(164, 't') + "\", \"" + std::string(244, 'u') + "\", \"" +
            std::string(524, 'd') +
            "\", 99, BG_TS_DTVSVLIB_BML_TIME(37121, 37378, 37635, 37892, 38149, 38406, 38663), "
            "45745, 46259, bytes[-15, -14, -13, -12, -11, -10]))",
        "DEBUG |handle = 65244\nDEBUG |ENROL_TVLINK_REQ : title = |" + std::string(164, 't') +
            "|, uri = |" + std::string(244, 'u') + "|, description = |" + std::string(524, 'd') +
            "|, cpro_bmtype = 99, network_id = 45745, service_id = 46259\n"
            "DEBUG |EXPIRE_DATE : date_year = 38663, date_month = 38406, date_day = 38149, "
            "date_dow "
            "= 37892, date_hour = 37635, date_min = 37378, date_sec = 37121\n" +
            enrol.delivered());
}

/// The lengths that a picture to save has in Java are those of the strings, in modified UTF-8; the
/// record's are only logged.
TEST_F(RequestText, LengthsOfAPicturesNames) {
    const Case& of = savePictureCase();
    auto logged = [](const std::string& source, const std::string& source_size,
                     const std::string& file, const std::string& file_size) {
        return "DEBUG |handle = 65244\nDEBUG |SAVE_PICTURE_REQ : src_resource = |" + source +
               "|, src_resource_size = " + source_size + ", filename = |" + file +
               "|, filename_size = " + file_size +
               ", image_data_size = -505224220, overwrite = 161\n";
    };
    // The record gives their lengths as 0.
    expectDelivered(of, Record(of.record).u32(4, 0).u32(8, 0), of.callback,
                    logged("src.png", "0", "file.jpeg", "0") + of.delivered());
    expectDelivered(of, Record(of.record).u32(4, 0xFFFFFFFF).u32(8, 3).text(12, "").text(792, ""),
                    "onEvDtvsvBmlSavePictureReq BG_EV_DTVSV_BML_SAVE_PICTURE_REQ(65244, "
                    "BG_TS_DTVSVLIB_SAVE_PICTURE_REQ(\"\", \"\", -505224220, 161, 0L, 0L))",
                    logged("", "-1", "", "3") + of.delivered());
    // Six for a pair, two for a NUL, three for an invalid byte.
    expectDelivered(
        of,
        Record(of.record)
            .u32(4, 1)
            .u32(8, 2)
            .text(12, "\xF0\x9F\x98\x80.")
            .text(792, "\xC0\x80\xFF"),
        "onEvDtvsvBmlSavePictureReq BG_EV_DTVSV_BML_SAVE_PICTURE_REQ(65244, "
        "BG_TS_DTVSVLIB_SAVE_PICTURE_REQ(\"\\ud83d\\ude00.\", \"\\u0000\\ufffd\", -505224220, 161, "
        "7L, 5L))",
        logged("\\xF0\\x9F\\x98\\x80.", "1", "\\xC0\\x80\\xFF", "2") + of.delivered());
    expectDelivered(
        of, Record(of.record).u32(4, 780).u32(8, 780).fill(12, 780, 's').fill(792, 780, 'f'),
        "onEvDtvsvBmlSavePictureReq BG_EV_DTVSV_BML_SAVE_PICTURE_REQ(65244, "
        "BG_TS_DTVSVLIB_SAVE_PICTURE_REQ(\"" +
            std::string(780, 's') + "\", \"" + std::string(780, 'f') +
            "\", -505224220, 161, 780L, 780L))",
        logged(std::string(780, 's'), "780", std::string(780, 'f'), "780") + of.delivered());
}

TEST_F(RequestText, EmptyTextsAreNeverNull) {
    const Case& mail = mailCase();
    expectDelivered(mail, Record(mail.record).text(2, "").text(126, "").text(526, ""),
                    "onEvDtvsvBmlMailReq BG_EV_DTVSV_BML_MAIL_REQ(65244, "
                    "BG_TS_DTVSVLIB_MAIL_REQ(\"\", \"\", \"\"))",
                    "DEBUG |handle = 65244\n"
                    "DEBUG |MAIL_REQ : title = ||, send_address = ||, data = ||\n" +
                        mail.delivered());
    const Case& schedule = scheduleCase();
    expectDelivered(
        schedule, Record(schedule.record).text(16, "").text(512, "\xE3\x81\x82"),
        "onEvDtvsvBmlScheduleReq BG_EV_DTVSV_BML_SCHEDULE_REQ(65244, "
        "BG_TS_DTVSVLIB_SCHEDULE_REQ(BG_TS_DTVSVLIB_BML_TIME(33025, 33282, 33539, 33796, 34053, "
        "34310, 34567), \"\", \"\\u3042\", 161))",
        "DEBUG |handle = 65244\n"
        "DEBUG |BML_TINME : date_year = 33025, date_month = 33282, date_day = 33539, date_dow = "
        "33796, date_hour = 34053, date_min = 34310, date_sec = 34567\n"
        "DEBUG |SCHEDULE_REQ : length = 0, title = ||\n"
        "DEBUG |SCHEDULE_REQ : length = 3, text = |\\xE3\\x81\\x82|\n"
        "DEBUG |SCHEDULE_REQ : alarm_flag = 161\n" +
            schedule.delivered());
}

} // namespace
