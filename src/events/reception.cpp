// Where events arrive, and the choice of their handler.
#include "binding/JNIDtvSvLibListener.h"
#include "entry/trace.h"
#include "events/event.h"
#include "records/message_ids.h"
#include "records/reply_records.h"

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

/// Room for the local references of one event. A guide of ten programmes takes 93 of them.
constexpr jint kEventFrame = 128;

/// The record of a generic reply. That of the start of a TV link has its result in one byte.
template <int Id>
using ReplyRecord = std::conditional_t<Id == event_id::kBmlStartTvlinkReply,
                                       TS_BML_START_TVLINK_REPLY, TS_COMMON_REPLY>;

/// Whether an event is built from a handle and a result, and is what the callback takes.
constexpr bool isReply(TE_DTVSV_METHODID constructor, TE_DTVSV_METHODID callback) {
    return signature::takes<jint, jint>(kMethodTable[constructor].signature) &&
           signature::takesClass(kMethodTable[callback].signature, classNameOf(constructor));
}

/// One bad callback must not spoil the thread for the events that follow.
void describeAndClearException(JNIEnv* env) {
    if (env->ExceptionCheck()) {
        env->ExceptionDescribe();
        env->ExceptionClear();
    }
}

} // namespace

int JNIDtvSvLibListener::recvEventFromServer(int id, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "pid = %d, threadid = %x, event_id = %x, recv_size = %d",
                   static_cast<int>(getpid()), trace::threadId(), static_cast<unsigned>(id), size);
    JNIEnv* const env = getJNIEnv();
    if (env == nullptr) {
        TRACE_LISTENER(kDebug, __func__, "env is NULL!");
        return -1;
    }
    // The thread never returns to Java, so what a handler leaves would live as long as the thread.
    if (env->PushLocalFrame(kEventFrame) != JNI_OK) {
        describeAndClearException(env);
        return 1;
    }
    const int ret = DoListenerEvent(env, id, data, size);
    describeAndClearException(env);
    env->PopLocalFrame(nullptr);
    TRACE_LISTENER(kFuncEnd, __func__, "");
    return ret;
}

int JNIDtvSvLibListener::DoListenerEvent(JNIEnv* env, int id, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    if (data == nullptr) {
        return 1;
    }
    int ret = 1;
    switch (id) {
        // Every message buffer holds the handle and the result, whatever the size says.
#define REPLY(reply_id, event_class, callback)                                                     \
    case event_id::reply_id: {                                                                     \
        static_assert(isReply(kNew_##event_class, kCall_##callback));                              \
        const auto reply =                                                                         \
            viewRecord<ReplyRecord<event_id::reply_id>>(data, sizeof(TS_COMMON_REPLY));            \
        ret = dtvsv_msgid_lib_common_reply(env, reply.handle, reply.result, kNew_##event_class,    \
                                           kCall_##callback);                                      \
        break;                                                                                     \
    }
#define HANDLER(handled_id, event)                                                                 \
    case event_id::handled_id:                                                                     \
        ret = dtvsv_msgid_lib_##event(env, data, size);                                            \
        break;
#include "binding/event_table.def"
#undef REPLY
#undef HANDLER
    default:
        break;
    }
    if (ret == 1) {
        return 1;
    }
    TRACE_LISTENER(kFuncEnd, __func__, "");
    return 0;
}
