// The commands of the hand-written bridge, and what the outside sees of it.
#include "hand/builder.h"
#include "hand/display.h"
#include "hand/hand.h"
#include "hand/sending.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace hand {
namespace {

// ---- Plain values.

template <class Policy>
jobject controlDecodeAudio(JNIEnv* env, jobject, jint handle, jint onoff) {
    constexpr const char* kFunction = "dtvSvLibControlDecodeAudio";
    NATIVE_LINE(kFuncStart, kFunction, "hdl = %d", handle);
    if (onoff > kLastOnOff) {
        return resultConstant<Policy>(env, kParamNg);
    }
    TS_ONE_VALUE_REQ record = {static_cast<uint16_t>(handle), static_cast<uint8_t>(onoff), 0};
    NATIVE_LINE(kDebug, kFunction, "SEND, CONTROL_DECODE_AUDIO : dtvsv_handle = %d, onoff = %d",
                record.handle, record.value);
    return send<Policy>(env, kFunction, command_row::kControlDecodeAudio, &record, sizeof(record));
}

template <class Policy>
jobject makeSyncAnswer(JNIEnv* env, jint result, jint handle) {
    return Builder<Policy>(env).make(kNew_BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO, result,
                                     handle);
}

/// The answer that a reply record becomes.
template <class Policy>
jobject readSyncAnswer(JNIEnv* env, [[maybe_unused]] int message_id,
                       const TS_COMMON_SYNC_REPLY& reply) {
    constexpr const char* kMaker = "makeComReplyObjSync";
    constexpr const char* kSubMaker = "makeComSubReplyObjSync";
    NATIVE_LINE(kFuncStart, kMaker, "");
    NATIVE_LINE(kFuncStart, kSubMaker, "message_id = 0x%x", static_cast<unsigned>(message_id));
    NATIVE_LINE(kDebug, kSubMaker, "retvalue = %d", 0);
    NATIVE_LINE(kDebug, kSubMaker, "com_data->handle = %d", reply.handle);
    NATIVE_LINE(kDebug, kSubMaker, "com_data->return_value = %d", reply.return_value);
    const jobject answer =
        makeSyncAnswer<Policy>(env, static_cast<jint>(reply.return_value), jint{reply.handle});
    NATIVE_LINE(kFuncEnd, kSubMaker, "");
    NATIVE_LINE(kFuncEnd, kMaker, "");
    return answer;
}

template <class Policy>
jobject controlDecodeAudioSync(JNIEnv* env, jobject, jint handle, jint onoff) {
    constexpr const char* kFunction = "dtvSvLibControlDecodeAudio_Sync";
    constexpr const CommandRow& kRow = command_row::kControlDecodeAudio_Sync;
    NATIVE_LINE(kFuncStart, kFunction, "hdl = %d", handle);
    if (onoff > kLastOnOff) {
        return resultConstant<Policy>(env, kParamNg);
    }
    TS_ONE_VALUE_REQ record = {static_cast<uint16_t>(handle), static_cast<uint8_t>(onoff), 0};
    NATIVE_LINE(kDebug, kFunction, "SEND, TERMINATE_PLAY : dtvsv_handle = %d", record.handle);
    TS_COMMON_SYNC_REPLY reply = {};
    int reply_size = 0;
    const int ret = listenerOf<Policy>().sendEventToServer(kRow.id, &record, sizeof(record), &reply,
                                                           &reply_size);
    if (ret != 0) {
        return makeSyncAnswer<Policy>(env, kNg, record.handle);
    }
    TS_TRACED_SYNC_REPLY traced;
    std::memcpy(&traced, &reply, sizeof(traced));
    NATIVE_LINE(kDebug, kFunction, "RECV, reply_size = %d", reply_size);
    NATIVE_LINE(kDebug, kFunction, "RECV, reply_data.handle = %d", traced.handle);
    NATIVE_LINE(kDebug, kFunction, "RECV, reply_data.return_value = %d", traced.return_value);
    constexpr jint kAbortNg = 16;
    if (reply_size == 0 && traced.handle == 0) {
        return makeSyncAnswer<Policy>(env, kAbortNg, record.handle);
    }
    NATIVE_LINE(kFuncEnd, kFunction, "ret = %d", 0);
    return readSyncAnswer<Policy>(env, kRow.id, reply);
}

// ---- An object of two ints.

template <class Policy>
jobject selectChannel(JNIEnv* env, jobject, jint handle, jobject info) {
    constexpr const char* kFunction = "dtvSvLibSelectChannel";
    constexpr jint kLastPhysicalChannel = 62;
    constexpr jint kLastServiceNo = 2;
    NATIVE_LINE(kFuncStart, kFunction, "hdl = %d", handle);
    if (info == nullptr) {
        return resultConstant<Policy>(env, kParamNg);
    }
    const jclass clazz = classOf<Policy>(env, info);
    TS_BROADCAST_INFO_REQ record = {};
    record.handle = static_cast<uint16_t>(handle);
    const jint channel = arguments.physical_channel.getInt<Policy>(env, clazz, info);
    if (channel > kLastPhysicalChannel) {
        return resultConstant<Policy>(env, kParamNg);
    }
    record.physical_channel = channel;
    const jint service = arguments.service_no.getInt<Policy>(env, clazz, info);
    if (service > kLastServiceNo) {
        return resultConstant<Policy>(env, kParamNg);
    }
    record.service_no = static_cast<uint16_t>(service);
    NATIVE_LINE(kDebug, kFunction, "SEND, dtvsv_handle = %d", record.handle);
    NATIVE_LINE(kDebug, kFunction, "SEND, BROADCAST_INFO : physical_channel = %ld, service_no = %d",
                asLong(record.physical_channel), record.service_no);
    return send<Policy>(env, kFunction, command_row::kSelectChannel, &record, sizeof(record));
}

// ---- A text and a byte array.

template <class Policy>
jobject readNvramReply(JNIEnv* env, jobject, jint handle, jobject reply) {
    constexpr const char* kFunction = "dtvSvLibBMLReadNvramReply";
    constexpr jsize kBlock = 64;
    NATIVE_LINE(kFuncStart, kFunction, "hdl = %d", handle);
    TS_READ_NVRAM_REPLY_REQ record = {};
    record.handle = static_cast<uint16_t>(handle);
    jint end_type = 0;
    if (reply == nullptr) {
        return resultConstant<Policy>(env, kParamNg);
    }
    const NvramFields& fields = arguments.nvram;
    const jclass clazz = classOf<Policy>(env, reply);
    if (!fields.end_type.read<Policy>(env, clazz, reply, end_type)) {
        return env->ExceptionCheck() ? nullptr : resultConstant<Policy>(env, kParamNg);
    }
    record.bml_end_type = static_cast<uint8_t>(end_type);
    const auto name = static_cast<jstring>(fields.ts_name.getObject<Policy>(env, clazz, reply));
    if (name == nullptr) {
        return resultConstant<Policy>(env, kParamNg);
    }
    NATIVE_LINE(kFuncStart, "convJStringToChar", "");
    copyText(env, name, record.ts_name, sizeof(record.ts_name));
    NATIVE_LINE(kFuncEnd, "convJStringToChar", "");
    const auto block = static_cast<jbyteArray>(fields.data.getObject<Policy>(env, clazz, reply));
    const jsize length = block != nullptr ? env->GetArrayLength(block) : kBlock + 1;
    if (length > kBlock) {
        return resultConstant<Policy>(env, kParamNg);
    }
    env->GetByteArrayRegion(block, 0, length, reinterpret_cast<jbyte*>(record.nvram_data));
    NATIVE_LINE(kDebug, kFunction, "SEND, READ_NVRAM_REPLY : bml_end_type = %d, ts_name = %s",
                record.bml_end_type, record.ts_name);
    return send<Policy>(env, kFunction, command_row::kBMLReadNvramReply, &record, sizeof(record));
}

// ---- What the outside gets.

template <class Policy>
bool bindNatives(JNIEnv* env, jclass proxy) {
#define RESULT VALUE_TYPE(BG_TE_DTVSVLIB_RESULT)
#define NATIVE(name, parameters, result, function)                                                 \
    {                                                                                              \
        const_cast<char*>("DtvSvLib_" name), const_cast<char*>("(" parameters ")" result),         \
            reinterpret_cast<void*>(function<Policy>)                                              \
    }
    const JNINativeMethod natives[] = {
        NATIVE("ControlDecodeAudio", "II", RESULT, controlDecodeAudio),
        NATIVE("ControlDecodeAudio_Sync", "II",
               VALUE_TYPE(BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO), controlDecodeAudioSync),
        NATIVE("SelectChannel", "I" VALUE_TYPE(BG_TS_DTVSVLIB_BROADCAST_INFO), RESULT,
               selectChannel),
        NATIVE("SetDisplayAll",
               "I" VALUE_TYPE(BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO) VALUE_TYPE(
                   BG_TS_DTVSVLIB_CAP_DRAWING_INFO) VALUE_TYPE(BG_TS_DTVSVLIB_BML_DRAWING_INFO),
               RESULT, setDisplayAll),
        NATIVE("BMLReadNvramReply", "I" VALUE_TYPE(BG_TS_DTVSVLIB_READ_NVRAM_REPLY), RESULT,
               readNvramReply),
    };
#undef NATIVE
#undef RESULT
    return env->RegisterNatives(proxy, natives, sizeof(natives) / sizeof(natives[0])) == JNI_OK;
}

} // namespace

std::string load(JavaVM* java_vm, JNIEnv* env) {
    vm = java_vm;
    const std::string missing = resolve(env);
    return missing.empty() ? arguments.resolve(env) : missing;
}

std::string resolveIds(JNIEnv* env) {
    return resolve(env);
}

DtvSvLibListener* listener(Variant variant) {
    switch (variant) {
    case Variant::kKept:
        return &listenerOf<Kept>();
    case Variant::kKeptWithLines:
        return &listenerOf<KeptWithLines>();
    case Variant::kLooksUp:
        return &listenerOf<LooksUp>();
    case Variant::kLooksUpWithLines:
        return &listenerOf<LooksUpWithLines>();
    }
    return nullptr;
}

bool bind(JNIEnv* env, jclass proxy, Variant variant) {
    switch (variant) {
    case Variant::kKept:
        return bindNatives<Kept>(env, proxy);
    case Variant::kKeptWithLines:
        return bindNatives<KeptWithLines>(env, proxy);
    case Variant::kLooksUp:
        return bindNatives<LooksUp>(env, proxy);
    case Variant::kLooksUpWithLines:
        return bindNatives<LooksUpWithLines>(env, proxy);
    }
    return false;
}

} // namespace hand
