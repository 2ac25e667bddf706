// Synchronous commands: a record is sent, and its reply record becomes the object that Java gets.
#include "commands/command.h"
#include "commands/sync_reply.h"

#include <cstring>

using trace::kDebug;
using trace::kFuncEnd;

namespace {

/// The reply of a synchronous command: its bytes, and what the trace and the check for an empty
/// reply read of them. The two kinds differ in the place of the handle.
struct CommonReply {
    TS_COMMON_SYNC_REPLY record = {};

    /// The trace reads the two values of the reply the other way round: what it calls the handle
    /// follows what it calls the return value.
    TS_TRACED_SYNC_REPLY traced() const {
        TS_TRACED_SYNC_REPLY traced;
        static_assert(sizeof(traced) == sizeof(record));
        std::memcpy(&traced, &record, sizeof(traced));
        return traced;
    }

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

jobject NativeCall::exchangeRecord(void* record, int size, TS_DTVSV_SP* surfaces) const {
    return row_.reply_size == sizeof(TS_TERMINATE_REC_SYNC_REPLY)
               ? exchange<TerminateRecReply>(*this, record, size, surfaces)
               : exchange<CommonReply>(*this, record, size, surfaces);
}
