// The commands that name a service: start to receive it, switch to it, search from it.
#include "commands/argument.h"
#include "commands/natives.h"

using trace::kDebug;

namespace {

namespace broadcast_info = field::BG_TS_DTVSVLIB_BROADCAST_INFO;

constexpr jint kLastPhysicalChannel = 62;
constexpr jint kLastServiceNo = 2;

constexpr FieldLine kNullInfo = INT_LINE("broadcast_info is NULL, ret = %d");

/// Reads a BG_TS_DTVSVLIB_BROADCAST_INFO into the fields that the records have in common.
template <typename Record>
void readBroadcastInfo(Argument& info, Record& record) {
    info.requireClass(INT_LINE("broadcast_info class is NULL, ret = %d"));
    record.physical_channel =
        info.readIntUpTo(kLastPhysicalChannel, broadcast_info::physical_channel);
    record.service_no = info.readIntUpTo(kLastServiceNo, broadcast_info::service_no);
}

template <typename Record>
void traceBroadcastInfo(const char* function, const Record& record) {
    TRACE_NATIVE(kDebug, function, "SEND, BROADCAST_INFO : physical_channel = %ld, service_no = %d",
                 trace::asLong(record.physical_channel), record.service_no);
}

jobject sendBroadcastInfo(Command<TS_BROADCAST_INFO_REQ>& command, Argument& info) {
    readBroadcastInfo(info, command.record);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, command.function(), "SEND, dtvsv_handle = %d", command.record.handle);
    traceBroadcastInfo(command.function(), command.record);
    return command.send();
}

} // namespace

jobject dtvSvLibStartBroadcastReceiving(JNIEnv* env, jobject, jint handle, jobject info_object) {
    Command command(env, __func__, command_row::kStartBroadcastReceiving, handle);
    Argument info(command, info_object);
    info.requireObject(kNullInfo);
    return sendBroadcastInfo(command, info);
}

// A null object is not checked for here: it is refused for having no class.
jobject dtvSvLibSelectChannel(JNIEnv* env, jobject, jint handle, jobject info_object) {
    Command command(env, __func__, command_row::kSelectChannel, handle);
    Argument info(command, info_object);
    return sendBroadcastInfo(command, info);
}

jobject dtvSvLibStartSearchChannel(JNIEnv* env, jobject, jint handle, jobject info_object,
                                   jint channel_operation) {
    Command command(env, __func__, command_row::kStartSearchChannel, handle);
    Argument info(command, info_object);
    info.requireObject(kNullInfo);
    TS_SEARCH_CHANNEL_REQ& record = command.record;
    readBroadcastInfo(info, record);
    if (command.refused()) {
        return command.answer();
    }
    record.channel_operation = static_cast<uint8_t>(channel_operation);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d, channel_operation = %d", record.handle,
                 record.channel_operation);
    traceBroadcastInfo(__func__, record);
    return command.send();
}
