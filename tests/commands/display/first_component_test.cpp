// What a programme is shown with first: three planes and five settings in one command.
#include "commands/drawing_places.h"

namespace {

using namespace commands;
using namespace harness;

class FirstComponent : public CommandTest {
protected:
    NativeSurface video;
    NativeSurface caption;
    NativeSurface data;
    jobject screen_info = screenInfo(video.java(), 320, 180, 1, 2);
    jobject cap_info = capInfo(caption.java(), 321, 60, 3, usualLayout());
    jobject bml_info = bmlInfo(data.java(), 240, 427, 2);

    /// Numbers without a constant give null.
    static jobject setting(int language, int dualmono, int audio, int cap_start, int bml_start,
                           jobject screen, jobject cap, jobject bml) {
        return newObject("BG_TS_DTVSVLIB_COMPONENT_SETTING",
                         "(IIIIILtype/BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;"
                         "Ltype/BG_TS_DTVSVLIB_CAP_DRAWING_INFO;"
                         "Ltype/BG_TS_DTVSVLIB_BML_DRAWING_INFO;)V",
                         {language, dualmono, audio, cap_start, bml_start, screen, cap, bml});
    }
    jobject setting(int language, int dualmono, int audio, int cap_start, int bml_start) {
        return setting(language, dualmono, audio, cap_start, bml_start, screen_info, cap_info,
                       bml_info);
    }
    jobject settingOf(jobject screen, jobject cap, jobject bml) {
        return setting(0, 0, 0, 0, 0, screen, cap, bml);
    }
    void expectRefused(jobject object, const std::string& lines) {
        EXPECT_EQ(run("SetFirstComponent", {3, object}), "PARAM_NG");
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLibSetFirstComponent", "START |hdl = 3\n" + lines);
        EXPECT_EQ(video.count(), 1);
        EXPECT_EQ(caption.count(), 1);
        EXPECT_EQ(data.count(), 1);
    }
};

constexpr const char* firstVideoDone = R"(
    START setScreenDrawingInfo|
    END setScreenDrawingInfo|
    START setSurface|
    END setSurface|
)";
constexpr const char* firstCaptionDone = R"(
    START setCapDrawingInfo|
    END setCapDrawingInfo|
    START setSurface|
    END setSurface|
)";
constexpr const char* bmlDone = R"(
    START setBMLDrawingInfo|
    END setBMLDrawingInfo|
    START setSurface|
    END setSurface|
)";
const std::string planesDone = std::string(firstVideoDone) + firstCaptionDone + bmlDone;
constexpr const char* planesRecord = "40 01 b4 00 01 02 41 01 3c 00 03 00 14 0c 04 02 21 00 2c 00 "
                                     "05 01 f0 00 ab 01 02 00";
constexpr const char* planesSent = R"(
    DEBUG |SEND, SCREEN_DRAWING_INFO : surface_width  = 320
    DEBUG |SEND, SCREEN_DRAWING_INFO : surface_height = 180
    DEBUG |SEND, SCREEN_DRAWING_INFO : screen_rotate  = 1
    DEBUG |SEND, SCREEN_DRAWING_INFO : screen_mode    = 2
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
    DEBUG |SEND, BML_DRAWING_INFO: surface_width  = 240
    DEBUG |SEND, BML_DRAWING_INFO: surface_height = 427
    DEBUG |SEND, BML_DRAWING_INFO: screen_rotate  = 2
)";

TEST_F(FirstComponent, IsThirtySixBytes) {
    jobject object = setting(8, 4, 1, 1, 0);
    EXPECT_EQ(run("SetFirstComponent", {0x12345, object}), "OK");
    EXPECT_EQ(sent(), std::string("1000000a surfaces=3: 45 23 08 04 01 01 00 00 ") + planesRecord);
    EXPECT_LINES("dtvSvLibSetFirstComponent", "START |hdl = 74565\n" + planesDone + R"(
        DEBUG |SEND, dtvsv_handle = 9029
        DEBUG |SEND, COMPONENT_SETTING : cap_start_type  = 1
        DEBUG |SEND, COMPONENT_SETTING : bml_start_type  = 0
        DEBUG |SEND, COMPONENT_SETTING : cap_lang        = 8
        DEBUG |SEND, COMPONENT_SETTING : dualmono        = 4
        DEBUG |SEND, COMPONENT_SETTING : audio_component = 1
        )" + planesSent + R"(
        RESULT 0
        END |ret = 0)");
}

TEST_F(FirstComponent, SettingsWithoutABoundAndNegativeStarts) {
    jobject object = setting(1, 1, 1, 0, 1);
    EnumValue language("BG_TE_DTVSVLIB_CAP_LANG", "LANGUAGE_2", 1000);
    EnumValue dualmono("BG_TE_DTVSVLIB_DUALMONO", "SUB", -2);
    EnumValue audio("BG_TE_DTVSVLIB_AUDIO_COMPONENT", "SECOND", 255);
    EnumValue start("BG_TE_DTVSVLIB_CONTROL_TYPE", "OFF", -1);
    EXPECT_EQ(run("SetFirstComponent", {3, object}), "OK");
    EXPECT_EQ(sent(), std::string("1000000a surfaces=3: 03 00 e8 fe ff ff 01 00 ") + planesRecord);
    EXPECT_LINES("dtvSvLibSetFirstComponent", "START |hdl = 3\n" + planesDone + R"(
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, COMPONENT_SETTING : cap_start_type  = 255
        DEBUG |SEND, COMPONENT_SETTING : bml_start_type  = 1
        DEBUG |SEND, COMPONENT_SETTING : cap_lang        = 232
        DEBUG |SEND, COMPONENT_SETTING : dualmono        = 254
        DEBUG |SEND, COMPONENT_SETTING : audio_component = 255
        )" + planesSent + R"(
        RESULT 0
        END |ret = 0)");
}

TEST_F(FirstComponent, BothStartsMayBeNegative) {
    jobject object = setting(0, 0, 0, 0, 0);
    EnumValue start("BG_TE_DTVSVLIB_CONTROL_TYPE", "OFF", -1);
    EXPECT_EQ(run("SetFirstComponent", {3, object}), "OK");
    EXPECT_EQ(sent(), std::string("1000000a surfaces=3: 03 00 00 00 00 ff ff 00 ") + planesRecord);
    EXPECT_LINES("dtvSvLibSetFirstComponent", "START |hdl = 3\n" + planesDone + R"(
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, COMPONENT_SETTING : cap_start_type  = 255
        DEBUG |SEND, COMPONENT_SETTING : bml_start_type  = 255
        DEBUG |SEND, COMPONENT_SETTING : cap_lang        = 0
        DEBUG |SEND, COMPONENT_SETTING : dualmono        = 0
        DEBUG |SEND, COMPONENT_SETTING : audio_component = 0
        )" + planesSent + R"(
        RESULT 0
        END |ret = 0)");
}

TEST_F(FirstComponent, FailedSendIsNg) {
    service->setResult(16);
    EXPECT_EQ(run("SetFirstComponent", {3, setting(0, 0, 0, 0, 0)}), "NG");
    EXPECT_EQ(sent(), std::string("1000000a surfaces=3: 03 00 00 00 00 00 00 00 ") + planesRecord);
    std::vector<TraceLine> lines = log->take();
    ASSERT_GE(lines.size(), 3U);
    lines.erase(lines.begin(), lines.end() - 3);
    EXPECT_TRACE(lines, nativeTrace("dtvSvLibSetFirstComponent", "RESULT 1\nEND |ret = 16"));
}

TEST_F(FirstComponent, NullSetting) {
    expectRefused(nullptr, "RESULT 5\nDEBUG |component_setting_obj is NULL, ret = 5");
}

TEST_F(FirstComponent, UnreadableSettings) {
    struct Unreadable {
        jobject object;
        const char* message;
    };
    // Read in this order, each before the ones that follow.
    const Unreadable rows[] = {
        {setting(99, 99, 99, 99, 99), "audio_component getEnumValue Error, ret = 1"},
        {setting(99, 99, 0, 99, 99), "cap_lang getEnumValue Error, ret = 1"},
        {setting(0, 99, 0, 99, 99), "dualmono getEnumValue Error, ret = 1"},
        {setting(0, 0, 0, 99, 99), "cap_start_type getEnumValue Error, ret = 1"},
        {setting(0, 0, 0, 0, 99), "bml_start_type getEnumValue Error, ret = 1"},
    };
    for (const Unreadable& row : rows) {
        expectRefused(row.object,
                      std::string("DEBUG getEnumValue|enum object is NULL\nRESULT 5\nDEBUG |") +
                          row.message);
    }
}

TEST_F(FirstComponent, StartTypes) {
    expectRefused(setting(0, 0, 0, 2, 99),
                  "RESULT 5\nDEBUG |cap_start_type out of value Error, cap_start_type = 2");
    expectRefused(setting(0, 0, 0, 255, 0),
                  "RESULT 5\nDEBUG |cap_start_type out of value Error, cap_start_type = 255");
    expectRefused(setting(0, 0, 0, 1, 2),
                  "RESULT 5\nDEBUG |bml_start_type out of value Error, bml_start_type = 2");
}

TEST_F(FirstComponent, NullPlanes) {
    expectRefused(settingOf(nullptr, nullptr, nullptr),
                  "RESULT 5\nDEBUG |video drawing_info_obj object is NULL, ret = 5");
    expectRefused(settingOf(screen_info, nullptr, nullptr),
                  std::string(firstVideoDone) +
                      "RESULT 5\nDEBUG |caption drawing_info_obj object is NULL, ret = 5");
    expectRefused(settingOf(screen_info, cap_info, nullptr),
                  std::string(firstVideoDone) + firstCaptionDone +
                      "RESULT 5\nDEBUG |BML drawing_info_obj object is NULL, ret = 5");
}

TEST_F(FirstComponent, PlanesThatTheirRoutinesRefuse) {
    expectRefused(settingOf(screenInfo(video.java(), 1, 2, 0, 99), cap_info, bml_info), R"(
        START setScreenDrawingInfo|
        DEBUG getEnumValue|enum object is NULL
        DEBUG setScreenDrawingInfo|screen_mode getEnumValue Error, ret = 1
        RESULT 5)");
    expectRefused(settingOf(screen_info, capInfo(caption.java(), 1, 2, 0, nullptr), bml_info),
                  std::string(firstVideoDone) + R"(
        START setCapDrawingInfo|
        DEBUG setCapDrawingInfo|cap_info display_info_obj object is NULL, ret = 5
        RESULT 5)");
    expectRefused(settingOf(screen_info, cap_info, bmlInfo(nullptr, 1, 2, 0)),
                  std::string(firstVideoDone) + firstCaptionDone + R"(
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        START setSurface|
        DEBUG setSurface|surface_object is NULL, ret = 1
        RESULT 5)");
}

struct LookUp {
    int number;
    std::string lines;
};

/// The look-ups are five settings, then of each plane its field, its own fields, and two of its
/// surface: 5, 1 + 4 + 2, 1 + 12 + 2, 1 + 3 + 2.
TEST_F(FirstComponent, WithoutAField) {
    const std::string no_enum = "DEBUG getEnumValue|enum field ID is NULL\nRESULT 5\nDEBUG |";
    const LookUp rows[] = {
        {0, no_enum + "audio_component getEnumValue Error, ret = 1"},
        {1, no_enum + "cap_lang getEnumValue Error, ret = 1"},
        {2, no_enum + "dualmono getEnumValue Error, ret = 1"},
        {3, no_enum + "cap_start_type getEnumValue Error, ret = 1"},
        {4, no_enum + "bml_start_type getEnumValue Error, ret = 1"},
        {5, "RESULT 5\nDEBUG |video_drawing_info fieldID is NULL, ret = 5"},
        {12, std::string(firstVideoDone) +
                 "RESULT 5\nDEBUG |cap_drawing_info fieldID is NULL, ret = 5"},
        {27, std::string(firstVideoDone) + firstCaptionDone +
                 "RESULT 5\nDEBUG |bml_drawing_info fieldID is NULL, ret = 5"},
    };
    jobject object = setting(0, 0, 0, 0, 0);
    for (const LookUp& row : rows) {
        SCOPED_TRACE(row.number);
        FailJni missing("GetFieldID", row.number);
        expectRefused(object, row.lines);
    }
}

/// GetObjectClass is called twice for each enumeration, once for the setting, and once by each
/// plane's routine and by the command after it: 10, 1, 5 + 1, 8 + 1, 3 + 1.
TEST_F(FirstComponent, WithoutAClass) {
    const LookUp rows[] = {
        {10, "RESULT 5\nDEBUG |component_setting_clazz class is NULL, ret = 5"},
        {16, R"(START setScreenDrawingInfo|
                END setScreenDrawingInfo|
                RESULT 5
                DEBUG |video drawing_info_clazz class is NULL, ret = 1)"},
        {25, std::string(firstVideoDone) + R"(
                START setCapDrawingInfo|
                END setCapDrawingInfo|
                RESULT 5
                DEBUG |caption drawing_info_clazz class is NULL, ret = 1)"},
        {29, std::string(firstVideoDone) + firstCaptionDone + R"(
                START setBMLDrawingInfo|
                END setBMLDrawingInfo|
                RESULT 5
                DEBUG |BML drawing_info_clazz class is NULL, ret = 1)"},
    };
    jobject object = setting(0, 0, 0, 0, 0);
    for (const LookUp& row : rows) {
        SCOPED_TRACE(row.number);
        FailJni missing("GetObjectClass", row.number, FailJni::Leaves::nothing);
        expectRefused(object, row.lines);
    }
}

TEST_F(FirstComponent, AGetterThatThrowsEndsTheCommand) {
    for (int getter : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(getter);
        FailJni thrown("CallStaticIntMethodV", getter);
        EXPECT_EQ(run("SetFirstComponent", {3, setting(0, 0, 0, 0, 0)}), outOfMemory);
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLibSetFirstComponent", "START |hdl = 3");
    }
    FailJni thrown("CallStaticIntMethodV", 9); // the caption's alpha: after 5, 2 and 2 others
    EXPECT_EQ(run("SetFirstComponent", {3, setting(0, 0, 0, 0, 0)}), outOfMemory);
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibSetFirstComponent",
                 "START |hdl = 3\n" + std::string(firstVideoDone) + "START setCapDrawingInfo|");
    EXPECT_EQ(video.count(), 1);
}

} // namespace
