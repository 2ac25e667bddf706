// The Java VM of the benchmarks: in this process, as the tests have theirs.
#pragma once

#include <jni.h>

#include <string>
#include <vector>

namespace bench {

/// Ends the process with status 2 and a message.
[[noreturn]] void giveUp(const std::string& why);

/// Makes the VM. Further options follow those that every run has.
void startVm(const std::vector<std::string>& further_options);

/// The environment of the calling thread, which the VM knows.
JNIEnv* env();
JavaVM* vm();

/// A class, as a global reference; gives up when there is none.
jclass findClass(const char* name);

/// A method; gives up when there is none.
jmethodID findMethod(jclass clazz, const char* name, const char* signature);
jmethodID findStaticMethod(jclass clazz, const char* name, const char* signature);

/// A Java string's text.
std::string textOf(jstring string);

/// Gives up when a Java exception is pending, after the VM has described it.
void requireNoException(const char* what);

} // namespace bench
