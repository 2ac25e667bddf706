#include "desk/explain/order.h"

#include "records/catalogue.h"
#include "records/message_ids.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace explain {
namespace {

struct Need {
    int command;
    int needed; ///< a command, or an event
};

/// Commands that end or steer what another one began, and replies to requests.
constexpr Need kNeeds[] = {
    {command_id::kPausePlay, command_id::kStartPlay},
    {command_id::kReStartPlay, command_id::kStartPlay},
    {command_id::kSkipPlay, command_id::kStartPlay},
    {command_id::kFrameSlidePlay, command_id::kStartPlay},
    {command_id::kChangePlaySpeed, command_id::kStartPlay},
    {command_id::kMovePausePosition, command_id::kStartPlay},
    {command_id::kTerminatePlay, command_id::kStartPlay},
    {command_id::kTerminatePlay_Sync, command_id::kStartPlay},
    {command_id::kTerminateRec, command_id::kStartRec},
    {command_id::kTerminateRec_Sync, command_id::kStartRec},
    {command_id::kCancelScan, command_id::kStartScan},
    {command_id::kCancelScan_Sync, command_id::kStartScan},
    {command_id::kCancelSearchChannel, command_id::kStartSearchChannel},
    {command_id::kBMLMailReply, event_id::kBmlMailReq},
    {command_id::kBMLPhonebookReply, event_id::kBmlPhonebookReq},
    {command_id::kBMLCallReply, event_id::kBmlCallReq},
    {command_id::kBMLScheduleReply, event_id::kBmlScheduleReq},
    {command_id::kBMLBrowserReply, event_id::kBmlBrowserReq},
    {command_id::kBMLSavePictureReply, event_id::kBmlSavePictureReq},
    {command_id::kBMLPermissionReply, event_id::kBmlPermissionReq},
    {command_id::kBMLAuthReply, event_id::kBmlAuthReq},
    {command_id::kBMLReadNvramReply, event_id::kBmlReadNvramReq},
    {command_id::kBMLWriteNvramReply, event_id::kBmlWriteNvramReq},
    {command_id::kBMLFepReply, event_id::kBmlStartFepReq},
    {command_id::kBMLStartTvlinkReply, event_id::kBmlStartTvlinkReq},
    {command_id::kBMLEnrolTvlinkReply, event_id::kBmlEnrolTvlinkReq},
};

/// A playback ends with these, and a request with its reply.
constexpr Need kEnds[] = {
    {command_id::kTerminatePlay, command_id::kStartPlay},
    {command_id::kTerminatePlay_Sync, command_id::kStartPlay},
    {command_id::kTerminateRec, command_id::kStartRec},
    {command_id::kTerminateRec_Sync, command_id::kStartRec},
};

/// Without these nothing of the broadcast can be shown or recorded.
constexpr std::array<int, 2> kReception = {command_id::kStartBroadcastReceiving,
                                           command_id::kSelectChannel};

bool isAfterReception(int command) {
    constexpr std::array<int, 16> kAfter = {command_id::kControlDecodeScreen,
                                            command_id::kControlDecodeScreen_Sync,
                                            command_id::kControlDecodeAudio,
                                            command_id::kControlDecodeAudio_Sync,
                                            command_id::kChangeAudioComponent,
                                            command_id::kChangeSoundDualMono,
                                            command_id::kChangeCapLang,
                                            command_id::kSelectChannel,
                                            command_id::kStartRec,
                                            command_id::kControlCap,
                                            command_id::kControlCap_Sync,
                                            command_id::kControlBML,
                                            command_id::kControlBML_Sync,
                                            command_id::kStartSearchChannel,
                                            command_id::kTerminateBroadcastReceiving,
                                            command_id::kBMLStartTvLinkReq};
    return std::find(kAfter.begin(), kAfter.end(), command) != kAfter.end();
}

} // namespace

namespace {

/// The plane that is to be released, or nothing.
std::optional<int64_t> planeToRelease(const sessions::Message& message) {
    return message.id == command_id::kReleaseDisplay
               ? sessions::numberIn(*catalogue::find(message.id)->record, message, "value")
               : std::nullopt;
}

/// The plane that was released, or nothing.
std::optional<int64_t> releasedPlane(const sessions::Message& message) {
    if (message.id != event_id::kReleaseDisplayReply) {
        return std::nullopt;
    }
    const catalogue::Record& layout = *catalogue::find(message.id)->record;
    return sessions::numberIn(layout, message, "result") == 0
               ? sessions::numberIn(layout, message, "drawing_destination")
               : std::nullopt;
}

/// What a ControlCap or a ControlBML asks for.
enum ControlType : int64_t {
    kOn = 1,
    kResume = 3,
};

std::optional<int64_t> controlType(const sessions::Message& message, int command, int synchronous,
                                   std::string_view field) {
    return message.id == command || message.id == synchronous
               ? sessions::numberIn(*catalogue::find(message.id)->record, message, field)
               : std::nullopt;
}

std::optional<int64_t> captionControl(const sessions::Message& message) {
    return controlType(message, command_id::kControlCap, command_id::kControlCap_Sync,
                       "cap_control_type");
}

std::optional<int64_t> browserControl(const sessions::Message& message) {
    return controlType(message, command_id::kControlBML, command_id::kControlBML_Sync,
                       "bml_control_type");
}

bool placesPlanes(int command) {
    return command == command_id::kSetDisplayAll || command == command_id::kSetScreenDisplay ||
           command == command_id::kSetCapDisplay || command == command_id::kSetBMLDisplay ||
           command == command_id::kSetFirstComponent;
}

} // namespace

bool SessionOrder::allows(const sessions::Message& command) const {
    if (const auto plane = planeToRelease(command)) {
        return released_planes_.count(*plane) == 0;
    }
    if (captionControl(command) == kOn) {
        return !captions_run_;
    }
    if (browserControl(command) == kOn) {
        return !browser_runs_;
    }
    const auto need =
        std::find_if(std::begin(kNeeds), std::end(kNeeds),
                     [&command](const Need& each) { return each.command == command.id; });
    return need == std::end(kNeeds) || happened_.count(need->needed) != 0;
}

void SessionOrder::pass(const sessions::Message& message) {
    using Kind = sessions::Message::Kind;
    if (!message.is(Kind::kCommand) && !message.is(Kind::kEvent)) {
        return;
    }
    for (const Need& end : kEnds) {
        if (end.command == message.id) {
            happened_.erase(end.needed);
        }
    }
    happened_.insert(message.id);
    if (const auto type = captionControl(message)) {
        captions_run_ = type == kOn || type == kResume;
    } else if (const auto browser = browserControl(message)) {
        browser_runs_ = browser == kOn || browser == kResume;
    }
    if (const auto plane = releasedPlane(message)) {
        released_planes_.insert(*plane);
    } else if (placesPlanes(message.id)) {
        released_planes_.clear();
    }
}

bool dependsOn(std::string_view command, std::string_view needed) {
    const catalogue::Message* const one = catalogue::find(command);
    const catalogue::Message* const other = catalogue::find(needed);
    if (one == nullptr || other == nullptr) {
        return false;
    }
    for (const Need& need : kNeeds) {
        if (need.command == one->id && need.needed == other->id) {
            return true;
        }
    }
    return one != other &&
           std::find(kReception.begin(), kReception.end(), other->id) != kReception.end() &&
           isAfterReception(one->id);
}

} // namespace explain
