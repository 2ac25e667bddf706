// The commands that place the three planes and say what is shown on them. The surface of each plane
// is sent beside the record, in a TS_DTVSV_SP that drops its references when the native returns.
#include "commands/argument.h"
#include "commands/drawing_info.h"
#include "commands/natives.h"

using trace::kDebug;

namespace {

namespace component_setting = field::BG_TS_DTVSVLIB_COMPONENT_SETTING;

constexpr jint kLastCapLang = 8;
constexpr jint kLastStartType = 1;

constexpr FieldLine kNoVideoClass = INT_LINE("video drawing_info_clazz class is NULL, ret = %d");
constexpr FieldLine kNoCaptionClass =
    INT_LINE("caption drawing_info_clazz class is NULL, ret = %d");
constexpr FieldLine kNoBmlClass = INT_LINE("BML drawing_info_clazz class is NULL, ret = %d");

constexpr FieldLine kNullDrawingInfo = INT_LINE("drawing_info_obj is NULL, ret = %d");

// ---- Captions and BML: the command and its synchronous variant.

jobject controlCap(Command<TS_CONTROL_CAP_REQ>& command, jint cap_control_type, jint cap_lang,
                   jobject info) {
    TS_CONTROL_CAP_REQ& record = command.record;
    Argument(command, info).requireObject(INT_LINE("cap_drawing_info_obj is NULL, ret = %d"));
    record.cap_control_type = readControlType(
        command, cap_control_type, TWO_INTS_LINE("cap_control_type is too large : %d, ret = %d"));
    if (!command.refused() && cap_lang > kLastCapLang) {
        command.refuse(TWO_INTS_LINE("cap_lang is too large : %d, ret = %d"), cap_lang,
                       kResultParamNg);
    }
    record.cap_lang = static_cast<uint8_t>(cap_lang);
    TS_DTVSV_SP surfaces;
    takePlane(command, info, setCapDrawingInfo, &record.cap, surfaces,
              INT_LINE("cap drawing_info_clazz class is NULL, ret = %d"));
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, command.function(), "SEND, handle           = %d", record.handle);
    TRACE_NATIVE(kDebug, command.function(), "SEND, cap_control_type = %d",
                 record.cap_control_type);
    TRACE_NATIVE(kDebug, command.function(), "SEND, cap_lang         = %d", record.cap_lang);
    traceCapDrawingInfo(command.function(), record.cap);
    return command.send(&surfaces);
}

jobject controlBML(Command<TS_CONTROL_BML_REQ>& command, jint bml_control_type, jobject info) {
    TS_CONTROL_BML_REQ& record = command.record;
    Argument(command, info).requireObject(INT_LINE("bml_drawing_info_obj is NULL, ret = %d"));
    record.bml_control_type = readControlType(
        command, bml_control_type, TWO_INTS_LINE("bml_control_type is too large : %d, ret = %d"));
    TS_DTVSV_SP surfaces;
    takePlane(command, info, setBMLDrawingInfo, &record.bml, surfaces,
              INT_LINE("bml drawing_info_clazz class is NULL, ret = %d"));
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, command.function(), "SEND, handle           = %d", record.handle);
    TRACE_NATIVE(kDebug, command.function(), "SEND, bml_control_type = %d",
                 record.bml_control_type);
    traceBMLDrawingInfo(command.function(), record.bml);
    return command.send(&surfaces);
}

// ---- What is presented when reception starts.

/// Reads the enumerations of a component setting, in the order in which they are checked.
void readComponents(Command<TS_COMPONENT_SETTING_REQ>& command, Argument& setting) {
    TS_COMPONENT_SETTING_REQ& record = command.record;
    record.audio_component = setting.readEnum(component_setting::audio_component);
    record.cap_lang = setting.readEnum(component_setting::cap_lang);
    record.dualmono = setting.readEnum(component_setting::dualmono);
    const jint cap_start_type = setting.readEnum(component_setting::cap_start_type);
    if (cap_start_type > kLastStartType) {
        command.refuse(INT_LINE("cap_start_type out of value Error, cap_start_type = %d"),
                       cap_start_type);
    }
    record.cap_start_type = static_cast<uint8_t>(cap_start_type);
    const jint bml_start_type = setting.readEnum(component_setting::bml_start_type);
    if (bml_start_type > kLastStartType) {
        command.refuse(INT_LINE("bml_start_type out of value Error, bml_start_type = %d"),
                       bml_start_type);
    }
    record.bml_start_type = static_cast<uint8_t>(bml_start_type);
}

void traceComponents(const char* function, const TS_COMPONENT_SETTING_REQ& record) {
    TRACE_NATIVE(kDebug, function, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, function, "SEND, COMPONENT_SETTING : cap_start_type  = %d",
                 record.cap_start_type);
    TRACE_NATIVE(kDebug, function, "SEND, COMPONENT_SETTING : bml_start_type  = %d",
                 record.bml_start_type);
    TRACE_NATIVE(kDebug, function, "SEND, COMPONENT_SETTING : cap_lang        = %d",
                 record.cap_lang);
    TRACE_NATIVE(kDebug, function, "SEND, COMPONENT_SETTING : dualmono        = %d",
                 record.dualmono);
    TRACE_NATIVE(kDebug, function, "SEND, COMPONENT_SETTING : audio_component = %d",
                 record.audio_component);
}

} // namespace

jobject dtvSvLibSetScreenDisplay(JNIEnv* env, jobject, jint handle, jobject info) {
    Command command(env, __func__, command_row::kSetScreenDisplay, handle);
    Argument(command, info).requireObject(kNullDrawingInfo);
    TS_DTVSV_SP surfaces;
    takePlane(command, info, setScreenDrawingInfo, &command.record.screen, surfaces, kNoVideoClass);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", command.record.handle);
    traceScreenDrawingInfo(__func__, command.record.screen);
    return command.send(&surfaces);
}

jobject dtvSvLibSetCapDisplay(JNIEnv* env, jobject, jint handle, jobject info) {
    Command command(env, __func__, command_row::kSetCapDisplay, handle);
    Argument(command, info).requireObject(kNullDrawingInfo);
    TS_DTVSV_SP surfaces;
    takePlane(command, info, setCapDrawingInfo, &command.record.cap, surfaces, kNoCaptionClass);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", command.record.handle);
    traceCapDisplayCommand(__func__, command.record.cap);
    return command.send(&surfaces);
}

jobject dtvSvLibSetBMLDisplay(JNIEnv* env, jobject, jint handle, jobject info) {
    Command command(env, __func__, command_row::kSetBMLDisplay, handle);
    Argument(command, info).requireObject(kNullDrawingInfo);
    TS_DTVSV_SP surfaces;
    takePlane(command, info, setBMLDrawingInfo, &command.record.bml, surfaces, kNoBmlClass);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", command.record.handle);
    traceBMLDrawingInfo(__func__, command.record.bml);
    return command.send(&surfaces);
}

// The planes are not checked for null here: a null one is refused for having no class.
jobject dtvSvLibSetDisplayAll(JNIEnv* env, jobject, jint handle, jobject screen, jobject cap,
                              jobject bml) {
    Command command(env, __func__, command_row::kSetDisplayAll, handle);
    TS_DISPLAY_ALL_REQ& record = command.record;
    TS_DTVSV_SP surfaces;
    takePlane(command, screen, setScreenDrawingInfo, &record.screen, surfaces, kNoVideoClass);
    takePlane(command, cap, setCapDrawingInfo, &record.cap, surfaces, kNoCaptionClass);
    takePlane(command, bml, setBMLDrawingInfo, &record.bml, surfaces, kNoBmlClass);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    traceScreenDrawingInfo(__func__, record.screen);
    traceCapDrawingInfo(__func__, record.cap);
    traceBMLDrawingInfo(__func__, record.bml);
    return command.send(&surfaces);
}

jobject dtvSvLibControlCap(JNIEnv* env, jobject, jint handle, jint cap_control_type, jint cap_lang,
                           jobject info) {
    Command command(env, __func__, command_row::kControlCap, handle);
    return controlCap(command, cap_control_type, cap_lang, info);
}

jobject dtvSvLibControlCap_Sync(JNIEnv* env, jobject, jint handle, jint cap_control_type,
                                jint cap_lang, jobject info) {
    Command command(env, __func__, command_row::kControlCap_Sync, handle);
    return controlCap(command, cap_control_type, cap_lang, info);
}

jobject dtvSvLibControlBML(JNIEnv* env, jobject, jint handle, jint bml_control_type, jobject info) {
    Command command(env, __func__, command_row::kControlBML, handle);
    return controlBML(command, bml_control_type, info);
}

jobject dtvSvLibControlBML_Sync(JNIEnv* env, jobject, jint handle, jint bml_control_type,
                                jobject info) {
    Command command(env, __func__, command_row::kControlBML_Sync, handle);
    return controlBML(command, bml_control_type, info);
}

jobject dtvSvLibSetFirstComponent(JNIEnv* env, jobject, jint handle, jobject setting_object) {
    Command command(env, __func__, command_row::kSetFirstComponent, handle);
    Argument setting(command, setting_object);
    setting.requireObject(INT_LINE("component_setting_obj is NULL, ret = %d"));
    readComponents(command, setting);
    setting.requireClass(INT_LINE("component_setting_clazz class is NULL, ret = %d"));
    TS_COMPONENT_SETTING_REQ& record = command.record;
    TS_DTVSV_SP surfaces;
    takePlane(command, setting.readObject(component_setting::video_drawing_info),
              setScreenDrawingInfo, &record.screen, surfaces, kNoVideoClass);
    takePlane(command, setting.readObject(component_setting::cap_drawing_info), setCapDrawingInfo,
              &record.cap, surfaces, kNoCaptionClass);
    takePlane(command, setting.readObject(component_setting::bml_drawing_info), setBMLDrawingInfo,
              &record.bml, surfaces, kNoBmlClass);
    if (command.refused()) {
        return command.answer();
    }
    traceComponents(__func__, record);
    traceScreenDrawingInfo(__func__, record.screen);
    traceCapDrawingInfo(__func__, record.cap);
    traceBMLDrawingInfo(__func__, record.bml);
    return command.send(&surfaces);
}
