// The native methods of DtvServerProxy, which the rows of native_table.def declare. Each answers a
// local reference to a result object, or null when Java threw while its arguments were read, or
// when the object cannot be made.
#pragma once

#include <jni.h>

#define INT , jint
#define OBJECT(java_class) , jobject
#define NATIVE(command, function, parameters, result)                                              \
    jobject function(JNIEnv* env, jobject proxy parameters);
#include "commands/native_table.def"
