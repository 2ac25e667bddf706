#include "simulator/broadcast.h"

#include "records/message_ids.h"
#include "records/status_records.h"
#include "simulator/browser.h"
#include "simulator/captions.h"
#include "simulator/signal.h"
#include "simulator/text.h"

#include <algorithm>
#include <chrono>

namespace simulator {
namespace {

using std::chrono::milliseconds;

constexpr size_t kServicesInList = 8;
constexpr uint16_t kFirstNetworkId = 1600;
constexpr uint16_t kPictureWidth = 320;  ///< pixels, of every one-segment programme here
constexpr uint16_t kPictureHeight = 180; ///< pixels

uint16_t networkId(const Station& station) {
    return static_cast<uint16_t>(kFirstNetworkId + station.physical_channel);
}

/// Service ids hold the network's, the kind of service (3: partial reception) and a number.
uint16_t serviceId(const Station& station, size_t number) {
    return static_cast<uint16_t>((networkId(station) & 0x7FFU) << 5U | 3U << 3U | number);
}

/// A record that begins with the handle, the channel and the service of a station.
template <class Record>
Record about(uint16_t handle, const Station& station) {
    Record record{};
    record.handle = handle;
    record.physical_channel = static_cast<uint32_t>(station.physical_channel);
    record.service_no = static_cast<uint16_t>(station.service_no);
    return record;
}

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
    auto components = about<TS_COMPONENT_INFO_NOTIFY>(session.handle, station);
    components.cap_exist_flg = 1;
    components.bml_exist_flg = 1;
    components.audio_es_num = 2;
    service.send(event_id::kComponentInfoNotify, components);

    auto video = about<TS_UPDATE_VIDEO_INFO_NOTIFY>(session.handle, station);
    video.size_h = kPictureWidth;
    video.size_v = kPictureHeight;
    service.send(event_id::kUpdateVideoInfoNotify, video);

    auto audio = about<TS_UPDATE_AUDIO_INFO_NOTIFY>(session.handle, station);
    audio.audio_mode = 2; // stereo
    service.send(event_id::kUpdateAudioInfoNotify, audio);

    TS_GET_CAPTION_DATA_NOTIFY captions{};
    captions.handle = session.handle;
    captions.valid_lang_num = 1;
    service.send(event_id::kGetCaptionDataNotify, captions);
}

void sendRights(Service& service, Session& session) {
    auto copying = about<TS_COPY_CONTROL_INFO_NOTIFY>(session.handle, *session.station);
    service.send(event_id::kCopyControlInfoNotify, copying); // mode 0: copies are free
    auto access = about<TS_CA_INFO_NOTIFY>(session.handle, *session.station);
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

/// Presents what the session was told to begin with.
void begin(Service& service, Session& session) {
    beginCaptions(service, session);
    beginBrowser(service, session);
}

DATE dateOf(const std::tm& time) {
    return {static_cast<uint16_t>(time.tm_year + 1900), static_cast<uint16_t>(time.tm_mon + 1),
            static_cast<uint16_t>(time.tm_mday)};
}

TIME timeOf(std::time_t seconds) {
    return {static_cast<uint16_t>(seconds / 3600), static_cast<uint16_t>(seconds / 60 % 60),
            static_cast<uint16_t>(seconds % 60), 0};
}

PRG_INFO programmeInfo(const Programme& programme) {
    PRG_INFO info{};
    const std::time_t local = programme.start + programme.utc_offset;
    std::tm start{};
    gmtime_r(&local, &start);
    // Programmes of a service start at different minutes: that tells them apart.
    info.evtId = static_cast<uint32_t>(programme.start / 60) & 0xFFFFU;
    info.start_date = dateOf(start);
    info.start_time = {static_cast<uint16_t>(start.tm_hour), static_cast<uint16_t>(start.tm_min),
                       static_cast<uint16_t>(start.tm_sec), 0};
    info.start_day_of_week = static_cast<uint8_t>(start.tm_wday); // Sunday is 0
    info.duration = timeOf(programme.stop - programme.start);
    const size_t genres = std::min(programme.genres.size(), sizeof info.content_nibble);
    std::copy_n(programme.genres.begin(), genres, info.content_nibble);
    info.nibble_cnt = static_cast<uint8_t>(genres);
    info.name_size =
        static_cast<uint32_t>(writeUtf16(info.name, sizeof info.name / 2, programme.title));
    info.text_size =
        static_cast<uint32_t>(writeUtf16(info.text, sizeof info.text / 2, programme.text));
    return info;
}

} // namespace

NETWORK_INFO networkInfo(const Station& station) {
    NETWORK_INFO network{};
    const std::vector<std::string_view> names = splitAtCommas(station.name);
    network.ts_id = network.nw_id = networkId(station);
    network.ts_name_size = static_cast<uint16_t>(writeText(network.ts_name, station.name));
    if (!names.empty()) {
        network.nw_name_size = static_cast<uint16_t>(writeText(network.nw_name, names.front()));
    }
    network.remocon_id = static_cast<uint8_t>(station.physical_channel);
    network.partialsvc_cnt = 1;
    network.partialsvc[0] = serviceId(station, static_cast<size_t>(station.service_no));
    return network;
}

TS_SCAN_NOTIFY scanNotify(uint16_t handle, int physical_channel, const Station* station,
                          int found) {
    TS_SCAN_NOTIFY notify{};
    notify.handle = handle;
    notify.channnel = static_cast<uint32_t>(physical_channel);
    notify.result_channnel_num = static_cast<uint16_t>(found);
    if (station != nullptr) {
        notify.network = networkInfo(*station);
    } else {
        notify.result = kNoSuchThing;
    }
    return notify;
}

TS_SERVICE_INFO_NOTIFY serviceInfo(uint16_t handle, const Station& station) {
    auto notify = about<TS_SERVICE_INFO_NOTIFY>(handle, station);
    notify.ts_id = networkId(station);
    const std::vector<std::string_view> names = splitAtCommas(station.name);
    const size_t count = std::min(names.size(), kServicesInList);
    for (size_t index = 0; index < count; ++index) {
        SERVICE_INFO& entry = notify.service[index];
        entry.service_id = serviceId(station, index);
        entry.name_size = static_cast<uint32_t>(writeText(entry.name, names[index]));
    }
    notify.svc_cnt = static_cast<uint8_t>(count);
    return notify;
}

TS_RECEIVE_EPG_INFO_NOTIFY programmeGuide(uint16_t handle, const Station& station,
                                          const GuideChannel& channel, std::time_t now) {
    auto notify = about<TS_RECEIVE_EPG_INFO_NOTIFY>(handle, station);
    notify.svc_id = serviceId(station, static_cast<size_t>(station.service_no));
    constexpr size_t kFollowing = sizeof notify.after / sizeof *notify.after;
    const NowAndNext on_air = onAir(channel, now, kFollowing + 1);
    if (on_air.current) {
        notify.current = programmeInfo(*on_air.current);
    }
    notify.next = programmeInfo(on_air.following.front());
    std::transform(on_air.following.begin() + 1, on_air.following.end(), notify.after,
                   programmeInfo);
    notify.after_prg_infoCnt = static_cast<uint16_t>(kFollowing);
    return notify;
}

void announceBroadcast(Service& service, Session& session) {
    // The tables of a stream come in one after another.
    const auto when = [&](milliseconds delay, void (*tell)(Service&, Session&)) {
        service.later(session, delay, [&service, work = session.work, tell](Session& now) {
            if (now.work == work) {
                tell(service, now);
            }
        });
    };
    watchSignal(service, session);
    when(milliseconds{30}, sendNetwork);
    when(milliseconds{60}, sendStreams);
    when(milliseconds{80}, sendRights);
    when(milliseconds{100}, begin);
    when(milliseconds{150}, sendGuide);
}

} // namespace simulator
