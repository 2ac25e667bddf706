// The synchronous commands without Java objects. Those with them stand beside their twins.
#include "commands/command.h"
#include "commands/enum_fields.h"
#include "commands/natives.h"
#include "records/command_records.h"
#include "records/message_ids.h"

using trace::kDebug;

namespace {

/// The two decoders' request. A refusal answers the result enumeration's constant although Java
/// declares another class; callers that pass checked values never meet it.
Ended readOnOff(const Command& command, jint onoff, TS_ONE_VALUE_REQ& record) {
    if (onoff > kLastOnOff) {
        const jobject refused = getRetCode(command.env, kResultParamNg);
        TRACE_NATIVE(kDebug, command.function, "onoff too large : %d, ret = %d", onoff,
                     kResultParamNg);
        return refused;
    }
    record.handle = command.handle();
    record.value = static_cast<uint8_t>(onoff);
    return kGoOn;
}

} // namespace

jobject dtvSvLibRelease_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_id::kRelease_Sync, handle);
}

jobject dtvSvLibCancelScan_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_id::kCancelScan_Sync, handle);
}

jobject dtvSvLibTerminateBroadcastReceiving_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_id::kTerminateBroadcastReceiving_Sync, handle);
}

jobject dtvSvLibBMLEndTvLinkReq_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_id::kBMLEndTvLink_Sync, handle);
}

jobject dtvSvLibTerminatePlay_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_id::kTerminatePlay_Sync, handle,
                      SENDS_HANDLE("SEND, TERMINATE_PLAY : dtvsv_handle = %d"));
}

jobject dtvSvLibControlDecodeScreen_Sync(JNIEnv* env, jobject, jint handle, jint onoff) {
    const Command command =
        beginCommand(env, __func__, command_id::kControlDecodeScreen_Sync, handle);
    TS_ONE_VALUE_REQ record = {};
    if (const Ended ended = readOnOff(command, onoff, record)) {
        return *ended;
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d, onoff = %d", record.handle,
                 record.value);
    return send(command, record);
}

jobject dtvSvLibControlDecodeAudio_Sync(JNIEnv* env, jobject, jint handle, jint onoff) {
    const Command command =
        beginCommand(env, __func__, command_id::kControlDecodeAudio_Sync, handle);
    TS_ONE_VALUE_REQ record = {};
    if (const Ended ended = readOnOff(command, onoff, record)) {
        return *ended;
    }
    // The label is that of the end of a playback.
    TRACE_NATIVE(kDebug, __func__, "SEND, TERMINATE_PLAY : dtvsv_handle = %d", record.handle);
    return send(command, record);
}
