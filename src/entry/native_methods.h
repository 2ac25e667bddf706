// The native methods of DtvServerProxy, as they are registered with the VM.
#pragma once

#include <jni.h>

/// Binds every native method to its class. 1 when the platform accepted them. 0 when it did not:
/// none is bound then, and the platform's exception, if it threw one, is pending.
int registerNatives(JNIEnv* env);

/// Takes the native methods back from their class. An exception that is pending stays so.
void unregisterNatives(JNIEnv* env);
