// The capture of the messages: what libDtv writes, byte by byte.
#include "platform/capture_child.h"

#include <algorithm>
#include <chrono>

namespace {

using android::sp;
using harness::fromHex;
using harness::hex;
using platform::ListenerDouble;
using platform::numberAt;
using std::chrono::seconds;

using CaptureBytes = platform::CaptureTest;

/// The blocks of the packets, with zeros for their times and threads, and what those were.
struct Packets {
    std::vector<std::string> blocks;
    std::vector<uint64_t> times;
    std::vector<uint64_t> threads;
};

Packets packetsOf(std::vector<uint8_t> bytes) {
    Packets packets;
    size_t begin = 88; // after the section and the interface
    while (begin < bytes.size()) {
        const auto size = static_cast<size_t>(numberAt(bytes, begin + 4, 4));
        if (size < 80 || size > bytes.size() - begin) {
            ADD_FAILURE() << "a block of " << size << " bytes at " << begin;
            break;
        }
        packets.times.push_back(numberAt(bytes, begin + 12, 4) << 32 |
                                numberAt(bytes, begin + 16, 4));
        packets.threads.push_back(numberAt(bytes, begin + 32, 4));
        std::fill_n(bytes.begin() + static_cast<long>(begin) + 12, 8, uint8_t{0});
        std::fill_n(bytes.begin() + static_cast<long>(begin) + 32, 4, uint8_t{0});
        const auto first = bytes.begin() + static_cast<long>(begin);
        packets.blocks.push_back(hex({first, first + static_cast<long>(size)}));
        begin += size;
    }
    return packets;
}

/// As hex() writes it.
std::string block(const std::string& text) {
    return hex(fromHex(text));
}

// "evening" and "DtvEvent-1", the names of the threads.
const std::string kEvening = "6576656e696e67000000000000000000 ";
const std::string kDelivery = "4474764576656e742d31000000000000 ";

const std::string kOut = "0200 0400 02000000 00000000 ";
const std::string kIn = "0200 0400 01000000 00000000 ";

TEST_F(CaptureBytes, ReplacesAnOldFileAndBeginsWithOneInterface) {
    std::ofstream(path) << std::string(1000, 'x');
    inChild([&] { const sp<ListenerDouble> listener = new ListenerDouble; });
    EXPECT_EQ(hex(file()), block(R"(
        0a0d0d0a 2c000000 4d3c2b1a 0100 0000 ffffffffffffffff
            0400 0600 6c6962447476 0000 0000 0000 2c000000
        01000000 2c000000 9300 0000 00000100
            0200 0600 6c6962447476 0000 0900 0100 09000000 0000 0000 2c000000)"));
}

TEST_F(CaptureBytes, SaysInItsSectionHeaderWhatTheSessionIs) {
    inChild([&] {
        EXPECT_TRUE(dtv::describeCapture("seed=1"));
        EXPECT_FALSE(dtv::describeCapture(std::string(2001, 'x')));
        EXPECT_TRUE(dtv::describeCapture("city=a\nseed=20"));
        const sp<ListenerDouble> listener = new ListenerDouble;
        EXPECT_FALSE(dtv::describeCapture("too=late"));
    });
    EXPECT_EQ(hex(file()), block(R"(
        0a0d0d0a 40000000 4d3c2b1a 0100 0000 ffffffffffffffff
            0400 0600 6c6962447476 0000
            0100 0e00 636974793d61 0a 736565643d3230 0000 0000 0000 40000000
        01000000 2c000000 9300 0000 00000100
            0200 0600 6c6962447476 0000 0900 0100 09000000 0000 0000 2c000000)"));
}

TEST_F(CaptureBytes, TakesTheLongestDescription) {
    inChild([&] {
        EXPECT_TRUE(dtv::describeCapture(std::string(2000, 'x')));
        const sp<ListenerDouble> listener = new ListenerDouble;
    });
    EXPECT_EQ(file().size(), 88u + 4 + 2000);
}

TEST_F(CaptureBytes, HasCommandsAndWhatTheyReturned) {
    const auto before = std::chrono::system_clock::now().time_since_epoch();
    inChild([&] {
        const sp<ListenerDouble> listener = new ListenerDouble;
        auto service = harness::ServiceDouble::serve();
        char record[] = {3, 0, 7};
        TS_DTVSV_SP references;
        references.surface_count = 2;
        listener->sendEventToServer(0x10000006, record, 3, nullptr, nullptr);
        service->setResult(-2);
        listener->sendEventToServer(0x1000000c, record, 2, &references, nullptr, nullptr);
        dtv::setServiceEndpoint(nullptr);
        listener->sendEventToServer(0x10000006, record, 1, nullptr, nullptr);
    });
    const Packets packets = packetsOf(file());
    const std::vector<std::string> expected = {
        block("06000000 54000000 00000000 0000000000000000 27000000 27000000"
              "01 01 00 00 00000000 06000010 00000000 03000000" +
              kEvening + "030007 00" + kOut + "54000000"),
        block("06000000 54000000 00000000 0000000000000000 26000000 26000000"
              "01 01 02 00 00000000 0c000010 00000000 02000000" +
              kEvening + "0300 0000" + kOut + "54000000"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 02 00 00 00000000 0c000010 feffffff 00000000" +
              kEvening + kIn + "50000000"),
        block("06000000 54000000 00000000 0000000000000000 25000000 25000000"
              "01 01 00 00 00000000 06000010 00000000 01000000" +
              kEvening + "03 000000" + kOut + "54000000"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 02 00 00 00000000 06000010 ffffffff 00000000" +
              kEvening + kIn + "50000000"),
    };
    EXPECT_EQ(packets.blocks, expected);
    const auto nanoseconds = [](std::chrono::system_clock::duration time) {
        return static_cast<uint64_t>(
            std::chrono::duration_cast<std::chrono::nanoseconds>(time).count());
    };
    const auto after = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_GE(packets.times.at(0), nanoseconds(before));
    EXPECT_LE(packets.times.at(4), nanoseconds(after));
    EXPECT_NE(packets.threads.at(0), 0u);
    EXPECT_NE(packets.threads.at(0), static_cast<uint64_t>(gettid())) << "the child's";
    EXPECT_EQ(packets.threads, std::vector<uint64_t>(5, packets.threads[0]));
}

TEST_F(CaptureBytes, HasAnswersWithTheBytesThatTheServiceReportsAsWritten) {
    inChild([&] {
        const sp<ListenerDouble> listener = new ListenerDouble;
        auto service = harness::ServiceDouble::serve();
        char handle[] = {3, 0};
        const auto send = [&](int message_id) {
            char reply[12] = {};
            int size = 0;
            listener->sendEventToServer(message_id, handle, 2, reply, &size);
        };
        service->setReply(fromHex("0300 0000 ffffffff 0500 0600"));
        send(0x10000038); // reports 12, of which 8 fit
        send(0x10000040);
        service->setReply(fromHex("0300 0000 ffffffff"), std::nullopt);
        send(0x10000038);
        service->setReply(fromHex("0300 0000 ffffffff"), -1);
        service->setResult(5);
        send(0x10000038);
        char reply[8] = {};
        listener->sendEventToServer(0x10000038, handle, 2, reply, nullptr);
    });
    const Packets packets = packetsOf(file());
    const auto command = [](const char* id) {
        return block("06000000 54000000 00000000 0000000000000000 26000000 26000000"
                     "01 01 00 00 00000000" +
                     std::string(id) + "00000000 02000000" + kEvening + "0300 0000" + kOut +
                     "54000000");
    };
    const std::vector<std::string> expected = {
        command("38000010"),
        block("06000000 58000000 00000000 0000000000000000 2c000000 2c000000"
              "01 02 00 00 00000000 38000010 00000000 0c000000" +
              kEvening + "0300 0000 ffffffff" + kIn + "58000000"),
        command("40000010"),
        block("06000000 5c000000 00000000 0000000000000000 30000000 30000000"
              "01 02 00 00 00000000 40000010 00000000 0c000000" +
              kEvening + "0300 0000 ffffffff 0500 0600" + kIn + "5c000000"),
        command("38000010"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 02 00 00 00000000 38000010 00000000 00000000" +
              kEvening + kIn + "50000000"),
        command("38000010"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 02 00 00 00000000 38000010 05000000 ffffffff" +
              kEvening + kIn + "50000000"),
        command("38000010"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 02 00 00 00000000 38000010 05000000 00000000" +
              kEvening + kIn + "50000000"),
    };
    EXPECT_EQ(packets.blocks, expected);
}

TEST_F(CaptureBytes, HasEventsOfBothWaysAndRefusals) {
    inChild([&] {
        sp<ListenerDouble> listener = new ListenerDouble;
        unsigned char record[] = {3, 0, 0, 0, 9, 0, 0, 0};
        dtv::postEvent(0x1000004f, record, 8);
        dtv::postEvent(0x1000008a, record, 2);
        EXPECT_TRUE(dtv::waitUntilDelivered(seconds(20)));
        listener->answer = 1;
        dtv::deliverEvent(0x10000042, nullptr, 4);
        dtv::deliverEvent(0x10000042, record, -4);
        listener->answer = -1;
        dtv::postEvent(0x1000008a, record, 2);
        EXPECT_TRUE(dtv::waitUntilDelivered(seconds(20)));
        listener = nullptr;
        EXPECT_EQ(dtv::deliverEvent(0x10000042, record, 8), dtv::noListener);
    });
    const Packets packets = packetsOf(file());
    const std::vector<std::string> expected = {
        block("06000000 58000000 00000000 0000000000000000 2c000000 2c000000"
              "01 03 00 00 00000000 4f000010 00000000 08000000" +
              kDelivery + "0300 0000 09000000" + kIn + "58000000"),
        block("06000000 54000000 00000000 0000000000000000 26000000 26000000"
              "01 03 00 00 00000000 8a000010 00000000 02000000" +
              kDelivery + "0300 0000" + kIn + "54000000"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 03 00 00 00000000 42000010 00000000 04000000" +
              kEvening + kIn + "50000000"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 04 00 00 00000000 42000010 01000000 00000000" +
              kEvening + kOut + "50000000"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 03 00 00 00000000 42000010 00000000 fcffffff" +
              kEvening + kIn + "50000000"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 04 00 00 00000000 42000010 01000000 00000000" +
              kEvening + kOut + "50000000"),
        block("06000000 54000000 00000000 0000000000000000 26000000 26000000"
              "01 03 00 00 00000000 8a000010 00000000 02000000" +
              kDelivery + "0300 0000" + kIn + "54000000"),
        block("06000000 50000000 00000000 0000000000000000 24000000 24000000"
              "01 04 00 00 00000000 8a000010 ffffffff 00000000" +
              kDelivery + kOut + "50000000"),
    };
    EXPECT_EQ(packets.blocks, expected);
    ASSERT_EQ(packets.threads.size(), 8u);
    EXPECT_EQ(packets.threads[0], packets.threads[7]);
    EXPECT_NE(packets.threads[0], packets.threads[2]);
}

} // namespace
