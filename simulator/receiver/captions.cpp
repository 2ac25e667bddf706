#include "receiver/captions.h"

#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/programme_records.h"
#include "records/status_records.h"
#include "service/planes.h"
#include "service/service.h"

namespace simulator {
namespace {

constexpr uint8_t kLastLanguage = 8;
constexpr uint8_t kLanguages = 1; ///< of every programme here

void notifyState(Service& service, const Session& session) {
    TS_CHANGE_STATUS_NOTIFY status{};
    status.handle = session.handle;
    status.change_status = static_cast<uint8_t>(session.captions);
    service.send(event_id::kCapStatusNotify, status);
}

} // namespace

Answer controlCaptions(Service& service, Session& session, const Request& request) {
    const auto& control = request.as<TS_CONTROL_CAP_REQ>();
    const uint8_t type = control.cap_control_type;
    if (!isControlType(type) || control.cap_lang > kLastLanguage) {
        return answerWith(kNoSuchThing);
    }
    const std::optional<Running> state = controlled(session.captions, type);
    if (!session.presents() || !state) {
        return answerWith(kNotNow);
    }
    if (!storeSurfaces(session, request, {kCaptions}) && session.surfaces[kCaptions] == nullptr &&
        type != kTurnOff) {
        return answerWith(kNoSuchThing);
    }
    if (type == kUnchanged) {
        return {};
    }
    session.captions = *state;
    Answer answer;
    answer.then = [&service](Session& now) { notifyState(service, now); };
    return answer;
}

Answer changeCaptionLanguage(Service& service, Session& session, const Request& request) {
    const uint8_t language = request.as<TS_ONE_VALUE_REQ>().value;
    if (language > kLastLanguage) {
        return answerWith(kNoSuchThing);
    }
    if (!session.presents()) {
        return answerWith(kNotNow);
    }
    Answer answer;
    answer.then = [&service, language](Session& now) {
        TS_GET_CAPTION_DATA_NOTIFY captions{};
        captions.handle = now.handle;
        captions.valid_lang_num = kLanguages;
        captions.cap_lang = language;
        service.send(event_id::kGetCaptionDataNotify, captions);
    };
    return answer;
}

void beginCaptions(Service& service, Session& session) {
    if (session.first_component.captions) {
        session.captions = Running::kOn;
        notifyState(service, session);
    }
}

void endCaptions(Service& service, Session& session) {
    if (session.captions != Running::kOff) {
        session.captions = Running::kOff;
        notifyState(service, session);
    }
}

} // namespace simulator
