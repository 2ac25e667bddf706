// The fields of Java objects that the hand-written bridge reads. A variant that looks them up does
// so at each call, by name; the others use what was resolved once.
#pragma once

#include "binding/java_names.h"
#include "hand/ids.h"
#include "hand/policy.h"

#include <jni.h>

#include <cstring>
#include <string>

namespace hand {

/// The class of an object, for the variants that look up; the others need none.
template <class Policy>
jclass classOf(JNIEnv* env, jobject object) {
    return Policy::kLooksUp ? env->GetObjectClass(object) : nullptr;
}

/// Deletes a reference where the bridge has to: a call that looks up holds few of them at a time.
/// The others leave it to the VM, which drops all of them when the native returns.
template <class Policy>
void release(JNIEnv* env, jobject object) {
    if constexpr (Policy::kLooksUp) {
        env->DeleteLocalRef(object);
    }
}

struct Field {
    const char* name;
    const char* type;
    int class_id; ///< of the class that has it
    jfieldID kept = nullptr;

    template <class Policy>
    jfieldID id(JNIEnv* env, jclass clazz) const {
        return Policy::kLooksUp ? env->GetFieldID(clazz, name, type) : kept;
    }
};

struct IntField : Field {
    IntField(int class_id, const char* name) : Field{name, "I", class_id} {}

    template <class Policy>
    jint getInt(JNIEnv* env, jclass clazz, jobject holder) const {
        return env->GetIntField(holder, id<Policy>(env, clazz));
    }
};

struct ObjectField : Field {
    ObjectField(int class_id, const char* name, const char* type) : Field{name, type, class_id} {}

    template <class Policy>
    jobject getObject(JNIEnv* env, jclass clazz, jobject holder) const {
        return env->GetObjectField(holder, id<Policy>(env, clazz));
    }
};

/// A constant of an enumeration, which the enumeration's static method turns into an int.
struct EnumField : ObjectField {
    EnumField(int class_id, const char* name, const char* type, const char* enumeration,
              const char* getter, const char* signature)
        : ObjectField(class_id, name, type), enumeration(enumeration), getter(getter),
          signature(signature) {}

    const char* enumeration; ///< its class's name with slashes
    const char* getter;
    const char* signature;
    jclass kept_class = nullptr;
    jmethodID kept_getter = nullptr;

    /// False when the constant is null or the getter threw.
    template <class Policy>
    bool read(JNIEnv* env, jclass clazz, jobject holder, jint& value) const {
        const jobject constant = getObject<Policy>(env, clazz, holder);
        if (constant == nullptr) {
            return false;
        }
        jclass enum_class = kept_class;
        jmethodID method = kept_getter;
        if constexpr (Policy::kLooksUp) {
            enum_class = env->GetObjectClass(constant);
            method = env->GetStaticMethodID(enum_class, getter, signature);
        }
        jvalue argument;
        argument.l = constant;
        value = env->CallStaticIntMethodA(enum_class, method, &argument);
        if constexpr (Policy::kLooksUp) {
            env->DeleteLocalRef(enum_class);
            env->DeleteLocalRef(constant);
        }
        return !env->ExceptionCheck();
    }
};

/// A constant of the result enumeration.
struct ResultConstant {
    const char* name;
    jobject kept = nullptr; ///< global reference

    /// A local reference, or the one that is kept.
    template <class Policy>
    jobject get(JNIEnv* env) const {
        if constexpr (Policy::kLooksUp) {
            // The class is kept in every variant, as the bridge keeps it.
            const jclass clazz = java.classes[class_id::kBG_TE_DTVSVLIB_RESULT];
            return env->GetStaticObjectField(
                clazz, env->GetStaticFieldID(clazz, name, VALUE_TYPE(BG_TE_DTVSVLIB_RESULT)));
        }
        return kept;
    }
};

/// Copies a text into a field, which holds zeros: cut without terminator when it fills the field.
inline void copyText(JNIEnv* env, jstring text, char* field, size_t size) {
    const auto length = static_cast<size_t>(env->GetStringUTFLength(text));
    if (length < size) {
        env->GetStringUTFRegion(text, 0, env->GetStringLength(text), field);
        return;
    }
    if (const char* const characters = env->GetStringUTFChars(text, nullptr)) {
        std::memcpy(field, characters, size);
        env->ReleaseStringUTFChars(text, characters);
    }
}

#define HAND_ENUM(java_class, name, enumeration, getter)                                           \
    EnumField(class_id::k##java_class, name, VALUE_TYPE(enumeration),                              \
              VALUE_PACKAGE "/" #enumeration, getter, "(" VALUE_TYPE(enumeration) ")I")

/// What the three planes have in common.
struct PlaneFields {
    IntField width;
    IntField height;
    EnumField rotate;
    ObjectField surface;

    PlaneFields(int class_id)
        : width(class_id, "surface_width"), height(class_id, "surface_height"),
          rotate(class_id, "screen_rotate", VALUE_TYPE(BG_TE_DTVSVLIB_SCREEN_ROTATE),
                 VALUE_PACKAGE "/BG_TE_DTVSVLIB_SCREEN_ROTATE", "getScreenRotateValue",
                 "(" VALUE_TYPE(BG_TE_DTVSVLIB_SCREEN_ROTATE) ")I"),
          surface(class_id, "surface_handle", SURFACE_TYPE) {}
};

struct LayoutFields {
    static constexpr int kClass = class_id::kBG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
    IntField font_size{kClass, "font_size"};
    IntField characters_num{kClass, "characters_num"};
    IntField lines_num{kClass, "lines_num"};
    IntField separator_size{kClass, "separator_size"};
    IntField position_x{kClass, "position_x"};
    IntField position_y{kClass, "position_y"};
    EnumField background_color =
        HAND_ENUM(BG_TS_DTVSVLIB_CAP_DISPLAY_INFO, "background_color",
                  BG_TE_DTVSVLIB_BACKGROUND_COLOR, "getBackgroundColorValue");
    EnumField background_alpha = HAND_ENUM(BG_TS_DTVSVLIB_CAP_DISPLAY_INFO, "background_alpha",
                                           BG_TE_DTVSVLIB_ONOFF, "getOnOffValue");
};

struct NvramFields {
    static constexpr int kClass = class_id::kBG_TS_DTVSVLIB_READ_NVRAM_REPLY;
    EnumField end_type = HAND_ENUM(BG_TS_DTVSVLIB_READ_NVRAM_REPLY, "bml_end_type",
                                   BG_TE_DTVSVLIB_BML_END_TYPE, "getBmlEndValue");
    ObjectField ts_name{kClass, "ts_name", STRING_TYPE};
    ObjectField data{kClass, "nvram_data", "[B"};
};

struct Arguments {
    ResultConstant result[6] = {{"DTVSVLIB_RESULT_OK"},        {"DTVSVLIB_RESULT_NG"},
                                {"DTVSVLIB_RESULT_CANCEL"},    {"DTVSVLIB_RESULT_ADD_NG"},
                                {"DTVSVLIB_RESULT_DELETE_NG"}, {"DTVSVLIB_RESULT_PARAM_NG"}};
    IntField physical_channel{class_id::kBG_TS_DTVSVLIB_BROADCAST_INFO, "physical_channel"};
    IntField service_no{class_id::kBG_TS_DTVSVLIB_BROADCAST_INFO, "service_no"};
    PlaneFields screen{class_id::kBG_TS_DTVSVLIB_SCREEN_DRAWING_INFO};
    EnumField screen_mode = HAND_ENUM(BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO, "screen_mode",
                                      BG_TE_DTVSVLIB_SCREEN_MODE, "getScreenModeValue");
    PlaneFields captions{class_id::kBG_TS_DTVSVLIB_CAP_DRAWING_INFO};
    ObjectField cap_info{class_id::kBG_TS_DTVSVLIB_CAP_DRAWING_INFO, "cap_info",
                         VALUE_TYPE(BG_TS_DTVSVLIB_CAP_DISPLAY_INFO)};
    LayoutFields layout;
    PlaneFields bml{class_id::kBG_TS_DTVSVLIB_BML_DRAWING_INFO};
    IntField surface_address{class_id::kSurface, "mSurface"};
    NvramFields nvram;

    /// Resolves what is kept, after the classes. Empty, or what is missing.
    std::string resolve(JNIEnv* env);
};

/// Filled by load(), read only afterwards.
extern Arguments arguments;

} // namespace hand
