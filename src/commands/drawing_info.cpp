#include "commands/drawing_info.h"

#include "commands/java_access.h"
#include "commands/local_reference.h"

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

namespace bml_plane = field::BG_TS_DTVSVLIB_BML_DRAWING_INFO;
namespace cap_layout = field::BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
namespace cap_plane = field::BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
namespace screen_plane = field::BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;

constexpr jint kLastOnOff = 1;
constexpr jint kLastRotate = 3;
constexpr jint kLastScreenMode = 3;
constexpr jint kLastBackgroundColor = 8;

/// What most lines of these routines show as "ret". Those of the caption plane show PARAM_NG, yet
/// the routine answers 1.
constexpr int kFailed = 1;

/// Ends a routine: with its FUNCEND line when all was read.
int endRoutine(const char* routine, const Argument& info) {
    if (info.refused()) {
        return kFailed;
    }
    TRACE_NATIVE(kFuncEnd, routine, "");
    return 0;
}

} // namespace

int setScreenDrawingInfo(JNIEnv* env, jobject info_object, SCREEN_DRAWING_INFO* out) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    Argument info(env, __func__, info_object, kFailed);
    info.requireClass(INT_LINE("screen_drawing_info_clazz class is NULL, ret = %d"));
    const LocalReference clazz(env, info.clazz());
    out->screen_rotate =
        info.readEnumUpTo(kLastRotate, screen_plane::screen_rotate, out->screen_rotate);
    out->screen_mode =
        info.readEnumUpTo(kLastScreenMode, screen_plane::screen_mode, out->screen_mode);
    out->surface_width = info.readInt(screen_plane::surface_width, out->surface_width);
    out->surface_height = info.readInt(screen_plane::surface_height, out->surface_height);
    return endRoutine(__func__, info);
}

int setCapDrawingInfo(JNIEnv* env, jobject info_object, CAP_DRAWING_INFO* out) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    Argument info(env, __func__, info_object, kFailed);
    info.requireClass(INT_LINE("caption drawing_info_clazz class is NULL, ret = %d"));
    info.showRet(kResultParamNg);
    const LocalReference clazz(env, info.clazz());
    out->screen_rotate =
        info.readEnumUpTo(kLastRotate, cap_plane::screen_rotate, out->screen_rotate);
    out->surface_width = info.readInt(cap_plane::surface_width, out->surface_width);
    out->surface_height = info.readInt(cap_plane::surface_height, out->surface_height);
    const jobject display_info = info.readObject(cap_plane::cap_info);
    if (info.refused()) {
        return kFailed;
    }
    const LocalReference display_info_reference(env, display_info);
    if (setCapDisplayInfo(env, display_info, &out->cap_info) != 0) {
        return kFailed;
    }
    return endRoutine(__func__, info);
}

int setCapDisplayInfo(JNIEnv* env, jobject display_info_object, CAP_DISPLAY_INFO* out) {
    Argument info(env, __func__, display_info_object, kFailed);
    info.requireClass(INT_LINE("display_info_clazz class is NULL, ret = %d"));
    const LocalReference clazz(env, info.clazz());
    out->font_size = info.readInt(cap_layout::font_size, out->font_size);
    out->characters_num = info.readInt(cap_layout::characters_num, out->characters_num);
    out->lines_num = info.readInt(cap_layout::lines_num, out->lines_num);
    out->separator_size = info.readInt(cap_layout::separator_size, out->separator_size);
    out->position_x = info.readPosition(cap_layout::position_x, out->position_x);
    out->position_y = info.readPosition(cap_layout::position_y, out->position_y);
    out->background_color = info.readEnumUpTo(kLastBackgroundColor, cap_layout::background_color,
                                              out->background_color);
    out->background_alpha =
        info.readEnumUpTo(kLastOnOff, cap_layout::background_alpha, out->background_alpha);
    return info.refused() ? kFailed : 0;
}

int setBMLDrawingInfo(JNIEnv* env, jobject info_object, BML_DRAWING_INFO* out) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    Argument info(env, __func__, info_object, kFailed);
    info.requireClass(INT_LINE("BML drawing_info_clazz class is NULL, ret = %d"));
    const LocalReference clazz(env, info.clazz());
    out->screen_rotate =
        info.readEnumUpTo(kLastRotate, bml_plane::screen_rotate, out->screen_rotate);
    out->surface_width = info.readInt(bml_plane::surface_width, out->surface_width);
    out->surface_height = info.readInt(bml_plane::surface_height, out->surface_height);
    return endRoutine(__func__, info);
}

int setSurface(JNIEnv* env, jclass info_class, jobject info_object,
               android::sp<android::Surface>* slot) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    const jclass surface_class = g_listener->getJavaClass(class_id::kSurface);
    if (surface_class == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "surface_handle_clazz fieldID is NULL, ret = %d", kFailed);
        return kFailed;
    }
    const jfieldID address_field = findField(env, surface_class, field::Surface::mSurface, "I");
    if (address_field == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "mSurface fid Surface fieldID is NULL, ret = %d", kFailed);
        return kFailed;
    }
    // The field has one name in all three classes.
    const jfieldID handle_field =
        findField(env, info_class, screen_plane::surface_handle, SURFACE_TYPE);
    if (handle_field == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "surface_handle fid is NULL, ret = %d", kFailed);
        return kFailed;
    }
    const jobject surface =
        info_object != nullptr ? env->GetObjectField(info_object, handle_field) : nullptr;
    if (surface == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "surface_object is NULL, ret = %d", kFailed);
        return kFailed;
    }
    const LocalReference surface_reference(env, surface);
    // The platform keeps the surface's address in an int.
    const auto address = static_cast<uint32_t>(env->GetIntField(surface, address_field));
    *slot = reinterpret_cast<android::Surface*>(static_cast<uintptr_t>(address));
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return 0;
}

void takeSurface(NativeCall& call, jobject info_object, TS_DTVSV_SP& surfaces,
                 FieldLine missing_class, int line) {
    const jclass info_class = classOf(call.env(), info_object);
    if (info_class == nullptr) {
        call.refuseFor(call.function(), missing_class.format, line, kFailed);
        return;
    }
    if (setSurface(call.env(), info_class, info_object,
                   &surfaces.surface[surfaces.surface_count]) != 0) {
        call.refuseWithoutLine();
        return;
    }
    ++surfaces.surface_count;
}

uint8_t readControlType(NativeCall& call, jint type, Line<2> line, int source_line) {
    constexpr jint kLastControlType = 4;
    constexpr jint kUnchanged = 255;
    if (!call.refused() && type != kUnchanged && type > kLastControlType) {
        call.refuse(line, type, kResultParamNg, source_line);
    }
    return static_cast<uint8_t>(type);
}

void traceScreenDrawingInfo(const char* function, const SCREEN_DRAWING_INFO& info) {
    TRACE_NATIVE(kDebug, function, "SEND, SCREEN_DRAWING_INFO : surface_width  = %d",
                 info.surface_width);
    TRACE_NATIVE(kDebug, function, "SEND, SCREEN_DRAWING_INFO : surface_height = %d",
                 info.surface_height);
    TRACE_NATIVE(kDebug, function, "SEND, SCREEN_DRAWING_INFO : screen_rotate  = %d",
                 info.screen_rotate);
    TRACE_NATIVE(kDebug, function, "SEND, SCREEN_DRAWING_INFO : screen_mode    = %d",
                 info.screen_mode);
}

#define TRACE_CAP_LAYOUT(function, label, info)                                                    \
    do {                                                                                           \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": font_size        = %d",                   \
                     (info).font_size);                                                            \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": characters_num   = %d",                   \
                     (info).characters_num);                                                       \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": lines_num        = %d",                   \
                     (info).lines_num);                                                            \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": separator_size   = %d",                   \
                     (info).separator_size);                                                       \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": position_x       = %d",                   \
                     (info).position_x);                                                           \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": position_y       = %d",                   \
                     (info).position_y);                                                           \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": background_color = %d",                   \
                     (info).background_color);                                                     \
        TRACE_NATIVE(kDebug, function, "SEND, " label ": background_alpha = %d",                   \
                     (info).background_alpha);                                                     \
    } while (false)

namespace {

void traceCapPlane(const char* function, const CAP_DRAWING_INFO& info) {
    TRACE_NATIVE(kDebug, function, "SEND, CAP_DRAWING_INFO: surface_width  = %d",
                 info.surface_width);
    TRACE_NATIVE(kDebug, function, "SEND, CAP_DRAWING_INFO: surface_height = %d",
                 info.surface_height);
    TRACE_NATIVE(kDebug, function, "SEND, CAP_DRAWING_INFO: screen_rotate  = %d",
                 info.screen_rotate);
}

} // namespace

void traceCapDrawingInfo(const char* function, const CAP_DRAWING_INFO& info) {
    traceCapPlane(function, info);
    TRACE_CAP_LAYOUT(function, "CAP_DISPLAY_INFO", info.cap_info);
}

void traceCapDisplayCommand(const char* function, const CAP_DRAWING_INFO& info) {
    traceCapPlane(function, info);
    TRACE_CAP_LAYOUT(function, "CAP_DRAWING_INFO", info.cap_info);
}

void traceBMLDrawingInfo(const char* function, const BML_DRAWING_INFO& info) {
    TRACE_NATIVE(kDebug, function, "SEND, BML_DRAWING_INFO: surface_width  = %d",
                 info.surface_width);
    TRACE_NATIVE(kDebug, function, "SEND, BML_DRAWING_INFO: surface_height = %d",
                 info.surface_height);
    TRACE_NATIVE(kDebug, function, "SEND, BML_DRAWING_INFO: screen_rotate  = %d",
                 info.screen_rotate);
}
