// What the commands share, from a listener of the test's own: the product's objects, linked into a
// library whose JNI calls the strict table can check.
#pragma once

#include <gui/Surface.h>
#include <jni.h>
#include <utils/StrongPointer.h>

#define COMMAND_HELPERS_EXPORT __attribute__((visibility("default")))

namespace commands {

/// Makes a new listener with empty registries the one that the commands use. The one before it
/// ends.
COMMAND_HELPERS_EXPORT void newListener(JavaVM* vm);

/// Puts a class into its registry. 0 when it was found.
COMMAND_HELPERS_EXPORT int registerClass(JNIEnv* env, int class_id, const char* name);

COMMAND_HELPERS_EXPORT jobject retCode(JNIEnv* env, int code);

/// The holder is what EnumSamples.held holds: read here, so that for the strict table the reference
/// is the bridge's own.
COMMAND_HELPERS_EXPORT int enumValue(JNIEnv* env, const char* name, const char* type,
                                     const char* getter, int* value);

/// makeComReplyObjSync.
COMMAND_HELPERS_EXPORT jobject syncAnswer(JNIEnv* env, int message_id, const void* reply, int ret,
                                          const void* request);

/// Refuses a null argument for two reasons, one after the other; answers whether it is refused.
COMMAND_HELPERS_EXPORT bool refuseTwice(JNIEnv* env);

/// The same object by a reference that counts as the bridge's own: it ends with the caller's frame.
COMMAND_HELPERS_EXPORT jobject adopt(JNIEnv* env, jobject object);

/// The routines that read the planes' objects; `out` is the record's bytes.
COMMAND_HELPERS_EXPORT int screenDrawingInfo(JNIEnv* env, jobject info, void* out);
COMMAND_HELPERS_EXPORT int capDrawingInfo(JNIEnv* env, jobject info, void* out);
COMMAND_HELPERS_EXPORT int capDisplayInfo(JNIEnv* env, jobject info, void* out);
COMMAND_HELPERS_EXPORT int bmlDrawingInfo(JNIEnv* env, jobject info, void* out);
COMMAND_HELPERS_EXPORT int surface(JNIEnv* env, jclass info_class, jobject info,
                                   android::sp<android::Surface>* slot);

} // namespace commands
