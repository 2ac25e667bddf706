#include "on_air/channel_plan.h"

#include <libdvbv5/dvb-file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <set>

namespace simulator {
namespace {

constexpr int64_t kFirstUhfCentre = 473'142'857; ///< Hz, everywhere
constexpr int64_t kChannelWidth = 6'000'000;     ///< Hz
constexpr int64_t kUhfBegins = 470'000'000;      ///< Hz
constexpr int64_t kVhfEnds = 300'000'000;        ///< Hz
constexpr int64_t kRasterTolerance = 500'000;    ///< Hz
constexpr int kUhfChannels = 57;                 ///< 470 to 812 MHz

struct TableDeleter {
    void operator()(dvb_file* table) const { dvb_file_free(table); }
};
using Table = std::unique_ptr<dvb_file, TableDeleter>;

std::string countryOf(const std::filesystem::path& table) {
    const std::string name = table.filename();
    return name.substr(0, std::min(name.find('-'), name.size()));
}

/// The entry's frequency in Hz; empty when it is no entry for an ISDB-T receiver.
std::optional<uint32_t> frequencyOf(dvb_entry& entry) {
    uint32_t system = 0;
    uint32_t frequency = 0;
    if (dvb_retrieve_entry_prop(&entry, DTV_DELIVERY_SYSTEM, &system) != 0 || system != SYS_ISDBT ||
        dvb_retrieve_entry_prop(&entry, DTV_FREQUENCY, &frequency) != 0 || frequency == 0) {
        return std::nullopt;
    }
    return frequency;
}

void addEntry(ChannelPlan& plan, dvb_entry& entry, const std::string& country) {
    const std::optional<uint32_t> frequency = frequencyOf(entry);
    if (!frequency) {
        ++plan.unusable_entries;
        return;
    }
    const ChannelNumber channel = channelNumber(*frequency, country);
    if (channel.band == ChannelNumber::Band::kVhf) {
        ++plan.vhf_entries;
        return;
    }
    if (channel.band == ChannelNumber::Band::kNone) {
        ++plan.unusable_entries;
        return;
    }
    if (channel.number < kFirstChannel || channel.number > kLastChannel) {
        ++plan.beyond_entries;
        return;
    }
    const auto here =
        std::count_if(plan.stations.begin(), plan.stations.end(), [&](const Station& other) {
            return other.physical_channel == channel.number;
        });
    if (here >= kServicesPerChannel) {
        ++plan.unusable_entries;
        return;
    }
    plan.stations.push_back({channel.number, static_cast<int>(here), *frequency,
                             entry.channel != nullptr ? entry.channel : ""});
}

std::string_view withoutBlanks(std::string_view text) {
    const size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

} // namespace

std::vector<std::string_view> Station::serviceNames() const {
    std::string_view text = name;
    std::vector<std::string_view> parts;
    while (true) {
        const size_t comma = text.find(',');
        const std::string_view part = withoutBlanks(text.substr(0, comma));
        if (!part.empty()) {
            parts.push_back(part);
        }
        if (comma == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(comma + 1);
    }
}

const Station* ChannelPlan::find(int physical_channel, int service_no) const {
    for (const Station& station : stations) {
        if (station.physical_channel == physical_channel && station.service_no == service_no) {
            return &station;
        }
    }
    return nullptr;
}

const Station* ChannelPlan::next(int physical_channel, int step) const {
    constexpr int kChannels = kLastChannel - kFirstChannel + 1;
    int channel = std::clamp(physical_channel, kFirstChannel, kLastChannel);
    for (int looked_at = 0; looked_at < kChannels; ++looked_at) {
        channel = kFirstChannel + (channel - kFirstChannel + step + kChannels) % kChannels;
        if (const Station* station = find(channel, 0)) {
            return station;
        }
    }
    return nullptr;
}

int ChannelPlan::occupiedChannels() const {
    std::set<int> channels;
    for (const Station& station : stations) {
        channels.insert(station.physical_channel);
    }
    return static_cast<int>(channels.size());
}

ChannelNumber channelNumber(uint32_t frequency_hz, const std::string& country) {
    const int64_t frequency = frequency_hz;
    if (frequency < kVhfEnds) {
        return {ChannelNumber::Band::kVhf, 0};
    }
    const int64_t index = (frequency - kFirstUhfCentre + kChannelWidth / 2) / kChannelWidth;
    const int64_t centre = kFirstUhfCentre + index * kChannelWidth;
    if (frequency < kUhfBegins || index >= kUhfChannels ||
        std::abs(frequency - centre) > kRasterTolerance) {
        return {ChannelNumber::Band::kNone, 0};
    }
    const int first = country == "jp" ? 13 : 14;
    return {ChannelNumber::Band::kUhf, first + static_cast<int>(index)};
}

std::optional<ChannelPlan> readChannelTable(const std::string& path, std::string& error) {
    if (access(path.c_str(), R_OK) != 0) {
        error = path + ": " + std::strerror(errno);
        return std::nullopt;
    }
    // The library reads a folder as an empty table.
    if (std::error_code ignored; std::filesystem::is_directory(path, ignored)) {
        error = path + ": " + std::strerror(EISDIR);
        return std::nullopt;
    }
    const Table table(dvb_read_file(path.c_str()));
    if (!table) {
        error = path + ": not a DVBv5 channel table";
        return std::nullopt;
    }
    ChannelPlan plan;
    const std::string country = countryOf(path);
    for (dvb_entry* entry = table->first_entry; entry != nullptr; entry = entry->next) {
        addEntry(plan, *entry, country);
    }
    std::stable_sort(plan.stations.begin(), plan.stations.end(),
                     [](const Station& left, const Station& right) {
                         return left.physical_channel < right.physical_channel;
                     });
    return plan;
}

} // namespace simulator
