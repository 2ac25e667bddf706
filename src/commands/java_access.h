// The two look-ups that reading a Java object begins with, for objects that may be null.
#pragma once

#include <jni.h>

/// The class of an object; null for a null object. A local reference.
inline jclass classOf(JNIEnv* env, jobject object) {
    return object != nullptr ? env->GetObjectClass(object) : nullptr;
}

/// A field of a class, or null, without an exception pending. A null class has no fields.
inline jfieldID findField(JNIEnv* env, jclass clazz, const char* name, const char* type) {
    if (clazz == nullptr) {
        return nullptr;
    }
    const jfieldID field = env->GetFieldID(clazz, name, type);
    if (field == nullptr) {
        env->ExceptionClear();
    }
    return field;
}
