#include "desk_client.h"

#include "handlers.h"
#include "messages/command_replies.h"
#include "records/catalogue.h"
#include "records/programme_records.h"
#include "records/status_records.h"
#include "service/session.h"

#include <gui/Surface.h>

#include <set>

namespace {

using namespace simulator;
using android::sp;
using android::Surface;

class PresentationTest : public SimulatorTest {
protected:
    /// References to one new surface for each requested plane.
    static TS_DTVSV_SP surfaces(int count) {
        TS_DTVSV_SP references;
        for (; references.surface_count < count; ++references.surface_count) {
            references.surface[references.surface_count] = new Surface;
        }
        return references;
    }

    /// The number of references to a surface besides the test's own.
    static int holders(const sp<Surface>& surface) { return surface->getStrongCount() - 1; }

    template <class Record>
    static Record recordOf(int handle) {
        Record record{};
        record.handle = static_cast<uint16_t>(handle);
        return record;
    }

    static TS_CONTROL_CAP_REQ captionControl(int handle, int type) {
        auto record = recordOf<TS_CONTROL_CAP_REQ>(handle);
        record.cap_control_type = static_cast<uint8_t>(type);
        return record;
    }

    int captionStatus() {
        return expectLater(event_id::kCapStatusNotify).as<TS_CHANGE_STATUS_NOTIFY>().change_status;
    }
};

TEST_F(PresentationTest, AnswersEveryCommand) {
    std::set<int> without_event;
    for (int command = command_id::kCreate + 1; command <= command_id::kMovePausePosition;
         ++command) {
        const CommandReply* row = findReply(command);
        if (command == 0x10000008) {
            EXPECT_EQ(nullptr, row);
            continue;
        }
        ASSERT_NE(nullptr, row) << std::hex << command;
        EXPECT_NE(nullptr, findHandler(command)) << std::hex << command;
        EXPECT_LE(2U, catalogue::find(command)->record->size);
        if (row->form == ReplyForm::kNone) {
            without_event.insert(command);
        } else {
            EXPECT_LE(event_id::kReleaseReply, row->event_id) << std::hex << command;
        }
    }
    // The answers to the browser's requests, and keys.
    EXPECT_EQ(14U, without_event.size());
    EXPECT_EQ(command_id::kBMLKeyEventNotify, *without_event.begin());
    EXPECT_EQ(command_id::kBMLEnrolTvlinkReply, *without_event.rbegin());
    for (int exchange = command_id::kRelease_Sync; exchange <= command_id::kTerminatePlay_Sync;
         ++exchange) {
        EXPECT_NE(nullptr, findSynchronousReply(exchange)) << std::hex << exchange;
        EXPECT_EQ(nullptr, findReply(exchange)) << std::hex << exchange;
    }
}

TEST_F(PresentationTest, KeepsASurfaceUntilItsPlaneIsReleased) {
    const int handle = create();
    const sp<Surface> surface = new Surface;
    {
        TS_DTVSV_SP references;
        references.surface[references.surface_count++] = surface;
        EXPECT_EQ(
            0, send(command_id::kSetCapDisplay, recordOf<TS_CAP_DISPLAY_REQ>(handle), &references));
    }
    EXPECT_EQ(kDone, resultOf(event_id::kSetCapDisplayReply, handle));
    EXPECT_EQ(1, holders(surface));

    EXPECT_EQ(0, send(command_id::kReleaseDisplay, handle, kVideo));
    EXPECT_EQ(kNotNow, resultOf(event_id::kReleaseDisplayReply, handle));
    EXPECT_EQ(0, send(command_id::kReleaseDisplay, handle, 3));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kReleaseDisplayReply, handle));
    EXPECT_EQ(1, holders(surface));

    EXPECT_EQ(0, send(command_id::kReleaseDisplay, handle, kCaptions));
    const auto released = expectNext(event_id::kReleaseDisplayReply).as<TS_RELEASE_DISPLAY_REPLY>();
    EXPECT_EQ(kDone, released.result);
    EXPECT_EQ(kCaptions, released.drawing_destination);
    EXPECT_EQ(0, holders(surface));
    EXPECT_EQ(0, send(command_id::kReleaseDisplay, handle, kCaptions));
    EXPECT_EQ(kNotNow, resultOf(event_id::kReleaseDisplayReply, handle));
}

TEST_F(PresentationTest, ReleasesAllSurfacesWithTheSession) {
    const int handle = create();
    TS_DTVSV_SP references = surfaces(3);
    EXPECT_EQ(0,
              send(command_id::kSetDisplayAll, recordOf<TS_DISPLAY_ALL_REQ>(handle), &references));
    EXPECT_EQ(kDone, resultOf(event_id::kSetDisplayAllReply, handle));
    const auto assigned =
        expectNext(event_id::kAssignVideoAreaNotify).as<TS_ASSIGN_VIDEO_AREA_NOTIFY>();
    EXPECT_EQ(kVideo, assigned.drawing_destination);
    EXPECT_EQ(0U, assigned.result);
    EXPECT_EQ(1, holders(references.surface[0]));
    EXPECT_EQ(1, holders(references.surface[1]));
    EXPECT_EQ(1, holders(references.surface[2]));
    EXPECT_EQ(kDone, exchange(command_id::kRelease_Sync, handle).return_value);
    EXPECT_EQ(0, holders(references.surface[0]));
    EXPECT_EQ(0, holders(references.surface[1]));
    EXPECT_EQ(0, holders(references.surface[2]));
}

TEST_F(PresentationTest, ReplacesTheOldSurfaceByANewOne) {
    const int handle = create();
    TS_DTVSV_SP first = surfaces(1);
    TS_DTVSV_SP second = surfaces(1);
    EXPECT_EQ(0,
              send(command_id::kSetScreenDisplay, recordOf<TS_SCREEN_DISPLAY_REQ>(handle), &first));
    EXPECT_EQ(
        0, send(command_id::kSetScreenDisplay, recordOf<TS_SCREEN_DISPLAY_REQ>(handle), &second));
    EXPECT_EQ(kDone, resultOf(event_id::kSetScreenDisplayReply, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kSetScreenDisplayReply, handle));
    EXPECT_EQ(0, holders(first.surface[0]));
    EXPECT_EQ(1, holders(second.surface[0]));
}

TEST_F(PresentationTest, RefusesPlanesWithoutASurface) {
    const int handle = create();
    TS_DTVSV_SP empty_slot;
    empty_slot.surface_count = 1;
    EXPECT_EQ(0,
              send(command_id::kSetBMLDisplay, recordOf<TS_BML_DISPLAY_REQ>(handle), &empty_slot));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSetBmlDisplayReply, handle));
    EXPECT_EQ(0, send(command_id::kSetBMLDisplay, recordOf<TS_BML_DISPLAY_REQ>(handle)));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSetBmlDisplayReply, handle));
    TS_DTVSV_SP two = surfaces(2);
    EXPECT_EQ(0, send(command_id::kSetDisplayAll, recordOf<TS_DISPLAY_ALL_REQ>(handle), &two));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSetDisplayAllReply, handle));
    EXPECT_EQ(0, holders(two.surface[0])) << "all or none";
}

TEST_F(PresentationTest, ControlsThePictureOnceItHasAPlane) {
    const int handle = create();
    auto mode = recordOf<TS_DISPLAY_MODE_REQ>(handle);
    mode.screen_mode = 3;
    EXPECT_EQ(0, send(command_id::kControlDisplayModeReq, mode));
    EXPECT_EQ(kNotNow, resultOf(event_id::kControlDisplayModeReply, handle));
    EXPECT_EQ(0, send(command_id::kControlScreenDisplay, handle, 1));
    EXPECT_EQ(kNotNow, resultOf(event_id::kControlScreenDisplayReply, handle));
    TS_DTVSV_SP references = surfaces(1);
    EXPECT_EQ(0, send(command_id::kSetScreenDisplay, recordOf<TS_SCREEN_DISPLAY_REQ>(handle),
                      &references));
    EXPECT_EQ(0, send(command_id::kControlDisplayModeReq, mode));
    EXPECT_EQ(kDone, resultOf(event_id::kControlDisplayModeReply, handle));
    EXPECT_EQ(0, send(command_id::kControlScreenDisplay, handle, 1));
    EXPECT_EQ(kDone, resultOf(event_id::kControlScreenDisplayReply, handle));
    EXPECT_EQ(0, send(command_id::kControlScreenDisplay, handle, 2));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kControlScreenDisplayReply, handle));
    mode.screen_rotate = 4;
    EXPECT_EQ(0, send(command_id::kControlDisplayModeReq, mode));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kControlDisplayModeReply, handle));
}

TEST_F(PresentationTest, ControlsStreamsOnlyWhileThereAreSome) {
    struct Case {
        int command;
        int reply;
        int good;
        int bad;
    };
    const Case cases[] = {
        {command_id::kControlDecodeScreen, event_id::kControlDecodeScreenReply, 1, 2},
        {command_id::kControlDecodeAudio, event_id::kControlDecodeAudioReply, 0, 255},
        {command_id::kChangeAudioComponent, event_id::kChangeAudioComponentReply, 1, 2},
        {command_id::kChangeSoundDualMono, event_id::kChangeSoundDualMonoReply, 4, 5},
        {command_id::kChangeCapLang, event_id::kChangeCapLangReply, 8, 9},
    };
    const int idle = create();
    const int receiving = createReceiving();
    for (const Case& one : cases) {
        EXPECT_EQ(0, send(one.command, idle, one.good));
        EXPECT_EQ(kNotNow, resultOf(one.reply, idle)) << std::hex << one.command;
        EXPECT_EQ(0, send(one.command, receiving, one.good));
        EXPECT_EQ(kDone, resultOf(one.reply, receiving)) << std::hex << one.command;
        EXPECT_EQ(0, send(one.command, receiving, one.bad));
        EXPECT_EQ(kNoSuchThing, resultOf(one.reply, receiving)) << std::hex << one.command;
    }
    TS_ONE_VALUE_REQ on{};
    on.handle = static_cast<uint16_t>(receiving);
    on.value = 1;
    EXPECT_EQ(kDone, exchange(command_id::kControlDecodeScreen_Sync, on).return_value);
    on.handle = static_cast<uint16_t>(idle);
    EXPECT_EQ(kNotNow, exchange(command_id::kControlDecodeAudio_Sync, on).return_value);
}

TEST_F(PresentationTest, NotifiesAboutChangesOfTheSound) {
    const int handle = createReceiving();
    EXPECT_EQ(0, send(command_id::kChangeSoundDualMono, handle, 1));
    EXPECT_EQ(kDone, resultOf(event_id::kChangeSoundDualMonoReply, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kChangeAudioMainSubNotify, handle));
    EXPECT_EQ(0, send(command_id::kChangeAudioComponent, handle, 1));
    EXPECT_EQ(kDone, resultOf(event_id::kChangeAudioComponentReply, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kSelectAudioComponentNotify, handle));
}

TEST_F(PresentationTest, BoundsDelaysBySession) {
    const int handle = create(); // with 100 at most
    auto delay = recordOf<TS_SOUND_VIDEO_DELAY_REQ>(handle);
    delay.video_viltime = 100;
    delay.audio_viltime = 100;
    EXPECT_EQ(0, send(command_id::kSetSoundVideoDelay, delay));
    EXPECT_EQ(kDone, resultOf(event_id::kSetSoundVideoDelayReply, handle));
    delay.audio_viltime = -1;
    EXPECT_EQ(0, send(command_id::kSetSoundVideoDelay, delay));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSetSoundVideoDelayReply, handle));
    delay.audio_viltime = 0;
    delay.video_viltime = 101;
    EXPECT_EQ(0, send(command_id::kSetSoundVideoDelay, delay));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSetSoundVideoDelayReply, handle));
}

TEST_F(PresentationTest, PassesThroughTheStatesOfCaptions) {
    const int handle = createReceiving();
    TS_DTVSV_SP references = surfaces(1);
    enum : int {
        kOff,
        kOn,
        kSuspend,
        kResume,
        kRestart,
        kUnchangedType = 255,
        kNone = -1
    };
    struct Case {
        int type;
        int result;
        int status;
    };
    const Case cases[] = {
        {kOff, kNotNow, kNone},    {kSuspend, kNotNow, kNone},
        {kResume, kNotNow, kNone}, {kRestart, kNotNow, kNone},
        {kOn, kDone, 1},           {kOn, kNotNow, kNone},
        {kSuspend, kDone, 2},      {kSuspend, kNotNow, kNone},
        {kResume, kDone, 1},       {kResume, kNotNow, kNone},
        {kRestart, kDone, 1},      {kUnchangedType, kDone, kNone},
        {5, kNoSuchThing, kNone},  {kOff, kDone, 0},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(0, send(command_id::kControlCap, captionControl(handle, one.type), &references));
        EXPECT_EQ(one.result, resultOf(event_id::kControlCapReply, handle)) << one.type;
        if (one.status != kNone) {
            EXPECT_EQ(one.status, captionStatus()) << one.type;
        }
    }
}

TEST_F(PresentationTest, ShowsCaptionsOnlyOnAPlane) {
    const int handle = createReceiving();
    TS_DTVSV_SP none;
    EXPECT_EQ(0, send(command_id::kControlCap, captionControl(handle, 1), &none));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kControlCapReply, handle));
    TS_DTVSV_SP references = surfaces(1);
    TS_COMMON_SYNC_REPLY reply{};
    int size = 0;
    TS_CONTROL_CAP_REQ on = captionControl(handle, 1);
    EXPECT_EQ(0, listener().sendEventToServer(command_id::kControlCap_Sync, &on, sizeof on,
                                              &references, &reply, &size));
    EXPECT_EQ(8, size);
    EXPECT_EQ(kDone, reply.return_value);
    EXPECT_EQ(1, holders(references.surface[0]));
    EXPECT_EQ(1, captionStatus());
    EXPECT_EQ(kDone, exchange(command_id::kTerminateBroadcastReceiving_Sync, handle).return_value);
    EXPECT_EQ(0, captionStatus()) << "captions end with the programme";
}

TEST_F(PresentationTest, BeginsReceptionWithTheFirstComponents) {
    const int handle = create();
    auto setting = recordOf<TS_COMPONENT_SETTING_REQ>(handle);
    setting.cap_start_type = 1;
    setting.bml_start_type = 1;
    TS_DTVSV_SP references = surfaces(3);
    EXPECT_EQ(0, send(command_id::kSetFirstComponent, setting, &references));
    EXPECT_EQ(kDone, resultOf(event_id::kSelectAudioComponentNotify, handle));
    EXPECT_EQ(1, holders(references.surface[2]));
    EXPECT_EQ(0, send(command_id::kStartBroadcastReceiving, serviceOf(handle, 40)));
    EXPECT_EQ(kDone, resultOf(event_id::kStartBroadcastReceivingReply, handle));
    EXPECT_EQ(1, captionStatus());
    EXPECT_EQ(1,
              expectNext(event_id::kBmlStatusNotify).as<TS_CHANGE_STATUS_NOTIFY>().change_status);
    setting.cap_start_type = 2;
    EXPECT_EQ(0, send(command_id::kSetFirstComponent, setting, &references));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSelectAudioComponentNotify, handle));
}

TEST_F(PresentationTest, LogsTheTunerWhenRequested) {
    const int handle = createReceiving();
    EXPECT_EQ(0, send(command_id::kGetTunerLogStatus, handle));
    EXPECT_EQ(
        2, expectLater(event_id::kTunerLogStatusReply).as<TS_TUNER_LOG_STATUS_REPLY>().log_status);
    EXPECT_EQ(0, send(command_id::kControlLNA, handle, 17));
    EXPECT_EQ(kDone, resultOf(event_id::kControlLNAReply, handle));
    EXPECT_EQ(0, send(command_id::kSetTunerLog, handle, 1));
    EXPECT_EQ(kDone, resultOf(event_id::kSetTunerLogReply, handle));
    const auto data =
        expectLater(event_id::kTunerSensitivityDataNotify).as<TS_TUNER_SENSITIVITY_DATA_NOTIFY>();
    EXPECT_EQ(handle, data.handle);
    EXPECT_EQ(20U, data.physical_channel);
    EXPECT_EQ(17U, data.lna_mode);
    EXPECT_EQ(0, send(command_id::kGetTunerLogStatus, handle));
    EXPECT_EQ(
        1, expectLater(event_id::kTunerLogStatusReply).as<TS_TUNER_LOG_STATUS_REPLY>().log_status);
    EXPECT_EQ(0, send(command_id::kSetTunerLog, handle, 3));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSetTunerLogReply, handle));
}

TEST_F(PresentationTest, NotifiesAboutFadesAndRecoveries) {
    const int handle = createReceiving();
    expectLater(event_id::kGoodSensNotify);
    const auto bad = expectLater(event_id::kBadSensNotify).as<TS_SENS_NOTIFY>();
    EXPECT_EQ(handle, bad.handle);
    EXPECT_EQ(1, bad.sensitivity_level);
    EXPECT_EQ(20U, expectLater(event_id::kGoodSensNotify).as<TS_SENS_NOTIFY>().physical_channel);
}

} // namespace
