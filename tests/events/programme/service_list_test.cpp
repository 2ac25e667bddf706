// The services of a transport stream.
#include "events/programme/programme_cases.h"

namespace {

using namespace events;
using harness::deliver;
using harness::FailJni;
using harness::StrictJni;

const Case& services = servicesCase();

class ServiceList : public EveryEvent {};
INSTANTIATE_TEST_SUITE_P(Event, ServiceList, testing::Values(services), nameOf);

TEST_P(ServiceList, IsDelivered) {
    isDelivered();
}

TEST_P(ServiceList, ObjectThatCannotBeBuilt) {
    constructionFails(FailJni::Leaves::exception);
    constructionFails(FailJni::Leaves::nothing);
}

TEST_P(ServiceList, CallbackThatThrowsWasCalled) {
    callbackThrows();
}

class Services : public EventTest {};

/// Each entry's name is made before its object.
TEST_F(Services, NameThatCannotBeMade) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        {
            FailJni fail("NewStringUTF", 0, leaves);
            expectRefused(services, services.record, services.fields + "NOTEXT OrgNewStringUTF\n");
        }
        {
            FailJni fail("NewStringUTF", 1, leaves);
            expectRefused(services, services.record,
                          services.fields + "NEW 167 100\nNOTEXT OrgNewStringUTF\n");
        }
    }
    expectStillDelivered(services);
}

TEST_F(Services, ArrayThatCannotBeMade) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("NewObjectArray", 0, leaves);
        expectRefused(services, services.record, services.fields);
        EXPECT_TRUE(fail.fired());
    }
    expectStillDelivered(services);
}

TEST_F(Services, None) {
    expectDelivered(services, Record(services.record).u8(16, 0),
                    "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
                    "BG_TS_DTVSVLIB_STREAM_INFO(-724315439, 0, []), 3301163713L, 45745)",
                    "DEBUG |handle = 65244\n"
                    "DEBUG |STREAM_INFO ts_id = -724315439, svc_cnt = 0\n"
                    "NEW 171 104\nNEW 100 32\nSTATIC 32\nEND |ret = 0\n");
}

TEST_F(Services, EightAndNotNine) {
    Record record = Record(436).u16(0, 3).u32(4, 62).u16(8, 2).u32(12, 32736).u8(16, 8);
    record.u32(20, 101).u32(24, 1).text(28, "a");
    record.u32(72, 102).u32(76, 1).text(80, "b");
    record.u32(124, 103).u32(128, 1).text(132, "c");
    record.u32(176, 104).u32(180, 1).text(184, "d");
    record.u32(228, 105).u32(232, 1).text(236, "e");
    record.u32(280, 106).u32(284, 1).text(288, "f");
    record.u32(332, 107).u32(336, 1).text(340, "g");
    record.u32(384, 108).u32(388, 1).raw(392, "0123456789abcdefghijklmnopqrstuvwxyz_-+*/=()");
    expectDelivered(
        services, record,
        "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(3, "
        "BG_TS_DTVSVLIB_STREAM_INFO(32736, 8, [BG_TS_DTVSVLIB_SERVICE_INFO(101, 1, \"a\"), "
        "BG_TS_DTVSVLIB_SERVICE_INFO(102, 1, \"b\"), BG_TS_DTVSVLIB_SERVICE_INFO(103, 1, \"c\"), "
        "BG_TS_DTVSVLIB_SERVICE_INFO(104, 1, \"d\"), BG_TS_DTVSVLIB_SERVICE_INFO(105, 1, \"e\"), "
        "BG_TS_DTVSVLIB_SERVICE_INFO(106, 1, \"f\"), BG_TS_DTVSVLIB_SERVICE_INFO(107, 1, \"g\"), "
        "BG_TS_DTVSVLIB_SERVICE_INFO(108, 44, \"0123456789abcdefghijklmnopqrstuvwxyz_-+*/=()\")]), "
        "62L, 2)",
        "DEBUG |handle = 3\n"
        "DEBUG |STREAM_INFO ts_id = 32736, svc_cnt = 8\n"
        "NEW 167 100\nNEW 167 100\nNEW 167 100\nNEW 167 100\n"
        "NEW 167 100\nNEW 167 100\nNEW 167 100\nNEW 167 100\n"
        "NEW 171 104\nNEW 100 32\nSTATIC 32\nEND |ret = 0\n");
    expectRefused(services, Record(record).u8(16, 9),
                  "DEBUG |handle = 3\n"
                  "DEBUG |STREAM_INFO ts_id = 32736, svc_cnt = 9\n"
                  "DEBUG |ERROR svc_cnt is over count\n");
    expectRefused(services, Record(record).u8(16, 255),
                  "DEBUG |handle = 3\n"
                  "DEBUG |STREAM_INFO ts_id = 32736, svc_cnt = 255\n"
                  "DEBUG |ERROR svc_cnt is over count\n");
}

TEST_F(Services, NamesOfSizeZeroAreEmptyAndOtherSizesMayBeWrong) {
    expectDelivered(services, Record(services.record).u32(24, 0).u32(76, 0xFFFFFFFF),
                    "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
                    "BG_TS_DTVSVLIB_STREAM_INFO(-724315439, 2, "
                    "[BG_TS_DTVSVLIB_SERVICE_INFO(-505224220, 0, \"\"), "
                    "BG_TS_DTVSVLIB_SERVICE_INFO(16909060, 6, \"Second\")]), 3301163713L, 45745)",
                    services.fields + services.delivered());
    // The low half of the size is 0 and the size is not.
    expectDelivered(services, Record(services.record).u32(24, 0x10000).u32(76, 1),
                    services.callback, services.fields + services.delivered());
}

/// 44 bytes and no NUL before the next entry, whose id would be seen in the result.
TEST_F(Services, FullNamesEndWithTheirFields) {
    expectDelivered(
        services,
        Record(services.record)
            .raw(28, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQR")
            .u32(72, 0x41414141)
            .raw(80, "\xE3\x81\x82 42 bytes with three-byte letters: \xE3\x81\x82 \xE3\x81"),
        "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
        "BG_TS_DTVSVLIB_STREAM_INFO(-724315439, 2, [BG_TS_DTVSVLIB_SERVICE_INFO(-505224220, 44, "
        "\"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQR\"), "
        "BG_TS_DTVSVLIB_SERVICE_INFO(1094795585, 48, \"\\u3042 42 bytes with three-byte letters: "
        "\\u3042 \\ufffd\\ufffd\")]), 3301163713L, 45745)",
        services.fields + services.delivered());
}

/// No size is refused: a part of the record that was not sent is read as zero.
TEST_F(Services, EntriesThatWereNotSent) {
    auto sent = [&](int size, const std::string& callback, const std::string& fields,
                    const std::string& rest) {
        SCOPED_TRACE(size);
        std::vector<uint8_t> bytes = services.record.bytes();
        expect(services, bytes, size, 0, callback,
               "START |recv_size = " + std::to_string(size) + "\n" + fields + rest);
        // And with nothing after them.
        if (size >= 0) {
            bytes.resize(static_cast<size_t>(size));
            expect(services, bytes, size, 0, callback,
                   "START |recv_size = " + std::to_string(size) + "\n" + fields + rest);
        }
    };
    std::string none = "NEW 171 104\nNEW 100 32\nSTATIC 32\nEND |ret = 0\n";
    for (int size : {-1, 0}) {
        sent(size,
             "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(0, "
             "BG_TS_DTVSVLIB_STREAM_INFO(0, 0, []), 0L, 0)",
             "DEBUG |handle = 0\nDEBUG |STREAM_INFO ts_id = 0, svc_cnt = 0\n", none);
    }
    sent(7,
         "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
         "BG_TS_DTVSVLIB_STREAM_INFO(0, 0, []), 12829377L, 0)",
         "DEBUG |handle = 65244\nDEBUG |STREAM_INFO ts_id = 0, svc_cnt = 0\n", none);
    sent(20,
         "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
         "BG_TS_DTVSVLIB_STREAM_INFO(-724315439, 2, [BG_TS_DTVSVLIB_SERVICE_INFO(0, 0, \"\"), "
         "BG_TS_DTVSVLIB_SERVICE_INFO(0, 0, \"\")]), 3301163713L, 45745)",
         services.fields, services.delivered());
    sent(83,
         "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
         "BG_TS_DTVSVLIB_STREAM_INFO(-724315439, 2, [BG_TS_DTVSVLIB_SERVICE_INFO(-505224220, 5, "
         "\"First\"), BG_TS_DTVSVLIB_SERVICE_INFO(16909060, 3, \"Sec\")]), 3301163713L, 45745)",
         services.fields, services.delivered());
    sent(75,
         "onEvDtvsvServiceInfoNotify BG_EV_DTVSV_SERVICE_INFO_NOTIFY(65244, "
         "BG_TS_DTVSVLIB_STREAM_INFO(-724315439, 2, [BG_TS_DTVSVLIB_SERVICE_INFO(-505224220, 5, "
         "\"First\"), BG_TS_DTVSVLIB_SERVICE_INFO(131844, 0, \"\")]), 3301163713L, 45745)",
         services.fields, services.delivered());
}

TEST_F(Services, AnyLengthIsSafe) {
    for (size_t count = 0; count < 440; ++count) {
        std::vector<uint8_t> bytes = services.record.bytes();
        bytes.resize(count, 0xEE);
        if (count > 16) {
            bytes[16] = 8;
        }
        ASSERT_EQ(deliver(services.id, bytes), 0) << count;
    }
    EXPECT_EQ(callbacks->take().size(), 440U);
    EXPECT_EQ(output->take(), "");
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(Services, LongerRecordsAreTaken) {
    std::vector<uint8_t> bytes = services.record.bytes();
    bytes.resize(500, 0xEE);
    expect(services, bytes, 500, 0, services.callback,
           "START |recv_size = 500\n" + services.fields + services.delivered());
}

/// With one frame of its own, or one by one where that cannot be had.
TEST_F(Services, LetsGoWhatItMade) {
    int deleted = StrictJni::calls("DeleteLocalRef");
    int popped = StrictJni::calls("PopLocalFrame");
    EXPECT_EQ(deliver(services.id, services.record.bytes()), 0);
    EXPECT_EQ(StrictJni::calls("DeleteLocalRef") - deleted, 0);
    EXPECT_EQ(StrictJni::calls("PopLocalFrame") - popped, 2) << "its own and the event's";
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        deleted = StrictJni::calls("DeleteLocalRef");
        popped = StrictJni::calls("PopLocalFrame");
        FailJni fails("PushLocalFrame", 1, leaves);
        EXPECT_EQ(deliver(services.id, services.record.bytes()), 0);
        EXPECT_EQ(StrictJni::calls("DeleteLocalRef") - deleted, 7);
        EXPECT_EQ(StrictJni::calls("PopLocalFrame") - popped, 1) << "the event's";
    }
}

} // namespace
