// The stations of a channel table, by physical channel.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// UHF channels that the receiver scans and selects.
constexpr int kFirstChannel = 13;
constexpr int kLastChannel = 62;
/// Services that a command can name on one physical channel: numbers 0 to 2.
constexpr int kServicesPerChannel = 3;

/// The programme that a command names by physical channel and service number.
struct Station {
    int physical_channel;
    int service_no;        ///< 0 to 2, in the order of the table
    uint32_t frequency_hz; ///< the centre of the channel
    std::string name;      ///< as the table writes it, UTF-8; may be empty

    /// The names of its services: a table lists them in one name, with commas between them. Without
    /// blanks around them; views of `name`.
    std::vector<std::string_view> serviceNames() const;
};

/// A channel table, read and numbered.
struct ChannelPlan {
    std::vector<Station> stations; ///< by channel, then by service number

    // Entries of the table that the receiver cannot have.
    int vhf_entries = 0;      ///< below the UHF band
    int beyond_entries = 0;   ///< UHF, outside the channels that the receiver scans
    int unusable_entries = 0; ///< no ISDB-T, no frequency, off the raster, or one too many

    /// The station there, or null.
    const Station* find(int physical_channel, int service_no) const;
    /// The next station in `step` direction (1 or -1) from a channel, which itself comes last; null
    /// when the plan is empty. Channels go around at the ends of the band.
    const Station* next(int physical_channel, int step) const;
    /// The number of physical channels that carry a station.
    int occupiedChannels() const;
};

/// The channel of a frequency in the numbering of a country.
struct ChannelNumber {
    enum class Band {
        kVhf,
        kUhf,
        kNone, ///< off the raster of UHF channels
    };
    Band band;
    int number; ///< the physical channel when the band is UHF
};

/// Numbers a frequency as `country` does: two letters, as tables begin their names. Japan calls
/// the first UHF channel 13, the other countries with 6 MHz channels call it 14.
ChannelNumber channelNumber(uint32_t frequency_hz, const std::string& country);

/// Reads a channel table in the DVBv5 format; the two letters before the first '-' of its file name
/// name its country. Empty, and the reason in `error`, when it cannot be read.
std::optional<ChannelPlan> readChannelTable(const std::string& path, std::string& error);

} // namespace simulator
