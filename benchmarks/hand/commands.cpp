// The commands of the hand-written bridge.
#include "hand/hand.h"

#include "hand/arguments.h"
#include "hand/listener.h"
#include "records/messages.h"

#include <gui/Surface.h>

using trace::asLong;
using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace hand {
namespace {

// ---- Answers.

enum Code : int {
    kOk = 0,
    kNg = 1,
    kParamNg = 5
};

template <class Policy>
jobject resultConstant(JNIEnv* env, Code code) {
    constexpr const char* kFunction = "getRetCode";
    NATIVE_LINE(kFuncStart, kFunction, "(param)ret = %d", code);
    const jobject constant = arguments.result[code].get<Policy>(env);
    NATIVE_LINE(kFuncEnd, kFunction, "");
    return constant;
}

template <class Policy>
jobject send(JNIEnv* env, [[maybe_unused]] const char* function, const CommandRow& row,
             void* record, int size, TS_DTVSV_SP* surfaces = nullptr) {
    auto& listener = listenerOf<Policy>();
    const int ret =
        surfaces != nullptr
            ? listener.sendEventToServer(row.id, record, size, surfaces, nullptr, nullptr)
            : listener.sendEventToServer(row.id, record, size, nullptr, nullptr);
    const jobject constant = resultConstant<Policy>(env, ret == 0 ? kOk : kNg);
    NATIVE_LINE(kFuncEnd, function, "ret = %d", ret);
    return constant;
}

// ---- Plain values.

constexpr jint kLastOnOff = 1;

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
    constexpr TE_DTVSV_METHODID kConstructor = kNew_BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO;
    const int class_id = kMethodTable[kConstructor].class_id;
    LISTENER_LINE(kDebug, "CallMethod", "CallMethod, method_id = %d, class_id = %d, attr_id = %d",
                  static_cast<int>(kConstructor), class_id, kInstanceMethod);
    LISTENER_LINE(trace::kInfo, "CallMethod", "CallMethod, NewObject");
    jvalue values[2];
    values[0].i = result;
    values[1].i = handle;
    const jobject answer =
        env->NewObjectA(java.classes[class_id], java.methods[kConstructor], values);
    LISTENER_LINE(trace::kInfo, "setJavaMethod", "setJavaMethod");
    return answer;
}

template <class Policy>
jobject controlDecodeAudioSync(JNIEnv* env, jobject, jint handle, jint onoff) {
    constexpr const char* kFunction = "dtvSvLibControlDecodeAudio_Sync";
    constexpr const char* kMaker = "makeComReplyObjSync";
    constexpr const char* kSubMaker = "makeComSubReplyObjSync";
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
    NATIVE_LINE(kFuncStart, kMaker, "");
    NATIVE_LINE(kFuncStart, kSubMaker, "message_id = 0x%x", static_cast<unsigned>(kRow.id));
    NATIVE_LINE(kDebug, kSubMaker, "retvalue = %d", 0);
    NATIVE_LINE(kDebug, kSubMaker, "com_data->handle = %d", reply.handle);
    NATIVE_LINE(kDebug, kSubMaker, "com_data->return_value = %d", reply.return_value);
    const jobject answer =
        makeSyncAnswer<Policy>(env, static_cast<jint>(reply.return_value), jint{reply.handle});
    NATIVE_LINE(kFuncEnd, kSubMaker, "");
    NATIVE_LINE(kFuncEnd, kMaker, "");
    return answer;
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

// ---- Three planes with their surfaces.

constexpr jint kLastRotate = 3;
constexpr jint kLastScreenMode = 3;
constexpr jint kLastBackgroundColor = 8;

/// Reads a constant into a field of a record. False when it cannot be read or is too large.
template <class Policy, typename Field>
bool readEnumUpTo(JNIEnv* env, jint limit, const EnumField& field, jclass clazz, jobject holder,
                  Field& out) {
    jint value = 0;
    if (!field.read<Policy>(env, clazz, holder, value) || value > limit) {
        return false;
    }
    out = static_cast<Field>(value);
    return true;
}

template <class Policy, typename Field>
void readInt(JNIEnv* env, const IntField& field, jclass clazz, jobject holder, Field& out) {
    out = static_cast<Field>(field.getInt<Policy>(env, clazz, holder));
}

template <class Policy>
bool readSurface(JNIEnv* env, const PlaneFields& fields, jclass clazz, jobject plane,
                 TS_DTVSV_SP& surfaces) {
    NATIVE_LINE(kFuncStart, "setSurface", "");
    // The class of surfaces is kept in every variant.
    const jclass surface_class = java.classes[class_id::kSurface];
    const jfieldID address_field = arguments.surface_address.id<Policy>(env, surface_class);
    const jobject surface = fields.surface.getObject<Policy>(env, clazz, plane);
    if (surface == nullptr) {
        return false;
    }
    const auto address = static_cast<uint32_t>(env->GetIntField(surface, address_field));
    surfaces.surface[surfaces.surface_count++] =
        reinterpret_cast<android::Surface*>(static_cast<uintptr_t>(address));
    release<Policy>(env, surface);
    NATIVE_LINE(kFuncEnd, "setSurface", "");
    return true;
}

template <class Policy>
bool readScreen(JNIEnv* env, jobject plane, SCREEN_DRAWING_INFO& out, TS_DTVSV_SP& surfaces) {
    NATIVE_LINE(kFuncStart, "setScreenDrawingInfo", "");
    if (plane == nullptr) {
        return false;
    }
    const PlaneFields& fields = arguments.screen;
    const jclass clazz = classOf<Policy>(env, plane);
    if (!readEnumUpTo<Policy>(env, kLastRotate, fields.rotate, clazz, plane, out.screen_rotate) ||
        !readEnumUpTo<Policy>(env, kLastScreenMode, arguments.screen_mode, clazz, plane,
                              out.screen_mode)) {
        return false;
    }
    readInt<Policy>(env, fields.width, clazz, plane, out.surface_width);
    readInt<Policy>(env, fields.height, clazz, plane, out.surface_height);
    NATIVE_LINE(kFuncEnd, "setScreenDrawingInfo", "");
    const bool read = readSurface<Policy>(env, fields, clazz, plane, surfaces);
    release<Policy>(env, clazz);
    return read;
}

template <class Policy>
bool readLayout(JNIEnv* env, jobject layout, CAP_DISPLAY_INFO& out) {
    const LayoutFields& fields = arguments.layout;
    const jclass clazz = classOf<Policy>(env, layout);
    readInt<Policy>(env, fields.font_size, clazz, layout, out.font_size);
    readInt<Policy>(env, fields.characters_num, clazz, layout, out.characters_num);
    readInt<Policy>(env, fields.lines_num, clazz, layout, out.lines_num);
    readInt<Policy>(env, fields.separator_size, clazz, layout, out.separator_size);
    const jint x = fields.position_x.getInt<Policy>(env, clazz, layout);
    const jint y = fields.position_y.getInt<Policy>(env, clazz, layout);
    if (x < 0 || y < 0) {
        return false;
    }
    out.position_x = static_cast<uint16_t>(x);
    out.position_y = static_cast<uint16_t>(y);
    const bool read = readEnumUpTo<Policy>(env, kLastBackgroundColor, fields.background_color,
                                           clazz, layout, out.background_color) &&
                      readEnumUpTo<Policy>(env, kLastOnOff, fields.background_alpha, clazz, layout,
                                           out.background_alpha);
    release<Policy>(env, clazz);
    return read;
}

template <class Policy>
bool readCaptions(JNIEnv* env, jobject plane, CAP_DRAWING_INFO& out, TS_DTVSV_SP& surfaces) {
    NATIVE_LINE(kFuncStart, "setCapDrawingInfo", "");
    if (plane == nullptr) {
        return false;
    }
    const PlaneFields& fields = arguments.captions;
    const jclass clazz = classOf<Policy>(env, plane);
    if (!readEnumUpTo<Policy>(env, kLastRotate, fields.rotate, clazz, plane, out.screen_rotate)) {
        return false;
    }
    readInt<Policy>(env, fields.width, clazz, plane, out.surface_width);
    readInt<Policy>(env, fields.height, clazz, plane, out.surface_height);
    const jobject layout = arguments.cap_info.getObject<Policy>(env, clazz, plane);
    if (layout == nullptr || !readLayout<Policy>(env, layout, out.cap_info)) {
        return false;
    }
    release<Policy>(env, layout);
    NATIVE_LINE(kFuncEnd, "setCapDrawingInfo", "");
    const bool read = readSurface<Policy>(env, fields, clazz, plane, surfaces);
    release<Policy>(env, clazz);
    return read;
}

template <class Policy>
bool readBml(JNIEnv* env, jobject plane, BML_DRAWING_INFO& out, TS_DTVSV_SP& surfaces) {
    NATIVE_LINE(kFuncStart, "setBMLDrawingInfo", "");
    if (plane == nullptr) {
        return false;
    }
    const PlaneFields& fields = arguments.bml;
    const jclass clazz = classOf<Policy>(env, plane);
    if (!readEnumUpTo<Policy>(env, kLastRotate, fields.rotate, clazz, plane, out.screen_rotate)) {
        return false;
    }
    readInt<Policy>(env, fields.width, clazz, plane, out.surface_width);
    readInt<Policy>(env, fields.height, clazz, plane, out.surface_height);
    NATIVE_LINE(kFuncEnd, "setBMLDrawingInfo", "");
    const bool read = readSurface<Policy>(env, fields, clazz, plane, surfaces);
    release<Policy>(env, clazz);
    return read;
}

template <class Policy>
void traceDisplayAll([[maybe_unused]] const char* function,
                     [[maybe_unused]] const TS_DISPLAY_ALL_REQ& record) {
    [[maybe_unused]] const SCREEN_DRAWING_INFO& screen = record.screen;
    [[maybe_unused]] const CAP_DRAWING_INFO& cap = record.cap;
    [[maybe_unused]] const CAP_DISPLAY_INFO& layout = record.cap.cap_info;
    [[maybe_unused]] const BML_DRAWING_INFO& bml = record.bml;
#define SEND_LINE(text, value) NATIVE_LINE(kDebug, function, "SEND, " text " = %d", value)
    SEND_LINE("dtvsv_handle", record.handle);
    SEND_LINE("SCREEN_DRAWING_INFO : surface_width ", screen.surface_width);
    SEND_LINE("SCREEN_DRAWING_INFO : surface_height", screen.surface_height);
    SEND_LINE("SCREEN_DRAWING_INFO : screen_rotate ", screen.screen_rotate);
    SEND_LINE("SCREEN_DRAWING_INFO : screen_mode   ", screen.screen_mode);
    SEND_LINE("CAP_DRAWING_INFO: surface_width ", cap.surface_width);
    SEND_LINE("CAP_DRAWING_INFO: surface_height", cap.surface_height);
    SEND_LINE("CAP_DRAWING_INFO: screen_rotate ", cap.screen_rotate);
    SEND_LINE("CAP_DISPLAY_INFO: font_size       ", layout.font_size);
    SEND_LINE("CAP_DISPLAY_INFO: characters_num  ", layout.characters_num);
    SEND_LINE("CAP_DISPLAY_INFO: lines_num       ", layout.lines_num);
    SEND_LINE("CAP_DISPLAY_INFO: separator_size  ", layout.separator_size);
    SEND_LINE("CAP_DISPLAY_INFO: position_x      ", layout.position_x);
    SEND_LINE("CAP_DISPLAY_INFO: position_y      ", layout.position_y);
    SEND_LINE("CAP_DISPLAY_INFO: background_color", layout.background_color);
    SEND_LINE("CAP_DISPLAY_INFO: background_alpha", layout.background_alpha);
    SEND_LINE("BML_DRAWING_INFO: surface_width ", bml.surface_width);
    SEND_LINE("BML_DRAWING_INFO: surface_height", bml.surface_height);
    SEND_LINE("BML_DRAWING_INFO: screen_rotate ", bml.screen_rotate);
#undef SEND_LINE
}

template <class Policy>
jobject setDisplayAll(JNIEnv* env, jobject, jint handle, jobject screen, jobject cap, jobject bml) {
    constexpr const char* kFunction = "dtvSvLibSetDisplayAll";
    NATIVE_LINE(kFuncStart, kFunction, "hdl = %d", handle);
    TS_DISPLAY_ALL_REQ record = {};
    record.handle = static_cast<uint16_t>(handle);
    TS_DTVSV_SP surfaces;
    if (!readScreen<Policy>(env, screen, record.screen, surfaces) ||
        !readCaptions<Policy>(env, cap, record.cap, surfaces) ||
        !readBml<Policy>(env, bml, record.bml, surfaces)) {
        return env->ExceptionCheck() ? nullptr : resultConstant<Policy>(env, kParamNg);
    }
    traceDisplayAll<Policy>(kFunction, record);
    return send<Policy>(env, kFunction, command_row::kSetDisplayAll, &record, sizeof(record),
                        &surfaces);
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
