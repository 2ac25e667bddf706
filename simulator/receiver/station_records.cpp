#include "receiver/station_records.h"

#include "messages/text.h"
#include "service/request.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace simulator {
namespace {

constexpr size_t kServicesInList = 8;
constexpr uint16_t kFirstNetworkId = 1600;

uint16_t networkId(const Station& station) {
    return static_cast<uint16_t>(kFirstNetworkId + station.physical_channel);
}

/// A service id holds the network id, the kind of service (3: partial reception) and a number.
uint16_t serviceId(const Station& station, size_t number) {
    return static_cast<uint16_t>((networkId(station) & 0x7FFU) << 5U | 3U << 3U | number);
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
    // Programmes of a service start at different minutes, so this number is unique.
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
    const std::vector<std::string_view> names = station.serviceNames();
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
    auto notify = stationRecord<TS_SERVICE_INFO_NOTIFY>(handle, station);
    notify.ts_id = networkId(station);
    const std::vector<std::string_view> names = station.serviceNames();
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
    auto notify = stationRecord<TS_RECEIVE_EPG_INFO_NOTIFY>(handle, station);
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

} // namespace simulator
