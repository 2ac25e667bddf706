#include "desk_client.h"

#include "receiver/browser_requests.h"
#include "records/bml_records.h"
#include "records/status_records.h"
#include "service/session.h"

#include <gui/Surface.h>

namespace {

using namespace simulator;

class BrowserTest : public SimulatorTest {
protected:
    int control(int handle, int type, bool surface = true) {
        TS_CONTROL_BML_REQ record{};
        record.handle = static_cast<uint16_t>(handle);
        record.bml_control_type = static_cast<uint8_t>(type);
        TS_DTVSV_SP references;
        if (surface) {
            references.surface[references.surface_count++] = new android::Surface;
        }
        EXPECT_EQ(0, send(command_id::kControlBML, record, &references));
        return resultOf(event_id::kControlBmlReply, handle);
    }

    int startTvLink(int handle, int type, const std::string& url) {
        TS_START_TV_LINK_REQ record{};
        record.handle = static_cast<uint16_t>(handle);
        record.bml_control_type = static_cast<uint8_t>(type);
        std::memcpy(record.bookmark_url, url.data(), url.size());
        TS_DTVSV_SP references;
        references.surface[references.surface_count++] = new android::Surface;
        EXPECT_EQ(0, send(command_id::kBMLStartTvLinkReq, record, &references));
        const auto reply =
            expectLater(event_id::kBmlStartTvlinkReply).as<TS_BML_START_TVLINK_REPLY>();
        EXPECT_EQ(handle, reply.handle);
        return reply.result;
    }

    /// Answers one of the requests; 0 when the answer was taken.
    int answer(int handle, BrowserRequest request) {
        switch (request) {
        case BrowserRequest::kPermission: {
            TS_PERMISSION_REPLY_REQ record{};
            record.handle = static_cast<uint16_t>(handle);
            record.task_id = kPermissionTask;
            return send(command_id::kBMLPermissionReply, record);
        }
        case BrowserRequest::kAuth: {
            TS_AUTH_REPLY_REQ record{};
            record.handle = static_cast<uint16_t>(handle);
            record.task_id = kAuthTask;
            return send(command_id::kBMLAuthReply, record);
        }
        case BrowserRequest::kReadNvram: {
            TS_READ_NVRAM_REPLY_REQ record{};
            record.handle = static_cast<uint16_t>(handle);
            std::memcpy(record.ts_name, "テレビ机", 12);
            for (int index = 0; index < 64; ++index) {
                record.nvram_data[index] = static_cast<uint8_t>(128 + 5 * index);
            }
            return send(command_id::kBMLReadNvramReply, record);
        }
        case BrowserRequest::kFep: {
            TS_FEP_REPLY_REQ record{};
            record.handle = static_cast<uint16_t>(handle);
            return send(command_id::kBMLFepReply, record);
        }
        case BrowserRequest::kSavePicture: {
            TS_SAVE_PICTURE_REPLY_REQ record{};
            record.handle = static_cast<uint16_t>(handle);
            record.save_flag = 1;
            return send(command_id::kBMLSavePictureReply, record);
        }
        case BrowserRequest::kWriteNvram:
            return send(command_id::kBMLWriteNvramReply, handle, 0);
        case BrowserRequest::kMail:
            return send(command_id::kBMLMailReply, handle, 0);
        case BrowserRequest::kPhonebook:
            return send(command_id::kBMLPhonebookReply, handle, 0);
        case BrowserRequest::kCall:
            return send(command_id::kBMLCallReply, handle, 0);
        case BrowserRequest::kSchedule:
            return send(command_id::kBMLScheduleReply, handle, 0);
        case BrowserRequest::kBrowser:
            return send(command_id::kBMLBrowserReply, handle, 0);
        case BrowserRequest::kStartTvLink:
            return send(command_id::kBMLStartTvlinkReply, handle, 0);
        case BrowserRequest::kEnrolTvLink:
            return send(command_id::kBMLEnrolTvlinkReply, handle, 0);
        }
        return -1;
    }

    int status() {
        return expectLater(event_id::kBmlStatusNotify).as<TS_CHANGE_STATUS_NOTIFY>().change_status;
    }

    /// The next event, without those about the signal and other values that are notified
    /// repeatedly.
    Event expectNextOfBrowser(int event_id) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (std::chrono::steady_clock::now() < end) {
            const std::optional<Event> event = listener().next(std::chrono::seconds(5));
            if (event && (event->id < event_id::kCreateReply || event->id == event_id)) {
                EXPECT_EQ(event_id, event->id);
                return *event;
            }
        }
        ADD_FAILURE() << "event " << std::hex << event_id << " did not come";
        return {event_id, {0}};
    }

    struct Row {
        BrowserRequest request;
        int event;
        size_t size;
    };
    static constexpr Row kRows[] = {
        {BrowserRequest::kPermission, event_id::kBmlPermissionReq, 12},
        {BrowserRequest::kAuth, event_id::kBmlAuthReq, 8},
        {BrowserRequest::kWriteNvram, event_id::kBmlWriteNvramReq, 116},
        {BrowserRequest::kReadNvram, event_id::kBmlReadNvramReq, 8},
        {BrowserRequest::kFep, event_id::kBmlStartFepReq, 1940},
        {BrowserRequest::kMail, event_id::kBmlMailReq, 2530},
        {BrowserRequest::kPhonebook, event_id::kBmlPhonebookReq, 1310},
        {BrowserRequest::kCall, event_id::kBmlCallReq, 102},
        {BrowserRequest::kSchedule, event_id::kBmlScheduleReq, 1490},
        {BrowserRequest::kBrowser, event_id::kBmlBrowserReq, 2056},
        {BrowserRequest::kSavePicture, event_id::kBmlSavePictureReq, 1580},
        {BrowserRequest::kStartTvLink, event_id::kBmlStartTvlinkReq, 2056},
        {BrowserRequest::kEnrolTvLink, event_id::kBmlEnrolTvlinkReq, 960},
    };
};

TEST_F(BrowserTest, SendsThirteenRequestsAndWaitsForEachAnswer) {
    const int handle = createReceiving();
    EXPECT_EQ(kDone, control(handle, 1));
    EXPECT_EQ(1, status());
    const auto icon = expectLater(event_id::kBmlDispIconNotify).as<TS_BML_DISP_ICON_NOTIFY>();
    EXPECT_EQ(1, icon.disp_permit);
    for (const Row& row : kRows) {
        const Event event = expectNextOfBrowser(row.event);
        EXPECT_EQ(row.size, event.bytes.size()) << std::hex << row.event;
        EXPECT_EQ(handle, event.bytes.at(0));
        for (const Row& other : kRows) {
            if (other.request != row.request) {
                EXPECT_NE(0, answer(handle, other.request)) << "out of turn";
            }
        }
        EXPECT_EQ(0, answer(handle, row.request));
        EXPECT_NE(0, answer(handle, row.request)) << "twice";
        if (row.request == BrowserRequest::kSavePicture) {
            EXPECT_EQ(kDone, resultOf(event_id::kBmlSavePictureNotify, handle));
        }
    }
}

TEST_F(BrowserTest, WaitsAsLongAsNoAnswerComes) {
    const int handle = createReceiving();
    EXPECT_EQ(kDone, control(handle, 1));
    expectNextOfBrowser(event_id::kBmlPermissionReq);
    TS_PERMISSION_REPLY_REQ wrong_task{};
    wrong_task.handle = static_cast<uint16_t>(handle);
    wrong_task.task_id = kPermissionTask + 1;
    EXPECT_NE(0, send(command_id::kBMLPermissionReply, wrong_task));
    for (int notified = 0; notified < 5; ++notified) {
        expectNextOfBrowser(event_id::kReceiveSensitivityNotify);
    }
    EXPECT_EQ(0, answer(handle, BrowserRequest::kPermission));
    expectNextOfBrowser(event_id::kBmlAuthReq);
}

TEST_F(BrowserTest, ComparesABlockThatIsReadWithTheOneWritten) {
    const int handle = createReceiving();
    EXPECT_EQ(kDone, control(handle, 1));
    for (const bool written : {false, true, true}) {
        expectLater(event_id::kBmlPermissionReq);
        EXPECT_EQ(0, answer(handle, BrowserRequest::kPermission));
        expectLater(event_id::kBmlAuthReq);
        EXPECT_EQ(0, answer(handle, BrowserRequest::kAuth));
        expectLater(event_id::kBmlWriteNvramReq);
        EXPECT_EQ(0, send(command_id::kBMLWriteNvramReply, handle, written ? 0 : 1));
        expectLater(event_id::kBmlReadNvramReq);
        TS_READ_NVRAM_REPLY_REQ other{};
        other.handle = static_cast<uint16_t>(handle);
        std::memcpy(other.ts_name, "テレビ机", 12);
        other.nvram_data[63] = 1;
        EXPECT_EQ(written ? 1 : 0, send(command_id::kBMLReadNvramReply, other));
        if (written) {
            other.bml_end_type = 1; // it could not be read
            EXPECT_EQ(0, send(command_id::kBMLReadNvramReply, other));
        }
        EXPECT_EQ(0, send(command_id::kBMLRebootBrowserReq, handle));
        EXPECT_EQ(kDone, resultOf(event_id::kBmlRebootBrowserReply, handle));
    }
}

TEST_F(BrowserTest, FillsTheFieldsOfItsRecords) {
    const int handle = createReceiving();
    EXPECT_EQ(kDone, control(handle, 1));
    for (const Row& row : kRows) {
        const Event event = expectNextOfBrowser(row.event);
        if (row.request == BrowserRequest::kEnrolTvLink) {
            const auto enrol = event.as<TS_ENROL_TVLINK_REQ>();
            EXPECT_EQ(0, enrol.expire_date[0]) << "seconds";
            EXPECT_EQ(2026, enrol.expire_date[6]) << "year";
        }
        if (row.request == BrowserRequest::kSchedule) {
            EXPECT_EQ(2026, event.as<TS_SCHEDULE_REQ>().time.date_year);
        }
        if (row.request == BrowserRequest::kSavePicture) {
            const auto picture = event.as<TS_SAVE_PICTURE_REQ>();
            EXPECT_EQ(std::strlen(picture.filename), picture.filename_size);
        }
        EXPECT_EQ(0, answer(handle, row.request));
    }
}

TEST_F(BrowserTest, RunsOnlyWithAProgrammeAndAPlane) {
    const int idle = create();
    EXPECT_EQ(kNotNow, control(idle, 1));
    const int handle = createReceiving();
    EXPECT_EQ(kNoSuchThing, control(handle, 1, false));
    EXPECT_EQ(kNoSuchThing, control(handle, 5));
    EXPECT_EQ(kNotNow, control(handle, 0));
    EXPECT_EQ(kDone, control(handle, 1));
    EXPECT_EQ(kNotNow, control(handle, 1));
    EXPECT_EQ(kDone, control(handle, 255));
    EXPECT_EQ(kDone, control(handle, 0, false));
    EXPECT_EQ(0, send(command_id::kBMLRebootBrowserReq, handle));
    EXPECT_EQ(kNotNow, resultOf(event_id::kBmlRebootBrowserReply, handle));
}

TEST_F(BrowserTest, SendsNoRequestWhileSuspended) {
    const int handle = createReceiving();
    EXPECT_EQ(kDone, control(handle, 1));
    expectNextOfBrowser(event_id::kBmlPermissionReq);
    EXPECT_EQ(kDone, control(handle, 2));
    EXPECT_EQ(2, status());
    EXPECT_NE(0, send(command_id::kBMLKeyEventNotify,
                      TS_KEY_EVENT_REQ{static_cast<uint16_t>(handle), 1, 0, 0, 0}));
    EXPECT_EQ(0, answer(handle, BrowserRequest::kPermission));
    for (int notified = 0; notified < 3; ++notified) {
        expectNextOfBrowser(event_id::kReceiveSensitivityNotify);
    }
    EXPECT_EQ(kDone, control(handle, 3));
    EXPECT_EQ(1, status());
    expectNextOfBrowser(event_id::kBmlAuthReq);
    EXPECT_EQ(0, send(command_id::kBMLKeyEventNotify,
                      TS_KEY_EVENT_REQ{static_cast<uint16_t>(handle), 1, 0, 0, 0}));
}

TEST_F(BrowserTest, StartsFromTheBeginningWhenRebooted) {
    const int handle = createReceiving();
    EXPECT_EQ(kDone, control(handle, 1));
    expectNextOfBrowser(event_id::kBmlPermissionReq);
    EXPECT_EQ(0, answer(handle, BrowserRequest::kPermission));
    expectNextOfBrowser(event_id::kBmlAuthReq);
    EXPECT_EQ(0, send(command_id::kBMLRebootBrowserReq, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kBmlRebootBrowserReply, handle));
    expectNextOfBrowser(event_id::kBmlPermissionReq);
    EXPECT_NE(0, answer(handle, BrowserRequest::kAuth));
}

TEST_F(BrowserTest, EndsWithTheProgramme) {
    const int handle = createReceiving();
    EXPECT_EQ(kDone, control(handle, 1));
    EXPECT_EQ(1, status());
    for (const Row& row : kRows) {
        expectNextOfBrowser(row.event);
        if (row.request == BrowserRequest::kFep) {
            break;
        }
        EXPECT_EQ(0, answer(handle, row.request));
    }
    EXPECT_EQ(0, send(command_id::kTerminateBroadcastReceiving, handle));
    // The text that is being entered is no longer needed.
    EXPECT_EQ(handle, expectLater(event_id::kBmlEndFepNotify).as<TS_HANDLE_NOTIFY>().handle);
    EXPECT_EQ(0, status());
    EXPECT_NE(0, answer(handle, BrowserRequest::kFep));
}

TEST_F(BrowserTest, ShowsABookmarkedPageWithoutAProgramme) {
    const int handle = create();
    EXPECT_EQ(kNoSuchThing, startTvLink(handle, 1, ""));
    EXPECT_EQ(kNoSuchThing, startTvLink(handle, 2, "http://example.com/"));
    EXPECT_EQ(0, send(command_id::kBMLEndTvLinkReq, handle));
    EXPECT_EQ(kNotNow, resultOf(event_id::kBmlEndTvlinkReply, handle));
    EXPECT_EQ(kDone, startTvLink(handle, 1, "http://example.com/"));
    EXPECT_EQ(1, status());
    expectNextOfBrowser(event_id::kBmlPermissionReq);
    EXPECT_EQ(kNotNow, startTvLink(handle, 1, "http://example.com/"));
    EXPECT_EQ(kDone, exchange(command_id::kBMLEndTvLink_Sync, handle).return_value);
    EXPECT_EQ(0, status());
    EXPECT_EQ(255, startTvLink(99, 1, "http://example.com/")) << "no such session, in one byte";
}

} // namespace
