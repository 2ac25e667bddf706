#include "on_air/guide.h"

#include "on_air/xmltv_time.h"

#include <pugixml.hpp>

#include <algorithm>
#include <map>

namespace simulator {
namespace {

constexpr std::time_t kDay = 86400;

/// The kinds of programme that a broadcast knows, and the words that XMLTV files name them by.
struct Genre {
    const char* word;
    uint8_t kind;
};
constexpr Genre kGenres[] = {
    {"news", 0x0},
    {"ニュース", 0x0},
    {"notícias", 0x0},
    {"sports", 0x1},
    {"スポーツ", 0x1},
    {"esportes", 0x1},
    {"drama", 0x3},
    {"ドラマ", 0x3},
    {"novela", 0x3},
    {"music", 0x4},
    {"音楽", 0x4},
    {"música", 0x4},
    {"variety", 0x5},
    {"バラエティ", 0x5},
    {"variedades", 0x5},
    {"movie", 0x6},
    {"映画", 0x6},
    {"filme", 0x6},
    {"animation", 0x7},
    {"アニメ", 0x7},
    {"desenho", 0x7},
    {"documentary", 0x8},
    {"ドキュメンタリー", 0x8},
    {"documentário", 0x8},
    {"education", 0xa},
    {"趣味・教育", 0xa},
    {"educação", 0xa},
};
constexpr uint8_t kAnyOfKind = 0xf;

std::optional<uint8_t> genreOf(const std::string& word) {
    for (const Genre& genre : kGenres) {
        if (word == genre.word) {
            return static_cast<uint8_t>(genre.kind << 4U | kAnyOfKind);
        }
    }
    return std::nullopt;
}

std::optional<Programme> readProgramme(const pugi::xml_node& node) {
    const std::optional<XmltvTime> start = parseXmltvTime(node.attribute("start").value());
    if (!start) {
        return std::nullopt;
    }
    const std::optional<XmltvTime> stop = parseXmltvTime(node.attribute("stop").value());
    Programme programme{start->time,
                        stop ? stop->time : 0,
                        start->utc_offset,
                        node.child_value("title"),
                        node.child_value("desc"),
                        {}};
    for (const pugi::xml_node& category : node.children("category")) {
        if (const std::optional<uint8_t> genre = genreOf(category.child_value())) {
            programme.genres.push_back(*genre);
        }
    }
    return programme;
}

/// Orders the programmes by their start and gives each an end: one without an end, or with an end
/// after the start of the next, ends with that start. The last one without an end lasts an hour.
void orderAndEnd(std::vector<Programme>& programmes) {
    std::stable_sort(
        programmes.begin(), programmes.end(),
        [](const Programme& left, const Programme& right) { return left.start < right.start; });
    for (size_t index = 0; index < programmes.size(); ++index) {
        Programme& programme = programmes[index];
        const bool last = index + 1 == programmes.size();
        const std::time_t limit = last ? programme.start + 3600 : programmes[index + 1].start;
        if (programme.stop <= programme.start || (!last && programme.stop > limit)) {
            programme.stop = limit;
        }
    }
    programmes.erase(std::remove_if(programmes.begin(), programmes.end(),
                                    [](const Programme& programme) {
                                        return programme.stop <= programme.start;
                                    }),
                     programmes.end());
}

bool hasName(const GuideChannel& channel, const Station& station) {
    const std::vector<std::string_view> parts = station.serviceNames();
    const auto& names = channel.names;
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
        return name == station.name || (!parts.empty() && name == parts.front());
    });
}

Programme shifted(Programme programme, std::time_t seconds) {
    programme.start += seconds;
    programme.stop += seconds;
    return programme;
}

} // namespace

const GuideChannel* Guide::channelOf(const Station& station, const ChannelPlan& plan) const {
    if (channels.empty()) {
        return nullptr;
    }
    for (const GuideChannel& channel : channels) {
        if (hasName(channel, station)) {
            return &channel;
        }
    }
    const auto place =
        std::find_if(plan.stations.begin(), plan.stations.end(), [&](const Station& other) {
            return other.physical_channel == station.physical_channel &&
                   other.service_no == station.service_no;
        });
    return &channels[static_cast<size_t>(place - plan.stations.begin()) % channels.size()];
}

NowAndNext onAir(const GuideChannel& channel, std::time_t now, size_t count) {
    const std::vector<Programme>& programmes = channel.programmes;
    NowAndNext result;
    if (programmes.empty()) {
        return result;
    }
    const std::time_t begin = programmes.front().start;
    const std::time_t days = (programmes.back().stop - begin + kDay - 1) / kDay;
    const std::time_t period = days * kDay;
    const std::time_t into = ((now - begin) % period + period) % period;
    std::time_t shift = now - into - begin;
    for (const Programme& programme : programmes) {
        if (programme.start <= begin + into && begin + into < programme.stop) {
            result.current = shifted(programme, shift);
        } else if (programme.start > begin + into) {
            result.following.push_back(shifted(programme, shift));
        }
    }
    while (result.following.size() < count) {
        shift += period;
        for (const Programme& programme : programmes) {
            result.following.push_back(shifted(programme, shift));
        }
    }
    result.following.resize(count);
    return result;
}

std::optional<Guide> readGuide(const std::string& path, std::string& error) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_file(path.c_str());
    if (!parsed) {
        error = path + ": " + parsed.description();
        return std::nullopt;
    }
    const pugi::xml_node tv = document.child("tv");
    if (!tv) {
        error = path + ": not an XMLTV file";
        return std::nullopt;
    }
    std::vector<std::string> order;
    std::map<std::string, GuideChannel> channels;
    for (const pugi::xml_node& node : tv.children("channel")) {
        const std::string id = node.attribute("id").value();
        const auto [entry, added] = channels.try_emplace(id);
        if (added) {
            order.push_back(id);
        }
        for (const pugi::xml_node& name : node.children("display-name")) {
            entry->second.names.emplace_back(name.child_value());
        }
    }
    for (const pugi::xml_node& node : tv.children("programme")) {
        const auto channel = channels.find(node.attribute("channel").value());
        std::optional<Programme> programme = readProgramme(node);
        if (channel != channels.end() && programme) {
            channel->second.programmes.push_back(std::move(*programme));
        }
    }
    Guide guide;
    for (const std::string& id : order) {
        GuideChannel& channel = channels[id];
        orderAndEnd(channel.programmes);
        if (!channel.programmes.empty()) {
            guide.channels.push_back(std::move(channel));
        }
    }
    if (guide.channels.empty()) {
        error = path + ": no programme of a channel that it names";
        return std::nullopt;
    }
    return guide;
}

} // namespace simulator
