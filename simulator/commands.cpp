#include "simulator/commands.h"

#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/reply_records.h"
#include "simulator/tuner.h"

#include <cstring>

namespace simulator {
namespace {

using Form = ReplyForm;
namespace command = command_id;
namespace event = event_id;

template <class Record> constexpr int sizeOf() { return static_cast<int>(sizeof(Record)); }

constexpr int kHandleOnly = sizeOf<TS_HANDLE_REQ>();
constexpr int kBroadcastInfo = sizeOf<TS_BROADCAST_INFO_REQ>();
constexpr int kSearchChannel = sizeOf<TS_SEARCH_CHANNEL_REQ>();

// The end of a scan or a search is told by its notification, whether it came by itself or by a
// command to cancel: that notification is the answer to the command. Its record is laid out as a
// reply's.
constexpr CommandRow kCommands[] = {
    {command::kRelease, command::kRelease_Sync, kHandleOnly, event::kReleaseReply, Form::kCommon,
     release},
    {command::kStartScan, 0, kHandleOnly, event::kStartScanReply, Form::kScan, startScan},
    {command::kCancelScan, command::kCancelScan_Sync, kHandleOnly, event::kTerminateScanNotify,
     Form::kCommon, cancelScan},
    {command::kStartBroadcastReceiving, 0, kBroadcastInfo, event::kStartBroadcastReceivingReply,
     Form::kService, startReceiving},
    {command::kTerminateBroadcastReceiving, command::kTerminateBroadcastReceiving_Sync, kHandleOnly,
     event::kTerminateBroadcastReceivingReply, Form::kCommon, terminateReceiving},
    {command::kSelectChannel, 0, kBroadcastInfo, event::kSelectChannelReply, Form::kService,
     selectChannel},
    {command::kStartSearchChannel, 0, kSearchChannel, event::kStartSearchChannelReply,
     Form::kCommon, startSearch},
    {command::kCancelSearchChannel, 0, kHandleOnly, event::kTerminateSearchChannelNotify,
     Form::kService, cancelSearch},
};

template <class Record> std::vector<uint8_t> bytesOf(const Record& record) {
    std::vector<uint8_t> bytes(sizeof record);
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

} // namespace

const CommandRow* findCommand(int command_id) {
    for (const CommandRow& row : kCommands) {
        if (row.command_id == command_id) {
            return &row;
        }
    }
    return nullptr;
}

const CommandRow* findExchange(int command_id) {
    for (const CommandRow& row : kCommands) {
        if (row.sync_id != 0 && row.sync_id == command_id) {
            return &row;
        }
    }
    return nullptr;
}

std::vector<uint8_t> replyRecord(ReplyForm form, uint16_t handle, const Answer& answer) {
    switch (form) {
    case Form::kNone:
        break;
    case Form::kCommon: {
        TS_COMMON_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        return bytesOf(record);
    }
    case Form::kScan: {
        TS_START_SCAN_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        record.channel_num = static_cast<uint16_t>(answer.first);
        return bytesOf(record);
    }
    case Form::kService: {
        TS_SERVICE_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        record.physical_channel = answer.first;
        record.service_no = answer.second;
        return bytesOf(record);
    }
    }
    return {};
}

} // namespace simulator
