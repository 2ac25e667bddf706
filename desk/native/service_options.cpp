#include "service_options.h"

#include "script/script_reader.h"

#include <utility>

namespace desk {

std::optional<simulator::Options> readOptions(const std::string& table, const std::string& guide,
                                              const std::string& script, std::string& error) {
    simulator::Options options;
    std::optional<simulator::ChannelPlan> plan = simulator::readChannelTable(table, error);
    if (!plan) {
        return std::nullopt;
    }
    options.plan = std::move(*plan);
    if (!guide.empty()) {
        std::optional<simulator::Guide> programmes = simulator::readGuide(guide, error);
        if (!programmes) {
            return std::nullopt;
        }
        options.guide = std::move(*programmes);
    }
    if (!script.empty()) {
        std::optional<simulator::Script> read = simulator::readScript(script, error);
        if (!read) {
            return std::nullopt;
        }
        options.script = std::move(*read);
    }
    return options;
}

std::string descriptionOf(const std::string& table, uint32_t seed, std::time_t clock) {
    const std::string city = table.substr(table.find_last_of('/') + 1);
    return "city=" + city + "\nseed=" + std::to_string(seed) + "\nclock=" + std::to_string(clock) +
           "\nversion=" DTV_VERSION;
}

} // namespace desk
