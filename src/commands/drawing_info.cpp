#include "commands/drawing_info.h"

#include "commands/enum_fields.h"
#include "commands/fields.h"
#include "commands/local_reference.h"

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

constexpr jint kLastRotate = 3;
constexpr jint kLastScreenMode = 3;
constexpr jint kLastBackgroundColor = 8;

constexpr EnumField kScreenRotate = {"screen_rotate", VALUE_TYPE(BG_TE_DTVSVLIB_SCREEN_ROTATE),
                                     "getScreenRotateValue"};
constexpr EnumField kScreenMode = {"screen_mode", VALUE_TYPE(BG_TE_DTVSVLIB_SCREEN_MODE),
                                   "getScreenModeValue"};
constexpr EnumField kBackgroundColor = {
    "background_color", VALUE_TYPE(BG_TE_DTVSVLIB_BACKGROUND_COLOR), "getBackgroundColorValue"};
constexpr EnumField kBackgroundAlpha = onOffField("background_alpha");

/// The routines fail with one line, and print the number that stands with it: the caption plane
/// prints 5 where the others print 1, yet fails as they do.
#define FAIL(...)                                                                                  \
    do {                                                                                           \
        TRACE_NATIVE(kDebug, __func__, __VA_ARGS__);                                               \
        return 1;                                                                                  \
    } while (false)

/// Reads an enum field up to a limit and stores its low byte.
#define READ_LIMITED_ENUM(env, object, field, name, limit, target, printed)                        \
    do {                                                                                           \
        jint value = 0;                                                                            \
        const int unread = getEnumValue(env, object, field, &value);                               \
        if ((env)->ExceptionCheck()) {                                                             \
            return 1;                                                                              \
        }                                                                                          \
        if (unread != 0) {                                                                         \
            FAIL(name " getEnumValue Error, ret = %d", unread);                                    \
        }                                                                                          \
        if (value > (limit)) {                                                                     \
            FAIL(name " is too large : %d, ret = %d", value, printed);                             \
        }                                                                                          \
        target = static_cast<uint8_t>(value);                                                      \
    } while (false)

/// Reads an int field into `value`.
#define READ_INT_FIELD(env, clazz, object, name, value, printed)                                   \
    do {                                                                                           \
        const jfieldID int_field = findField(env, clazz, name, "I");                               \
        if (int_field == nullptr) {                                                                \
            FAIL(name " fieldID is NULL, ret = %d", printed);                                      \
        }                                                                                          \
        value = (env)->GetIntField(object, int_field);                                             \
    } while (false)

/// Reads the size of a plane, of which 16 bits travel.
#define READ_SURFACE_SIZE(env, clazz, object, target, printed)                                     \
    do {                                                                                           \
        jint pixels = 0;                                                                           \
        READ_INT_FIELD(env, clazz, object, "surface_width", pixels, printed);                      \
        (target)->surface_width = static_cast<uint16_t>(pixels);                                   \
        READ_INT_FIELD(env, clazz, object, "surface_height", pixels, printed);                     \
        (target)->surface_height = static_cast<uint16_t>(pixels);                                  \
    } while (false)

/// Reads an int field of the caption layout, of which one byte travels.
#define READ_LAYOUT_BYTE(env, clazz, object, name, target)                                         \
    do {                                                                                           \
        jint value = 0;                                                                            \
        READ_INT_FIELD(env, clazz, object, name, value, 1);                                        \
        target = static_cast<uint8_t>(value);                                                      \
    } while (false)

/// Reads a position of the caption layout; a negative one is refused with the words for a large
/// one.
#define READ_LAYOUT_POSITION(env, clazz, object, name, target)                                     \
    do {                                                                                           \
        jint value = 0;                                                                            \
        READ_INT_FIELD(env, clazz, object, name, value, 1);                                        \
        if (value < 0) {                                                                           \
            FAIL(name " is too large : %d, ret = %d", value, 1);                                   \
        }                                                                                          \
        target = static_cast<uint16_t>(value);                                                     \
    } while (false)

} // namespace

int setScreenDrawingInfo(JNIEnv* env, jobject info_object, SCREEN_DRAWING_INFO* out) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    const jclass clazz = classOf(env, info_object);
    if (clazz == nullptr) {
        FAIL("screen_drawing_info_clazz class is NULL, ret = %d", 1);
    }
    const LocalReference clazz_reference(env, clazz);
    READ_LIMITED_ENUM(env, info_object, kScreenRotate, "screen_rotate", kLastRotate,
                      out->screen_rotate, 1);
    READ_LIMITED_ENUM(env, info_object, kScreenMode, "screen_mode", kLastScreenMode,
                      out->screen_mode, 1);
    READ_SURFACE_SIZE(env, clazz, info_object, out, 1);
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return 0;
}

int setCapDrawingInfo(JNIEnv* env, jobject info_object, CAP_DRAWING_INFO* out) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    const jclass clazz = classOf(env, info_object);
    if (clazz == nullptr) {
        FAIL("caption drawing_info_clazz class is NULL, ret = %d", 1);
    }
    const LocalReference clazz_reference(env, clazz);
    READ_LIMITED_ENUM(env, info_object, kScreenRotate, "screen_rotate", kLastRotate,
                      out->screen_rotate, kResultParamNg);
    READ_SURFACE_SIZE(env, clazz, info_object, out, kResultParamNg);

    const jfieldID field =
        findField(env, clazz, "cap_info", VALUE_TYPE(BG_TS_DTVSVLIB_CAP_DISPLAY_INFO));
    if (field == nullptr) {
        FAIL("cap_info fieldID is NULL, ret = %d", kResultParamNg);
    }
    const jobject display_info = env->GetObjectField(info_object, field);
    if (display_info == nullptr) {
        FAIL("cap_info display_info_obj object is NULL, ret = %d", kResultParamNg);
    }
    const LocalReference display_info_reference(env, display_info);
    if (setCapDisplayInfo(env, display_info, &out->cap_info) != 0) {
        return 1;
    }
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return 0;
}

int setCapDisplayInfo(JNIEnv* env, jobject display_info_object, CAP_DISPLAY_INFO* out) {
    const jclass clazz = classOf(env, display_info_object);
    if (clazz == nullptr) {
        FAIL("display_info_clazz class is NULL, ret = %d", 1);
    }
    const LocalReference clazz_reference(env, clazz);
    const jobject object = display_info_object;
    READ_LAYOUT_BYTE(env, clazz, object, "font_size", out->font_size);
    READ_LAYOUT_BYTE(env, clazz, object, "characters_num", out->characters_num);
    READ_LAYOUT_BYTE(env, clazz, object, "lines_num", out->lines_num);
    READ_LAYOUT_BYTE(env, clazz, object, "separator_size", out->separator_size);
    READ_LAYOUT_POSITION(env, clazz, object, "position_x", out->position_x);
    READ_LAYOUT_POSITION(env, clazz, object, "position_y", out->position_y);
    READ_LIMITED_ENUM(env, object, kBackgroundColor, "background_color", kLastBackgroundColor,
                      out->background_color, 1);
    READ_LIMITED_ENUM(env, object, kBackgroundAlpha, "background_alpha", kLastOnOff,
                      out->background_alpha, 1);
    return 0;
}

int setBMLDrawingInfo(JNIEnv* env, jobject info_object, BML_DRAWING_INFO* out) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    const jclass clazz = classOf(env, info_object);
    if (clazz == nullptr) {
        FAIL("BML drawing_info_clazz class is NULL, ret = %d", 1);
    }
    const LocalReference clazz_reference(env, clazz);
    READ_LIMITED_ENUM(env, info_object, kScreenRotate, "screen_rotate", kLastRotate,
                      out->screen_rotate, 1);
    READ_SURFACE_SIZE(env, clazz, info_object, out, 1);
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return 0;
}

int setSurface(JNIEnv* env, jclass info_class, jobject info_object,
               android::sp<android::Surface>* slot) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    const jclass surface_class = g_listener->getJavaClass(class_id::kSurface);
    if (surface_class == nullptr) {
        FAIL("surface_handle_clazz fieldID is NULL, ret = %d", 1);
    }
    const jfieldID native_field = findField(env, surface_class, "mSurface", "I");
    if (native_field == nullptr) {
        FAIL("mSurface fid Surface fieldID is NULL, ret = %d", 1);
    }
    const jfieldID handle_field =
        findField(env, info_class, "surface_handle", "Landroid/view/Surface;");
    if (handle_field == nullptr) {
        FAIL("surface_handle fid is NULL, ret = %d", 1);
    }
    const jobject surface =
        info_object != nullptr ? env->GetObjectField(info_object, handle_field) : nullptr;
    if (surface == nullptr) {
        FAIL("surface_object is NULL, ret = %d", 1);
    }
    const LocalReference surface_reference(env, surface);
    // The platform keeps the surface's address in an int.
    const auto address = static_cast<uint32_t>(env->GetIntField(surface, native_field));
    *slot = reinterpret_cast<android::Surface*>(static_cast<uintptr_t>(address));
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return 0;
}

jobject answerUnreadPlane(const Command& command) {
    return command.env->ExceptionCheck() ? nullptr : answerRefusal(command);
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
