#include "events/request/request_cases.h"

namespace events {

const Case& permissionCase() {
    static const Case made{"permission",
                           0x10000042,
                           "dtvsv_msgid_lib_bml_permission_req",
                           Record(12).u16(0, 0xFEDC).u8(4, 0xA1).u32(8, 0xC4C3C2C1),
                           true,
                           "DEBUG |handle = 65244\n"
                           "DEBUG |PERMISSION_REQ : permit_type = 161, task_id = -993803583\n",
                           "ERROR",
                           "ERROR",
                           {"157 90", "73 6"},
                           5,
                           "onEvDtvsvBmlPermissionReq BG_EV_DTVSV_BML_PERMISSION_REQ(65244, "
                           "BG_TS_DTVSVLIB_PERMISSION_REQ(161, -993803583))",
                           {},
                           "DEBUG |handle = 65244\n"
                           "DEBUG |PERMISSION_REQ : permit_type = 161, task_id = 12829377\n"};
    return made;
}

const Case& authCase() {
    static const Case made{"auth",
                           0x10000043,
                           "dtvsv_msgid_lib_bml_auth_req",
                           Record(8).u16(0, 0xFEDC).u32(4, 0xC4C3C2C1),
                           true,
                           "DEBUG |handle = 65244, task_id = -993803583\n",
                           "DEBUG",
                           "DEBUG",
                           {"68 1"},
                           0,
                           "onEvDtvsvBmlAuthReq BG_EV_DTVSV_BML_AUTH_REQ(65244, -993803583)",
                           {},
                           "DEBUG |handle = 65244, task_id = 12829377\n"};
    return made;
}

const Case& writeNvramCase() {
    static const Case made{
        "write_nvram",
        0x10000044,
        "dtvsv_msgid_lib_bml_write_nvram_req",
        Record(116)
            .u16(0, 0xFEDC)
            .u8(2, 0xA1)
            .u16(4, 0xB2B1)
            .text(6, "Network TS")
            .u8(50, 0xA2)
            .raw(51, "\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE\xCF"
                     "\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD7\xD8\xD9\xDA\xDB\xDC\xDD\xDE\xDF"
                     "\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE\xEF"
                     "\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF7\xF8\xF9\xFA\xFB\xFC\xFD\xFE\xFF")
            .u8(115, 0x55),
        true,
        "DEBUG |handle = 65244\n"
        "DEBUG |WRITE_NVRAM_REQ : affiliation_id = 161, network_id = 45745, ts_name = |Network "
        "TS|, "
        "block_no = 162\n",
        "ERROR",
        "ERROR",
        {"175 108", "80 13"},
        12,
        "onEvDtvsvBmlWriteNvramReq BG_EV_DTVSV_BML_WRITE_NVRAM_REQ(65244, "
        "BG_TS_DTVSVLIB_WRITE_NVRAM_REQ(161, 45745, \"Network TS\", 162, bytes[-64, -63, -62, -61, "
        "-60, -59, -58, -57, -56, -55, -54, -53, -52, -51, -50, -49, -48, -47, -46, -45, -44, -43, "
        "-42, -41, -40, -39, -38, -37, -36, -35, -34, -33, -32, -31, -30, -29, -28, -27, -26, -25, "
        "-24, -23, -22, -21, -20, -19, -18, -17, -16, -15, -14, -13, -12, -11, -10, -9, -8, -7, "
        "-6, -5, -4, -3, -2, -1]))",
        {"ERROR |ERROR NewStringUTF\n"}};
    return made;
}

const Case& readNvramCase() {
    static const Case made{
        "read_nvram",
        0x10000045,
        "dtvsv_msgid_lib_bml_read_nvram_req",
        Record(8).u16(0, 0xFEDC).u8(2, 0xA1).u16(4, 0xB2B1).u8(6, 0xA2),
        true,
        "DEBUG |handle = 65244\n"
        "DEBUG |READ_NVRAM_REQ : affiliation_id = 161, network_id = 45745, block_no = 162\n",
        "ERROR",
        "ERROR",
        {"161 94", "75 8"},
        7,
        "onEvDtvsvBmlReadNvramReq BG_EV_DTVSV_BML_READ_NVRAM_REQ(65244, "
        "BG_TS_DTVSVLIB_READ_NVRAM_REQ(161, 45745, 162))"};
    return made;
}

const Case& startFepCase() {
    static const Case made{
        "start_fep",
        0x10000046,
        "dtvsv_msgid_lib_bml_start_fep_req",
        Record(1940)
            .u16(0, 0xFEDC)
            .u8(4, 0xA1)
            .u32(8, 0xD4D3D2D1)
            .u8(12, 0xA2)
            .text(13, "typed so far"),
        true,
        "DEBUG |handle = 65244\n"
        "DEBUG |START_FEP_REQ : input_type = 161, input_max = -724315439, password_flg = 162, data "
        "= |typed so far|\n",
        "ERROR",
        "ERROR",
        {"169 102", "78 11"},
        10,
        "onEvDtvsvBmlStartFepReq BG_EV_DTVSV_BML_START_FEP_REQ(65244, "
        "BG_TS_DTVSVLIB_START_FEP_REQ(161, -724315439, 162, \"typed so far\"))",
        {"ERROR |ERROR NewStringUTF\n"}};
    return made;
}

const Case& mailCase() {
    static const Case made{
        "mail",
        0x10000047,
        "dtvsv_msgid_lib_bml_mail_req",
        Record(2530)
            .u16(0, 0xFEDC)
            .text(2, "Mail title")
            .text(126, "to@example.jp")
            .text(526, "Mail body"),
        true,
        "DEBUG |handle = 65244\n"
        "DEBUG |MAIL_REQ : title = |Mail title|, send_address = |to@example.jp|, data = |Mail "
        "body|\n",
        "ERROR",
        "ERROR",
        {"154 87", "72 5"},
        4,
        "onEvDtvsvBmlMailReq BG_EV_DTVSV_BML_MAIL_REQ(65244, BG_TS_DTVSVLIB_MAIL_REQ(\"Mail "
        "title\", \"to@example.jp\", \"Mail body\"))",
        {"ERROR |ERROR NewStringUTF\n", "ERROR |ERROR NewStringUTF\n",
         "ERROR |ERROR NewStringUTF\n"}};
    return made;
}

const Case& phonebookCase() {
    static const Case made{
        "phonebook",
        0x10000048,
        "dtvsv_msgid_lib_bml_phonebook_req",
        Record(1310)
            .u16(0, 0xFEDC)
            .text(2, "Name")
            .text(262, "Reading")
            .text(778, "0120-000")
            .text(910, "me@example.jp"),
        false,
        "DEBUG |handle = 65244\n"
        "DEBUG |PHONEBOOK_REQ : name = |Name|, name_kana = |Reading|, phone_number = |0120-000|, "
        "mail_address = |me@example.jp|\n",
        "DEBUG",
        "DEBUG",
        {"158 91", "74 7"},
        6,
        "onEvDtvsvBmlPhoneBookReq BG_EV_DTVSV_BML_PHONEBOOK_REQ(65244, "
        "BG_TS_DTVSVLIB_PHONEBOOK_REQ(\"Name\", \"Reading\", \"0120-000\", \"me@example.jp\"))",
        {"DEBUG |name is NULL\n", "DEBUG |name_kana is NULL\n", "DEBUG |phone_number is NULL\n",
         "DEBUG |mail_address is NULL\n"}};
    return made;
}

const Case& callCase() {
    static const Case made{"call",
                           0x10000049,
                           "dtvsv_msgid_lib_bml_call_req",
                           Record(102).u16(0, 0xFEDC).text(2, "0120-123-456"),
                           false,
                           "DEBUG |handle = 65244\n"
                           "DEBUG |CALL_REQ : phone_number = |0120-123-456|\n",
                           "DEBUG",
                           "DEBUG",
                           {"142 75", "70 3"},
                           2,
                           "onEvDtvsvBmlCallReq BG_EV_DTVSV_BML_CALL_REQ(65244, "
                           "BG_TS_DTVSVLIB_CALL_REQ(\"0120-123-456\"))",
                           {"DEBUG | phone_number is NULL\n"}};
    return made;
}

const Case& scheduleCase() {
    static const Case made{
        "schedule",
        0x1000004a,
        "dtvsv_msgid_lib_bml_schedule_req",
        Record(1490)
            .u16(0, 0xFEDC)
            .u16(2, 0x8101)
            .u16(4, 0x8202)
            .u16(6, 0x8303)
            .u16(8, 0x8404)
            .u16(10, 0x8505)
            .u16(12, 0x8606)
            .u16(14, 0x8707)
            .text(16, "Entry")
            .text(512, "What it is about")
            .u8(1488, 0xA1),
        false,
        "DEBUG |handle = 65244\n"
        "DEBUG |BML_TINME : date_year = 33025, date_month = 33282, date_day = 33539, date_dow = "
        "33796, date_hour = 34053, date_min = 34310, date_sec = 34567\n"
        "DEBUG |SCHEDULE_REQ : length = 5, title = |Entry|\n"
        "DEBUG |SCHEDULE_REQ : length = 16, text = |What it is about|\n"
        "DEBUG |SCHEDULE_REQ : alarm_flag = 161\n",
        "ERROR",
        "ERROR",
        {"139 72", "165 98", "77 10"},
        9,
        "onEvDtvsvBmlScheduleReq BG_EV_DTVSV_BML_SCHEDULE_REQ(65244, "
        "BG_TS_DTVSVLIB_SCHEDULE_REQ(BG_TS_DTVSVLIB_BML_TIME(33025, 33282, 33539, 33796, 34053, "
        "34310, 34567), \"Entry\", \"What it is about\", 161))",
        {"ERROR |ERROR NewStringUTF\n", "ERROR |ERROR NewStringUTF\n"}};
    return made;
}

const Case& browserCase() {
    static const Case made{
        "browser",
        0x1000004b,
        "dtvsv_msgid_lib_bml_browser_req",
        Record(2056)
            .u16(0, 0xFEDC)
            .u8(2, 0xA1)
            .u8(3, 0xA2)
            .u8(4, 0xA3)
            .u8(5, 0xA4)
            .text(6, "http://back/")
            .text(1031, "http://there/"),
        false,
        "DEBUG |handle = 65244\n"
        "DEBUG |BROWSER_REQ : app_id = 161, permit_av = 162, browser_info = 163, full_screen = "
        "164, "
        "return_uri = |http://back/|, combrowser_uri = |http://there/|\n",
        "DEBUG",
        "DEBUG",
        {"141 74", "69 2"},
        1,
        "onEvDtvsvBmlBrowserReq BG_EV_DTVSV_BML_BROWSER_REQ(65244, BG_TS_DTVSVLIB_BROWSER_REQ(161, "
        "162, 163, 164, \"http://back/\", \"http://there/\"))",
        {"DEBUG |return_uri is NULL\n", "DEBUG |combrowser_uri is NULL\n"}};
    return made;
}

const Case& savePictureCase() {
    static const Case made{
        "save_picture",
        0x1000004c,
        "dtvsv_msgid_lib_bml_save_picture_req",
        Record(1580)
            .u16(0, 0xFEDC)
            .u32(4, 0xC1C2C3C4)
            .u32(8, 0xD1D2D3D4)
            .text(12, "src.png")
            .text(792, "file.jpeg")
            .u32(1572, 0xE1E2E3E4)
            .u8(1576, 0xA1),
        false,
        "DEBUG |handle = 65244\n"
        "DEBUG |SAVE_PICTURE_REQ : src_resource = |src.png|, src_resource_size = -1044200508, "
        "filename = |file.jpeg|, filename_size = -774712364, image_data_size = -505224220, "
        "overwrite = 161\n",
        "DEBUG",
        "DEBUG",
        {"163 96", "76 9"},
        8,
        "onEvDtvsvBmlSavePictureReq BG_EV_DTVSV_BML_SAVE_PICTURE_REQ(65244, "
        "BG_TS_DTVSVLIB_SAVE_PICTURE_REQ(\"src.png\", \"file.jpeg\", -505224220, 161, 7L, 9L))",
        {"DEBUG |src_resource is NULL\n", "DEBUG |filename is NULL\n"}};
    return made;
}

const Case& startTvlinkCase() {
    static const Case made{"start_tvlink",
                           0x1000004d,
                           "dtvsv_msgid_lib_bml_start_tvlink_req",
                           Record(2056)
                               .u16(0, 0xFEDC)
                               .u8(2, 0xA1)
                               .u8(3, 0xA2)
                               .u8(4, 0xA3)
                               .u8(5, 0xA4)
                               .text(6, "http://back/")
                               .text(1031, "http://there/"),
                           true,
                           "DEBUG |handle = 65244\n"
                           "DEBUG |START_TVLINK_REQ : app_id = 161, permit_av = 162, browser_info "
                           "= 163, full_screen = "
                           "164, return_uri = |http://back/|, combrowser_uri = |http://there/|\n",
                           "ERROR",
                           "ERROR",
                           {"170 103", "79 12"},
                           11,
                           "onEvDtvsvBmlStartTvlinkReq BG_EV_DTVSV_BML_START_TVLINK_REQ(65244, "
                           "BG_TS_DTVSVLIB_START_TVLINK_REQ(161, 162, 163, 164, \"http://back/\", "
                           "\"http://there/\"))",
                           {"ERROR |ERROR NewStringUTF\n", "ERROR |ERROR NewStringUTF\n"}};
    return made;
}

const Case& enrolTvlinkCase() {
    static const Case made{
        "enrol_tvlink",
        0x1000004e,
        "dtvsv_msgid_lib_bml_enrol_tvlink_req",
        Record(960)
            .u16(0, 0xFEDC)
            .text(2, "Link")
            .text(166, "http://link/")
            .text(410, "Where it leads")
            .u8(934, 0xA1)
            .u16(936, 0x9101)
            .u16(938, 0x9202)
            .u16(940, 0x9303)
            .u16(942, 0x9404)
            .u16(944, 0x9505)
            .u16(946, 0x9606)
            .u16(948, 0x9707)
            .u16(950, 0xB2B1)
            .u16(952, 0xB4B3)
            .raw(954, "\xF1\xF2\xF3\xF4\xF5\xF6"),
        false,
        "DEBUG |handle = 65244\n"
        "DEBUG |ENROL_TVLINK_REQ : title = |Link|, uri = |http://link/|, description = |Where it "
        "leads|, cpro_bmtype = 161, network_id = 45745, service_id = 46259\n"
        "DEBUG |EXPIRE_DATE : date_year = 38663, date_month = 38406, date_day = 38149, date_dow = "
        "37892, date_hour = 37635, date_min = 37378, date_sec = 37121\n",
        "DEBUG",
        "DEBUG",
        {"139 72", "150 83", "71 4"},
        3,
        "onEvDtvsvBmlEnrolTvlinkReq BG_EV_DTVSV_BML_ENROL_TVLINK_REQ(65244, "
        "BG_TS_DTVSVLIB_ENROL_TVLINK_REQ(\"Link\", \"http://link/\", \"Where it leads\", 161, "
        "BG_TS_DTVSVLIB_BML_TIME(37121, 37378, 37635, 37892, 38149, 38406, 38663), 45745, 46259, "
        "bytes[-15, -14, -13, -12, -11, -10]))",
        {"DEBUG |title is NULL\n", "DEBUG |uri is NULL\n", "DEBUG |description is NULL\n"}};
    return made;
}

std::vector<Case> requestCases() {
    return {permissionCase(),  authCase(),        writeNvramCase(), readNvramCase(), startFepCase(),
            mailCase(),        phonebookCase(),   callCase(),       scheduleCase(),  browserCase(),
            savePictureCase(), startTvlinkCase(), enrolTvlinkCase()};
}

} // namespace events
