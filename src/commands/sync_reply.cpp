#include "commands/sync_reply.h"

#include "binding/JNIDtvSvLibListener.h"
#include "binding/signature.h"
#include "entry/trace.h"
#include "records/messages.h"

#include <cstring>
#include <type_traits>

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;
using trace::kInfo;

namespace {

/// What a synchronous command answers: the constructor of its object, and whether the reply record
/// is that of the end of a recording. All others have the common one.
struct SyncAnswer {
    int message_id;
    TE_DTVSV_METHODID constructor;
    bool ends_recording;
};

template <class Reply>
constexpr bool kEndsRecording = std::is_same_v<Reply, TS_TERMINATE_REC_SYNC_REPLY>;

constexpr SyncAnswer kSyncAnswers[] = {
#define EXCHANGE(id, name, record, reply, java_class)                                              \
    {id, kNew_##java_class, kEndsRecording<reply>},
#include "records/message_table.def"
};

using TerminateRec = Object<class_id::kBG_TS_DTVSVLIB_TERMINATE_REC_REPLY>;

// The constructor of an answer takes a result and a handle, and for the end of a recording what was
// recorded.
#define EXCHANGE(id, name, record, reply, java_class)                                              \
    static_assert(kEndsRecording<reply> || std::is_same_v<reply, TS_COMMON_SYNC_REPLY>,            \
                  #reply " is not a record that answers are made of");                             \
    static_assert(kEndsRecording<reply>                                                            \
                      ? signature::takes<jint, jint, TerminateRec>(                                \
                            kMethodTable[kNew_##java_class].signature)                             \
                      : signature::takes<jint, jint>(kMethodTable[kNew_##java_class].signature),   \
                  #java_class " takes what its answer is made of");
#include "records/message_table.def"

const SyncAnswer* findAnswer(int message_id) {
    for (const SyncAnswer& answer : kSyncAnswers) {
        if (answer.message_id == message_id) {
            return &answer;
        }
    }
    return nullptr;
}

/// What the end of a recording answers beside the common values, as an object.
int newTerminateRec(JNIEnv* env, int program_no, int object_no, jobject* out) {
    return g_listener->CallMethod(env, kNew_BG_TS_DTVSVLIB_TERMINATE_REC_REPLY, out, program_no,
                                  object_no);
}

/// The answer to the end of a recording; `terminate_rec` is used up.
int newTerminateRecAnswer(JNIEnv* env, int result, int handle, jobject terminate_rec,
                          jobject* out) {
    const int ret = g_listener->CallMethod(env, kNew_BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO, out,
                                           result, handle, terminate_rec);
    env->DeleteLocalRef(terminate_rec);
    return ret;
}

template <typename Record>
Record readAs(const void* bytes) {
    Record record;
    std::memcpy(&record, bytes, sizeof(record));
    return record;
}

} // namespace

jobject makeComSubReplyObjSync(JNIEnv* env, int message_id, const void* reply, int ret,
                               const void* /*request*/) {
    TRACE_NATIVE(kFuncStart, __func__, "message_id = 0x%x", static_cast<unsigned>(message_id));
    const auto common = readAs<TS_COMMON_SYNC_REPLY>(reply);
    TRACE_NATIVE(kDebug, __func__, "retvalue = %d", ret);
    TRACE_NATIVE(kDebug, __func__, "com_data->handle = %d", common.handle);
    TRACE_NATIVE(kDebug, __func__, "com_data->return_value = %d", common.return_value);

    const SyncAnswer* const answer = findAnswer(message_id);
    if (answer == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "(param)message_id bad err, message_id = %d", message_id);
        return nullptr;
    }
    jobject object = nullptr;
    int ret_call = 0;
    if (answer->ends_recording) {
        const auto terminate = readAs<TS_TERMINATE_REC_SYNC_REPLY>(reply);
        TRACE_NATIVE(kInfo, __func__, "p_terminate_data->handle = %d", terminate.handle);
        TRACE_NATIVE(kInfo, __func__, "p_terminate_data->result = %d", terminate.result);
        TRACE_NATIVE(kInfo, __func__, "p_terminate_data->terminate_rec.program_no = %d",
                     terminate.program_no);
        TRACE_NATIVE(kInfo, __func__, "p_terminate_data->terminate_rec.object_no  = %d",
                     terminate.object_no);
        jobject terminate_rec = nullptr;
        ret_call = newTerminateRec(env, terminate.program_no, terminate.object_no, &terminate_rec);
        if (ret_call != 0) {
            if (!env->ExceptionCheck()) {
                TRACE_NATIVE(kDebug, __func__, "CallMethod NG, ret_call = %d", ret_call);
            }
            return nullptr;
        }
        ret_call =
            newTerminateRecAnswer(env, terminate.result, terminate.handle, terminate_rec, &object);
    } else {
        ret_call = g_listener->CallMethod(env, answer->constructor, &object,
                                          static_cast<jint>(common.return_value),
                                          static_cast<jint>(common.handle));
    }
    if (ret_call != 0) {
        if (!env->ExceptionCheck()) {
            TRACE_NATIVE(kDebug, __func__, "makeComSubReplyObjSync NG, com ret_call = %d",
                         ret_call);
        }
        return nullptr;
    }
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return object;
}

jobject makeComReplyObjSync(JNIEnv* env, int message_id, const void* reply, int ret,
                            const void* request) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    if (reply != nullptr) {
        const jobject object = makeComSubReplyObjSync(env, message_id, reply, ret, request);
        if (object != nullptr) {
            TRACE_NATIVE(kFuncEnd, __func__, "");
            return object;
        }
        if (env->ExceptionCheck()) {
            return nullptr;
        }
    }
    TRACE_NATIVE(kFuncStart, __func__, "make param NG message_id = 0x%x",
                 static_cast<unsigned>(message_id));
    const SyncAnswer* const answer = findAnswer(message_id);
    if (answer == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "(param)message_id bad err, message_id = %d", message_id);
        return nullptr;
    }
    const int handle = readAs<TS_HANDLE_REQ>(request).handle;
    jobject object = nullptr;
    int ret_call = 0;
    if (answer->ends_recording) {
        jobject terminate_rec = nullptr;
        ret_call = newTerminateRec(env, 0, 0, &terminate_rec);
        if (ret_call != 0) {
            if (!env->ExceptionCheck()) {
                TRACE_NATIVE(kFuncEnd, __func__,
                             "makeComReplyObjSync terminate rec CallMethod NG, ret_call = %d",
                             ret_call);
            }
            return nullptr;
        }
        ret_call = newTerminateRecAnswer(env, ret, handle, terminate_rec, &object);
    } else {
        ret_call = g_listener->CallMethod(env, answer->constructor, &object, ret, handle);
    }
    if (ret_call != 0) {
        if (!env->ExceptionCheck()) {
            TRACE_NATIVE(kFuncEnd, __func__, "makeComReplyObjSync CallMethod NG, ret_call = %d",
                         ret_call);
        }
        return nullptr;
    }
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return object;
}
