#include "receiver/presentation.h"

#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/programme_records.h"
#include "records/status_records.h"
#include "service/planes.h"
#include "service/service.h"

#include <initializer_list>

namespace simulator {
namespace {

constexpr int kLastScreenMode = 3;
constexpr int kLastScreenRotate = 3;
constexpr int kLastAudioComponent = 1;
constexpr int kLastDualMono = 4;

enum TunerLog : uint8_t {
    kLogOn = 1,
    kLogOff = 2,
};

Answer setPlanes(Service& service, Session& session, const Request& request,
                 std::initializer_list<Plane> planes) {
    if (!storeSurfaces(session, request, planes)) {
        return answerWith(kNoSuchThing);
    }
    Answer answer;
    if (*planes.begin() == kVideo) {
        answer.then = [&service](Session& now) {
            TS_ASSIGN_VIDEO_AREA_NOTIFY assigned{};
            assigned.handle = now.handle;
            assigned.drawing_destination = kVideo;
            assigned.result = kDone;
            service.send(event_id::kAssignVideoAreaNotify, assigned);
        };
    }
    return answer;
}

/// The answer to a switch, 0 or 1, that is accepted when `possible`.
Answer answerSwitch(const Request& request, bool possible) {
    if (request.as<TS_ONE_VALUE_REQ>().value > 1) {
        return answerWith(kNoSuchThing);
    }
    return answerWith(possible ? kDone : kNotNow);
}

} // namespace

Answer setFirstComponent(Service&, Session& session, const Request& request) {
    const auto& setting = request.as<TS_COMPONENT_SETTING_REQ>();
    if (setting.cap_start_type > 1 || setting.bml_start_type > 1 ||
        setting.audio_component > kLastAudioComponent || setting.dualmono > kLastDualMono ||
        !storeSurfaces(session, request, {kVideo, kCaptions, kBml})) {
        return answerWith(kNoSuchThing);
    }
    session.first_component.captions = setting.cap_start_type == 1;
    session.first_component.bml = setting.bml_start_type == 1;
    return {};
}

Answer setDisplayAll(Service& service, Session& session, const Request& request) {
    return setPlanes(service, session, request, {kVideo, kCaptions, kBml});
}

Answer setScreenDisplay(Service& service, Session& session, const Request& request) {
    return setPlanes(service, session, request, {kVideo});
}

Answer setCapDisplay(Service& service, Session& session, const Request& request) {
    return setPlanes(service, session, request, {kCaptions});
}

Answer setBmlDisplay(Service& service, Session& session, const Request& request) {
    return setPlanes(service, session, request, {kBml});
}

Answer releaseDisplay(Service&, Session& session, const Request& request) {
    const uint8_t plane = request.as<TS_ONE_VALUE_REQ>().value;
    Answer answer;
    answer.reply.plane = plane;
    if (plane >= kPlanes) {
        answer.reply.result = kNoSuchThing;
    } else if (session.surfaces[plane] == nullptr) {
        answer.reply.result = kNotNow;
    } else {
        session.surfaces[plane].clear();
    }
    return answer;
}

Answer controlDisplayMode(Service&, Session& session, const Request& request) {
    const auto& mode = request.as<TS_DISPLAY_MODE_REQ>();
    if (mode.screen_mode > kLastScreenMode || mode.screen_rotate > kLastScreenRotate) {
        return answerWith(kNoSuchThing);
    }
    return answerWith(session.surfaces[kVideo] != nullptr ? kDone : kNotNow);
}

Answer controlScreenDisplay(Service&, Session& session, const Request& request) {
    return answerSwitch(request, session.surfaces[kVideo] != nullptr);
}

Answer controlDecode(Service&, Session& session, const Request& request) {
    return answerSwitch(request, session.presents());
}

Answer changeAudioComponent(Service& service, Session& session, const Request& request) {
    Answer answer = answerSwitch(request, session.presents());
    if (answer.reply.result == kDone) {
        answer.then = [&service](Session& now) {
            TS_SELECT_AUDIO_COMPONENT_NOTIFY selected{};
            selected.handle = now.handle;
            selected.result = kDone;
            service.send(event_id::kSelectAudioComponentNotify, selected);
        };
    }
    return answer;
}

Answer changeSoundDualMono(Service& service, Session& session, const Request& request) {
    if (request.as<TS_ONE_VALUE_REQ>().value > kLastDualMono) {
        return answerWith(kNoSuchThing);
    }
    if (!session.presents()) {
        return answerWith(kNotNow);
    }
    Answer answer;
    answer.then = [&service](Session& now) {
        TS_RESULT_NOTIFY changed{};
        changed.handle = now.handle;
        changed.result = kDone;
        service.send(event_id::kChangeAudioMainSubNotify, changed);
    };
    return answer;
}

Answer setSoundVideoDelay(Service&, Session& session, const Request& request) {
    const auto& delay = request.as<TS_SOUND_VIDEO_DELAY_REQ>();
    const bool bounded = delay.video_viltime <= session.max_delay_time &&
                         delay.audio_viltime >= 0 && delay.audio_viltime <= session.max_delay_time;
    return answerWith(bounded ? kDone : kNoSuchThing);
}

Answer controlLna(Service&, Session& session, const Request& request) {
    session.lna_mode = request.as<TS_ONE_VALUE_REQ>().value;
    return {};
}

Answer setTunerLog(Service&, Session& session, const Request& request) {
    const uint8_t value = request.as<TS_ONE_VALUE_REQ>().value;
    if (value != kLogOn && value != kLogOff) {
        return answerWith(kNoSuchThing);
    }
    session.tuner_log = value == kLogOn;
    return {};
}

Answer getTunerLogStatus(Service&, Session& session, const Request&) {
    Answer answer;
    answer.reply.log_status = session.tuner_log ? kLogOn : kLogOff;
    return answer;
}

} // namespace simulator
