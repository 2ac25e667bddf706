// The synchronous commands without Java objects. Those with them are beside their asynchronous
// variants.
#include "commands/command.h"
#include "commands/natives.h"

using trace::kDebug;

namespace {

constexpr jint kLastOnOff = 1;

/// Refuses the argument of the two decoder commands. The answer is the constant of the result
/// enumeration although Java declares another class; callers that pass checked values never get it.
jobject refuseOnOff(const NativeCall& call, jint onoff) {
    const jobject refused = getRetCode(call.env(), kResultParamNg);
    TRACE_NATIVE(kDebug, call.function(), "onoff too large : %d, ret = %d", onoff, kResultParamNg);
    return refused;
}

} // namespace

jobject dtvSvLibRelease_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kRelease_Sync, handle);
}

jobject dtvSvLibCancelScan_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kCancelScan_Sync, handle);
}

jobject dtvSvLibTerminateBroadcastReceiving_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kTerminateBroadcastReceiving_Sync, handle);
}

jobject dtvSvLibBMLEndTvLinkReq_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kBMLEndTvLink_Sync, handle);
}

jobject dtvSvLibTerminatePlay_Sync(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kTerminatePlay_Sync, handle,
                      INT_LINE("SEND, TERMINATE_PLAY : dtvsv_handle = %d"));
}

jobject dtvSvLibControlDecodeScreen_Sync(JNIEnv* env, jobject, jint handle, jint onoff) {
    Command command(env, __func__, command_row::kControlDecodeScreen_Sync, handle);
    if (onoff > kLastOnOff) {
        return refuseOnOff(command, onoff);
    }
    command.record.value = static_cast<uint8_t>(onoff);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d, onoff = %d", command.record.handle,
                 command.record.value);
    return command.send();
}

jobject dtvSvLibControlDecodeAudio_Sync(JNIEnv* env, jobject, jint handle, jint onoff) {
    Command command(env, __func__, command_row::kControlDecodeAudio_Sync, handle);
    if (onoff > kLastOnOff) {
        return refuseOnOff(command, onoff);
    }
    command.record.value = static_cast<uint8_t>(onoff);
    // The label is that of the end of a playback.
    TRACE_NATIVE(kDebug, __func__, "SEND, TERMINATE_PLAY : dtvsv_handle = %d",
                 command.record.handle);
    return command.send();
}
