// The command of the three planes with their surfaces.
#pragma once

#include "hand/sending.h"

#include <gui/Surface.h>

namespace hand {

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
    NATIVE_LINE(trace::kFuncStart, "setSurface", "");
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
    NATIVE_LINE(trace::kFuncEnd, "setSurface", "");
    return true;
}

template <class Policy>
bool readScreen(JNIEnv* env, jobject plane, SCREEN_DRAWING_INFO& out, TS_DTVSV_SP& surfaces) {
    NATIVE_LINE(trace::kFuncStart, "setScreenDrawingInfo", "");
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
    NATIVE_LINE(trace::kFuncEnd, "setScreenDrawingInfo", "");
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
    NATIVE_LINE(trace::kFuncStart, "setCapDrawingInfo", "");
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
    NATIVE_LINE(trace::kFuncEnd, "setCapDrawingInfo", "");
    const bool read = readSurface<Policy>(env, fields, clazz, plane, surfaces);
    release<Policy>(env, clazz);
    return read;
}

template <class Policy>
bool readBml(JNIEnv* env, jobject plane, BML_DRAWING_INFO& out, TS_DTVSV_SP& surfaces) {
    NATIVE_LINE(trace::kFuncStart, "setBMLDrawingInfo", "");
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
    NATIVE_LINE(trace::kFuncEnd, "setBMLDrawingInfo", "");
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
#define SEND_LINE(text, value) NATIVE_LINE(trace::kDebug, function, "SEND, " text " = %d", value)
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
    NATIVE_LINE(trace::kFuncStart, kFunction, "hdl = %d", handle);
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

} // namespace hand
