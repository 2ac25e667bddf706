// The native methods of DtvServerProxy, as they are registered with the VM.
#pragma once

#include <jni.h>

/// Binds every native method to its class. 1 when the platform accepted them, 0 when it did not;
/// its exception, which names what is missing, is then pending.
int registerNatives(JNIEnv* env);
