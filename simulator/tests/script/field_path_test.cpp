#include "script/field_path.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;
using catalogue::Kind;
using Bytes = std::vector<uint8_t>;

const catalogue::Record& layoutOf(const char* event) {
    return *catalogue::find(event)->record;
}

std::optional<Place> placeOf(const char* event, const char* path) {
    std::string error;
    const std::optional<Place> place = locate(layoutOf(event), path, error);
    EXPECT_TRUE(place.has_value()) << error;
    EXPECT_EQ("", error);
    return place;
}

std::string pathErrorOf(const char* event, const char* path) {
    std::string error;
    EXPECT_FALSE(locate(layoutOf(event), path, error).has_value()) << path;
    return error;
}

void expectPlace(size_t offset, size_t size, Kind kind, const char* event, const char* path) {
    const std::optional<Place> place = placeOf(event, path);
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(offset, place->offset) << path;
    EXPECT_EQ(size, place->size) << path;
    EXPECT_EQ(kind, place->kind) << path;
}

TEST(FieldPathTest, FindsFields) {
    expectPlace(0, 2, Kind::kUnsigned, "ScanNotify", "handle");
    expectPlace(4, 4, Kind::kSigned, "CreateReply", "result");
    expectPlace(16, 44, Kind::kText, "ScanNotify", "network.ts_name");
    expectPlace(112, 2, Kind::kUnsigned, "ScanNotify", "network.partialsvc[0]");
    expectPlace(126, 2, Kind::kUnsigned, "ScanNotify", "network.partialsvc[7]");
    expectPlace(20, 4, Kind::kUnsigned, "ServiceInfoNotify", "service[0].service_id");
    expectPlace(392, 44, Kind::kText, "ServiceInfoNotify", "service[7].name");
    expectPlace(46, 7, Kind::kBytes, "ReceiveEpgInfoNotify", "current.content_nibble");
    expectPlace(700, 196, Kind::kUtf16Text, "ReceiveEpgInfoNotify", "next.name");
    expectPlace(5754, 2, Kind::kUnsigned, "ReceiveEpgInfoNotify", "after[7].start_time.hour");
    expectPlace(51, 64, Kind::kBytes, "BmlWriteNvramReq", "data");
    expectPlace(948, 2, Kind::kUnsigned, "BmlEnrolTvlinkReq", "expire_date[6]");
}

TEST(FieldPathTest, ReportsWhatIsWrongWithAPath) {
    EXPECT_EQ("TS_COMMON_REPLY has no field \"Handle\"; it has: handle, result",
              pathErrorOf("CreateReply", "Handle"));
    EXPECT_EQ("TS_COMMON_REPLY has no field \"\"; it has: handle, result",
              pathErrorOf("CreateReply", ""));
    EXPECT_EQ("TS_COMMON_REPLY has no field \"reserved_2\"; it has: handle, result",
              pathErrorOf("CreateReply", "reserved_2"));
    EXPECT_EQ("SERVICE_INFO has no field \"ts_name\"; it has: service_id, name_size, name",
              pathErrorOf("ServiceInfoNotify", "service[0].ts_name"));
    EXPECT_EQ("SERVICE_INFO has no field \"\"; it has: service_id, name_size, name",
              pathErrorOf("ServiceInfoNotify", "service[0]."));
    EXPECT_EQ("service needs an index, [0] to [7]",
              pathErrorOf("ServiceInfoNotify", "service.name"));
    EXPECT_EQ("service needs an index, [0] to [7]",
              pathErrorOf("ServiceInfoNotify", "service[8].name"));
    EXPECT_EQ("service needs an index, [0] to [7]",
              pathErrorOf("ServiceInfoNotify", "service[999].name"));
    EXPECT_EQ("handle takes no index", pathErrorOf("CreateReply", "handle[0]"));
    EXPECT_EQ("content_nibble takes no index",
              pathErrorOf("ReceiveEpgInfoNotify", "current.content_nibble[0]"));
    EXPECT_EQ("handle has no fields", pathErrorOf("CreateReply", "handle.result"));
    EXPECT_EQ("play_status is a record; name a field of it: status, current_time, eof_flag",
              pathErrorOf("PlayStatusNotify", "play_status"));
    EXPECT_EQ("service is a record; name a field of it: service_id, name_size, name",
              pathErrorOf("ServiceInfoNotify", "service[0]"));
    for (const char* path : {"service[", "service[]", "service[1", "service[1]x", "service[-1]",
                             "service[01]", "service[1000]", "service[ 1]", "service[1][1]"}) {
        EXPECT_EQ("\"" + std::string(path) + "\" is no path of a field",
                  pathErrorOf("ServiceInfoNotify", path));
    }
}

TEST(FieldPathTest, MakesBytesOfNumbers) {
    const auto bytesOf = [](size_t size, Kind kind, int64_t value) {
        std::string error;
        const Bytes bytes = numberBytes({0, size, kind}, value, error);
        EXPECT_EQ("", error);
        return bytes;
    };
    EXPECT_EQ((Bytes{0}), bytesOf(1, Kind::kUnsigned, 0));
    EXPECT_EQ((Bytes{255}), bytesOf(1, Kind::kUnsigned, 255));
    EXPECT_EQ((Bytes{0x34, 0x12}), bytesOf(2, Kind::kUnsigned, 0x1234));
    EXPECT_EQ((Bytes{0x78, 0x56, 0x34, 0x12}), bytesOf(4, Kind::kUnsigned, 0x12345678));
    EXPECT_EQ((Bytes{255, 255, 255, 255}), bytesOf(4, Kind::kUnsigned, 4294967295));
    EXPECT_EQ((Bytes{255, 255, 255, 255}), bytesOf(4, Kind::kSigned, -1));
    EXPECT_EQ((Bytes{0, 0, 0, 0x80}), bytesOf(4, Kind::kSigned, -2147483648));
    EXPECT_EQ((Bytes{255, 255, 255, 0x7F}), bytesOf(4, Kind::kSigned, 2147483647));
    EXPECT_EQ((Bytes{0, 0x80}), bytesOf(2, Kind::kSigned, -32768));
}

TEST(FieldPathTest, RefusesNumbersThatDoNotFit) {
    const auto refused = [](size_t size, Kind kind, int64_t value) {
        std::string error;
        EXPECT_TRUE(numberBytes({0, size, kind}, value, error).empty());
        return error;
    };
    EXPECT_EQ("-1 is outside the field's 0 to 255", refused(1, Kind::kUnsigned, -1));
    EXPECT_EQ("256 is outside the field's 0 to 255", refused(1, Kind::kUnsigned, 256));
    EXPECT_EQ("65536 is outside the field's 0 to 65535", refused(2, Kind::kUnsigned, 65536));
    EXPECT_EQ("4294967296 is outside the field's 0 to 4294967295",
              refused(4, Kind::kUnsigned, 4294967296));
    EXPECT_EQ("2147483648 is outside the field's -2147483648 to 2147483647",
              refused(4, Kind::kSigned, 2147483648));
    EXPECT_EQ("-2147483649 is outside the field's -2147483648 to 2147483647",
              refused(4, Kind::kSigned, -2147483649));
    EXPECT_EQ("the field takes a text", refused(44, Kind::kText, 1));
    EXPECT_EQ("the field takes a text", refused(44, Kind::kUtf16Text, 1));
    EXPECT_EQ("the field takes hexadecimal digits", refused(7, Kind::kBytes, 1));
}

TEST(FieldPathTest, MakesBytesOfTexts) {
    const auto bytesOf = [](size_t size, Kind kind, const char* text) {
        std::string error;
        const Bytes bytes = textBytes({0, size, kind}, text, error);
        EXPECT_EQ("", error);
        return bytes;
    };
    EXPECT_EQ((Bytes{'a', 0xC3, 0xA9, 0}), bytesOf(4, Kind::kText, "a\xC3\xA9"));
    EXPECT_EQ((Bytes{'a', 'b'}), bytesOf(2, Kind::kText, "ab")) << "no zero byte has to follow";
    EXPECT_EQ((Bytes{0, 0}), bytesOf(2, Kind::kText, ""));
    EXPECT_EQ((Bytes{'a', 0, 0xE9, 0}), bytesOf(4, Kind::kUtf16Text, "a\xC3\xA9"));
    EXPECT_EQ((Bytes{0x3D, 0xD8, 0, 0xDE, 0, 0}), bytesOf(6, Kind::kUtf16Text, "\xF0\x9F\x98\x80"));
    EXPECT_EQ((Bytes{0x0A, 0xF0, 0, 0}), bytesOf(4, Kind::kBytes, "0a F0"));
    EXPECT_EQ((Bytes{0, 0}), bytesOf(2, Kind::kBytes, ""));
}

TEST(FieldPathTest, RefusesTextsThatDoNotFit) {
    const auto refused = [](size_t size, Kind kind, const char* text) {
        std::string error;
        EXPECT_TRUE(textBytes({0, size, kind}, text, error).empty());
        return error;
    };
    EXPECT_EQ("the text takes 3 bytes, the field has 2", refused(2, Kind::kText, "abc"));
    EXPECT_EQ("the text takes 3 bytes, the field has 2", refused(2, Kind::kText, "a\xC3\xA9"));
    EXPECT_EQ("the text takes 4 bytes, the field has 2", refused(2, Kind::kUtf16Text, "ab"));
    EXPECT_EQ("the text takes 4 bytes, the field has 2",
              refused(2, Kind::kUtf16Text, "\xF0\x9F\x98\x80"));
    EXPECT_EQ("the text takes 3 bytes, the field has 2", refused(2, Kind::kBytes, "010203"));
    EXPECT_EQ("the field takes hexadecimal digits", refused(2, Kind::kBytes, "123"));
    EXPECT_EQ("the field takes hexadecimal digits", refused(2, Kind::kBytes, "0x"));
    EXPECT_EQ("the field takes a number", refused(2, Kind::kUnsigned, "1"));
    EXPECT_EQ("the field takes a number", refused(2, Kind::kSigned, "1"));
}

TEST(FieldPathTest, ReadsHexadecimalDigits) {
    EXPECT_EQ((Bytes{}), hexBytes(""));
    EXPECT_EQ((Bytes{}), hexBytes("  "));
    EXPECT_EQ((Bytes{0x00, 0x9F, 0xAB, 0xFF}), hexBytes("009fAB ff"));
    EXPECT_EQ((Bytes{0x12}), hexBytes("1 2"));
    for (const char* digits : {"1", "123", "g0", "0x12", "1\t2", "@0", "`0", "/0", ":0"}) {
        EXPECT_EQ(std::nullopt, hexBytes(digits)) << digits;
    }
}

} // namespace
