#include "messages/reply_record.h"

#include "records/reply_records.h"

#include <cstring>

namespace simulator {
namespace {

using Form = ReplyForm;

/// The bytes of a record that begins with the handle.
template <class Record>
std::vector<uint8_t> bytesOf(uint16_t handle, Record record) {
    record.handle = handle;
    std::vector<uint8_t> bytes(sizeof record);
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

} // namespace

std::vector<uint8_t> replyRecord(ReplyForm form, uint16_t handle, const ReplyValues& values) {
    switch (form) {
    case Form::kNone:
        break;
    case Form::kCommon: {
        TS_COMMON_REPLY record{};
        record.result = values.result;
        return bytesOf(handle, record);
    }
    case Form::kScan: {
        TS_START_SCAN_REPLY record{};
        record.result = values.result;
        record.channel_num = values.channel_count;
        return bytesOf(handle, record);
    }
    case Form::kService: {
        TS_SERVICE_REPLY record{};
        record.result = values.result;
        record.physical_channel = values.physical_channel;
        record.service_no = values.service_no;
        return bytesOf(handle, record);
    }
    case Form::kDisplay: {
        TS_RELEASE_DISPLAY_REPLY record{};
        record.result = values.result;
        record.drawing_destination = values.plane;
        return bytesOf(handle, record);
    }
    case Form::kTunerLog: {
        TS_TUNER_LOG_STATUS_REPLY record{};
        record.result = values.result;
        record.log_status = values.log_status;
        return bytesOf(handle, record);
    }
    case Form::kTvLink: {
        TS_BML_START_TVLINK_REPLY record{};
        record.result = static_cast<uint8_t>(values.result);
        return bytesOf(handle, record);
    }
    case Form::kRecording: {
        TS_TERMINATE_REC_REPLY record{};
        record.result = values.result;
        record.program_no = values.program_no;
        record.object_no = values.object_no;
        return bytesOf(handle, record);
    }
    }
    return {};
}

} // namespace simulator
