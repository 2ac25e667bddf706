// Reading the Java objects that commands take. A field is found by its name at each call: the
// argument classes are Java's, and a missing field is an argument that is refused.
#pragma once

#include "binding/signature.h"
#include "commands/command.h"
#include "records/field_text.h"

/// The class of an object; null for a null object.
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

/// An enum-typed field: its name, its type's descriptor, and the getter of the type's int.
struct EnumField {
    const char* name;
    const char* type;
    const char* getter;
};

inline int getEnumValue(JNIEnv* env, jobject holder, const EnumField& field, int* value) {
    return getEnumValue(env, holder, field.name, field.type, field.getter, value);
}

// The macros below end the native method, or the group of its checks, that a field fails.

/// Declares `clazz`, the class of a command's object. A null object is refused with `null_text`,
/// one without a class with `class_text`, both with PARAM_NG.
#define TAKE_CLASS(command, object, clazz, null_text, class_text)                                  \
    if ((object) == nullptr) {                                                                     \
        REFUSE(command, null_text, kResultParamNg);                                                \
    }                                                                                              \
    const jclass clazz = classOf((command).env, object);                                           \
    if (clazz == nullptr) {                                                                        \
        REFUSE(command, class_text, kResultParamNg);                                               \
    }

/// Reads an enum field; an unreadable one is refused with `text` and getEnumValue's result.
#define READ_ENUM(command, object, field, value, text)                                             \
    do {                                                                                           \
        const int unread = getEnumValue((command).env, object, field, value);                      \
        if ((command).env->ExceptionCheck()) {                                                     \
            return nullptr;                                                                        \
        }                                                                                          \
        if (unread != 0) {                                                                         \
            REFUSE(command, text, unread);                                                         \
        }                                                                                          \
    } while (false)

/// Looks up a field; a missing one is refused with `text` and PARAM_NG.
#define FIND_FIELD(command, clazz, name, type, field, text)                                        \
    do {                                                                                           \
        *(field) = findField((command).env, clazz, name, type);                                    \
        if (*(field) == nullptr) {                                                                 \
            REFUSE(command, text, kResultParamNg);                                                 \
        }                                                                                          \
    } while (false)

/// Copies a text into a field of the record. When the VM has no memory for it the native ends with
/// the VM's exception pending.
#define COPY_TEXT(command, string, target)                                                         \
    do {                                                                                           \
        g_listener->convJStringToChar((command).env, string, target, sizeof(target));              \
        if ((command).env->ExceptionCheck()) {                                                     \
            return nullptr;                                                                        \
        }                                                                                          \
    } while (false)

/// Reads an int field whose name is a literal.
#define READ_INT(command, clazz, object, name, value)                                              \
    do {                                                                                           \
        jfieldID int_field = nullptr;                                                              \
        FIND_FIELD(command, clazz, name, "I", &int_field, name " fieldID is NULL, ret = %d");      \
        *(value) = (command).env->GetIntField(object, int_field);                                  \
    } while (false)
