// The start of a TV link: a bookmark, its affiliation, and where the browser draws.
#include "commands/drawing_places.h"

#include "commands/bytes.h"

namespace {

using namespace commands;
using namespace harness;

class TvLink : public CommandTest {
protected:
    NativeSurface surface;
    jobject place = bmlInfo(surface.java(), 240, 427, 2);

    static jobject info(int network, int service, jobject affiliation, const Value& url,
                        jobject drawing) {
        return newObject("BG_TS_DTVSVLIB_BML_START_INFO",
                         {network, service, affiliation, url, drawing});
    }
    jobject usual() {
        return info(0x7fe0, 0x5c38, newBytes({1, 2, 3, 4, 5, -6}), "http://x", place);
    }
    jobject withUrl(const std::string& url) { return info(1, 2, newBytes({}), url.c_str(), place); }
    jobject withAffiliation(const std::vector<int>& affiliation) {
        return info(1, 2, newBytes(affiliation), "", place);
    }
    void expectRefused(int type, jobject object, const std::string& lines) {
        EXPECT_EQ(run("BMLStartTvLinkReq", {3, type, object}), "PARAM_NG");
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLibBMLStartTvLinkReq", "START |hdl = 3\n" + lines);
        EXPECT_EQ(surface.count(), 1);
    }
};

constexpr const char* placeDone = R"(
    START setBMLDrawingInfo|
    END setBMLDrawingInfo|
    START setSurface|
    END setSurface|
)";
const std::string afterPlace = std::string(placeDone) + "RESULT 5\nDEBUG |";
constexpr const char* placeBytes = " f0 00 ab 01 02 00";

TEST_F(TvLink, IsTwoHundredAndEightyBytes) {
    const std::string head = "1000001d surfaces=1: 03 00 04 00 e0 7f 38 5c 01 02 03 04 05 fa";
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 4, usual()}), "OK");
    EXPECT_EQ(sent(), head + " 68 74 74 70 3a 2f 2f 78" + bytes("00", 252) + placeBytes);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].bytes.size(), 280U);
    EXPECT_EQ(messages[0].object_count, 0);
    EXPECT_EQ(messages[0].surfaces[0].surface, surface.get());
    EXPECT_EQ(messages[0].surfaces[0].strong_count, 2);
    EXPECT_EQ(messages[0].surfaces[1].surface, nullptr);
    EXPECT_EQ(surface.count(), 1);
    const std::string lines = std::string("START |hdl = 3") + placeDone + R"(
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, bml_control_type = 4
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO : network_id   = 32736
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO : service_id   = 23608
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO : bookmark_url = http://x
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO: surface_width  = 240
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO: surface_height = 427
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO: screen_rotate  = 2
)";
    EXPECT_LINES("dtvSvLibBMLStartTvLinkReq", lines + "RESULT 0\nEND |ret = 0");
    service->setResult(-1);
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 4, usual()}), "NG");
    EXPECT_LINES("dtvSvLibBMLStartTvLinkReq", lines + "RESULT 1\nEND |ret = -1");
    EXPECT_EQ(surface.count(), 1);
}

TEST_F(TvLink, TakesTheLowBits) {
    EnumValue rotate("BG_TE_DTVSVLIB_SCREEN_ROTATE", "ROTATE_180", -1);
    jobject object = info(70000, -1, newBytes({}), "", place);
    EXPECT_EQ(run("BMLStartTvLinkReq", {0x2fffe, -2, object}), "OK");
    EXPECT_EQ(sent(), "1000001d surfaces=1: fe ff fe 00 70 11 ff ff" + bytes("00", 266) +
                          " f0 00 ab 01 ff 00");
    EXPECT_LINES("dtvSvLibBMLStartTvLinkReq", std::string("START |hdl = 196606") + placeDone +
                                                  R"(
        COPY
        DEBUG |SEND, dtvsv_handle = 65534
        DEBUG |SEND, bml_control_type = 254
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO : network_id   = 4464
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO : service_id   = 65535
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO : bookmark_url = )"
                                                  R"(
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO: surface_width  = 240
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO: surface_height = 427
        DEBUG |SEND, TS_DTVSVLIB_BML_START_INFO: screen_rotate  = 255
        RESULT 0
        END |ret = 0)");
}

TEST_F(TvLink, ControlTypes) {
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 0, usual()}), "OK");
    EXPECT_EQ(sent().substr(0, 32), "1000001d surfaces=1: 03 00 00 00");
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 255, usual()}), "OK");
    EXPECT_EQ(sent().substr(0, 32), "1000001d surfaces=1: 03 00 ff 00");
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, -2147483647 - 1, usual()}), "OK");
    EXPECT_EQ(sent().substr(0, 32), "1000001d surfaces=1: 03 00 00 00");
    expectRefused(5, usual(), "RESULT 5\nDEBUG |bml_control_type is too large : 5, ret = 5");
    expectRefused(254, usual(), "RESULT 5\nDEBUG |bml_control_type is too large : 254, ret = 5");
    expectRefused(256, usual(), "RESULT 5\nDEBUG |bml_control_type is too large : 256, ret = 5");
    expectRefused(5, info(1, 2, nullptr, nullptr, nullptr),
                  "RESULT 5\nDEBUG |bml_control_type is too large : 5, ret = 5");
}

TEST_F(TvLink, NullInfo) {
    expectRefused(5, nullptr, "RESULT 5\nDEBUG |bml_start_info_obj is NULL, ret = 5");
}

TEST_F(TvLink, Places) {
    expectRefused(0, info(1, 2, nullptr, nullptr, nullptr), R"(
        START setBMLDrawingInfo|
        DEBUG setBMLDrawingInfo|BML drawing_info_clazz class is NULL, ret = 1
        RESULT 5)");
    expectRefused(0, info(1, 2, nullptr, nullptr, bmlInfo(surface.java(), 1, 2, 99)), R"(
        START setBMLDrawingInfo|
        DEBUG getEnumValue|enum object is NULL
        DEBUG setBMLDrawingInfo|screen_rotate getEnumValue Error, ret = 1
        RESULT 5)");
    expectRefused(0, info(1, 2, nullptr, nullptr, bmlInfo(nullptr, 1, 2, 0)), R"(
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        START setSurface|
        DEBUG setSurface|surface_object is NULL, ret = 1
        RESULT 5)");
    jobject far = info(1, 2, nullptr, nullptr, bmlInfo(surface.java(), 1, 2, 3));
    EnumValue four("BG_TE_DTVSVLIB_SCREEN_ROTATE", "ROTATE_270", 4);
    expectRefused(0, far, R"(
        START setBMLDrawingInfo|
        DEBUG setBMLDrawingInfo|screen_rotate is too large : 4, ret = 1
        RESULT 5)");
}

TEST_F(TvLink, Affiliations) {
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 0, withAffiliation({9, 8})}), "OK");
    EXPECT_EQ(sent(),
              "1000001d surfaces=1: 03 00 00 00 01 00 02 00 09 08" + bytes("00", 264) + placeBytes);
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 0, withAffiliation({1, 2, 3, 4, 5, 6})}), "OK");
    EXPECT_EQ(sent(), "1000001d surfaces=1: 03 00 00 00 01 00 02 00 01 02 03 04 05 06" +
                          bytes("00", 260) + placeBytes);
    int taken = StrictJni::calls("GetByteArrayElements");
    int released = StrictJni::calls("ReleaseByteArrayElements");
    expectRefused(0, withAffiliation({1, 2, 3, 4, 5, 6, 7}),
                  afterPlace + "affiliation_id_data size is over, size = 7");
    EXPECT_EQ(StrictJni::calls("GetByteArrayElements") - taken, 1);
    EXPECT_EQ(StrictJni::calls("ReleaseByteArrayElements") - released, 1);
    expectRefused(0, info(1, 2, nullptr, nullptr, place),
                  afterPlace + "affiliation_id_array is NULL, ret = 5");
}

TEST_F(TvLink, Bookmarks) {
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 0, withUrl(std::string(259, 'u'))}), "OK");
    EXPECT_EQ(sent(), "1000001d surfaces=1: 03 00 00 00 01 00 02 00" + bytes("00", 6) +
                          bytes("75", 259) + " 00" + placeBytes);
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 0, withUrl(std::string(260, 'u'))}), "OK");
    EXPECT_EQ(sent(), "1000001d surfaces=1: 03 00 00 00 01 00 02 00" + bytes("00", 6) +
                          bytes("75", 260) + placeBytes);
    std::vector<TraceLine> lines = log->takeOf("dtvSvLibBMLStartTvLinkReq");
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(lines[5].message,
              "SEND, TS_DTVSVLIB_BML_START_INFO : bookmark_url = " + std::string(260, 'u'));
    expectRefused(0, withUrl(std::string(261, 'u')),
                  afterPlace + "bookmark_url too long : 261, ret = 5");
    expectRefused(0, withUrl(repeated("\xe3\x81\x82", 87)),
                  afterPlace + "bookmark_url too long : 261, ret = 5");
    expectRefused(0, info(1, 2, newBytes({}), nullptr, place),
                  afterPlace + "bookmark_url object is NULL, ret = 5");
}

/// Looked up in this order: the place, its rotation, width and height, two for its surface, and
/// then the rest.
TEST_F(TvLink, WithoutAField) {
    struct LookUp {
        int number;
        std::string lines;
    };
    const LookUp rows[] = {
        {0, "RESULT 5\nDEBUG |BML drawing_info_obj fieldID is NULL, ret = 5"},
        {6, afterPlace + "network_id fieldID is NULL, ret = 5"},
        {7, afterPlace + "service_id fieldID is NULL, ret = 5"},
        {8, afterPlace + "affiliation_id fieldID is NULL, ret = 5"},
        {9, afterPlace + "bookmark_url fieldID is NULL, ret = 5"},
    };
    jobject object = usual();
    for (const LookUp& row : rows) {
        SCOPED_TRACE(row.number);
        FailJni missing("GetFieldID", row.number);
        expectRefused(0, object, row.lines);
    }
}

TEST_F(TvLink, WithoutAClass) {
    jobject object = usual();
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused(0, object, "RESULT 5\nDEBUG |bml_start_info_clazz class is NULL, ret = 5");
    }
    // The routine's own and two for the rotation are between them.
    FailJni missing("GetObjectClass", 4, FailJni::Leaves::nothing);
    expectRefused(0, object, R"(
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        RESULT 5
        DEBUG |bml drawing_info_clazz class is NULL, ret = 1)");
}

TEST_F(TvLink, AGetterThatThrowsEndsTheCommand) {
    FailJni thrown("CallStaticIntMethodV");
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 0, usual()}), outOfMemory);
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibBMLStartTvLinkReq", "START |hdl = 3\nSTART setBMLDrawingInfo|");
    EXPECT_EQ(surface.count(), 1);
}

TEST_F(TvLink, NoMemoryForAnArrayOrAText) {
    for (const char* function : {"GetByteArrayElements", "GetStringUTFChars"}) {
        SCOPED_TRACE(function);
        FailJni failing(function);
        EXPECT_EQ(run("BMLStartTvLinkReq", {3, 0, usual()}), outOfMemory);
        EXPECT_EQ(sent(), "");
        EXPECT_EQ(surface.count(), 1);
    }
}

TEST_F(TvLink, AffiliationIsReleasedWithModeZero) {
    std::vector<std::vector<long long>> released;
    ObservedJni observed([&released](const JniCall& call) {
        if (std::string(call.function) == "ReleaseByteArrayElements") {
            released.push_back(call.numbers);
        }
    });
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 4, usual()}), "OK");
    EXPECT_EQ(run("BMLStartTvLinkReq", {3, 4, withAffiliation(std::vector<int>(7))}), "PARAM_NG");
    EXPECT_EQ(released, (std::vector<std::vector<long long>>{{0}, {0}}));
}

} // namespace
