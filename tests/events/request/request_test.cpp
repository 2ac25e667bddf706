// What every request has in common: its record, its objects, its lines and its failures.
#include "events/request/request_cases.h"

namespace {

using namespace events;
using harness::deliver;
using harness::EventThread;
using harness::FailJni;
using harness::LogRecorder;
using harness::StrictJni;

class Request : public EveryEvent {};
INSTANTIATE_TEST_SUITE_P(Event, Request, testing::ValuesIn(requestCases()), nameOf);

TEST_P(Request, IsDelivered) {
    isDelivered();
}

TEST_P(Request, OneByteShortOrLongIsRefused) {
    oneByteShortOrLong();
}

TEST_P(Request, AnyLengthIsSafe) {
    anyLengthIsSafe();
}

TEST_P(Request, ObjectThatCannotBeBuilt) {
    constructionFails(FailJni::Leaves::exception);
    constructionFails(FailJni::Leaves::nothing);
}

TEST_P(Request, TextThatCannotBeMade) {
    textFails(FailJni::Leaves::exception);
    textFails(FailJni::Leaves::nothing);
}

TEST_P(Request, CallbackThatThrowsWasCalled) {
    callbackThrows();
}

class RequestArrays : public EventTest {};

TEST_F(RequestArrays, OfABlockToWrite) {
    const Case& of = writeNvramCase();
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("NewByteArray", 0, leaves);
        expectRefused(of, of.record, of.fields);
        EXPECT_TRUE(fail.fired());
    }
    expectStillDelivered(of);
}

TEST_F(RequestArrays, OfALinksAffiliations) {
    const Case& of = enrolTvlinkCase();
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        FailJni fail("NewByteArray", 0, leaves);
        expectRefused(of, of.record, of.fields + "DEBUG |affiliation_id is NULL\n");
        EXPECT_TRUE(fail.fired());
    }
    expectStillDelivered(of);
}

class RequestReferences : public EventTest {};

/// Objects, texts and arrays are released one by one when the callback has returned.
TEST_F(RequestReferences, AreDeleted) {
    struct Row {
        const Case& of;
        int made;
    };
    for (const Row& row : {Row{permissionCase(), 2}, Row{authCase(), 1}, Row{writeNvramCase(), 4},
                           Row{readNvramCase(), 2}, Row{startFepCase(), 3}, Row{mailCase(), 5},
                           Row{phonebookCase(), 6}, Row{callCase(), 3}, Row{scheduleCase(), 5},
                           Row{browserCase(), 4}, Row{savePictureCase(), 4},
                           Row{startTvlinkCase(), 4}, Row{enrolTvlinkCase(), 7}}) {
        SCOPED_TRACE(row.of.name);
        int before = StrictJni::calls("DeleteLocalRef");
        EXPECT_EQ(deliver(row.of.id, row.of.record.bytes()), 0);
        EXPECT_EQ(StrictJni::calls("DeleteLocalRef") - before, row.made);
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
}

/// Failed and delivered requests in a row, on one thread that the bridge attached.
TEST_F(RequestReferences, NoneRemains) {
    const std::vector<Case> all = requestCases();
    log.reset();
    dtv::setLogSink(nullptr);
    dtv::setLogLevelMask(0);
    StrictJni::resetPeakLocals();
    int wrong = 0;
    int most_alive = 0;
    EventThread thread;
    thread.run([&] {
        for (int round = 0; round < 100; ++round) {
            for (const Case& of : all) {
                {
                    FailJni fail("NewObjectV",
                                 static_cast<int>(static_cast<size_t>(round) % of.built.size()),
                                 round == 50 ? FailJni::Leaves::exception
                                             : FailJni::Leaves::nothing);
                    wrong += deliver(of.id, of.record.bytes()) != 1;
                }
                most_alive = std::max(most_alive, StrictJni::liveLocals());
                wrong += deliver(of.id, of.record.bytes()) != 0;
                most_alive = std::max(most_alive, StrictJni::liveLocals());
            }
        }
        EXPECT_LE(StrictJni::peakLocals(), 256);
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(most_alive, 0);
    EXPECT_EQ(callbacks->take().size(), 1300U);
    output->take();
    log = LogRecorder::install();
}

class RequestWidening : public EventTest {};

TEST_F(RequestWidening, SmallestAndGreatestValues) {
    const Case& permission = permissionCase();
    expectDelivered(permission, Record(12).fill(0, 12, 0xFF),
                    "onEvDtvsvBmlPermissionReq BG_EV_DTVSV_BML_PERMISSION_REQ(65535, "
                    "BG_TS_DTVSVLIB_PERMISSION_REQ(255, -1))",
                    "DEBUG |handle = 65535\n"
                    "DEBUG |PERMISSION_REQ : permit_type = 255, task_id = -1\n" +
                        permission.delivered());
    expectDelivered(permission, Record(12).fill(0, 12, 0),
                    "onEvDtvsvBmlPermissionReq BG_EV_DTVSV_BML_PERMISSION_REQ(0, "
                    "BG_TS_DTVSVLIB_PERMISSION_REQ(0, 0))",
                    "DEBUG |handle = 0\n"
                    "DEBUG |PERMISSION_REQ : permit_type = 0, task_id = 0\n" +
                        permission.delivered());
    const Case& read = readNvramCase();
    expectDelivered(read, Record(8).fill(0, 8, 0xFF),
                    "onEvDtvsvBmlReadNvramReq BG_EV_DTVSV_BML_READ_NVRAM_REQ(65535, "
                    "BG_TS_DTVSVLIB_READ_NVRAM_REQ(255, 65535, 255))",
                    "DEBUG |handle = 65535\n"
                    "DEBUG |READ_NVRAM_REQ : affiliation_id = 255, network_id = 65535, block_no = "
                    "255\n" +
                        read.delivered());
}

TEST_F(RequestWidening, NoRecordAtAll) {
    const Case& write = writeNvramCase();
    EXPECT_EQ(dtv::deliverEvent(write.id, nullptr, 116), 1);
    EXPECT_TRACE(log->takeOf(write.handler), "");
    EXPECT_EQ(output->take(), "");
}

TEST_F(RequestWidening, FieldsSentInPartAreLoggedAsSent) {
    const Case& schedule = scheduleCase();
    expect(schedule, schedule.record.bytes(), 519, 1, "",
           "START\n"
           "DEBUG |handle = 65244\n"
           "DEBUG |BML_TINME : date_year = 33025, date_month = 33282, date_day = 33539, date_dow = "
           "33796, date_hour = 34053, date_min = 34310, date_sec = 34567\n"
           "DEBUG |SCHEDULE_REQ : length = 5, title = |Entry|\n"
           "DEBUG |SCHEDULE_REQ : length = 7, text = |What it|\n"
           "DEBUG |SCHEDULE_REQ : alarm_flag = 0\n"
           "ERROR |recv_size err!, recv_size = 519\n");
    const Case& auth = authCase();
    expect(auth, auth.record.bytes(), -8, 1, "",
           "START |recv_size = -8\n"
           "DEBUG |handle = 0, task_id = 0\n"
           "DEBUG |recv_size err!, recv_size = -8\n");
    const Case& enrol = enrolTvlinkCase();
    expect(enrol, enrol.record.bytes(), 949, 1, "",
           "START\n"
           "DEBUG |handle = 65244\n"
           "DEBUG |ENROL_TVLINK_REQ : title = |Link|, uri = |http://link/|, description = |Where "
           "it leads|, cpro_bmtype = 161, network_id = 0, service_id = 0\n"
           "DEBUG |EXPIRE_DATE : date_year = 7, date_month = 38406, date_day = 38149, date_dow = "
           "37892, date_hour = 37635, date_min = 37378, date_sec = 37121\n"
           "DEBUG |recv_size err!, recv_size = 949\n");
}

} // namespace
