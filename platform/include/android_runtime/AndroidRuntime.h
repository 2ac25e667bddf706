// The part of the Android runtime that native libraries register their methods with.
#pragma once

#include <jni.h>

namespace android {

class AndroidRuntime {
public:
    /// Binds `count` native methods to the class `class_name` (with slashes). Negative when the
    /// class is missing or the VM refuses a method; the Java exception that says why is then
    /// pending.
    static int registerNativeMethods(JNIEnv* env, const char* class_name,
                                     const JNINativeMethod* methods, int count);
};

} // namespace android
