// Captions and data broadcasting switched on and off, with and without waiting for the answer.
#include "commands/drawing_places.h"

namespace {

using namespace commands;
using namespace harness;

class Control : public CommandTest {
protected:
    NativeSurface surface;
    jobject cap_info = capInfo(surface.java(), 321, 60, 3, usualLayout());
    jobject bml_info = bmlInfo(surface.java(), 240, 427, 2);
};

constexpr const char* capLines = R"(
    START |hdl = 3
    START setCapDrawingInfo|
    END setCapDrawingInfo|
    START setSurface|
    END setSurface|
    DEBUG |SEND, handle           = 3
    DEBUG |SEND, cap_control_type = 4
    DEBUG |SEND, cap_lang         = 8
    DEBUG |SEND, CAP_DRAWING_INFO: surface_width  = 321
    DEBUG |SEND, CAP_DRAWING_INFO: surface_height = 60
    DEBUG |SEND, CAP_DRAWING_INFO: screen_rotate  = 3
    DEBUG |SEND, CAP_DISPLAY_INFO: font_size        = 20
    DEBUG |SEND, CAP_DISPLAY_INFO: characters_num   = 12
    DEBUG |SEND, CAP_DISPLAY_INFO: lines_num        = 4
    DEBUG |SEND, CAP_DISPLAY_INFO: separator_size   = 2
    DEBUG |SEND, CAP_DISPLAY_INFO: position_x       = 33
    DEBUG |SEND, CAP_DISPLAY_INFO: position_y       = 44
    DEBUG |SEND, CAP_DISPLAY_INFO: background_color = 5
    DEBUG |SEND, CAP_DISPLAY_INFO: background_alpha = 1
)";
constexpr const char* capRecord = "03 00 04 08 41 01 3c 00 03 00 14 0c 04 02 21 00 2c 00 05 01";
constexpr const char* bmlLines = R"(
    START |hdl = 3
    START setBMLDrawingInfo|
    END setBMLDrawingInfo|
    START setSurface|
    END setSurface|
    DEBUG |SEND, handle           = 3
    DEBUG |SEND, bml_control_type = 4
    DEBUG |SEND, BML_DRAWING_INFO: surface_width  = 240
    DEBUG |SEND, BML_DRAWING_INFO: surface_height = 427
    DEBUG |SEND, BML_DRAWING_INFO: screen_rotate  = 2
)";
constexpr const char* bmlRecord = "03 00 04 00 f0 00 ab 01 02 00";

TEST_F(Control, CapIsTwentyBytes) {
    EXPECT_EQ(run("ControlCap", {3, 4, 8, cap_info}), "OK");
    EXPECT_EQ(sent(), std::string("10000017 surfaces=1: ") + capRecord);
    EXPECT_LINES("dtvSvLibControlCap", std::string(capLines) + "RESULT 0\nEND |ret = 0");
    service->setResult(-1);
    EXPECT_EQ(run("ControlCap", {3, 4, 8, cap_info}), "NG");
    EXPECT_LINES("dtvSvLibControlCap", std::string(capLines) + "RESULT 1\nEND |ret = -1");
}

TEST_F(Control, BmlIsTenBytes) {
    EXPECT_EQ(run("ControlBML", {3, 4, bml_info}), "OK");
    EXPECT_EQ(sent(), std::string("10000018 surfaces=1: ") + bmlRecord);
    EXPECT_LINES("dtvSvLibControlBML", std::string(bmlLines) + "RESULT 0\nEND |ret = 0");
    service->setResult(2);
    EXPECT_EQ(run("ControlBML", {3, 4, bml_info}), "NG");
    EXPECT_LINES("dtvSvLibControlBML", std::string(bmlLines) + "RESULT 1\nEND |ret = 2");
}

/// What is accepted, and its bytes in the record and in the lines.
TEST_F(Control, TypesAndLanguages) {
    struct Accepted {
        int handle;
        int type;
        int language;
        const char* bytes;
        const char* handle_line;
        const char* type_line;
        const char* language_line;
    };
    const Accepted accepted[] = {
        {3, 0, 0, "03 00 00 00", "3", "0", "0"},
        {3, 4, 8, "03 00 04 08", "3", "4", "8"},
        {3, 255, 0, "03 00 ff 00", "3", "255", "0"},
        {3, -1, -1, "03 00 ff ff", "3", "255", "255"},
        {0x1fffe, -256, -255, "fe ff 00 01", "65534", "0", "1"},
    };
    for (const Accepted& one : accepted) {
        SCOPED_TRACE(one.type);
        EXPECT_EQ(run("ControlCap", {one.handle, one.type, one.language, cap_info}), "OK");
        EXPECT_EQ(sent().substr(0, 32), std::string("10000017 surfaces=1: ") + one.bytes);
        std::vector<TraceLine> lines = log->takeOf("dtvSvLibControlCap");
        ASSERT_GE(lines.size(), 4U);
        EXPECT_EQ(lines[1].message, std::string("SEND, handle           = ") + one.handle_line);
        EXPECT_EQ(lines[2].message, std::string("SEND, cap_control_type = ") + one.type_line);
        EXPECT_EQ(lines[3].message, std::string("SEND, cap_lang         = ") + one.language_line);

        std::string type_byte = std::string(one.bytes).substr(0, 8);
        EXPECT_EQ(run("ControlBML", {one.handle, one.type, bml_info}), "OK");
        EXPECT_EQ(sent().substr(0, 32), "10000018 surfaces=1: " + type_byte + " 00");
        lines = log->takeOf("dtvSvLibControlBML");
        ASSERT_GE(lines.size(), 3U);
        EXPECT_EQ(lines[1].message, std::string("SEND, handle           = ") + one.handle_line);
        EXPECT_EQ(lines[2].message, std::string("SEND, bml_control_type = ") + one.type_line);

        EXPECT_EQ(
            run("ControlCap_Sync", {one.handle, one.type, one.language, cap_info}).substr(0, 39),
            "BG_TS_DTVSVLIB_CONTROL_CAP_SYNC_INFO(16");
        EXPECT_EQ(sent().substr(0, 37), std::string("1000003d sync surfaces=1: ") + one.bytes);
        EXPECT_EQ(run("ControlBML_Sync", {one.handle, one.type, bml_info}).substr(0, 39),
                  "BG_TS_DTVSVLIB_CONTROL_BML_SYNC_INFO(16");
        EXPECT_EQ(sent().substr(0, 37), "1000003e sync surfaces=1: " + type_byte + " 00");
    }
}

/// The four commands refuse the same arguments; only what they return differs.
struct Refusing {
    const char* name;
    bool caption;
    const char* answer;
    const char* lines; ///< of the answer
};
const Refusing refusing[] = {
    {"ControlCap", true, "PARAM_NG", "RESULT 5\n"},
    {"ControlCap_Sync", true, "BG_TS_DTVSVLIB_CONTROL_CAP_SYNC_INFO(5, 600)",
     R"(START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x1000003d
        NEW 214 133
        END makeComReplyObjSync|
)"},
    {"ControlBML", false, "PARAM_NG", "RESULT 5\n"},
    {"ControlBML_Sync", false, "BG_TS_DTVSVLIB_CONTROL_BML_SYNC_INFO(5, 600)",
     R"(START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x1000003e
        NEW 215 134
        END makeComReplyObjSync|
)"},
};

class ControlRefusal : public Control, public testing::WithParamInterface<int> {
protected:
    const Refusing& row = refusing[GetParam()];
    const int handle = 0x50000 + 600; // a refusal answers with the handle as it would be sent

    void expectRefused(int type, int language, jobject info, const std::string& before,
                       const std::string& after) {
        std::vector<Value> arguments = {handle, type};
        if (row.caption) {
            arguments.emplace_back(language);
        }
        arguments.emplace_back(info);
        EXPECT_EQ(run(row.name, arguments), row.answer);
        EXPECT_EQ(sent(), "");
        EXPECT_LINES(std::string("dtvSvLib") + row.name,
                     "START |hdl = 328280\n" + before + row.lines + after);
        EXPECT_EQ(surface.count(), 1);
    }
    jobject info() const { return row.caption ? cap_info : bml_info; }
    std::string routine() const { return row.caption ? "setCapDrawingInfo" : "setBMLDrawingInfo"; }
};

INSTANTIATE_TEST_SUITE_P(, ControlRefusal, testing::Range(0, 4),
                         [](const auto& info) { return std::string(refusing[info.param].name); });

TEST_P(ControlRefusal, NullPlace) {
    expectRefused(99, 99, nullptr, "",
                  row.caption ? "DEBUG |cap_drawing_info_obj is NULL, ret = 5"
                              : "DEBUG |bml_drawing_info_obj is NULL, ret = 5");
}

TEST_P(ControlRefusal, Type) {
    std::string message = row.caption ? "DEBUG |cap_control_type is too large : "
                                      : "DEBUG |bml_control_type is too large : ";
    expectRefused(5, 99, info(), "", message + "5, ret = 5");
    expectRefused(254, 0, info(), "", message + "254, ret = 5");
    expectRefused(256, 0, info(), "", message + "256, ret = 5");
    expectRefused(2147483647, 0, info(), "", message + "2147483647, ret = 5");
}

class CaptionRefusal : public ControlRefusal {}; // data broadcasting has no language

INSTANTIATE_TEST_SUITE_P(, CaptionRefusal, testing::Range(0, 2),
                         [](const auto& info) { return std::string(refusing[info.param].name); });

TEST_P(CaptionRefusal, Language) {
    expectRefused(4, 9, info(), "", "DEBUG |cap_lang is too large : 9, ret = 5");
    expectRefused(255, 255, info(), "", "DEBUG |cap_lang is too large : 255, ret = 5");
}

TEST_P(ControlRefusal, PlaceThatItsRoutineRefuses) {
    jobject wrong =
        row.caption ? capInfo(surface.java(), 1, 2, 3, nullptr) : bmlInfo(surface.java(), 1, 2, 99);
    expectRefused(0, 0, wrong,
                  row.caption ? R"(START setCapDrawingInfo|
            DEBUG setCapDrawingInfo|cap_info display_info_obj object is NULL, ret = 5
)"
                              : R"(START setBMLDrawingInfo|
            DEBUG getEnumValue|enum object is NULL
            DEBUG setBMLDrawingInfo|screen_rotate getEnumValue Error, ret = 1
)",
                  "");
}

TEST_P(ControlRefusal, PlaceWithoutSurface) {
    jobject wrong =
        row.caption ? capInfo(nullptr, 1, 2, 3, usualLayout()) : bmlInfo(nullptr, 1, 2, 1);
    expectRefused(0, 0, wrong, "START " + routine() + "|\nEND " + routine() + R"(|
                      START setSurface|
                      DEBUG setSurface|surface_object is NULL, ret = 1
)",
                  "");
}

TEST_P(ControlRefusal, PlaceWithoutAClass) {
    FailJni missing("GetObjectClass", row.caption ? 8 : 3, FailJni::Leaves::nothing);
    expectRefused(0, 0, info(), "START " + routine() + "|\nEND " + routine() + "|\n",
                  row.caption ? "DEBUG |cap drawing_info_clazz class is NULL, ret = 1"
                              : "DEBUG |bml drawing_info_clazz class is NULL, ret = 1");
}

TEST_F(Control, RefusalOfASynchronousCommandThatCannotBeBuiltIsNull) {
    FailJni fail_once("NewObjectV", 0, FailJni::Leaves::nothing);
    EXPECT_EQ(run("ControlCap_Sync", {3, 5, 0, cap_info}), "null");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibControlCap_Sync", R"(
        START |hdl = 3
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x1000003d
        NEWFAIL 214 133
        END makeComReplyObjSync|makeComReplyObjSync CallMethod NG, ret_call = 1
        DEBUG |cap_control_type is too large : 5, ret = 5)");
}

TEST_F(Control, RefusalOfASynchronousCommandWhoseAnswerThrows) {
    FailJni fail_once("NewObjectV");
    EXPECT_EQ(run("ControlBML_Sync", {3, 5, bml_info}), outOfMemory);
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibControlBML_Sync", R"(
        START |hdl = 3
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x1000003e
        NEWFAIL 215 134)");
}

class ControlSynchronous : public Control, public testing::WithParamInterface<int> {
protected:
    bool caption = GetParam() == 0;
    std::string name = caption ? "ControlCap_Sync" : "ControlBML_Sync";
    std::string native = "dtvSvLib" + name;
    std::string object =
        caption ? "BG_TS_DTVSVLIB_CONTROL_CAP_SYNC_INFO" : "BG_TS_DTVSVLIB_CONTROL_BML_SYNC_INFO";
    std::string command = caption ? std::string("1000003d sync surfaces=1: ") + capRecord
                                  : std::string("1000003e sync surfaces=1: ") + bmlRecord;
    std::string begin = caption ? capLines : bmlLines;
    std::string build = caption ? "NEW 214 133\n" : "NEW 215 134\n";
    std::string id = caption ? "0x1000003d\n" : "0x1000003e\n";
    std::vector<Value> arguments =
        caption ? std::vector<Value>{3, 4, 8, cap_info} : std::vector<Value>{3, 4, bml_info};
    std::string withoutReply = "START makeComReplyObjSync|\n"
                               "START makeComReplyObjSync|make param NG message_id = " +
                               id + build + "END makeComReplyObjSync|\n";
};

INSTANTIATE_TEST_SUITE_P(, ControlSynchronous, testing::Values(0, 1), [](const auto& info) {
    return std::string(info.param == 0 ? "Cap" : "Bml");
});

TEST_P(ControlSynchronous, Answer) {
    service->setReply(fromHex("0900 7766 8877 6655"));
    EXPECT_EQ(run(name, arguments), object + "(1432778632, 9)");
    EXPECT_EQ(sent(), command);
    EXPECT_LINES(native, begin + R"(
        DEBUG |RECV, reply_size = 8
        DEBUG |RECV, reply_data.handle = 30600
        DEBUG |RECV, reply_data.return_value = 1719074825
        END |ret = 0
        START makeComReplyObjSync|
        START makeComSubReplyObjSync|message_id = )" +
                             id + R"(
        DEBUG makeComSubReplyObjSync|retvalue = 0
        DEBUG makeComSubReplyObjSync|com_data->handle = 9
        DEBUG makeComSubReplyObjSync|com_data->return_value = 1432778632
        )" + build + R"(
        END makeComSubReplyObjSync|
        END makeComReplyObjSync|)");
}

TEST_P(ControlSynchronous, NoAnswer) {
    EXPECT_EQ(run(name, arguments), object + "(16, 3)");
    EXPECT_EQ(sent(), command);
    EXPECT_LINES(native, begin + R"(
        DEBUG |RECV, reply_size = 0
        DEBUG |RECV, reply_data.handle = 0
        DEBUG |RECV, reply_data.return_value = 0
        END |return DTVSVLIB_RESULT_ABORT_NG
        )" + withoutReply);
}

TEST_P(ControlSynchronous, FailedSend) {
    service->setResult(-3);
    EXPECT_EQ(run(name, arguments), object + "(1, 3)");
    EXPECT_EQ(sent(), command);
    EXPECT_LINES(native, begin + withoutReply + "END |ret = -3");
}

} // namespace
