// The three commands that name a service by its channel: what is sent.
#include "commands/command_rows.h"

namespace {

using namespace harness;
using namespace commands;

/// A call with a service that the bridge takes.
struct Channel {
    Channel(std::vector<int> numbers, const char* start, Texts sends, const char* wire)
        : numbers(std::move(numbers)), start(start), sends(std::move(sends)), wire(wire) {}
    std::vector<int> numbers; ///< handle, physical channel, service number, operation
    const char* start;
    Texts sends;
    const char* wire;
};

class ChannelCommands : public Commands {
protected:
    void expectTaken(const std::string& command, const Channel& row) {
        SCOPED_TRACE(row.wire);
        for (int result : {0, -1}) {
            service->setResult(result);
            std::vector<Value> arguments{row.numbers[0],
                                         newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V",
                                                   {row.numbers[1], row.numbers[2]})};
            if (row.numbers.size() == 4) {
                arguments.emplace_back(row.numbers[3]);
            }
            EXPECT_EQ(call("DtvSvLib_" + command, arguments), result == 0 ? ok : ng);
            EXPECT_EQ(service->takeTexts(), Texts{row.wire});
            EXPECT_TRACE(log->take(), sentTrace("dtvSvLib" + command, row.start, row.sends,
                                                result == 0 ? "0" : "1", result == 0 ? "0" : "-1"));
        }
    }
};

TEST_F(ChannelCommands, StartBroadcastReceiving) {
    const Channel rows[] = {
        Channel({3, 62, 2}, "hdl = 3",
                {"SEND, dtvsv_handle = 3",
                 "SEND, BROADCAST_INFO : physical_channel = 62, service_no = 2"},
                "10000004: 03 00 00 00 3e 00 00 00 02 00 00 00"),
        Channel({4660, 0, 0}, "hdl = 4660",
                {"SEND, dtvsv_handle = 4660",
                 "SEND, BROADCAST_INFO : physical_channel = 0, service_no = 0"},
                "10000004: 34 12 00 00 00 00 00 00 00 00 00 00"),
        Channel({65536, -1, -1}, "hdl = 65536",
                {"SEND, dtvsv_handle = 0",
                 "SEND, BROADCAST_INFO : physical_channel = -1, service_no = 65535"},
                "10000004: 00 00 00 00 ff ff ff ff ff ff 00 00"),
        Channel({-1, lowest, lowest}, "hdl = -1",
                {"SEND, dtvsv_handle = 65535",
                 "SEND, BROADCAST_INFO : physical_channel = -2147483648, service_no = 0"},
                "10000004: ff ff 00 00 00 00 00 80 00 00 00 00")};
    for (const Channel& row : rows) {
        expectTaken("StartBroadcastReceiving", row);
    }
}

TEST_F(ChannelCommands, SelectChannel) {
    const Channel rows[] = {
        Channel({3, 62, 2}, "hdl = 3",
                {"SEND, dtvsv_handle = 3",
                 "SEND, BROADCAST_INFO : physical_channel = 62, service_no = 2"},
                "10000006: 03 00 00 00 3e 00 00 00 02 00 00 00"),
        Channel({258, 13, 1}, "hdl = 258",
                {"SEND, dtvsv_handle = 258",
                 "SEND, BROADCAST_INFO : physical_channel = 13, service_no = 1"},
                "10000006: 02 01 00 00 0d 00 00 00 01 00 00 00"),
        Channel({65537, -16909060, -64770}, "hdl = 65537",
                {"SEND, dtvsv_handle = 1",
                 "SEND, BROADCAST_INFO : physical_channel = -16909060, service_no = 766"},
                "10000006: 01 00 00 00 fc fc fd fe fe 02 00 00")};
    for (const Channel& row : rows) {
        expectTaken("SelectChannel", row);
    }
}

TEST_F(ChannelCommands, StartSearchChannel) {
    const Channel rows[] = {
        Channel({3, 62, 2, 1}, "hdl = 3",
                {"SEND, dtvsv_handle = 3, channel_operation = 1",
                 "SEND, BROADCAST_INFO : physical_channel = 62, service_no = 2"},
                "10000007: 03 00 00 00 3e 00 00 00 02 00 00 00 01 00 00 00"),
        Channel({65538, 13, 0, 300}, "hdl = 65538",
                {"SEND, dtvsv_handle = 2, channel_operation = 44",
                 "SEND, BROADCAST_INFO : physical_channel = 13, service_no = 0"},
                "10000007: 02 00 00 00 0d 00 00 00 00 00 00 00 2c 00 00 00"),
        Channel({3, -2, -2, -1}, "hdl = 3",
                {"SEND, dtvsv_handle = 3, channel_operation = 255",
                 "SEND, BROADCAST_INFO : physical_channel = -2, service_no = 65534"},
                "10000007: 03 00 00 00 fe ff ff ff fe ff 00 00 ff 00 00 00"),
        Channel({3, 1, 1, lowest}, "hdl = 3",
                {"SEND, dtvsv_handle = 3, channel_operation = 0",
                 "SEND, BROADCAST_INFO : physical_channel = 1, service_no = 1"},
                "10000007: 03 00 00 00 01 00 00 00 01 00 00 00 00 00 00 00"),
        Channel({3, 1, 1, highest}, "hdl = 3",
                {"SEND, dtvsv_handle = 3, channel_operation = 255",
                 "SEND, BROADCAST_INFO : physical_channel = 1, service_no = 1"},
                "10000007: 03 00 00 00 01 00 00 00 01 00 00 00 ff 00 00 00")};
    for (const Channel& row : rows) {
        expectTaken("StartSearchChannel", row);
    }
}

TEST_F(ChannelCommands, CarryNoSurfaceAndAskForNoAnswer) {
    jobject info = newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {62, 2});
    call("DtvSvLib_StartBroadcastReceiving", {3, info});
    call("DtvSvLib_SelectChannel", {3, info});
    call("DtvSvLib_StartSearchChannel", {3, info, 1});
    std::vector<Message> messages = service->take();
    ASSERT_EQ(messages.size(), 3U);
    for (const Message& message : messages) {
        EXPECT_FALSE(message.sync);
        EXPECT_EQ(message.reply_capacity, 0);
        EXPECT_FALSE(message.had_references);
    }
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

} // namespace
