#include "hand/ids.h"

namespace hand {

JavaIds java;

std::string resolve(JNIEnv* env) {
    for (int id = 0; id < kClassCount; ++id) {
        const jclass clazz = env->FindClass(kClassTable[id].name);
        if (clazz == nullptr) {
            return kClassTable[id].name;
        }
        java.classes[id] = static_cast<jclass>(env->NewGlobalRef(clazz));
        env->DeleteLocalRef(clazz);
    }
    for (int id = 0; id < kMethodCount; ++id) {
        const MethodRow& row = kMethodTable[id];
        const jclass clazz = java.classes[row.class_id];
        java.methods[id] = row.attr_id == kStaticMethod
                               ? env->GetStaticMethodID(clazz, row.name, row.signature)
                               : env->GetMethodID(clazz, row.name, row.signature);
        if (java.methods[id] == nullptr) {
            return row.name;
        }
    }
    return "";
}

} // namespace hand
