// Java method signatures held against C++ types when they are compiled: a value that would reach
// the VM with another width than the signature says does not compile.
#pragma once

#include <jni.h>

#include <type_traits>

/// The descriptor of a class of the value package.
#define VALUE_TYPE(name) "Ltenrik/service/dtvserver/type/" #name ";"

namespace signature {

/// What a parameter of a JNI type begins with in a signature. References are 'L', arrays included.
template <typename Type>
constexpr char kDescriptor = std::is_pointer_v<Type> ? 'L' : '?';
template <>
inline constexpr char kDescriptor<jint> = 'I';
template <>
inline constexpr char kDescriptor<jlong> = 'J';

/// The text behind the first parameter of a signature, or null when it is none of `descriptor`.
constexpr const char* skipParameter(const char* text, char descriptor) {
    const bool array = *text == '[';
    while (*text == '[') {
        ++text;
    }
    if (*text == ')' || (array || *text == 'L' ? 'L' : *text) != descriptor) {
        return nullptr;
    }
    if (*text == 'L') {
        while (*text != ';') {
            ++text;
        }
    }
    return text + 1;
}

/// Whether a signature takes exactly parameters of these types.
template <typename... Types>
constexpr bool takes(const char* text) {
    const char descriptors[] = {kDescriptor<Types>..., '\0'};
    if (*text++ != '(') {
        return false;
    }
    for (const char* descriptor = descriptors; *descriptor != '\0'; ++descriptor) {
        text = skipParameter(text, *descriptor);
        if (text == nullptr) {
            return false;
        }
    }
    return *text == ')';
}

/// Whether a signature takes one object of the class with this name, and returns nothing.
constexpr bool takesClass(const char* text, const char* class_name) {
    if (*text++ != '(' || *text++ != 'L') {
        return false;
    }
    while (*class_name != '\0') {
        if (*text++ != *class_name++) {
            return false;
        }
    }
    return text[0] == ';' && text[1] == ')' && text[2] == 'V';
}

} // namespace signature
