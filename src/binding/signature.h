// Java method signatures checked against C++ types when compiling: a value that would reach the VM
// with another width, or as an object of another class, than the signature says does not compile.
#pragma once

#include "binding/class_table.h"
#include "binding/java_object.h"

#include <jni.h>

namespace signature {

/// The text after `prefix`, or null when `text` is null or does not begin with it.
constexpr const char* skip(const char* text, const char* prefix) {
    if (text == nullptr) {
        return nullptr;
    }
    while (*prefix != '\0') {
        if (*text++ != *prefix++) {
            return nullptr;
        }
    }
    return text;
}

/// The text after the descriptor of a class, or null.
constexpr const char* skipClass(const char* text, const char* class_name) {
    return skip(skip(skip(text, "L"), class_name), ";");
}

/// Skips the descriptor of a parameter of the type. A type without one does not compile.
template <typename Type>
struct Parameter;
template <>
struct Parameter<jint> {
    static constexpr const char* skipIn(const char* text) { return skip(text, "I"); }
};
template <>
struct Parameter<jlong> {
    static constexpr const char* skipIn(const char* text) { return skip(text, "J"); }
};
template <>
struct Parameter<jstring> {
    static constexpr const char* skipIn(const char* text) { return skip(text, STRING_TYPE); }
};
template <>
struct Parameter<jbyteArray> {
    static constexpr const char* skipIn(const char* text) { return skip(text, "[B"); }
};
template <>
struct Parameter<jintArray> {
    static constexpr const char* skipIn(const char* text) { return skip(text, "[I"); }
};
template <int ClassId>
struct Parameter<Object<ClassId>> {
    static constexpr const char* skipIn(const char* text) {
        return skipClass(text, kClassTable[ClassId].name);
    }
};
template <int ClassId>
struct Parameter<ObjectArray<ClassId>> {
    static constexpr const char* skipIn(const char* text) {
        return skipClass(skip(text, "["), kClassTable[ClassId].name);
    }
};

/// Whether a signature takes exactly parameters of these types and returns nothing.
template <typename... Types>
constexpr bool takes(const char* text) {
    text = skip(text, "(");
    ((text = Parameter<Types>::skipIn(text)), ...);
    text = skip(text, ")V");
    return text != nullptr && *text == '\0';
}

} // namespace signature
