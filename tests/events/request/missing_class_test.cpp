// Requests on a Java side that lacks a class.
#include "events/request/request_cases.h"

namespace {

using namespace events;
using harness::Product;

class MissingClass : public EventTest {
protected:
    void SetUp() override { records_callbacks = false; }

    void loadWithout(const std::vector<std::string>& hidden, bool with_callbacks) {
        ASSERT_EQ(Product::loadWithout(hidden), "");
        if (with_callbacks) {
            callbacks.emplace();
        }
        EventTest::SetUp();
    }
};

TEST_F(MissingClass, Values) {
    ASSERT_NO_FATAL_FAILURE(loadWithout({"tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CALL_REQ",
                                         "tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_TIME"},
                                        true));
    const Case& call = callCase();
    expectRefused(call, call.record,
                  call.fields + "NEWFAIL 142 0\nDEBUG |CallMethod NG, ret = 1\n");
    const Case& schedule = scheduleCase();
    expectRefused(schedule, schedule.record,
                  schedule.fields + "NEWFAIL 139 0\nERROR |CallMethod NG, ret = 1\n");
    const Case& enrol = enrolTvlinkCase();
    expectRefused(enrol, enrol.record,
                  enrol.fields + "NEWFAIL 139 0\nDEBUG |CallMethod NG, ret = 1\n");
    expectStillDelivered(phonebookCase());
}

/// The callback recorder itself needs all event classes, so it is not used here.
TEST_F(MissingClass, Events) {
    ASSERT_NO_FATAL_FAILURE(
        loadWithout({"tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_AUTH_REQ",
                     "tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_MAIL_REQ"},
                    false));
    const Case& auth = authCase();
    expectRefused(auth, auth.record, auth.fields + "NEWFAIL 68 0\nDEBUG |CallMethod NG, ret = 1\n");
    const Case& mail = mailCase();
    expectRefused(mail, mail.record,
                  mail.fields + "NEW 154 87\nNEWFAIL 72 0\nERROR |CallMethod NG, ret = 1\n");
    expectStillDelivered(phonebookCase());
}

/// Without a callback the row is empty, and an empty row is treated as a constructor's.
TEST_F(MissingClass, Callbacks) {
    ASSERT_NO_FATAL_FAILURE(loadWithout({"tenrik.service.dtvserver.BGCallBack"}, false));
    for (const Case& of : requestCases()) {
        SCOPED_TRACE(of.name);
        std::string built;
        for (const std::string& rows : of.built) {
            built += "NEW " + rows + "\n";
        }
        bool is_auth = of.id == 0x10000043;
        expectRefused(of, of.record,
                      of.fields + built + "NEWFAIL " + std::to_string(of.callback_row) + " 0\n" +
                          (is_auth ? "DEBUG |ERROR CallMethod\n"
                                   : std::string(of.call_level) + " |CallMethod NG, ret = 1\n"));
    }
}

} // namespace
