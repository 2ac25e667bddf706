// The programme guide of the stations, from an XMLTV file.
#pragma once

#include "on_air/channel_plan.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

struct Programme {
    std::time_t start;
    std::time_t stop;
    int utc_offset; ///< seconds east of Greenwich: the time zone of the file
    std::string title;
    std::string text;
    std::vector<uint8_t> genres; ///< as the broadcast codes them: kind in the upper four bits
};

/// One channel of the file.
struct GuideChannel {
    std::vector<std::string> names;
    std::vector<Programme> programmes; ///< by their start, without overlap
};

struct Guide {
    std::vector<GuideChannel> channels; ///< those with programmes

    /// The channel for a station: the one that has its name, or one of the others in turn; null
    /// when the guide is empty.
    const GuideChannel* channelOf(const Station& station, const ChannelPlan& plan) const;
};

/// The programme at `now`, and those that follow. A channel's programmes are repeated before and
/// after the days that its file lists: the times here are those of the repetition.
struct NowAndNext {
    std::optional<Programme> current; ///< nothing in a gap
    std::vector<Programme> following; ///< `count` of them
};
NowAndNext onAir(const GuideChannel& channel, std::time_t now, size_t count);

/// Reads an XMLTV file. Empty, and the reason in `error`, when it cannot be read or holds no
/// programme.
std::optional<Guide> readGuide(const std::string& path, std::string& error);

} // namespace simulator
