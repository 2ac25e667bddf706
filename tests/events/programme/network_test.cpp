// Network information and scan results: the same description of a network, two limits.
#include "events/programme/programme_cases.h"

namespace {

using namespace events;
using harness::deliver;
using harness::env;
using harness::FailJni;
using harness::StrictJni;

const Case& network = networkCase();
const Case& scan = scanCase();

class Network : public EveryEvent {};
INSTANTIATE_TEST_SUITE_P(Event, Network, testing::Values(network, scan), nameOf);

TEST_P(Network, IsDelivered) {
    isDelivered();
}

TEST_P(Network, OneByteShortOrLongIsRefused) {
    oneByteShortOrLong();
}

TEST_P(Network, AnyLengthIsSafe) {
    anyLengthIsSafe();
}

TEST_P(Network, ObjectThatCannotBeBuilt) {
    constructionFails(FailJni::Leaves::exception);
    constructionFails(FailJni::Leaves::nothing);
}

TEST_P(Network, TextThatCannotBeMade) {
    textFails(FailJni::Leaves::exception);
    textFails(FailJni::Leaves::nothing);
}

TEST_P(Network, ArrayThatCannotBeMade) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("NewIntArray", 0, leaves);
        expectRefused(GetParam(), GetParam().record, GetParam().fields);
        EXPECT_TRUE(fail.fired());
    }
    expectStillDelivered(GetParam());
}

TEST_P(Network, CallbackThatThrowsWasCalled) {
    callbackThrows();
}

class NetworkInfo : public EventTest {
protected:
    /// The first record's line with another count.
    static std::string fields(int count) {
        return "DEBUG |handle = 65244\n"
               "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = |TS name|, nw_id "
               "= "
               "46259, nw_name_size = 12, nw_name = |Network name|, remocon_id = 161, "
               "partialsvc_cnt = " +
               std::to_string(count) + "\n";
    }
};

TEST_F(NetworkInfo, TakesSevenPartialServicesAndNotEight) {
    expectStillDelivered(network);
    expectRefused(network, Record(network.record).u16(106, 8),
                  fields(8) + "DEBUG |ERROR partialsvc_cnt is over count\n");
    expectRefused(network, Record(network.record).u16(106, 9),
                  fields(9) + "DEBUG |ERROR partialsvc_cnt is over count\n");
    expectRefused(network, Record(network.record).u16(106, 0xFFFF),
                  fields(65535) + "DEBUG |ERROR partialsvc_cnt is over count\n");
    expectRefused(network, Record(network.record).u16(106, 0x0100),
                  fields(256) + "DEBUG |ERROR partialsvc_cnt is over count\n");
}

TEST_F(NetworkInfo, OfNoPartialService) {
    expectDelivered(network, Record(network.record).u16(106, 0),
                    "onEvDtvsvNetworkInfoNotify BG_EV_DTVSV_NETWORK_INFO_NOTIFY(65244, "
                    "BG_TS_DTVSVLIB_NETWORK_INFO(45745, 7, \"TS name\", 46259, 12, "
                    "\"Network name\", 161, 0, ints[]), 3301163713L)",
                    fields(0) + network.delivered());
    expectDelivered(network, Record(network.record).u16(106, 1),
                    "onEvDtvsvNetworkInfoNotify BG_EV_DTVSV_NETWORK_INFO_NOTIFY(65244, "
                    "BG_TS_DTVSVLIB_NETWORK_INFO(45745, 7, \"TS name\", 46259, 12, "
                    "\"Network name\", 161, 1, ints[33025]), 3301163713L)",
                    fields(1) + network.delivered());
}

TEST_F(NetworkInfo, TextsComeBeforeTheCount) {
    FailJni fail("NewStringUTF", 1);
    expectRefused(network, Record(network.record).u16(106, 9),
                  fields(9) + "NOTEXT OrgNewStringUTF\nERROR |ERROR NewStringUTF\n");
}

TEST_F(NetworkInfo, CountComesBeforeTheArray) {
    int before = StrictJni::calls("NewIntArray");
    EXPECT_EQ(deliver(network.id, Record(network.record).u16(106, 8).bytes()), 1);
    EXPECT_EQ(StrictJni::calls("NewIntArray"), before);
}

/// A size of 0 means that there is no name, whatever its field contains; the log shows what the
/// field contains.
TEST_F(NetworkInfo, NamesOfSizeZeroAreEmpty) {
    expectDelivered(
        network, Record(network.record).u16(10, 0).u16(58, 0),
        "onEvDtvsvNetworkInfoNotify BG_EV_DTVSV_NETWORK_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_NETWORK_INFO(45745, 0, \"\", 46259, 0, \"\", 161, 7, ints[33025, 33282, "
        "33539, 33796, 34053, 34310, 34567]), 3301163713L)",
        "DEBUG |handle = 65244\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 0, ts_name = |TS name|, nw_id = "
        "46259, "
        "nw_name_size = 0, nw_name = |Network name|, remocon_id = 161, partialsvc_cnt = 7\n" +
            network.delivered());
}

/// Otherwise a name ends at its NUL, whatever its size is.
TEST_F(NetworkInfo, SizesOfNamesMayBeWrong) {
    expectDelivered(
        network, Record(network.record).u16(10, 1).u16(58, 0xFFFF), network.callback,
        "DEBUG |handle = 65244\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 1, ts_name = |TS name|, nw_id = "
        "46259, "
        "nw_name_size = 65535, nw_name = |Network name|, remocon_id = 161, partialsvc_cnt = 7\n" +
            network.delivered());
    expectDelivered(
        network, Record(network.record).text(12, "").text(60, ""),
        "onEvDtvsvNetworkInfoNotify BG_EV_DTVSV_NETWORK_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_NETWORK_INFO(45745, 0, \"\", 46259, 0, \"\", 161, 7, ints[33025, 33282, "
        "33539, 33796, 34053, 34310, 34567]), 3301163713L)",
        "DEBUG |handle = 65244\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = ||, nw_id = 46259, "
        "nw_name_size = 12, nw_name = ||, remocon_id = 161, partialsvc_cnt = 7\n" +
            network.delivered());
}

TEST_F(NetworkInfo, FullNamesEndWithTheirFields) {
    // 44 bytes each with no NUL; the bytes that follow would be seen in the result.
    expectDelivered(
        network,
        Record(network.record)
            .raw(12, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQR")
            .u16(56, 0x4141)
            .raw(60, "0123456789abcdefghijklmnopqrstuvwxyz_-+*/=()")
            .u8(104, 0x42),
        "onEvDtvsvNetworkInfoNotify BG_EV_DTVSV_NETWORK_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_NETWORK_INFO(45745, 44, \"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQR\", "
        "16705, 44, \"0123456789abcdefghijklmnopqrstuvwxyz_-+*/=()\", 66, 7, ints[33025, 33282, "
        "33539, 33796, 34053, 34310, 34567]), 3301163713L)",
        "DEBUG |handle = 65244\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = "
        "|abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQR|, nw_id = 16705, nw_name_size = 12, nw_name "
        "= |0123456789abcdefghijklmnopqrstuvwxyz_-+*/=()|, remocon_id = 66, partialsvc_cnt = 7\n" +
            network.delivered());
}

/// The lengths are those of the Java strings in modified UTF-8.
TEST_F(NetworkInfo, LengthsAreThoseOfTheStrings) {
    expectDelivered(
        network, Record(network.record).text(12, "\xF0\x9F\x98\x80").text(60, "\xC0\x80\xFFz"),
        "onEvDtvsvNetworkInfoNotify BG_EV_DTVSV_NETWORK_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_NETWORK_INFO(45745, 6, \"\\ud83d\\ude00\", 46259, 6, "
        "\"\\u0000\\ufffdz\", 161, 7, ints[33025, 33282, 33539, 33796, 34053, 34310, 34567]), "
        "3301163713L)",
        "DEBUG |handle = 65244\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = |\\xF0\\x9F\\x98\\x80|, "
        "nw_id = 46259, nw_name_size = 12, nw_name = |\\xC0\\x80\\xFFz|, remocon_id = 161, "
        "partialsvc_cnt = 7\n" +
            network.delivered());
}

TEST_F(NetworkInfo, FieldsSentInPartAreLoggedAsSent) {
    std::vector<uint8_t> bytes = network.record.bytes();
    expect(network, bytes, 0, 1, "",
           "START |recv_size = 0\n"
           "DEBUG |handle = 0\n"
           "DEBUG |NETWORK_INFO : ts_id = 0, ts_name_size = 0, ts_name = ||, nw_id = 0, "
           "nw_name_size = 0, nw_name = ||, remocon_id = 0, partialsvc_cnt = 0\n"
           "ERROR |recv_size err!, recv_size = 0\n");
    expect(network, bytes, -124, 1, "",
           "START |recv_size = -124\n"
           "DEBUG |handle = 0\n"
           "DEBUG |NETWORK_INFO : ts_id = 0, ts_name_size = 0, ts_name = ||, nw_id = 0, "
           "nw_name_size = 0, nw_name = ||, remocon_id = 0, partialsvc_cnt = 0\n"
           "ERROR |recv_size err!, recv_size = -124\n");
    expect(network, bytes, 9, 1, "",
           "START |recv_size = 9\n"
           "DEBUG |handle = 65244\n"
           "DEBUG |NETWORK_INFO : ts_id = 177, ts_name_size = 0, ts_name = ||, nw_id = 0, "
           "nw_name_size = 0, nw_name = ||, remocon_id = 0, partialsvc_cnt = 0\n"
           "ERROR |recv_size err!, recv_size = 9\n");
    expect(network, bytes, 67, 1, "",
           "START |recv_size = 67\n"
           "DEBUG |handle = 65244\n"
           "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = |TS name|, nw_id = "
           "46259, nw_name_size = 12, nw_name = |Network|, remocon_id = 0, partialsvc_cnt = 0\n"
           "ERROR |recv_size err!, recv_size = 67\n");
}

TEST_F(NetworkInfo, NoRecordAtAll) {
    EXPECT_EQ(dtv::deliverEvent(network.id, nullptr, 124), 1);
    EXPECT_TRACE(log->takeOf(network.handler), "");
}

class Scan : public EventTest {
protected:
    static std::string fields(int count) {
        return "DEBUG |handle = 65244, result = -993803583, result_channnel_num = 46773\n"
               "DEBUG |SCAN_RESULT : channnel = -724315439\n"
               "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = |TS name|, nw_id "
               "= "
               "46259, nw_name_size = 12, nw_name = |Network name|, remocon_id = 161, "
               "partialsvc_cnt = " +
               std::to_string(count) + "\n";
    }
};

TEST_F(Scan, TakesEightPartialServicesAndNotNine) {
    expectStillDelivered(scan);
    expectRefused(scan, Record(scan.record).u16(110, 9),
                  fields(9) + "DEBUG |ERROR partialsvc_cnt is over count : 9\n");
    expectRefused(scan, Record(scan.record).u16(110, 0xFFFF),
                  fields(65535) + "DEBUG |ERROR partialsvc_cnt is over count : 65535\n");
}

TEST_F(Scan, OfNoPartialService) {
    expectDelivered(scan, Record(scan.record).u16(110, 0),
                    "onEvDtvsvScanNotify BG_EV_DTVSV_SCAN_NOTIFY(65244, -993803583, "
                    "BG_TS_DTVSVLIB_SCAN_RESULT(-724315439, BG_TS_DTVSVLIB_NETWORK_INFO(45745, 7, "
                    "\"TS name\", 46259, 12, \"Network name\", 161, 0, ints[])), 46773)",
                    fields(0) + scan.delivered());
}

TEST_F(Scan, TextsComeBeforeTheCount) {
    FailJni fail("NewStringUTF", 0);
    expectRefused(scan, Record(scan.record).u16(110, 9),
                  fields(9) + "NOTEXT OrgNewStringUTF\nERROR |ERROR NewStringUTF\n");
}

TEST_F(Scan, NamesOfSizeZeroAreEmpty) {
    expectDelivered(
        scan, Record(scan.record).u16(14, 0).u16(62, 0).u16(110, 1),
        "onEvDtvsvScanNotify BG_EV_DTVSV_SCAN_NOTIFY(65244, -993803583, "
        "BG_TS_DTVSVLIB_SCAN_RESULT(-724315439, BG_TS_DTVSVLIB_NETWORK_INFO(45745, 0, \"\", 46259, "
        "0, \"\", 161, 1, ints[33025])), 46773)",
        "DEBUG |handle = 65244, result = -993803583, result_channnel_num = 46773\n"
        "DEBUG |SCAN_RESULT : channnel = -724315439\n"
        "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 0, ts_name = |TS name|, nw_id = "
        "46259, "
        "nw_name_size = 0, nw_name = |Network name|, remocon_id = 161, partialsvc_cnt = 1\n" +
            scan.delivered());
}

TEST_F(Scan, FieldsSentInPartAreLoggedAsSent) {
    expect(scan, scan.record.bytes(), 129, 1, "",
           "START\n"
           "DEBUG |handle = 65244, result = -993803583, result_channnel_num = 181\n"
           "DEBUG |SCAN_RESULT : channnel = -724315439\n"
           "DEBUG |NETWORK_INFO : ts_id = 45745, ts_name_size = 7, ts_name = |TS name|, nw_id = "
           "46259, nw_name_size = 12, nw_name = |Network name|, remocon_id = 161, partialsvc_cnt = "
           "8\n"
           "DEBUG |recv_size err!, recv_size = 129\n");
    expect(scan, scan.record.bytes(), 7, 1, "",
           "START\n"
           "DEBUG |handle = 65244, result = 12829377, result_channnel_num = 0\n"
           "DEBUG |SCAN_RESULT : channnel = 0\n"
           "DEBUG |NETWORK_INFO : ts_id = 0, ts_name_size = 0, ts_name = ||, nw_id = 0, "
           "nw_name_size = 0, nw_name = ||, remocon_id = 0, partialsvc_cnt = 0\n"
           "DEBUG |recv_size err!, recv_size = 7\n");
}

/// With one frame of its own, or one by one where that cannot be had.
TEST_F(Scan, LetsGoWhatItMade) {
    const struct {
        int id;
        std::vector<uint8_t> bytes;
        int made;
    } events[] = {{scan.id, scan.record.bytes(), 6}, {network.id, network.record.bytes(), 5}};
    for (const auto& event : events) {
        int deleted = StrictJni::calls("DeleteLocalRef");
        int popped = StrictJni::calls("PopLocalFrame");
        EXPECT_EQ(deliver(event.id, event.bytes), 0);
        EXPECT_EQ(StrictJni::calls("DeleteLocalRef") - deleted, 0);
        EXPECT_EQ(StrictJni::calls("PopLocalFrame") - popped, 2) << "its own and the event's";
        for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
            deleted = StrictJni::calls("DeleteLocalRef");
            popped = StrictJni::calls("PopLocalFrame");
            FailJni fails("PushLocalFrame", 1, leaves);
            EXPECT_EQ(deliver(event.id, event.bytes), 0);
            EXPECT_EQ(StrictJni::calls("DeleteLocalRef") - deleted, event.made);
            EXPECT_EQ(StrictJni::calls("PopLocalFrame") - popped, 1) << "the event's";
        }
    }
}

} // namespace
