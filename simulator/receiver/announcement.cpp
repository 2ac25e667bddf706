#include "receiver/announcement.h"

#include "receiver/browser.h"
#include "receiver/captions.h"
#include "receiver/signal_reports.h"
#include "receiver/station_records.h"
#include "records/message_ids.h"
#include "records/status_records.h"
#include "service/service.h"

#include <chrono>

namespace simulator {
namespace {

using std::chrono::milliseconds;

constexpr uint16_t kPictureWidth = 320;  ///< pixels, of every one-segment programme here
constexpr uint16_t kPictureHeight = 180; ///< pixels

void sendNetwork(Service& service, Session& session) {
    TS_NETWORK_INFO_NOTIFY network{};
    network.handle = session.handle;
    network.physical_channel = static_cast<uint32_t>(session.station->physical_channel);
    network.network = networkInfo(*session.station);
    service.send(event_id::kNetworkInfoNotify, network);
    service.send(event_id::kServiceInfoNotify, serviceInfo(session.handle, *session.station));
}

void sendStreams(Service& service, Session& session) {
    const Station& station = *session.station;
    auto components = stationRecord<TS_COMPONENT_INFO_NOTIFY>(session.handle, station);
    components.cap_exist_flg = 1;
    components.bml_exist_flg = 1;
    components.audio_es_num = 2;
    service.send(event_id::kComponentInfoNotify, components);

    auto video = stationRecord<TS_UPDATE_VIDEO_INFO_NOTIFY>(session.handle, station);
    video.size_h = kPictureWidth;
    video.size_v = kPictureHeight;
    service.send(event_id::kUpdateVideoInfoNotify, video);

    auto audio = stationRecord<TS_UPDATE_AUDIO_INFO_NOTIFY>(session.handle, station);
    audio.audio_mode = 2; // stereo
    service.send(event_id::kUpdateAudioInfoNotify, audio);

    TS_GET_CAPTION_DATA_NOTIFY captions{};
    captions.handle = session.handle;
    captions.valid_lang_num = 1;
    service.send(event_id::kGetCaptionDataNotify, captions);
}

void sendRights(Service& service, Session& session) {
    auto copying = stationRecord<TS_COPY_CONTROL_INFO_NOTIFY>(session.handle, *session.station);
    service.send(event_id::kCopyControlInfoNotify, copying); // mode 0: copies are free
    auto access = stationRecord<TS_CA_INFO_NOTIFY>(session.handle, *session.station);
    service.send(event_id::kCaInfoNotify, access); // status 0: not scrambled
}

void sendGuide(Service& service, Session& session) {
    const GuideChannel* channel = service.guide().channelOf(*session.station, service.plan());
    if (channel != nullptr) {
        service.send(
            event_id::kReceiveEpgInfoNotify,
            programmeGuide(session.handle, *session.station, *channel, service.wallClock()));
    }
}

/// Begins to present the components that were set for the beginning of reception.
void beginPresentation(Service& service, Session& session) {
    beginCaptions(service, session);
    beginBrowser(service, session);
}

} // namespace

void announceBroadcast(Service& service, Session& session) {
    // The tables of a stream are received one after another.
    const auto schedule = [&](milliseconds delay, void (*send)(Service&, Session&)) {
        service.later(session, delay,
                      [&service, generation = session.generation, send](Session& now) {
                          if (now.generation == generation) {
                              send(service, now);
                          }
                      });
    };
    beginSignalReports(service, session);
    schedule(milliseconds{30}, sendNetwork);
    schedule(milliseconds{60}, sendStreams);
    schedule(milliseconds{80}, sendRights);
    schedule(milliseconds{100}, beginPresentation);
    schedule(milliseconds{150}, sendGuide);
}

} // namespace simulator
