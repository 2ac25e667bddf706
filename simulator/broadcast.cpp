#include "simulator/broadcast.h"

#include "records/message_ids.h"
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
template <class Record> Record about(uint16_t handle, const Station& station) {
    Record record{};
    record.handle = handle;
    record.physical_channel = static_cast<uint32_t>(station.physical_channel);
    record.service_no = static_cast<uint16_t>(station.service_no);
    return record;
}

void sendNetwork(Service& service, const Session& session) {
    TS_NETWORK_INFO_NOTIFY network{};
    network.handle = session.handle;
    network.physical_channel = static_cast<uint32_t>(session.station->physical_channel);
    network.network = networkInfo(*session.station);
    service.send(event_id::kNetworkInfoNotify, network);
    service.send(event_id::kServiceInfoNotify, serviceInfo(session.handle, *session.station));
}

void sendStreams(Service& service, const Session& session) {
    const Station& station = *session.station;
    auto components = about<TS_COMPONENT_INFO_NOTIFY>(session.handle, station);
    components.cap_exist_flg = 1;
    components.bml_exist_flg = 1;
    components.audio_es_num = 1;
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

void announceBroadcast(Service& service, Session& session) {
    // The tables of a stream come in one after another.
    const auto when = [&](milliseconds delay, void (*tell)(Service&, const Session&)) {
        service.later(session, delay, [&service, work = session.work, tell](Session& now) {
            if (now.work == work) {
                tell(service, now);
            }
        });
    };
    when(milliseconds{30}, sendNetwork);
    when(milliseconds{60}, sendStreams);
    watchSignal(service, session);
}

} // namespace simulator
