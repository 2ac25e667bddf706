#include "hand/arguments.h"

namespace hand {
namespace {

bool keep(JNIEnv* env, Field& field) {
    field.kept = env->GetFieldID(java.classes[field.class_id], field.name, field.type);
    return field.kept != nullptr;
}

bool keep(JNIEnv* env, EnumField& field) {
    const jclass clazz = env->FindClass(field.enumeration);
    if (clazz == nullptr || !keep(env, static_cast<Field&>(field))) {
        return false;
    }
    field.kept_class = static_cast<jclass>(env->NewGlobalRef(clazz));
    field.kept_getter = env->GetStaticMethodID(clazz, field.getter, field.signature);
    env->DeleteLocalRef(clazz);
    return field.kept_getter != nullptr;
}

bool keep(JNIEnv* env, PlaneFields& plane) {
    return keep(env, plane.width) && keep(env, plane.height) && keep(env, plane.rotate) &&
           keep(env, plane.surface);
}

bool keep(JNIEnv* env, LayoutFields& layout) {
    return keep(env, layout.font_size) && keep(env, layout.characters_num) &&
           keep(env, layout.lines_num) && keep(env, layout.separator_size) &&
           keep(env, layout.position_x) && keep(env, layout.position_y) &&
           keep(env, layout.background_color) && keep(env, layout.background_alpha);
}

} // namespace

Arguments arguments;

std::string Arguments::resolve(JNIEnv* env) {
    const jclass result_class = java.classes[class_id::kBG_TE_DTVSVLIB_RESULT];
    for (ResultConstant& constant : result) {
        const jfieldID field =
            env->GetStaticFieldID(result_class, constant.name, VALUE_TYPE(BG_TE_DTVSVLIB_RESULT));
        if (field == nullptr) {
            return constant.name;
        }
        const jobject local = env->GetStaticObjectField(result_class, field);
        constant.kept = env->NewGlobalRef(local);
        env->DeleteLocalRef(local);
    }
    const bool found = keep(env, physical_channel) && keep(env, service_no) && keep(env, screen) &&
                       keep(env, screen_mode) && keep(env, captions) && keep(env, cap_info) &&
                       keep(env, layout) && keep(env, bml) && keep(env, surface_address) &&
                       keep(env, nvram.end_type) && keep(env, nvram.ts_name) &&
                       keep(env, nvram.data);
    return found ? "" : "a field of an argument";
}

} // namespace hand
