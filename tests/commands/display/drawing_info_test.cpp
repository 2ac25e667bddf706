// Places to draw are packed into records: every field with its limits, and every reason to refuse
// one.
#include "commands/drawing_places.h"

namespace {

using namespace commands;
using namespace harness;

using DrawingInfo = CommandTest;

constexpr const char* rotateClass = "BG_TE_DTVSVLIB_SCREEN_ROTATE";

// Video.

TEST_F(DrawingInfo, ScreenIsSixBytes) {
    NativeSurface surface;
    EXPECT_EQ(run("SetScreenDisplay", {3, screenInfo(surface.java(), 320, 180, 1, 2)}), "OK");
    EXPECT_EQ(sent(), "1000000c surfaces=1: 03 00 40 01 b4 00 01 02");
    EXPECT_LINES("dtvSvLibSetScreenDisplay", R"(
        START |hdl = 3
        START setScreenDrawingInfo|
        END setScreenDrawingInfo|
        START setSurface|
        END setSurface|
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, SCREEN_DRAWING_INFO : surface_width  = 320
        DEBUG |SEND, SCREEN_DRAWING_INFO : surface_height = 180
        DEBUG |SEND, SCREEN_DRAWING_INFO : screen_rotate  = 1
        DEBUG |SEND, SCREEN_DRAWING_INFO : screen_mode    = 2
        RESULT 0
        END |ret = 0)");
}

TEST_F(DrawingInfo, ScreenTakesTheLowBitsOfItsSize) {
    NativeSurface surface;
    EXPECT_EQ(run("SetScreenDisplay", {3, screenInfo(surface.java(), 74565, -2, 3, 3)}), "OK");
    EXPECT_EQ(sent(), "1000000c surfaces=1: 03 00 45 23 fe ff 03 03");
    EXPECT_LINES("dtvSvLibSetScreenDisplay", R"(
        START |hdl = 3
        START setScreenDrawingInfo|
        END setScreenDrawingInfo|
        START setSurface|
        END setSurface|
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, SCREEN_DRAWING_INFO : surface_width  = 9029
        DEBUG |SEND, SCREEN_DRAWING_INFO : surface_height = 65534
        DEBUG |SEND, SCREEN_DRAWING_INFO : screen_rotate  = 3
        DEBUG |SEND, SCREEN_DRAWING_INFO : screen_mode    = 3
        RESULT 0
        END |ret = 0)");
}

TEST_F(DrawingInfo, ScreenTakesNegativeNumbers) {
    NativeSurface surface;
    jobject info = screenInfo(surface.java(), 1, 2, 0, 0);
    EnumValue rotate(rotateClass, "ROTATE_0", -1);
    EnumValue mode("BG_TE_DTVSVLIB_SCREEN_MODE", "NORMAL", -2147483647 - 1);
    EXPECT_EQ(run("SetScreenDisplay", {3, info}), "OK");
    EXPECT_EQ(sent(), "1000000c surfaces=1: 03 00 01 00 02 00 ff 00");
    EXPECT_LINES("dtvSvLibSetScreenDisplay", R"(
        START |hdl = 3
        START setScreenDrawingInfo|
        END setScreenDrawingInfo|
        START setSurface|
        END setSurface|
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, SCREEN_DRAWING_INFO : surface_width  = 1
        DEBUG |SEND, SCREEN_DRAWING_INFO : surface_height = 2
        DEBUG |SEND, SCREEN_DRAWING_INFO : screen_rotate  = 255
        DEBUG |SEND, SCREEN_DRAWING_INFO : screen_mode    = 0
        RESULT 0
        END |ret = 0)");
}

/// One reason why a place is refused: its routine logs it, the command adds nothing.
class Refusal : public CommandTest {
protected:
    /// `lines` are those between the command's FUNCSTART and its result.
    void expectRefused(const std::string& name, jobject info, const std::string& lines) {
        EXPECT_EQ(run(name, {3, info}), "PARAM_NG");
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLib" + name, "START |hdl = 3\n" + lines + "\nRESULT 5");
        EXPECT_EQ(surface.count(), 1);
    }
    void screenRefused(jobject info, const std::string& lines) {
        expectRefused("SetScreenDisplay", info, "START setScreenDrawingInfo|\n" + lines);
    }
    void capRefused(jobject info, const std::string& lines) {
        expectRefused("SetCapDisplay", info, "START setCapDrawingInfo|\n" + lines);
    }
    void bmlRefused(jobject info, const std::string& lines) {
        expectRefused("SetBMLDisplay", info, "START setBMLDrawingInfo|\n" + lines);
    }
    jobject screen(int rotate = 0, int mode = 0) {
        return screenInfo(surface.java(), 320, 180, rotate, mode);
    }
    jobject cap(jobject layout) { return capInfo(surface.java(), 320, 180, 0, layout); }
    jobject bml(int rotate = 0) { return bmlInfo(surface.java(), 240, 427, rotate); }

    NativeSurface surface;
};

TEST_F(Refusal, ScreenRotate) {
    jobject info = screen(3);
    {
        EnumValue four(rotateClass, "ROTATE_270", 4);
        screenRefused(info, "DEBUG setScreenDrawingInfo|screen_rotate is too large : 4, ret = 1");
    }
    EnumValue most(rotateClass, "ROTATE_270", 2147483647);
    screenRefused(info,
                  "DEBUG setScreenDrawingInfo|screen_rotate is too large : 2147483647, ret = 1");
    screenRefused(screen(99), R"(
        DEBUG getEnumValue|enum object is NULL
        DEBUG setScreenDrawingInfo|screen_rotate getEnumValue Error, ret = 1)");
}

TEST_F(Refusal, ScreenMode) {
    jobject info = screen(0, 3);
    {
        EnumValue four("BG_TE_DTVSVLIB_SCREEN_MODE", "WIDE", 4);
        screenRefused(info, "DEBUG setScreenDrawingInfo|screen_mode is too large : 4, ret = 1");
    }
    screenRefused(screen(0, 99), R"(
        DEBUG getEnumValue|enum object is NULL
        DEBUG setScreenDrawingInfo|screen_mode getEnumValue Error, ret = 1)");
}

TEST_F(Refusal, ScreenRotateBeforeMode) {
    jobject info = screen(3, 99);
    EnumValue four(rotateClass, "ROTATE_270", 4);
    screenRefused(info, "DEBUG setScreenDrawingInfo|screen_rotate is too large : 4, ret = 1");
}

/// The command's look-up with this number (from 0) fails, as in a class without the field.
struct MissingField {
    int look_up;
    const char* lines;
};

TEST_F(Refusal, ScreenWithoutAField) {
    const MissingField fields[] = {
        {0, R"(DEBUG getEnumValue|enum field ID is NULL
               DEBUG setScreenDrawingInfo|screen_rotate getEnumValue Error, ret = 1)"},
        {1, R"(DEBUG getEnumValue|enum field ID is NULL
               DEBUG setScreenDrawingInfo|screen_mode getEnumValue Error, ret = 1)"},
        {2, "DEBUG setScreenDrawingInfo|surface_width fieldID is NULL, ret = 1"},
        {3, "DEBUG setScreenDrawingInfo|surface_height fieldID is NULL, ret = 1"},
        {4, R"(END setScreenDrawingInfo|
               START setSurface|
               DEBUG setSurface|mSurface fid Surface fieldID is NULL, ret = 1)"},
        {5, R"(END setScreenDrawingInfo|
               START setSurface|
               DEBUG setSurface|surface_handle fid is NULL, ret = 1)"},
    };
    jobject info = screen();
    for (const MissingField& field : fields) {
        SCOPED_TRACE(field.look_up);
        FailJni missing("GetFieldID", field.look_up);
        screenRefused(info, field.lines);
    }
}

TEST_F(Refusal, ScreenWithoutAClass) {
    jobject info = screen();
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        screenRefused(
            info, "DEBUG setScreenDrawingInfo|screen_drawing_info_clazz class is NULL, ret = 1");
    }
    {
        FailJni missing("GetObjectClass", 1, FailJni::Leaves::nothing);
        screenRefused(info, R"(
            DEBUG getEnumValue|orgObj's clazz is NULL
            DEBUG setScreenDrawingInfo|screen_rotate getEnumValue Error, ret = 1)");
    }
    FailJni missing("GetObjectClass", 2, FailJni::Leaves::nothing);
    screenRefused(info, R"(
        DEBUG getEnumValue|enum class is NULL
        DEBUG setScreenDrawingInfo|screen_rotate getEnumValue Error, ret = 1)");
}

TEST_F(Refusal, ScreenWhoseEnumHasNoGetter) {
    jobject info = screen();
    FailJni missing("GetStaticMethodID", 1);
    screenRefused(info, R"(
        DEBUG getEnumValue|enum method is NULL
        DEBUG setScreenDrawingInfo|screen_mode getEnumValue Error, ret = 1)");
}

// Data broadcasting.

TEST_F(DrawingInfo, BmlIsFiveBytesAndPadding) {
    NativeSurface surface;
    EXPECT_EQ(run("SetBMLDisplay", {3, bmlInfo(surface.java(), 74565, 427, 3)}), "OK");
    EXPECT_EQ(sent(), "1000000e surfaces=1: 03 00 45 23 ab 01 03 00");
    EXPECT_LINES("dtvSvLibSetBMLDisplay", R"(
        START |hdl = 3
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        START setSurface|
        END setSurface|
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, BML_DRAWING_INFO: surface_width  = 9029
        DEBUG |SEND, BML_DRAWING_INFO: surface_height = 427
        DEBUG |SEND, BML_DRAWING_INFO: screen_rotate  = 3
        RESULT 0
        END |ret = 0)");
}

TEST_F(DrawingInfo, BmlTakesANegativeRotation) {
    NativeSurface surface;
    jobject info = bmlInfo(surface.java(), -1, 65536, 2);
    EnumValue rotate(rotateClass, "ROTATE_180", -1);
    EXPECT_EQ(run("SetBMLDisplay", {3, info}), "OK");
    EXPECT_EQ(sent(), "1000000e surfaces=1: 03 00 ff ff 00 00 ff 00");
}

TEST_F(Refusal, BmlRotate) {
    jobject info = bml(3);
    {
        EnumValue four(rotateClass, "ROTATE_270", 4);
        bmlRefused(info, "DEBUG setBMLDrawingInfo|screen_rotate is too large : 4, ret = 1");
    }
    bmlRefused(bml(99), R"(
        DEBUG getEnumValue|enum object is NULL
        DEBUG setBMLDrawingInfo|screen_rotate getEnumValue Error, ret = 1)");
}

TEST_F(Refusal, BmlWithoutAField) {
    const MissingField fields[] = {
        {0, R"(DEBUG getEnumValue|enum field ID is NULL
               DEBUG setBMLDrawingInfo|screen_rotate getEnumValue Error, ret = 1)"},
        {1, "DEBUG setBMLDrawingInfo|surface_width fieldID is NULL, ret = 1"},
        {2, "DEBUG setBMLDrawingInfo|surface_height fieldID is NULL, ret = 1"},
        {3, R"(END setBMLDrawingInfo|
               START setSurface|
               DEBUG setSurface|mSurface fid Surface fieldID is NULL, ret = 1)"},
        {4, R"(END setBMLDrawingInfo|
               START setSurface|
               DEBUG setSurface|surface_handle fid is NULL, ret = 1)"},
    };
    jobject info = bml();
    for (const MissingField& field : fields) {
        SCOPED_TRACE(field.look_up);
        FailJni missing("GetFieldID", field.look_up);
        bmlRefused(info, field.lines);
    }
}

TEST_F(Refusal, BmlWithoutAClass) {
    jobject info = bml();
    FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
    bmlRefused(info, "DEBUG setBMLDrawingInfo|BML drawing_info_clazz class is NULL, ret = 1");
}

// Captions.

TEST_F(DrawingInfo, CaptionIsSixteenBytes) {
    NativeSurface surface;
    jobject info = capInfo(surface.java(), 320, 60, 2, usualLayout());
    EXPECT_EQ(run("SetCapDisplay", {3, info}), "OK");
    EXPECT_EQ(sent(), "1000000d surfaces=1: 03 00 40 01 3c 00 02 00 "
                      "14 0c 04 02 21 00 2c 00 05 01");
    EXPECT_LINES("dtvSvLibSetCapDisplay", R"(
        START |hdl = 3
        START setCapDrawingInfo|
        END setCapDrawingInfo|
        START setSurface|
        END setSurface|
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, CAP_DRAWING_INFO: surface_width  = 320
        DEBUG |SEND, CAP_DRAWING_INFO: surface_height = 60
        DEBUG |SEND, CAP_DRAWING_INFO: screen_rotate  = 2
        DEBUG |SEND, CAP_DRAWING_INFO: font_size        = 20
        DEBUG |SEND, CAP_DRAWING_INFO: characters_num   = 12
        DEBUG |SEND, CAP_DRAWING_INFO: lines_num        = 4
        DEBUG |SEND, CAP_DRAWING_INFO: separator_size   = 2
        DEBUG |SEND, CAP_DRAWING_INFO: position_x       = 33
        DEBUG |SEND, CAP_DRAWING_INFO: position_y       = 44
        DEBUG |SEND, CAP_DRAWING_INFO: background_color = 5
        DEBUG |SEND, CAP_DRAWING_INFO: background_alpha = 1
        RESULT 0
        END |ret = 0)");
}

TEST_F(DrawingInfo, CaptionTakesTheLowBits) {
    NativeSurface surface;
    jobject layout = capLayout(300, -1, 513, 256, 70000, 65536 + 258, 8, 0);
    jobject info = capInfo(surface.java(), 74565, -1, 0, layout);
    EnumValue rotate(rotateClass, "ROTATE_0", -2);
    EXPECT_EQ(run("SetCapDisplay", {3, info}), "OK");
    EXPECT_EQ(sent(), "1000000d surfaces=1: 03 00 45 23 ff ff fe 00 "
                      "2c ff 01 00 70 11 02 01 08 00");
    EXPECT_LINES("dtvSvLibSetCapDisplay", R"(
        START |hdl = 3
        START setCapDrawingInfo|
        END setCapDrawingInfo|
        START setSurface|
        END setSurface|
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, CAP_DRAWING_INFO: surface_width  = 9029
        DEBUG |SEND, CAP_DRAWING_INFO: surface_height = 65535
        DEBUG |SEND, CAP_DRAWING_INFO: screen_rotate  = 254
        DEBUG |SEND, CAP_DRAWING_INFO: font_size        = 44
        DEBUG |SEND, CAP_DRAWING_INFO: characters_num   = 255
        DEBUG |SEND, CAP_DRAWING_INFO: lines_num        = 1
        DEBUG |SEND, CAP_DRAWING_INFO: separator_size   = 0
        DEBUG |SEND, CAP_DRAWING_INFO: position_x       = 4464
        DEBUG |SEND, CAP_DRAWING_INFO: position_y       = 258
        DEBUG |SEND, CAP_DRAWING_INFO: background_color = 8
        DEBUG |SEND, CAP_DRAWING_INFO: background_alpha = 0
        RESULT 0
        END |ret = 0)");
}

TEST_F(DrawingInfo, CaptionTakesNegativeColors) {
    NativeSurface surface;
    jobject info = capInfo(surface.java(), 1, 2, 3, capLayout(0, 0, 0, 0, 0, 0, 0, 0));
    EnumValue color("BG_TE_DTVSVLIB_BACKGROUND_COLOR", "BLACK", -1);
    EnumValue alpha("BG_TE_DTVSVLIB_ONOFF", "OFF", -3);
    EXPECT_EQ(run("SetCapDisplay", {3, info}), "OK");
    EXPECT_EQ(sent(), "1000000d surfaces=1: 03 00 01 00 02 00 03 00 "
                      "00 00 00 00 00 00 00 00 ff fd");
}

TEST_F(Refusal, CaptionRotate) {
    jobject info = capInfo(surface.java(), 1, 2, 3, usualLayout());
    {
        EnumValue four(rotateClass, "ROTATE_270", 4);
        capRefused(info, "DEBUG setCapDrawingInfo|screen_rotate is too large : 4, ret = 5");
    }
    capRefused(capInfo(surface.java(), 1, 2, 99, usualLayout()), R"(
        DEBUG getEnumValue|enum object is NULL
        DEBUG setCapDrawingInfo|screen_rotate getEnumValue Error, ret = 1)");
}

TEST_F(Refusal, CaptionWithoutLayout) {
    capRefused(cap(nullptr),
               "DEBUG setCapDrawingInfo|cap_info display_info_obj object is NULL, ret = 5");
}

TEST_F(Refusal, CaptionPosition) {
    capRefused(cap(capLayout(1, 1, 1, 1, -1, 0, 0, 0)),
               "DEBUG setCapDisplayInfo|position_x is too large : -1, ret = 1");
    capRefused(cap(capLayout(1, 1, 1, 1, -2147483647 - 1, -1, 0, 0)),
               "DEBUG setCapDisplayInfo|position_x is too large : -2147483648, ret = 1");
    capRefused(cap(capLayout(1, 1, 1, 1, 0, -7, 99, 0)),
               "DEBUG setCapDisplayInfo|position_y is too large : -7, ret = 1");
}

TEST_F(Refusal, CaptionColor) {
    jobject info = cap(capLayout(1, 1, 1, 1, 0, 0, 8, 99));
    {
        EnumValue nine("BG_TE_DTVSVLIB_BACKGROUND_COLOR", "NONE", 9);
        capRefused(info, "DEBUG setCapDisplayInfo|background_color is too large : 9, ret = 1");
    }
    capRefused(cap(capLayout(1, 1, 1, 1, 0, 0, 99, 0)), R"(
        DEBUG getEnumValue|enum object is NULL
        DEBUG setCapDisplayInfo|background_color getEnumValue Error, ret = 1)");
    capRefused(info, R"(
        DEBUG getEnumValue|enum object is NULL
        DEBUG setCapDisplayInfo|background_alpha getEnumValue Error, ret = 1)");
}

TEST_F(Refusal, CaptionAlpha) {
    jobject info = cap(capLayout(1, 1, 1, 1, 0, 0, 0, 1));
    EnumValue two("BG_TE_DTVSVLIB_ONOFF", "ON", 2);
    capRefused(info, "DEBUG setCapDisplayInfo|background_alpha is too large : 2, ret = 1");
}

TEST_F(Refusal, CaptionWithoutAField) {
    const MissingField fields[] = {
        {0, R"(DEBUG getEnumValue|enum field ID is NULL
               DEBUG setCapDrawingInfo|screen_rotate getEnumValue Error, ret = 1)"},
        {1, "DEBUG setCapDrawingInfo|surface_width fieldID is NULL, ret = 5"},
        {2, "DEBUG setCapDrawingInfo|surface_height fieldID is NULL, ret = 5"},
        {3, "DEBUG setCapDrawingInfo|cap_info fieldID is NULL, ret = 5"},
        {4, "DEBUG setCapDisplayInfo|font_size fieldID is NULL, ret = 1"},
        {5, "DEBUG setCapDisplayInfo|characters_num fieldID is NULL, ret = 1"},
        {6, "DEBUG setCapDisplayInfo|lines_num fieldID is NULL, ret = 1"},
        {7, "DEBUG setCapDisplayInfo|separator_size fieldID is NULL, ret = 1"},
        {8, "DEBUG setCapDisplayInfo|position_x fieldID is NULL, ret = 1"},
        {9, "DEBUG setCapDisplayInfo|position_y fieldID is NULL, ret = 1"},
        {10, R"(DEBUG getEnumValue|enum field ID is NULL
                DEBUG setCapDisplayInfo|background_color getEnumValue Error, ret = 1)"},
        {11, R"(DEBUG getEnumValue|enum field ID is NULL
                DEBUG setCapDisplayInfo|background_alpha getEnumValue Error, ret = 1)"},
        {12, R"(END setCapDrawingInfo|
                START setSurface|
                DEBUG setSurface|mSurface fid Surface fieldID is NULL, ret = 1)"},
        {13, R"(END setCapDrawingInfo|
                START setSurface|
                DEBUG setSurface|surface_handle fid is NULL, ret = 1)"},
    };
    jobject info = cap(usualLayout());
    for (const MissingField& field : fields) {
        SCOPED_TRACE(field.look_up);
        FailJni missing("GetFieldID", field.look_up);
        capRefused(info, field.lines);
    }
}

TEST_F(Refusal, CaptionWithoutAClass) {
    jobject info = cap(usualLayout());
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        capRefused(info,
                   "DEBUG setCapDrawingInfo|caption drawing_info_clazz class is NULL, ret = 1");
    }
    FailJni missing("GetObjectClass", 3, FailJni::Leaves::nothing);
    capRefused(info, "DEBUG setCapDisplayInfo|display_info_clazz class is NULL, ret = 1");
}

} // namespace
