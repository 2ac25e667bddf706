// The commands that place the three planes and say what is shown on them. Each plane's surface
// travels beside the record, in a carrier that drops its references when the native returns.
#include "commands/drawing_info.h"
#include "commands/fields.h"
#include "commands/natives.h"
#include "records/command_records.h"
#include "records/message_ids.h"

using trace::kDebug;

namespace {

constexpr jint kLastCapLang = 8;
constexpr jint kLastStartType = 1;

/// The enumerations of BG_TS_DTVSVLIB_COMPONENT_SETTING.
constexpr EnumField kAudioComponent = {
    "audio_component", VALUE_TYPE(BG_TE_DTVSVLIB_AUDIO_COMPONENT), "getAudioComponentValue"};
constexpr EnumField kCapLang = {"cap_lang", VALUE_TYPE(BG_TE_DTVSVLIB_CAP_LANG), "getCapLangValue"};
constexpr EnumField kDualMono = {"dualmono", VALUE_TYPE(BG_TE_DTVSVLIB_DUALMONO),
                                 "getDualMonoValue"};
constexpr EnumField kCapStartType = {"cap_start_type", VALUE_TYPE(BG_TE_DTVSVLIB_CONTROL_TYPE),
                                     "getControlTypeValue"};
constexpr EnumField kBmlStartType = {"bml_start_type", VALUE_TYPE(BG_TE_DTVSVLIB_CONTROL_TYPE),
                                     "getControlTypeValue"};

#define VIDEO_CLASS_TEXT "video drawing_info_clazz class is NULL, ret = %d"
#define CAPTION_CLASS_TEXT "caption drawing_info_clazz class is NULL, ret = %d"
#define BML_CLASS_TEXT "BML drawing_info_clazz class is NULL, ret = %d"

// ---- Captions and BML: one way for the command and its synchronous twin.

jobject controlCap(const Command& command, jint cap_control_type, jint cap_lang, jobject info) {
    if (info == nullptr) {
        REFUSE(command, "cap_drawing_info_obj is NULL, ret = %d", kResultParamNg);
    }
    TS_CONTROL_CAP_REQ record = {};
    record.handle = command.handle();
    if (!isControlType(cap_control_type)) {
        REFUSE(command, "cap_control_type is too large : %d, ret = %d", cap_control_type,
               kResultParamNg);
    }
    record.cap_control_type = static_cast<uint8_t>(cap_control_type);
    if (cap_lang > kLastCapLang) {
        REFUSE(command, "cap_lang is too large : %d, ret = %d", cap_lang, kResultParamNg);
    }
    record.cap_lang = static_cast<uint8_t>(cap_lang);
    TS_DTVSV_SP carrier;
    TAKE_PLANE(command, info, setCapDrawingInfo, &record.cap, carrier,
               "cap drawing_info_clazz class is NULL, ret = %d");
    TRACE_NATIVE(kDebug, command.function, "SEND, handle           = %d", record.handle);
    TRACE_NATIVE(kDebug, command.function, "SEND, cap_control_type = %d", record.cap_control_type);
    TRACE_NATIVE(kDebug, command.function, "SEND, cap_lang         = %d", record.cap_lang);
    traceCapDrawingInfo(command.function, record.cap);
    return send(command, record, &carrier);
}

jobject controlBML(const Command& command, jint bml_control_type, jobject info) {
    if (info == nullptr) {
        REFUSE(command, "bml_drawing_info_obj is NULL, ret = %d", kResultParamNg);
    }
    TS_CONTROL_BML_REQ record = {};
    record.handle = command.handle();
    if (!isControlType(bml_control_type)) {
        REFUSE(command, "bml_control_type is too large : %d, ret = %d", bml_control_type,
               kResultParamNg);
    }
    record.bml_control_type = static_cast<uint8_t>(bml_control_type);
    TS_DTVSV_SP carrier;
    TAKE_PLANE(command, info, setBMLDrawingInfo, &record.bml, carrier,
               "bml drawing_info_clazz class is NULL, ret = %d");
    TRACE_NATIVE(kDebug, command.function, "SEND, handle           = %d", record.handle);
    TRACE_NATIVE(kDebug, command.function, "SEND, bml_control_type = %d", record.bml_control_type);
    traceBMLDrawingInfo(command.function, record.bml);
    return send(command, record, &carrier);
}

// ---- The planes of a component setting.

/// Reads the enumerations of a component setting in the order in which they are judged.
Ended readComponents(const Command& command, jobject setting, TS_COMPONENT_SETTING_REQ& record) {
    jint value = 0;
    READ_ENUM(command, setting, kAudioComponent, &value,
              "audio_component getEnumValue Error, ret = %d");
    record.audio_component = static_cast<uint8_t>(value);
    READ_ENUM(command, setting, kCapLang, &value, "cap_lang getEnumValue Error, ret = %d");
    record.cap_lang = static_cast<uint8_t>(value);
    READ_ENUM(command, setting, kDualMono, &value, "dualmono getEnumValue Error, ret = %d");
    record.dualmono = static_cast<uint8_t>(value);
    READ_ENUM(command, setting, kCapStartType, &value,
              "cap_start_type getEnumValue Error, ret = %d");
    if (value > kLastStartType) {
        REFUSE(command, "cap_start_type out of value Error, cap_start_type = %d", value);
    }
    record.cap_start_type = static_cast<uint8_t>(value);
    READ_ENUM(command, setting, kBmlStartType, &value,
              "bml_start_type getEnumValue Error, ret = %d");
    if (value > kLastStartType) {
        REFUSE(command, "bml_start_type out of value Error, bml_start_type = %d", value);
    }
    record.bml_start_type = static_cast<uint8_t>(value);
    return kGoOn;
}

/// Reads a plane's object from a component setting.
#define READ_PLANE_OBJECT(command, clazz, setting, name, type, object, null_text)                  \
    do {                                                                                           \
        jfieldID plane_field = nullptr;                                                            \
        FIND_FIELD(command, clazz, name, VALUE_TYPE(type), &plane_field,                           \
                   name " fieldID is NULL, ret = %d");                                             \
        *(object) = (command).env->GetObjectField(setting, plane_field);                           \
        if (*(object) == nullptr) {                                                                \
            REFUSE(command, null_text, kResultParamNg);                                            \
        }                                                                                          \
    } while (false)

Ended takeComponentPlanes(const Command& command, jclass clazz, jobject setting,
                          TS_COMPONENT_SETTING_REQ& record, TS_DTVSV_SP& carrier) {
    jobject plane = nullptr;
    READ_PLANE_OBJECT(command, clazz, setting, "video_drawing_info",
                      BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO, &plane,
                      "video drawing_info_obj object is NULL, ret = %d");
    TAKE_PLANE(command, plane, setScreenDrawingInfo, &record.screen, carrier, VIDEO_CLASS_TEXT);
    READ_PLANE_OBJECT(command, clazz, setting, "cap_drawing_info", BG_TS_DTVSVLIB_CAP_DRAWING_INFO,
                      &plane, "caption drawing_info_obj object is NULL, ret = %d");
    TAKE_PLANE(command, plane, setCapDrawingInfo, &record.cap, carrier, CAPTION_CLASS_TEXT);
    READ_PLANE_OBJECT(command, clazz, setting, "bml_drawing_info", BG_TS_DTVSVLIB_BML_DRAWING_INFO,
                      &plane, "BML drawing_info_obj object is NULL, ret = %d");
    TAKE_PLANE(command, plane, setBMLDrawingInfo, &record.bml, carrier, BML_CLASS_TEXT);
    return kGoOn;
}

} // namespace

jobject dtvSvLibSetScreenDisplay(JNIEnv* env, jobject, jint handle, jobject info) {
    const Command command = beginCommand(env, __func__, command_id::kSetScreenDisplay, handle);
    if (info == nullptr) {
        REFUSE(command, "drawing_info_obj is NULL, ret = %d", kResultParamNg);
    }
    TS_SCREEN_DISPLAY_REQ record = {};
    record.handle = command.handle();
    TS_DTVSV_SP carrier;
    TAKE_PLANE(command, info, setScreenDrawingInfo, &record.screen, carrier, VIDEO_CLASS_TEXT);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    traceScreenDrawingInfo(__func__, record.screen);
    return send(command, record, &carrier);
}

jobject dtvSvLibSetCapDisplay(JNIEnv* env, jobject, jint handle, jobject info) {
    const Command command = beginCommand(env, __func__, command_id::kSetCapDisplay, handle);
    if (info == nullptr) {
        REFUSE(command, "drawing_info_obj is NULL, ret = %d", kResultParamNg);
    }
    TS_CAP_DISPLAY_REQ record = {};
    record.handle = command.handle();
    TS_DTVSV_SP carrier;
    TAKE_PLANE(command, info, setCapDrawingInfo, &record.cap, carrier, CAPTION_CLASS_TEXT);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    traceCapDisplayCommand(__func__, record.cap);
    return send(command, record, &carrier);
}

jobject dtvSvLibSetBMLDisplay(JNIEnv* env, jobject, jint handle, jobject info) {
    const Command command = beginCommand(env, __func__, command_id::kSetBMLDisplay, handle);
    if (info == nullptr) {
        REFUSE(command, "drawing_info_obj is NULL, ret = %d", kResultParamNg);
    }
    TS_BML_DISPLAY_REQ record = {};
    record.handle = command.handle();
    TS_DTVSV_SP carrier;
    TAKE_PLANE(command, info, setBMLDrawingInfo, &record.bml, carrier, BML_CLASS_TEXT);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    traceBMLDrawingInfo(__func__, record.bml);
    return send(command, record, &carrier);
}

// The planes are not tested for null here: a null one is refused for having no class.
jobject dtvSvLibSetDisplayAll(JNIEnv* env, jobject, jint handle, jobject screen, jobject cap,
                              jobject bml) {
    const Command command = beginCommand(env, __func__, command_id::kSetDisplayAll, handle);
    TS_DISPLAY_ALL_REQ record = {};
    record.handle = command.handle();
    TS_DTVSV_SP carrier;
    TAKE_PLANE(command, screen, setScreenDrawingInfo, &record.screen, carrier, VIDEO_CLASS_TEXT);
    TAKE_PLANE(command, cap, setCapDrawingInfo, &record.cap, carrier, CAPTION_CLASS_TEXT);
    TAKE_PLANE(command, bml, setBMLDrawingInfo, &record.bml, carrier, BML_CLASS_TEXT);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    traceScreenDrawingInfo(__func__, record.screen);
    traceCapDrawingInfo(__func__, record.cap);
    traceBMLDrawingInfo(__func__, record.bml);
    return send(command, record, &carrier);
}

jobject dtvSvLibControlCap(JNIEnv* env, jobject, jint handle, jint cap_control_type, jint cap_lang,
                           jobject info) {
    return controlCap(beginCommand(env, __func__, command_id::kControlCap, handle),
                      cap_control_type, cap_lang, info);
}

jobject dtvSvLibControlCap_Sync(JNIEnv* env, jobject, jint handle, jint cap_control_type,
                                jint cap_lang, jobject info) {
    return controlCap(beginCommand(env, __func__, command_id::kControlCap_Sync, handle),
                      cap_control_type, cap_lang, info);
}

jobject dtvSvLibControlBML(JNIEnv* env, jobject, jint handle, jint bml_control_type, jobject info) {
    return controlBML(beginCommand(env, __func__, command_id::kControlBML, handle),
                      bml_control_type, info);
}

jobject dtvSvLibControlBML_Sync(JNIEnv* env, jobject, jint handle, jint bml_control_type,
                                jobject info) {
    return controlBML(beginCommand(env, __func__, command_id::kControlBML_Sync, handle),
                      bml_control_type, info);
}

jobject dtvSvLibSetFirstComponent(JNIEnv* env, jobject, jint handle, jobject setting) {
    const Command command = beginCommand(env, __func__, command_id::kSetFirstComponent, handle);
    if (setting == nullptr) {
        REFUSE(command, "component_setting_obj is NULL, ret = %d", kResultParamNg);
    }
    TS_COMPONENT_SETTING_REQ record = {};
    record.handle = command.handle();
    if (const Ended ended = readComponents(command, setting, record)) {
        return *ended;
    }
    const jclass clazz = classOf(env, setting);
    if (clazz == nullptr) {
        REFUSE(command, "component_setting_clazz class is NULL, ret = %d", kResultParamNg);
    }
    TS_DTVSV_SP carrier;
    if (const Ended ended = takeComponentPlanes(command, clazz, setting, record, carrier)) {
        return *ended;
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__, "SEND, COMPONENT_SETTING : cap_start_type  = %d",
                 record.cap_start_type);
    TRACE_NATIVE(kDebug, __func__, "SEND, COMPONENT_SETTING : bml_start_type  = %d",
                 record.bml_start_type);
    TRACE_NATIVE(kDebug, __func__, "SEND, COMPONENT_SETTING : cap_lang        = %d",
                 record.cap_lang);
    TRACE_NATIVE(kDebug, __func__, "SEND, COMPONENT_SETTING : dualmono        = %d",
                 record.dualmono);
    TRACE_NATIVE(kDebug, __func__, "SEND, COMPONENT_SETTING : audio_component = %d",
                 record.audio_component);
    traceScreenDrawingInfo(__func__, record.screen);
    traceCapDrawingInfo(__func__, record.cap);
    traceBMLDrawingInfo(__func__, record.bml);
    return send(command, record, &carrier);
}
