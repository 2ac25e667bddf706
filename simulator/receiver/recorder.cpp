#include "receiver/recorder.h"

#include "receiver/station_records.h"
#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/status_records.h"
#include "service/service.h"

#include <algorithm>
#include <chrono>
#include <cstring>

namespace simulator {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds kPeriod{1};
constexpr milliseconds kClosing{80};    ///< to write the end of a recording
constexpr seconds kMediumLength{36000}; ///< the recordings that fit on an empty medium

/// The values of rec_status.
enum RecordingStatus : uint32_t {
    kStopped = 0,
    kRecording = 1,
};

void notifyStatus(Service& service, uint16_t handle, const Station& station,
                  RecordingStatus status) {
    auto notify = stationRecord<TS_REC_STATUS_NOTIFY>(handle, station);
    notify.rec_status = status;
    service.send(event_id::kRecStatusNotify, notify);
}

void notifyProgress(Service& service, Session& session, uint64_t number) {
    if (!session.recording || session.recording->number != number) {
        return;
    }
    const auto passed =
        std::chrono::duration_cast<seconds>(service.now() - session.recording->begun);
    auto notify = stationRecord<TS_REC_INFO_NOTIFY>(session.handle, *session.station);
    notify.rec_time = static_cast<uint32_t>(passed.count());
    // Percent of the medium that is left.
    const auto left = std::max(kMediumLength - passed, seconds{0});
    notify.rec_cap = static_cast<uint8_t>(left.count() * 100 / kMediumLength.count());
    service.send(event_id::kRecInfoNotify, notify);
    service.later(session, kPeriod,
                  [&service, number](Session& now) { notifyProgress(service, now, number); });
}

std::string titleOf(const TS_TERMINATE_REC_REQ& request) {
    const size_t room = std::min<size_t>(request.title_size, sizeof request.title_name);
    return {request.title_name, strnlen(request.title_name, room)};
}

} // namespace

Answer startRecording(Service& service, Session& session, const Request& request) {
    Answer answer;
    if (session.station != nullptr) {
        answer.reply.physical_channel = static_cast<uint32_t>(session.station->physical_channel);
        answer.reply.service_no = static_cast<uint16_t>(session.station->service_no);
    }
    const uint8_t medium = request.as<TS_ONE_VALUE_REQ>().value;
    if (medium >= Recordings::kMedia) {
        answer.reply.result = kNoSuchThing;
    } else if (session.activity != Activity::kReceiving || session.recording) {
        answer.reply.result = kNotNow;
    } else {
        const uint64_t number = ++session.recordings;
        session.recording = RecordingUnderWay{medium, service.now(), number};
        answer.then = [&service, number, station = session.station](Session& now) {
            notifyStatus(service, now.handle, *station, kRecording);
            notifyProgress(service, now, number);
        };
    }
    return answer;
}

Answer terminateRecording(Service& service, Session& session, const Request& request) {
    if (!session.recording) {
        return answerWith(kNotNow);
    }
    const auto& wanted = request.as<TS_TERMINATE_REC_REQ>();
    const RecordingUnderWay recording = *session.recording;
    session.recording.reset();
    Answer answer;
    answer.duration = kClosing;
    if (wanted.save_data != 0) {
        answer.reply.program_no =
            service.recordings().add(recording.medium, titleOf(wanted),
                                     service.now() - recording.begun, recording.damaged_at);
        answer.reply.object_no = 1;
    }
    answer.then = [&service, station = session.station](Session& now) {
        notifyStatus(service, now.handle, *station, kStopped);
    };
    return answer;
}

} // namespace simulator
