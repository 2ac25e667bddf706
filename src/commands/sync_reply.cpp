#include "commands/sync_reply.h"

#include "binding/signature.h"

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

jobject answerSyncRefusal(const NativeCall& call) {
    const TS_HANDLE_REQ request = {call.handle()};
    return makeComReplyObjSync(call.env(), call.row().id, nullptr, kResultParamNg, &request);
}

namespace {

/// The reply of a synchronous command: its bytes, and what the trace and the check for an empty
/// reply read of them. The two kinds differ in the place of the handle.
struct CommonReply {
    TS_COMMON_SYNC_REPLY record = {};

    /// The trace reads the two values of the reply the other way round: what it calls the handle
    /// follows what it calls the return value.
    TS_TRACED_SYNC_REPLY traced() const { return readAs<TS_TRACED_SYNC_REPLY>(&record); }

    uint16_t testedHandle() const { return traced().handle; }

    void trace(const char* function) const {
        TRACE_NATIVE(kDebug, function, "RECV, reply_data.handle = %d", traced().handle);
        TRACE_NATIVE(kDebug, function, "RECV, reply_data.return_value = %d", traced().return_value);
    }
};

struct TerminateRecReply {
    TS_TERMINATE_REC_SYNC_REPLY record = {};

    uint16_t testedHandle() const { return record.handle; }

    void trace(const char* function) const {
        TRACE_NATIVE(kDebug, function, "RECV, reply_data.handle = %d", record.handle);
        TRACE_NATIVE(kDebug, function, "RECV, reply_data.result = %d", record.result);
        TRACE_NATIVE(kDebug, function, "RECV, reply_data.terminate_rec.program_no = %d",
                     record.program_no);
        TRACE_NATIVE(kDebug, function, "RECV, reply_data.terminate_rec.object_no = %d",
                     record.object_no);
    }
};

template <typename Reply>
jobject exchange(const NativeCall& call, void* request, int size, TS_DTVSV_SP* surfaces) {
    Reply reply;
    int reply_size = 0;
    const int id = call.row().id;
    const int ret =
        surfaces != nullptr
            ? g_listener->sendEventToServer(id, request, size, surfaces, &reply.record, &reply_size)
            : g_listener->sendEventToServer(id, request, size, &reply.record, &reply_size);
    if (ret != 0) {
        const jobject answer = makeComReplyObjSync(call.env(), id, nullptr, kResultNg, request);
        if (!call.env()->ExceptionCheck()) {
            TRACE_NATIVE(kFuncEnd, call.function(), "ret = %d", ret);
        }
        return answer;
    }
    TRACE_NATIVE(kDebug, call.function(), "RECV, reply_size = %d", reply_size);
    reply.trace(call.function());
    if (reply_size == 0 && reply.testedHandle() == 0) {
        TRACE_NATIVE(kFuncEnd, call.function(), "return DTVSVLIB_RESULT_ABORT_NG");
        return makeComReplyObjSync(call.env(), id, nullptr, kResultAbortNg, request);
    }
    TRACE_NATIVE(kFuncEnd, call.function(), "ret = %d", 0);
    return makeComReplyObjSync(call.env(), id, &reply.record, kResultOk, request);
}

} // namespace

jobject exchangeRecord(const NativeCall& call, void* record, int size, TS_DTVSV_SP* surfaces) {
    return call.row().reply_size == sizeof(TS_TERMINATE_REC_SYNC_REPLY)
               ? exchange<TerminateRecReply>(call, record, size, surfaces)
               : exchange<CommonReply>(call, record, size, surfaces);
}
