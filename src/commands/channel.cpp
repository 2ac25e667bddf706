// The commands that name a service: start to receive it, switch to it, search onward from it.
#include "commands/fields.h"
#include "commands/natives.h"
#include "records/command_records.h"
#include "records/message_ids.h"

using trace::kDebug;

namespace {

constexpr jint kLastPhysicalChannel = 62;
constexpr jint kLastServiceNo = 2;

/// Reads a BG_TS_DTVSVLIB_BROADCAST_INFO into the fields that the records have in common.
template <typename Record>
Ended readBroadcastInfo(const Command& command, jobject info, Record& record) {
    record.handle = command.handle();
    const jclass clazz = classOf(command.env, info);
    if (clazz == nullptr) {
        REFUSE(command, "broadcast_info class is NULL, ret = %d", kResultParamNg);
    }
    jint physical_channel = 0;
    READ_INT(command, clazz, info, "physical_channel", &physical_channel);
    if (physical_channel > kLastPhysicalChannel) {
        REFUSE(command, "physical_channel is too large : %d, ret = %d", physical_channel,
               kResultParamNg);
    }
    record.physical_channel = physical_channel;
    jint service_no = 0;
    READ_INT(command, clazz, info, "service_no", &service_no);
    if (service_no > kLastServiceNo) {
        REFUSE(command, "service_no is too large : %d, ret = %d", service_no, kResultParamNg);
    }
    record.service_no = static_cast<uint16_t>(service_no);
    return kGoOn;
}

template <typename Record>
void traceBroadcastInfo(const Command& command, const Record& record) {
    TRACE_NATIVE(kDebug, command.function,
                 "SEND, BROADCAST_INFO : physical_channel = %ld, service_no = %d",
                 trace::asLong(record.physical_channel), record.service_no);
}

jobject sendBroadcastInfo(const Command& command, jobject info) {
    TS_BROADCAST_INFO_REQ record = {};
    if (const Ended ended = readBroadcastInfo(command, info, record)) {
        return *ended;
    }
    TRACE_NATIVE(kDebug, command.function, "SEND, dtvsv_handle = %d", record.handle);
    traceBroadcastInfo(command, record);
    return send(command, record);
}

} // namespace

jobject dtvSvLibStartBroadcastReceiving(JNIEnv* env, jobject, jint handle, jobject info) {
    const Command command =
        beginCommand(env, __func__, command_id::kStartBroadcastReceiving, handle);
    if (info == nullptr) {
        REFUSE(command, "broadcast_info is NULL, ret = %d", kResultParamNg);
    }
    return sendBroadcastInfo(command, info);
}

// A null object is not tested for here: it is refused for having no class.
jobject dtvSvLibSelectChannel(JNIEnv* env, jobject, jint handle, jobject info) {
    const Command command = beginCommand(env, __func__, command_id::kSelectChannel, handle);
    return sendBroadcastInfo(command, info);
}

jobject dtvSvLibStartSearchChannel(JNIEnv* env, jobject, jint handle, jobject info,
                                   jint channel_operation) {
    const Command command = beginCommand(env, __func__, command_id::kStartSearchChannel, handle);
    if (info == nullptr) {
        REFUSE(command, "broadcast_info is NULL, ret = %d", kResultParamNg);
    }
    TS_SEARCH_CHANNEL_REQ record = {};
    if (const Ended ended = readBroadcastInfo(command, info, record)) {
        return *ended;
    }
    record.channel_operation = static_cast<uint8_t>(channel_operation);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d, channel_operation = %d", record.handle,
                 record.channel_operation);
    traceBroadcastInfo(command, record);
    return send(command, record);
}
