// A Java side that lacks a class: the events that need it fail, and only they.
#include "events/programme/programme_cases.h"

namespace {

using namespace events;
using harness::Product;

class MissingClass : public EventTest {
protected:
    void SetUp() override { records_callbacks = false; }

    void loadWithout(const std::vector<std::string>& hidden, bool with_callbacks = true) {
        ASSERT_EQ(Product::loadWithout(hidden), "");
        if (with_callbacks) {
            callbacks.emplace();
        }
        EventTest::SetUp();
    }
};

TEST_F(MissingClass, ServiceOfAList) {
    ASSERT_NO_FATAL_FAILURE(
        loadWithout({"tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SERVICE_INFO"}));
    const Case& services = servicesCase();
    expectRefused(services, services.record, services.fields + "DEBUG |ERROR find class\n");
    // The count is checked before the class, and the class before anything is made.
    expectRefused(services, Record(services.record).u8(16, 9),
                  "DEBUG |handle = 65244\n"
                  "DEBUG |STREAM_INFO ts_id = -724315439, svc_cnt = 9\n"
                  "DEBUG |ERROR svc_cnt is over count\n");
    expectRefused(services, Record(services.record).u8(16, 0),
                  "DEBUG |handle = 65244\n"
                  "DEBUG |STREAM_INFO ts_id = -724315439, svc_cnt = 0\n"
                  "DEBUG |ERROR find class\n");
    expectStillDelivered(networkCase());
}

TEST_F(MissingClass, ProgrammeOfAGuide) {
    ASSERT_NO_FATAL_FAILURE(loadWithout({"tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PRG_INFO"}));
    const Case& guide = guideCase();
    expectRefused(guide, guide.record,
                  guide.fields + "NEW 147 80\nNEW 172 105\nNEW 148 81\nNEW 172 105\nNEWFAIL 159 0\n"
                                 "DEBUG |CallMethod NG, ret = 1\n");
    expectStillDelivered(servicesCase());
}

TEST_F(MissingClass, NetworkOfTwoEvents) {
    ASSERT_NO_FATAL_FAILURE(
        loadWithout({"tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_NETWORK_INFO"}));
    for (const Case& of : {networkCase(), scanCase()}) {
        expectRefused(of, of.record, of.fields + "NEWFAIL 155 0\nDEBUG |CallMethod NG, ret = 1\n");
    }
    expectStillDelivered(servicesCase());
}

/// The callback recorder itself needs all event classes, so it is not used here.
TEST_F(MissingClass, Events) {
    ASSERT_NO_FATAL_FAILURE(loadWithout(
        {"tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY",
         "tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY"},
        false));
    const Case& search = terminateSearchCase();
    expectRefused(search, search.record,
                  "NEW 140 73\nNEWFAIL 103 0\nDEBUG |CallMethod NG, ret = 1\n");
    const Case& guide = guideCase();
    std::string built;
    for (size_t i = 0; i + 1 < guide.built.size(); ++i) {
        built += "NEW " + guide.built[i] + "\n";
    }
    expectRefused(guide, guide.record,
                  guide.fields + built + "NEWFAIL 96 0\nDEBUG |CallMethod NG, ret = 1\n");
    expectStillDelivered(terminateScanCase());
}

TEST_F(MissingClass, Callbacks) {
    ASSERT_NO_FATAL_FAILURE(loadWithout({"tenrik.service.dtvserver.BGCallBack"}, false));
    std::vector<Case> all = streamCases();
    all.insert(all.end(), {networkCase(), scanCase(), servicesCase(), guideCase()});
    for (const Case& of : all) {
        SCOPED_TRACE(of.name);
        std::string built;
        for (const std::string& rows : of.built) {
            built += "NEW " + rows + "\n";
        }
        expectRefused(of, of.record,
                      of.fields + built + "NEWFAIL " + std::to_string(of.callback_row) +
                          " 0\nDEBUG |CallMethod NG, ret = 1\n");
    }
}

} // namespace
