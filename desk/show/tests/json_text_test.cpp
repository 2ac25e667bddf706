// Messages as JSON.
#include "desk/show/json_text.h"
#include "sessions/tests/hex.h"

#include <gtest/gtest.h>

namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;
using show::jsonFields;
using show::jsonText;

TEST(JsonText, EscapesWhatJsonCannotHold) {
    EXPECT_EQ(jsonText(""), "\"\"");
    EXPECT_EQ(jsonText("a \"b\" \\ c/"), R"("a \"b\" \\ c/")");
    EXPECT_EQ(jsonText("\n\x1b\x7f"), R"("\u000a\u001b\u007f")");
    EXPECT_EQ(jsonText("\xe6\x97\xa5\xf0\x9f\x93\xba"), "\"\xe6\x97\xa5\xf0\x9f\x93\xba\"");
    EXPECT_EQ(jsonText("a\xff\xe6\x97z"), "\"a\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbdz\"");
    EXPECT_EQ(jsonText("\xed\xa0\xbd"), "\"\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\"")
        << "a surrogate";
    EXPECT_EQ(jsonText("\xc0\x80"), "\"\xef\xbf\xbd\xef\xbf\xbd\"") << "a longer form of zero";
}

const Record kPoint{
    "POINT", 4, {{"x", 0, 2, 1, Kind::kSigned, nullptr}, {"y", 2, 2, 1, Kind::kUnsigned, nullptr}}};

const Record kEverything{"EVERYTHING",
                         32,
                         {{"number", 0, 1, 1, Kind::kUnsigned, nullptr},
                          {"delay", 2, 2, 1, Kind::kSigned, nullptr},
                          {"list", 4, 2, 3, Kind::kUnsigned, nullptr},
                          {"bytes", 10, 4, 1, Kind::kBytes, nullptr},
                          {"text", 14, 4, 1, Kind::kText, nullptr},
                          {"wide", 18, 6, 1, Kind::kUtf16Text, nullptr},
                          {"points", 24, 4, 2, Kind::kRecord, &kPoint}}};

std::string fieldsOf(const std::string& hex) {
    return jsonFields(kEverything, view(fromHex(hex)));
}

TEST(JsonFields, HasEachKindOfField) {
    EXPECT_EQ(
        fieldsOf("ff00 feff 0100 0200 ffff 00ff1080 61620063 3d d8fadc 4100 ffff0100 02000080"),
        R"({"number":255,"delay":-2,"list":[1,2,65535],"bytes":"00ff1080","text":"ab",)"
        "\"wide\":\"\xf0\x9f\x93\xba"
        R"(A","points":[{"x":-1,"y":1},{"x":2,"y":32768}]})");
    EXPECT_EQ(fieldsOf("00 00 0000 0000 0000 0000 00000000 61626364 00d8 4100 00dc"),
              R"({"number":0,"delay":0,"list":[0,0,0],"bytes":"00000000","text":"abcd",)"
              "\"wide\":\"\xef\xbf\xbd"
              "A\xef\xbf\xbd\"}");
}

TEST(JsonFields, LeavesOutWhatIsNotThere) {
    EXPECT_EQ(fieldsOf(""), "{}");
    EXPECT_EQ(fieldsOf("05"), R"({"number":5})");
    EXPECT_EQ(fieldsOf("0500fe"), R"({"number":5})") << "half of a number";
    EXPECT_EQ(fieldsOf("0500feff 0100 02"), R"({"number":5,"delay":-2,"list":[1]})");
    EXPECT_EQ(fieldsOf("0500feff 01"), R"({"number":5,"delay":-2})");
    EXPECT_EQ(fieldsOf("0500feff 010002000300 00ff"),
              R"({"number":5,"delay":-2,"list":[1,2,3],"bytes":"00ff"})");
    EXPECT_EQ(fieldsOf("0500feff 010002000300 00000000 61000000 410042"),
              R"({"number":5,"delay":-2,"list":[1,2,3],"bytes":"00000000","text":"a",)"
              "\"wide\":\"A\xef\xbf\xbd\"}")
        << "half a unit";
    EXPECT_EQ(fieldsOf("0500feff 010002000300 00000000 61000000 410000000000 01000200 0300"),
              R"({"number":5,"delay":-2,"list":[1,2,3],"bytes":"00000000","text":"a",)"
              R"("wide":"A","points":[{"x":1,"y":2},{"x":3}]})");
}

sessions::Message messageWith(uint8_t kind, int id, const std::string& record) {
    sessions::Message message;
    message.time = {1774998843, 123456789};
    message.kind = kind;
    message.thread_id = 4711;
    message.thread_name = "evening";
    message.id = id;
    message.record = fromHex(record);
    message.size = static_cast<int32_t>(message.record.size());
    return message;
}

constexpr char kJsonHead[] = R"({"number":7,"offset":88,"time":"2026-03-31T23:14:03.123456789Z",)"
                             R"("thread":"evening","thread_id":4711,)";

sessions::Link linkWith(uint64_t partner = 0) {
    sessions::Link link;
    link.number = 7;
    link.partner = partner;
    return link;
}

TEST(JsonMessage, HasTheFieldsOfItsRecord) {
    sessions::Link link = linkWith();
    link.session = 3;
    EXPECT_EQ(show::jsonMessage(messageWith(1, 0x10000006, "03000000 20000000 01000000"), link, 88),
              kJsonHead +
                  std::string(R"("kind":"command","id":"0x10000006","name":"SelectChannel",)"
                              R"("value":0,"size":12,"surfaces":0,"session":3,)"
                              R"("layout":"TS_BROADCAST_INFO_REQ","fields":{"handle":3,)"
                              R"("physical_channel":32,"service_no":1},)"
                              R"("record":"030000002000000001000000"})"));
}

TEST(JsonMessage, NamesItsPartner) {
    sessions::Link link = linkWith(4);
    link.latency = -1500;
    link.ambiguous = true;
    sessions::Message message = messageWith(4, 0x1000007f, "");
    message.value = 1;
    EXPECT_EQ(show::jsonMessage(message, link, 88),
              kJsonHead + std::string(R"("kind":"refused","id":"0x1000007f","name":"ScanNotify",)"
                                      R"("value":1,"size":0,"surfaces":0,"partner":4,)"
                                      R"("latency_ns":-1500,"ambiguous":true,"record":""})"));
}

TEST(JsonMessage, SaysWhatIsWrong) {
    sessions::Message message = messageWith(3, 0x10000054, "0300 00ff 000000");
    message.left_out = 9;
    message.size = 16;
    EXPECT_EQ(show::jsonMessage(message, linkWith(), 88),
              kJsonHead +
                  std::string(R"("kind":"event","id":"0x10000054","name":"SelectChannelReply",)"
                              R"("value":0,"size":16,"surfaces":0,)"
                              R"("layout":"TS_SERVICE_REPLY","fields":{"handle":3},)"
                              R"("record":"030000ff000000","left_out":9,)"
                              R"("reserved":[{"at":2,"bytes":"00ff"}],)"
                              R"("ends_at":7,"layout_size":16})"));
    EXPECT_EQ(show::jsonMessage(messageWith(1, 0x10000001, "03000102"), linkWith(), 88),
              kJsonHead + std::string(R"("kind":"command","id":"0x10000001","name":"Release",)"
                                      R"("value":0,"size":4,"surfaces":0,)"
                                      R"("layout":"TS_HANDLE_REQ","fields":{"handle":3},)"
                                      R"("record":"03000102","surplus":"0102"})"));
}

TEST(JsonMessage, FindsReservedBytesOfNestedRecords) {
    // The last byte of the BML area, which is the third record in this one.
    const std::string json =
        show::jsonMessage(messageWith(1, 0x1000000e, "0300 000000000009"), linkWith(), 88);
    EXPECT_NE(json.find(R"("reserved":[{"at":7,"bytes":"09"}])"), std::string::npos) << json;
}

TEST(JsonMessage, ShowsWhatItDoesNotKnow) {
    sessions::Message message = messageWith(9, 0x10000008, "0341");
    message.time = {9223372036854775807, 5};
    message.thread_name = "\xff";
    message.reserved = 7;
    EXPECT_EQ(show::jsonMessage(message, linkWith(), 88),
              "{\"number\":7,\"offset\":88,\"time\":null,\"seconds\":9223372036854775807,"
              "\"nanoseconds\":5,\"thread\":\"\xef\xbf\xbd\",\"thread_id\":4711,\"kind\":9,"
              "\"id\":\"0x10000008\",\"value\":0,\"size\":2,\"surfaces\":0,\"header_reserved\":7,"
              "\"record\":\"0341\"}");
}

TEST(JsonOpenCommand, NamesTheCommand) {
    sessions::OpenCommand command;
    command.number = 12;
    command.id = 0x10000006;
    command.session = 3;
    EXPECT_EQ(show::jsonOpenCommand(command),
              R"({"number":12,"name":"SelectChannel","session":3,"ambiguous":false})");
    command.id = 0x10000000;
    command.session.reset();
    command.ambiguous = true;
    EXPECT_EQ(show::jsonOpenCommand(command), R"({"number":12,"name":"Create","ambiguous":true})");
}

TEST(JsonMessage, HasNullForWhatIsNotKnown) {
    sessions::Message message = messageWith(3, 0x10000054, "0300 0000 05000000 20000000 01000000");
    message.known.assign(16, true);
    message.known[1] = false;
    message.known[4] = false;
    message.known[5] = false;
    const std::string json = show::jsonMessage(message, {}, 88);
    EXPECT_NE(json.find(R"("fields":{"handle":null,"result":null,"physical_channel":32,)"
                        R"("service_no":1},"record":"03000000050000002000000001000000",)"
                        R"("unknown":"1,4-5"})"),
              std::string::npos)
        << json;
}

} // namespace
