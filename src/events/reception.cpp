// Where events arrive, and the choice of their handler.
#include "binding/JNIDtvSvLibListener.h"
#include "entry/trace.h"
#include "events/event.h"

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

/// Room for the local references of one event. A guide of ten programmes takes 93 of them.
constexpr jint kEventFrame = 128;

/// Delivers a reply of a handle and a result. Both are read whatever the size says: every message
/// buffer holds as many bytes.
template <int EventId>
int handleReply(JNIDtvSvLibListener& listener, JNIEnv* env, const void* data) {
    using Traits = EventTraits<EventId>;
    using Record = typename messages::RecordOfEvent<EventId>::Type;
    constexpr TE_DTVSV_METHODID kConstructor = kConstructorOf<Traits::kClass>;
    static_assert(signature::takes<jint, jint>(kMethodTable[kConstructor].signature),
                  "a reply's class takes a handle and a result");
    if (data == nullptr) {
        return 1;
    }
    const RecordView<Record> reply(data, static_cast<int>(sizeof(Record)));
    return listener.dtvsv_msgid_lib_common_reply(env, reply->handle, reply->result, kConstructor,
                                                 Traits::kCallback);
}

/// Hands a record to its handler.
template <auto Handler>
int handleRecord(JNIDtvSvLibListener& listener, JNIEnv* env, void* data, int size) {
    return data == nullptr ? 1 : (listener.*Handler)(env, data, size);
}

/// An exception that a callback leaves must not fail the events that follow.
void describeAndClearException(JNIEnv* env) {
    if (env->ExceptionCheck()) {
        env->ExceptionDescribe();
        env->ExceptionClear();
    }
}

} // namespace

int JNIDtvSvLibListener::recvEventFromServer(int id, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "pid = %d, threadid = %x, event_id = %x, recv_size = %d",
                   trace::processId(), trace::threadId(), static_cast<unsigned>(id), size);
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
    int ret = 1;
    switch (id) {
#define REPLY(event_id, name, record, java_class)                                                  \
    case event_id:                                                                                 \
        ret = handleReply<event_id>(*this, env, data);                                             \
        break;
#define EVENT(event_id, name, record, handler, java_class)                                         \
    case event_id:                                                                                 \
        ret =                                                                                      \
            handleRecord<&JNIDtvSvLibListener::dtvsv_msgid_lib_##handler>(*this, env, data, size); \
        break;
#include "records/message_table.def"
    default:
        break;
    }
    if (ret == 1) {
        return 1;
    }
    TRACE_LISTENER(kFuncEnd, __func__, "");
    return 0;
}
