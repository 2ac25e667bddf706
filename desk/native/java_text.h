// Texts and failures between Java and the natives of the desk.
#pragma once

#include <jni.h>

#include <string>
#include <vector>

namespace desk {

/// Throws a DeskException with this message.
void throwDeskException(JNIEnv* env, const std::string& message);

/// The characters of a Java string; empty, with an exception pending, when there is no memory.
std::string textOf(JNIEnv* env, jstring string);

/// A Java array of strings; null, with an exception pending, when there is no memory.
jobjectArray stringArray(JNIEnv* env, const std::vector<std::string>& texts);

/// A Java array of ints; null, with an exception pending, when there is no memory.
jintArray intArray(JNIEnv* env, const std::vector<jint>& values);

/// A Java string of UTF-8 text; null, with an exception pending, when there is no memory. What is
/// no UTF-8 becomes U+FFFD.
jstring stringOf(JNIEnv* env, const std::string& text);

} // namespace desk
