// The answers of the synchronous commands: objects made from a reply record, or from the lack of
// one.
#pragma once

#include <jni.h>

/// The *_SYNC_INFO object of a synchronous command: from `reply` when there is one, else from `ret`
/// and the handle that `request` begins with. A reply that cannot be turned into an object answers
/// 0 with the request's handle. Null when no object can be made, or when Java threw: the exception
/// is then pending. A local reference of the caller's.
jobject makeComReplyObjSync(JNIEnv* env, int message_id, const void* reply, int ret,
                            const void* request);

/// The same from a reply alone, or null.
jobject makeComSubReplyObjSync(JNIEnv* env, int message_id, const void* reply, int ret,
                               const void* request);
