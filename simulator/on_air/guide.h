// The programme guide: what each station shows, from an XMLTV file.
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
    int utc_offset; ///< seconds east of Greenwich in which the file tells its times
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
    std::vector<GuideChannel> channels; ///< those that show something

    /// What the station shows: the channel that bears its name, or one of the others in turn; null
    /// when the guide is empty.
    const GuideChannel* channelOf(const Station& station, const ChannelPlan& plan) const;
};

/// What is on at `now`, and what follows. A channel's programmes are repeated before and after the
/// days that its file tells about: the times here are those of the repetition.
struct NowAndNext {
    std::optional<Programme> current; ///< nothing in a gap
    std::vector<Programme> following; ///< `count` of them
};
NowAndNext onAir(const GuideChannel& channel, std::time_t now, size_t count);

/// Reads an XMLTV file. Nothing, and the reason in `error`, when it cannot be read or holds no
/// programme.
std::optional<Guide> readGuide(const std::string& path, std::string& error);

} // namespace simulator
