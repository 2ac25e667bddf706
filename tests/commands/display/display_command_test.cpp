// Where the three planes are shown: the commands for one plane and for all of them.
#include "commands/drawing_places.h"

namespace {

using namespace commands;
using namespace harness;

class Display : public CommandTest {
protected:
    NativeSurface video;
    NativeSurface caption;
    NativeSurface data;
    jobject screen_info = screenInfo(video.java(), 320, 180, 1, 2);
    jobject cap_info = capInfo(caption.java(), 321, 60, 3, usualLayout());
    jobject bml_info = bmlInfo(data.java(), 240, 427, 2);
};

struct OnePlane {
    const char* name;
    const char* routine;
    const char* sent;
    const char* class_line;
    int class_look_up; ///< number of GetObjectClass calls before the command's own
};

// The routine calls GetObjectClass once for the place, and twice for every enumeration that it
// reads.
const OnePlane onePlanes[] = {
    {"SetScreenDisplay", "setScreenDrawingInfo", "1000000c surfaces=1: 58 02 40 01 b4 00 01 02",
     "video drawing_info_clazz class is NULL, ret = 1", 5},
    {"SetCapDisplay", "setCapDrawingInfo",
     "1000000d surfaces=1: 58 02 41 01 3c 00 03 00 14 0c 04 02 21 00 2c 00 05 01",
     "caption drawing_info_clazz class is NULL, ret = 1", 8},
    {"SetBMLDisplay", "setBMLDrawingInfo", "1000000e surfaces=1: 58 02 f0 00 ab 01 02 00",
     "BML drawing_info_clazz class is NULL, ret = 1", 3},
};

class DisplayOne : public Display, public testing::WithParamInterface<int> {
protected:
    const OnePlane& row = onePlanes[GetParam()];
    jobject info = GetParam() == 0 ? screen_info : GetParam() == 1 ? cap_info : bml_info;
    std::string native() const { return std::string("dtvSvLib") + row.name; }
    std::string begin() const {
        return std::string("START |hdl = 600\nSTART ") + row.routine + "|\nEND " + row.routine +
               "|\n";
    }
};

INSTANTIATE_TEST_SUITE_P(, DisplayOne, testing::Values(0, 1, 2), [](const auto& plane) {
    return std::string(onePlanes[plane.param].name);
});

TEST_P(DisplayOne, IsSent) {
    EXPECT_EQ(run(row.name, {600, info}), "OK");
    EXPECT_EQ(sent(), row.sent);
    EXPECT_FALSE(messages.at(0).sync);
}

TEST_P(DisplayOne, HandleIsCutTo16Bits) {
    EXPECT_EQ(run(row.name, {0x70000 + 600, info}), "OK");
    EXPECT_EQ(sent(), row.sent);
    std::vector<TraceLine> lines = log->takeOf(native());
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0].message, "hdl = 459352");
    EXPECT_EQ(lines[1].message, "SEND, dtvsv_handle = 600");
}

TEST_P(DisplayOne, FailedSendIsNg) {
    for (int result : {-1, 1, 5, 16}) {
        service->setResult(result);
        EXPECT_EQ(run(row.name, {600, info}), "NG");
        EXPECT_EQ(sent(), row.sent);
        std::vector<TraceLine> lines = log->take();
        ASSERT_GE(lines.size(), 3U);
        lines.erase(lines.begin(), lines.end() - 3);
        EXPECT_TRACE(lines,
                     nativeTrace(native(), "RESULT 1\nEND |ret = " + std::to_string(result)));
    }
}

TEST_P(DisplayOne, NullPlaceIsRefused) {
    EXPECT_EQ(run(row.name, {600, nullptr}), "PARAM_NG");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES(native(), R"(
        START |hdl = 600
        RESULT 5
        DEBUG |drawing_info_obj is NULL, ret = 5)");
}

TEST_P(DisplayOne, PlaceWithoutAClassIsRefused) {
    FailJni missing("GetObjectClass", row.class_look_up, FailJni::Leaves::nothing);
    EXPECT_EQ(run(row.name, {600, info}), "PARAM_NG");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES(native(), begin() + "RESULT 5\nDEBUG |" + row.class_line);
}

TEST_F(Display, AllPlanesAreThirtyBytes) {
    EXPECT_EQ(run("SetDisplayAll", {0xabcd, screen_info, cap_info, bml_info}), "OK");
    EXPECT_EQ(sent(), "1000000b surfaces=3: cd ab 40 01 b4 00 01 02 41 01 3c 00 03 00 14 0c 04 02 "
                      "21 00 2c 00 05 01 f0 00 ab 01 02 00");
    EXPECT_LINES("dtvSvLibSetDisplayAll", R"(
        START |hdl = 43981
        START setScreenDrawingInfo|
        END setScreenDrawingInfo|
        START setSurface|
        END setSurface|
        START setCapDrawingInfo|
        END setCapDrawingInfo|
        START setSurface|
        END setSurface|
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        START setSurface|
        END setSurface|
        DEBUG |SEND, dtvsv_handle = 43981
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
        RESULT 0
        END |ret = 0)");
}

TEST_F(Display, AllPlanesFailedSendIsNg) {
    service->setResult(-7);
    EXPECT_EQ(run("SetDisplayAll", {3, screen_info, cap_info, bml_info}), "NG");
    std::vector<TraceLine> lines = log->take();
    ASSERT_GE(lines.size(), 3U);
    lines.erase(lines.begin(), lines.end() - 3);
    EXPECT_TRACE(lines, nativeTrace("dtvSvLibSetDisplayAll", "RESULT 1\nEND |ret = -7"));
}

constexpr const char* videoDone = R"(
    START |hdl = 3
    START setScreenDrawingInfo|
    END setScreenDrawingInfo|
    START setSurface|
    END setSurface|
)";
constexpr const char* captionDone = R"(
    START setCapDrawingInfo|
    END setCapDrawingInfo|
    START setSurface|
    END setSurface|
)";

TEST_F(Display, AllPlanesNullOnesEndInTheirRoutines) {
    EXPECT_EQ(run("SetDisplayAll", {3, nullptr, cap_info, bml_info}), "PARAM_NG");
    EXPECT_LINES("dtvSvLibSetDisplayAll", R"(
        START |hdl = 3
        START setScreenDrawingInfo|
        DEBUG setScreenDrawingInfo|screen_drawing_info_clazz class is NULL, ret = 1
        RESULT 5)");
    EXPECT_EQ(run("SetDisplayAll", {3, screen_info, nullptr, bml_info}), "PARAM_NG");
    EXPECT_LINES("dtvSvLibSetDisplayAll", std::string(videoDone) + R"(
        START setCapDrawingInfo|
        DEBUG setCapDrawingInfo|caption drawing_info_clazz class is NULL, ret = 1
        RESULT 5)");
    EXPECT_EQ(run("SetDisplayAll", {3, screen_info, cap_info, nullptr}), "PARAM_NG");
    EXPECT_LINES("dtvSvLibSetDisplayAll", std::string(videoDone) + captionDone + R"(
        START setBMLDrawingInfo|
        DEBUG setBMLDrawingInfo|BML drawing_info_clazz class is NULL, ret = 1
        RESULT 5)");
    EXPECT_EQ(sent(), "");
}

TEST_F(Display, AllPlanesWithoutAClass) {
    struct Case {
        int look_up;
        std::string lines;
    };
    const Case cases[] = {
        {5, R"(START |hdl = 3
               START setScreenDrawingInfo|
               END setScreenDrawingInfo|
               RESULT 5
               DEBUG |video drawing_info_clazz class is NULL, ret = 1)"},
        {14, std::string(videoDone) + R"(
               START setCapDrawingInfo|
               END setCapDrawingInfo|
               RESULT 5
               DEBUG |caption drawing_info_clazz class is NULL, ret = 1)"},
        {18, std::string(videoDone) + captionDone + R"(
               START setBMLDrawingInfo|
               END setBMLDrawingInfo|
               RESULT 5
               DEBUG |BML drawing_info_clazz class is NULL, ret = 1)"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.look_up);
        FailJni missing("GetObjectClass", one.look_up, FailJni::Leaves::nothing);
        EXPECT_EQ(run("SetDisplayAll", {3, screen_info, cap_info, bml_info}), "PARAM_NG");
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLibSetDisplayAll", one.lines);
        EXPECT_EQ(video.count(), 1);
        EXPECT_EQ(caption.count(), 1);
    }
}

TEST_F(Display, AllPlanesWithARotationTooLargeInOne) {
    EnumValue four("BG_TE_DTVSVLIB_SCREEN_ROTATE", "ROTATE_180", 4); // only of the data plane
    EXPECT_EQ(run("SetDisplayAll", {3, screen_info, cap_info, bml_info}), "PARAM_NG");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibSetDisplayAll", std::string(videoDone) + captionDone + R"(
        START setBMLDrawingInfo|
        DEBUG setBMLDrawingInfo|screen_rotate is too large : 4, ret = 1
        RESULT 5)");
    EXPECT_EQ(video.count(), 1);
    EXPECT_EQ(caption.count(), 1);
}

} // namespace
