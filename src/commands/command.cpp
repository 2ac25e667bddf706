#include "commands/command.h"

#include "commands/fields.h"
#include "commands/local_reference.h"
#include "commands/sync_reply.h"
#include "records/command_records.h"

#include <cstdio>

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

/// The constants of the result enumeration, by code.
constexpr const char* kResultNames[] = {
    "DTVSVLIB_RESULT_OK",     "DTVSVLIB_RESULT_NG",        "DTVSVLIB_RESULT_CANCEL",
    "DTVSVLIB_RESULT_ADD_NG", "DTVSVLIB_RESULT_DELETE_NG", "DTVSVLIB_RESULT_PARAM_NG",
};
constexpr unsigned kLastResult = 5;
static_assert(sizeof(kResultNames) / sizeof(kResultNames[0]) == kLastResult + 1);

} // namespace

jobject getRetCode(JNIEnv* env, int ret) {
    TRACE_NATIVE(kFuncStart, __func__, "(param)ret = %d", ret);
    const jclass clazz = g_listener->getJavaClass(class_id::kBG_TE_DTVSVLIB_RESULT);
    if (clazz == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "class is NULL");
        return nullptr;
    }
    if (static_cast<unsigned>(ret) > kLastResult) {
        TRACE_NATIVE(kDebug, __func__, "(param)ret err, ret = %d", ret);
        return nullptr;
    }
    const jfieldID field =
        env->GetStaticFieldID(clazz, kResultNames[ret], VALUE_TYPE(BG_TE_DTVSVLIB_RESULT));
    if (field == nullptr) {
        env->ExceptionClear();
        TRACE_NATIVE(kDebug, __func__, "RESULT's field_id is NULL, ret = %d", 0);
        return nullptr;
    }
    const jobject result = env->GetStaticObjectField(clazz, field);
    if (result == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "RESULT's field's object NULL, ret = %d", 0);
        return nullptr;
    }
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return result;
}

int getEnumValue(JNIEnv* env, jobject holder, const char* name, const char* type,
                 const char* getter, int* value) {
    const jclass holder_class = classOf(env, holder);
    if (holder_class == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "orgObj's clazz is NULL");
        return 1;
    }
    const LocalReference holder_class_reference(env, holder_class);

    const jfieldID field = findField(env, holder_class, name, type);
    if (field == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "enum field ID is NULL");
        return 1;
    }
    const jobject constant = env->GetObjectField(holder, field);
    if (constant == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "enum object is NULL");
        return 1;
    }
    const LocalReference constant_reference(env, constant);

    char signature[256];
    std::snprintf(signature, sizeof(signature), "(%s)I", type);
    const jclass enum_class = classOf(env, constant);
    if (enum_class == nullptr) {
        TRACE_NATIVE(kDebug, __func__, "enum class is NULL");
        return 1;
    }
    const LocalReference enum_class_reference(env, enum_class);

    const jmethodID method = env->GetStaticMethodID(enum_class, getter, signature);
    if (method == nullptr) {
        env->ExceptionClear();
        TRACE_NATIVE(kDebug, __func__, "enum method is NULL");
        return 1;
    }
    *value = env->CallStaticIntMethod(enum_class, method, constant);
    return 0;
}

Command beginCommand(JNIEnv* env, const char* function, int message_id, jint session) {
    TRACE_NATIVE(kFuncStart, function, "hdl = %d", session);
    return {env, function, message_id, session};
}

jobject answerRefusal(const Command& command) {
    return isSynchronous(command.message_id) ? answerSyncRefusal(command)
                                             : getRetCode(command.env, kResultParamNg);
}

jobject sendRecord(const Command& command, void* record, int size, TS_DTVSV_SP* carrier) {
    if (isSynchronous(command.message_id)) {
        return exchangeRecord(command, record, size, carrier);
    }
    const int ret =
        carrier != nullptr
            ? g_listener->sendEventToServer(command.message_id, record, size, carrier, nullptr,
                                            nullptr)
            : g_listener->sendEventToServer(command.message_id, record, size, nullptr, nullptr);
    const jobject result = getRetCode(command.env, ret == 0 ? kResultOk : kResultNg);
    TRACE_NATIVE(kFuncEnd, command.function, "ret = %d", ret);
    return result;
}

jobject sendHandle(JNIEnv* env, const char* function, int message_id, jint session,
                   TraceHandle trace_send) {
    const Command command = beginCommand(env, function, message_id, session);
    TS_HANDLE_REQ record = {command.handle()};
    trace_send(function, record.handle);
    return send(command, record);
}
