// The Java classes and methods of the hand-written bridge: resolved once, by the numbers that the
// bridge gives them.
#pragma once

#include "binding/method_table.h"

#include <jni.h>

#include <string>

namespace hand {

/// Global references to the classes of the class table, and the methods of the method table.
struct JavaIds {
    jclass classes[kClassCount];
    jmethodID methods[kMethodCount];
};

/// Filled by resolve(), read only afterwards.
extern JavaIds java;

/// Looks all of them up. Empty, or what is missing.
std::string resolve(JNIEnv* env);

} // namespace hand
