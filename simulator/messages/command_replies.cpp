#include "messages/command_replies.h"

#include "records/messages.h"

#include <algorithm>
#include <iterator>

namespace simulator {
namespace {

/// The form of a reply, by the type of its record.
template <class Record>
constexpr ReplyForm kFormOf = ReplyForm::kNone;
template <>
constexpr ReplyForm kFormOf<TS_COMMON_REPLY> = ReplyForm::kCommon;
template <>
constexpr ReplyForm kFormOf<TS_START_SCAN_REPLY> = ReplyForm::kScan;
template <>
constexpr ReplyForm kFormOf<TS_SERVICE_REPLY> = ReplyForm::kService;
template <>
constexpr ReplyForm kFormOf<TS_RELEASE_DISPLAY_REPLY> = ReplyForm::kDisplay;
template <>
constexpr ReplyForm kFormOf<TS_TUNER_LOG_STATUS_REPLY> = ReplyForm::kTunerLog;
template <>
constexpr ReplyForm kFormOf<TS_BML_START_TVLINK_REPLY> = ReplyForm::kTvLink;
template <>
constexpr ReplyForm kFormOf<TS_TERMINATE_REC_REPLY> = ReplyForm::kRecording;

// Notifications that are laid out as a reply.
template <>
constexpr ReplyForm kFormOf<TS_TERMINATE_SCAN_NOTIFY> = ReplyForm::kCommon;
template <>
constexpr ReplyForm kFormOf<TS_SELECT_AUDIO_COMPONENT_NOTIFY> = ReplyForm::kCommon;
template <>
constexpr ReplyForm kFormOf<TS_TERMINATE_SEARCH_CHANNEL_NOTIFY> = ReplyForm::kService;
static_assert(sizeof(TS_TERMINATE_SCAN_NOTIFY) == sizeof(TS_COMMON_REPLY) &&
                  sizeof(TS_SELECT_AUDIO_COMPONENT_NOTIFY) == sizeof(TS_COMMON_REPLY) &&
                  sizeof(TS_TERMINATE_SEARCH_CHANNEL_NOTIFY) == sizeof(TS_SERVICE_REPLY),
              "as long as the replies that they are laid out as");

/// The event that replies to a command. A scan or a search ends with a notification, by itself or
/// when it is cancelled: that is the reply to the command that cancels it. The notification about
/// the sound stream is the reply to the setting of the first components.
constexpr int replyEvent(int command_id, int event_of_table) {
    switch (command_id) {
    case command_id::kCancelScan:
        return event_id::kTerminateScanNotify;
    case command_id::kCancelSearchChannel:
        return event_id::kTerminateSearchChannelNotify;
    case command_id::kSetFirstComponent:
        return event_id::kSelectAudioComponentNotify;
    default:
        return event_of_table;
    }
}

struct SynchronousCommand {
    int sync_id;
    int command_id;
};
constexpr SynchronousCommand kSynchronousCommands[] = {
    {command_id::kRelease_Sync, command_id::kRelease},
    {command_id::kCancelScan_Sync, command_id::kCancelScan},
    {command_id::kTerminateBroadcastReceiving_Sync, command_id::kTerminateBroadcastReceiving},
    {command_id::kControlDecodeScreen_Sync, command_id::kControlDecodeScreen},
    {command_id::kControlDecodeAudio_Sync, command_id::kControlDecodeAudio},
    {command_id::kControlCap_Sync, command_id::kControlCap},
    {command_id::kControlBML_Sync, command_id::kControlBML},
    {command_id::kBMLEndTvLink_Sync, command_id::kBMLEndTvLinkReq},
    {command_id::kTerminateRec_Sync, command_id::kTerminateRec},
    {command_id::kTerminatePlay_Sync, command_id::kTerminatePlay},
};

constexpr int synchronousId(int command_id) {
    for (const SynchronousCommand& row : kSynchronousCommands) {
        if (row.command_id == command_id) {
            return row.sync_id;
        }
    }
    return 0;
}

template <int CommandId, int EventOfTable>
constexpr CommandReply replyTo() {
    constexpr int kEvent = replyEvent(CommandId, EventOfTable);
    if constexpr (kEvent == event_id::kNO_REPLY) {
        return {CommandId, synchronousId(CommandId), 0, ReplyForm::kNone};
    } else {
        constexpr ReplyForm kForm = kFormOf<typename messages::RecordOfEvent<kEvent>::Type>;
        static_assert(kForm != ReplyForm::kNone, "the record of every reply has a form");
        return {CommandId, synchronousId(CommandId), kEvent, kForm};
    }
}

constexpr CommandReply kReplies[] = {
#define COMMAND(id, name, record, reply_event) replyTo<id, event_id::k##reply_event>(),
#include "records/message_table.def"
};

} // namespace

const CommandReply* findReply(int command_id) {
    const auto* const found =
        std::find_if(std::begin(kReplies), std::end(kReplies),
                     [&](const CommandReply& reply) { return reply.command_id == command_id; });
    return found != std::end(kReplies) ? found : nullptr;
}

const CommandReply* findSynchronousReply(int sync_id) {
    const auto* const found =
        std::find_if(std::begin(kReplies), std::end(kReplies), [&](const CommandReply& reply) {
            return sync_id != 0 && reply.sync_id == sync_id;
        });
    return found != std::end(kReplies) ? found : nullptr;
}

} // namespace simulator
