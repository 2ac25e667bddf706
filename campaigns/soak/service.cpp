#include "soak/service.h"

#include "dtv/exchange.h"
#include "on_air/channel_plan.h"
#include "on_air/guide.h"
#include "records/message_ids.h"
#include "records/reply_records.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

namespace soak {
namespace {

constexpr const char* kTable = "/usr/share/dvb/isdb-t/br-sp-SaoPaulo";
constexpr double kFastest = 1e-4;

/// The answers that are numbered: those to the commands that the threads send.
constexpr int kAnswers[] = {
    event_id::kSelectChannelReply,
    event_id::kControlLNAReply,
    event_id::kSetTunerLogReply,
    event_id::kTunerLogStatusReply,
    event_id::kSetScreenDisplayReply,
    event_id::kSetCapDisplayReply,
    event_id::kReleaseDisplayReply,
    event_id::kControlDisplayModeReply,
    event_id::kControlScreenDisplayReply,
    event_id::kControlDecodeAudioReply,
    event_id::kChangeSoundDualMonoReply,
    event_id::kPausePlayReply,
    event_id::kSkipPlayReply,
    event_id::kControlCapReply,
    event_id::kChangeCapLangReply,
    event_id::kStartRecReply,
    event_id::kTerminateRecReply,
    event_id::kControlBmlReply,
    event_id::kStartBroadcastReceivingReply,
    event_id::kTerminateBroadcastReceivingReply,
    event_id::kStartScanReply,
};

bool isAnswer(int event_id) {
    return std::find(std::begin(kAnswers), std::end(kAnswers), event_id) != std::end(kAnswers);
}

[[noreturn]] void giveUp(const std::string& why) {
    std::fprintf(stderr, "soak: %s\n", why.c_str());
    std::exit(2);
}

} // namespace

NumberingService::NumberingService() {
    simulator::Options options;
    std::string error;
    std::optional<simulator::ChannelPlan> plan = simulator::readChannelTable(kTable, error);
    std::optional<simulator::Guide> guide;
    if (plan) {
        guide = simulator::readGuide(SOAK_GUIDE, error);
    }
    if (!guide) {
        giveUp(error);
    }
    for (int channel = simulator::kFirstChannel; channel <= simulator::kLastChannel; ++channel) {
        (plan->find(channel, 0) != nullptr ? occupied_ : empty_).push_back(channel);
    }
    options.plan = std::move(*plan);
    options.guide = std::move(*guide);
    options.time_scale = kFastest;
    options.on_event = [this](int event_id, std::vector<uint8_t>& record) {
        number(event_id, record);
    };
    simulator_ = std::make_shared<simulator::Simulator>(std::move(options));
    dtv::setServiceEndpoint(simulator_);
}

void NumberingService::disconnect() {
    dtv::setServiceEndpoint(nullptr);
    simulator_.reset();
}

void NumberingService::number(int event_id, std::vector<uint8_t>& record) {
    TS_COMMON_REPLY answer{};
    if (!isAnswer(event_id) || record.size() < sizeof answer) {
        ++other_events_;
        return;
    }
    std::memcpy(&answer, record.data(), sizeof answer);
    answer.result = static_cast<int32_t>(++numbers_.at(answer.handle));
    std::memcpy(record.data(), &answer, sizeof answer);
}

} // namespace soak
